#include "surface/background.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "surface/pdf_surface.h"
#include "surface/picture_surface.h"
#include "surface/whole_file.h"

namespace {

using tool::decode_background;

std::string bytes_of(const std::string& name) {
    std::string bytes;
    EXPECT_EQ(tool::read_whole_file(TOOL_TEST_DATA "/" + name, 1'000'000, &bytes), "");
    return bytes;
}

// 8 x 6 pixels: the left half 32, the right half 224 in every channel.
struct Picture {
    const char* name;
    bool page_takes_file;
} const pictures[] = {{"grey.jpg", true},  {"colour.jpg", true},  {"progressive.jpg", true}, {"cmyk.jpg", false},
                      {"grey.png", false}, {"colour.png", false}, {"palette.png", false},    {"grey16.png", false}};

TEST(Background, ReadsWhatRadiographsComeIn) {
    for (const Picture& picture : pictures) {
        const tool::Background background = decode_background(bytes_of(picture.name));
        ASSERT_TRUE(background) << picture.name << ": " << background.error;
        EXPECT_EQ(background.width, 8) << picture.name;
        EXPECT_EQ(background.height, 6) << picture.name;
        EXPECT_EQ(!background.jpeg.empty(), picture.page_takes_file) << picture.name;
        for (const std::size_t at : {0, 3, 4, 47}) {
            const std::uint32_t pixel = background.pixels[at];
            EXPECT_EQ(pixel >> 24, 0xFFu) << picture.name;
            for (const int shift : {0, 8, 16})
                EXPECT_NEAR(static_cast<int>(pixel >> shift & 0xFF), at % 8 < 4 ? 32 : 224,
                            picture.page_takes_file ? 3 : 0)
                    << picture.name << at;
        }
    }
}

TEST(Background, IsNeverHalfAPicture) {
    for (const Picture& picture : pictures) {
        const std::string whole = bytes_of(picture.name);
        for (std::size_t length = 0; length < whole.size() - 2; ++length) {
            const tool::Background cut = decode_background(whole.substr(0, length));
            ASSERT_TRUE(!cut || whole.substr(length).find("IEND") != std::string::npos) << picture.name << length;
            ASSERT_EQ(cut.error.empty(), static_cast<bool>(cut));
        }
        for (std::size_t at = 0; at < whole.size(); ++at) {
            std::string flipped = whole;
            flipped[at] = static_cast<char>(~flipped[at]);
            const tool::Background damaged = decode_background(flipped, 100'000);
            ASSERT_EQ(damaged.pixels.size(), std::size_t(damaged.width) * std::size_t(damaged.height));
        }
    }
    EXPECT_THAT(decode_background(bytes_of("grey.jpg"), 47).error, testing::HasSubstr("8 x 6"));
    EXPECT_THAT(tool::read_background("no such file").error, testing::HasSubstr("no such file"));
}

TEST(Background, LiesWhereItIsPut) {
    const auto surface = tool::PictureSurface::create(40, 40, tool::PictureSurface::Look::smooth);
    surface->draw_background(decode_background(bytes_of("colour.png")), {10, 5, 26, 17});
    EXPECT_EQ(surface->pixel(10, 5), RGB(32, 32, 32));
    EXPECT_EQ(surface->pixel(25, 16), RGB(224, 224, 224));
    EXPECT_EQ(surface->pixel(26, 16), RGB(255, 255, 255));
    EXPECT_EQ(surface->pixel(9, 5), RGB(255, 255, 255));
    EXPECT_EQ(tool::decode_background(surface->png()).width, 40);

    const auto page = tool::PdfSurface::create(100, 100);
    page->draw_background(decode_background(bytes_of("grey.jpg")), {0, 0, 800, 600});
    EXPECT_THAT(page->pdf(), testing::HasSubstr("/DCTDecode"));
}

TEST(WholeFile, AFailedWriteLeavesNothingAndALinkStaysOne) {
    const auto folder = std::filesystem::temp_directory_path() / ("tool_" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(folder / "taken");
    EXPECT_EQ(tool::write_whole_file(folder / "a.png", "two"), "");
    EXPECT_NE(tool::write_whole_file(folder / "taken", "three"), "");
    EXPECT_NE(tool::write_whole_file(folder / "none" / "a.png", "four"), "");
    std::string bytes;
    EXPECT_EQ(tool::read_whole_file(folder / "a.png", 3, &bytes) + bytes, "two");
    EXPECT_NE(tool::read_whole_file(folder / "a.png", 2, &bytes), "");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 2);
    std::error_code no_links;
    std::filesystem::create_symlink("new.png", folder / "link", no_links);
    EXPECT_EQ(tool::write_whole_file(folder / "link", "five"), "");
    EXPECT_TRUE(no_links || (is_symlink(folder / "link") && file_size(folder / "new.png") == 4));
    std::filesystem::remove_all(folder);
}

}  // namespace
