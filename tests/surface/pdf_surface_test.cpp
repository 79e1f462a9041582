#include "surface/pdf_surface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "CodePage.h"
#include "surface/whole_file.h"
#include "tests/surface/font_of.h"

namespace {

using testing::HasSubstr;

bool installed(const std::string& program) {
    return std::system(("command -v " + program + " >/dev/null").c_str()) == 0;
}

// A PDF in a file for as long as the test looks at it.
class PdfFile {
 public:
    explicit PdfFile(const std::string& bytes)
        : path_(std::filesystem::temp_directory_path() / ("tool_" + std::to_string(std::random_device()()) + ".pdf")) {
        EXPECT_EQ(tool::write_whole_file(path_, bytes), "");
    }
    ~PdfFile() { std::filesystem::remove(path_); }

    // What a program prints about it; FILE stands for its path.
    std::string told(std::string command) const {
        command.replace(command.find("FILE"), 4, path_.string());
        FILE* const pipe = popen(command.c_str(), "r");
        std::string output;
        std::array<char, 4096> part;
        while (const std::size_t count = std::fread(part.data(), 1, part.size(), pipe))
            output.append(part.data(), count);
        pclose(pipe);
        return output;
    }

 private:
    std::filesystem::path path_;
};

auto near(int value) {
    return testing::AllOf(testing::Ge(value - 1), testing::Le(value + 1));
}

// First and last dark pixel of a grey picture's rows, in the tenth of a millimetre that a pixel is.
std::array<int, 4> dark_box(const std::string& pgm) {
    int width = 0, height = 0, at = 0;
    EXPECT_EQ(std::sscanf(pgm.c_str(), "P5 %d %d 255%n", &width, &height, &at), 2);
    std::array<int, 4> box = {width, height, -1, -1};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (static_cast<unsigned char>(pgm[static_cast<std::size_t>(at + 1 + y * width + x)]) > 127) continue;
            box = {std::min(box[0], x), std::min(box[1], y), std::max(box[2], x), std::max(box[3], y)};
        }
    }
    return box;
}

TEST(PdfSurface, AHundredMillimetresAreAHundredMillimetres) {
    if (!installed("pdftoppm")) GTEST_SKIP() << "pdftoppm is not installed";
    for (const auto& [mode, units_a_mm] : {std::pair(MM_LOMETRIC, 10), std::pair(MM_HIMETRIC, 100)}) {
        const auto page = tool::PdfSurface::create(210, 297);
        page->set_map_mode(mode);
        CPen pen(PS_SOLID, units_a_mm, RGB(0, 0, 0));  // 1 mm wide, so that its round ends add 1 mm
        page->SelectObject(&pen);
        page->MoveTo(20 * units_a_mm, -50 * units_a_mm);
        page->LineTo(120 * units_a_mm, -50 * units_a_mm);
        const auto box = dark_box(PdfFile(page->pdf()).told("pdftoppm -gray -r 254 FILE"));
        EXPECT_THAT(box, testing::ElementsAre(near(195), near(495), near(1205), near(505)));
    }
    const auto page = tool::PdfSurface::create(60, 20);
    page->set_map_mode(MM_LOMETRIC);
    CPen dashes(PS_DASH, 1, RGB(0, 0, 0));  // 18 pixels of a screen long
    page->SelectObject(&dashes), page->MoveTo(100, -100), page->LineTo(158, -100);
    EXPECT_THAT(dark_box(PdfFile(page->pdf()).told("pdftoppm -gray -r 508 FILE"))[2], near(295));
}

TEST(PdfSurface, IsAPrinterOfTheSizeGiven) {
    const auto page = tool::PdfSurface::create(210, 297, 300);
    EXPECT_TRUE(page->IsPrinting());
    EXPECT_EQ(page->GetDeviceCaps(HORZSIZE), 210);
    EXPECT_EQ(page->GetDeviceCaps(VERTSIZE), 297);
    EXPECT_EQ(page->GetDeviceCaps(HORZRES), 2480);
    EXPECT_EQ(page->GetDeviceCaps(LOGPIXELSX), 300);
    EXPECT_EQ(tool::PdfSurface::create(0, 297), nullptr);
    EXPECT_EQ(tool::PdfSurface::create(210, 297, 10), nullptr);
}

TEST(PdfSurface, KeepsTextAndPages) {
    if (!installed("pdftotext")) GTEST_SKIP() << "pdftotext is not installed";
    const auto page = tool::PdfSurface::create(210, 297);
    page->set_map_mode(MM_LOMETRIC);
    CString text;
    ASSERT_TRUE(CodePage932FromUtf8("下顎角", &text));
    CFont font;
    make_font(font, 50, "\x82\x6C\x82\x72 \x83\x53\x83\x56\x83\x62\x83\x4E");
    page->SelectObject(&font);
    EXPECT_EQ(page->GetTextExtent(text, text.GetLength()).cy, 50);
    page->TextOut(200, -300, text, text.GetLength());
    page->new_page();
    page->TextOut(200, -300, "second", 6);
    const PdfFile file(page->pdf());
    EXPECT_THAT(file.told("pdftotext FILE -"), HasSubstr("下顎角\n\n\fsecond"));
    // The cell: 30 mm from the top of the page, 5 mm high.
    EXPECT_THAT(file.told("pdftotext -f 2 -l 2 -bbox FILE -"), HasSubstr("xMin=\"56.6"));
}

}  // namespace
