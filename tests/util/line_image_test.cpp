#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "Tools.h"
#include "framework/drawing.h"
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

// The heap block has exactly the image's size, behind `offset` bytes, so that a sanitizer sees every step outside.
void expect_plain(const Pixels& image, int width, int height, std::size_t offset, const string& name) {
    for (const Operation& operation : operations) {
        Pixels expected = image, fast(offset, 255);
        fast.insert(fast.end(), image.begin(), image.end());
        fast.shrink_to_fit();
        operation.plain({expected, width, height});
        operation.fast(fast.data() + offset, width, height);
        ASSERT_TRUE(std::ranges::equal(expected, std::span(fast).subspan(offset))) << operation.name << ' ' << name;
    }
}

Pixels image_of(unsigned pattern, int width, int height) {
    Pixels image(static_cast<std::size_t>(width) * height);
    for (std::uint8_t& pixel : image) pixel = (pattern & 1) ? 255 : 0, pattern >>= 1;
    return image;
}

// Blobs and lines, now and then with pixels of other values.
Pixels drawn(int width, int height, std::mt19937& random) {
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    Pixels image(static_cast<std::size_t>(width) * height);
    for (int strokes = below(20); strokes > 0; --strokes) {
        const int left = below(width), top = below(height), slope = below(7) - 3, thick = 1 + below(24);
        for (int y = top; y < std::min(top + below(60), height); ++y)
            for (int x = left + slope * (y - top); x < left + slope * (y - top) + thick; ++x)
                if (x >= 0 && x < width) image[static_cast<std::size_t>(y) * width + x] = 255;
    }
    constexpr std::uint8_t strays[] = {50, 100, 200, 0, 255, 1, 49, 51, 205, 254};
    if (below(2)) {
        for (std::uint8_t& pixel : image)
            if (below(9) == 0) pixel = strays[below(std::size(strays))];
    }
    return image;
}

TEST(LineImage, EverySmallOneEqualsThePlainForm) {
    constexpr int width = 5, height = 4;
    std::mt19937 random(1);
    for (unsigned pattern = 0; pattern < 1u << (width * height); ++pattern) {
        Pixels image = image_of(pattern, width, height);
        if (pattern % 8 == 7)
            image[random() % image.size()] = std::array<std::uint8_t, 4>{50, 100, 200, 7}[random() % 4];
        for (const Operation& operation : operations) {
            Pixels expected = image, fast = image;
            operation.plain({expected, width, height});
            operation.fast(fast.data(), width, height);
            ASSERT_EQ(fast, expected) << operation.name << ' ' << pattern;
        }
    }
}

TEST(LineImage, AnySizeAtAnyAlignmentEqualsThePlainForm) {
    const unsigned seed = std::random_device()();
    std::mt19937 random(seed);
    for (int i = 0; i < 1500; ++i) {
        const int width = 1 + static_cast<int>(random() % (i % 2 ? 300 : 9)),
                  height = 1 + static_cast<int>(random() % 40);
        expect_plain(drawn(width, height, random), width, height, random() % 64,
                     to_string(width) + " x " + to_string(height) + ", seed " + to_string(seed));
    }
    // Around the sizes of chunks, and with the tiles of thinning grown in width and in height.
    for (const auto& [width, height] : {std::pair{65, 9},
                                        {66, 9},
                                        {67, 9},
                                        {129, 9},
                                        {130, 9},
                                        {131, 9},
                                        {4099, 40},
                                        {9001, 30},
                                        {70, 2051},
                                        {40, 6001},
                                        {700, 500}})
        expect_plain(drawn(width, height, random), width, height, 0, to_string(width) + ", seed " + to_string(seed));
}

TEST(LineImage, TheNeighbourToTheLeftDoesNotCount) {  // a dot widens to all sides but the right
    Pixels dot(11 * 11), four = dot;
    dot[5 * 11 + 5] = four[5 * 11 + 5] = 255;
    CTools::Dira(dot.data(), 11, 11, 8);
    CTools::Dira(four.data(), 11, 11, 4);
    string grown, grown_by_four;
    for (int y = 4; y <= 6; ++y)
        for (int x = 4; x <= 6; ++x) {
            grown += dot[y * 11 + x] ? '#' : '.';
            grown_by_four += four[y * 11 + x] ? '#' : '.';
        }
    EXPECT_EQ(grown,
              "###"
              "##."
              "###");
    EXPECT_EQ(grown_by_four,
              ".#."
              "##."
              ".#.");
}

TEST(LineImage, OfNoUseIsLeftAlone) {
    CTools::Dira(nullptr, 5, 5, 8);
    CTools::Eros(nullptr, 5, 5, 8);
    CTools::Linear(nullptr, nullptr, 5, 5);
    Pixels one(1, 100);
    for (const Operation& operation : operations)
        for (const auto& [width, height] : {std::pair{-3, 5}, {5, -3}, {0, 9}, {9, 0}})
            operation.fast(one.data(), width, height);
    EXPECT_EQ(one[0], 100);
}

class Surface : public CDC {
 public:
    COLORREF GetPixel(int x, int y) const override { return y == 1 ? CLR_INVALID : RGB(x, 10 * x, 0); }
};

TEST(LineImage, IsWhatIsDarkerThanTheThreshold) {
    Surface surface;
    CDC without_pixels;
    Pixels image(24);  // grey of column x: (77 + 1500) / 256 x, cut: 0, 6, 12, 18, ...
    const Pixels dark = {255, 255, 0, 0, 0, 0, 0, 0, 255, 255, 0, 0},
                 bright = {0, 0, 255, 255, 0, 0, 0, 0, 0, 0, 255, 255};
    const auto first = [&] { return Pixels(image.begin(), image.begin() + 12); };
    EXPECT_EQ(CTools::MakeLineImg(&surface, image.data(), 4, 3, 12), 1);
    EXPECT_EQ(first(), dark);
    EXPECT_EQ(CTools::MakeLineImg(&surface, image.data(), 4, 3, 12, 1), 1);
    EXPECT_EQ(first(), bright);
    EXPECT_EQ(CTools::MakeLineImg(&without_pixels, image.data(), 4, 3, 12), 0);
    EXPECT_EQ(CTools::MakeLineImg(nullptr, image.data(), 4, 3, 12), 0);

    const Pixels blue_green_red = {0, 0, 255, 9, 255, 0, 0, 9, 0, 255, 0, 9, 255, 255, 255, 9, 0, 0, 0, 9, 9, 9, 9, 9};
    const unsigned char* const last_row = blue_green_red.data() + 12;
    struct {
        int threshold;
        Pixels from_the_bottom;
    } rows[] = {// greys 255 0 9 | 76 28 149
                {0, {0, 0, 0, 0, 0, 0}},           {1, {0, 255, 0, 0, 0, 0}},
                {29, {0, 255, 255, 0, 255, 0}},    {77, {0, 255, 255, 255, 255, 0}},
                {149, {0, 255, 255, 255, 255, 0}}, {256, {255, 255, 255, 255, 255, 255}}};
    for (const auto& [threshold, expected] : rows) {
        EXPECT_EQ(CTools::MakeLineImg(last_row, 4, -12, image.data(), 3, 2, threshold), 1);
        EXPECT_EQ(Pixels(image.begin(), image.begin() + 6), expected) << threshold;
    }
    EXPECT_EQ(CTools::MakeLineImg(last_row, 2, 6, image.data(), 3, 1, 9), 0);
}

class LineImageFile : public testing::Test {
 protected:
    ~LineImageFile() override { std::filesystem::remove(path_); }
    string bytes() const { return string(std::istreambuf_iterator<char>(std::ifstream(path_).rdbuf()), {}); }
    void write(const string& bytes) const { std::ofstream(path_, std::ios::binary) << bytes; }

    string path_ =
        (std::filesystem::temp_directory_path() / ("lines" + to_string(std::random_device()()) + ".pgm")).string();
    int width_ = 0, height_ = 0;
};

TEST_F(LineImageFile, ComesBackAsItWasWritten) {
    std::mt19937 random(3);
    Pixels image = drawn(31, 17, random), back(image.size());
    ASSERT_EQ(CTools::WriteBuff(path_.c_str(), image.data(), 31, 17), 1);
    EXPECT_EQ(CTools::SetBuff(path_.c_str(), nullptr, 0, &width_, &height_), 1);
    EXPECT_EQ(to_string(width_) + " x " + to_string(height_), "31 x 17");
    EXPECT_EQ(CTools::SetBuff(path_.c_str(), back.data(), back.size() - 1, nullptr, nullptr), 0);
    EXPECT_EQ(CTools::SetBuff(path_.c_str(), back.data(), back.size(), nullptr, nullptr), 1);
    EXPECT_EQ(back, image);

    const Pixels grey = image;  // making one writes it, too, thin when it is made so
    Pixels thin(image.size());
    EXPECT_EQ(CTools::MakeLinear(grey.data(), 1, 31, thin.data(), 31, 17, 200, 1, path_.c_str()), 1);
    EXPECT_EQ(CTools::MakeLineImg(grey.data(), 1, 31, image.data(), 31, 17, 200, 1), 1);
    CTools::Linear(nullptr, image.data(), 31, 17);
    CTools::SetBuff(path_.c_str(), back.data(), back.size(), nullptr, nullptr);
    EXPECT_EQ(thin, image);
    EXPECT_EQ(back, image);
    EXPECT_EQ(CTools::WriteBuff((path_ + "/none").c_str(), image.data(), 31, 17), 0);
    EXPECT_EQ(CTools::WriteBuff(path_.c_str(), image.data(), 31, 0), 0);
}

TEST_F(LineImageFile, IsTakenWholeOrNotAtAll) {
    const string good = "P5 # lines\r\n#\n3\t2 255\nabcdef";
    const std::pair<const char*, string> bad[] = {{"ends early", good.substr(0, good.size() - 1)},
                                                  {"goes on", good + "\n"},
                                                  {"text form", "P2" + good.substr(2)},
                                                  {"no gap", "P53 2 255\nabcdef"},
                                                  {"sign", "P5 +3 2 255\nabcdef"},
                                                  {"16 bits", "P5 3 1 65535\nabcdef"},
                                                  {"too dark", "P5 3 2 254\nabcdef"},
                                                  {"nothing", "P5 0 2 255\n"},
                                                  {"overflow", "P5 4294967297 4294967297 255\na"},
                                                  {"square", "P5 2147483647 2147483647 255\na"},
                                                  {"comment", "P5 3 2 255#abcdef"},
                                                  {"comment only", "P5 #"}};
    write(good);
    ASSERT_EQ(CTools::SetBuff(path_.c_str(), nullptr, 0, &width_, &height_), 1);
    for (std::size_t size = 0; size < good.size(); ++size) EXPECT_FALSE(tool::line_image_file(good.substr(0, size)));
    for (const auto& [name, file] : bad) {
        write(file);
        unsigned char image[9] = "xxxxxxxx";
        EXPECT_EQ(CTools::SetBuff(path_.c_str(), image, 8, &width_, &height_), 0) << name;
        EXPECT_EQ(to_string(width_) + (char*)image, "3xxxxxxxx") << name;
    }
    EXPECT_EQ(CTools::SetBuff(nullptr, nullptr, 0, nullptr, nullptr), 0);
}

}  // namespace
