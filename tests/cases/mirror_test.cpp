#include "cases/mirror.h"

#include "cases/orientation.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

#include "base/numbers.h"
#include "host/host_test.h"
#include "results/texts.h"

namespace cephtool {
namespace {

using host_test::Folder;
using host_test::run;
using testing::HasSubstr;
using testing::Not;

Case lateral(const std::string& landmarks) {
    return read_case({"a.csv", "# scale_mm_per_px=0.1\n# kind=lateral\n" + landmarks});
}

Case sample(const std::string& name) {
    const std::string file = SAMPLES "/" + name + ".json";
    return read_case({file, host_test::bytes_of(file)});
}

TEST(Orientation, IsToldOnlyWhenEnoughLandmarksAgree) {
    const struct {
        const char* landmarks;
        Orientation expected;
    } rows[] = {
        {"S,850,850\nN,1560,760\n", Orientation::unknown},
        {"S,850,850\nN,1560,760\nMe,1460,1930\n", Orientation::right},
        {"N,1560,760\nA,1560,1320\nB,1520,1720\n", Orientation::unknown},  // on one line in many faces
        {"S,1560,760\nN,850,850\nMe,900,1930\nGo,1600,1610\n", Orientation::mirrored},
        {"S,850,850\nN,850,850\nMe,850,850\nGo,850,850\n", Orientation::unknown},
        {"S,850,850\nN,1560,760\nMe,790,1610\nGo,1460,1930\n", Orientation::unknown},  // Me and Go exchanged
        {"C3la,551,1859\nC3lp,694,1859\nC4la,562,2035\nC4lp,701,2047\n", Orientation::mirrored},
    };
    for (const auto& row : rows) EXPECT_EQ(orientation(lateral(row.landmarks)), row.expected) << row.landmarks;
}

// Landmarks are as much as 3 mm off, and in most cases one is anywhere.
TEST(Orientation, IsToldAtAllAnglesOfTilt) {
    std::mt19937 random(20250421);
    std::normal_distribution<double> error_px(0, 10);
    std::uniform_real_distribution<double> anywhere(-9000, 9000);
    for (const char* name : {"lateral-average", "lateral-class2", "lateral-openbite", "frontal-average"}) {
        const Case film = sample(name);
        for (int degrees = 0; degrees < 360; ++degrees) {
            const double turn = degrees * std::acos(-1) / 180, c = std::cos(turn), s = std::sin(turn);
            const auto told = [&](double x_sign, double y_sign) {
                Case other = film;
                const bool is_usual = degrees % 3 == 0;
                if (!is_usual)
                    other.landmarks.insert(other.landmarks.end(), other.vertebrae.begin(), other.vertebrae.end());
                other.vertebrae.clear();
                for (Landmark& landmark : other.landmarks) {
                    const double x = x_sign * (landmark.position.x + std::clamp(error_px(random), -30., 30.)),
                                 y = y_sign * (landmark.position.y + std::clamp(error_px(random), -30., 30.));
                    landmark.position = {c * x - s * y, s * x + c * y};
                }
                if (!is_usual)
                    other.landmarks[random() % other.landmarks.size()].position = {anywhere(random), anywhere(random)};
                return orientation(other);
            };
            const auto within = [&](int about) { return std::abs((degrees - about + 540) % 360 - 180); };
            const auto expected = [&](int tilt, Orientation upright, Orientation upside_down) {
                return tilt < 50    ? testing::AnyOf(upright, upright)
                       : tilt < 70  ? testing::AnyOf(upright, Orientation::reversed)
                       : tilt < 110 ? testing::AnyOf(Orientation::reversed, Orientation::reversed)
                       : tilt < 130 ? testing::AnyOf(Orientation::reversed, upside_down)
                                    : testing::AnyOf(upside_down, upside_down);
            };
            ASSERT_EQ(told(1, 1), Orientation::right) << name << ", " << degrees;
            ASSERT_THAT(told(-1, 1), expected(within(0), Orientation::mirrored, Orientation::y_flipped)) << degrees;
            ASSERT_THAT(told(1, -1), expected(within(0), Orientation::y_flipped, Orientation::mirrored)) << degrees;
        }
    }
    EXPECT_EQ(orientation(sample("model-average")), Orientation::unknown);
}

// Every point of the case moves, those that nothing is measured on, too.
TEST(Mirror, TurnedTwiceIsTheSameCase) {
    const Case record = sample("lateral-class2");
    for (const Axis axis : {Axis::x, Axis::y}) {
        const Case once = mirrored(record, axis, mirror_extent(record, axis));
        EXPECT_EQ(to_json(mirrored(once, axis, mirror_extent(once, axis))), to_json(record));
        const auto moved = [&](const auto& a, const auto& b) {
            return (a.x != b.x) == (axis == Axis::x) && (a.y != b.y) == (axis == Axis::y);
        };
        EXPECT_TRUE(moved(once.vertebrae[0].position, record.vertebrae[0].position));
        EXPECT_TRUE(moved(once.outlines[3].points[1], record.outlines[3].points[1]));
    }
    const Case corner = read_case({"a.csv", "# scale_mm_per_px=0.1\nS,0,5\nN,9,0\n"});
    EXPECT_EQ(mirrored(corner, Axis::x, 9).landmarks[1].position.x, 1) << "(0, 0) would count as not placed";
    EXPECT_EQ(mirrored(corner, Axis::y, 5).landmarks[0].position.y, 1);
    const Case curve = read_case({"a.tps", "LM=1\n1 0\nCURVES=1\nPOINTS=1\n9 5\nSCALE=1\nCOMMENT=landmarks=S\n"});
    EXPECT_EQ(mirrored(curve, Axis::x, 9).landmarks[0].position.x, 8) << "outlines may go there";
}

// Exact as text or, where the origin shows in the last digits, as numbers; the last column, of remarks, excepted.
void expect_same_values(const std::string& expected, const std::string& turned, int least) {
    std::istringstream a(expected), b(turned);
    std::string x, y;
    int numbers = 0;
    while (std::getline(a, x, ',')) {
        ASSERT_TRUE(std::getline(b, y, ','));
        const auto p = number_from(x), q = number_from(y);
        if (!p || !q) continue;
        EXPECT_NEAR(*p, *q, 1e-6 * (1 + std::abs(*p)));
        ++numbers;
    }
    EXPECT_FALSE(std::getline(b, y, ','));
    EXPECT_GE(numbers, least);
}

TEST(Mirror, AFilmTurnedRoundGivesTheValuesOfTheFilm) {
    const Folder folder;
    for (const std::string name : {"lateral-average", "lateral-class2", "lateral-openbite", "frontal-average"}) {
        const struct {
            Axis axis;
            const char *option, *code, *measured;
        } ways[] = {{Axis::x, "--mirror", "mirrored", "measured_mirrored"},
                    {Axis::y, "--flip-y", "y_flipped", "measured_flipped"}};
        for (const auto& way : ways) {
            const std::string file = SAMPLES "/" + name + ".json";
            folder.add("turned.json", to_json(mirrored(sample(name), way.axis, 2000)));
            const auto values = [&](const char* command, const std::string& path, Arguments more = {}) {
                Arguments arguments{command, path, "--format", "csv", "--anaitem", ANALYSES};
                arguments.insert(arguments.end(), more.begin(), more.end());
                const auto outcome = run(arguments);
                EXPECT_EQ(outcome.code, ExitCode::done) << outcome.err;
                return outcome;
            };
            const auto expected = values("analyze", file), turned = values("analyze", "turned.json", {way.option});
            expect_same_values(expected.out, turned.out, 50);
            expect_same_values(values("stage", file).out, values("stage", "turned.json", {way.option}).out, 0);
            EXPECT_THAT(expected.out, Not(HasSubstr(way.code)));
            EXPECT_THAT(turned.out, HasSubstr(std::string(",") + way.measured + ","));
            EXPECT_THAT(values("analyze", "turned.json").out, HasSubstr(std::string(",") + way.code + ","));
            EXPECT_THAT(values("analyze", file, {way.option}).err, HasSubstr("lies as it should already"));
        }
    }
}

TEST(Mirror, WhatIsRemarkedIsInBothLanguages) {
    const auto remarks = [](const std::string& file, const std::string& text, const CaseOptions& options = {}) {
        return read_case({file, text}, options).remarks;
    };
    const Case film = sample("lateral-average"), front = sample("frontal-average");
    const std::string left = to_json(mirrored(film, Axis::x, 0)), down = to_json(mirrored(film, Axis::y, 0));
    const std::string bare = "# scale_mm_per_px=0.1\n# sex=m\nS,0,0\nN,9,9\n";
    std::string points;
    for (int i = 1; i <= 19; ++i) points += std::to_string(i) + ",5\n";
    const std::vector<Remark> all[] = {
        remarks("a.json", left),
        remarks("a.json", to_json(mirrored(front, Axis::x, 0))),
        remarks("a.json", down),
        remarks("a.csv", "# scale_mm_per_px=0.1\nS,100,-800\nN,10,-90\nMe,1100,0\nGo,800,-800\n"),
        remarks("a.json", left, {.mirror = true}),
        remarks("a.json", down, {.flip_y = true}),
        remarks("a.csv", bare, {.sex = Sex::female, .mm_per_pixel = 2.0}),
        remarks("a.txt", points),
        remarks("a.fcsv", "# CoordinateSystem = LPS\n1,5,6,0,0,0,0,1,1,1,1,S,,\n")};
    for (const std::vector<Remark>& each : all) {
        EXPECT_FALSE(each.empty()) << &each - all;
        for (const Remark& remark : each)
            EXPECT_NE(Texts(Language::japanese)(remark), in_english(remark)) << remark.text;
    }
}

TEST(Mirror, AFlippedCaseKeepsItsPictureWhenTheHeightIsGiven) {
    const Case film = read_case({"a.json", to_json([] {
                                     Case record = mirrored(sample("lateral-average"), Axis::y, 2400);
                                     record.image = "film.png";
                                     return record;
                                 }())},
                                {.flip_y = true, .image_height = 2400.0});
    EXPECT_EQ(film.landmarks[0].position.y, sample("lateral-average").landmarks[0].position.y);
    EXPECT_EQ(film.image, "film.png");
    EXPECT_FALSE(film.off_its_picture);
}

}  // namespace
}  // namespace cephtool
