// Studies of readings, as the command makes them.
#include "study/reliability.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

#include "host/host_test.h"

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
    const auto five = run({"reliability", "a", "--second", "b", "--third", "a", "--next", "b", "--next", "a",
                           "--analysis", "Steiner", "--format", "csv", "--anaitem", ANALYSES});
    EXPECT_THAT(five.out, HasSubstr("landmark,,A along,mm,40,5,5,")) << five.err;
    // The errors that were found are those of values.
    const auto valued = run({"analyze", "--analysis", "Steiner", "--error-file", "own.txt", "--anaitem", ANALYSES,
                             "--format", "csv", "a/film1.csv"});
    ASSERT_EQ(valued.code, ExitCode::done) << valued.err;
    EXPECT_THAT(valued.out, HasSubstr(",A\r\n"));
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
