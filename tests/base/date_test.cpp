#include <Framework.h>
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "base/date_reader.h"
#include "base/eras.h"
#include "base/program_folder.h"

#include "host/host_test.h"

namespace cephtool {
namespace {

using host_test::Folder;
using host_test::Outcome;
using host_test::run;
using testing::HasSubstr;

// With the table that ships, on 20 August 2013.
class Dates : public testing::Test {
 protected:
    Dates() {
        SetModuleFileNameA(ANALYSES "/cephtool");
        SetLocalClock([] { return SYSTEMTIME{2013, 8, 2, 20, 0, 0, 0, 0}; });
    }
    ~Dates() override {
        SetModuleFileNameA(nullptr);
        SetLocalClock(nullptr);
    }
};

TEST_F(Dates, AreReadInEveryForm) {
    std::ifstream table(DATES);
    int rows = 0;
    for (std::string line; std::getline(table, line); ++rows) {
        if (line.starts_with('#')) continue;
        const std::size_t arrow = line.rfind("-> ");
        const std::string text = line.substr(0, arrow), expected = line.substr(arrow + 3);
        std::string answer;
        try {
            answer = text_of(read_date(text));
        } catch (const Error& error) {
            answer = std::string(error.what()) + " | " + error.way_out;
        }
        EXPECT_THAT(answer, HasSubstr(expected)) << text;
    }
    EXPECT_GT(rows, 40);
    EXPECT_THROW(read_date("\xff"), Error);
}

TEST_F(Dates, OfEveryEraAreReadBack) {
    const std::optional<EraCalendar> calendar = program_eras();
    for (std::chrono::sys_days day = read_date("1868-01-25"); day < std::chrono::sys_days(read_date("2040-01-01"));
         day += std::chrono::days(29)) {
        ASSERT_EQ(read_date(era_text(calendar, day, code_text)), day);
        ASSERT_EQ(read_date(era_text(calendar, day, japanese_text)), day);
    }
}

TEST_F(Dates, AgeIsToldByBothRules) {
    EXPECT_EQ(run({"age", "H13.5.14"}).out,
              "Born       2001-05-14  平成13年5月14日\n"
              "Today      2013-08-20  平成25年8月20日\n"
              "Age        12 years 3 months\n"
              "In months  147\n"
              "\n"
              "Age: CaclAge, for display: a month is 365/12 days, without tolerance.\n"
              "In months: CalcAge, for stages and norms: a month is 30.4 days, with a tolerance\n"
              "of 0.01.\n");
    const Outcome lost = run({"age", "2000-01-01", "2001/2/1"});
    EXPECT_THAT(lost.out, HasSubstr("\nAge        1 year 0 months\nIn months  13\n"));
    EXPECT_THAT(lost.out, HasSubstr("the two differ"));
    EXPECT_EQ(
        run({"age", "--format", "csv", "R1.5.1", "20200501"}).out,
        "birth,birth_era,day,day_era,years,months,total_months\r\n2019-05-01,R1.5.1,2020-05-01,R2.5.1,1,0,12\r\n");
    const auto json = nlohmann::json::parse(run({"age", "--format", "json", "1850-01-01", "1900-01-02"}).out);
    EXPECT_TRUE(json["birth_era"].is_null());
    EXPECT_EQ(json["day_era"], "M33.1.2");
    EXPECT_EQ(json["total_months"], 600);
    const Outcome reversed = run({"age", "2013-08-21"});
    EXPECT_EQ(reversed.code, ExitCode::bad_command_line);
    EXPECT_THAT(reversed.err, HasSubstr("2013-08-20 lies before birth, 2013-08-21"));
}

TEST_F(Dates, ErasAreConvertedBothWays) {
    EXPECT_EQ(run({"era", "20240305", "S64.1.7", "1850-1-1"}).out,
              "Date        Era         Japanese\n"
              "2024-03-05  R6.3.5      令和6年3月5日\n"
              "1989-01-07  S64.1.7     昭和64年1月7日\n"
              "1850-01-01  –           no era of the table\n");
    EXPECT_EQ(run({"era", "--format", "csv", "2019-5-1", "1850-1-1"}).out,
              "date,era,japanese,code,name,era_year\r\n"
              "2019-05-01,R1.5.1,令和元年5月1日,R,令和,1\r\n1850-01-01,,,,,\r\n");
    const auto dates = nlohmann::json::parse(run({"era", "--format", "json", "R6.3.5", "1850-1-1"}).out)["dates"];
    EXPECT_EQ(dates[0]["era_year"], 6);
    EXPECT_TRUE(dates[1]["name"].is_null());
    const struct {
        Arguments words;
        const char* out;
    } rows[] = {
        {{"s", "64"}, "S64 (昭和64年) is 1989, from 1989-01-01 to 1989-01-07\n"},
        {{"令和", "元"}, "R1 (令和元年) is 2019, from 2019-05-01 to 2019-12-31\n"},
        {{"M", "1", "--format", "csv"},
         "code,name,era_year,western_year,first,last\r\nM,明治,1,1868,1868-01-25,1868-12-31\r\n"},
        {{"R", "483"}, "令和 (R) has no year 483\n  Check"},
        {{"S", "65"}, "昭和 (S) has no year 65\n  The year 1990 is H2."},
        {{"S", "x"}, "\"x\" is no year of an era"},
        {{"Q", "5"}, "there is no era \"Q\"\n  The eras are 明治 (M)"},
    };
    for (const auto& row : rows) {
        Arguments words = {"era", "--to-western"};
        words.insert(words.end(), row.words.begin(), row.words.end());
        const Outcome one = run(words);
        EXPECT_THAT(one.out + one.err, HasSubstr(row.out));
        EXPECT_EQ(one.code, one.out.empty() ? ExitCode::bad_command_line : ExitCode::done) << row.out;
    }
    const auto taisho = nlohmann::json::parse(run({"era", "--to-western", "T", "15", "--format", "json"}).out);
    EXPECT_EQ(taisho["last"], "1926-12-24");
    EXPECT_THAT(run({"era"}).err, HasSubstr("a date is missing"));
    EXPECT_THAT(run({"era", "R6.3.5", "--to-western", "R", "6"}).err, HasSubstr("dates and --to-western at once"));
}

TEST_F(Dates, OfCasesMayBeJapanese) {
    const std::string film = "# birth=平成13年5月14日\n# film=H25.8.20\n# scale_mm_per_px=0.1\nS,1,2\nN,9,2\n";
    EXPECT_THAT(run({"convert", "-"}, film).out, HasSubstr("\"birth\": \"2001-05-14\""));
    const Arguments analyze = {"analyze", "--anaitem", ANALYSES, "--analysis", "Steiner", "-"};
    EXPECT_THAT(run(analyze, film).out,
                HasSubstr("12 years 3 months, lateral, 0.1 mm a pixel\n"
                          "  born 2001-05-14 (平成13年5月14日), film 2013-08-20 (平成25年8月20日)\n"));
    Arguments as_json = analyze;
    as_json.insert(as_json.end(), {"--format", "json"});
    const auto facts = nlohmann::json::parse(run(as_json, film).out)["cases"][0];
    EXPECT_EQ(facts["film_era"], "H25.8.20");
    EXPECT_EQ(facts["age"], nlohmann::json({{"years", 12}, {"months", 3}, {"total_months", 147}}));
    const Outcome bad = run(analyze, "# birth=S65.1.1\n" + film);
    EXPECT_EQ(bad.code, ExitCode::bad_input);
    EXPECT_THAT(bad.err, HasSubstr("standard input:1:1: \"S65.1.1\" is no date: it lies outside 昭和 (S)\n"));
    EXPECT_THAT(bad.err, HasSubstr("  The day 1990-01-01 is H2.1.1"));
}

TEST_F(Dates, NeedTheTableOnlyForEras) {
    const Folder folder;
    SetModuleFileNameA((folder.path / "cephtool").string().c_str());
    const std::string table = (folder.path / "Era.dat").string();
    const Outcome age = run({"age", "2001-05-14"});
    EXPECT_THAT(age.out, HasSubstr("Born       2001-05-14\nToday      2013-08-20\nAge        12 years 3 months\n"));
    EXPECT_EQ(age.err, "note: no eras, since " + table + " is missing\n");
    for (const Arguments& words : {Arguments{"era", "2001-05-14"}, {"age", "H13.5.14"}}) {
        const Outcome one = run(words);
        EXPECT_EQ(one.code, ExitCode::bad_input);
        EXPECT_THAT(one.err, HasSubstr("the table of Japanese eras is missing: " + table + "\n"));
    }
    folder.add("Era.dat", "[MAIN]\nn=3\n[ERA_RANGE]\n1=1990.1.1-\n2=-2000.01.01\n[ERA_CODE]\n2=Z\n");
    EXPECT_THAT(run({"era", "1999-01-01"}).out, HasSubstr("no era of the table"));
    EXPECT_THAT(run({"era", "Z1.1.1"}).out, HasSubstr("0001-01-01  –"));
    SetModuleFileNameA("");  // as when its path is outside the code page; the current folder is no way out
    EXPECT_TRUE(program_folder().is_absolute());
    EXPECT_THAT(run({"era", "Z1.1.1"}).err, HasSubstr((program_folder() / "Era.dat").string()));
}

}  // namespace
}  // namespace cephtool
