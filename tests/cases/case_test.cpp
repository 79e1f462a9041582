#include "cases/case.h"

#include <gmock/gmock.h>

#include "base/date_reader.h"
#include "host/host_test.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace cephtool {
namespace {

using host_test::read;
using testing::HasSubstr;

// A case of which the rows of a table replace or add one line.
std::string json(const std::string& line, const std::string& landmarks = R"({"S": [1, 2]})") {
    return "{\"format\": \"cephtool-case\", \"version\": 1, \"kind\": \"lateral\", \"mm_per_pixel\": 0.1,\n" + line +
           "\n\"landmarks\": " + landmarks + "}";
}

std::string csv(const std::string& lines) {
    return "# scale_mm_per_px=0.1\n" + lines;
}

std::string nineteen_points(int count = 19) {
    std::string text;
    for (int i = 1; i <= count; ++i) text += std::to_string(100 * i) + "," + std::to_string(100 * i + 1) + "\r\n";
    return text;
}

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

std::string own_landmarks(int count) {
    std::string text = "S,1,2\n";
    for (int i = 1; i <= count; ++i) text += "q" + std::to_string(i) + ",1,2\n";
    return text;
}

// The message in one line: "LINE:COLUMN message | way out". Line ends of CR LF change nothing of what is shown.
std::string complaint(const std::string& name, const std::string& text) {
    try {
        read(name, text);
        return "none";
    } catch (const Error& error) {
        std::string with_cr;
        for (const char c : text) with_cr += c == '\n' ? "\r\n" : std::string(1, c);
        try {
            if (text.find('\r') == std::string::npos) read(name, with_cr), ADD_FAILURE() << text;
        } catch (const Error& same) {
            EXPECT_EQ(shown(same), shown(error));
        }
        EXPECT_LT(shown(error).size(), 1500u);
        EXPECT_EQ(error.code, ExitCode::bad_input);
        return std::to_string(error.line) + ":" + std::to_string(error.column) + " " + error.what() + " | " +
               error.way_out;
    }
}

TEST(CaseReader, NamesThePlaceAndTheWayOut) {
    const struct {
        const char* name;
        std::string text;
        const char* complaint;
    } rows[] = {
        {"a.json", json("\"sx\": 1,"), "2:1 the key \"sx\" is not known here | "},
        {"a.json", json("\"landmark\": 1,"),
         "2:1 the key \"landmark\" is not known here | Did you mean \"landmarks\"?"},
        {"a.json", json("\"sex\": \"male\", \"sex\": \"male\","),
         "2:16 the key \"sex\" stands here a second time | "
         "The first is in line 2"},
        {"a.json", json("\"sex\": \"x\","), "2:8 \"x\" is no sex"},
        {"a.json", json("\"sex\": 1,"), "2:8 \"sex\" should be a text in quotes"},
        {"a.json", json("\"birth\": \"2001-02-29\","), "2:10 \"2001-02-29\" is no date"},
        {"a.json", json("\"birth\": \"H31.5.1\","), "2:10 the table of Japanese eras is missing"},
        {"a.json", json("\"film\": \"2001-02-27\", \"birth\": \"2001-02-28\","),
         "2:9 the film of 2001-02-27 was taken"},
        {"a.json", json("\"palate\": 1,"), "only a case of kind \"model\""},
        {"a.json", json("\"dental_stage\": \"iiia\","),
         "2:17 \"iiia\" is none of Hellman's dental stages | Did you mean \"IIIA\"? They are I, IIA, IIC, IIIA,"},
        {"a.json", json("\"dental_stage\": \" I\","), "2:17 \" I\" is none of"},
        {"a.json", json("\"vertebrae\": {\"C3au\": [1, 2]},"),
         "2:15 \"C3au\" is no point of a vertebra | Did you mean \"C3ua\"?"},
        {"a.json", json("\"user\": {\"C3ua\": [1, 2]}, \"vertebrae\": {\"C3ua\": [1, 2]},"),
         "2:41 a second landmark \"C3ua\""},
        {"a.json",
         "{\"format\": \"cephtool-case\", \"version\": 1, \"kind\": \"frontal\", \"landmarks\": {},\n"
         "\"vertebrae\": {\"C3ua\": [1, 2]}}",
         "2:15 only a case of kind \"lateral\" has points of vertebrae"},
        {"a.csv", csv("# dental_stage=V\nS,1,2\n"), "2:1 \"V\" is none of Hellman's"},
        {"a.json", json("\"name\": \"\\u001b[2J\","), "a control character"},
        {"a.json", json("\"x-\": [[[[[[[[[[[[[[[[[]]]]]]]]]]]]]]]]],"), "nested too deeply"},
        {"a.json", json("\"user\": {\"S\": [1, 2]},"), "2:10 \"S\" is a landmark of every lateral case"},
        {"a.json", json("\"user\": {\"abcdef\": [1, 2]},"), "takes 6 bytes | Names of this sort have 1 to 5 bytes"},
        {"a.json", json("\"user\": {\"漢字漢\": [1, 2]},"), "takes 6 bytes"},
        {"a.json", json("\"user\": {\"ü\": [1, 2]},"), "a character that formulas can't use"},
        {"a.json", json("\"user\": {\"a]\": [1, 2]},"), "a character that formulas can't use"},
        {"a.json", json("\"user\": {\"Q\": [1, 2]}, \"virtual\": {\"Q\": \"mid([S],[N])\"},"),
         "2:36 a second landmark"},
        {"a.json", json("\"virtual\": {\"V\": \"" + std::string(256, '[') + "\"},"), "is no formula of 1 to 255 bytes"},
        {"a.json", json("\"virtual\": {\"" + std::string(32, 'v') + "\": \"[S]\"},"), "takes 32 bytes"},
        {"a.json", json("\"outlines\": [{\"name\": \"\", \"points\": [], \"anchors\": [\"Pog(r)\"]}],"),
         "2:53 the anchor \"Pog(r)\" is no landmark of this case | Did you mean \"Pog(R)\"?"},
        {"a.json", json("", R"({"s": [1, 2]})"),
         "3:15 \"s\" is no landmark of a lateral case | Did you mean \"S\"? A "
         "landmark of your own goes under \"user\"."},
        {"a.json", json("", R"({"S": [1, 2, 3]})"), "landmark \"S\" holds 3 numbers | A point is [x, y]"},
        {"a.json", json("", R"({"S": [1, 1000001]})"), "3:24 the coordinate 1000001 lies outside every image"},
        {"a.json", json("", R"({"S": [1, "2"]})"), "3:24 a coordinate should be a number"},
        {"a.json", json("", R"({"S": [1, 1e999]})"), "3:"},
        {"a.json", json("", R"({"S\\\"": [1, 1]})"), "3:15 \"S\\\"\" is no landmark"},
        {"a.json", "{\"format\": \"other\"}", "1:12 this is another format"},
        {"a.json", "{\"format\": \"cephtool-case\", \"version\": 2}", "1:40 this program reads version 1"},
        {"a.json", "{\"format\": \"cephtool-case\", \"version\": 1}", "1:1 the key \"kind\" is missing"},
        {"a.json", "{\"format\": \"cephtool-case\", \"version\": 1, \"kid\": 1}",
         "1:43 the key \"kid\" is not known here | "
         "Did you mean \"kind\"?"},
        {"a.json", "[]", "1:1 a case should be an object"},
        {"a.json", "{\"a\": }", "1:7 this is no JSON"},
        {"a.json", "S,1,2", "1:1 this is no JSON"},
        {"a.json", "{} x", "this is no JSON"},
        {"a.json", "[" + repeated("0,", 1'000'001) + "0]", "more than 1000000 values"},
        {"a.csv", "S,1,2\n", "0:0 the case has no scale, so no length can be measured | Say how many"},
        {"a.csv", csv("S,1,2\nN,1\n"), "3:1 this line has 2 fields"},
        {"a.csv", csv("S,1,2\nN,1,2px\n"), "3:5 \"2px\" is no coordinate"},
        {"a.csv", csv("S,1,nan\n"), "\"nan\" is no coordinate"},
        {"a.csv", csv("S,1,2\nN,3,4\nS,1,2\n"), "4:1 a second landmark \"S\" | The first is in line 2"},
        {"a.csv", csv("S,1,2\n\"N,1,2\n"), "3:1 this quote is never closed"},
        {"a.csv", csv("S,1,2\nPog(r),1,2\n"),
         "3:1 \"Pog(r)\" is no landmark of a lateral case | Did you mean \"Pog(R)\"?"},
        {"a.csv", csv("Foo,1,2\n"), "2:1 no landmark of any kind"},
        {"a.csv", csv(own_landmarks(101)), "103:1 more than 100 landmarks of your own"},
        {"a.csv", csv(own_landmarks(1000)), "1002:1 more than 1000 landmarks | One file holds one case."},
        {"a.json", "{\"" + std::string(100'000, 'a'), "1:100003 this is no JSON"},
        {"a.csv", csv("# scale_mm_per_px=0.2\nS,1,2\n"),
         "2:1 the setting \"scale_mm_per_px\" is given a second time | The first is in line 1"},
        {"a.tps", "LM=1\n1 2\nSCALE=0.1\nCOMMENT=scale_mm_per_px=0.2\n", "4:1 the setting"},
        {"a.csv", csv("S,1,2\nü,1,2\n"), "3:1 the name \"ü\" holds a character that formulas can't use"},
        {"a.csv", csv("# sxe=m\nS,1,2\n"), "2:1 the setting \"sxe\" is not known | Did you mean \"sex\"?"},
        {"a.csv", csv("# scale_mm_per_px=0\nS,1,2\n"), "2:1 a pixel can't be 0 mm wide"},
        {"a.csv", csv("# scale_mm_per_px=9e-7\nS,1,2\n"), "mm wide"},
        {"a.csv", csv("# scale_mm_per_px=1000001\nS,1,2\n"), "mm wide"},
        {"a.csv", csv("# kind=pa\nS,1,2\n"), "2:1 \"pa\" is no kind of case"},
        {"a.csv", csv("name,x,y\n"), "0:0 there is no landmark in it"},
        {"a.csv", "S,1,2\n\xFFN,1,2", "2:1 a byte that is not UTF-8"},
        {"a.csv", std::string("S,1,2\nN\0", 8), "2:2 a zero byte"},
        {"a.csv", "\xFF\xFES", "the text is UTF-16"},
        {"a.csv", "\xEF\xBB\xBF \r\n", "0:0 the input is empty"},
        {"001.txt", nineteen_points(18), "it holds 18 points, 19 are needed"},
        {"001.txt", nineteen_points(20), "20:1 "},
        {"001.txt", nineteen_points() + "1\nx\n", "21:1 "},
    };
    for (const auto& row : rows) {
        EXPECT_THAT(complaint(row.name, row.text), HasSubstr(row.complaint)) << row.text.substr(0, 300);
    }
}

Error error_of(const std::string& name, const std::string& text) {
    try {
        read(name, text);
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << text;
    return {ExitCode::done, "", ""};
}

TEST(CaseReader, UnderlinesTheFaultInItsTerminalColumn) {
    EXPECT_EQ(shown(error_of("a.json", json("  \"name\": \"見本\", \"sx\": 1,"))),
              "cephtool: a.json:2:17: the key \"sx\" is not known here\n"
              "      \"name\": \"見本\", \"sx\": 1,\n"
              "                      ^\n"
              "  Keys of your own begin with \"x-\".\n");
    std::string name;
    for (int i = 0; i < 30; ++i) name += "名";
    for (const std::string before : {"", "a", "ab"}) {  // the excerpt of a long line begins with a whole character
        const Error error = error_of("a.csv", csv(before + name + ",x,1\n"));
        EXPECT_TRUE(error.excerpt.starts_with("名")) << error.excerpt;
    }
}

TEST(CaseReader, ReadsTheSameCaseFromEveryFormat) {
    const std::string own = R"("dental_stage": "IVC", "vertebrae": {"C4lp": [5, 6]},)";
    const std::string expected = to_json(read("a.json", json(own, R"({"S": [1, 2], "N": [3.5, -4]})")));
    for (const char* text : {"# scale_mm_per_px=0.1\nS,1,2\nN,3.5,-4",
                             "\xEF\xBB\xBF# scale_mm_per_px = 0.1 \r\nslot,name,x,y\r\n0,S,1,2\r\n1,\"N\", 3.5 ,-4\r\n",
                             "#a comment\n#scale_mm_per_px=0.1\nName,X,Y\nS,1.0,2\n\nBa,0,0\naux54,9,9\nN,+3.5,-4e0\n"})
        EXPECT_EQ(to_json(read("case", std::string(text) + "\n# dental_stage=IVC\nC4lp,5,6\n")), expected) << text;
}

TEST(CaseReader, TakesTheChallengesPointsInTheirOrder) {
    const Case record = read("001.txt", nineteen_points() + "1\r\n3\r\n");
    ASSERT_EQ(record.landmarks.size(), 19u);
    EXPECT_EQ(record.landmarks[3].name, "Po");
    EXPECT_EQ(record.landmarks[15].name, "Pog(s)");
    EXPECT_EQ(record.landmarks[18].name, "Ar");
    EXPECT_EQ(record.landmarks[18].position.y, 1901);
    EXPECT_EQ(record.mm_per_pixel, 0.1);
}

TEST(CaseReader, GuessesTheKindFromTheNames) {
    EXPECT_EQ(read("a.csv", csv("# birth=2001/1/2\n# film=2001/1/2\nMe,1,2\nANS,3,4\nCG,5,6\n")).kind, Kind::frontal);
    EXPECT_EQ(read("a.csv", csv("Me,1,2\nANS,3,4\nCG,5,6\nS,7,8\n")).kind, Kind::lateral);
    EXPECT_EQ(read("a.csv", csv("16m,1,2\n16d,3,4\n")).kind, Kind::model);
    EXPECT_EQ(read("a.csv", csv("# kind=frontal\nS,1,2\nMe,1,2\n")).kind, Kind::frontal);
}

TEST(CaseReader, SaysWhatItTookForGranted) {
    const Case record = read("a.csv", csv("S,1,2\nN,0,0\nU1A,3,4\naux54,1,1\n"));
    EXPECT_EQ(in_english(record.remarks.at(0)), "Landmark \"N\" at (0, 0) counts as not placed.");
    EXPECT_THAT(record.notes, testing::ElementsAre("\"U1A\" is kept as a landmark of your own. Did you mean \"U1C\"?",
                                                   "auxiliary points (auxNN) left out"));
    const Case given = read_case({"a.csv", csv("# sex=m\nS,1,2\n")}, {Sex::female, 0.5});
    EXPECT_EQ(given.sex, Sex::female);
    EXPECT_EQ(given.mm_per_pixel, 0.5);
    EXPECT_EQ(codes_of(given.remarks), "sex_replaced; scale_replaced");
    EXPECT_EQ(in_english(given.remarks[1]), "The scale is that of the command line, 0.5 mm a pixel, not the 0.1 of the file.");
}

// The fuzz target's own property, without a fuzzer: each seed whole, cut behind every byte, with every byte changed.
TEST(CaseReader, DamagedCasesAreRefusedOrStayTheSame) {
    int seeds = 0;
    for (const auto& seed : std::filesystem::directory_iterator(CASE_SEEDS)) {
        std::string text = host_test::bytes_of(seed.path());
        const auto try_text = [&](std::size_t size) {
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), size);
        };
        for (std::size_t i = 0; i <= text.size(); ++i) try_text(i);
        for (char& c : text) {
            const char before = c;
            for (const char flipped : {'\0', '"', '\\', '9', ',', '\n', '\x80', static_cast<char>(before ^ 0x20)}) {
                c = flipped;
                try_text(text.size());
            }
            c = before;
        }
        ++seeds;
    }
    EXPECT_GE(seeds, 5);
}

TEST(CaseReader, RefusesAnInputThatIsTooLargeBeforeReadingIt) {
    const host_test::Folder folder;
    folder.add("big.csv", "S,1,2\n");
    std::filesystem::resize_file("big.csv", largest_input + 1);
    std::istringstream none;
    EXPECT_THROW(read_bytes("big.csv", none), Error);
    EXPECT_THROW(read_bytes("absent.csv", none), Error);
    EXPECT_THROW(read_bytes(".", none), Error);
}

TEST(Age, IsInCompletedMonths) {
    const struct {
        const char *birth, *film;
        int years, months;
    } rows[] = {
        {"2001-05-14", "2013-08-14", 12, 3}, {"2001-05-14", "2013-08-13", 12, 2}, {"2004-02-29", "2005-02-28", 0, 11},
        {"2004-02-29", "2005-03-01", 1, 0},  {"2001-12-31", "2002-01-01", 0, 0},  {"2001-05-14", "2001-05-14", 0, 0},
    };
    for (const auto& row : rows) {
        const Age age = age_at(read_date(row.film), read_date(row.birth));
        EXPECT_EQ(age.years, row.years) << row.birth;
        EXPECT_EQ(age.months, row.months) << row.birth;
    }
}

}  // namespace
}  // namespace cephtool
