// The standard errors of all values that ship, against differences and against chance.
#include <AnalysisSheet.h>
#include <LandmarkTable.h>
#include <SheetMeasurer.h>
#include <gmock/gmock.h>

#include <cmath>
#include <cstring>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <tuple>

#include "host/host_test.h"

namespace cephtool {
namespace {

using tool::LandmarkError;
using tool::LandmarkErrors;

constexpr int lateral = 0, frontal = 1, diagnosis = 10, surgery = 20;
constexpr double steps_a_mm = 1e6;

// A sample face as a record that can be moved a little, with landmarks of the analyses' own where the sample has them.
struct Film {
    tagPOINTLAT side{};
    tagPOINTPA front{};
    int kind;
    unsigned short own = 0;
    std::vector<std::string> names;
    SheetSubject subject;

    Film(int its_kind, const char* sample) : kind(its_kind) {
        const auto json = nlohmann::json::parse(host_test::bytes_of(std::string(SAMPLES) + "/" + sample));
        side.Scale = front.Scale = 1 / steps_a_mm;
        subject = {.record = record(), .uCount = &own, .sex = 2, .band = 0, .steps = int(steps_a_mm / 10)};
        for (const auto& [name, at] : json["landmarks"].items()) {
            if (LandmarkTable::Find(kind, name.c_str()) < 0) continue;
            names.push_back(name);
            const double steps = double(json["mm_per_pixel"]) * steps_a_mm;
            *point(name) = CPoint(int(std::lround(double(at[0]) * steps)), int(std::lround(double(at[1]) * steps)));
        }
    }
    void* record() { return kind == frontal ? static_cast<void*>(&front) : &side; }
    CPoint* point(const std::string& name) {
        return LandmarkTable::Point(kind, record(), LandmarkTable::Find(kind, name.c_str()));
    }
    // By mm along and across Frankfort, on a frontal film across and up it; the axes stay where they are.
    void move(const std::string& name, double along, double across) {
        point(name)->x += int(std::lround((along * axis_x + across * axis_y) * steps_a_mm));
        point(name)->y += int(std::lround((along * axis_y - across * axis_x) * steps_a_mm));
    }
    void settle_axes() {
        if (kind == frontal) return;
        const CPoint way = *point("Or") - *point("Po");
        const double length = std::hypot(way.x, way.y);
        axis_x = way.x / length, axis_y = way.y / length;
    }
    double axis_x = 1, axis_y = 0;
};

class Sheets {
 public:
    explicit Sheets(int kind) {
        const std::string folder = std::string(ANALYSES) + (kind == lateral     ? "/CalcForm/"
                                                            : kind == frontal   ? "/CalcForm_PA/"
                                                            : kind == diagnosis ? "/CalcForm_Diag/"
                                                                                : "/CalcForm_Surg/");
        std::istringstream list(kind == surgery ? "Surgery.txt" : host_test::bytes_of(folder + "list.txt"));
        for (std::string line; std::getline(list, line);)
            sheets_.emplace_back(kind, (folder + line.substr(0, line.find('\r'))).c_str());
    }
    SheetSet set() const {
        std::vector<const AnalysisSheet*> all;
        for (const AnalysisSheet& sheet : sheets_) all.push_back(&sheet);
        return SheetSet(all);
    }
    // Calls visit(sheet, item, name) for each item with a formula.
    template <class Visit>
    void each(const Visit& visit) const {
        for (std::size_t sheet = 0; sheet < sheets_.size(); ++sheet)
            for (int i = 0; i < sheets_[sheet].GetCount(); ++i)
                if (!sheets_[sheet].GetItem(i).expression.IsEmpty())
                    visit(int(sheet), i,
                          std::string(sheets_[sheet].Title()) + ": " + std::string(sheets_[sheet].GetItem(i).name));
    }

 private:
    std::vector<AnalysisSheet> sheets_;
};

LandmarkErrors all_with(const Film& film, const std::string& moved, double along, double across) {
    std::vector<LandmarkError> errors;
    for (const std::string& name : film.names)
        errors.push_back({.name = name,
                          .frontal = film.kind == frontal,
                          .along_mm = name == moved ? along : 0,
                          .across_mm = name == moved ? across : 0});
    return LandmarkErrors(errors);
}

struct Sample {
    int kind;
    const char* file;
};
constexpr Sample samples[] = {{lateral, "lateral-average.json"},
                              {lateral, "lateral-class2.json"},
                              {diagnosis, "lateral-average.json"},
                              {surgery, "lateral-class2.json"},
                              {frontal, "frontal-average.json"}};

TEST(ValueErrors, AreTheSlopesThatDifferencesGive) {
    int compared = 0;
    for (const auto& [kind, file] : samples) {
        const Sheets sheets(kind);
        const SheetSet set = sheets.set();
        Film film(kind, file);
        SheetMeasurer measurer(set), plain(set);
        film.settle_axes();
        for (const std::string& name : film.names) {
            for (const bool across : {false, true}) {
                measurer.SetErrors(all_with(film, name, across ? 0 : 1e-6, across ? 1e-6 : 0));
                measurer.Measure(film.subject);
                constexpr double mm = 0.02;
                std::map<std::pair<int, int>, double> difference;
                for (const int side : {1, -1}) {
                    film.move(name, across ? 0 : side * mm, across ? side * mm : 0);
                    plain.Measure(film.subject);
                    sheets.each([&](int sheet, int item, const std::string&) {
                        difference[{sheet, item}] += side * plain.Evaluate(sheet, item, 2, 0).value;
                    });
                    film.move(name, across ? 0 : -side * mm, across ? -side * mm : 0);
                }
                sheets.each([&](int sheet, int item, const std::string& what) {
                    const SheetError error = measurer.Error(sheet, item, 2, 0);
                    if (error.state != ErrorState::known) return;
                    const double slope = std::abs(difference[{sheet, item}]) / (2 * mm);
                    ASSERT_NEAR(error.value * 1e6, slope, 1e-4 + 1e-3 * slope) << what << " by " << name << across;
                    ++compared;
                });
            }
        }
    }
    EXPECT_GT(compared, 20000);
}

TEST(ValueErrors, AreTheSpreadThatChanceGives) {
    constexpr int draws = 1500;
    constexpr double along = 0.8, across = 1.1;
    constexpr double rare = 0.15;  // of steps that lie beyond two standard errors
    std::mt19937 random(7);
    std::normal_distribution<double> normal;
    int compared = 0, at_border = 0;
    for (const auto& [kind, file] : samples) {
        const Sheets sheets(kind);
        const SheetSet set = sheets.set();
        Film film(kind, file);
        film.settle_axes();
        SheetMeasurer measurer(set), plain(set);
        std::vector<LandmarkError> errors;
        for (const std::string& name : film.names)
            errors.push_back({.name = name, .frontal = kind == frontal, .along_mm = along, .across_mm = across});
        measurer.SetErrors(LandmarkErrors(errors));
        measurer.Measure(film.subject);
        struct Sums {
            double first = 0, sum = 0, squares = 0;
        };
        std::map<std::pair<int, int>, Sums> sums;
        const Film there = film;
        for (int draw = 0; draw < draws; ++draw) {
            film.side = there.side, film.front = there.front;
            for (const std::string& name : film.names) film.move(name, along * normal(random), across * normal(random));
            plain.Measure(film.subject);
            sheets.each([&](int sheet, int item, const std::string&) {
                Sums& all = sums[{sheet, item}];
                const double value = plain.Evaluate(sheet, item, 2, 0).value;
                if (draw == 0) all.first = value;
                all.sum += value - all.first, all.squares += (value - all.first) * (value - all.first);
            });
        }
        film.side = there.side, film.front = there.front;
        sheets.each([&](int sheet, int item, const std::string& what) {
            const SheetError error = measurer.Error(sheet, item, 2, 0);
            at_border += error.state == ErrorState::at_border;
            if (error.state != ErrorState::known) return;
            const Sums& all = sums[{sheet, item}];
            const double spread = std::sqrt((all.squares - all.sum * all.sum / draws) / (draws - 1));
            EXPECT_NEAR(error.value, spread, (error.value > spread ? 0.2 : 0.1) * spread + rare) << what;
            ++compared;
        });
    }
    EXPECT_GT(compared, 500);
    EXPECT_LT(at_border, compared / 50);  // steps of tables, and a ratio to what may be 0
}

// What derivatives do not tell. S-N is level and 100 mm long, A lies on its middle; figures are 1 mm all round.
TEST(ValueErrors, BordersAndWhatHasNoErrorAreTold) {
    using enum ErrorState;
    struct Row {
        const char* formula;
        ErrorState state;
        double error;
    };
    const Row rows[] = {
        {"len([S],[N])", known, std::sqrt(2.0)},
        {"angle2([S],[N],[S],[A])<0;len([S],[N]);len([S],[Me])", at_border, 0},
        {"angle2([S],[N],[S],[A])<0;len([A],vertical([A],[S],[N]));0-len([A],vertical([A],[S],[N]))", known,
         std::sqrt(1.5)},
        {"len([A],vertical([A],[S],[N]))", known, std::sqrt(1.5)},
        {"len([A],vertical([A],[S],[N]))*(angle2([S],[N],[S],[A])<0)", known, 0},  // which side has the length
        {"len([A],mid([S],[N]))", at_border, 0},                                   // its ends can part either way
        {"lenR([Me],[A])", at_border, 0},                                          // 40 mm below each other
        {"angle2([S],[N],[A],[S])", at_border, 0},                                 // 180 degrees, and -180
        {"switch(len([S],[N])<0,len([S],[N])<100.5)", at_border, 0},
        {"len([S],[Ba])", no_figure, 0},
        {"len([S],[V])", not_derived, 0},
        {"len(extension([S],[N],10),[N])", known, 0},
        {"len(AngleBisector([A],[S],[Me],10),[A])", known, 0},
        {"len([S],[N])/len([S],[N])", known, 0},
        {"len([S],[N])/len([A],vertical([A],[S],[N]))", at_border, 0},
        {"len(mid([S],[N]),[Me])", known, std::sqrt(1.5)},
    };
    std::string text = "title:\nT\nCalc:\n";
    for (const Row& row : rows) text += "I" + std::to_string(&row - rows) + "=" + row.formula + ":1\n";
    text +=
        "Moving=len([S],[N]):1\nStill=len([S],[N]):1\nMean:\nMoving=case(\"I0\")*1,1\nStill=99\nSD:\nMoving=2\nStill=2\n";
    Film film(lateral, "lateral-average.json");
    film.side = tagPOINTLAT();
    film.side.Scale = 1 / steps_a_mm;
    for (const auto& [name, x, y] : {std::tuple("S", 0, 0), {"N", 100, 0}, {"A", 50, 0}, {"Me", 50, 40}, {"Ba", 0, 9}})
        *film.point(name) = CPoint(int((x + 100) * steps_a_mm), int((y + 100) * steps_a_mm));
    tagKPOINT made{};
    std::strcpy(made.Name, "V");
    std::strcpy(made.Construction, "mid([S],[N])");
    unsigned short count = 1;
    film.subject.kCount = &count, film.subject.kPoints = &made;
    std::vector<LandmarkError> errors;
    for (const char* name : {"S", "N", "A", "Me"}) errors.push_back({.name = name, .along_mm = 1, .across_mm = 1});
    const AnalysisSheet sheet(lateral, text.data(), text.size());
    const SheetSet set(sheet);
    SheetMeasurer measurer(set);
    measurer.SetErrors(LandmarkErrors(errors));
    measurer.Measure(film.subject);
    for (const Row& row : rows) {
        const SheetError error = measurer.Error(0, int(&row - rows), 2, 0);
        EXPECT_EQ(error.state, row.state) << row.formula;
        if (row.error > 0) {
            EXPECT_NEAR(error.value, row.error, 1e-6) << row.formula;
        }
        if (row.state == no_figure) {
            EXPECT_EQ(error.without.GetAt(0), "Ba");
        }
    }
    for (const auto& [behind, deviation] : {std::pair(0, 0.0), {1, std::sqrt(0.5)}}) {  // a mean moves with the value
        const int item = int(std::size(rows)) + behind;
        const SheetError error = measurer.Error(0, item, 2, 0);
        EXPECT_TRUE(measurer.Evaluate(0, item, 2, 0).has_mean);
        EXPECT_NEAR(error.value, std::sqrt(2.0), 1e-9);
        EXPECT_NEAR(error.deviation, deviation, 1e-9);
    }
}

TEST(ValueErrors, FileOfErrorsIsReadAndWritten) {
    const LandmarkErrors errors = LandmarkErrors::from_text(
        "; ours\r\nS=9,9\r\nLateral:\r\nS= 0.4 , 0.55,12, two readers, 12 films\r\nS=2,2\r\nN=1\r\nA=-1,2\r\nB=1,x\r\n"
        "Me=0.5,0.25\r\nToolong=1,1\r\n\x82=1,1\r\nfrontal:\r\nS=3,4,5\r\n*=1,2,9\r\nMe=5,6, Assumed,us\r\n");
    ASSERT_EQ(errors.all().size(), 5);
    const LandmarkError& s = *errors.find("S", false);
    EXPECT_EQ(std::tuple(s.along_mm, s.across_mm, s.readings, s.source),
              std::tuple(0.4, 0.55, 12, "two readers, 12 films"));
    EXPECT_EQ(errors.find("S", true)->readings, 5);
    EXPECT_EQ(errors.find("B", false), nullptr);
    EXPECT_EQ(errors.find("B", true)->across_mm, 2);  // as all others
    EXPECT_TRUE(errors.find("B", true)->assumed && errors.find("Me", true)->assumed &&
                !errors.find("S", true)->assumed);
    EXPECT_EQ(errors.measured().find("Me", true), nullptr);
    EXPECT_EQ(errors.measured().all().size(), 3);
    EXPECT_EQ(errors.to_text("ours\nand more"),
              "; ours\r\n; and more\r\nLateral:\r\nS=0.40,0.55,12,two readers, 12 films\r\nMe=0.50,0.25\r\n"
              "Frontal:\r\nS=3.00,4.00,5\r\n*=1.00,2.00,assumed\r\nMe=5.00,6.00,assumed,us\r\n");
}

}  // namespace
}  // namespace cephtool
