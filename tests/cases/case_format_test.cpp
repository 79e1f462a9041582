#include "cases/case_format.h"

#include <gmock/gmock.h>

#include "cases/case_names.h"
#include "host/batch/flat_table.h"
#include "host/host_test.h"

namespace cephtool {
namespace {

using host_test::bytes_of;
using host_test::Folder;
using host_test::run;
using testing::HasSubstr;

// "S 850 850; N 1564.5 756; " of all landmarks of a case, whatever sort they are of.
std::string places(const Case& record) {
    std::ostringstream text;
    text.precision(17);
    for (const Landmark& landmark : all_landmarks(record))
        text << landmark.name << " " << landmark.position.x << " " << landmark.position.y << "; ";
    return text.str();
}

std::string read_places(const std::string& name, const std::string& text, const CaseOptions& options = {}) {
    try {
        std::string all;
        for (const Case& record : read_cases(checked_text({name, text}), options))
            all += (all.empty() ? "" : "| ") + places(record);
        return all;
    } catch (const Error& error) {
        return std::to_string(error.line) + ":" + std::to_string(error.column) + " " + error.what();
    }
}

std::string fcsv(const std::string& space, const std::string& rows) {
    return "# Markups fiducial file version = 4.11\n# CoordinateSystem = " + space + "\n" + rows;
}

std::string markups(const std::string& points, const std::string& space = "LPS", const std::string& more = "") {
    return "{" + more + "\"markups\":[{\"type\":\"Fiducial\",\"coordinateSystem\":\"" + space +
           "\",\"controlPoints\":[" + points + "]},{\"type\":\"Curve\",\"controlPoints\":[]}]}";
}

std::string point(const std::string& label, const std::string& position) {
    return "{\"label\":\"" + label + "\",\"position\":[" + position + "]}";
}

TEST(CaseFormats, AreReadAsTheirMakersMeanThem) {
    const CaseOptions named{.mm_per_pixel = 0.1, .landmarks = {"S", "N", "-"}, .image_height = 100.0};
    const CaseOptions unturned{.mm_per_pixel = 0.1, .landmarks = {"S", "N"}};
    const CaseOptions tenth{.mm_per_pixel = 0.1};
    const struct {
        const char* name;
        std::string text;
        CaseOptions options;
        const char* expected;
    } rows[] = {
        {"a.tps", "LM=3\n10 20\n30.5 40\n1 2\nSCALE=0.2\n", named, "S 10 80; N 30.5 60; "},
        {"a", "lm = 3\r\n10 20\r\n-1 -1\r\n1 2\r\n", named, "S 10 80; "},
        {"a.tps", "LM=2\n10 20\n30 40\nLM=2\n1 2\n3 4\n", unturned, "S 10 40; N 30 20; | S 1 4; N 3 2; "},
        {"a.tps", "LM=1\n1 2\nCURVES=1\nPOINTS=1\n5 12\nCOMMENT=landmarks=S\nSCALE=1\n", {}, "S 1 12; "},
        {"a.tps", "LM=1\n1 2\nCOMMENT=landmarks=S\nCOMMENT=flip=50\nVARIABLES=x\nSCALE=1\n", {}, "S 1 48; "},
        {"a.tps", "LM=2\n1 2\n", unturned, "3:1 point 2 of 2 is not two numbers"},
        {"a.tps", "LM=2\n1 2\n3 4\n5 6\n", unturned, "4:1 \"5 6\" stands behind the last point"},
        {"a.tps", "LM=1\n1 2\n", unturned, "1:1 1 landmarks, but 2 names for them"},
        {"a.tps", "LM=1\n1 2\nSCALE=1\n", {}, "1:1 a TPS file does not name its landmarks"},
        {"a.tps", "LM3=1\n1 2 3\n", unturned, "1:1 landmarks in three dimensions"},
        {"a.tps", "ID=1\nLM=1\n1 2\n", unturned, "1:1 a TPS file begins with a line LM=COUNT"},
        {"a.tps", "LM=1e9\n", unturned, "1:1 \"LM=1e9\" gives no number of points"},
        {"a.tps", "LM=1\n1 2\nCOMMENT=landmark=S\n", unturned, "3:1 the setting \"landmark\" is not known"},
        {"a.fcsv", fcsv("LPS", "1,85.5,86,0,0,0,0,1,1,1,0,S,,\n"), {}, "S 855 860; "},
        {"a", fcsv("RAS", "1,-85.5,86,0,0,0,0,1,1,1,0,\"S\",,,2,0\n"), tenth, "S 85.5 -86; "},
        {"a.fcsv", "1,-85.5,-86,0,0,0,0,1,1,1,0,S\n", tenth, "S 85.5 86; "},
        {"a", fcsv("2", "1,5,6,0,0,0,0,1,1,1,0,S,,,2,0\n2,5,6,0,0,0,0,1,1,1,0,N,,,3,0\n"), tenth, "S 5 6; "},
        {"a", fcsv("LPS", "# scale_mm_per_px=0.5\n1,5,6,0,0,0,0,1,1,1,0,S,,\n"), tenth, "S 10 12; "},
        {"a", fcsv("LPS", "1,5,6,0,0,0,0,1,1,1,0,S\n2,5,6,1,0,0,0,1,1,1,0,N\n"), {}, "4:7 the points do not lie in"},
        {"a", fcsv("xyz", ""), {}, "2:1 \" xyz\" is no coordinate system"},
        {"a.mrk.json", markups(point(" S ", "1.25,2,0") + "," + point("N", "3,4,0")), {}, "S 12.5 20; N 30 40; "},
        {"a.json", markups(point("S", "-1,-2,5"), "RAS"), tenth, "S 1 2; "},
        {"a", markups(point("S", "1,2,5"), "LPS", "\"x-cephtool\":{\"scale_mm_per_px\":\"0.5\"},"), {}, "S 2 4; "},
        {"a", markups(point("S", "1,2,0") + ",{\"label\":\"N\",\"positionStatus\":\"missing\"}"), tenth, "S 1 2; "},
        {"a", markups(point("S", "1,2")), {}, "1:98 a position has three coordinates"},
        {"a", markups(point("S", "1,2,0") + "," + point("S", "1,2,0")), {}, "a second landmark \"S\""},
        {"a.mrk.json", "{}", {}, "1:1 the key \"markups\" is missing"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(read_places(row.name, row.text, row.options), HasSubstr(row.expected)) << row.text;
}

// Each format in each other one, told apart by content alone.
TEST(CaseFormats, RoundTripsKeepEveryLandmark) {
    const Folder folder;
    for (const char* sample : {"lateral-class2.json", "frontal-average.json", "lateral-average-19-points.txt"}) {
        const Case original = read_case({sample, bytes_of(std::string(SAMPLES "/") + sample)});
        for (const CaseFormat& format : case_formats()) {
            const bool only_nineteen = std::string_view(format.name) == "challenge";
            if (only_nineteen && original.landmarks.size() != 19) continue;
            Case fine = original;  // places between pixels, of which TPS and Slicer keep five decimals
            fine.landmarks[0].position = {0.1 + 0.2, 9564.123454};
            fine.landmarks[1].position = {-7.00001, -6.999996};
            for (const Case& record : {original, fine}) {
                const Case again = read_case({"text", format.write(record, {})});
                Case expected = record;
                if (format.name != std::string_view("json") && format.name != std::string_view("csv") &&
                    !only_nineteen) {
                    for (Landmark& each : expected.landmarks) each.position = on_grid(each.position);
                }
                EXPECT_EQ(places(again), places(expected)) << format.name << sample;
                EXPECT_EQ(again.kind, record.kind) << format.name;
                EXPECT_EQ(again.mm_per_pixel, record.mm_per_pixel) << format.name;
                EXPECT_TRUE(only_nineteen || again.birth == record.birth) << format.name;
                EXPECT_EQ(format.write(again, {}), format.write(record, {})) << format.name;
            }
        }
    }
}

TEST(CaseFormats, AWrittenPointIsNeverTakenForAMissingOne) {
    const Case record = read_case({"a.csv", "# scale_mm_per_px=0.1\nS,-1,5\nN,7,-1\n"});
    EXPECT_EQ(places(read_case({"a", to_tps(record, {})})), places(record));
    EXPECT_THAT(to_tps(record, {.image_height = 10.0}), HasSubstr("LM=2\n-1 5\n7 11\n"));
}

TEST(CaseFormats, ARowOfATableGoesBeforeItsHeadAndNoColumnBeforeAnother) {
    const FlatTable table({"a.csv", "# scale_mm_per_px=0.1\nscale,S_x,S_y\n"});
    EXPECT_EQ(table.read({"a.csv", "0.2,1,2"}).mm_per_pixel, 0.2);
    EXPECT_THROW(FlatTable({"a.csv", "scale,scale_mm_per_px,S_x,S_y\n"}), Error);
}

TEST(Convert, WritesTheFormatThatTheNameOrTheOptionSays) {
    const Folder folder;
    const std::string sample = SAMPLES "/lateral-class2.json";
    for (const CaseFormat& format : case_formats()) {
        const std::string out = std::string("new") + format.extension;
        const auto outcome = run({"convert", sample, "-o", out});
        ASSERT_EQ(outcome.code, ExitCode::done) << outcome.err;
        EXPECT_EQ(bytes_of(out), run({"convert", sample, "--format", format.name}).out) << format.name;
        EXPECT_EQ(outcome.err.empty(), std::string_view(format.name) == "json") << "what is lost is said";
    }
    folder.add("two.tps", bytes_of("new.tps") + bytes_of("new.tps"));
    EXPECT_THAT(run({"convert", "two.tps"}).err, HasSubstr("it holds 2 specimens"));
    EXPECT_EQ(run({"convert", "two.tps", "-o", "again.tps"}).code, ExitCode::done);
    EXPECT_EQ(bytes_of("again.tps"), bytes_of("two.tps"));
    folder.add("names.txt", "# in the order of the study\nS\nN\n-\n");
    folder.add("plain.tps", "LM=3\n1 2\n3 4\n5 6\n");
    EXPECT_THAT(run({"convert", "plain.tps", "--scale", "1", "--landmarks", "@names.txt", "--format", "csv"}).out,
                HasSubstr("S,1,4\nN,3,2\n"));
}

TEST(Convert, SaysWhatTheNewFileCanNotKeep) {
    const Folder folder;
    EXPECT_THAT(run({"convert", SAMPLES "/frontal-average.json", "-o", "a.txt"}).err, HasSubstr("--format csv"));
    folder.add("old/a.json", R"({"format": "cephtool-case", "version": 1, "kind": "lateral", "mm_per_pixel": 1,
        "image": "x.png", "landmarks": {"S": [1, 2]}, "user": {"-": [3, 4], "aux01": [5, 6], "C3ua": [7, 8]}})");
    EXPECT_THAT(run({"convert", "two.tps", "-o", "a.pdf"}).err, HasSubstr("ends in .pdf, as no format"));
    EXPECT_THAT(run({"convert", "old/a.json", "-o", "a.tps"}).err, HasSubstr(R"(named "-", "aux01", "C3ua")"));
    EXPECT_THAT(bytes_of("a.tps"), HasSubstr("IMAGE=old/x.png\n"));
}

}  // namespace
}  // namespace cephtool
