#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>

#include "Tools.h"
#include "util/line_image_file.h"
#include "util/plain_line_image.h"

namespace {

using plain::Pixels;
using std::string, std::to_string;

struct Operation {
    const char* name;
    void (*fast)(unsigned char* image, int width, int height);
    void (*plain)(plain::Image image);
};

constexpr Operation operations[] = {
    {"Dira 8", [](auto image, int w, int h) { CTools::Dira(image, w, h, 8); }, [](auto i) { i.step(0, 255, 8); }},
    {"Dira 4", [](auto image, int w, int h) { CTools::Dira(image, w, h, 4); }, [](auto i) { i.step(0, 255, 4); }},
    {"Eros 8", [](auto image, int w, int h) { CTools::Eros(image, w, h, 8); }, [](auto i) { i.step(255, 0, 8); }},
    {"Eros 4", [](auto image, int w, int h) { CTools::Eros(image, w, h, 4); }, [](auto i) { i.step(255, 0, 4); }},
    {"Linear", [](auto image, int w, int h) { CTools::Linear(nullptr, image, w, h); }, [](auto i) { i.thin(); }}};

// The library's image is a heap block of its own size, so that a sanitizer sees every step outside.
void expect_plain(const Pixels& image, int width, int height, unsigned seed) {
    for (const Operation& operation : operations) {
        Pixels expected = image, fast = image;
        operation.plain({expected, width, height});
        operation.fast(fast.data(), width, height);
        ASSERT_TRUE(fast == expected) << operation.name << ' ' << width << " x " << height << ", " << seed;
    }
}

// Blobs and lines, now and then with pixels of other values.
Pixels drawn(int width, int height, std::mt19937& random) {
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    Pixels image(static_cast<std::size_t>(width) * height);
    for (int strokes = image.empty() ? 0 : below(20); strokes > 0; --strokes) {
        const int left = below(width), top = below(height), slope = below(7) - 3, thick = 1 + below(24);
        for (int y = top; y < std::min(top + below(60), height); ++y)
            for (int x = left + slope * (y - top); x < left + slope * (y - top) + thick; ++x)
                if (x >= 0 && x < width) image[static_cast<std::size_t>(y) * width + x] = 255;
    }
    constexpr std::uint8_t strays[] = {50, 100, 200, 0, 255, 1, 49, 51, 205, 254};
    for (std::size_t i = 1 + random() % 9; i < image.size(); i += 1 + random() % 50) image[i] = strays[below(10)];
    return image;
}

TEST(LineImage, EverySmallOneEqualsThePlainForm) {
    constexpr std::uint8_t strays[] = {50, 100, 200, 7};
    for (unsigned pattern = 0; pattern < 1u << 20; ++pattern) {
        Pixels image(20);
        for (unsigned i = 0; i < 20; ++i) image[i] = pattern >> i & 1 ? 255 : 0;
        if (pattern % 8 == 7) image[pattern / 8 % 20] = strays[pattern / 256 % 4];
        expect_plain(image, 5, 4, pattern);
    }
}

TEST(LineImage, AnySizeEqualsThePlainForm) {
    const unsigned seed = std::random_device()();
    std::mt19937 random(seed);
    for (int i = 0; i < 1500; ++i) {
        const int width = 1 + static_cast<int>(random() % (i % 2 ? 300 : 9)), height = i % 40;
        expect_plain(drawn(width, height, random), width, height, seed);
    }
    // Around the sizes of chunks, and with the tiles of thinning grown in width and in height.
    for (const int width : {18, 33, 34, 35, 50, 65, 66, 67, 129, 130, 131, 4099, 9001}) {
        expect_plain(drawn(width, 30, random), width, 30, seed);
        expect_plain(drawn(width % 97, 3 * width, random), width % 97, 3 * width, seed);
    }
    Pixels wedge(300 * 200);  // eaten from its tip through all tiles
    for (int y = 0; y < 200; ++y) std::fill_n(wedge.begin() + y * 300, 299 - 2 * std::abs(y - 100), 255);
    expect_plain(wedge, 300, 200, seed);
}

TEST(LineImage, TheNeighbourToTheLeftDoesNotCount) {
    constexpr std::size_t around[] = {48, 49, 50, 59, 60, 61, 70, 71, 72};  // of the middle, 5 * 11 + 5
    for (const auto& [connectivity, expected] : {std::pair{8, "#####.###"}, {4, ".#.##..#."}}) {
        Pixels dot(11 * 11);
        dot[60] = 255;
        CTools::Dira(dot.data(), 11, 11, connectivity);
        string grown;
        for (const std::size_t i : around) grown += dot[i] ? '#' : '.';
        EXPECT_EQ(grown, expected);
    }
}

class Surface : public CDC {
 public:
    COLORREF GetPixel(int x, int y) const override { return y == 1 ? CLR_INVALID : RGB(x, 10 * x, 0); }
};

TEST(LineImage, IsWhatIsDarkerThanTheThreshold) {
    Surface surface;
    CDC without_pixels;
    std::uint8_t image[6];
    const auto lines = [&] { return string(image, image + 6); };
    EXPECT_EQ(CTools::MakeLineImg(&surface, image, 3, 2, 12), 1);  // greys 0, 6, 12
    EXPECT_EQ(lines(), string("\xFF\xFF\0\0\0\0", 6));
    EXPECT_EQ(CTools::MakeLineImg(&surface, image, 3, 2, 12, 1), 1);
    EXPECT_EQ(lines(), string("\0\0\xFF\0\0\0", 6));
    std::uint8_t thin[6];
    CTools::Linear(nullptr, image, 3, 2);
    EXPECT_EQ(CTools::MakeLinear(&surface, thin, 3, 2, 12, 1), 1);
    EXPECT_TRUE(std::ranges::equal(thin, image));
    EXPECT_EQ(CTools::MakeLineImg(&without_pixels, image, 3, 2, 12), 0);
    EXPECT_EQ(CTools::MakeLineImg(nullptr, image, 3, 2, 12), 0);

    // Stored from the bottom: red, blue, green above white, black, grey 9.
    const std::uint8_t picture[] = {255, 255, 255, 0, 0, 0, 0, 0, 9, 9, 9, 0, 0, 0, 255, 0, 255, 0, 0, 0, 0, 255, 0, 0};
    const std::pair<int, const char*> rows[] = {{0, "......"},  {1, "....#."},  {9, "....#."},   {10, "....##"},
                                                {29, ".#..##"}, {77, "##..##"}, {150, "###.##"}, {256, "######"}};
    for (const auto& [threshold, expected] : rows) {
        EXPECT_EQ(CTools::MakeLineImg(picture + 12, 4, -12, image, 3, 2, threshold), 1);
        string found;
        for (const std::uint8_t pixel : image) found += pixel ? '#' : '.';
        EXPECT_EQ(found, expected) << threshold;
    }
    EXPECT_EQ(CTools::MakeLineImg(picture, 2, 6, image, 3, 1, 9), 0);
}

TEST(LineImage, ComesBackFromItsFileWholeOrNotAtAll) {
    const string name =
        (std::filesystem::temp_directory_path() / ("lines" + to_string(std::random_device()()))).string();
    const char* const path = name.c_str();
    std::mt19937 random(3);
    Pixels image = drawn(31, 17, random), back(image.size()), thin = image;
    int width = 0, height = 0;
    ASSERT_EQ(CTools::WriteBuff(path, image.data(), 31, 17), 1);
    EXPECT_EQ(CTools::SetBuff(path, nullptr, 0, &width, &height), 1);
    EXPECT_EQ(CTools::SetBuff(path, back.data(), static_cast<unsigned long>(back.size()) - 1, nullptr, nullptr), 0);
    EXPECT_EQ(CTools::SetBuff(path, back.data(), static_cast<unsigned long>(back.size()), nullptr, nullptr), 1);
    EXPECT_EQ(back, image);
    EXPECT_EQ(width * height, 31 * 17);
    for (std::uint8_t& pixel : thin) pixel = pixel >= 200 ? 255 : 0;
    plain::Image(thin, 31, 17).thin();
    EXPECT_EQ(CTools::MakeLinear(image.data(), 1, 31, image.data(), 31, 17, 200, 1, path), 1);
    EXPECT_EQ(CTools::SetBuff(path, back.data(), static_cast<unsigned long>(back.size()), nullptr, nullptr), 1);
    EXPECT_EQ(back, thin);
    EXPECT_EQ(CTools::WriteBuff((name + "/none").c_str(), image.data(), 31, 17), 0);
    std::filesystem::remove(path);

    const string good = "P5 # lines\r\n#\n3\t2 255\nabcdef";
    EXPECT_TRUE(tool::line_image_file(good));
    for (std::size_t size = 0; size < good.size(); ++size) EXPECT_FALSE(tool::line_image_file(good.substr(0, size)));
    for (const string& bad :
         {good + "\n", "P2" + good.substr(2), string("P53 2 255\nabcdef"), string("P5 +3 2 255\nabcdef"),
          string("P5 3 1 65535\nabcdef"), string("P5 3 2 254\nabcdef"), string("P5 0 2 255\n"),
          string("P5 4294967297 4294967297 255\na"), string("P5 3 2 255#abcdef")})
        EXPECT_FALSE(tool::line_image_file(bad)) << bad;
}

}  // namespace
