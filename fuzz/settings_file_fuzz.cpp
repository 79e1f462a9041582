// Settings files: what is written is read back, and nothing else changes. The input is three lines, section, key and
// value, and behind them the file.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/settings_file.h"
#include "platform/text.h"

namespace {

using Entry = std::pair<std::string, std::string>;

std::string_view take_line(std::string_view& input) {
    const std::size_t end = std::min(input.find('\n'), input.size());
    const std::string_view line = input.substr(0, end);
    input.remove_prefix(std::min(end + 1, input.size()));
    return line;
}

// The keys and values that can be read in the first section of each name, but for one.
std::vector<Entry> others(std::string_view file, std::string_view section, std::string_view key) {
    std::vector<Entry> entries;
    for (const std::string_view name : tool::setting_sections(file)) {
        for (const std::string_view other : tool::setting_keys(file, name)) {
            if (tool::equal_ignoring_case(name, tool::trimmed(section)) &&
                tool::equal_ignoring_case(other, tool::trimmed(key)))
                continue;
            entries.emplace_back(other, tool::setting(file, name, other).value());
        }
    }
    return entries;
}

void require(bool holds) {
    if (!holds) std::abort();
}

std::string_view without_quotes(std::string_view value) {
    const bool quoted = value.size() >= 2 && (value[0] == '"' || value[0] == '\'') && value.back() == value[0];
    return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view file(reinterpret_cast<const char*>(data), size);
    const std::string_view section = take_line(file), key = take_line(file), value = take_line(file);

    if (const auto written = tool::with_setting(file, section, key, value)) {
        require(tool::setting(*written, section, key) == without_quotes(tool::trimmed(value)));
        require(others(*written, section, key) == others(file, section, key));
        require(tool::with_setting(*written, section, key, value) == *written);
    }
    const std::string less = tool::without_setting(file, section, key);
    require(less.size() <= file.size() + 2);
    const std::string none = tool::without_section(file, section);
    require(tool::setting_sections(none).size() + 1 >= tool::setting_sections(file).size());
    return 0;
}
