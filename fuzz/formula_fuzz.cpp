// Any formula: only its extent is overwritten, at most 99 values are made, and it gives the same bits twice.
#include <cstdint>
#include <cstring>
#include <vector>

#include "CephCalc.h"
#include "fuzz/subject.h"

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
    return 0;
}
