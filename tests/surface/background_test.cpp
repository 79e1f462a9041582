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

std::string bytes_of(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST(Background, LiesWhereItIsPut) {
    tool::Background halves{8, 6, {}, {}};
    for (int i = 0; i < 48; ++i) halves.pixels.push_back(i % 8 < 4 ? 0xFF202020 : 0xFFE0E0E0);
    const auto surface = tool::PictureSurface::create(40, 40, tool::PictureSurface::Look::smooth);
    surface->draw_background(halves, {10, 5, 26, 17});
    EXPECT_EQ(surface->pixel(10, 5), RGB(32, 32, 32));
    EXPECT_EQ(surface->pixel(25, 16), RGB(224, 224, 224));
    EXPECT_EQ(surface->pixel(26, 16), RGB(255, 255, 255));
    EXPECT_EQ(surface->pixel(9, 5), RGB(255, 255, 255));

    halves.jpeg = bytes_of(TOOL_SOURCE_DIR "/tests/film/data/grey.jpg");
    const auto page = tool::PdfSurface::create(100, 100);
    page->draw_background(halves, {0, 0, 800, 600});
    EXPECT_THAT(page->pdf(), testing::HasSubstr("/DCTDecode"));
}

TEST(WholeFile, AFailedWriteLeavesNothingAndALinkStaysOne) {
    const auto folder = std::filesystem::temp_directory_path() / ("tool_" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(folder / "taken");
    EXPECT_EQ(tool::write_whole_file(folder / "a.png", "two"), "");
    EXPECT_NE(tool::write_whole_file(folder / "taken", "three"), "");
    EXPECT_NE(tool::write_whole_file(folder / "none" / "a.png", "four"), "");
    EXPECT_EQ(bytes_of(folder / "a.png"), "two");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 2);
    std::error_code no_links;
    std::filesystem::create_symlink("new.png", folder / "link", no_links);
    EXPECT_EQ(tool::write_whole_file(folder / "link", "five"), "");
    EXPECT_TRUE(no_links || (is_symlink(folder / "link") && file_size(folder / "new.png") == 4));
    std::filesystem::remove_all(folder);
}

}  // namespace
