#include "results/results.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "base/columns.h"
#include "base/wording.h"
#include "host/host_test.h"
#include "results/names.h"

namespace cephtool {
namespace {

using host_test::read;
using host_test::run;
using testing::HasSubstr;

const Texts english(Language::english), japanese(Language::japanese);

constexpr const char* definition =
    "title:\r\nOwn \x83\x5A\x83\x89\r\nCalc:\r\n"
    "S-N=len([S],[N])\r\n"
    "\x83\x5A\x83\x89\x8A\x70=angle1([S],[N],[A])\r\n"
    "A name so long that the page can't hold it=len([N],[A])\r\n"
    "Ratio=len([S],[N])/len([N],[A])\r\n"
    "Orbit\r\n"
    "To Or=len([S],[Or])\r\n"
    "Norm made of Or=len([S],[A])\r\n"
    "Verdict=len([S],[N])>5;\"short\";\"long, by far\"\r\n"
    "Broken=len([S],[N])/len([S],[S])\r\n"
    "Mean:\r\nS-N=7\r\nA name so long that the page can't hold it=9.5\r\nTo Or=5\r\n"
    "Norm made of Or=len([S],[Or]):1\r\n"
    "Mean_M:\r\nRatio=1.00\r\nMean_F:\r\nRatio=0.95\r\n"
    "SD:\r\nS-N=1.4\r\nA name so long that the page can't hold it=1\r\nRatio=0.02\r\nTo Or=1\r\n";

const Analysis& own_analysis() {
    static const Analysis analysis = *Analysis::from_text(tool::Kind::lateral, "Own.txt", definition);
    return analysis;
}

CaseResult result_of(const std::string& settings) {
    const AnalysisFamily analyses[] = {&own_analysis()};
    return measured(
        read("film.csv", "# scale_mm_per_px=0.1\n# name=Hanako, S\n" + settings + "S,100,100\nN,200,100\nA,200,200\n"),
        analyses, 0, false);
}

TEST(ResultsTable, ShowsEveryItemInTheDefinitionsOrder) {
    const CaseResult result = result_of("# sex=f\n# birth=2001-05-14\n# film=2013-08-20\n");
    EXPECT_EQ(results_table(result, false, english),
              "film.csv: Hanako, S, female, 12 years 3 months, lateral, 0.1 mm a pixel\n"
              "  born 2001-05-14, film 2013-08-20\n"
              "\n"
              "Own セラ\n"
              "Item                                 Value Unit      Mean      SD   in SD\n"
              "S-N                                   10.0 mm         7.0     1.4   +2.14 **\n"
              "セラ角                                90.0 deg          –       –       –\n"
              "A name so long that the page ca…      10.0 mm         9.5     1.0   +0.50\n"
              "Ratio                                 1.00           0.95    0.02   +2.50 **\n"
              "Orbit\n"
              "To Or                                    – missing: Or\n"
              "Norm made of Or                       14.1 mm           –       –       –\n"
              "                                           norm missing: Or\n"
              "Verdict                           long, by far\n"
              "Broken                                   – not a finite number\n");
}

TEST(ResultsTable, FitsThePage) {
    std::istringstream lines(results_table(result_of("# sex=f\n"), false, english));
    for (std::string line; std::getline(lines, line);) EXPECT_LE(display_width(line), 80) << line;
}

TEST(ResultsTable, LeavesOutNormsThatRestOnAnUnknownSex) {
    const CaseResult result = result_of("");
    const std::string table = results_table(result, false, english);
    EXPECT_THAT(table, HasSubstr("sex not given, lateral"));
    EXPECT_THAT(table, HasSubstr("Ratio                                 1.00              –       –       –\n"));
    EXPECT_THAT(table, HasSubstr("7.0     1.4   +2.14 **\n"));
    EXPECT_THAT(table, HasSubstr("  given; --sex m or --sex f gives it.\n"));
    EXPECT_THAT(results_table(result_of("# sex=m\n"), false, english), HasSubstr("1.00    0.02    0.00\n"));
}

TEST(ResultsTable, NamesWhatIsLeftOutInOneLineEach) {
    const AnalysisFamily analyses[] = {&own_analysis()};
    const auto left_out = [&](const std::string& landmarks) {
        const Case record = read("a.csv", "# scale_mm_per_px=0.1\n# kind=lateral\n" + landmarks);
        const CaseResult result = measured(record, analyses, 0, true);
        return result.left_out.empty() ? "" : result.left_out[0].in_words(english);
    };
    EXPECT_EQ(left_out("Me,1,1\n"), "Own: none of its 8 items can be measured, missing S, N, A, Or");
    EXPECT_EQ(left_out("S,1,1\n"), "Own: none of its 8 items can be measured, missing N, A, Or");
    EXPECT_EQ(left_out("S,1,1\nN,2,2\n"), "");
    LeftOut left{&own_analysis(), 1, {}};
    EXPECT_EQ(left.in_words(english), "Own: its one item can't be measured");
    for (int i = 0; i < 30; ++i) left.missing.push_back("N" + std::to_string(i));
    EXPECT_EQ(left.in_words(english),
              "Own: its one item can't be measured, missing N0, N1, N2, N3, N4, N5 and 24 more");
    EXPECT_THAT(left.in_words(Texts(Language::japanese)),
                testing::StartsWith("Own セラ：計測できない。計測点なし：N0"));
}

TEST(ResultsTable, ColoursDeviationsByTheirSize) {
    const std::string table = results_table(result_of("# sex=f\n"), true, english);
    EXPECT_THAT(table, HasSubstr("\x1b[31m  +2.14 **\x1b[0m"));
    EXPECT_THAT(table, HasSubstr("\x1b[32m  +0.50\x1b[0m"));
}

TEST(ResultsJson, HoldsEveryDigitAndNullForWhatThereIsNoneOf) {
    const CaseResult results[] = {result_of("# sex=f\n"), result_of("")};
    const nlohmann::json document = nlohmann::json::parse(results_json(results, english));
    ASSERT_EQ(document["cases"].size(), 2u);
    const nlohmann::json& items = document["cases"][0]["analyses"][0]["items"];
    EXPECT_EQ(items[5]["value"].get<double>(), results[0].analyses[0].items[6].value);
    EXPECT_EQ(items[1]["name"], "セラ角");
    EXPECT_FALSE(items[3].contains("group"));
    EXPECT_EQ(items[4]["group"], "Orbit");
    EXPECT_TRUE(items[4]["value"].is_null());
    EXPECT_EQ(items[4]["missing"], nlohmann::json({"Or"}));
    EXPECT_EQ(items[4]["mean"], 5.0);
    EXPECT_EQ(items[6]["text"], "long, by far");
    EXPECT_TRUE(items[7]["value"].is_null());
    EXPECT_TRUE(document["cases"][1]["analyses"][0]["items"][3]["mean"].is_null());
}

// An analysis with norms of two populations, one of them with a doubt, and names in Japanese.
class Clinic : public testing::Test {
 protected:
    Clinic() {
        const std::string items =
            "title:\r\nAngles (\x8A\x70\x93\x78)\r\nCalc:\r\nJaws\r\nSNA=angle1([S],[N],[A])\r\nS-N=len([S],[N])\r\n";
        folder_.add("clinic/CalcForm/list.txt", "Angles.txt\r\nThai.txt\r\n");
        folder_.add(
            "clinic/CalcForm/Angles.txt",
            items +
                "Bite=len([S],[N])>1;\"open (\x8A\x4A\x8D\x99)\";\"deep\"\r\nMean:\r\nSNA=82\r\nS-N=10\r\nSD:\r\nSNA=2\r\n"
                "Param:\r\nPopulation=European\r\nUnverified SNA=textbook (\x8B\xB3\x89\xC8\x8F\x91)\r\n"
                "Japanese SNA=SNA\x8A\x70\r\nJapanese Comment=\x90\xE0\x96\xBE\r\nJapanese Jaws=\x8A\x7B\r\nJapanese deep=\x89\xDF\x8A\x57\r\n");
        folder_.add(
            "clinic/CalcForm/Thai.txt",
            items + "Mean:\r\nSNA=84\r\nSD:\r\nSNA=3\r\nParam:\r\nPopulation=Thai adults\r\nVariant of=Angles.txt\r\n");
    }
    static std::string out(host_test::Outcome outcome) { return outcome.out + outcome.err; }
    static std::string analyzed(cephtool::Arguments more, const std::string& settings = "") {
        more.insert(more.begin(), {"analyze", "--anaitem", "clinic", "-"});
        return out(host_test::run(more, "# scale_mm_per_px=0.1\n" + settings + "S,100,100\nN,200,100\nA,200,200\n"));
    }
    host_test::Folder folder_;
};

TEST_F(Clinic, NormsAreThoseOfThePopulationAskedFor) {
    struct {
        Arguments options;
        const char* settings;
        const char* expected;
    } const rows[] = {
        {{}, "", "Norms: European\n"},
        {{}, "", "82.0†"},
        {{}, "", "† textbook: SNA\n"},
        {{"--population", "thai"}, "", "Norms: Thai adults\n"},
        {{"--population", "タイ人"}, "# population=European\n", "that of --population, not that of the file"},
        {{}, "# population=Thai\n", "84.0     3.0"},
        {{}, "# population=Korean\n", "no norms of Korean for this analysis; these are of European."},
        {{"--population", "Thia"}, "", "no analysis has norms of the population \"Thia\""},
        {{"--analysis", "Thai"}, "", "84.0     3.0"},
        {{"--analysis", "Angles", "--population", "Thai"}, "", "84.0     3.0"},
        {{"--language", "ja"},
         "# population=Korean\n",
         "この分析には韓国人の標準値がないため、ヨーロッパ人の標準値を示す。"},
        {{"--language", "ja"}, "", "角度\n  説明\n  標準値：ヨーロッパ人\n"},
        {{"--language", "ja"}, "", "顎\nSNA角"},
        {{"--language", "ja"}, "", "  過蓋\n"},
        {{"--language", "ja"}, "", "† 教科書：SNA角\n"},
        {{"--language", "ja", "--format", "csv"}, "", ",82,2,4.000000005875783,,,,顎,SNA角,European,教科書\r\n"},
        {{"--language", "ja", "--format", "csv"}, "", "Bite,deep,,,,,,,,顎,Bite,European,\r\n"},
    };
    for (const auto& row : rows)
        EXPECT_THAT(analyzed(row.options, row.settings), HasSubstr(row.expected)) << row.settings;
    EXPECT_THAT(analyzed({}), testing::Not(HasSubstr("Thai")));
    const auto json = nlohmann::json::parse(analyzed({"--language", "ja", "--format", "json", "--population", "Thai"}));
    const auto& analysis = json["cases"][0]["analyses"][0];
    EXPECT_EQ(analysis["population"], "Thai");
    EXPECT_EQ(analysis["population_label"], "タイ人");
    EXPECT_EQ(analysis["items"][0]["group"], "Jaws");
}

TEST_F(Clinic, ListsAnAnalysisOnceWithItsPopulations) {
    EXPECT_THAT(out(run({"analyses", "--anaitem", "clinic"})),
                HasSubstr("Norms: European. By --population: Thai (Thai.txt)\n"));
    EXPECT_THAT(out(run({"analyses", "--anaitem", "clinic", "--population", "Thai"})), HasSubstr("  Thai.txt\n"));
    for (const char* none : {"various", "Not told"})
        EXPECT_THAT(run({"analyses", "--anaitem", ANALYSES, "--population", none}).err,
                    HasSubstr("no analysis has norms"));
    EXPECT_THAT(
        out(run({"analyze", "--anaitem", ANALYSES, "--analysis", "Hyoid", "--population", "Japanese",
                 SAMPLES + std::string("/lateral-average.json")})),
        HasSubstr("There are no norms of Japanese for this analysis; its file does not say whose\n  these are."));
    EXPECT_THAT(out(run({"analyses", "--anaitem", "clinic", "--language", "ja"})), HasSubstr("\n側面      角度 "));
    EXPECT_THAT(
        out(run({"analyses", "--anaitem", "clinic", "--language", "ja", "Angles"})),
        HasSubstr("SNA角                              deg  82† ± 2\n    SNA=angle1([S],[N],[A])\n    † 教科書\n"));
}

TEST_F(Clinic, ABatchTakesTheNormsOfEachCase) {
    const std::string cases =
        "# scale_mm_per_px=0.1\npopulation,S_x,S_y,N_x,N_y,A_x,A_y\n"
        ",100,100,200,100,200,200\nThai,100,100,200,100,200,200\nKorean,100,100,200,100,200,200\n";
    const auto rows = [&](Arguments more) {
        more.insert(more.begin(), {"batch", "--anaitem", "clinic", "--with", "norms", "-o", "t.csv", "-"});
        const std::string said = out(run(more, cases));
        return said + host_test::bytes_of("t.csv");
    };
    const std::string table = rows({});
    EXPECT_THAT(table, HasSubstr("remarks,population,Angles:population,Angles:SNA,"));
    EXPECT_THAT(table, HasSubstr(",Angles:unverified_norms,,European,90.00000001175157,82,2,10,10,,deep,,\r\n"));
    EXPECT_THAT(table, HasSubstr(",,Thai,Thai,90.00000001175157,84,3,10,,,deep,,\r\n"));
    EXPECT_THAT(
        table,
        HasSubstr(",Angles:other_population; Angles:unverified_norms,Korean,European,90.00000001175157,82,2,10,10,,"));
    EXPECT_THAT(rows({"--population", "Thai"}), HasSubstr("population,Thai:population,Thai:SNA,"));
}

// A letter an item: what its positive values mean, "-" nothing, "0" without a value; a capital is a heading.
TEST(Signs, AreThoseOfAllItemsOfAHeadingOrTheSheet) {
    const auto signs = [](std::string_view letters) {
        std::vector<Measurement> items;
        for (const char letter : letters) {
            Measurement& item = items.emplace_back();
            item.heading = letter >= 'A' && letter <= 'Z';
            item.name = item.heading ? std::string(1, letter) : std::to_string(items.size());
            if (letter != '0') item.value = 1;
            if (letter != '-' && letter != '0') item.sign = std::string(1, letter);
        }
        return joined(signs_in_words(items, english), " ");
    };
    const std::pair<const char*, const char*> rows[] = {
        {"aaa", "+ a: all items"},
        {"aa", "+ a: 1; 2"},
        {"aaa-", "+ a: 1; 2; 3"},
        {"aaa0", "+ a: all items"},
        {"HaaaK-b", "+ a: all of H + b: 7"},
        {"HaabK-aaa", "+ a: 2; 3; 7; 8; 9 + b: 4"},
        {"aHbbb0a", "+ a: 1; 7 + b: 3; 4; 5"},
        {"HaaaKaaa", "+ a: all items"},
        {"HaaaKaaab", "+ a: all of H; 6; 7; 8 + b: 9"},
        {"--0", ""},
    };
    for (const auto& [letters, expected] : rows) EXPECT_EQ(signs(letters), expected) << letters;
}

TEST(ResultsCsv, HasOneQuotedRowAnItem) {
    const CaseResult results[] = {result_of("# sex=f\n# birth=2001-05-14\n# film=2013-08-20\n")};
    const std::string text = results_csv(results, english);
    EXPECT_THAT(text, testing::StartsWith("case,analysis,item,value,unit,mean,sd,deviation,missing,age_months,remarks,"
                                          "group,label,population,unverified\r\n"
                                          "film.csv,Own セラ,S-N,10,mm,7,1.4,"));
    EXPECT_THAT(text, HasSubstr("film.csv,Own セラ,To Or,,mm,5,1,,Or,147,,Orbit,To Or,,\r\n"));
    EXPECT_THAT(text, HasSubstr("film.csv,Own セラ,Verdict,\"long, by far\",,,,,,147,,Orbit,Verdict,,\r\n"));
    EXPECT_THAT(text, HasSubstr("film.csv,Own セラ,Broken,,,,,,,147,not_finite,Orbit,Broken,,\r\n"));
    EXPECT_EQ(std::ranges::count(text, '\n'), 9);
}

}  // namespace
}  // namespace cephtool
