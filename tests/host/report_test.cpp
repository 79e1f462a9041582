#include <Framework.h>
#include <gmock/gmock.h>

#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "host/host_test.h"
#include "report/deviation_chart.h"
#include "report/result_table.h"
#include "report/superimposition.h"
#include "results/text_table.h"
#include "surface/recording_surface.h"

namespace cephtool {
namespace {

using host_test::bytes_of;
using host_test::Outcome;
using host_test::run;
using testing::ElementsAre;
using testing::HasSubstr;
using Json = nlohmann::ordered_json;

// --- The chart ---------------------------------------------------------------------------------------------------

TEST(ReportChart, PutsDeviationsOnTheirBands) {
    const ChartScale scale{100, 180};
    EXPECT_EQ(scale.x_of(0), 140);
    EXPECT_EQ(scale.x_of(2), 160);
    EXPECT_EQ(scale.x_of(-3), 110);
    for (const double far : {3.6, 5.0, 1e300, std::numeric_limits<double>::infinity()}) {
        EXPECT_TRUE(ChartScale::is_beyond(far));
        EXPECT_EQ(scale.x_of(far), scale.x_of(ChartScale::limit));
        EXPECT_EQ(scale.x_of(-far), scale.x_of(-ChartScale::limit));
    }
    EXPECT_FALSE(ChartScale::is_beyond(-3.5));
}

TEST(ReportChart, JoinsNeighboursAndMarksWhatLiesBeyond) {
    tool::RecordingSurface surface;
    surface.set_map_mode(MM_HIMETRIC);
    const Canvas canvas{surface, surface, [](const char*) {}, {}};
    const auto count = [&](const char* operation) {
        std::istringstream lines(surface.text());
        int found = 0;
        for (std::string line; std::getline(lines, line);) found += line.starts_with(operation);
        return found;
    };
    draw_polygons(canvas, {100, 180}, {{10, {0.0}}, {20, {2.0}}, {30, {{}}}, {40, {-1.0}}, {50, {7.0}}});
    EXPECT_EQ(count("line"), 2);     // none over the gap
    EXPECT_EQ(count("ellipse"), 3);  // dots
    EXPECT_EQ(count("polygon"), 1);  // the pointer
    EXPECT_THAT(surface.text(), HasSubstr("16000 -2000"));
}

// --- The table of differences ------------------------------------------------------------------------------------

Measurement measurement(std::optional<double> value, const char* text, const char* stars = "") {
    Measurement item;
    item.name = "SNA";
    item.unit = "deg";
    item.value = value;
    item.value_text = text;
    item.mean_text = "82.0";
    item.sd_text = "2.0";
    item.stars = stars;
    return item;
}

std::vector<std::string> compared(const Measurement& first, const Measurement& last) {
    static const Analysis analysis = *Analysis::from_text(tool::Kind::lateral, "Own.txt", "");
    const AnalysisResult a{&analysis, {}, {first}}, b{&analysis, {}, {last}};
    const ResultTable table = result_table({&a, &b}, TableStyle::full, Texts(Language::english));
    EXPECT_LE(table.rows[0].cells.size(), table.columns.size());
    return table.rows[0].cells.empty() ? table.rows[0].words : table.rows[0].cells;
}

TEST(ReportTable, TellsTheChangeOfValuesAsTheyAre) {
    Measurement older = measurement(84.26, "84.3", "*");
    older.mean_text = "83.0", older.sd_text = "2.5";
    EXPECT_THAT(compared(measurement(82.04, "82.04"), older),
                ElementsAre("82.04", "", "84.3", "*", "°", "+2.2", "83.0", "2.5"));
    for (const double same : {81.98, 82.02})
        EXPECT_EQ(compared(measurement(82, "82.0"), measurement(same, "82.0"))[5], "0.0") << same;
    EXPECT_EQ(compared(measurement(82, "82.0"), measurement(79.5, "79.5"))[5], "-2.5");
    EXPECT_EQ(compared(measurement({}, ""), measurement(79.5, "79.5"))[5], "");
    Measurement back, forward, gap;
    back.text = "back", forward.text = "forward", gap.missing = {"S", "N"};
    EXPECT_THAT(compared(back, forward), ElementsAre("back", "forward"));
    EXPECT_THAT(compared(back, back), ElementsAre("back"));
    EXPECT_THAT(compared(gap, back), ElementsAre("missing: S, N", "back"));
}

// --- Superimposition ---------------------------------------------------------------------------------------------

TEST(Superimposition, BringsLinesTogetherAndKeepsLengths) {
    const char* const text = "S,100,100\nN,400,60\nANS,420,300\nPNS,200,310\nMe,300,600\nGo,120,480\nA,411,333\n";
    const Case base = host_test::read("a.csv", std::string("# scale_mm_per_px=0.1\n") + text);
    Case other = host_test::read("b.csv", std::string("# scale_mm_per_px=0.25\n") + text);
    for (std::size_t i = 0; i < other.landmarks.size(); ++i) {  // another face, on a film that lies otherwise
        Position& p = other.landmarks[i].position;
        p = {500 - 0.9 * p.y + 7 * static_cast<double>(i), 30 + 0.8 * p.x};
    }
    const auto at = [](const Case& record, std::string_view name) {
        return std::ranges::find(record.landmarks, name, &Landmark::name)->position;
    };
    const auto distance = [](Position a, Position b) { return std::hypot(a.x - b.x, a.y - b.y); };
    for (const Registration& registration : registrations) {
        const auto map = superimposed(registration, base, other);
        ASSERT_TRUE(map) << registration.title;
        const Position origin = (*map)(at(other, registration.at)), end = (*map)(at(other, registration.toward));
        const Position to = at(base, registration.at), line = at(base, registration.toward);
        EXPECT_NEAR(distance(origin, to), 0, 1e-9);
        EXPECT_NEAR((end.x - to.x) * (line.y - to.y), (end.y - to.y) * (line.x - to.x), 1e-6);
        EXPECT_GT((end.x - to.x) * (line.x - to.x) + (end.y - to.y) * (line.y - to.y), 0);
        EXPECT_NEAR(distance((*map)(at(other, "A")), (*map)(at(other, "Me"))) * 0.1,
                    distance(at(other, "A"), at(other, "Me")) * 0.25, 1e-9);
    }
    other.landmarks.erase(other.landmarks.begin());
    EXPECT_FALSE(superimposed(registrations[0], base, other));
    EXPECT_THAT(missing_for(registrations[0], other), ElementsAre("S"));
    other.landmarks = base.landmarks;
    other.landmarks[1].position = other.landmarks[0].position;
    EXPECT_FALSE(superimposed(registrations[0], base, other));
}

// --- The commands ------------------------------------------------------------------------------------------------

class PrintedReport : public testing::Test {
 protected:
    PrintedReport() {
        std::filesystem::create_directories("share/tool");
        std::filesystem::copy(ANALYSES, "share/tool/anaitem", std::filesystem::copy_options::recursive);
        std::filesystem::copy(OUTLINES, "share/tool/outlines");
        std::filesystem::create_directory("bin");
        std::filesystem::copy(ANALYSES "/Era.dat", "bin/Era.dat");
        SetModuleFileNameA((folder_.path / "bin/cephtool").string().c_str());
    }
    ~PrintedReport() override { SetModuleFileNameA(nullptr); }

    static std::string sample(const std::string& name) { return std::string(SAMPLES) + "/" + name; }

    std::string written(const std::string& command, const std::string& file, Arguments arguments) {
        arguments.insert(arguments.begin(), command);
        arguments.insert(arguments.end(), {"-o", file});
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, ExitCode::done) << outcome.err;
        return bytes_of(file);
    }

    // What stands on the pages, each ended by a form feed.
    std::string text_of_report(const Arguments& arguments) {
        written("report", "r.pdf", arguments);
        EXPECT_EQ(std::system("pdftotext -layout r.pdf r.txt"), 0);
        return bytes_of("r.txt");
    }

    host_test::Folder folder_;
};

TEST_F(PrintedReport, ChartIsWrittenWithoutAnyLibraryForPictures) {
    const std::string svg = written("chart", "c.svg", {"--analysis", "Steiner", sample("lateral-class2.json")});
    EXPECT_THAT(svg, HasSubstr(">SNA</text>"));
    EXPECT_THAT(svg, HasSubstr(">75.1</text>"));
    EXPECT_THAT(svg, HasSubstr(">+3</text>"));
}

TEST_F(PrintedReport, AndEveryOtherOutputSaysHowItsNumbersAreToBeRead) {
    std::string left = "# scale_mm_per_px=0.1\n";
    for (const char* row :
         {"S,700,100", "N,200,90", "A,210,400", "B,240,700", "Go,600,650", "Me,250,850", "Pog,230,800"})
        left += std::string(row) + "\n";
    folder_.add("left.csv", left);
    const struct {
        const char* file;
        Arguments words;
        const char *of_film, *of_norms;  // and how the output says it
    } outputs[] = {
        {"o.txt", {"analyze"}, "the face looks left", "Norms that differ"},
        {"o.csv", {"analyze", "--format", "csv"}, ",mirrored; norms_by_sex,", ""},
        {"o.json", {"analyze", "--format", "json"}, "\"code\": \"mirrored\"", "\"code\": \"norms_by_sex\""},
        {"b.csv", {"batch", "--with", "norms"}, ",mirrored; ", "; norms_by_sex,"},
        {"b.jsonl", {"batch", "--with", "norms"}, "\"remarks\":\"mirrored; ", "; norms_by_sex\""},
        {"s.txt", {"stage"}, "the face looks left", ""},
        {"s.csv", {"stage", "--format", "csv"}, ",mirrored,", ""},
        {"c.svg", {"chart"}, "the face looks left", "Norms that differ"},
        {"d.svg", {"chart", "--language", "ja"}, "左右反転している", "男女で異なる標準値は省いた"},
        {"t.svg", {"trace"}, "the face looks left", ""},
        {"r.html", {"report"}, "the face looks left", "Norms that differ"},
#ifdef TOOL_SURFACE_PICTURES
        {"r.pdf", {"report"}, "the face looks left", "Norms that differ"},
        {"q.pdf", {"report", "--language", "ja"}, "左右反転している", "男女で異なる標準値は省いた"},
#endif
    };
    for (const auto& output : outputs) {
        const std::string file = output.file;
        std::string text = written(output.words[0], file, [&] {
            Arguments words(output.words.begin() + 1, output.words.end());
            words.push_back("left.csv");
            return words;
        }());
        if (file.ends_with(".pdf")) {
            EXPECT_EQ(std::system(("pdftotext " + file + " r.txt").c_str()), 0);
            text = bytes_of("r.txt");
        }
        EXPECT_THAT(text, HasSubstr(output.of_film)) << file;
        EXPECT_THAT(text, HasSubstr(output.of_norms)) << file;
    }
}

TEST_F(PrintedReport, AsksWhetherItIsOnePatient) {
    const std::string film = sample("lateral-class2.json"), other = sample("lateral-average.json");
    EXPECT_EQ(run({"chart", film, "--compare", film, "-o", "c.svg"}).err, "");
    EXPECT_THAT(run({"chart", film, "--compare", other, "-o", "c.svg"}).err,
                HasSubstr("Another patient? The sex is not that of "));
}

TEST_F(PrintedReport, RefusesWhatItCanNotDoWithAWayOut) {
    const std::string good = sample("lateral-average.json");
    struct {
        Arguments arguments;
        ExitCode code;
        const char *message, *way_out;
    } const rows[] = {
        {{"report", good, "-o", "a.svg"}, ExitCode::bad_command_line, "ends neither in .pdf", "cephtool chart"},
        {{"report", good}, ExitCode::bad_command_line, "--output is required", "help report"},
        {{"chart", good, "-o", "a.txt"}, ExitCode::bad_command_line, "\"a.txt\" does not end", "end of the name"},
        {{"chart", good, "-o", "a.svg", "--language", "fr"}, ExitCode::bad_command_line, "none of en, ja", "chart"},
        {{"chart", good, "-o", "a.svg", "--analysis", "Stiner"}, ExitCode::bad_command_line, "Stiner", "Steiner"},
        {{"chart", good, "-o", "a.svg", "--analysis", "Bolton"}, ExitCode::bad_input, "lateral case", "by kind"},
        {{"chart", good, "-o", "a.svg", "--compare", sample("frontal-average.json")},
         ExitCode::bad_input,
         "frontal case, and the first one is lateral",
         "one kind"},
        {{"chart", good, "-o", "a.svg", "--compare", good, "--compare", good, "--compare", good},
         ExitCode::bad_command_line,
         "more than 3",
         "at most two"},
        {{"chart", good, "-o", "no/a.svg"}, ExitCode::bad_input, "could not be written", "folder exists"},
        {{"chart", "no.json", "-o", "a.svg"}, ExitCode::bad_input, "no such file", "Check"},
    };
    for (const auto& row : rows) {
        const Outcome outcome = run(row.arguments);
        EXPECT_EQ(outcome.code, row.code) << row.message;
        EXPECT_THAT(outcome.err, testing::AllOf(HasSubstr(row.message), HasSubstr(row.way_out)));
    }
}

#ifdef TOOL_SURFACE_PICTURES

TEST_F(PrintedReport, HoldsPatientTracingTablesAndSource) {
    const std::string text = text_of_report({"--analysis", "Steiner", sample("lateral-class2.json")});
    for (const char* part :
         {"Cephalometric report", "13 y 7 m", "2011-09-20 (H23.9.20)", "IVA", "of true size", "Steiner analysis",
          "75.1", "-2.43", "in SD", "Page 1 of 2", "Page 2 of 2", "Steiner.txt", "not a diagnosis"})
        EXPECT_THAT(text, HasSubstr(part));
    EXPECT_EQ(std::ranges::count(text, '\f'), 2);
    const std::string film = sample("lateral-class2.json");
    const std::string three = text_of_report({film, "--compare", film, "--compare", film});
    EXPECT_THAT(three.substr(0, three.find('\f')), HasSubstr("Scale 35 % of true size"));
}

TEST_F(PrintedReport, HasNoEnglishInItsJapaneseFrame) {
    const std::string text = text_of_report({"--language", "ja", "--compare", sample("lateral-class2.json"),
                                             "--analysis", "Steiner", sample("lateral-average.json")});
    for (const char* part :
         {"セファロ比較報告書", "平成23年9月20日", "13歳7か月", "撮影2", "変化量", "1 / 3 ページ", "S-N"})
        EXPECT_THAT(text, HasSubstr(part));
    for (const TextRow& row : all_texts()) {
        const std::string_view words = row.english.substr(0, row.english.find('%'));
        if (words.find(' ') >= words.size() - 1) continue;  // may be part of an item's name
        EXPECT_EQ(text.find(words), std::string::npos) << words;
    }
}

TEST_F(PrintedReport, BreaksLongTablesAndKeepsBareCasesWhole) {
    std::string items = "title:\nLong\nCalc:\nLengths\n";
    for (int i = 0; i < 90; ++i) items += "Item " + std::to_string(i) + "=len([S],[N])\n";
    folder_.add("Long.txt", items);
    folder_.add("bare.csv", "# name=" + std::string(300, 'W') + "\nS,100,100\nN,800,90\n");
    const std::string text = text_of_report({"--analysis", "./Long.txt", "--scale", "0.1", "bare.csv"});
    std::size_t heads = 0;
    for (std::size_t at = text.find("Item  "); at != std::string::npos; at = text.find("Item  ", at + 1)) ++heads;
    EXPECT_EQ(heads, 2u);
    EXPECT_THAT(text, HasSubstr("Item 89"));
    EXPECT_THAT(text, HasSubstr("Page 3 of 3"));
    EXPECT_THAT(text, HasSubstr("not given"));
}

TEST_F(PrintedReport, IsMadeOfEveryCaseThatCanBeRead) {
    for (const auto& seed : std::filesystem::directory_iterator(CASE_SEEDS)) {
        const Outcome outcome = run({"report", "--scale", "0.1", "--no-image", seed.path().string(), "-o", "seed.pdf"});
        EXPECT_EQ(bytes_of("seed.pdf").starts_with("%PDF"), outcome.code == ExitCode::done) << seed.path();
        std::filesystem::remove("seed.pdf");
    }
}

#endif

}  // namespace
}  // namespace cephtool
