#include <gmock/gmock.h>

#include <cmath>
#include <cstdio>

#include "base/path.h"
#include "host/host_test.h"

namespace cephtool {
namespace {

using host_test::Folder;
using host_test::Outcome;
using host_test::run;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr const char* film = "# scale_mm_per_px=0.1\nS,100,100\nN,200,100\n";

// A clinic's folder with a lateral, a frontal and a diagnosis file, and one that the catalogue only promises.
class Clinic : public testing::Test {
 protected:
    Clinic() {
        folder_.add("clinic/CalcForm/list.txt", "Base.txt\r\nSoft.txt\r\nGone.txt\r\n");
        folder_.add("clinic/CalcForm/Base.txt",
                    "Title:\r\nCranial base\r\nComment:\r\nTwo points\r\nCalc:\r\n"
                    "S-N=len([S],[N])\r\nMean_M:\r\nS-N=9\r\nMean_F:\r\nS-N=8,6\r\n"
                    "SD:\r\nS-N=1\r\n");
        folder_.add("clinic/CalcForm/Soft.txt", "Title:\r\nLips\r\nCalc:\r\nUpper=len([TUL],[SN])\r\n");
        folder_.add("clinic/CalcForm_PA/list.txt", "Face.txt\r\n");
        folder_.add("clinic/CalcForm_PA/Face.txt", "Calc:\r\nWidth=len([ZR],[ZL])\r\n");
        folder_.add("clinic/CalcForm_Diag/list.txt", "Sheet.txt\r\n");
        folder_.add("clinic/CalcForm_Diag/Sheet.txt",
                    "title:\r\nSheet\r\nCalc:\r\nLong=len([S],[N])>5;\"no\";\"yes\"\r\n");
        folder_.add("film.csv", film);
        folder_.add("face.csv", "# scale_mm_per_px=0.1\nZR,100,100\nZL,200,100\n");
    }

    static Outcome analyze(Arguments arguments, const std::string& input = {}) {
        arguments.insert(arguments.begin(), {"analyze", "--anaitem", "clinic", "--format", "csv"});
        return run(arguments, input);
    }

    Folder folder_;
};

TEST_F(Clinic, EveryAnalysisOfTheKindThatYieldsAnythingIsMeasured) {
    const Outcome lateral = analyze({"film.csv"});
    EXPECT_EQ(lateral.code, ExitCode::done) << lateral.err;
    EXPECT_EQ(lateral.out,
              "case,analysis,item,value,unit,mean,sd,deviation,missing,age_months,remarks,group,label,population,"
              "unverified\r\n"
              "film.csv,Cranial base,S-N,10,mm,,,,,,norms_by_sex,,S-N,,\r\n"
              "film.csv,Sheet,Long,yes,,,,,,,norms_by_sex,,Long,,\r\n");
    const std::string gone = std::filesystem::path("clinic/CalcForm/Gone.txt").make_preferred().string();
    EXPECT_THAT(lateral.err, HasSubstr("note: " + gone + " is listed, but can't be read"));
    EXPECT_THAT(analyze({"face.csv"}).out, HasSubstr("face.csv,Face,Width,10,mm"));
}

// S-N is level and 10 mm, and Frankfort is taken from it: 0.3 mm along for either end is an error of 0.42 mm.
TEST_F(Clinic, ValuesHaveErrorsWhereTheyAreAskedFor) {
    EXPECT_THAT(analyze({"--error", "film.csv"}).err, HasSubstr("LandmarkError.txt can't be read"));
    folder_.add("clinic/LandmarkError.txt", "Lateral:\r\nS=0.3,0\r\nN=0.29,0,5,us\r\n");
    const double turned = std::cos(7 * 3.14159265358979 / 180);
    const Outcome told = analyze({"--error", "--sex", "f", "film.csv"});
    EXPECT_THAT(told.out, HasSubstr("unverified,error,deviation_error,mostly,assumed\r\n"));
    double error = 0, deviation = 0;
    std::sscanf(told.out.c_str() + told.out.find(",errors_by_sn"), ",errors_by_sn,,S-N,,,%lf,%lf,S", &error,
                &deviation);
    EXPECT_NEAR(error, std::hypot(0.3, 0.29) * turned, 1e-9) << told.out;
    EXPECT_EQ(error, deviation);
    EXPECT_THAT(told.out, HasSubstr("Sheet,Long,yes,,,,,,,errors_by_sn,,Long,,,,,,\r\n"));
    const auto table = [](const char* band) {
        return run({"analyze", "--anaitem", "clinic", "--analysis", "Cranial base", "--error", "--sex", "f", "--band",
                    band, "film.csv"})
            .out;
    };
    EXPECT_THAT(table("0"), HasSubstr(" 10.0 ± 0.4 mm         8.0     1.0   +2.00 **"));
    EXPECT_THAT(table("0"), HasSubstr("mostly S (52 %)\n"));
    folder_.add("own.txt", "Lateral:\nS=0,0\nN=2,0\n");
    EXPECT_THAT(run({"analyze", "--anaitem", "clinic", "--analysis", "Cranial base", "--error-file", "own.txt", "--sex",
                     "f", "film.csv"})
                    .out,
                AllOf(HasSubstr("+2.00 (**)"), HasSubstr("the deviation may be none")));
    folder_.add("own.txt", "Lateral:\nS=0,0\n");
    EXPECT_THAT(run({"analyze", "--anaitem", "clinic", "--error-file", "own.txt", "film.csv"}).out,
                HasSubstr("error not known of N"));
    // What nobody measured is marked, and can be left out.
    folder_.add("own.txt", "Lateral:\nS=0,0\n*=0.3,0\n");
    const auto assumed = [](const char* option, const char* format) {
        return run({"analyze", "--anaitem", "clinic", "--error-file", "own.txt", option, format, "film.csv"}).out;
    };
    EXPECT_THAT(assumed("--format", "table"),
                AllOf(HasSubstr("10.0 (± 0.3)"), HasSubstr("assumed for N"), HasSubstr("nobody measured")));
    EXPECT_THAT(assumed("--format", "csv"), AllOf(HasSubstr(",N,N\r\n"), HasSubstr("error_assumed")));
    EXPECT_THAT(assumed("--format", "json"), HasSubstr("\"assumed\": ["));
    EXPECT_THAT(assumed("--no-assumed", "--sex=f"), HasSubstr("error not known of N"));
    run({"batch", "--anaitem", "clinic", "--with", "errors", "--error-file", "own.txt", "film.csv", "-o", "a.csv"});
    EXPECT_THAT(host_test::bytes_of("a.csv"), HasSubstr(",N,N,"));
    folder_.add("own.txt", "Lateral:\nS=0;0\n");
    EXPECT_THAT(analyze({"--error-file", "own.txt", "film.csv"}).err, HasSubstr("own.txt:2:1: \"0;0\" is no number"));
    // A batch has the same.
    run({"batch", "--anaitem", "clinic", "--with", "errors", "--with", "deviations", "--sex", "f", "film.csv", "-o",
         "t.csv"});
    EXPECT_THAT(host_test::bytes_of("t.csv"), HasSubstr(",10,2," + std::to_string(error).substr(0, 7)));
}

TEST_F(Clinic, SexAndBandChooseTheNorm) {
    EXPECT_THAT(analyze({"--sex", "m", "film.csv"}).out, HasSubstr("S-N,10,mm,9,1,1,"));
    EXPECT_THAT(analyze({"--sex", "f", "film.csv"}).out, HasSubstr("S-N,10,mm,8,1,2,"));
    EXPECT_THAT(analyze({"--sex", "f", "--band", "1", "film.csv"}).out, HasSubstr("S-N,10,mm,6,1,4,"));
    EXPECT_THAT(analyze({"--scale", "0.2", "film.csv"}).out, HasSubstr("S-N,20,mm"));
}

TEST_F(Clinic, AnalysesAreChosenByTitleFileNameOrPath) {
    for (const char* name : {"cranial BASE", "base", "Base.txt", "clinic/CalcForm/Base.txt"}) {
        const Outcome one = analyze({"--analysis", name, "film.csv"});
        EXPECT_THAT(one.out, HasSubstr("Cranial base,S-N,10")) << name;
        EXPECT_THAT(one.out, Not(HasSubstr("Sheet"))) << name;
    }
    EXPECT_THAT(analyze({"--analysis", "lips", "film.csv"}).out, HasSubstr("Lips,Upper,,mm,,,,TUL SN,,,,Upper,,\r\n"));
    EXPECT_THAT(analyze({"--analysis", "base", "--analysis", "Sheet", "film.csv"}).out, HasSubstr("Sheet"));
}

TEST_F(Clinic, EveryFaultHasItsExitCodeAndItsWayOut) {
    folder_.add("large.txt", "Calc:\nA=len([S],[N])\n");
    std::filesystem::resize_file("large.txt", (16 << 20) + 1);
    const struct {
        Arguments arguments;
        ExitCode code;
        const char* words;
    } rows[] = {
        {{"--analysis", "cranal base", "film.csv"}, ExitCode::bad_command_line, "Did you mean \"Cranial base\"?"},
        {{"--analysis", "face", "film.csv"}, ExitCode::bad_input, "none of the analyses named is for its kind"},
        {{"--analysis", "./none.txt", "film.csv"}, ExitCode::bad_input, "./none.txt: there is no such file"},
        {{"--analysis", "./film.csv", "film.csv"}, ExitCode::bad_input, "holds no item"},
        {{"--analysis", "large.txt", "film.csv"}, ExitCode::bad_input, "larger than 16 MiB\n  A definition file"},
        {{"--analysis", "zzz", "film.csv"}, ExitCode::bad_command_line, "is given by its path"},
        {{"--band", "-1", "film.csv"}, ExitCode::bad_command_line, "--band"},
        {{"--band", "x", "film.csv"}, ExitCode::bad_command_line, "--band"},
        {{"--scale", "0", "film.csv"}, ExitCode::bad_command_line, "no width of a pixel"},
        {{"--sex", "mm", "film.csv"}, ExitCode::bad_command_line, "\"mm\" is none of m, f"},
        {{"--analysi", "x", "film.csv"}, ExitCode::bad_command_line, "Did you mean \"--analysis\"?"},
        {{"--bnad=3"}, ExitCode::bad_command_line, "Did you mean \"--band\"?"},
        {{}, ExitCode::bad_command_line, "CASE"},
        {{"-", "-"}, ExitCode::bad_command_line, "more than once"},
        {{"-o", "no/such/folder.csv", "film.csv"}, ExitCode::bad_input, "could not be written"},
        {{"absent.csv"}, ExitCode::bad_input, "absent.csv: there is no such file"},
    };
    for (const auto& row : rows) {
        const Outcome one = analyze(row.arguments);
        EXPECT_EQ(one.code, row.code) << one.err;
        EXPECT_THAT(one.err, HasSubstr(row.words));
        EXPECT_EQ(one.out, "");
    }
    EXPECT_THAT(run({"analyze", "--anaitem", "nowhere", "film.csv"}).err,
                HasSubstr("nowhere is no folder of analyses"));
}

TEST_F(Clinic, ABadCaseDoesNotHideTheGoodOnes) {
    const Outcome both = analyze({"absent.csv", "film.csv"});
    EXPECT_EQ(both.code, ExitCode::bad_input);
    EXPECT_THAT(both.out, HasSubstr("film.csv,Cranial base,S-N,10"));
}

TEST_F(Clinic, TheResultReplacesAFileWhole) {
    folder_.add("old.csv", "old");
    EXPECT_EQ(analyze({"-o", "old.csv", "-"}, film).out, "");
    EXPECT_THAT(host_test::bytes_of("old.csv"), HasSubstr("standard input,Cranial base,S-N,10"));
    analyze({"-o", "old.csv", "absent.csv"});
    EXPECT_THAT(host_test::bytes_of("old.csv"), HasSubstr("S-N,10"));
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path)) {
        EXPECT_THAT(entry.path().string(), Not(HasSubstr(".part")));
    }
}

TEST_F(Clinic, AnalysesAreListedWithTheirItemsAndNorms) {
    const std::string list = run({"analyses", "--anaitem", "clinic"}).out;
    EXPECT_THAT(list, HasSubstr("lateral   Cranial base                                 1  Base.txt\n"
                                "            Two points\n"));
    EXPECT_THAT(list, HasSubstr("diagnosis Sheet"));
    EXPECT_THAT(list, HasSubstr("frontal   Face "));
    EXPECT_THAT(run({"analyses", "--anaitem", "clinic", "base"}).out,
                HasSubstr("S-N                                mm   men 9 ± 1, women 8 ± 1\n    len([S],[N])\n"));
    EXPECT_THAT(run({"analyses", "--anaitem", "clinic", "base", "--format", "json"}).out,
                HasSubstr("\"formula\": \"len([S],[N])\""));
    std::filesystem::rename("clinic", path_from_utf8("clïnic"));  // a name outside code page 932
    EXPECT_THAT(run({"analyses", "--anaitem", ANALYSES, "Hyoid"}).out, HasSubstr("of your own: RGn, Hy, AA. docs/"));
    EXPECT_EQ(run({"analyses", "--anaitem", "clïnic"}).out, list);
    const Outcome slip = run({"analyses", "--anaitem", "clïnic", "./bad.txt"});
    EXPECT_EQ(slip.code, ExitCode::bad_command_line);
    EXPECT_THAT(slip.err, testing::EndsWith("  \"cephtool analyses\" lists them.\n"));
}

}  // namespace
}  // namespace cephtool
