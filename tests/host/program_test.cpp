#include <Framework.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <regex>
#include <set>

#include "base/path.h"
#include "host/host_test.h"
#include "surface/svg_text.h"

namespace cephtool {
namespace {

using host_test::Outcome;
using host_test::run;
using testing::HasSubstr;

std::vector<std::string> example_lines(const std::string& help) {
    std::vector<std::string> examples;
    std::istringstream lines(help.substr(std::min(help.find("Examples:"), help.size())));
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("  cephtool ")) examples.push_back(line.substr(2));
#ifndef TOOL_SURFACE_PICTURES
    for (std::string& example : examples) example = std::regex_replace(example, std::regex("[.](png|pdf)$"), ".svg");
#endif
    return examples;
}

TEST(Program, EveryCommandsTwoExamplesRunInTheFolderOfSamples) {
    const host_test::Folder folder;
    std::filesystem::create_directories("share/tool");
    for (const auto& sample : std::filesystem::directory_iterator(SAMPLES))
        std::filesystem::copy(sample, folder.path / sample.path().filename(), std::filesystem::copy_options::recursive);
    std::filesystem::copy(ANALYSES, folder.path / "share/tool/anaitem", std::filesystem::copy_options::recursive);
    std::filesystem::copy(OUTLINES, folder.path / "share/tool/outlines");
    std::filesystem::create_directories("share/tool/digitiser");
    std::ofstream("share/tool/digitiser/index.html") << R"(<script id="given" type="text/plain"></script>)";
    std::filesystem::create_directories("bin");
    std::filesystem::copy(std::filesystem::path(ANALYSES) / "Era.dat", folder.path / "bin/Era.dat");
    SetModuleFileNameA((folder.path / "bin/cephtool").string().c_str());
    for (const Command& command : commands()) {
        if (std::string(command.name) == "help") continue;
#ifndef TOOL_SURFACE_PICTURES
        if (std::set<std::string>{"film", "lineimage", "report"}.contains(command.name)) continue;
#endif
        const Outcome help = run({"help", command.name});
        EXPECT_EQ(help.code, ExitCode::done);
        EXPECT_EQ(run({command.name, "--help"}).out, help.out);
        EXPECT_THAT(help.out, HasSubstr(command.help));
        const std::vector<std::string> examples = example_lines(help.out);
        EXPECT_EQ(examples.size(), 2u) << help.out;
        for (const std::string& example : examples) {
            std::istringstream words(example);
            Arguments arguments{std::istream_iterator<std::string>(words), {}};
            arguments.erase(arguments.begin());
            const Outcome one = run(arguments);
            EXPECT_EQ(one.code, ExitCode::done) << example << "\n" << one.err;
            EXPECT_TRUE(!one.out.empty() || !one.err.empty() || std::filesystem::exists(arguments.back())) << example;
        }
        std::istringstream lines(help.out);
        for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80u) << line;
    }
    const auto text_of = [](const char* file) {
        std::ifstream in(file, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    EXPECT_THAT(text_of("film.html"),
                HasSubstr(" data-name=\"film.dcm\">" + tool::base64(text_of("film.dcm")) + "</script>"));
#ifndef _WIN32
    std::ofstream("xdg-open") << "#!/bin/sh\nprintf %s \"$1\" > opened\n";
    std::filesystem::permissions("xdg-open", std::filesystem::perms::owner_all);
    const std::string path = std::getenv("PATH");
    setenv("PATH", (folder.path.string() + ":" + path).c_str(), 1);
    setenv("DISPLAY", ":0", 1);
    const std::string told = run({"digitise"}).err;
    EXPECT_EQ(told, "opened " + text_of("opened") + "\n");
    EXPECT_TRUE(std::filesystem::equivalent(text_of("opened"), "share/tool/digitiser/index.html"));
    // Copies with a patient's film in them go when they are older than a day.
    setenv("TMPDIR", folder.path.c_str(), 1);
    for (const char* name : {"cephtool-old", "cephtool-new"}) {
        folder.add(std::string(name) + "/digitise.html", "film");
        std::filesystem::permissions(name, std::filesystem::perms::owner_all);
    }
    std::filesystem::last_write_time("cephtool-old/digitise.html",
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(25));
    EXPECT_THAT(run({"digitise", "lateral-class2.json"}).err, HasSubstr("cephtool-"));
    EXPECT_THAT(text_of(text_of("opened").c_str()), HasSubstr("data-name=\"lateral-class2.json\""));
    EXPECT_FALSE(std::filesystem::exists("cephtool-old"));
    EXPECT_TRUE(std::filesystem::exists("cephtool-new/digitise.html"));
    unsetenv("TMPDIR");
    setenv("PATH", path.c_str(), 1);
    unsetenv("DISPLAY");
#endif
    SetModuleFileNameA(nullptr);
}

TEST(Program, KnowsItsCommands) {
    EXPECT_EQ(run({}).code, ExitCode::bad_command_line);
    EXPECT_THAT(run({"--version"}).out, AllOf(testing::StartsWith("cephtool 0."), testing::EndsWith("\n")));
    EXPECT_THAT(run({"help"}).out, HasSubstr("analyze     measure cases"));
    EXPECT_EQ(run({"--help"}).out, run({"help"}).out);
    const Outcome slip = run({"conver"});
    EXPECT_EQ(slip.code, ExitCode::bad_command_line);
    EXPECT_EQ(slip.err, "cephtool: there is no command \"conver\"\n  Did you mean \"convert\"?\n");
    EXPECT_EQ(run({"help", "conver"}).code, ExitCode::bad_command_line);
}

TEST(Program, FilesAndFoldersHaveJapaneseNames) {
    const host_test::Folder folder;
    folder.add("症例/患者一.csv", "# scale_mm_per_px=0.1\nS,850,850\nN,1564,756\nA,1559,1322\nB,1522,1715\n");
    folder.add("線.pgm", "P5\n2 1\n255\n" + std::string("\xFF\0", 2));
    folder.add("写真.jpg", host_test::bytes_of(EXIF_PICTURES "/apex.jpg"));
    std::filesystem::copy(ANALYSES, path_from_utf8("分析"), std::filesystem::copy_options::recursive);
    for (const Arguments& arguments : std::vector<Arguments>{
             {"analyze", "--anaitem", "分析", "--analysis", "Steiner", "症例/患者一.csv", "-o", "値.csv"},
             {"convert", "症例/患者一.csv", "-o", "症例/患者二.json"},
             {"batch", "--anaitem", "分析", "--analysis", "Steiner", "症例", "-o", "症例/一覧.jsonl"},
             {"trace", "--anaitem", "分析", "--outlines", "none", "症例/患者二.json", "-o", "図.svg"},
             {"lineimage", "線.pgm", "-o", "太線.pgm"},
             {"exif", "写真.jpg", "-o", "写真.json"}}) {
        const Outcome one = run(arguments);
        EXPECT_EQ(one.code, ExitCode::done) << arguments[0] << "\n" << one.err;
        EXPECT_NE(host_test::bytes_of(path_from_utf8(arguments.back())), "") << arguments[0];
    }
}

TEST(Program, ADefinitionFileInUtf8AndANameWithoutEndAreTold) {
    const host_test::Folder folder;
    folder.add("own.txt", "Title:\n角度\nCalc:\nSNA=angle1([S],[N],[A])\n");
    folder.add("ana/CalcForm/list.txt", std::string(5000, 'n') + "\nown.txt\n");
    folder.add("ana/CalcForm/own.txt", "Calc:\nSNA=angle1([S],[N],[A])\n");
    const Outcome one = run({"analyze", SAMPLES "/lateral-average.json", "--anaitem", "ana", "--analysis", "own.txt",
                             "--analysis", "./own.txt"});
    EXPECT_THAT(one.err, AllOf(HasSubstr("nn…nn"), HasSubstr("is listed, but can't be read")));
    EXPECT_THAT(one.err, HasSubstr("note: ./own.txt is UTF-8, but definition files are read in code page 932"));
    EXPECT_LT(one.err.size(), 1200u);
}

TEST(Program, NoOutputTakesThePlaceOfWhatIsRead) {
    const host_test::Folder folder;
    folder.add("a.json", host_test::bytes_of(SAMPLES "/lateral-average.json"));
    folder.add("a.tps", "LM=2\n1 1\n5 5\nIMAGE=film.png\nSCALE=0.1\n");
    folder.add("names", "S,N");
    folder.add("film.png", "a film");
    std::filesystem::create_hard_link("a.json", "hard.json");
    const std::string before = host_test::bytes_of("a.json");
    for (const Arguments& arguments :
         std::vector<Arguments>{{"convert", "a.json", "-o", "./a.json"},
                                {"convert", "a.json", "-o", "hard.json"},
                                {"convert", "a.tps", "--landmarks", "@names", "-o", "names"},
                                {"convert", "a.tps", "--landmarks", "S,N", "--format", "json", "-o", "film.png"},
                                {"stage", "a.tps", "--landmarks", "S,N", "--format", "csv", "-o", "film.png"},
                                {"chart", "a.tps", "--landmarks", "S,N", "-o", "film.png"},
                                {"check", "names", "-o", "names"}}) {
        const Outcome one = run(arguments);
        EXPECT_EQ(one.code, ExitCode::bad_command_line) << arguments[0];
        EXPECT_THAT(one.err, HasSubstr("the output would replace")) << arguments[0];
    }
    EXPECT_EQ(host_test::bytes_of("a.json"), before);
    EXPECT_EQ(host_test::bytes_of("names") + host_test::bytes_of("film.png"), "S,Na film");
}

TEST(Program, TheEndOfTheOutputsNameSaysTheFormat) {
    const host_test::Folder folder;
    folder.add("photo.jpg", host_test::bytes_of(EXIF_PICTURES "/apex.jpg"));
    const std::string face = SAMPLES "/lateral-average.json";
    const struct {
        Arguments arguments;
        const char *output, *begins;
    } rows[] = {
        {{"analyze", face, "--analysis", "Wits", "--anaitem", ANALYSES}, "o.JSON", "{\n"},
        {{"analyze", face, "--analysis", "Wits", "--anaitem", ANALYSES}, "o.csv", "case,"},
        {{"analyze", face, "--format", "csv", "--analysis", "Wits", "--anaitem", ANALYSES}, "o.json", "case,"},
        {{"analyze", face, "--analysis", "Wits", "--anaitem", ANALYSES}, "o.pdf", nullptr},
        {{"stage", face, "--anaitem", ANALYSES}, "o.csv", "case,"},
        {{"exif", "photo.jpg"}, "o.json", "{\n"},
        {{"age", "2001-05-14", "2013-08-20"}, "o.csv", "birth,"},
        {{"modes", "--anaitem", ANALYSES}, "o.json", "{\n"},
        {{"modes", "--anaitem", ANALYSES}, "o.csv", nullptr},
        {{"analyses", "--anaitem", ANALYSES}, "o.json", "{\n"},
        {{"check", ANALYSES "/Era.dat"}, "o.json", "{\n"},
        {{"batch", face, "--analysis", "Wits", "--anaitem", ANALYSES}, "o.ndjson", "{\"case\":"},
        {{"batch", face, "--analysis", "Wits", "--anaitem", ANALYSES}, "o.json", nullptr},
        {{"analyze", face}, "", nullptr},
        {{"trace", face}, "", nullptr},
    };
    for (const auto& [arguments, output, begins] : rows) {
        Arguments all = arguments;
        all.insert(all.end(), {"-o", output});
        std::filesystem::remove(output);
        const Outcome one = run(all);
        EXPECT_EQ(one.out, "");
        EXPECT_EQ(one.code, begins ? ExitCode::done : ExitCode::bad_command_line) << arguments[0] << output << one.err;
        if (begins) {
            EXPECT_THAT(host_test::bytes_of(output), testing::StartsWith(begins)) << arguments[0] << output;
        }
    }
}

TEST(Program, ConvertedCasesReadAsBefore) {
    const Outcome json = run({"convert", "--sex", "f", "-"}, "# scale_mm_per_px=0.1\nS,1.25,2\nChin,3,4\n");
    ASSERT_EQ(json.code, ExitCode::done) << json.err;
    EXPECT_EQ(run({"convert", "-"}, json.out).out, json.out);
    EXPECT_THAT(json.err, HasSubstr("\"Chin\" is kept as a landmark of your own"));
    // What other programs have put into it, to the last digit.
    const std::string clinic = "\"x-clinic\": {\"id\": 123456789012345678901,\n \"a\": [1.50, \"]}\"], \"b\": {}}";
    const std::string with_keys = json.out.substr(0, json.out.size() - 3) + ",\n  \"outlines\": [{\"name\": \"\", " +
                                  "\"points\": [], \"x-colour\": null}], \"x-1\": 1, " + clinic + "}";
    const Outcome again = run({"convert", "-"}, with_keys);
    EXPECT_THAT(again.out, AllOf(HasSubstr("\"x-colour\": null\n"), HasSubstr("\"x-1\": 1,"), HasSubstr(clinic)));
    EXPECT_EQ(run({"convert", "-"}, again.out).out, again.out);
    EXPECT_THAT(run({"convert", "-", "--format", "csv"}, with_keys).err,
                HasSubstr("no place for: the key \"x-1\", the key \"x-clinic\", the key \"x-colour\""));
    EXPECT_THAT(run({"convert", "-"}, "# scale_mm_per_px=1\n# of Monday\nS,1,2\n").err, HasSubstr("\"of Monday\""));
    EXPECT_THAT(run({"convert", "-"}, "LM=1\n1 2\nVARIABLES=v\nCOMMENT=landmarks=S\nCOMMENT=c\nSCALE=1\n").err,
                HasSubstr("format json has no place for: the line \"VARIABLES=v\", the comment \"c\""));
    EXPECT_THAT(run({"convert", "-"}, R"({"x-a": 1, "markups": [{"display": {}, "controlPoints": [
                    {"label": "S", "position": [1, 2, 0], "description": "d"}]}]})")
                    .err,
                HasSubstr("no place for: the key \"x-a\", the key \"display\", the key \"description\""));
}

}  // namespace
}  // namespace cephtool
