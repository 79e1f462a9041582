// Any point expressions, one a line, the first four also as virtual landmarks that may refer to each other: only what
// was read is blanked, and the point is the same whatever was resolved before.
#include <cstdint>
#include <cstring>
#include <vector>

#include "CephCalc.h"
#include "fuzz/subject.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tool_fuzz::require;
    const std::string input(reinterpret_cast<const char*>(data), size);
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin <= input.size() && lines.size() < 50;) {
        const std::size_t end = std::min(input.find('\n', begin), input.size());
        lines.emplace_back(input.substr(begin, end - begin).c_str());
        begin = end + 1;
    }
    tool_fuzz::Subject subject;
    for (const std::string& line : lines) subject.add_virtual(line);
    const auto evaluate = [&](char* text) {
        return CCephCalc::Calc_Point(0, text, &subject.lateral, &subject.virtual_count, subject.virtuals,
                                     &subject.user_count, subject.users);
    };
    for (const std::string& line : lines) {
        std::vector<char> buffer(line.c_str(), line.c_str() + line.size() + 1);
        const CPointD point = evaluate(buffer.data());
        std::size_t blanks = 0;
        while (blanks < line.size() && buffer[blanks] == ' ') ++blanks;
        require(line.compare(blanks, std::string::npos, buffer.data() + blanks) == 0);
        // Resolving all virtual landmarks first changes nothing.
        std::string nested = "mid(mid(mid([V3],[V1]),mid([V2],[V0]))," + line;
        std::string plain = line;
        evaluate(nested.data());
        const CPointD again = evaluate(plain.data());
        require(std::memcmp(&point, &again, sizeof point) == 0);
    }
    for (int i = 0; i < subject.virtual_count; ++i) {
        CPointD out(3, 3);
        const int resolved =
            CCephCalc::GetVirtualPoint(0, 0.1, &subject.virtuals[i], &subject.virtual_count, subject.virtuals,
                                       &subject.user_count, subject.users, nullptr, nullptr, &subject.lateral, &out);
        require(resolved == 1 || (resolved == 0 && out.IsPointNull() == 1));
    }
    return 0;
}
