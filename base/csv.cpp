#include "base/csv.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/wording.h"

namespace cephtool {

namespace {

// What spreadsheets, some also in full-width characters, take for a formula, however many apostrophes are before it.
bool looks_like_formula(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of('\''), text.size()));
    constexpr std::string_view starts[] = {"=", "+", "-", "@", "\t", "\r", "\n", "＝", "＋", "－", "＠"};
    return std::ranges::any_of(starts, [=](std::string_view start) { return text.starts_with(start); });
}

void take_off_apostrophe(std::string& field) {
    if (field.starts_with('\'') && looks_like_formula(field)) field.erase(0, 1);
}

}  // namespace

bool CsvReader::at_end_of_line() const {
    return at_ == source_.text.size() || source_.text[at_] == '\n' || source_.text[at_] == '\r';
}

void CsvReader::skip_line_end() {
    if (at_ < source_.text.size() && source_.text[at_] == '\r') ++at_;
    if (at_ < source_.text.size() && source_.text[at_] == '\n') ++at_;
}

CsvField CsvReader::quoted_field() {
    CsvField field{{}, at_};
    for (++at_;; ++at_) {
        const std::size_t quote = source_.text.find('"', at_);
        if (quote == std::string::npos) {
            throw source_.error_at(field.at, "this quote is never closed",
                                   "Close it, or write the field without quotes.");
        }
        field.text += source_.text.substr(at_, quote - at_);
        at_ = quote + 1;
        if (at_ == source_.text.size() || source_.text[at_] != '"') break;
        field.text += '"';
    }
    while (!at_end_of_line() && (source_.text[at_] == ' ' || source_.text[at_] == '\t')) ++at_;
    if (!at_end_of_line() && source_.text[at_] != ',') {
        throw source_.error_at(at_, "text behind the closing quote", "Write a quote inside a field as two quotes.");
    }
    take_off_apostrophe(field.text);
    return field;
}

CsvField CsvReader::plain_field() {
    const std::string_view text = source_.text;
    const std::size_t end = std::min(text.find_first_of(",\r\n", at_), text.size());
    CsvField field{std::string(trimmed(text.substr(at_, end - at_))), at_};
    at_ = end;
    take_off_apostrophe(field.text);
    return field;
}

bool CsvReader::next(CsvRow& row) {
    row = {};
    const std::string_view text = source_.text;
    at_ = std::min(text.find_first_not_of(" \t\r\n", at_), text.size());
    if (at_ == text.size()) return false;
    if (text[at_] == '#') {
        const std::size_t end = std::min(text.find_first_of("\r\n", at_), text.size());
        row.comment = true;
        row.fields.push_back({std::string(text.substr(at_, end - at_)), at_});
        at_ = end;
        return true;
    }
    bool quoted = false;
    for (;;) {
        if (row.fields.size() == most_csv_fields) {
            throw source_.error_at(at_, "a row of more than " + std::to_string(most_csv_fields) + " fields",
                                   "A row holds a landmark, or a case with its landmarks.");
        }
        at_ = std::min(text.find_first_not_of(" \t", at_), text.size());
        quoted = at_ < text.size() && text[at_] == '"';
        row.fields.push_back(quoted ? quoted_field() : plain_field());
        if (at_end_of_line()) break;
        ++at_;  // the comma
    }
    skip_line_end();
    row.comment = quoted && row.fields.size() == 1 && row.fields.front().text.starts_with('#');
    return true;
}

std::string csv_quoted(std::string_view text) {
    const auto needs_quotes = [](char c) { return c == ',' || c == '"' || c == '\r' || c == '\n'; };
    if (std::ranges::none_of(text, needs_quotes) && trimmed(text) == text) return std::string(text);
    std::string field = "\"";
    for (const char c : text) field += c == '"' ? std::string("\"\"") : std::string(1, c);
    return field + "\"";
}

std::string csv_field(std::string_view text) {
    const bool harmless = !looks_like_formula(text) || number_from(text);
    return csv_quoted(harmless ? std::string(text) : "'" + std::string(text));
}

}  // namespace cephtool
