// Rows of the recorded tables in data/, see its README.
#pragma once

#include <fstream>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

struct GoldenRow {
    std::map<std::string, std::string> raw;

    const std::string& field(const std::string& name) const { return raw.at(name); }
    bool demanded() const { return field("trust") == "A" || field("trust") == "B"; }
    bool usable() const { return field("trust") != "X"; }

    // The bytes of a text field; nothing for a null pointer.
    std::optional<std::string> text(const std::string& name) const {
        const std::string& from = field(name);
        if (from == "\\N") return std::nullopt;
        std::string bytes;
        for (std::size_t i = 0; i < from.size(); ++i) {
            const bool coded = from[i] == '%';
            bytes += coded ? static_cast<char>(std::stoi(from.substr(i + 1, 2), nullptr, 16)) : from[i];
            if (coded) i += 2;
        }
        return bytes;
    }
    int number(const std::string& name) const { return std::stoi(field(name)); }
};

inline std::vector<GoldenRow> golden_rows(const std::string& table) {
    std::ifstream file(TOOL_TEST_DATA "/" + table);
    if (!file) throw std::runtime_error(table + " is missing");
    const auto cells = [](const std::string& line) {
        std::vector<std::string> result(1);
        for (const char c : line) c == '\t' ? result.emplace_back().clear() : result.back().push_back(c);
        return result;
    };
    std::string line;
    std::getline(file, line);
    const std::vector<std::string> names = cells(line.substr(1));
    std::vector<GoldenRow> rows;
    while (std::getline(file, line)) {
        const std::vector<std::string> values = cells(line);
        GoldenRow row;
        for (std::size_t i = 0; i < names.size(); ++i) row.raw[names[i]] = values.at(i);
        rows.push_back(row);
    }
    return rows;
}

inline const char* pointer(const std::optional<std::string>& text) {
    return text ? text->c_str() : nullptr;
}
