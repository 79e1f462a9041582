#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "host/host_test.h"

namespace cephtool {
namespace {

using host_test::bytes_of;
using host_test::Outcome;
using host_test::run;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using Json = nlohmann::ordered_json;

// The sample's film, 0.11 mm a pixel at a detector 1650 mm away, the patient at 1500 mm; and four landmarks on it.
class FilmOfACase : public testing::Test {
 protected:
    FilmOfACase() {
        film_ = bytes_of(std::string(SAMPLES) + "/film.dcm");
        folder_.add("film.dcm", film_);
        add_film("oblong.dcm", "0.11\\0.11", "0.11\\0.12");
        add_film("large.dcm", "0.11\\0.11", "0.90\\0.90");
        folder_.add("cut.dcm", film_.substr(0, 400));
        add_film("undated.dcm", "20110920", "20111399");
        Json json = Json::parse(bytes_of(std::string(SAMPLES) + "/lateral-class2.json"));
        for (const char* key : {"name", "sex", "birth", "film", "mm_per_pixel", "vertebrae", "outlines", "virtual"})
            json.erase(key);
        add("no_film.json", json);
        json["image"] = "film.dcm";
        add("bare.json", json);
        json["image"] = "lost.dcm";
        add("lost.json", json);
        json["image"] = "film.dcm";
        json["mm_per_pixel"] = 0.1;
        add("agrees.json", json);
        json["mm_per_pixel"] = 0.11;
        add("contradicts.json", json);
        json["sex"] = "female";
        add("other.json", json);
        json.erase("mm_per_pixel");
        json["image"] = "oblong.dcm";
        add("oblong.json", json);
    }

    void add(const std::string& name, const Json& json) { folder_.add(name, json.dump()); }

    void add_film(const std::string& name, const std::string& header, const std::string& instead) {
        std::string film = film_;
        folder_.add(name, film.replace(film.find(header), header.size(), instead));
    }

    static Json converted(Arguments arguments) {
        arguments.insert(arguments.begin(), "convert");
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, ExitCode::done) << outcome.err;
        return Json::parse(outcome.out);
    }

    host_test::Folder folder_;
    std::string film_;
};

TEST_F(FilmOfACase, GivesWhatTheCaseLacks) {
    const Json bare = converted({"bare.json"});
    EXPECT_NEAR(bare["mm_per_pixel"].get<double>(), 0.1, 1e-12);
    EXPECT_EQ(bare["birth"], "2011-09-20");
    EXPECT_EQ(bare["film"], "2025-04-21");
    EXPECT_EQ(bare["sex"], "male");
    EXPECT_EQ(bare["side"], "left");
#ifdef TOOL_FILM_ICONV
    EXPECT_EQ(bare["name"], "見本 太郎");
#endif
    folder_.add("cases/points.csv", "S,850,850\nN,1564,756\n");
    const Json named = converted({"cases/points.csv", "--image", "film.dcm", "--format", "json"});
    EXPECT_EQ(named["image"], "../film.dcm");
    EXPECT_EQ(named["side"], "left");
}

TEST_F(FilmOfACase, SaysInEveryOutputWhereTheScaleIsFrom) {
    const struct {
        Arguments options;
        double mm;
        const char *code, *text;
    } rows[] = {
        {{"bare.json"}, 0.1, "patient_of_film; scale_of_film", "1500 mm = 1.1. Magnification is out of it."},
        {{"agrees.json"}, 0.1, "patient_of_film; scale_of_film", "Imager Pixel Spacing (0018,1164) 0.11 mm"},
        {{"contradicts.json", "--scale", "film"},
         0.1,
         "patient_of_film; scale_replaced; scale_of_film",
         "not the 0.11 of the file"},
        {{"contradicts.json", "--scale", "0.11"},
         0.11,
         "patient_of_film",
         "film.dcm: name, sex, birth, film date, side."},
        {{"no_film.json", "--image", "large.dcm"},
         0.9 / 1.1,
         "patient_of_film; scale_of_film; film_doubtful",
         "is 1964 mm long, which no head film is."},
        {{"no_film.json", "--image", "undated.dcm"},
         0.1,
         "film_doubtful; patient_of_film; scale_of_film",
         "birth date in the film's header is none"},
        {{"bare.json", "--magnification", "1.25"},
         0.088,
         "patient_of_film; scale_of_film",
         "the magnification given, 1.25"},
        {{"no_film.json", "--ruler", "1900,400,1900,1400=100mm"}, 0.1, "scale_given", "100 mm on 1000 pixels."},
        {{"no_film.json", "--ruler", "0,0,300,400=50", "--magnification", "1.25"},
         0.08,
         "scale_given",
         "at a magnification of 1.25"},
        {{"no_film.json", "--scale", "0.11", "--magnification", "1.1"},
         0.1,
         "scale_given",
         "0.11 mm at a magnification of 1.1"},
    };
    for (const auto& row : rows) {
        Arguments arguments{"analyze", "--anaitem", ANALYSES, "--analysis", "Steiner", "--format", "json"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const Outcome outcome = run(arguments);
        ASSERT_EQ(outcome.code, ExitCode::done) << outcome.err;
        const Json record = Json::parse(outcome.out)["cases"][0];
        EXPECT_NEAR(record["mm_per_pixel"].get<double>(), row.mm, 1e-12) << row.text;
        std::string codes, texts;
        for (const Json& remark : record["remarks"]) {
            codes += (codes.empty() ? "" : "; ") + remark["code"].get<std::string>();
            texts += remark["text"].get<std::string>();
        }
        EXPECT_EQ(codes, row.code);
        EXPECT_THAT(texts, HasSubstr(row.text));
        EXPECT_THAT(outcome.err, HasSubstr(texts.empty() ? "" : row.text));
        EXPECT_EQ(outcome.err.find(row.text), outcome.err.rfind(row.text));
    }
}

TEST_F(FilmOfACase, IsAskedByEveryCommandThatMeasures) {
    const auto cases = [](const char* command, const Arguments& more) {
        Arguments arguments{command, "--anaitem", ANALYSES, "--format", "json"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Json::parse(run(arguments).out)["cases"];
    };
    const Json stages =
        cases("stage", {"no_film.json", "agrees.json", "--image", "film.dcm", "--image", "undated.dcm"});
    EXPECT_EQ(stages[0]["birth"], "2011-09-20");
    EXPECT_FALSE(stages[1].contains("birth"));
    EXPECT_EQ(cases("analyze", {"agrees.json", "no_film.json", "--image", "film.dcm"}).size(), 1u);
    const Outcome chart =
        run({"chart", "--anaitem", ANALYSES, "no_film.json", "--image", "film.dcm", "-o", "chart.svg"});
    EXPECT_THAT(chart.err, HasSubstr("From the header of film.dcm"));
#ifdef TOOL_SURFACE_PICTURES
    const Arguments trace{"trace",   "--anaitem", ANALYSES,        "--language", "ja",       "no_film.json",
                          "--image", "film.dcm",  "--actual-size", "-o",         "trace.svg"};
    EXPECT_EQ(run(trace).code, ExitCode::done);
    EXPECT_THAT(bytes_of("trace.svg"), AllOf(HasSubstr("film.dcm のヘッダーの値：氏名、性別、生年月日"),
                                             HasSubstr("側面セファロ、男性、13歳7か月、2025年4月21日")));
#endif
    folder_.add("table.csv", "image,S_x,S_y,N_x,N_y,A_x,A_y\nfilm.dcm,850,850,1564,756,1567,1322\n");
    EXPECT_EQ(run({"batch", "--anaitem", ANALYSES, "--analysis", "Steiner", "table.csv", "-o", "values.csv"}).code,
              ExitCode::done);
    EXPECT_THAT(bytes_of("values.csv"), HasSubstr("lateral,male,163,,patient_of_film; scale_of_film"));
    folder_.add("bare.csv", "# image=film.dcm\nS,850,850\nN,1564,756\n");
    EXPECT_EQ(run({"convert", "bare.csv", "--format", "tps", "-o", "two.tps"}).code, ExitCode::done);
    folder_.add("two.tps", bytes_of("two.tps") + bytes_of("two.tps"));
    EXPECT_EQ(cases("analyze", {"two.tps"})[1]["side"], "left");
    EXPECT_THAT(run({"analyze", "two.tps", "--image", "film.dcm"}).err, HasSubstr("it holds 2 specimens"));
}

TEST_F(FilmOfACase, IsRefusedWhereItContradictsTheCaseOrItself) {
    const struct {
        Arguments options;
        const char *message, *way_out;
    } rows[] = {
        {{"no_film.json"}, "has no scale", "--scale 0.1"},
        {{"contradicts.json"}, "0.11 mm a pixel, contradicts its X-ray film.dcm", "--scale 0.11 or --scale film"},
        {{"oblong.json"}, "rows lie 0.11 mm apart and columns 0.12 mm", "--ruler"},
        {{"agrees.json", "--magnification", "1.1"}, "a scale of its own", "--scale 0.1 --magnification 1.1"},
        {{"no_film.json", "--scale", "film"}, "names none", "--image"},
        {{"no_film.json", "--image", "bare.json"}, "bare.json: the X-ray can't be read", "formats"},
        {{"lost.json"}, "its X-ray lost.dcm is not there", "--scale 0.1"},
        {{"agrees.json", "--image", "missing.dcm"}, "there is no such file", ""},
        {{"agrees.json", "--image", "cut.dcm"}, "its X-ray cut.dcm can't be read", "Name another"},
        {{"bare.json", "--scale", "dpi"}, "notes no resolution", "--scale 0.1"},
        {{"bare.json", "--ruler", "1,1,1,1=40mm"}, "is no ruler", ""},
        {{"bare.json", "--magnification", "0.9"}, "is no magnification", ""},
    };
    for (const auto& row : rows) {
        Arguments arguments{"convert"};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const Outcome outcome = run(arguments);
        EXPECT_NE(outcome.code, ExitCode::done);
        EXPECT_THAT(outcome.err, AllOf(HasSubstr(row.message), HasSubstr(row.way_out)));
    }
    EXPECT_THAT(run({"convert", "other.json", "--scale", "0.1"}).err, HasSubstr("Another patient? The sex"));
}

TEST_F(FilmOfACase, IsToldAndWrittenAsAPicture) {
    const Json told = Json::parse(run({"film", "film.dcm", "--format", "json"}).out)["films"][0];
    EXPECT_EQ(told["width_px"], 2000);
    EXPECT_EQ(told["magnification"], "out");
    EXPECT_EQ(told["birth"], "2011-09-20");
    const Outcome oblong = run({"film", "oblong.dcm", "missing.dcm"});
    EXPECT_EQ(oblong.code, ExitCode::bad_input);
    EXPECT_THAT(oblong.out, HasSubstr("not square"));
    for (const char* format : {"table", "json", "csv"}) {
        const std::string anonymous = run({"film", "film.dcm", "--anonymous", "--format", format}).out;
        EXPECT_THAT(anonymous, AllOf(HasSubstr("Example X-ray"), HasSubstr("film 1")));
        for (const char* personal : {"見本", "Mihon", "0017", "2011", "2025", "male", "film.dcm"})
            EXPECT_THAT(anonymous, Not(HasSubstr(personal))) << format;
    }
    const std::string full = run({"film", "film.dcm", "--format", "png", "--window", "full"}).out;
    if (full.empty()) return;  // a build without PNG
    folder_.add("full.png", full);
    EXPECT_EQ(run({"film", "full.png", "-o", "again.png"}).code, ExitCode::done);
    EXPECT_EQ(run({"film", "full.png", "--invert", "-o", "inverted.png"}).code, ExitCode::done);
    EXPECT_EQ(run({"film", "inverted.png", "--invert", "-o", "back.png"}).code, ExitCode::done);
    EXPECT_EQ(bytes_of("again.png"), bytes_of("back.png"));
    EXPECT_NE(bytes_of("again.png"), bytes_of("inverted.png"));
    EXPECT_NEAR(converted({"no_film.json", "--image", "full.png", "--scale", "dpi"})["mm_per_pixel"].get<double>(), 0.1,
                1e-5);
}

}  // namespace
}  // namespace cephtool
