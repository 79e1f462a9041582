// Pictures that other programs wrote, whole and damaged.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "exif/jpeg_builder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace exif_test {
namespace {

std::string bytes_of(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Checks all that the fuzzer checks.
void examine(const std::string& bytes) {
    const std::vector<std::uint8_t> block(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(block.data(), block.size());
}

TEST(ExifPicture, SaysWhatItsMakerPutIn) {
    struct {
        const char *name, *comments;
        int process, color, orientation, iso;
        float exposure, f_number, ccd_width;
        std::uint32_t thumbnail;
    } const rows[] = {{"camera_intel.jpg", "taken at the first visit", 0xC0, 1, 1, 200, 0.008F, 5.6F, 0.88889F, 305},
                      {"camera_motorola.jpg", "taken at the first visit", 0xC0, 1, 1, 200, 0.008F, 5.6F, 0.88889F, 0},
                      {"rotated.jpg", "taken at the first visit", 0xC0, 1, 1, 200, 0.008F, 5.6F, 0.88889F, 305},
                      {"apex.jpg", "", 0xC0, 1, 6, 0, 1.0F / 60, 4, 0.98425F, 0},
                      {"progressive.jpg", "by hand", 0xC2, 1, 0, 800, 1.3F, 0, 0, 0},
                      {"grey.jpg", "", 0xC0, 0, 3, 0, 0, 2.8F, 0, 0},
                      {"arithmetic.jpg", "", 0xC9, 1, 0, 0, 0, 0, 0, 0},
                      {"comments.jpg", "first line\nsecond\tline", 0xC0, 1, 0, 0, 0, 0, 0, 0},
                      {"cmyk.jpg", "", 0xC0, 0, 0, 0, 0, 0, 0, 0},
                      {"pillow.jpg", "", 0xC0, 1, 8, 1600, 0.0005F, 0, 0, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Decoded one(bytes_of(std::filesystem::path(TOOL_TEST_DATA) / row.name));
        EXPECT_TRUE(one.good && one.same);
        EXPECT_STREQ(one->Comments, row.comments);
        EXPECT_EQ(one->Width * one->Height, 48 * 32);
        EXPECT_EQ(one->Width < one->Height, std::string(row.name) == "rotated.jpg");
        EXPECT_EQ(one->Process, row.process);
        EXPECT_EQ(one->IsColor, row.color);
        EXPECT_EQ(one->Orientation, row.orientation);
        EXPECT_EQ(one->IsoSpeed, row.iso);
        EXPECT_NEAR(one->ExposureTime, row.exposure, row.exposure * 1e-5);
        EXPECT_FLOAT_EQ(one->FNumber, row.f_number);
        EXPECT_NEAR(one->CcdWidth, row.ccd_width, 1e-5);
        EXPECT_EQ(one->ThumbnailSize, row.thumbnail);
    }
}

TEST(ExifPicture, CutAtAnyByteOrWithAnyByteChangedStaysInBounds) {
    int pictures = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TOOL_TEST_DATA)) {
        if (entry.path().extension() != ".jpg") continue;
        ++pictures;
        const std::string whole = bytes_of(entry.path());
        for (std::size_t size = 0; size < whole.size(); ++size) {
            examine(whole.substr(0, size));
            std::string changed = whole;
            for (const int bits : {0x01, 0x80, 0xFF}) {
                changed[size] = static_cast<char>(whole[size] ^ bits);
                examine(changed);
            }
        }
        // The same with an EXIF segment that is short but says so.
        if (const std::size_t exif = whole.find("Exif"); exif != std::string::npos)
            for (std::size_t size = 0; size + exif < whole.size(); ++size)
                examine(jpeg(segment(0xE1, whole.substr(exif, size))));
    }
    EXPECT_EQ(pictures, 10);
}

}  // namespace
}  // namespace exif_test
