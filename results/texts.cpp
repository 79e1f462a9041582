#include "results/texts.h"

#include <Analysis.h>

#include <algorithm>
#include <array>

#include "base/eras.h"
#include "results/text_table.h"

namespace cephtool {
namespace {

constexpr const char* none = "-";

std::string number(unsigned value) {
    return std::to_string(value);
}

}  // namespace

std::string Texts::operator()(std::string_view english) const {
    if (language_ == Language::english) return std::string(english);
    const std::span<const TextRow> rows = all_texts();
    const auto row = std::ranges::find(rows, english, &TextRow::english);
    return std::string(row == rows.end() ? english : row->japanese);
}

std::string Texts::operator()(const Remark& remark) const {
    std::string text = (*this)(remark.text);
    std::vector<std::string> values = remark.values;
    for (const std::string_view kind : {"%*", "%&"})
        for (std::size_t mark; (mark = text.find(kind)) != std::string::npos;) {
            text.erase(mark + 1, 1);
            std::string& words = values.at(static_cast<std::size_t>(text.at(mark + 1) - '1'));
            words = kind == "%*" ? list_of(words) : chosen(words, tool::population_named(words).japanese);
        }
    return filled(text, values);
}

std::string Texts::list_of(std::string_view words) const {
    std::string all;
    for (std::size_t from = 0; from <= words.size();) {
        const std::size_t end = std::min(words.find(", ", from), words.size());
        if (from > 0) all += language_ == Language::english ? ", " : "、";
        all += (*this)(words.substr(from, end - from));
        from = end + 2;
    }
    return all;
}

std::string Texts::chosen(const std::string& english, const std::string& japanese) const {
    return language_ == Language::japanese && !japanese.empty() ? japanese : english;
}

std::string Texts::operator()(std::string_view english, const std::string& first, const std::string& second) const {
    return filled((*this)(english), std::array{first, second});
}

std::string Texts::part(const std::string& both) const {
    const std::size_t bracket = both.rfind(" (");
    if (bracket == std::string::npos || !both.ends_with(')')) return both;
    return language_ == Language::english ? both.substr(0, bracket)
                                          : both.substr(bracket + 2, both.size() - bracket - 3);
}

std::string Texts::sex(const std::optional<Sex>& sex) const {
    return (*this)(sex ? name_of(*sex) : "not given");
}

std::string Texts::date(const std::optional<Date>& date) const {
    if (!date) return none;
    const std::optional<EraCalendar> calendar = program_eras();
    if (language_ == Language::english) {
        const std::string era = era_text(calendar, *date, code_text);
        return text_of(*date) + (era.empty() ? "" : " (" + era + ")");
    }
    const std::string era = era_text(calendar, *date, japanese_text);
    return number(static_cast<unsigned>(static_cast<int>(date->year()))) + "年" +
           number(static_cast<unsigned>(date->month())) + "月" + number(static_cast<unsigned>(date->day())) + "日" +
           (era.empty() ? "" : "（" + era + "）");
}

std::string Texts::age(const Case& record) const {
    if (!record.birth || !record.film) return none;
    const Age age = age_at(*record.film, *record.birth);
    return (*this)("%1 y %2 m", std::to_string(age.years), std::to_string(age.months));
}

std::string Texts::film(std::size_t index) const {
    return (*this)("Film %1", std::to_string(index + 1));
}

std::string Texts::kind(Kind kind) const {
    return (*this)(kind == Kind::lateral ? "Lateral film" : kind == Kind::frontal ? "Frontal film" : "Dental cast");
}

std::vector<std::string> Texts::remarks(const std::vector<std::span<const Remark>>& films) const {
    std::vector<std::string> all;
    const auto has = [](std::span<const Remark> film, const Remark& remark) {
        return std::ranges::find(film, remark) != film.end();
    };
    for (std::size_t i = 0; i < films.size(); ++i)
        for (const Remark& remark : films[i]) {
            if (std::any_of(films.begin(), films.begin() + static_cast<std::ptrdiff_t>(i),
                            [&](const auto& film) { return has(film, remark); }))
                continue;
            std::string names;
            for (std::size_t film = 0; film < films.size(); ++film)
                if (has(films[film], remark)) names += (names.empty() ? "" : ", ") + this->film(film);
            const bool of_all = std::ranges::all_of(films, [&](const auto& film) { return has(film, remark); });
            all.push_back((of_all ? "" : names + ": ") + (*this)(remark));
        }
    return all;
}

}  // namespace cephtool
