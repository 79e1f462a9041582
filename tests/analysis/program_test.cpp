// What programs give against what the text gives: all bits, and all landmarks that are missing.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

#include "SheetMeasurer.h"
#include "analysis/evaluation.h"
#include "analysis/missing_landmarks.h"
#include "tests/analysis/subject.h"

namespace tool_test {
namespace {

using tool::NormPart;

std::string bits(double value) {
    return std::isnan(value) ? "nan" : std::to_string(std::bit_cast<std::uint64_t>(value));
}

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += name + ",";
    return text;
}

std::string joined(const CStringArray& names) {
    std::string text;
    for (INT_PTR i = 0; i < names.GetSize(); ++i) text += static_cast<LPCSTR>(names.GetAt(i)) + std::string(",");
    return text;
}

std::string degenerate(bool parallel, std::string_view first, std::string_view second) {
    return (parallel ? " parallel " : " at one place ") + std::string(first) + " " + std::string(second);
}

// All that a measurer tells of an item, in one line.
std::string told(SheetMeasurer& measurer, int sheet, int item, int sex, int band, const SheetRow& alone) {
    const SheetRow row = measurer.Evaluate(sheet, item, sex, band);
    EXPECT_EQ(bits(alone.value) + bits(alone.deviation), bits(row.value) + bits(row.deviation));
    EXPECT_EQ(alone.text, row.text);
    std::string line = bits(row.value) + (row.has_mean ? " mean " + bits(row.mean) : "") +
                       (row.has_sd ? " sd " + bits(row.sd) : "") + (row.is_text ? " text " : "") +
                       (row.needs_band ? " needs band" : "") + (row.norm_needs_band ? " norm needs band" : "");
    for (const SheetPart part : {SheetPart::value, SheetPart::mean, SheetPart::sd}) {
        const std::string missing = joined(measurer.Missing(sheet, item, part, sex, band));
        EXPECT_EQ(measurer.Lacks(sheet, item, part, sex, band), !missing.empty());
        line += " missing " + missing;
        if (part == SheetPart::value && missing.empty() && (row.at_one_place || row.parallel))
            line += degenerate(row.parallel, row.degenerate[0].View(), row.degenerate[1].View());
    }
    return line;
}

// The same by the text alone.
std::string told_by_text(const tool::DefinitionFile& file, const tool::NamedLine& line, tool::Landmarks& landmarks,
                         int sex, int band) {
    tool::Evaluation evaluation([&] { return &file; }, landmarks, sex, band);
    const tool::ItemResult row = evaluation.item(line.name, tool::Ask::deviation).value_or(tool::ItemResult());
    tool::MissingLandmarks lacking(file, evaluation, sex, band);
    const std::string missing = joined(lacking.for_item(line.name));
    const auto& undefined = row.degeneracy;
    return bits(row.value) + (row.mean.value ? " mean " + bits(*row.mean.value) : "") +
           (row.sd.value ? " sd " + bits(*row.sd.value) : "") + (row.is_text ? " text " : "") +
           (row.needs_band ? " needs band" : "") + (row.norm_needs_band ? " norm needs band" : "") + " missing " +
           missing +
           (undefined && missing.empty() ? degenerate(undefined->parallel, undefined->first, undefined->second) : "") +
           " missing " + joined(lacking.for_norm(line.name, NormPart::mean)) + " missing " +
           joined(lacking.for_norm(line.name, NormPart::sd));
}

void expect_as_text(int kind, const std::vector<std::string>& texts, std::vector<SheetSubject> subjects) {
    std::vector<AnalysisSheet> sheets;
    for (const std::string& text : texts) sheets.emplace_back(kind, text.data(), text.size());
    std::vector<const AnalysisSheet*> all;
    for (const AnalysisSheet& sheet : sheets) all.push_back(&sheet);
    const SheetSet set(all);
    SheetMeasurer measurer(set);
    for (SheetSubject s : subjects) {
        measurer.Measure(s);
        for (const int round : {0, 1}) {
            if (round > 0) s.sex = 1 - s.sex % 2, s.band = s.band % 3 - 1;  // not told to the measurer
            for (std::size_t sheet = 0; sheet < texts.size(); ++sheet) {
                const tool::DefinitionFile file(texts[sheet]);
                const auto lines = file.items();
                for (std::size_t item = 0; item < lines.size(); ++item) {
                    tool::Landmarks landmarks(kind, s.record, s.kCount, s.kPoints, s.uCount);
                    ASSERT_EQ(told(measurer, static_cast<int>(sheet), static_cast<int>(item), s.sex, s.band,
                                   sheets[sheet].Evaluate(static_cast<int>(item), s)),
                              told_by_text(file, lines[item], landmarks, s.sex, s.band))
                        << lines[item].name << "=" << lines[item].rest;
                }
            }
        }
    }
}

// A record with some landmarks at random places, some nowhere, some on top of or in line with others.
template <int Kind, class S>
S random_subject(std::mt19937& random) {
    S subject;
    const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    const int absent = below(3) ? 40 : 3;
    for (int slot = 0; slot < LandmarkTable::Count(Kind); ++slot)
        if (below(absent))
            *LandmarkTable::Point(Kind, &subject.record, slot) =
                below(12) ? CPoint(below(5) * 90, below(900) - 40) : CPoint(90, 90);
    if constexpr (Kind == 2) subject.record.Palate = below(3) - 1;
    for (const char* name : {"Foo", "Cm", "V2"})
        if (below(2)) subject.add_user(name, CPoint(below(90), below(90)));
    for (const char* text : {"mid([S],[N])", "[V2]", "cross([V0],[N],[A],[B])", "[V3]", "extension([V1],[Foo],-9.5)"})
        if (below(2)) subject.add_virtual(("V" + std::to_string(subject.virtual_count)).c_str(), text);
    return subject;
}

template <int Kind, class S>
void expect_as_text(const std::vector<std::string>& texts, unsigned seed, int subjects) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::vector<S> made;
    std::vector<SheetSubject> all;
    made.reserve(static_cast<std::size_t>(subjects));
    for (int i = 0; i < subjects; ++i)
        all.push_back(made.emplace_back(random_subject<Kind, S>(random)).on_sheet(i % 3, i % 2 ? i : 100 * i + 4));
    expect_as_text(Kind, texts, all);
}

const std::vector<std::string> pieces = {"len([S],[N])",
                                         "angle2([S],[N],mid([A],[V0]),[Foo])",
                                         "d01",
                                         "2",
                                         ".5",
                                         "+",
                                         "-",
                                         "*",
                                         "/",
                                         "<",
                                         ">=",
                                         "(",
                                         ")",
                                         "switch(",
                                         ",",
                                         ";",
                                         "case(\"I1\")",
                                         "sdu(\"I2\")",
                                         "mean(\"I0\")",
                                         "sdv(\"I3\")",
                                         "\"t\"",
                                         "Model([UCAW])",
                                         "lenD(vertical([B],[A],",
                                         "EffectiveA()",
                                         "Model([PLTU])",
                                         "extension([N],[S],",
                                         "AngleBisector(",
                                         "[Po]",
                                         "[",
                                         "\x95\x5b",
                                         ":1"};

std::string random_formula(std::mt19937& random, std::size_t longest) {
    std::string formula;
    for (std::size_t length = random() % (longest + 1); length > 0; --length)
        formula += pieces[random() % pieces.size()];
    return formula;
}

TEST(Program, ReadsTheNumberOfANormFormulaAsItsText) {
    std::mt19937 random(20250421);
    for (int i = 0; i < 200'000; ++i) {
        const double half_steps = static_cast<int>(random() % 4'000'001) - 2'000'000,
                     steps[] = {2, 20, 2000, 1e-3, 7e3};
        const double near = half_steps / steps[i % 5], value = i % 2 ? near : std::nextafter(near, i % 7 - 3.0);
        const int decimals = i % 11 % 6;
        const auto number = [&](std::optional<double> read) { return read ? bits(*read) : "none"; };
        ASSERT_EQ(number(tool::norm_formula_number(value, decimals)),
                  number(tool::norm_of_text(tool::norm_formula_text(value, decimals)).value))
            << value << ", " << decimals;
    }
}

TEST(Program, GivesTheBitsOfTheTextForAllThatShips) {
    const auto shipped = [](const char* folder) {
        std::vector<std::string> texts;
        for (const auto& entry :
             std::filesystem::directory_iterator(std::string(TOOL_SOURCE_DIR "/anaitem/") + folder)) {
            std::ifstream in(entry.path(), std::ios::binary);
            texts.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        }
        return texts;
    };
    expect_as_text<0, Lateral>(shipped("CalcForm"), 1, 40);
    expect_as_text<10, Subject<tagPOINTLAT, 10>>(shipped("CalcForm_Diag"), 2, 200);
    expect_as_text<20, Subject<tagPOINTLAT, 20>>(shipped("CalcForm_Surg"), 3, 200);
    expect_as_text<1, Subject<tagPOINTPA, 1>>(shipped("CalcForm_PA"), 4, 100);
    expect_as_text<2, Subject<tagPOINTMO, 2>>(shipped("CalcForm_Model"), 5, 200);

    std::mt19937 random(6);
    std::vector<std::string> damaged = shipped("CalcForm");
    for (const char* folder : {"CalcForm_Diag", "CalcForm_Surg"})
        for (std::string& text : shipped(folder)) damaged.push_back(std::move(text));
    for (std::string& text : damaged)
        for (int i = 0; i < 300; ++i) {
            const std::size_t at = random() % text.size();
            if (i % 3 == 0)
                text[at] = "()[]\",;:=*+-d1 "[random() % 15];
            else if (i % 3 == 1)
                text.erase(at, 1 + random() % 3);
            else
                text.insert(at, text.substr(random() % text.size(), random() % 9));
        }
    expect_as_text<0, Lateral>(damaged, 7, 10);
}

TEST(Program, GivesTheBitsOfTheTextForAllShortFormulas) {
    const std::vector<std::string> few = {"len([S],[N])", "d01", "3", "*", "-", "<", "(", ")", "switch(", ",", ";"};
    std::string text = "Calc:\n";
    int number = 0;
    for (std::size_t length = 1, count = few.size(); length <= 4; ++length, count *= few.size())
        for (std::size_t code = 0; code < count; ++code) {
            text += "I" + std::to_string(number++) + "=";
            for (std::size_t rest = code, i = 0; i < length; ++i, rest /= few.size()) text += few[rest % few.size()];
            text += "\n";
        }
    expect_as_text<0, Lateral>({text}, 8, 1);
}

TEST(Program, GivesTheBitsOfTheTextForRandomFormulasThatReferToEachOther) {
    std::mt19937 random(9);
    for (int round = 0; round < 400; ++round) {
        std::string texts[2];
        for (std::string& text : texts) {
            text = "Calc:\n";
            for (int i = 0; i < 6; ++i)
                text += "I" + std::to_string(i) + "=" + random_formula(random, 2 + random() % 12) + "\n";
            for (const char* section : {"Mean:\n", "SD_M:\n", "SD_F:\n", "Mean2:\n"}) {
                text += section;
                for (int i = 0; i < 4; ++i) {
                    text += "I" + std::to_string(i) + "=";
                    for (int field = 0; field < 3; ++field)
                        text += (random() % 3 ? std::to_string(random() % 90) : random_formula(random, 4) + ":1") + ",";
                    text += "7\n";
                }
            }
        }
        expect_as_text<0, Lateral>({texts[0], texts[1]}, 1000 + static_cast<unsigned>(round), 4);
        expect_as_text<2, Subject<tagPOINTMO, 2>>({texts[0]}, static_cast<unsigned>(round), 2);
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace tool_test
