#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "base/columns.h"
#include "host/host_test.h"

namespace cephtool {
namespace {

using host_test::Outcome;
using host_test::run;
using testing::HasSubstr;

class Modes : public testing::Test {
 protected:
    Modes() {
        folder_.add("clinic/CalcMode/list.txt",
                    "7,Gone.txt\r\n5,NoTitle.txt\r\nno comma\r\n-2,Lines.txt\r\n9,All.txt\r\n");
        folder_.add("clinic/CalcMode/NoTitle.txt", "Point:\r\nS\r\n");
        folder_.add("clinic/CalcMode/Lines.txt",
                    "title:\r\nLines\r\nPoint:\r\nS\r\n\r\nPog(s)\r\nSuppLine:\r\nColor=255,16,0\r\nLine=normal\r\n"
                    "[S]-[N]\r\nLine=BOLD\r\n[N]-[A]\r\nDecimal=0.5\r\nPos=N,8,-4\r\nSize=12\r\n=S=N CALC=\r\n"
                    "Decimal=1\r\nPos=\r\n=ANB\r\nPointSetting:\r\nS=red\r\n");
        folder_.add("clinic/CalcMode/All.txt", "title:\r\nAll (\x91\x53)\r\nSuppLine:\r\n");
        std::string many = "title:\r\nMany\r\nPoint:\r\n\r\nSuppLine:\r\n";
        for (int i = 0; i < 31; ++i) many += "[a" + std::to_string(i) + "]-[b]\r\n";
        folder_.add("clinic/CalcMode_Model/list.txt", "9,Many.txt\r\n");
        folder_.add("clinic/CalcMode_Model/Many.txt", many);
    }

    static Outcome modes(Arguments arguments) {
        arguments.insert(arguments.begin(), {"modes", "--anaitem", "clinic"});
        return run(arguments);
    }

    host_test::Folder folder_;
};

TEST_F(Modes, AreListedWithTheNumbersOfTheirList) {
    EXPECT_EQ(modes({}).out,
              "Kind      No  Mode                          Points Lines Values  File\n"
              "lateral   -2  Lines                              2     2      2  Lines.txt\n"
              "lateral    9  All (全)                         all     0      0  All.txt\n"
              "model      9  Many                               0    30      0  Many.txt\n");
    EXPECT_THAT(modes({}).err, HasSubstr("Gone.txt is listed, but can't be read: "));
    EXPECT_THAT(modes({"--kind", "model"}).out, testing::Not(HasSubstr("lateral")));
    EXPECT_EQ(nlohmann::json::parse(modes({"--format", "json"}).out)["modes"][2]["line_count"], 30);
}

TEST_F(Modes, ShowEveryPartOfOne) {
    for (const char* name : {"LINES", "lines.txt", "-2"}) {
        const Outcome one = modes({"--format", "json", "--", name});
        const nlohmann::json mode = nlohmann::json::parse(one.out)["modes"][0];
        EXPECT_EQ(mode["landmarks"], nlohmann::json({"S", "Pog(s)"}));
        EXPECT_EQ(mode["lines"][0],
                  nlohmann::json({{"from", "S"}, {"to", "N"}, {"colour", "#ff1000"}, {"weight", "normal"}}));
        EXPECT_EQ(mode["lines"][1]["weight"], "bold");
        EXPECT_EQ(mode["values"][0], nlohmann::json({{"text", "S=N CALC="},
                                                     {"colour", "#ff1000"},
                                                     {"decimals", "0.5"},
                                                     {"position", "N,8,-4"},
                                                     {"size", "12"}}));
        EXPECT_EQ(mode["values"][1]["position"], "");
        EXPECT_EQ(mode["settings"], nlohmann::json({"S=red"}));
    }
    const std::string both = modes({"9"}).out;
    EXPECT_THAT(both, HasSubstr("All (全)\nlateral mode 9, All.txt\n\nAll landmarks\n"));
    EXPECT_THAT(modes({"--language", "ja", "9"}).out,
                testing::StartsWith("全\n側面の表示モード 9, All.txt\n\n計測点：すべて\n線：0\n"));
    EXPECT_THAT(modes({"--language", "ja"}).out, HasSubstr("\n側面       9  全                              全点 "));
    EXPECT_THAT(both, HasSubstr("a29 - b"));
    std::istringstream lines(both + modes({"lines"}).out);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(display_width(line), 80) << line;
}

TEST_F(Modes, AnUnknownNameIsASlip) {
    const Outcome slip = modes({"Lnies"});
    EXPECT_EQ(slip.code, ExitCode::bad_command_line);
    EXPECT_THAT(slip.err, HasSubstr("Did you mean \"Lines\"?"));
    EXPECT_EQ(modes({"--kind", "model", "lines"}).code, ExitCode::bad_command_line);
}

}  // namespace
}  // namespace cephtool
