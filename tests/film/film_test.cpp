#include "film/film.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "film/window.h"

namespace {

std::string bytes_of(const std::string& name) {
    std::ifstream file(TOOL_TEST_DATA "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> all_names() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(TOOL_TEST_DATA))
        if (entry.path().extension() != ".md") names.push_back(entry.path().filename().string());
    return names;
}

// Whether this build reads it: a library may be missing.
bool is_left_out(const tool::Film& film) {
    const auto says = [&](const char* words) { return film.error.find(words) != std::string::npos; };
    return says("does without") && !says("damaged");
}

// 40 x 30 pixels, as make-films has them.
int sample(int x, int y, int bits) {
    const long long slope = x * 1571 + y * 2903 + x * y * 37 % 251;
    return static_cast<int>(slope * 65535 / (40 * 1571 + 30 * 2903 + 251)) >> (16 - bits);
}

struct Grey {
    const char *name, *format, *compression;
    int bits, lowest = 0, off = 0;  // how far a lossy sample may be off
    bool negative = false;
} const greys[] = {
    {"grey16_lzw.tif", "TIFF", "LZW", 16},
    {"grey12_packbits_tiled.tif", "TIFF", "PackBits", 12, 0, 4},
    {"white_is_low.tif", "TIFF", "uncompressed", 8, 0, 0, true},
    {"grey16_interlaced.png", "PNG", "deflate", 16},
    {"grey12_implicit.dcm", "DICOM", "uncompressed", 12},
    {"grey16_big_endian.dcm", "DICOM", "uncompressed", 16},
    {"grey8_no_preamble.dcm", "DICOM", "uncompressed", 8},
    {"grey8_deflated.dcm", "DICOM", "deflate", 8},
    {"signed12_jpegls.dcm", "DICOM", "JPEG-LS lossless", 12, -2048},
    {"grey16_lossless_sv1.dcm", "DICOM", "JPEG lossless", 16},
    {"grey12_extended.dcm", "DICOM", "JPEG extended", 12, 0, 64},
    {"grey16_j2k.dcm", "DICOM", "JPEG 2000 lossless", 16},
};

TEST(Film, HasTheSamplesThatWereStored) {
    for (const Grey& row : greys) {
        const tool::Film film = tool::decode_film(bytes_of(row.name));
        if (is_left_out(film)) continue;
        ASSERT_TRUE(film) << row.name << ": " << film.error;
        EXPECT_EQ(film.header.format + " " + film.header.compression, std::string(row.format) + " " + row.compression);
        EXPECT_EQ(film.bits, row.bits) << row.name;
        EXPECT_EQ(film.rule.lowest, row.lowest) << row.name;
        ASSERT_EQ(film.grey.size(), 1200u) << row.name;
        const int most = (1 << row.bits) - 1;
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x) {
                const int stored = film.grey[static_cast<std::size_t>(y * 40 + x)];
                ASSERT_NEAR(row.negative ? most - stored : stored, sample(x, y, row.bits), row.off)
                    << row.name << x << ", " << y;
            }
    }
}

TEST(Film, HasSignedSamplesAndThoseOfTheOtherByteOrderFromTheFirstOn) {
    std::string tiff("II*\0\x8\0\0\0\xA\0", 10);
    const int tags[][2] = {{256, 2},   {257, 1}, {258, 16}, {259, 1}, {262, 1},
                           {273, 134}, {277, 1}, {278, 1},  {279, 4}, {339, 2}};
    for (const auto& [tag, value] : tags)
        for (const int number : {tag, 3, 1, 0, value, 0})
            tiff += {static_cast<char>(number), static_cast<char>(number >> 8)};
    tiff += std::string("\0\0\0\0\xFB\xFF\7\0", 8);  // -5 and 7
    const tool::Film film = tool::decode_film(tiff);
    if (!is_left_out(film)) {
        ASSERT_EQ(film.grey.size(), 2u) << film.error;
        EXPECT_EQ(film.grey[0] + film.rule.lowest, -5);
        EXPECT_EQ(film.grey[1] + film.rule.lowest, 7);
    }
    std::string other = bytes_of("grey16_big_endian.dcm");
    other.replace(other.size() - 2 * 40 * 30, 2, "\x12\x34");
    const tool::Film dicom = tool::decode_film(other);
    EXPECT_TRUE(is_left_out(dicom) || dicom.grey.front() == 0x1234) << dicom.error;
}

TEST(Film, HasTheSamplesOfAJpegStreamWithBytesThatOnlyFill) {
    const std::string plain = bytes_of("grey12_extended.dcm");
    std::string filled = plain;
    filled.insert(filled.find("\xFF\xC1"), "\xFF\xFF\xFF\xFF");
    filled[filled.find("\xFF\xD8") - 4] += 4;  // the fragment's length, 0xF6
    const tool::Film film = tool::decode_film(filled);
    EXPECT_TRUE(is_left_out(film) || film.grey == tool::decode_film(plain).grey) << film.error;
}

TEST(Film, HasItsColours) {
    for (const char* name :
         {"planes_zip.tif", "rgb8_jpeg.tif", "rgb8_rle.dcm", "rgb8_baseline.dcm", "palette_lzw.tif"}) {
        const tool::Film film = tool::decode_film(bytes_of(name));
        if (is_left_out(film)) continue;
        ASSERT_EQ(film.colour.size(), 1200u) << name << film.error;
        const bool exact = name[0] == 'p' && name[1] == 'l';
        for (int i = 0; i < 1200; ++i) {
            const int grey = sample(i % 40, i / 40, 8);
            const std::uint32_t pixel = film.colour[static_cast<std::size_t>(i)];
            for (const int part : {4, 3, 2})
                ASSERT_NEAR(static_cast<int>(pixel >> (part * 8 - 16) & 0xFF), grey * part / 4, exact ? 0 : 32)
                    << name << i;
            ASSERT_EQ(pixel >> 24, 255u);
        }
    }
}

// 8 x 6 pixels: the left half 32, the right half 224 in every channel.
struct Picture {
    const char* name;
    bool page_takes_file;
} const pictures[] = {{"grey.jpg", true},  {"colour.jpg", true},  {"progressive.jpg", true}, {"cmyk.jpg", false},
                      {"grey.png", false}, {"colour.png", false}, {"palette.png", false},    {"grey16.png", false}};

TEST(Film, IsShownAsItStands) {
    for (const Picture& picture : pictures) {
        const tool::Film film = tool::decode_film(bytes_of(picture.name));
        if (is_left_out(film)) continue;
        EXPECT_EQ(!film.jpeg.empty(), picture.page_takes_file) << picture.name;
        const std::vector<std::uint32_t> pixels = shown_pixels(film), inverted = shown_pixels(film, {.inverted = true});
        ASSERT_EQ(pixels.size(), 48u) << picture.name << film.error;
        for (const std::size_t at : {0, 3, 4, 47}) {
            EXPECT_EQ(pixels[at] >> 24, 0xFFu) << picture.name;
            EXPECT_EQ(pixels[at] ^ inverted[at], 0xFFFFFFu);
            for (const int shift : {0, 8, 16})
                EXPECT_NEAR(static_cast<int>(pixels[at] >> shift & 0xFF), at % 8 < 4 ? 32 : 224,
                            picture.page_takes_file ? 3 : 0)
                    << picture.name << at;
        }
    }
}

TEST(Film, IsNeverHalfAFilm) {
    for (const std::string& name : all_names()) {
        const std::string whole = bytes_of(name);
        const std::size_t step = whole.size() < 1000 ? 1 : 13;
        for (std::size_t length = 0; length < whole.size(); length += step) {
            const tool::Film cut = tool::decode_film(whole.substr(0, length));
            const tool::Film full = cut ? tool::decode_film(whole) : tool::Film{};
            ASSERT_TRUE(!cut || (cut.grey == full.grey && cut.colour == full.colour)) << name << length;
            ASSERT_EQ(cut.error.empty(), static_cast<bool>(cut)) << name << length;
        }
        for (std::size_t at = 0; at < whole.size(); at += step) {
            std::string flipped = whole;
            flipped[at] = static_cast<char>(~flipped[at]);
            const tool::Film damaged = tool::decode_film(flipped, 100'000);
            ASSERT_EQ(damaged.grey.size() + damaged.colour.size(),
                      static_cast<std::size_t>(damaged.width) * static_cast<std::size_t>(damaged.height));
        }
    }
}

TEST(Film, TellsWhereItIsDamaged) {
    std::string without_frame = bytes_of("grey12_extended.dcm");
    without_frame.replace(without_frame.find("\xFF\xC1"), 2, "\xFF\x01");
    const struct {
        std::string bytes;
        const char* what;
    } rows[] = {
        {bytes_of("grey16_lzw.tif").substr(0, 500), "header"},
        {bytes_of("grey.jpg").substr(0, 300), "ends early"},
        {bytes_of("grey16_interlaced.png").substr(0, 500), "ends early"},
        {bytes_of("grey12_implicit.dcm").substr(0, 2000), "(7FE0,0010) is to have 2400 bytes, and there are"},
        {bytes_of("rgb8_rle.dcm").substr(0, 900), "at byte"},
        {without_frame, "JPEG stream has no segment at byte"},
        {"GIF89a", "none of: "},
        {"", "none of: "},
    };
    for (const auto& row : rows) {
        const tool::Film film = tool::decode_film(row.bytes);
        EXPECT_TRUE(is_left_out(film) || film.error.find(row.what) != std::string::npos) << film.error;
    }
    EXPECT_THAT(tool::decode_film(bytes_of("grey12_implicit.dcm"), 47).error, testing::HasSubstr("40 x 30"));
    EXPECT_THAT(tool::read_film("no such file").error, testing::HasSubstr("no such file"));
}

TEST(Film, AFileThatNestsADamagingNumberOfSequencesIsReadThrough) {
    std::string nested(128, '\0');
    nested += "DICM";
    for (int i = 0; i < 1'000'000; ++i)
        nested.append("\x08\0\x40\x11SQ\0\0\xFF\xFF\xFF\xFF\xFE\xFF\0\xE0\xFF\xFF\xFF\xFF", 20);
    EXPECT_THAT(tool::decode_film(nested).error, testing::HasSubstr("has no end"));
}

}  // namespace
