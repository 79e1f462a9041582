// The definition files that ship: what must hold of all that they measure on the sample faces. That items are what
// their definitions say is held by the second computation.
#include <AnalysisFolder.h>
#include <AnalysisSheet.h>
#include <LandmarkTable.h>
#include <gmock/gmock.h>

#include <cmath>
#include <cstring>
#include <map>
#include <nlohmann/json.hpp>
#include <numbers>
#include <set>

#include "host/host_test.h"
#include "results/names.h"

namespace cephtool {
namespace {

using host_test::run;
using testing::HasSubstr;

struct Vec {
    double x, y;
};
Vec operator-(Vec a, Vec b) {
    return {a.x - b.x, a.y - b.y};
}

constexpr int lateral = 0, frontal = 1, diagnosis = 10, surgery = 20;
constexpr double finer = 10000;  // pixels a mm: records hold whole ones, and angles on a tooth shall not notice
constexpr int last_column = 99;

// A sample face in mm, y up.
class Face {
 public:
    explicit Face(const char* sample) {
        const auto json = nlohmann::json::parse(host_test::bytes_of(std::string(SAMPLES) + "/" + sample));
        const double scale = json["mm_per_pixel"];
        for (const auto& [name, at] : json["landmarks"].items())
            points_[name] = {scale * double(at[0]), -scale * double(at[1])};
        // Landmarks of the user's own, of which the samples place none: those of the average face, a plumb line, an
        // occlusal line of an earlier film.
        const bool side = points_.contains("TN");
        const std::string outlines = std::string(OUTLINES) + (side ? "/lateral.json" : "/frontal.json");
        const auto average = nlohmann::json::parse(host_test::bytes_of(outlines));
        for (const auto& [name, at] : average["landmarks"].items())
            points_.try_emplace(name, Vec{0.1 * double(at[0]), -0.1 * double(at[1])});
        if (!side) return;
        points_["Cm"] = points_["TN"] - Vec{4.2, 7.2};
        points_["TV1"] = {183.6, -30}, points_["TV2"] = {183, -210};
        points_["C6p"] = {50, -241}, points_["C7p"] = {43, -259};
        points_["OLr"] = points_["UMo(D)"] - Vec{0.6, 0.6}, points_["OLf"] = points_["U1"] - Vec{-0.8, -0.7};
    }
    Vec& operator[](const char* name) { return points_.at(name); }
    const std::map<std::string, Vec>& points() const { return points_; }

 private:
    std::map<std::string, Vec> points_;
};

// How a film lies: turned about its corner (counter-clockwise), moved, and larger or smaller than life.
struct Lie {
    double turned = 0;
    Vec moved = {500, -700};
    double enlarged = 1;
};

template <class Record>
Record record_of(int kind, const Face& face, const Lie& lie) {
    Record record{};
    record.Scale = lie.enlarged / finer;
    const double c = std::cos(lie.turned * std::numbers::pi / 180), s = std::sin(lie.turned * std::numbers::pi / 180);
    int own = 0;
    for (const auto& [name, p] : face.points()) {
        const int slot = LandmarkTable::Find(kind, name.c_str());
        if (slot < 0) std::strncpy(record.UserName[own], name.c_str(), sizeof record.UserName[own]);
        (slot < 0 ? record.UserPoint[own++] : *LandmarkTable::Point(kind, &record, slot)) =
            CPoint(static_cast<int>(std::lround(finer * (lie.moved.x + p.x * c - p.y * s))),
                   static_cast<int>(std::lround(-finer * (lie.moved.y + p.x * s + p.y * c))));
    }
    return record;
}

std::vector<std::string> files_of(int kind) {
    if (kind == surgery) return {"CalcForm_Surg/Surgery.txt"};
    const std::string folder = kind == lateral ? "CalcForm/" : kind == frontal ? "CalcForm_PA/" : "CalcForm_Diag/";
    std::istringstream list(host_test::bytes_of(std::string(ANALYSES) + "/" + folder + "list.txt"));
    std::vector<std::string> files;
    for (std::string line; std::getline(list, line);) files.push_back(folder + line.substr(0, line.find('\r')));
    return files;
}

struct Row {
    std::string file, name, unit, sign;
    SheetRow result;
};

std::vector<Row> measured(int kind, const Face& face, const Lie& lie = {}, int sex = 2) {
    auto film = record_of<tagPOINTLAT>(lateral, kind == frontal ? Face("lateral-average.json") : face, lie);
    auto front = kind == frontal ? record_of<tagPOINTPA>(frontal, face, lie) : tagPOINTPA();
    unsigned short user_landmarks = USER_POINT_MAX;
    SheetSubject subject{.record = kind == frontal ? static_cast<void*>(&front) : &film, .uCount = &user_landmarks};
    subject.sex = sex;
    subject.band = last_column;
    std::vector<Row> rows;
    for (const std::string& file : files_of(kind)) {
        static std::map<std::string, AnalysisSheet> sheets;
        const AnalysisSheet& sheet =
            sheets.try_emplace(file, kind, (std::string(ANALYSES) + "/" + file).c_str()).first->second;
        EXPECT_GT(sheet.GetCount(), 0) << file;
        for (int i = 0; i < sheet.GetCount(); ++i) {
            const SheetItem item = sheet.GetItem(i);
            if (lie.turned == 0) {  // a film that is turned has the same landmarks
                EXPECT_EQ(sheet.Missing(i, SheetPart::value, subject).GetSize(), 0) << file << ": " << item.name;
            }
            rows.push_back({file, static_cast<LPCSTR>(item.name), static_cast<LPCSTR>(item.unit),
                            static_cast<LPCSTR>(item.sign), sheet.Evaluate(i, subject)});
        }
    }
    return rows;
}

Face face_of(int kind) {
    return Face(kind == frontal ? "frontal-average.json" : "lateral-average.json");
}

TEST(ShippedAnalyses, NoValueDependsOnHowTheFilmLies) {
    for (const int kind : {lateral, frontal, diagnosis, surgery}) {
        const Face face = face_of(kind);
        const std::vector<Row> upright = measured(kind, face);
        for (int turn = 1; turn < 360; ++turn) {
            const std::vector<Row> turned = measured(kind, face, {double(turn), {300.0 + turn, 2.5 * turn - 900}});
            for (std::size_t i = 0; i < upright.size(); ++i) {
                ASSERT_NEAR(turned[i].result.value, upright[i].result.value, 1e-3)
                    << upright[i].file << ": " << upright[i].name << " at " << turn;
                ASSERT_EQ(turned[i].result.text, upright[i].result.text) << upright[i].name << " at " << turn;
            }
        }
    }
}

TEST(ShippedAnalyses, LengthsGrowWithTheScaleAndNothingElseDoes) {
    for (const int kind : {lateral, frontal}) {
        const std::vector<Row> once = measured(kind, face_of(kind)),
                               twice = measured(kind, face_of(kind), {.enlarged = 2});
        for (std::size_t i = 0; i < once.size(); ++i) {
            // What authors expect of a face has millimetres of its own.
            if (once[i].name.find("expected") != std::string::npos || once[i].name.find("fits") != std::string::npos)
                continue;
            EXPECT_NEAR(twice[i].result.value, once[i].result.value * (once[i].unit == "mm" ? 2 : 1), 1e-8)
                << once[i].file << ": " << once[i].name;
        }
    }
}

// A supplement, an exchanged sign or another author's plane would stand far from the norm.
TEST(ShippedAnalyses, AnAverageFaceLiesNearEveryNorm) {
    for (const int kind : {lateral, frontal, diagnosis, surgery}) {
        for (const int sex : {1, 2}) {
            for (const Row& row : measured(kind, face_of(kind), {}, sex)) {
                if (row.name == "Holdaway ratio") continue;  // over a small chin
                EXPECT_LE(std::abs(row.result.deviation), 4) << row.file << ": " << row.name;
                if (row.result.has_mean && !row.result.has_sd) {
                    EXPECT_NEAR(row.result.value, row.result.mean, 10) << row.file << ": " << row.name;
                }
            }
        }
    }
}

TEST(ShippedAnalyses, LateralItemsOfOneNameMeasureTheSame) {
    std::map<std::string, double> known;
    for (const Row& row : measured(lateral, Face("lateral-class2.json")))
        EXPECT_EQ(known.try_emplace(row.name, row.result.value).first->second, row.result.value) << row.name;
}

TEST(ShippedAnalyses, UprightIncisorsDoNotMakeTheirAngleJump) {
    Face face = face_of(lateral);
    double before = 0;
    for (double forward = 0; forward < 25; ++forward) {  // from 131 degrees to beyond 180
        face["U1R"] = face["U1R"] - Vec{-1, 0};
        for (const Row& row : measured(lateral, face)) {
            if (row.name != "Interincisal angle" || row.file != "CalcForm/Downs.txt") continue;
            if (before > 0) {
                EXPECT_NEAR(row.result.value, before, 3) << forward;
            }
            before = row.result.value;
        }
    }
    EXPECT_GT(before, 180);
}

TEST(ShippedAnalyses, EveryItemThatCanBeNegativeSaysWhatItsSignMeans) {
    const struct {
        int kind;
        std::vector<const char*> samples;
    } rows[] = {{lateral, {"lateral-average.json", "lateral-class2.json", "lateral-openbite.json"}},
                {frontal, {"frontal-average.json"}},
                {diagnosis, {"lateral-class2.json", "lateral-openbite.json"}},
                {surgery, {"lateral-average.json", "lateral-class2.json", "lateral-openbite.json"}}};
    for (const auto& row : rows)
        for (const char* sample : row.samples)
            for (const Row& item : measured(row.kind, Face(sample)))
                EXPECT_TRUE(item.result.value >= 0 || !item.sign.empty()) << item.file << ": " << item.name;
}

TEST(ShippedAnalyses, EachNameHasOneJapaneseNameAndEachNormItsPopulation) {
    const tool::AnalysisFolder folder(ANALYSES);
    const Texts japanese(Language::japanese);
    const auto is_japanese = [](const std::string& text) {
        return std::ranges::any_of(text, [](char c) { return (c & 0x80) != 0; });
    };
    std::map<std::string, std::string> known;
    for (const tool::Kind kind : tool::all_kinds) {
        for (const tool::Analysis& analysis : folder.analyses(kind)) {
            const std::string file = analysis.file().filename().string();
            const bool has_norms = host_test::bytes_of(analysis.file().string()).find("\nMean") != std::string::npos;
            EXPECT_TRUE(analysis.population() || !has_norms) << file;
            for (const tool::Item& item : analysis.items()) {
                EXPECT_NE(item.japanese, "") << file << ": " << item.name;
                EXPECT_EQ(known.try_emplace(item.name, item.japanese).first->second, item.japanese) << item.name;
                // The texts of findings.
                const std::string& formula = item.formula;
                std::size_t at = std::min(formula.find(';'), formula.size());
                while ((at = formula.find('"', at)) != std::string::npos) {
                    const std::size_t end = formula.find('"', at + 1);
                    const std::string text = formula.substr(at + 1, end - at - 1);
                    Measurement finding;
                    finding.text = text;
                    finding.text_japanese = analysis.japanese(text);
                    EXPECT_TRUE(is_japanese(verdict_of(finding, japanese))) << file << ": " << text;
                    at = end + 1;
                }
            }
            EXPECT_TRUE(is_japanese(title_of(analysis, japanese))) << file;
        }
    }
}

TEST(ShippedAnalyses, CantsArePositiveWhenLowerOnThePatientsRight) {
    const std::pair<const char*, const char*> rows[] = {{"Cant of the bite", "6"},
                                                        {"Bite to Z plane", "6"},
                                                        {"ZA plane to Z plane", "ZA"},
                                                        {"J plane to Z plane", "J"},
                                                        {"AG plane to Z plane", "AG"}};
    for (const auto& [item, points] : rows) {
        Face face = face_of(frontal);
        face[(std::string(points) + "R").c_str()].y -= 5;
        for (const Row& row : measured(frontal, face))
            if (row.name == item) {
                EXPECT_GT(row.result.value, 1.5) << item;
            }
    }
}

TEST(ShippedAnalyses, AnItemAsksForNoLandmarkThatItCanDoWithout) {
    const struct {
        const char *file, *item;
        std::vector<const char*> needs;
    } rows[] = {
        {"CalcForm/Downs.txt", "U1 to A-Pog", {"A", "Pog", "U1"}},
        {"CalcForm/Steiner.txt", "Upper lip to S line", {"TN", "SN", "Pog(s)", "TUL"}},
        {"CalcForm/Ricketts.txt", "Lower lip to E line", {"TN", "TC", "TLL"}},
        {"CalcForm/Ricketts.txt", "Overbite", {"UMo", "LMo", "PMo", "U1", "L1"}},
        {"CalcForm/Holdaway.txt", "SN behind the H line", {"TUL", "Pog(s)", "SN"}},
        {"CalcForm/COGS.txt", "N-B horizontal", {"B", "S", "N"}},
        {"CalcForm/Legan_Burstone.txt", "Incisor exposure", {"U1", "S", "N", "Sto"}},
    };
    for (const auto& row : rows) {
        const AnalysisSheet sheet(lateral, (std::string(ANALYSES) + "/" + row.file).c_str());
        tagPOINTLAT film{};
        std::set<std::string> missing;
        for (int i = 0; i < sheet.GetCount(); ++i) {
            if (sheet.GetItem(i).name != row.item) continue;
            const CStringArray names = sheet.Missing(i, SheetPart::value, {&film});
            for (INT_PTR n = 0; n < names.GetSize(); ++n) missing.insert(static_cast<LPCSTR>(names.GetAt(n)));
        }
        EXPECT_EQ(missing, std::set<std::string>(row.needs.begin(), row.needs.end())) << row.item;
    }
}

TEST(ShippedAnalyses, SheetsAndCastsSayWhatIsWrong) {
    const struct {
        const char *sample, *analysis;
        std::vector<const char*> words;
    } rows[] = {
        {"lateral-average.json", "Diagnosis", {"skeletal Class I (", "normal overjet", "normal overbite"}},
        {"lateral-class2.json", "Diagnosis", {"skeletal Class II (", "back (", "large overjet", "deep bite"}},
        {"lateral-openbite.json", "Diagnosis", {"high angle", "open bite", "no ("}},
        {"lateral-class2.json", "Surgery", {"lower jaw (", "short ("}},
        {"lateral-openbite.json", "Surgery", {"long (", "too little"}},
        {"model-average.json", "Bolton", {"94.6 mm", "85.6 mm", "-0.7 mm"}},
    };
    for (const auto& row : rows) {
        const std::string sample = std::string(SAMPLES) + "/" + row.sample;
        const std::string out = run({"analyze", "--anaitem", ANALYSES, "--analysis", row.analysis, sample}).out;
        for (const char* words : row.words) EXPECT_THAT(out, HasSubstr(words)) << row.sample;
    }
}

}  // namespace
}  // namespace cephtool
