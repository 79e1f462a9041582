// Any formula: only its extent is overwritten, at most 99 values are made, and it gives the same bits twice, as a
// program, and for cases in an array.
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "AnalysisSheet.h"
#include "ArrayMeasurer.h"
#include "CephCalc.h"
#include "MeasuredAnalysis.h"
#include "fuzz/subject.h"

namespace {

bool is_same(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0 || (a != a && b != b);
}

// The formula as an item's and a norm's, and what refers to it.
std::string definition(const std::string& formula) {
    return "Calc:\nA=" + formula + "\nB=case(\"A\")+sdu(\"A\")\nC=1+1\nMean:\nA=7\nC=" + formula +
           ":1\nSD:\nA=2\nB=" + formula + "\n";
}

// Whatever the formula, a program gives what the text gives.
void require_program_gives_as_much(int kind, const std::string& formula, tool_fuzz::Subject& subject) {
    const std::string text = definition(formula);
    const AnalysisSheet sheet(kind, text.data(), text.size());
    const SheetSubject who{
        subject.record(kind), &subject.virtual_count, subject.virtuals, &subject.user_count, subject.users, 1, 0};
    for (int item = 0; item < sheet.GetCount(); ++item) {
        const SheetRow row = sheet.Evaluate(item, who);
        const CString name = sheet.GetItem(item).name;
        const double by_text[] = {sheet.Calc_1(0, name, who, 1, nullptr, nullptr),
                                  sheet.Calc_1(2, name, who, 1, nullptr, nullptr),
                                  sheet.Calc_1(3, name, who, 1, nullptr, nullptr)};
        const double by_program[] = {row.value, row.mean, row.sd};
        for (int i = 0; i < 3; ++i) tool_fuzz::require(is_same(by_text[i], by_program[i]));
    }
}

// Cases in an array, of a face whose landmarks are here and there at the place of the next one, level with it, broken,
// or nowhere, come to what they come to one by one.
void require_array_gives_as_much(const std::string& formula) {
    const auto analysis = tool::Analysis::from_text(tool::Kind::lateral, "any.txt", definition(formula));
    if (!analysis) return;
    constexpr std::size_t cases = 5;
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    std::vector<std::string> names{"Foo"};
    for (int slot = 0; slot < LandmarkTable::Count(0); ++slot) names.push_back(LandmarkTable::Name(0, slot));
    std::vector<tool::ArrayCase> people(cases, {.mm_per_pixel = 0.1, .sex = tool::Sex::male, .band = 0});
    std::vector<tool::Subject> subjects(cases, {.mm_per_pixel = 0.1, .sex = tool::Sex::male, .band = 0});
    std::vector<double> points;
    for (std::size_t place = 0; place < cases; ++place)
        for (std::size_t i = 0; i < names.size(); ++i) {
            const std::size_t other = place > 0 && (i + place) % 3 == 0 ? i + 1 : i, level = place == 2 ? other : i;
            tool::FilmPoint at{100.0 + static_cast<double>(other * 37 % 1000),
                               90 + static_cast<double>(level * 53 % 1100)};
            if (place == 3) at.x += 0.3;
            if (place == 4 && i % 5 == 1) at = {};
            subjects[place].landmarks.push_back({.name = names[i], .at = at});
            points.insert(points.end(), {at == tool::FilmPoint{} ? nan : at.x, at.y});
        }
    tool::ArrayMeasurer measurer(*analysis, names);
    std::vector<double> found[4];
    for (auto& column : found) column.resize(cases * measurer.item_count());
    const auto bytes = static_cast<std::ptrdiff_t>(sizeof(double)), width = static_cast<std::ptrdiff_t>(names.size());
    tool_fuzz::require(!measurer.measure({points.data(), 2 * width * bytes, 2 * bytes, bytes}, people,
                                         {found[0].data(), found[1].data(), found[2].data(), found[3].data()}));
    std::size_t number = 0;
    for (const tool::Subject& subject : subjects) {
        const auto alone = tool::measure_all(*analysis, subject, tool::Shapes::left_out);
        tool_fuzz::require(static_cast<bool>(alone));
        for (const tool::MeasuredItem& item : alone->items) {
            if (item.item->heading) continue;
            tool_fuzz::require(is_same(item.value.value_or(nan), found[0][number]) &&
                               is_same(item.mean.value_or(nan), found[1][number]) &&
                               is_same(item.sd.value_or(nan), found[2][number]) &&
                               is_same(item.deviation.value_or(nan), found[3][number]));
            ++number;
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tool_fuzz::require;
    if (size == 0) return 0;
    const int top_level = data[0] & 1, kind = data[0] & 2 ? 2 : 0;
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    const std::string formula = text.c_str();  // up to its NUL
    tool_fuzz::Subject subject;
    subject.add_virtual(formula);
    double results[2];
    for (double& result : results) {
        std::vector<char> buffer(formula.c_str(), formula.c_str() + formula.size() + 1);  // not a byte to spare
        std::vector<double> values(100, -7.0);
        int count = 0;
        result =
            CCephCalc::Calc(kind, 0, buffer.data(), values.data(), &count, subject.record(kind), &subject.virtual_count,
                            subject.virtuals, &subject.user_count, subject.users, 1, 0, 1.0, top_level);
        require(count >= 0 && count <= 99 && values[99] == -7.0);
        require(std::strlen(buffer.data()) == formula.size());
        // A group reads to its first ")", and on where a bracket or a function inside it ends behind that, never to the
        // ";"; what it does not read stays.
        const bool group = !top_level && formula.starts_with('(');
        const std::size_t limit = std::min(formula.find(';'), formula.size());
        const std::size_t extent = group ? std::min(formula.find(')'), limit) : limit;
        for (std::size_t i = 0; i < extent; ++i) require(buffer[i] == ' ');
        for (std::size_t i = extent; i < limit; ++i) require(buffer[i] == ' ' || buffer[i] == formula[i]);
        require(formula.compare(limit, std::string::npos, buffer.data() + limit) == 0);
    }
    require(std::memcmp(&results[0], &results[1], sizeof results[0]) == 0);
    require_program_gives_as_much(kind, formula, subject);
    if (kind == 0) require_array_gives_as_much(formula);
    return 0;
}
