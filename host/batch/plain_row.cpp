#include "host/batch/plain_row.h"

#include <Analysis.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "base/utf8.h"
#include "base/wording.h"
#include "cases/case_record.h"

namespace cephtool {
namespace {

bool is_control(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == 0x7F;
}

// Well-formed text of one line, which no byte order mark and no remark begins.
bool is_plain_line(std::string_view line) {
    if (line.empty() || line.front() == ' ' || line.front() == '#' || line.starts_with("\xEF\xBB\xBF")) return false;
    unsigned char control = 0, every = 0;
    for (const char c : line) {
        control |= is_control(c);
        every |= static_cast<unsigned char>(c);
    }
    return !control && (every < 0x80 || first_malformed(line) == std::string_view::npos);
}

// False for quotes within a field, and for blanks and apostrophes that a reader would take off.
bool split(std::string_view line, std::vector<std::string_view>& fields) {
    fields.clear();
    for (std::size_t at = 0;; ++at) {
        const bool quoted = at < line.size() && line[at] == '"';
        const std::size_t begin = at + (quoted ? 1 : 0);
        std::size_t end = begin;  // fields are short: a search of the library's takes longer
        for (const char stop = quoted ? '"' : ','; end < line.size() && line[end] != stop;) ++end;
        const std::string_view field = line.substr(begin, end - begin);
        if (quoted && end++ == line.size()) return false;
        if (end < line.size() && line[end] != ',') return false;
        if (!field.empty() && (field.front() == '\'' || (!quoted && (field.front() == ' ' || field.back() == ' '))))
            return false;
        fields.push_back(field);
        if (end == line.size()) return true;
        at = end;
    }
}

template <class Number>
bool read_plain_number(std::string_view text, Number& number) {
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size();
}

// 2024-03-05
bool read_plain_date(std::string_view text, std::optional<Date>& date) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return false;
    unsigned year = 0, month = 0, day = 0;
    if (!read_plain_number(text.substr(0, 4), year) || !read_plain_number(text.substr(5, 2), month) ||
        !read_plain_number(text.substr(8), day))
        return false;
    date = Date(std::chrono::year(static_cast<int>(year)), std::chrono::month(month), std::chrono::day(day));
    return date->ok() && year >= 1 && year <= last_year;
}

struct Setting {
    std::string_view key;
    PlainSetting read;
};
constexpr Setting settings[] = {
    {"name",
     [](std::string_view value, Case& record) {
         record.name = value;
         return !has_control_character(value);
     }},
    {"sex",
     [](std::string_view value, Case& record) {
         const bool male = value == "m" || value == name_of(Sex::male);
         record.sex = male ? Sex::male : Sex::female;
         return male || value == "f" || value == name_of(Sex::female);
     }},
    {"birth", [](std::string_view value, Case& record) { return read_plain_date(value, record.birth); }},
    {"film", [](std::string_view value, Case& record) { return read_plain_date(value, record.film); }},
    {"dental_stage",
     [](std::string_view value, Case& record) {
         record.dental_stage = value;
         return std::ranges::find(dental_stages, value) != std::end(dental_stages);
     }},
    {"population",
     [](std::string_view value, Case& record) {
         record.population = tool::population_named(value).name;
         return record.population == value && !has_control_character(value);
     }},
    {"kind", [](std::string_view, Case&) { return true; }},  // is read before all others
    {"side",
     [](std::string_view value, Case& record) {
         record.side = value == name_of(Side::left) ? Side::left : Side::right;
         return value == name_of(*record.side);
     }},
    {"scale_mm_per_px",
     [](std::string_view value, Case& record) {
         double scale = 0;
         const bool is_number = read_plain_number(value, scale);
         record.mm_per_pixel = scale;
         return is_number && is_scale(scale);
     }},
};

// Up to so many digits are a whole number that a double holds, as is the power of ten that their point stands for, so
// that their quotient is the double that is nearest to what is written (Clinger WD: How to read floating point numbers
// accurately. PLDI 1990).
constexpr std::size_t exact_digits = 15;
constexpr double powers_of_ten[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14};

}  // namespace

bool split_plain_row(std::string_view line, std::vector<std::string_view>& fields) {
    return is_plain_line(line) && split(line, fields);
}

bool read_plain_coordinate(std::string_view text, double& coordinate) {
    const char *at = text.data(), *const end = at + text.size();
    const bool negative = at != end && *at == '-';
    at += negative ? 1 : 0;
    std::int64_t number = 0;
    const auto digits = [&] {
        for (; at != end && *at >= '0' && *at <= '9'; ++at) number = number * 10 + (*at - '0');
    };
    const char* point = end;
    if (text.size() <= exact_digits) {
        digits();
        if (at != end && *at == '.') {
            point = ++at;
            digits();
        }
    }
    if (at != end || number == 0)  // zeros have signs, too
        return read_plain_number(text, coordinate) && std::isfinite(coordinate);
    coordinate = static_cast<double>(negative ? -number : number);
    if (point != end) coordinate /= powers_of_ten[end - point];
    return true;
}

PlainSetting plain_setting(std::string_view key) {
    const auto setting = std::ranges::find(settings, key, &Setting::key);
    return setting == std::end(settings) ? nullptr : setting->read;
}

}  // namespace cephtool
