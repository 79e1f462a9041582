#include "tracing/tracing_drawing.h"

#include <gmock/gmock.h>

#include <cmath>

#include "host/host_test.h"
#include "report/film.h"
#include "surface/recording_surface.h"

namespace cephtool {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

// What is drawn in each layer, one operation a line.
struct Drawn {
    std::vector<std::string> layers;
    std::map<std::string, std::string> text;
    std::vector<std::string> unlabelled;

    std::vector<std::string> lines(const std::string& layer, const std::string& command) const {
        std::vector<std::string> found;
        std::istringstream all(text.at(layer));
        for (std::string line; std::getline(all, line);)
            if (line.starts_with(command + " ")) found.push_back(line);
        return found;
    }
};

Drawn drawn(const Tracing& tracing, const Page& page, const TracingStyle& style = paper_style(),
            bool with_ruler = false, bool with_film = false) {
    tool::RecordingSurface surface;
    surface.set_map_mode(MM_HIMETRIC);
    surface.set_size(2000, 2500, 200, 250);
    Drawn result;
    Canvas canvas{surface, surface, {}, {}};
    const auto take = [&] {
        if (!result.layers.empty()) result.text[result.layers.back()] = surface.text();
        surface.clear();
    };
    canvas.begin_layer = [&](const char* name) {
        take();
        result.layers.emplace_back(name);
    };
    canvas.draw_picture = [&](const Film&, const RECT& where) { surface.FrameRect(&where, surface.GetCurrentBrush()); };
    const Film film;
    draw_tracing(tracing, page, style, with_film ? &film : nullptr, with_ruler ? long_ruler() : short_ruler(), canvas,
                 result.unlabelled);
    take();
    return result;
}

Tracing plain() {
    Tracing tracing;
    tracing.patient = "Mihon";
    tracing.mm_per_pixel = 0.1;
    tracing.landmarks = {{"S", {100, 200}}, {"計測", {900, 1600}}, {"A😀", {500, 900}}};
    tracing.lines = {{"S-N", {100, 200}, {900, 250}, "#0046a0", true}, {"N-A", {900, 250}, {500, 900}, "#be3c00"}};
    tracing.values = {{"SNA 82.0", {300, 300}, "#960050", 10}};
    tracing.outlines = {{{"Orbit", true, {{300, 300}, {500, 300}, {400, 500}}, {}}, {}}};
    return tracing;
}

double number(std::string_view line, int word) {
    std::istringstream words{std::string(line)};
    std::string text;
    for (int i = 0; i <= word; ++i) words >> text;
    return std::stod(text);
}

TEST(TracingDrawing, IsDrawnInLayersThatRiseFromFilmToLegend) {
    const Tracing tracing = plain();
    const Drawn paper = drawn(tracing, page_for(tracing, {}));
    EXPECT_THAT(paper.layers, ElementsAre("outlines", "planes", "values", "landmarks", "labels", "ruler", "legend"));
    const Drawn film = drawn(tracing, page_for(tracing, FilmSize{1000, 1800}), film_style(), false, true);
    EXPECT_EQ(film.layers.front(), "film");
    EXPECT_THAT(film.text.at("film"), HasSubstr("framerect ffffff 1500 0 11500 -18000"));  // centred on 130 mm
}

TEST(TracingDrawing, PutsEachPixelOfTheFilmAtItsPlaceInHundredthsOfAMillimetre) {
    const Tracing tracing = plain();
    const Page page = page_for(tracing, {});
    EXPECT_EQ(page.enlargement, 1);
    const Drawn paper = drawn(tracing, page);
    const auto starts = paper.lines("planes", "move"), ends = paper.lines("planes", "line");
    ASSERT_GE(ends.size(), 2u);
    EXPECT_NEAR(number(ends[0], 1) - number(starts[0], 1), 8000, 1);  // 800 pixels of 0.1 mm
    EXPECT_NEAR(number(ends[0], 2) - number(starts[0], 2), -500, 1);  // downwards
    EXPECT_THAT(paper.lines("planes", "pen"), Contains("pen 0 40 0046a0"));
    EXPECT_THAT(paper.lines("planes", "pen"), Contains("pen 0 20 be3c00"));
    EXPECT_THAT(paper.lines("outlines", "polyline"), Contains(StartsWith("polyline ")));
    // A dot and its halo for each landmark, halos first.
    EXPECT_EQ(paper.lines("landmarks", "ellipse").size(), 6u);
}

TEST(TracingDrawing, WritesNamesInTheCodePageAndCutsWhatIsTooLong) {
    Tracing tracing = plain();
    tracing.patient.assign(400, 'W');
    tracing.values.push_back({"SNB 80.0", {300, 300}, "#960050", 10});
    const Drawn paper = drawn(tracing, page_for(tracing, {}));
    EXPECT_THAT(paper.text.at("labels"),
                testing::AllOf(HasSubstr("\"S\""), HasSubstr("\"計測\""), HasSubstr("\"A?\"")));
    const auto values = paper.lines("values", "text");  // two on one place: the second gives way
    ASSERT_EQ(values.size(), 2u);
    EXPECT_GT(std::abs(number(values[1], 2) - number(values[0], 2)), 300);
    // One that would begin 10 mm before the right border gives way to the left.
    const Page page = page_for(tracing, {});
    const Position border{(page.drawing.right - 10 - page.origin.x) / page.scale, 1000};
    tracing.values = {{"SNB 80.0", border, "#960050", 10}};
    const auto beside = drawn(tracing, page).lines("values", "text");
    EXPECT_LT(number(beside.at(0), 1), 100 * page(border).x - 100);
    EXPECT_THAT(paper.text.at("legend"), HasSubstr("WWW…\""));
    EXPECT_TRUE(paper.unlabelled.empty());
    // On a film names have a shadow below them, and teeth stay open.
    const Drawn film = drawn(tracing, page_for(tracing, FilmSize{1000, 1800}), film_style(), false, true);
    EXPECT_EQ(film.lines("labels", "text").size(), 6u);
}

TEST(TracingDrawing, BrightensTheModesColoursOnDarkAndFillsTeethOnlyWithoutAFilm) {
    EXPECT_EQ(paper_style().mode_colour("#960050"), RGB(150, 0, 80));
    EXPECT_GT(GetRValue(film_style().mode_colour("#000000")), 120);
    Tracing tracing = plain();
    const OutlineStyle tooth{Tissue::tooth, false};
    tracing.outlines = {{{"Crown", true, {{300, 300}, {500, 300}, {400, 500}}, {}}, tooth},
                        {{"Root", false, {{300, 300}, {400, 100}, {500, 300}}, {}}, tooth}};
    EXPECT_EQ(drawn(tracing, page_for(tracing, {})).lines("outlines", "polygon").size(), 2u);
    const Drawn film = drawn(tracing, page_for(tracing, FilmSize{1000, 1800}), film_style(), false, true);
    EXPECT_TRUE(film.lines("outlines", "polygon").empty());
}

TEST(TracingPage, TheRulerOfASheetIsAHundredMillimetresLong) {
    const Tracing tracing = plain();
    const auto sheet = sheet_for(tracing, FilmSize{1900, 2400});
    ASSERT_TRUE(sheet);
    EXPECT_EQ(sheet->scale, 0.1);
    const Drawn paper = drawn(tracing, *sheet, paper_style(), true);
    EXPECT_EQ(number(paper.lines("ruler", "line")[0], 1) - number(paper.lines("ruler", "move")[0], 1), 10000);
    EXPECT_EQ(paper.lines("ruler", "line").size(), 102u);
    const Drawn screen = drawn(tracing, page_for(tracing, {}));
    EXPECT_EQ(number(screen.lines("ruler", "line")[0], 1) - number(screen.lines("ruler", "move")[0], 1), 5000);
}

TEST(TracingPage, TakesTheSmallestSheetAndNoneBeyondA3) {
    const Tracing tracing = plain();
    struct {
        FilmSize film;
        double width, height;  // 0: no sheet
    } const rows[] = {{{1800, 2400}, 210, 297}, {{2800, 1600}, 297, 210}, {{2500, 3000}, 297, 420},
                      {{3900, 2500}, 420, 297}, {{3000, 4200}, 0, 0},     {{9000, 100}, 0, 0}};
    for (const auto& row : rows) {
        const auto sheet = sheet_for(tracing, row.film);
        EXPECT_EQ(sheet ? sheet->width_mm : 0, row.width) << row.film.width;
        EXPECT_EQ(sheet ? sheet->height_mm : 0, row.height) << row.film.width;
        EXPECT_TRUE(!sheet || std::min(sheet->drawing.left, sheet->drawing.top) >= 4);
    }
}

TEST(TracingPage, WithinARoomItTakesTheLargestScaleOfItsKindThatFits) {
    Tracing tracing;
    tracing.mm_per_pixel = 0.1;
    const Box room{10, 20, 110, 140};
    for (int side = 100; side < 4000; side += 37) {
        const Page page = page_within(room, 20, tracing, FilmSize{side, side});
        const double true_mm = side * 0.1, next = page.enlargement < 1 ? page.enlargement + 0.05 : 2.5;
        EXPECT_TRUE(page.drawing.left >= room.left - 1e-9 && page.drawing.right <= room.right + 1e-9) << side;
        EXPECT_TRUE(page.drawing.bottom <= room.bottom - 20 + 1e-9) << side;
        EXPECT_TRUE(page.enlargement > 1 || true_mm * next > 100 - 1e-9) << side;
        EXPECT_NEAR(page.enlargement * 20, std::round(page.enlargement * 20), 1e-9) << side;
    }
}

TEST(TracingPage, AWrongScaleGivesNeitherAStampNorAField) {
    for (const double scale : {1e-6, 0.01, 0.1, 10.0, 1e6}) {
        Tracing tracing = plain();
        tracing.mm_per_pixel = scale;
        for (const auto& film : std::vector<std::optional<FilmSize>>{{}, {{2000, 2400}}, {{6000, 2400}}}) {
            const Page page = page_for(tracing, film);
            EXPECT_GT(page.height_mm, 100) << scale;
            EXPECT_LT(std::max(page.height_mm, page.width_mm), 460) << scale;
            EXPECT_NEAR(page.scale, scale * page.enlargement, 1e-12);
        }
    }
    Tracing empty;
    empty.mm_per_pixel = 0.1;
    const Page page = page_for(empty, {});
    EXPECT_TRUE(std::isfinite(page.scale) && !drawn(empty, page).layers.empty());
}

}  // namespace
}  // namespace cephtool
