// The definition files that ship: what they measure on the sample faces, held against their definitions.
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
double dot(Vec a, Vec b) {
    return a.x * b.x + a.y * b.y;
}
double cross(Vec a, Vec b) {
    return a.x * b.y - a.y * b.x;
}
double length(Vec a) {
    return std::sqrt(dot(a, a));
}
double degrees(double radians) {
    return radians * 180 / std::numbers::pi;
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

// The definitions in plain vectors: inclinations by atan2, distances by products.
TEST(ShippedAnalyses, ItemsAreWhatTheirDefinitionsSay) {
    Face f = Face("lateral-class2.json");
    const auto point = [&](const char* name) { return f[name]; };
    const auto mean = [](Vec a, Vec b) { return Vec{(a.x + b.x) / 2, (a.y + b.y) / 2}; };
    const auto rise = [](Vec a, Vec b) { return degrees(std::atan2(b.y - a.y, b.x - a.x)); };  // over the film's level
    const auto at = [](Vec a, Vec v, Vec b) {
        return degrees(std::atan2(std::abs(cross(a - v, b - v)), dot(a - v, b - v)));
    };
    const auto beside = [](Vec x, Vec a, Vec b) { return cross(b - a, x - a) / length(b - a); };  // left of a to b
    const auto beyond = [](Vec r, Vec x, Vec a, Vec b) { return dot(x - r, b - a) / length(b - a); };
    const auto crossing = [](Vec a, Vec b, Vec c, Vec d) {
        const double t = cross(c - a, d - c) / cross(b - a, d - c);
        return Vec{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
    };
    const Vec S = point("S"), N = point("N"), Or = point("Or"), Po = point("Po"), A = point("A"), B = point("B"),
              Pog = point("Pog"), Gn = point("Gn"), Me = point("Me"), Go = point("Go"), GoL = point("Go(L)"),
              Ar = point("Ar"), Ba = point("Ba"), PT = point("PT"), Xi = point("Xi"), PM = point("PM"),
              DC = point("DC"), ANS = point("ANS"), PNS = point("PNS"), U1 = point("U1"), U1R = point("U1R"),
              L1 = point("L1"), L1R = point("L1R"), Cd = point("Cd"), TN = point("TN"), SN = point("SN"),
              TUL = point("TUL"), TLL = point("TLL"), TC = point("TC"), PogS = point("Pog(s)"), NS = point("N(s)"),
              Gl = point("Gl"), MeS = point("Me(s)"), Sto = point("Sto"), Cm = point("Cm");
    const Vec molars = mean(point("UMo"), point("LMo")), incisors = mean(U1, L1), premolars = point("PMo");
    const Vec tGo = crossing(Ar, point("Go(P)"), GoL, Me);
    const double fh = rise(Po, Or), sn = rise(S, N), mp = rise(Go, Me), ml = rise(GoL, Me), pp = rise(PNS, ANS),
                 facial = rise(Pog, N), ab = rise(B, A), op = rise(molars, incisors), u1 = rise(U1, U1R),
                 l1 = rise(L1R, L1), hp = sn - 7;
    const Vec level = {std::cos(hp / degrees(1)), std::sin(hp / degrees(1))};
    const auto along_hp = [&](Vec r, Vec x) { return dot(x - r, level); };
    const auto below_hp = [&](Vec r, Vec x) { return -cross(level, x - r); };
    const struct {
        const char *file, *item;
        double value;
    } rows[] = {
        {"Downs", "Facial angle", facial - fh},
        {"Downs", "Angle of convexity", rise(A, N) - rise(Pog, A)},
        {"Downs", "A-B plane angle", ab - facial},
        {"Downs", "Mandibular plane angle", fh - ml},
        {"Downs", "Y axis", fh - rise(S, Gn)},
        {"Downs", "Cant of occlusal plane", fh - op},
        {"Downs", "Interincisal angle", 180 - (u1 - l1)},
        {"Downs", "L1 to occlusal plane", 90 - (l1 - op)},
        {"Downs", "L1 to mandibular plane", 180 - (l1 - ml)},
        {"Downs", "U1 to A-Pog", beside(U1, A, Pog)},
        {"Steiner", "SNA", at(S, N, A)},
        {"Steiner", "ANB", at(S, N, A) - at(S, N, B)},
        {"Steiner", "SN to Go-Gn", sn - rise(Go, Gn)},
        {"Steiner", "U1 to NA angle", u1 - rise(A, N)},
        {"Steiner", "L1 to NB angle", rise(B, N) - l1},
        {"Steiner", "L1 to NB distance", beside(L1, N, B)},
        {"Steiner", "Pog to NB", beside(Pog, N, B)},
        {"Steiner", "S-L", beyond(S, Pog, S, N)},
        {"Steiner", "Lower lip to S line", beside(TLL, mean(TN, SN), PogS)},
        {"Tweed", "FMIA", l1 - fh},
        {"Tweed", "IMPA", 180 - (l1 - mp)},
        {"Tweed", "FMA", fh - mp},
        {"Tweed", "Z angle", std::min(rise(PogS, TUL), rise(PogS, TLL)) - fh},
        {"Wits", "AO-BO", beyond(B, A, molars, premolars)},
        {"Jarabak", "Gonial angle", at(Ar, tGo, Me)},
        {"Jarabak", "Sum of the three angles", at(N, S, Ar) + at(S, Ar, tGo) + at(Ar, tGo, Me)},
        {"Jarabak", "Face height ratio", 100 * length(S - tGo) / length(N - Me)},
        {"Bjork", "SN to mandibular plane", sn - ml},
        {"Segner_Hasund", "Gonial angle, tGo to Gn", at(Ar, tGo, Gn)},
        {"COGS", "Gonial angle to Gn", at(Ar, Go, Gn)},
        {"Ricketts", "Facial axis", rise(crossing(N, Pog, GoL, Me), PT) - rise(Ba, N)},
        {"Ricketts", "Facial taper", 180 - (facial - rise(GoL, Me))},
        {"Ricketts", "Lower facial height", at(ANS, Xi, PM)},
        {"Ricketts", "Total facial height", rise(Ba, N) - rise(Xi, PM)},
        {"Ricketts", "Mandibular arc", 180 - at(DC, Xi, PM)},
        {"Ricketts", "Convexity", beside(A, N, Pog)},
        {"Ricketts", "Palatal plane", fh - pp},
        {"Ricketts", "Overjet", beyond(L1, U1, molars, premolars)},
        {"Ricketts", "Overbite", beside(L1, molars, premolars) - beside(U1, molars, premolars)},
        {"Ricketts", "L1 extrusion", beside(L1, molars, premolars)},
        {"Ricketts", "Molar relation", beyond(point("LMo(D)"), point("UMo(D)"), molars, premolars)},
        {"Ricketts", "U6 to PTV", beyond(point("PTV"), point("UMo(D)"), Po, Or)},
        {"Ricketts", "Upper lip to E line", beside(TUL, TN, TC)},
        {"McNamara", "Pog to N-perpendicular", beyond(N, Pog, Po, Or)},
        {"McNamara", "Cd-Gn less Cd-A", length(Cd - Gn) - length(Cd - A)},
        {"McNamara", "U1 to A vertical", beyond(A, U1, Po, Or)},
        {"Kim", "ODI", 180 - (ab - mp) + (fh - pp)},
        {"Kim", "APDI", (facial - fh) + (ab - facial) + (fh - pp)},
        {"Riedel_Eastman", "U1 to palatal plane", u1 - pp},
        {"Northwestern", "U1 to SN", u1 - sn},
        {"Holdaway", "Soft tissue facial angle", rise(PogS, NS) - fh},
        {"Holdaway", "H angle", rise(PogS, NS) - rise(PogS, TUL)},
        {"Holdaway", "SN behind the H line", -beside(SN, TUL, PogS)},
        {"Holdaway", "Nose prominence", beyond(TUL, TN, Po, Or)},
        {"Legan_Burstone", "Facial convexity Gl-SN-Pog(s)", rise(SN, Gl) - rise(PogS, SN)},
        {"Legan_Burstone", "Mandibular prognathism Gl-Pog", along_hp(Gl, PogS)},
        {"Legan_Burstone", "Vertical height ratio", below_hp(Gl, SN) / below_hp(SN, MeS)},
        {"Legan_Burstone", "Incisor exposure", below_hp(Sto, U1)},
        {"COGS", "N-B horizontal", along_hp(N, B)},
        {"COGS", "ANS-Gn vertical", below_hp(ANS, Gn)},
        {"COGS", "Go-Gn to HP", hp - rise(Go, Gn)},
        {"COGS", "B-Pog on Go-Gn", beyond(B, Pog, Go, Gn)},
        {"COGS", "U1 to palatal plane, height", std::abs(beside(U1, PNS, ANS))},
        {"Sassouni", "Arc, ANS less Pog",
         length(crossing(PNS, ANS, GoL, Me) - ANS) - length(crossing(PNS, ANS, GoL, Me) - Pog)},
        {"Sassouni", "Occlusal to mandibular plane", op - ml},
        {"Legan_Burstone", "Nasolabial angle", at(Cm, SN, TUL)},
        {"McNamara", "Nasolabial angle by the nose tip", at(TN, SN, TUL)},
    };
    std::map<std::string, double> values;
    for (const Row& row : measured(lateral, f)) values[row.file + row.name] = row.result.value;
    for (const auto& row : rows) {
        const auto found = values.find("CalcForm/" + std::string(row.file) + ".txt" + row.item);
        ASSERT_NE(found, values.end()) << row.file << ": " << row.item;
        EXPECT_NEAR(std::remainder(found->second - row.value, 360), 0, 1e-3) << row.file << ": " << row.item;
        EXPECT_LT(std::abs(found->second), 400) << row.item;
    }
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
    std::map<std::string, std::string> known;
    for (const tool::Kind kind : tool::all_kinds) {
        for (const tool::Analysis& analysis : folder.analyses(kind)) {
            const std::string file = analysis.file().filename().string();
            const bool has_norms = host_test::bytes_of(analysis.file().string()).find("\nMean") != std::string::npos;
            EXPECT_TRUE(analysis.population() || !has_norms) << file;
            for (const tool::Item& item : analysis.items()) {
                EXPECT_NE(item.japanese, "") << file << ": " << item.name;
                EXPECT_EQ(known.try_emplace(item.name, item.japanese).first->second, item.japanese) << item.name;
            }
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
