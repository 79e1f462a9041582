// Studies of readings, as the command makes them.
#include "study/reliability.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "base/numbers.h"
#include "cases/case.h"
#include "host/host_test.h"
#include "report/agreement_plot.h"
#include "report/landmark_scatter.h"
#include "results/analysis_folder.h"
#include "results/names.h"
#include "study/reading_comparison.h"

namespace cephtool {
namespace {

using host_test::run;
using testing::HasSubstr;

// A film of five landmarks; `shift` moves A along Frankfort, which falls forward here.
std::string film(double x, double y, double shift) {
    const double c = std::cos(0.2), s = std::sin(0.2);
    std::string text = "# scale_mm_per_px=0.1\nname,x,y\n";
    const struct {
        const char* name;
        double x, y;
    } points[] = {{"Po", 0, 0}, {"Or", 800, 0}, {"S", 200, -200}, {"N", 900, -300}, {"A", 950 + 10 * shift, 300}};
    for (const auto& p : points)
        text += std::string(p.name) + "," + std::to_string(x + p.x * c - p.y * s) + "," +
                std::to_string(y + p.x * s + p.y * c) + "\n";
    return text;
}

TEST(Reliability, TellsTheErrorsThatWereMade) {
    const host_test::Folder folder;
    std::mt19937 random(3);
    std::normal_distribution<double> normal;
    double squares = 0;
    constexpr int films = 40;
    for (int i = 0; i < films; ++i) {
        const double first = normal(random), second = 0.5 + normal(random), x = 300 + 40 * normal(random);
        squares += (second - first) * (second - first);
        folder.add("a/film" + std::to_string(i) + ".csv", film(x, 500, first));
        folder.add("b/film" + std::to_string(i) + ".csv", film(x, 500, second));
    }
    folder.add("b/more.csv", film(0, 0, 0));
    const auto told = run({"reliability", "a", "--second", "b", "--analysis", "Steiner", "--write-errors", "own.txt",
                           "--format", "csv", "--anaitem", ANALYSES});
    ASSERT_EQ(told.code, ExitCode::done) << told.err;
    EXPECT_THAT(told.err, HasSubstr("1 film is left out"));
    const std::size_t row = told.out.find("landmark,,A along,mm,40,2,2,");
    ASSERT_NE(row, std::string::npos) << told.out;
    double mean = 0, error = 0, dahlberg = 0;
    std::sscanf(told.out.c_str() + row, "landmark,,A along,mm,40,2,2,%lf,%lf,%lf", &mean, &error, &dahlberg);
    EXPECT_NEAR(error, std::sqrt(squares / (2 * films)), 1e-5);
    EXPECT_NEAR(error, dahlberg, 1e-9);
    EXPECT_THAT(told.out, HasSubstr("landmark,,A across,mm,40,2,2,"));
    EXPECT_THAT(told.out, HasSubstr(",SNA,deg,40,"));
    const auto written = tool::LandmarkErrors::from_text(host_test::bytes_of("own.txt"));
    EXPECT_NEAR(written.find("A", false)->along_mm, error, 0.006);
    EXPECT_EQ(written.find("A", false)->across_mm, 0);
    EXPECT_EQ(written.find("A", false)->readings, 2 * films);
    // Five readings are read like two.
    const auto five = run({"reliability", "a", "--second", "b", "--next", "a", "--next", "b", "--next", "a",
                           "--analysis", "Steiner", "--format", "csv", "--anaitem", ANALYSES});
    EXPECT_THAT(five.out, HasSubstr("landmark,,A along,mm,40,5,5,")) << five.err;
    // The errors that were found are those of values.
    const auto valued = run({"analyze", "--analysis", "Steiner", "--error-file", "own.txt", "--anaitem", ANALYSES,
                             "--format", "csv", "a/film1.csv"});
    ASSERT_EQ(valued.code, ExitCode::done) << valued.err;
    EXPECT_THAT(valued.out, HasSubstr(",A,\r\n"));
}

// The sheet of an SVG is all pages below each other, 10 units a mm; its texts are texts.
TEST(Reliability, PagesShowTablesScatterAndPlots) {
    const host_test::Folder folder;
    const std::string first = std::string(SAMPLES) + "/readings-first.tps",
                      second = std::string(SAMPLES) + "/readings-second.tps";
    const auto page = [&](const char* language, const char* item, const char* file) {
        const auto told = run({"reliability", first, "--second", second, "--analysis", "Steiner", "--item", item,
                               "--language", language, "-o", file});
        EXPECT_EQ(told.code, ExitCode::done) << told.err;
        return host_test::bytes_of(file);
    };
    const std::string svg = page("en", "steiner:SNB", "s.svg");
    for (const char* text : {">SNB, °<", ">0.94 (0.80 to 0.99)<", ">0.94 (0.78 to 0.98)<", ">Or along<",
                             ">reading 2 less reading 1, °<", ">+2.94<", ">100 mm: check with a ruler<"})
        EXPECT_THAT(svg, HasSubstr(text));
    // S and N of the average face are as far from each other as 71 mm are: their labels stand beside them.
    double sx = 0, sy = 0, nx = 0, ny = 0;
    const auto place = [&](const char* name, double& x, double& y) {
        const std::size_t at =
            svg.rfind("<text", svg.find(std::string(">") + name + "<", svg.find("ellipse that holds")));
        std::sscanf(svg.c_str() + at, "<text x=\"%lf\" y=\"%lf\"", &x, &y);
    };
    place("S", sx, sy), place("N", nx, ny);
    EXPECT_NEAR(std::hypot(nx - sx, ny - sy), 718, 20);
    const std::string html = page("ja", "SNB", "s.html");
    EXPECT_THAT(html, testing::AllOf(HasSubstr("<html lang=\"ja\">"), HasSubstr("平均顔の上の計測点のばらつき"),
                                     HasSubstr("id=\"p4-paper\"")));
    EXPECT_THAT(run({"reliability", first, "--second", second, "--analysis", "Steiner", "--item", "SNX"}).err,
                HasSubstr("no item \"SNX\""));
}

TEST(Reliability, EllipsesAndAxesAreThoseOfTheReadings) {
    StudyLandmark landmark{.name = "A", .along = {}, .across = {}};
    landmark.along.films = 4, landmark.along.readings = 2;
    for (const double d : {3.0, -1.0}) {  // one film along (4, 3), another across it
        landmark.from_mean.push_back({4 * d, 3 * d}), landmark.from_mean.push_back({-4 * d, -3 * d});
        landmark.from_mean.push_back({-3 / d, 4 / d}), landmark.from_mean.push_back({3 / d, -4 / d});
    }
    const auto [major, minor] = scatter_ellipse(landmark);
    const double square = 2 * std::log(20.0);
    EXPECT_NEAR(major.x, 0.8 * std::sqrt(square * 2 * 25 * 10 / 4), 1e-9);
    EXPECT_NEAR(major.y, 0.75 * major.x, 1e-9);
    EXPECT_NEAR(std::hypot(minor.x, minor.y), std::sqrt(square * 2 * 25 * (1 + 1 / 9.0) / 4), 1e-9);
    EXPECT_EQ(axis_numbers({-2.2, 4.1}, 6), (std::vector<double>{-2, 0, 2, 4}));
    EXPECT_EQ(axis_numbers({740, 860}, 6), (std::vector<double>{750, 800, 850}));
    EXPECT_TRUE(axis_numbers({1, 1}, 6).empty());
    EXPECT_EQ(means_and_differences({{1, 9, 4}}, 2)[0].y, 3);
    // 10 films: Student's t is 2.262.
    PairAgreement pair{.bias = 1,
                       .bias_interval = {1 - 2.262 * 2 / std::sqrt(10.0), 1 + 2.262 * 2 / std::sqrt(10.0)},
                       .sd = 2,
                       .t = {},
                       .p = {},
                       .limits = {},
                       .limit_error = std::sqrt(0.3) * 2};
    EXPECT_NEAR(limit_interval(pair, 10, 5).high, 5 + 2.262 * std::sqrt(0.3) * 2, 1e-9);
}

// A moves by 3 mm along Frankfort and N by 4 across it; values follow, their signs too.
TEST(Reliability, ComparesTwoReadingsOfAFilm) {
    const Case first = read_cases({"first.csv", film(300, 500, 0)}, {}).front();
    Case second = first;
    const double c = std::cos(0.2), s = std::sin(0.2);
    for (Landmark& landmark : second.landmarks) {
        if (landmark.name == "A") landmark.position.x += 30 * c, landmark.position.y += 30 * s;
        if (landmark.name == "N") landmark.position.x += 40 * s, landmark.position.y -= 40 * c;
    }
    std::erase_if(second.landmarks, [](const Landmark& landmark) { return landmark.name == "Or"; });
    const auto folder = analysis_folder(ANALYSES, {tool::FolderPart::analyses});
    const auto all = listed_analyses(folder);
    const auto steiner = std::ranges::find_if(all, [](const Analysis& each) { return short_name(each) == "Steiner"; });
    const Analysis* const chosen[] = {&*steiner};
    const ReadingComparison found = compared(first, second, chosen);
    ASSERT_EQ(found.landmarks.size(), 4);
    for (const LandmarkDifference& landmark : found.landmarks) {
        EXPECT_NEAR(landmark.along, landmark.name == "A" ? 3 : 0, 0.001) << landmark.name;
        EXPECT_NEAR(landmark.across, landmark.name == "N" ? 4 : 0, 0.001) << landmark.name;
        EXPECT_NEAR(landmark.distance, std::hypot(landmark.along, landmark.across), 1e-12);
    }
    EXPECT_NEAR(*found.dahlberg_along, std::sqrt(9 / 8.0), 0.001);
    EXPECT_NEAR(*found.dahlberg_across, std::sqrt(16 / 8.0), 0.001);
    ASSERT_EQ(found.values.size(), 1);  // SNA: of the others landmarks are missing
    const ValueDifference& sna = found.values.front();
    EXPECT_EQ(steiner->items()[sna.item].name, "SNA");
    EXPECT_EQ(sna.text, (sna.difference > 0 ? "+" : "") + with_decimals(sna.difference, 1));
    EXPECT_NEAR(sna.dahlberg * sna.dahlberg, sna.difference * sna.difference / 2, 1e-12);
    EXPECT_EQ(compared(first, first, chosen).values.front().text, "0.0");
}

TEST(Reliability, RefusesWhatIsNoStudy) {
    const host_test::Folder folder;
    for (const char* name : {"a/1.csv", "a/2.csv", "a/3.csv", "b/1.csv", "b/2.csv", "c/4.csv"})
        folder.add(name, film(300, 500, 0));
    const auto failure = [&](const char* second) {
        const auto told = run({"reliability", "a", "--second", second, "--anaitem", ANALYSES});
        EXPECT_EQ(told.code, ExitCode::bad_input);
        return told.err;
    };
    EXPECT_THAT(failure("b"), HasSubstr("fewer than three films"));
    EXPECT_THAT(failure("c"), HasSubstr("no film in common"));
    const auto odd = run({"reliability", "a", "--second", "b", "--next", "c", "--repeats", "2"});
    EXPECT_THAT(odd.err, HasSubstr("3 readings are not 2 of each observer"));
    folder.add("b/3.csv", "# scale_mm_per_px=0.2\nname,x,y\nS,1,2\nN,3,4\n");
    EXPECT_THAT(failure("b"), HasSubstr("another scale"));
}

}  // namespace
}  // namespace cephtool
