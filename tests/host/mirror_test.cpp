#include "host/case/mirror.h"

#include <gmock/gmock.h>

#include "host/host_test.h"
#include "host/numbers.h"

namespace cephtool {
namespace {

using host_test::Folder;
using host_test::run;
using testing::HasSubstr;
using testing::Not;

Facing facing_of(const std::string& landmarks) {
    return facing(read_case({"a.csv", "# scale_mm_per_px=0.1\n# kind=lateral\n" + landmarks}));
}

TEST(Facing, IsToldOnlyWhenEnoughLandmarksAgree) {
    const struct {
        const char* landmarks;
        Facing expected;
    } rows[] = {
        {"S,10,9\nN,20,9\n", Facing::unknown},
        {"S,10,9\nN,20,9\nA,20,20\nGo,10,30\nPog,18,40\n", Facing::right},
        {"S,20,9\nN,10,9\nA,10,20\nGo,20,30\nPog,12,40\n", Facing::left},
        {"S,20,9\nN,10,9\nGo,20,30\nPog,12,40\nMe,13,42\nGn,12,41\nPo,5,9\nOr,9,9\n", Facing::left},
        {"S,20,9\nN,10,9\nGo,20,30\nPog,12,40\nPo,5,9\nOr,9,9\n", Facing::unknown},
        {"S,10,9\nN,20,9\nGo,10,30\nPog,18,40\nMe,17,42\nPo,20,9\nOr,15,9\n", Facing::right},  // a quarter against
        {"C3la,1,1\nC3lp,5,1\nC4la,1,5\nC4lp,5,5\nN,1,9\nS,7,9\n", Facing::left},
    };
    for (const auto& row : rows) EXPECT_EQ(facing_of(row.landmarks), row.expected) << row.landmarks;
    for (const char* sample : {"average", "class2", "openbite"}) {
        const std::string file = std::string(SAMPLES "/lateral-") + sample + ".json";
        const Case record = read_case({file, host_test::bytes_of(file)});
        EXPECT_EQ(facing(record), Facing::right);
        EXPECT_EQ(facing(mirrored(record, 2000)), Facing::left);
    }
}

// Every point of the case moves, those that nothing is measured on, too.
TEST(Mirror, TurnedTwiceIsTheSameCase) {
    const std::string file = SAMPLES "/lateral-class2.json";
    const Case record = read_case({file, host_test::bytes_of(file)});
    const Case once = mirrored(record, mirror_extent(record));
    EXPECT_EQ(to_json(mirrored(once, mirror_extent(once))), to_json(record));
    const auto moved = [](const auto& a, const auto& b) { return a.x != b.x && a.y == b.y; };
    EXPECT_TRUE(moved(once.vertebrae[0].position, record.vertebrae[0].position));
    EXPECT_TRUE(moved(once.outlines[3].points[1], record.outlines[3].points[1]));
    const Case corner = read_case({"a.csv", "# scale_mm_per_px=0.1\nS,0,5\nN,9,0\n"});
    EXPECT_EQ(mirrored(corner, 9).landmarks[1].position.x, 1) << "(0, 0) would count as not placed";
    const Case curve = read_case({"a.tps", "LM=1\n1 0\nCURVES=1\nPOINTS=1\n9 5\nSCALE=1\nCOMMENT=landmarks=S\n"});
    EXPECT_EQ(mirrored(curve, 9).mirrored_about, 9) << "outlines may go there";
}

TEST(Mirror, AMirroredFilmGivesTheValuesOfTheFilm) {
    const Folder folder;
    for (const std::string sample : {"average", "class2", "openbite"}) {
        const std::string file = SAMPLES "/lateral-" + sample + ".json";
        folder.add("turned.json", to_json(mirrored(read_case({file, host_test::bytes_of(file)}), 2000)));
        for (const std::string command : {"analyze", "stage"}) {
            const auto values = [&](const std::string& path, bool mirror) {
                Arguments arguments{command, path, "--format", "csv", "--anaitem", ANALYSES};
                if (mirror) arguments.push_back("--mirror");
                const auto outcome = run(arguments);
                EXPECT_EQ(outcome.code, ExitCode::done) << outcome.err;
                return std::pair(outcome.out, outcome.err);
            };
            const auto [expected, silence] = values(file, false);
            const auto [turned, says_mirrored] = values("turned.json", true);
            EXPECT_THAT(silence, Not(HasSubstr("looks left")));
            EXPECT_THAT(says_mirrored, HasSubstr("Measured mirrored"));
            EXPECT_THAT(values("turned.json", false).second, HasSubstr("The face looks left"));
            EXPECT_THAT(values(file, true).second, HasSubstr("looks right already"));
            // Fields agree as text or, where the origin shows in the last digits, as numbers.
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
            EXPECT_EQ(static_cast<bool>(std::getline(b, y, ',')), false);
            EXPECT_GT(numbers, command == "stage" ? 0 : 100);
        }
    }
}

}  // namespace
}  // namespace cephtool
