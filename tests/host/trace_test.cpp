#include <Framework.h>
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "host/host_test.h"
#include "tracing/measures.h"
#ifdef TOOL_SURFACE_PICTURES
#include "film/window.h"
#include "surface/picture_surface.h"
#endif

namespace cephtool {
namespace {

using host_test::bytes_of;
using host_test::Outcome;
using host_test::run;
using testing::AllOf;
using testing::HasSubstr;
using Json = nlohmann::ordered_json;

// Whether `file` holds `text`; matchers would print whole files.
bool holds(const std::string& file, const std::string& text) {
    return file.find(text) != std::string::npos;
}

class Trace : public testing::Test {
 protected:
    Trace() {
        std::filesystem::create_directories("share/tool");
        std::filesystem::copy(ANALYSES, "share/tool/anaitem", std::filesystem::copy_options::recursive);
        std::filesystem::copy(OUTLINES, "share/tool/outlines");
        SetModuleFileNameA((folder_.path / "bin/cephtool").string().c_str());
    }
    ~Trace() override { SetModuleFileNameA(nullptr); }

    static std::string sample(const std::string& name) { return std::string(SAMPLES) + "/" + name; }

    // The bytes that the command wrote to `file`, which must be all that it leaves behind.
    std::string traced(const std::string& file, Arguments arguments) {
        arguments.insert(arguments.begin(), "trace");
        arguments.insert(arguments.end(), {"-o", file});
        last_ = run(arguments);
        EXPECT_EQ(last_.code, ExitCode::done) << last_.err;
        EXPECT_EQ(last_.out, "");
        EXPECT_FALSE(std::filesystem::exists(file + ".part0"));
        return bytes_of(file);
    }

    Json average() { return Json::parse(bytes_of(sample("lateral-average.json"))); }

    host_test::Folder folder_;
    Outcome last_;
};

TEST_F(Trace, ANameOfAnyLengthIsCutAtOnce) {
    Json face = average();
    std::string name;
    for (int i = 0; i < 50'000; ++i) name += "上顎";
    face["name"] = name;
    folder_.add("long.json", face.dump());
    const std::string svg = traced("a.svg", {"long.json"});
    EXPECT_TRUE(holds(svg, "上…</text>") || holds(svg, "顎…</text>"));
    EXPECT_LT(svg.size(), name.size());
}

TEST_F(Trace, DrawsEverySampleWithLayersAndTextAsText) {
    for (const char* name : {"lateral-average.json", "lateral-class2.json", "lateral-openbite.json",
                             "frontal-average.json", "lateral-average.csv", "lateral-average-19-points.txt"}) {
        const std::string svg = traced("a.svg", {sample(name)});
        for (const char* layer : {"outlines", "planes", "landmarks", "labels", "values", "ruler", "legend"}) {
            EXPECT_TRUE(holds(svg, "<g id=\"" + std::string(layer) + "\"")) << name;
        }
        EXPECT_TRUE(holds(svg, ">Me</text>")) << name;
    }
}

TEST_F(Trace, ShowsWhatModeCaseAndOptionsSay) {
    Json json = average();
    json["landmarks"].erase("D");
    folder_.add("without_d.json", json.dump());
    folder_.add("cast.csv", "# kind=model\n# scale_mm_per_px=0.1\n16m,100,200\nUCWR,300,100\nUCWL,800,90\n");
    folder_.add("one.csv", "S,500,500\n");
    const std::string average = sample("lateral-average.json"), fitted = "an average face, fitted";
    struct {
        Arguments arguments;
        std::vector<std::string> there, absent;
        std::string note;
    } const rows[] = {
        {{"--mode", "2", average}, {">SNA 82.0<", ">D</text>"}, {">Po</text>"}, ""},
        {{"--mode", "Steiner.txt", average}, {">SNA 82.0<"}, {}, ""},
        {{"--mode", "landmarks", average}, {">OccF</text>", ">Vmi</text>", "(計測点)"}, {"SNA"}, ""},
        {{"--mode", "steiner", "without_d.json"}, {">SNA 82.0<"}, {">SND", ">D</text>"}, ""},
        {{average}, {"<polyline"}, {fitted}, ""},
        {{"--outlines", "fitted", average}, {fitted}, {}, "lateral-average.json: outlines left out"},
        {{sample("lateral-average.csv")}, {fitted}, {}, ""},
        {{"--outlines", "none", average}, {">Me</text>"}, {"<polyline", fitted}, ""},
        {{sample("model-average.json")}, {">10.8</text>", "dotted: even arch", "stroke-dasharray"}, {}, ""},
        {{sample("model-average.json"), "--measure", "Upper wire, molar to molar"},
         {">Upper wire, molar to molar 74.6 mm<"},
         {},
         ""},
        {{sample("model-average.json"), "--outlines", "none"}, {}, {">10.8</text>", "stroke-dasharray"}, ""},
        {{sample("frontal-average.json")}, {"the right half, mirrored", "stroke-dasharray"}, {}, ""},
        {{sample("frontal-average.json"), "--mirrored-half", "left"}, {"the left half, mirrored"}, {}, ""},
        {{sample("frontal-average.json"), "--mirrored-half", "none"}, {}, {"mirrored", "stroke-dasharray"}, ""},
        {{"--measure", "sna", "--measure", "Pog to NB", average},
         {">SNA 82.0°<", ">Pog to NB ", "#c2185b", "#00796b"},
         {},
         ""},
        {{"--measure", "SND", "without_d.json"}, {}, {">SND"}, "SND is not drawn: D is missing"},
        {{"cast.csv"}, {">UCWL</text>"}, {"<polyline"}, ""},
        {{"--scale", "0.1", "one.csv"}, {">S</text>"}, {"<polyline"}, "three landmarks"},
    };
    for (const auto& row : rows) {
        const std::string svg = traced("a.svg", row.arguments);
        for (const std::string& text : row.there)
            EXPECT_TRUE(holds(svg, text)) << text << " in " << row.arguments.back();
        for (const std::string& text : row.absent) EXPECT_FALSE(holds(svg, text)) << text;
        EXPECT_THAT(last_.err, HasSubstr(row.note));
    }
}

TEST_F(Trace, RefusesWhatItCanNotDoWithAWayOut) {
    const std::string good = sample("lateral-average.json");
    for (const char* name : {"text.png", "large.png", "huge.png"}) folder_.add(name, "no picture");
    std::filesystem::resize_file("large.png", largest_input + 1);
    std::filesystem::resize_file("huge.png", 1'000'000'001);
    struct {
        Arguments arguments;
        ExitCode code;
        const char *message, *way_out;
    } const rows[] = {
        {{good, "-o", "a.bmp"}, ExitCode::bad_command_line, "\"a.bmp\" does not end in .png", "says what is written"},
        {{good, "-o", "a.svg", "--measure", "SNAA"},
         ExitCode::bad_command_line,
         "no analysis for a lateral case",
         "Did you mean \"SNA\"?"},
        {{good, "-o", "-"}, ExitCode::bad_command_line, "does not end in", "says what is written"},
        {{good}, ExitCode::bad_command_line, "--output is required", "cephtool help trace"},
        {{good, "-o", "no/a.svg"}, ExitCode::bad_input, "no/a.svg could not be written", "folder exists"},
        {{"no.json", "-o", "a.svg"}, ExitCode::bad_input, "no.json: there is no such file", "Check the name"},
        {{good, "-o", "a.svg", "--mode", "stiner"}, ExitCode::bad_command_line, "\"stiner\" for a lateral", "modes"},
        {{good, "-o", "a.svg", "--zoom", "2"}, ExitCode::bad_command_line, "for PNG", "millimetres"},
        {{good, "-o", "a.png", "--zoom", "0"}, ExitCode::bad_command_line, "no zoom", "help trace"},
        {{good, "-o", "a.png", "--zoom", "1e-308"}, ExitCode::bad_command_line, "no zoom from", "help trace"},
        {{good, "-o", "a.png", "--zoom", "0.001"}, ExitCode::bad_command_line, "less than 16 pixels", "larger"},
        {{good, "-o", "a.png", "--image", "."}, ExitCode::bad_input, "this is a folder", "at most 1 GB"},
        {{good, "-o", "a.png", "--zoom", "90"}, ExitCode::bad_command_line, "more than 32767 pixels", "smaller"},
        {{good, "-o", "a.png", "--size", "12"}, ExitCode::bad_command_line, "\"12\" is no size", "help trace"},
        {{good, "-o", "a.png", "--size", "0x5"}, ExitCode::bad_command_line, "is no size", "help trace"},
        {{good, "-o", "a.svg", "--actual-size", "--scale", "0.5"}, ExitCode::bad_input, "than a sheet of A3", "scale"},
        {{good, "-o", "a.svg", "--image", "no.jpg"}, ExitCode::bad_input, "no.jpg: there is no such file", "Check"},
        {{good, "-o", "a.svg", "--image", "huge.png"}, ExitCode::bad_input, "larger than 1 GB", "DICOM."},
        {{good, "-o", "a.svg", "--image", "x", "--no-image"}, ExitCode::bad_command_line, "excludes", "help trace"},
#ifdef TOOL_SURFACE_PICTURES
        {{good, "-o", "a.svg", "--image", "text.png"}, ExitCode::bad_input, "text.png: the X-ray", "DICOM."},
        {{good, "-o", "a.svg", "--image", "large.png"}, ExitCode::bad_input, "large.png: the X-ray", "DICOM."},
#endif
    };
    for (const auto& row : rows) {
        Arguments arguments = row.arguments;
        arguments.insert(arguments.begin(), "trace");
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, row.code) << outcome.err;
        EXPECT_THAT(outcome.err, AllOf(HasSubstr(row.message), HasSubstr(row.way_out)));
        for (const char* file : {"a.svg", "a.png", "a.bmp"}) EXPECT_FALSE(std::filesystem::exists(file));
    }
    std::filesystem::remove("share/tool/outlines/lateral.json");
    EXPECT_THAT(run({"trace", good, "-o", "a.svg"}).err, HasSubstr("lateral.json: there is no such file"));
}

TEST_F(Trace, AnSvgAtTrueSizeIsASheetWithARulerOfAHundredMillimetres) {
    const std::string svg = traced("a.svg", {"--actual-size", sample("lateral-average.json")});
    EXPECT_TRUE(holds(svg, "width=\"210mm\" height=\"297mm\" viewBox=\"-0.5 -0.5 2100 2970\""));
    EXPECT_TRUE(holds(svg, "100 mm: check with a ruler"));
    const std::size_t at = svg.find("<line", svg.find("id=\"ruler\""));
    double left = 0, top = 0, right = 0;
    ASSERT_EQ(std::sscanf(svg.c_str() + at, "<line x1=\"%lf\" y1=\"%lf\" x2=\"%lf\"", &left, &top, &right), 3);
    EXPECT_EQ(right - left, 1000);
}

#ifdef TOOL_SURFACE_PICTURES

struct Size {
    unsigned width, height;
};

// Of a PNG file, from its header.
Size png_size(const std::string& bytes) {
    const auto number = [&](std::size_t at) {
        unsigned value = 0;
        for (std::size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
        return value;
    };
    EXPECT_TRUE(bytes.starts_with("\x89PNG"));
    return {number(16), number(20)};
}

TEST_F(Trace, WritesPicturesOfTheSizeAskedForAndPages) {
    const std::string file = sample("lateral-average.json");
    EXPECT_EQ(png_size(traced("a.png", {file})).height, 1600u);
    EXPECT_EQ(png_size(traced("a.PNG", {"--size", "500x9000", file})).width, 500u);
    const unsigned small = png_size(traced("a.png", {"--zoom", "0.2", file})).width;
    EXPECT_NEAR(png_size(traced("a.png", {"--zoom", "0.4", file})).width, 2 * small, 1);
    EXPECT_EQ(png_size(traced("a.png", {"--actual-size", file})).height, 3508u);  // A4 at 300 dpi
    const std::string pdf = traced("a.pdf", {"--actual-size", file});
    EXPECT_TRUE(pdf.starts_with("%PDF") && holds(pdf, "595.27"));
}

TEST_F(Trace, LiesOverTheXRayThatTheCaseNamesBesideIt) {
    const auto film = tool::PictureSurface::create(1400, 1200, tool::PictureSurface::Look::crisp, RGB(40, 90, 200));
    Json json = average();
    json["image"] = "pictures/film.png";
    folder_.add("patients/c.json", json.dump());
    folder_.add("patients/pictures/film.png", film->png());
    const auto blue_at_corner = [&](const std::string& png) {
        return (tool::shown_pixels(tool::decode_film(png)).at(0) & 0xFFFFFF) == 0x285AC8;
    };
    EXPECT_TRUE(blue_at_corner(traced("a.png", {"--zoom", "1", "patients/c.json"})));
    EXPECT_EQ(png_size(bytes_of("a.png")).width, 1400u);
    EXPECT_THAT(last_.err, HasSubstr("landmarks lie outside the X-ray"));
    EXPECT_FALSE(blue_at_corner(traced("a.png", {"--no-image", "patients/c.json"})));
    EXPECT_TRUE(holds(traced("a.svg", {"patients/c.json"}), "data:image/png"));
    EXPECT_TRUE(traced("a.pdf", {"--style", "paper", "patients/c.json"}).starts_with("%PDF"));
    EXPECT_EQ(run({"trace", "patients/c.json", "-o", "patients/pictures/film.png"}).code, ExitCode::bad_command_line);
    std::filesystem::remove("patients/pictures/film.png");
    EXPECT_THAT(run({"trace", "patients/c.json", "-o", "a.png"}).err,
                AllOf(HasSubstr("patients/pictures/film.png"), HasSubstr("no such file"),
                      HasSubstr("The case patients/c.json names it; draw without it: --no-image.")));
}

#endif

TEST(Tracing, RoundsValuesAsTheModeSaysAndFindsLandmarksInPartsOfPixels) {
    Case record = host_test::read("a.json", R"json({"format": "cephtool-case", "version": 1, "kind": "lateral",
        "mm_per_pixel": 0.5, "landmarks": {"S": [0.5, 10], "N": [101.6875, 10]}, "user": {"X": [7, 9]},
        "virtual": {"M": "mid([S],[N])", "L": "mid([S],[PT])", "LL": "mid([L],[N])"}, "image": "film.jpg"})json");
    const std::string definition = "Calc:\r\nLength=len([S],[N])\r\nWide=len([S],[Q])\r\n";
    std::vector<Analysis> analyses;
    analyses.push_back(*Analysis::from_text(tool::Kind::lateral, "a.txt", definition));
    std::string text = "SuppLine:\n[S]-[M]\n[S]-[gone]\n";
    const char* const rows[][3] = {{"0", "M,2,-4", "10"},   {"1", " M ,2, +-4", "10"}, {"1", "M, +2,-4", "10"},
                                   {"2", "M,2,-4", "10"},   {"0.5", "M,2,-4", "10"},   {"1", "M,2", "10"},
                                   {"1", "gone,1,2", "10"}, {"1", "M,a,2", "10"},      {"1", "", "10"},
                                   {"1", "M,1e9,1", "10"},  {"1", "M,1,1", "none"}};
    for (const auto& [decimals, position, size] : rows)
        text += std::string("Decimal=") + decimals + "\nPos=" + position + "\nSize=" + size + "\n=Length\n";
    const host_test::Folder folder;
    folder.add("mode.txt", text + "Pos=M,2,-4\nSize=10\n=Wide\n");
    const DisplayMode mode = *DisplayMode::read("mode.txt");
    const Tracing tracing = tracing_of(record, mode, analyses, {}, OutlineSource::none);
    std::vector<std::string> texts;
    for (const TracingValue& value : tracing.values) texts.push_back(value.text);
    EXPECT_THAT(texts, testing::ElementsAre("Length 51", "Length 50.6", "Length 50.59", "Length 50.5"));
    EXPECT_EQ(tracing.values[0].corner.x, 55.09375);
    EXPECT_EQ(tracing.values[0].corner.y, 2);
    ASSERT_EQ(tracing.lines.size(), 1u);
    EXPECT_EQ(tracing.lines[0].to.x, 51.09375);
    ASSERT_EQ(tracing.landmarks.size(), 4u);  // without PT there is no L, and no LL
    EXPECT_EQ(tracing.landmarks[3].name, "M");
    EXPECT_THAT(to_json(record), HasSubstr("\"image\": \"film.jpg\""));

    analyses.push_back(
        *Analysis::from_text(tool::Kind::lateral, "b.txt", "Calc:\nLength=len([S],[X])\nAngle=angle1([S],[N],[X])\n"));
    Tracing measured;
    EXPECT_THROW(add_measure(measured, record, analyses, "Length"), Error);  // which is meant?
    measured.mm_per_pixel = *record.mm_per_pixel;
    add_measure(measured, record, analyses, "b:length");
    ASSERT_EQ(measured.lines.size(), 1u);
    EXPECT_EQ(measured.lines[0].to.x, 7);
    add_measure(measured, record, analyses, "angle");
    EXPECT_GT(measured.lines.size(), 10u);
    for (const TracingLine& line : measured.lines) EXPECT_LE(line.to.x, 101.6875);  // the arc lies between the sides

    record.outlines = {{"Long", false, std::vector<Position>(40000), {}}, {"Short", false, {{1, 1}, {2, 2}}, {}}};
    const Tracing own = tracing_of(record, mode, analyses, {}, OutlineSource::own_or_fitted);
    EXPECT_EQ(own.outlines.size(), 1u);
    EXPECT_THAT(own.notes, testing::ElementsAre(HasSubstr("\"Long\" is not drawn")));
}

}  // namespace
}  // namespace cephtool
