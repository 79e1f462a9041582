#include "results/growth.h"

#include <CephCalc.h>
#include <gmock/gmock.h>

#include <cmath>
#include <nlohmann/json.hpp>

#include "base/columns.h"
#include "base/date_reader.h"
#include "cases/vertebrae.h"
#include "host/host_test.h"
#include "results/measurement.h"

namespace cephtool {
namespace {

using host_test::Folder;
using host_test::Outcome;
using host_test::read;
using host_test::run;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr const char* film = "# scale_mm_per_px=0.1\nS,100,100\nN,200,100\n";

// Bodies 100 pixels wide and high; the rear of C4 is 80 high, so that its depth slants.
constexpr const char* corners =
    "C3ua,200,100\nC3up,100,100\nC3la,200,200\nC3lp,100,200\n"
    "C4ua,200,300\nC4up,100,320\nC4la,200,400\nC4lp,100,400\n";

TEST(Years, AreWholeOnEveryBirthdayAndNeverEarlier) {
    for (const char* born : {"2000-02-29", "2001-05-14", "2003-12-31"}) {
        const Date birth = read_date(born);
        double before = -1;
        for (std::chrono::sys_days day = birth; day < std::chrono::sys_days(birth) + std::chrono::years(9);
             day += std::chrono::days(1)) {
            const double years = years_at(day, birth);
            ASSERT_EQ(std::floor(years), age_at(day, birth).years) << born << " " << text_of(day);
            ASSERT_EQ(std::floor(years * 12 + 0.5), months_at(day, birth)) << born << " " << text_of(day);
            ASSERT_GE(years, before);
            before = years;
        }
    }
}

TEST(DentalStages, StandAtTheEnginesOrdinal) {
    double ordinal = 0;
    for (const char* stage : dental_stages) EXPECT_EQ(CCephCalc::GetDentalAge(stage), ordinal++) << stage;
    EXPECT_EQ(CCephCalc::GetDentalAge("another"), ordinal);
}

TEST(CervicalPoints, AreNamedInFormulasLikeLandmarks) {
    const Analysis analysis =
        *Analysis::from_text(tool::Kind::lateral, "V.txt",
                             "title:\nV\nCalc:\nFront=len([C3ua],[C3la])\nTilt=len([C3da],mid([C4ua],[C4up]))\n");
    const AnalysisFamily analyses[] = {&analysis};
    const CaseResult result = measured(read("a.csv", std::string(film) + corners), analyses, {}, false);
    EXPECT_EQ(result.analyses[0].items[0].value, 10);
    EXPECT_THAT(result.analyses[0].items[1].missing, ElementsAre("C3da"));
    Case full = read("a.csv", std::string(film) + corners);
    for (int i = 0; i < 95; ++i) full.user.push_back({"u" + std::to_string(i), {1, 1}});
    EXPECT_TRUE(measured(full, analyses, {}, false).analyses[0].items[0].value);
}

TEST(CervicalPoints, AreMadeFromCornersOrNamed) {
    const std::string all = std::string(film) + corners;
    const CervicalPoints made = cervical_points(read("a.csv", all));
    EXPECT_THAT(made.missing, ElementsAre());
    EXPECT_THAT(made.made, ElementsAre("C3da", "C3dp", "C4da", "C4dp"));
    EXPECT_EQ(made.points.Point[12], POINT({100 * 64, 150 * 64}));
    EXPECT_EQ(made.points.Point[18], POINT({100 * 64, 360 * 64}));
    EXPECT_EQ(made.points.Point[19], POINT({200 * 64, 350 * 64}));

    const struct {
        std::string points;
        std::vector<std::string> missing;
    } rows[] = {
        {"", {"C3ua", "C3dp", "C3la", "C3lp", "C4ua", "C4up", "C4la", "C4lp"}},
        {"C3up,1,2\n", {"C3ua", "C3la", "C3lp", "C4ua", "C4up", "C4la", "C4lp"}},
        {std::string(corners).replace(0, 5, "C3da,"), {"C3ua"}},
        {std::string(corners).replace(13, 5, "C3dp,"), {}},
        {std::string(corners).replace(0, 12, "C3ua,0,0"), {"C3ua"}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(cervical_points(read("a.csv", film + row.points)).missing, row.missing) << row.points;
    }
}

// A clinic's folder: stages by age for women alone, by teeth for both, and a second set by age.
class GrowthClinic : public testing::Test {
 protected:
    GrowthClinic() {
        folder_.add("clinic/CalcForm/list.txt", "Ricketts.txt\r\nTeeth.txt\r\nPlain.txt\r\n");
        folder_.add("clinic/CalcForm/Ricketts.txt",
                    "title:\r\nBy age\r\nStage_M:\r\nBoy=0-12\r\nMan=12\r\nParam:\r\nStage_F:\r\nGirl=0-11\r\n"
                    "Woman=11\r\nCalc:\r\nS-N=len([S],[N])\r\nMean:\r\nS-N=7,9\r\nSD:\r\nS-N=1\r\n");
        folder_.add("clinic/CalcForm/Teeth.txt",
                    "title:\r\nBy teeth\r\nStage_Type:\r\nHellman\r\nStage:\r\nMilk=I-IIIA\r\nMixed=IIIA-IVA\r\n"
                    "Own=IVA\r\nCalc:\r\nBase=len([S],[N])\r\nMean:\r\nBase=5,6,7\r\nSD:\r\nBase=1\r\n"
                    "Stage2:\r\nSmall=0-10\r\nTall=10\r\n"
                    "Calc2:\r\nSecond=len([S],[N])\r\nMean2:\r\nSecond=1,2\r\nSD2:\r\nSecond=1\r\n");
        folder_.add("clinic/CalcForm/Plain.txt", "title:\r\nPlain\r\nCalc:\r\nS-N=len([S],[N])\r\n");
    }

    static Outcome with(const char* command, const char* format, Arguments arguments, const std::string& settings) {
        arguments.insert(arguments.begin(), {command, "--anaitem", "clinic", "--format", format});
        arguments.push_back("-");
        return run(arguments, settings + film);
    }

    Folder folder_;
};

constexpr const char* twelve_years = "# birth=2001-05-14\n# film=2013-05-14\n";

TEST_F(GrowthClinic, ThePatientsStagesChooseTheNorms) {
    const struct {
        Arguments arguments;
        std::string settings;
        const char *by_age, *by_teeth, *second;
    } rows[] = {
        {{"--sex", "m"}, twelve_years, "S-N,10,mm,9,", "Base,10,mm,,", "Second,10,mm,,"},
        {{"--sex", "m"}, "# birth=2001-05-15\n# film=2013-05-14\n", "S-N,10,mm,7,", "Base,10,mm,,", "Second,10,mm,,"},
        {{"--sex", "f"},
         "# birth=2001-05-15\n# film=2013-05-14\n# dental_stage=I\n",
         "S-N,10,mm,9,",
         "Base,10,mm,5,",
         "Second,10,mm,2,"},
        {{"--sex", "f"},
         std::string("# dental_stage=VA\n") + twelve_years,
         "S-N,10,mm,9,",
         "Base,10,mm,7,",
         "Second,10,mm,2,"},
        // No band is the first one by default; an age at which men and women share a column needs no sex.
        {{}, twelve_years, "S-N,10,mm,9,", "Base,10,mm,,", "Second,10,mm,,"},
        {{}, "# birth=2001-05-14\n# film=2012-10-14\n", "S-N,10,mm,,", "Base,10,mm,,", "Second,10,mm,,"},
        {{}, "# dental_stage=IIIA\n", "S-N,10,mm,,", "Base,10,mm,,", "Second,10,mm,,"},
        {{"--sex", "m"}, "", "S-N,10,mm,,", "Base,10,mm,,", "Second,10,mm,,"},
        {{"--sex", "m", "--band", "101"}, "# dental_stage=VA\n", "S-N,10,mm,9,", "Base,10,mm,6,", "Second,10,mm,2,"},
        {{"--sex", "m", "--band", "0"}, twelve_years, "S-N,10,mm,7,", "Base,10,mm,5,", "Second,10,mm,1,"},
    };
    for (const auto& row : rows) {
        const Outcome one = with("analyze", "csv", row.arguments, row.settings);
        EXPECT_THAT(one.out, testing::AllOf(HasSubstr(row.by_age), HasSubstr(row.by_teeth), HasSubstr(row.second)));
    }
}

TEST_F(GrowthClinic, TheTablesHeadSaysWhichNormsTheyAre) {
    const std::string known =
        with("analyze", "table", {"--sex", "m"}, std::string("# dental_stage=IIIC\n") + twelve_years).out;
    EXPECT_THAT(known, HasSubstr("By age\nNorms of band 1, Man (age 12.00, sex male)\nItem"));
    EXPECT_THAT(known, Not(HasSubstr("Plain\nNorms")));
    EXPECT_THAT(known, HasSubstr("Norms of band 1, Mixed (dental stage IIIC); in the second set band 1, Tall (age"));
    const std::string unknown = with("analyze", "table", {}, "").out;
    EXPECT_THAT(unknown, HasSubstr("are left out, since the case lacks birth, film,\n  sex.\nItem"));
    const Arguments by_path = {"--analysis", "clinic/CalcForm/Ricketts.txt", "--sex", "m"};
    EXPECT_THAT(with("analyze", "table", by_path, twelve_years).out, HasSubstr("Norms of band 1, Man (age"));
    EXPECT_THAT(with("analyze", "table", {"--band", "3"}, "").out, HasSubstr("band 3, as --band says"));
}

// The age of the people that norms were taken from, and ages that no stage covers, in every output.
TEST_F(GrowthClinic, NormsOfAnotherAgeAreMarkedOrLeftOut) {
    folder_.add("clinic/CalcForm/list.txt", "Grown.txt\r\nSchool.txt\r\n");
    folder_.add("clinic/CalcForm/Grown.txt",
                "title:\r\nGrown\r\nComment:\r\nBy nobody, 1900\r\nCalc:\r\nS-N=len([S],[N])\r\nMean:\r\nS-N=9\r\n"
                "SD:\r\nS-N=1\r\nParam:\r\nAges=13-17\r\nSign S-N=longer (\x92\xb7\x82\xa2)\r\n");
    folder_.add(
        "clinic/CalcForm/School.txt",
        "title:\r\nSchool\r\nStage:\r\nSmall=6-8\r\nTall=8-12\r\nCalc:\r\nFixed=len([S],[N])\r\n"
        "By age=len([S],[N])\r\nTwice=len([S],[N])\r\nToo long=case(\"By age\")-mean(\"By age\")\r\n"
        "Mean:\r\nFixed=8,8\r\nBy age=1,2\r\nTwice=mean(\"By age\")*2:1\r\nSD:\r\nFixed=1\r\nBy age=1\r\nTwice=1\r\n");
    const std::string twelve = with("analyze", "table", {}, twelve_years).out;
    for (const char* part :
         {"Grown\n  By nobody, 1900\n  The norms begin at 13 years, and the patient is 12; they stand in",
          "S-N           10.0 mm       (9.0)   (1.0)   +1.00 *\n  + longer: S-N\n",
          "out: they end at 12 years, and the patient\n  is 12.\nItem",
          "Fixed         10.0 mm         8.0     1.0   +2.00 **\n"
          "By age        10.0 mm           –       –       –\n"
          "Twice         10.0 mm           –       –       –\n"
          "Too long         – depends on growth\n"})
        EXPECT_THAT(twelve, HasSubstr(part));
    const std::string csv = with("analyze", "csv", {}, twelve_years).out;
    EXPECT_THAT(csv, HasSubstr("Grown,S-N,10,mm,9,1,1,,144,outside_ages,,S-N,,\r\n"));
    EXPECT_THAT(csv, HasSubstr("School,Too long,,mm,,,,,144,outside_stages; differs_by_band,,Too long,,\r\n"));
    const auto json = nlohmann::json::parse(with("analyze", "json", {}, twelve_years).out)["cases"][0]["analyses"];
    EXPECT_EQ(json[0]["items"][0]["sign"], "longer");
    EXPECT_EQ(json[0]["remarks"][0]["code"], "outside_ages");
    EXPECT_TRUE(json[1]["band"].is_null());
    for (const char* age : {"# birth=2000-01-01\n# film=2013-01-01\n", "# birth=2000-01-01\n# film=2017-12-31\n"})
        EXPECT_THAT(with("analyze", "table", {}, age).out, HasSubstr("1900\nItem"));
    EXPECT_THAT(with("analyze", "table", {}, "# birth=2000-01-01\n# film=2018-01-01\n").out,
                HasSubstr("end at 17 years"));
    EXPECT_THAT(with("analyze", "table", {}, "# birth=2000-01-01\n# film=2005-01-01\n").out,
                HasSubstr("begin at 6 years"));
    EXPECT_THAT(run({"analyses", "--anaitem", "clinic", "Grown"}).out, HasSubstr("of people of 13 to 17 years\n"));
    EXPECT_THAT(run({"analyses", "--anaitem", "clinic", "Grown"}).out, HasSubstr("    + longer (長い)\n"));
    const Outcome batch =
        run({"batch", "--anaitem", "clinic", "--with", "norms", "-o", "t.csv", "-"}, std::string(twelve_years) + film);
    EXPECT_THAT(host_test::bytes_of("t.csv"),
                HasSubstr(",Grown:outside_ages; School:outside_stages,,10,9,1,10,8,1,10,,,10,,,,,\r\n"))
        << batch.err;
}

TEST_F(GrowthClinic, EveryStageHasItsGroundsOrWhatIsMissing) {
    const std::string settings = std::string("# sex=f\n# dental_stage=IIIB\n") + twelve_years;
    EXPECT_EQ(with("stage", "csv", {}, settings).out,
              "case,what,stage,name,years,from,missing,remarks,label,name_label\r\n"
              "standard input,Age,,,12,birth 2001-05-14; film 2013-05-14,,,Age,\r\n"
              "standard input,Hellman stage,4,IIIB,,,,,Hellman stage,IIIB\r\n"
              "standard input,Ricketts stage,1,Woman,,age 12.00; sex female,,,Ricketts stage,Woman\r\n"
              "standard input,Bone age,,,,,C3ua C3dp C3la C3lp C4ua C4up C4la C4lp,,Bone age,\r\n"
              "standard input,By age,1,Woman,,age 12.00; sex female,,,By age,Woman\r\n"
              "standard input,By teeth,1,Mixed,,dental stage IIIB,,,By teeth,Mixed\r\n"
              "standard input,\"By teeth, second set\",1,Tall,,age 12.00,,,\"By teeth, second set\",Tall\r\n");
    const std::string bare = with("stage", "table", {}, "").out;
    for (const char* line : {"missing: birth, film, sex\n", "\n  sex  ", "\n  birth  ", "\n  film  ",
                             "\n  dental_stage  ", "\n  C3.., C4..  "})
        EXPECT_THAT(bare, HasSubstr(line));
    std::istringstream lines(bare);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(display_width(line), 80) << line;
    EXPECT_THAT(with("stage", "table", {"--sex", "f"}, std::string("# dental_stage=I\n") + twelve_years).out,
                Not(HasSubstr("\n  sex  ")));
}

TEST_F(GrowthClinic, BoneAgeComesWithItsRatiosAndItsDistanceFromTheAge) {
    folder_.add("clinic/cvba.dat", "[CVB_AGE]\r\nPARAM_F0=1\r\n");
    const auto bone_age = [&](const std::string& sex, const std::string& points) {
        const std::string settings = std::string(twelve_years) + "# sex=" + sex + "\n" + film + points;
        const Outcome one = run({"stage", "--anaitem", "clinic", "--format", "json", "-"}, settings);
        return nlohmann::json::parse(one.out)["cases"][0]["growth"];
    };
    const nlohmann::json girl = bone_age("f", corners);
    EXPECT_NEAR(girl[3]["years"], 1 + 6.2 + 5.9 * 100 / std::sqrt(10100) + 4.74 * 1.25, 1e-12);
    EXPECT_EQ(girl[3]["from"]["AH3/AP3"], 1.0);
    EXPECT_EQ(girl[3]["from"]["AH4/PH4"], 1.25);
    EXPECT_EQ(girl[3]["from"]["coefficients"], "cvba.dat and built in");
    EXPECT_EQ(girl[3]["from"]["made from the corners"], "C3da C3dp C4da C4dp");
    EXPECT_EQ(girl[4]["years"].get<double>(), girl[3]["years"].get<double>() - 12);
    const nlohmann::json boy = bone_age("m", corners);
    EXPECT_NEAR(boy[3]["years"], 0.82 + 13.17 + 5.01 * 1.25, 1e-12);
    EXPECT_EQ(boy[3]["from"]["coefficients"], "built in");
    const nlohmann::json flat = bone_age("m", std::string(corners) + "C3da,1,1\nC3dp,1,1\n");
    EXPECT_TRUE(flat[3]["years"].is_null());
    EXPECT_THAT(flat[3]["reason"].get<std::string>(), HasSubstr("points lie on each other"));
}

TEST_F(GrowthClinic, AFolderWithoutTheRickettsTableSaysSo) {
    std::filesystem::remove("clinic/CalcForm/Ricketts.txt");
    EXPECT_THAT(with("stage", "table", {}, twelve_years).out, HasSubstr("no stages in CalcForm/Ricketts.txt"));
}

TEST_F(GrowthClinic, OtherKindsOfCasesHaveNoStagesOfLateralAnalyses) {
    const Outcome frontal = run({"stage", "--anaitem", "clinic", "--format", "csv", "-"},
                                "# scale_mm_per_px=1\n# kind=frontal\nMe,1,2\nC3ua,3,4\n");
    EXPECT_THAT(frontal.out, Not(HasSubstr("Bone age")));
    EXPECT_THAT(frontal.out, Not(HasSubstr("By teeth")));
    EXPECT_THAT(frontal.err, HasSubstr("\"C3ua\" is kept as a landmark of your own"));
}

}  // namespace
}  // namespace cephtool
