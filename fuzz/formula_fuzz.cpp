// Any formula: only its extent is overwritten, at most 99 values are made, and it gives the same bits twice, and as a
// program.
#include <cstdint>
#include <cstring>
#include <vector>

#include "AnalysisSheet.h"
#include "CephCalc.h"
#include "fuzz/subject.h"

namespace {

// Whatever the formula, an item's and a norm's, and what refers to it: a program gives what the text gives.
void require_program_gives_as_much(int kind, const std::string& formula, tool_fuzz::Subject& subject) {
    const std::string text = "Calc:\nA=" + formula + "\nB=case(\"A\")+sdu(\"A\")\nC=1+1\nMean:\nA=7\nC=" + formula +
                             ":1\nSD:\nA=2\nB=" + formula + "\n";
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
        for (int i = 0; i < 3; ++i)
            tool_fuzz::require(std::memcmp(&by_text[i], &by_program[i], sizeof(double)) == 0 ||
                               (by_text[i] != by_text[i] && by_program[i] != by_program[i]));
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
    return 0;
}
