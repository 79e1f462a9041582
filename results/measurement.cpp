#include "results/measurement.h"

#include <CodePage.h>

#include <algorithm>
#include <array>

#include "base/columns.h"
#include "base/wording.h"
#include "cases/case_record.h"

namespace cephtool {
namespace {

std::string utf8(const CString& text) {
    return printable(Utf8FromCodePage932(text));
}

std::vector<std::string> texts(const CStringArray& list) {
    std::vector<std::string> all;
    for (INT_PTR i = 0; i < list.GetSize(); ++i) all.push_back(utf8(list.GetAt(i)));
    return all;
}

Remark reason_of(const ResultRow& row) {
    const auto of_both = [&](const char* code, const char* text) {
        return Remark{code, text, {utf8(row.degenerate[0]), utf8(row.degenerate[1])}};
    };
    switch (row.state) {
        case ResultState::no_formula: return {"no_formula", "no formula"};
        case ResultState::not_finite: return {"not_finite", "not a finite number"};
        case ResultState::differs_by_sex: return {"differs_by_sex", "depends on the sex"};
        case ResultState::differs_by_band: return {"differs_by_band", "depends on growth"};
        case ResultState::at_one_place: return of_both("at_one_place", "%1 and %2 lie at one place");
        case ResultState::parallel: return of_both("parallel", "%1 and %2 are parallel");
        default: return {};
    }
}

Measurement measurement(const ResultRow& row) {
    const auto number = [](bool has, double value) { return has ? std::optional(value) : std::nullopt; };
    const bool is_text = row.state == ResultState::text;
    return {.heading = row.state == ResultState::heading,
            .name = utf8(row.title),
            .unit = utf8(row.unit),
            .column = row.column,
            .marked = row.marked,
            .sign = utf8(row.sign),
            .value = number(row.state == ResultState::value, row.value),
            .text = is_text ? utf8(row.valueText) : "",
            .mean = number(row.hasMean, row.mean),
            .sd = number(row.hasSd, row.sd),
            .deviation = number(row.hasDeviation, row.deviation),
            .value_text = utf8(row.valueText),
            .mean_text = utf8(row.meanText),
            .sd_text = utf8(row.sdText),
            .deviation_text = utf8(row.deviationText),
            .stars = utf8(row.stars),
            .missing = texts(row.missing),
            .norm_missing = texts(row.normMissing),
            .reason = reason_of(row)};
}

}  // namespace

std::string LeftOut::in_words(const Texts& texts) const {
    const std::string what =
        texts(items == 1 ? "%1: its one item can't be measured" : "%1: none of its %2 items can be measured",
              short_name(*analysis), std::to_string(items));
    if (missing.empty()) return what;
    for (std::size_t named = missing.size();; --named) {
        std::string names = joined(std::span(missing).first(named), ", ");
        if (named < missing.size()) names = texts("%1 and %2 more", names, std::to_string(missing.size() - named));
        std::string words = texts("%1, missing %2", what, names);
        if (named == 1 || display_width(words) <= page_width) return words;
    }
}

CaseResult measured(Case record, std::span<const Analysis* const> analyses, std::optional<int> band,
                    bool only_fruitful) {
    CaseResult result{std::move(record), {}, {}};
    CaseRecord fields(result.record);
    const std::optional<Sex> sex = result.record.sex;
    bool norms_differ = false;
    for (const Analysis* analysis : analyses) {
        if (case_kind(*analysis) != result.record.kind) continue;
        NormBand norms = norm_band(*analysis, result.record, band);
        const SheetSubject subject = fields.subject(static_cast<int>(sex.value_or(Sex::male)), norms.code);
        const ResultList list(analysis->sheet(), subject, sex.has_value());
        AnalysisResult found{analysis, std::move(norms), {}};
        for (const ResultRow& row : list) {
            Measurement& item = found.items.emplace_back(measurement(row));
            if (!found.band.in_doubt) continue;
            for (std::string* norm : {&item.mean_text, &item.sd_text})
                if (!norm->empty()) *norm = "(" + *norm + ")";
        }
        if (only_fruitful && !list.HasResults()) {
            result.left_out.push_back(left_out(std::array<const AnalysisResult*, 1>{&found}));
            continue;
        }
        norms_differ = norms_differ || list.NormsDiffer();
        result.analyses.push_back(std::move(found));
    }
    if (norms_differ) result.record.remarks.push_back(norms_by_sex());
    return result;
}

std::vector<std::string> signs_in_words(std::span<const Measurement> items, const Texts& texts) {
    std::vector<std::pair<std::string, std::vector<std::string>>> meanings;
    for (const Measurement& item : items) {
        if (!item.value || item.sign.empty()) continue;
        auto meaning = std::ranges::find(meanings, item.sign, [](const auto& each) { return each.first; });
        if (meaning == meanings.end()) meaning = meanings.insert(meaning, {item.sign, {}});
        meaning->second.push_back(item.name);
    }
    std::vector<std::string> lines;
    for (const auto& [sign, names] : meanings)
        lines.push_back(texts("+ %1: %2", texts.part(sign), joined(names, "; ")));
    return lines;
}

LeftOut left_out(std::span<const AnalysisResult* const> films) {
    LeftOut left{.analysis = films.front()->analysis};
    left.items = static_cast<std::size_t>(std::ranges::count(films.front()->items, false, &Measurement::heading));
    for (const AnalysisResult* film : films)
        for (const Measurement& item : film->items)
            for (const std::string& name : item.missing)
                if (std::ranges::find(left.missing, name) == left.missing.end()) left.missing.push_back(name);
    return left;
}

Remark norms_by_sex() {
    return {"norms_by_sex",
            "Norms that differ between men and women are left out, since the sex is not given; --sex m or --sex f "
            "gives it."};
}

}  // namespace cephtool
