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
        std::string other = film_;
        other.replace(other.find("0.11\\0.11"), 9, "0.11\\0.12");
        folder_.add("oblong.dcm", other);
        Json json = Json::parse(bytes_of(std::string(SAMPLES) + "/lateral-class2.json"));
        for (const char* key : {"name", "sex", "birth", "film", "mm_per_pixel", "vertebrae", "outlines", "virtual"})
            json.erase(key);
        add("no_film.json", json);
        json["image"] = "film.dcm";
        add("bare.json", json);
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
#ifdef __GLIBC__  // has iconv
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
        {{"bare.json"}, 0.1, "scale_of_film", "1500 mm = 1.1. Magnification is out of it."},
        {{"agrees.json"}, 0.1, "scale_of_film", "Imager Pixel Spacing (0018,1164) 0.11 mm"},
        {{"contradicts.json", "--scale", "film"}, 0.1, "scale_replaced; scale_of_film", "not the 0.11 of the file"},
        {{"contradicts.json", "--scale", "0.11"}, 0.11, "", ""},
        {{"bare.json", "--magnification", "1.25"}, 0.088, "scale_of_film", "the magnification given, 1.25"},
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
    }
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
