#include <CodePage.h>
#include <Framework.h>
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "host/host_test.h"

namespace cephtool {
namespace {

using host_test::Outcome;
using host_test::run;
using testing::HasSubstr;

TEST(Check, ListsFaultsByPlaceAndCountsThem) {
    const host_test::Folder folder;
    const std::string sound = "title:\nT\nCalc:\nA=len([S],[N])\n";
    CString japanese;
    ASSERT_TRUE(CodePage932FromUtf8("上顎=len([s],[N])\n", &japanese));
    folder.add("mine/CalcForm/list.txt", "A.txt\n");
    folder.add("mine/CalcForm/A.txt", sound + static_cast<LPCSTR>(japanese) + "len([N])\n");
    folder.add("sound.txt", sound);
    folder.add("sond.txt", sound);  // not meant by "sønd.txt"
    folder.add("noted.txt", sound + "Mean:\nA=5\n");
    folder.add("症例.txt", sound + "len([N])\n");
    const std::string slip = "mine/CalcForm/A.txt:5:9: there is no landmark \"s\"";
    const std::string no_equals = "A.txt:6:1: a line without \"=\" is not read; write name=formula\n";
    struct {
        Arguments arguments;
        ExitCode code;
        std::vector<std::string> out;  // in this order
        std::string err;
    } const cases[] = {
        {{"sound.txt"}, ExitCode::done, {}, "no faults in 1 file\n"},
        {{"noted.txt"}, ExitCode::done, {}, "no faults in 1 file, 1 note (--notes shows them)\n"},
        {{"--notes", "noted.txt"},
         ExitCode::done,
         {"noted.txt:6:1: note: a mean without"},
         "no faults in 1 file, 1 note\n"},
        {{"mine"}, ExitCode::bad_input, {slip, no_equals}, "2 faults in 2 files\n"},
        {{"mine/CalcForm", "sound.txt"}, ExitCode::bad_input, {slip, no_equals}, "2 faults in 3 files\n"},
        {{"mine/CalcForm/A.txt"}, ExitCode::bad_input, {slip, no_equals}, "2 faults in 1 file\n"},
        {{"症例.txt"}, ExitCode::bad_input, {"症例.txt:5:1: "}, "1 fault in 1 file\n"},
        {{"gone.txt", "sound.txt"}, ExitCode::bad_input, {"gone.txt: there is no such file"}, "1 fault in 1 file\n"},
        {{"\xF0\x9F\xA6\xB7.txt"},
         ExitCode::bad_input,
         {},
         "cephtool: \xF0\x9F\xA6\xB7.txt has a name outside code page 932\n"},
        {{"sønd.txt"}, ExitCode::bad_input, {}, "cephtool: sønd.txt has a name outside code page 932\n"},
        {{"--format", "jsn", "mine"}, ExitCode::bad_command_line, {}, "cephtool: --format: \"jsn\" is none of"},
    };
    for (const auto& c : cases) {
        Arguments arguments{"check"};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, c.code) << c.arguments.back();
        EXPECT_THAT(outcome.err, testing::StartsWith(c.err));
        std::size_t at = 0;
        for (const std::string& text : c.out) EXPECT_LT(at = outcome.out.find(text, at), outcome.out.size()) << text;
        EXPECT_EQ(std::ranges::count(outcome.out, '\n'), static_cast<std::ptrdiff_t>(c.out.size())) << outcome.out;
        EXPECT_THAT(outcome.out, testing::Not(HasSubstr("\x1b")));
    }
    const auto json = nlohmann::json::parse(run({"check", "--format", "json", "mine"}).out);
    EXPECT_EQ(json["files"], 2);
    ASSERT_EQ(json["findings"].size(), 2u);
    EXPECT_EQ(json["findings"][0]["file"], "mine/CalcForm/A.txt");
    EXPECT_EQ(json["findings"][0]["column"], 9);
    EXPECT_EQ(json["findings"][1]["line"], 6);
}

TEST(Check, PaintsOnATerminalOnly) {
    const host_test::Folder folder;
    folder.add("bad.txt", "title:\nT\nCalc:\nlen([N])\n");
    std::istringstream in;
    std::ostringstream out, err;
    Streams streams{in, out, err, true};
    EXPECT_EQ(run_program({"check", "bad.txt"}, streams), ExitCode::bad_input);
    EXPECT_THAT(out.str(), testing::StartsWith("\x1b[1mbad.txt:4:1:\x1b[0m a line"));
}

TEST(Check, TheShippedFolderHasNoFault) {
    const Outcome outcome = run({"check", ANALYSES});
    EXPECT_EQ(outcome.code, ExitCode::done) << outcome.out;
    EXPECT_EQ(outcome.out, "");
}

}  // namespace
}  // namespace cephtool
