#include "analysis/check/settings.h"

#include <algorithm>
#include <optional>

#include "platform/number_text.h"
#include "platform/settings_file.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr std::size_t longest_value = 100;
constexpr int most_eras = 999;
constexpr std::string_view first_day = "0001.01.01", last_day = "9999.12.31";
constexpr std::size_t date_length = 10;

// Sections and keys that are there twice, of which only the first is read.
void check_repeated(std::span<const std::string_view> names, std::string_view what, Findings& findings) {
    std::vector<std::string> seen;
    for (const std::string_view name : names) {
        std::string small = lower(name);
        if (!std::ranges::binary_search(seen, small))
            seen.insert(std::ranges::upper_bound(seen, small), std::move(small));
        else
            findings.fault(name, "there is a " + std::string(what) + " " + quoted(name) +
                                     " further up, and only that one is read; remove one");
    }
}

// Keys of the section that no reader asks for.
void check_keys(std::string_view text, std::string_view section, std::span<const std::string> wanted,
                Findings& findings) {
    const std::vector<std::string_view> keys = setting_keys(text, section);
    check_repeated(keys, "key", findings);
    const std::vector<std::string_view> names(wanted.begin(), wanted.end());
    for (const std::string_view key : keys)
        if (std::ranges::none_of(wanted, [key](const std::string& name) { return equal_ignoring_case(name, key); }))
            findings.fault(key, "the key " + quoted(key) + " is never read" + suggestion(meant_name(key, names)));
}

bool is_date(std::string_view text) {
    if (text.size() != date_length || text[4] != '.' || text[7] != '.') return false;
    for (const std::size_t i : {0, 1, 2, 3, 5, 6, 8, 9})
        if (!is_digit(text[i])) return false;
    const int month = read_int(text.substr(5, 2)), day = read_int(text.substr(8, 2));
    return month >= 1 && month <= 12 && day >= 1 && day <= 31;
}

struct Span {
    std::string_view first, last;
};

std::optional<Span> span_of(std::string_view text) {
    Span span{first_day, last_day};
    if (text.size() == 2 * date_length + 1 && text[date_length] == '-')
        span = {text.substr(0, date_length), text.substr(date_length + 1)};
    else if (text.size() == date_length + 1 && text.starts_with('-'))
        span.last = text.substr(1);
    else if (text.size() == date_length + 1 && text.ends_with('-'))
        span.first = text.substr(0, date_length);
    else
        return std::nullopt;
    return is_date(span.first) && is_date(span.last) ? std::optional(span) : std::nullopt;
}

class EraCheck {
 public:
    EraCheck(std::string_view text, Findings& findings) : text_(text), findings_(findings) {}

    void run() {
        check_repeated(setting_sections(text_), "section", findings_);
        const auto number = setting(text_, "MAIN", "n");
        const int count = read_int(number.value_or(""));
        if (!number)
            return findings_.fault_of_file("the number of eras is missing; write it as n= in the section [MAIN]");
        if (count < 1 || count > most_eras || print_int(count) != *number)
            return findings_.fault(
                *number, quoted(*number) + " is no number of eras; write one from 1 to " + print_int(most_eras));
        std::vector<std::string> ranges{"-1"}, names;
        for (int era = 0; era < count; ++era) names.push_back(print_int(era));
        ranges.insert(ranges.end(), names.begin(), names.end());
        check_keys(text_, "ERA_RANGE", ranges, findings_);
        for (const char* section : {"ERA_NAME", "ERA_CODE"}) {
            check_keys(text_, section, names, findings_);
            for (const std::string& name : names) check_value(section, name);
        }
        for (const std::string& key : ranges) check_range(key);
    }

 private:
    void check_value(std::string_view section, const std::string& key) {
        const auto value = setting(text_, section, key);
        if (!value || value->empty())
            missing(section, key);
        else if (value->size() > longest_value)
            findings_.fault(value->substr(longest_value),
                            "the value is cut to " + counted(longest_value, "byte") + "; write a shorter one");
    }

    void check_range(const std::string& key) {
        const auto value = setting(text_, "ERA_RANGE", key);
        if (!value || value->empty()) {
            if (key != "-1") missing("ERA_RANGE", key);  // what lies before the first era needs no span
            return;
        }
        const auto span = span_of(*value);
        if (!span) {
            findings_.fault(*value, quoted(*value) +
                                        " is no span of dates; write 1989.01.08-2019.04.30, or leave out the day "
                                        "before or behind the \"-\" where it is open");
        } else if (span->last < span->first) {
            findings_.fault(*value, "the span ends before it begins; put the earlier day in front");
        } else {
            if (!last_.empty() && span->first <= last_)
                findings_.fault(*value, "the span overlaps the one before it, whose last day is " + std::string(last_) +
                                            "; days in both belong to the earlier one");
            last_ = std::max(last_, span->last);
        }
    }

    void missing(std::string_view section, const std::string& key) {
        findings_.fault_of_file("era " + key + " has no value in [" + std::string(section) + "]; write " + key +
                                "=... there, or correct n in [MAIN]");
    }

    std::string_view text_;
    Findings& findings_;
    std::string_view last_;
};

}  // namespace

void check_eras(std::string_view text, Findings& findings) {
    EraCheck(text, findings).run();
}

void check_bone_age(std::string_view text, Findings& findings) {
    constexpr std::string_view section = "CVB_AGE";
    const std::vector<std::string_view> sections = setting_sections(text);
    check_repeated(sections, "section", findings);
    if (std::ranges::none_of(sections, [&](std::string_view name) { return equal_ignoring_case(name, section); }))
        return findings.fault_of_file(
            "there is no section [CVB_AGE], so the built-in coefficients are used; write it above them");
    std::vector<std::string> keys;
    for (const char* sex : {"PARAM_M", "PARAM_F"})
        for (const char* index : {"0", "1", "2", "3"}) keys.push_back(std::string(sex) + index);
    check_keys(text, section, keys, findings);
    for (const std::string& key : keys) {
        const auto value = setting(text, section, key);
        std::size_t used = 0;
        if (!value)
            findings.note_of_file(key + " is missing, so the built-in coefficient is used");
        else if (read_double(*value, &used); used == 0 || used != value->size())
            findings.fault(*value, quoted(*value) + " is no number; write one like 6.2");
    }
}

}  // namespace tool
