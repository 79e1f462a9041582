#include "film/window.h"

#include <gtest/gtest.h>

namespace {

using Shape = tool::GreyWindow::Shape;

tool::Film film_of(int bits, std::vector<std::uint16_t> samples, const char* format) {
    tool::Film film;
    film.width = static_cast<int>(samples.size()), film.height = 1;
    film.bits = bits, film.grey = std::move(samples), film.header.format = format;
    return film;
}

// The standard's own example: centre 2048, width 4096 takes 0 to 4095 to black to white.
TEST(Window, IsWhatDicomDefines) {
    const struct {
        tool::GreyWindow window;
        int sample, shade;
    } rows[] = {
        {{2048, 4096}, 0, 0},
        {{2048, 4096}, 4095, 255},
        {{2048, 1}, 2047, 0},
        {{2048, 1}, 2048, 255},
        {{0, 100}, 0, 129},
        {{0, 100}, 49, 255},
        {{0, 100, Shape::linear_exact}, 0, 128},
        {{0, 100, Shape::linear_exact}, 49, 252},
        {{0, 100, Shape::sigmoid}, 0, 128},
        {{0, 100, Shape::sigmoid}, 50, 225},
    };
    for (const auto& row : rows) {
        tool::Film film = film_of(12, {0}, "DICOM");
        film.rule.windows = {row.window};
        EXPECT_EQ(shades(film)[static_cast<std::size_t>(row.sample)], row.shade) << row.window.centre << row.sample;
    }
}

TEST(Window, WithoutOneInTheFileFollowsTheDepthThatIsUsed) {
    const auto ends = [](const tool::Film& film, const tool::FilmView& view = {}) {
        const std::vector<std::uint8_t> table = shades(film, view);
        return std::pair(int{table[film.grey.front()]}, int{table[film.grey.back()]});
    };
    using Ends = std::pair<int, int>;
    EXPECT_EQ(ends(film_of(8, {32, 224}, "PNG")), Ends(32, 224));
    EXPECT_EQ(ends(film_of(16, {32 * 257, 224 * 257}, "PNG")), Ends(32, 224));
    EXPECT_EQ(ends(film_of(16, {0, 4095}, "TIFF")), Ends(0, 255));  // 12 bits in 16
    EXPECT_EQ(ends(film_of(1, {0, 1}, "TIFF")), Ends(0, 255));
    EXPECT_EQ(ends(film_of(12, {1000, 2000}, "DICOM")), Ends(0, 255));
    const tool::Film picture = film_of(8, {32, 224}, "PNG");
    EXPECT_EQ(ends(picture, {tool::FilmView::Greys::full}), Ends(0, 255));
    EXPECT_EQ(ends(picture, {tool::FilmView::Greys::given, {128, 10}}), Ends(0, 255));
    EXPECT_EQ(ends(picture, {.inverted = true}), Ends(223, 31));
}

TEST(Window, ComesAfterTheModalityAndBeforeTheInversion) {
    tool::Film film = film_of(12, {0, 1000}, "DICOM");
    film.rule.lowest = -2048, film.rule.slope = 2, film.rule.intercept = 4096;  // 0 to 8190
    film.rule.windows = {{4095, 8190, Shape::linear_exact}};
    EXPECT_EQ(shades(film)[0], 0);
    EXPECT_EQ(shades(film)[2048], 128);
    film.rule.white_is_low = true;
    EXPECT_EQ(shades(film)[0], 255);
    EXPECT_EQ(shades(film, {.inverted = true})[0], 0);
    film.rule.windows.clear();
    film.rule.voi = {100, 8, {0, 255, 51}};
    film.rule.white_is_low = false;
    EXPECT_EQ(shades(film)[0], 0);      // below the first entry
    EXPECT_EQ(shades(film)[4095], 51);  // beyond the last
    film.rule.modality = {-2048, 16, {101}};
    EXPECT_EQ(shades(film)[7], 255);
}

}  // namespace
