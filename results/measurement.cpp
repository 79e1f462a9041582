#include "results/measurement.h"

#include <FilmAxes.h>

#include <algorithm>
#include <array>

#include "base/columns.h"
#include "base/wording.h"
#include "cases/case_record.h"
#include "results/names.h"

namespace cephtool {
namespace {

Measurement measurement(const Analysis& analysis, const tool::MeasuredItem& row) {
    const tool::Item& item = *row.item;
    const bool is_text = row.state == ResultState::text;
    return {.heading = item.heading,
            .name = printable(item.name),
            .japanese = printable(item.japanese),
            .unit = item.unit,
            .column = item.column,
            .marked = item.marked,
            .sign = printable(item.sign),
            .value = row.value,
            .text = is_text ? printable(row.value_text) : "",
            .text_japanese = is_text ? printable(analysis.japanese(row.value_text)) : "",
            .unverified = printable(item.unverified),
            .mean = row.mean,
            .sd = row.sd,
            .deviation = row.deviation,
            .value_text = printable(row.value_text),
            .mean_text = row.mean_text,
            .sd_text = row.sd_text,
            .deviation_text = row.deviation_text,
            .stars = row.stars,
            .missing = printable(row.missing),
            .norm_missing = printable(row.norm_missing),
            .reason = reason_of(row.state, row.degenerate),
            .remarks = {},
            .error = row.error};
}

// What stands behind "±".
Remark error_remark(Kind kind, const tool::Subject& subject) {
    const auto axes = tool::film_axes(static_cast<tool::Kind>(kind), subject);
    if (kind == Kind::lateral && axes && axes->from == tool::ErrorAxes::sella_nasion) {
        return {"errors_by_sn",
                "± is one standard error, by the errors of the landmarks along and across Frankfort, which is taken "
                "as S-N less 7 degrees: Po or Or is missing."};
    }
    if (kind == Kind::lateral && axes && axes->from == tool::ErrorAxes::film) {
        return {"errors_by_film",
                "± is one standard error, by the errors of the landmarks along and across Frankfort, which is taken "
                "as the film's width: neither Po-Or nor S-N is there."};
    }
    return {"errors", "± is one standard error of a single reading, by the errors of the landmarks."};
}

}  // namespace

Remark reason_of(ResultState state, const std::string (&degenerate)[2]) {
    const auto of_both = [&](const char* code, const char* text) {
        return Remark{code, text, {printable(degenerate[0]), printable(degenerate[1])}};
    };
    switch (state) {
        case ResultState::no_formula: return {"no_formula", "no formula"};
        case ResultState::not_finite: return {"not_finite", "not a finite number"};
        case ResultState::differs_by_sex: return {"differs_by_sex", "depends on the sex"};
        case ResultState::differs_by_band: return {"differs_by_band", "depends on growth"};
        case ResultState::at_one_place: return of_both("at_one_place", "%1 and %2 lie at one place");
        case ResultState::parallel: return of_both("parallel", "%1 and %2 are parallel");
        default: return {};
    }
}

std::string LeftOut::in_words(const Texts& texts) const {
    const std::string what =
        texts(items == 1 ? "%1: its one item can't be measured" : "%1: none of its %2 items can be measured",
              texts.language() == Language::english ? short_name(*analysis) : title_of(*analysis, texts),
              std::to_string(items));
    if (missing.empty()) return what;
    for (std::size_t named = missing.size();; --named) {
        std::string names = joined(std::span(missing).first(named), ", ");
        if (named < missing.size()) names = texts("%1 and %2 more", names, std::to_string(missing.size() - named));
        std::string words = texts("%1, missing %2", what, names);
        if (named == 1 || display_width(words) <= page_width) return words;
    }
}

std::string Measurement::value_with_error() const {
    if (!error || error->text.empty()) return value_text;
    return value_text + (error->assumed.empty() ? " ± " + error->text : " (± " + error->text + ")");
}

std::string Measurement::stars_with_error() const {
    return error && deviation && !stars.empty() && error->covers(*deviation) ? "(" + stars + ")" : stars;
}

std::vector<Remark> Measurement::error_remarks() const {
    if (!error) return {};
    switch (error->state) {
        case ErrorState::no_figure: return {{"error_unknown", "error not known of %1", {joined(error->without, ", ")}}};
        case ErrorState::at_border: return {{"error_at_border", "no error: the value jumps within it"}};
        case ErrorState::not_derived: return {{"error_not_derived", "no error: rests on more than landmarks of films"}};
        case ErrorState::known: break;
    }
    std::vector<Remark> told;
    if (!error->mostly.empty()) {
        const int percent = static_cast<int>(100 * error->share + 0.5);
        told.push_back({"error_mostly", "mostly %1 (%2 %)", {printable(error->mostly), std::to_string(percent)}});
    }
    if (!error->assumed.empty())
        told.push_back({"error_assumed", "assumed for %1", {printable(joined(error->assumed, ", "))}});
    if (deviation && !stars.empty() && error->covers(*deviation))
        told.push_back({"within_error", "the deviation may be none: it lies within the error"});
    return told;
}

CaseResult measured(Case record, std::span<const AnalysisFamily> analyses, std::optional<int> band, bool only_fruitful,
                    const tool::LandmarkErrors* errors) {
    CaseResult result{std::move(record), {}, {}};
    tool::Subject subject = subject_of(result.record);
    bool norms_differ = false;
    for (const AnalysisFamily& family : analyses) {
        const Analysis* const analysis = family.of(result.record.population);
        if (case_kind(*analysis) != result.record.kind) continue;
        NormBand norms = norm_band(*analysis, result.record, band);
        subject.band = norms.code;
        const tool::MeasuredAnalysis all = *tool::measure_all(*analysis, subject, tool::Shapes::left_out, errors);
        AnalysisResult found{analysis, std::move(norms), {}};
        for (const tool::MeasuredItem& row : all.items) {
            Measurement& item = found.items.emplace_back(measurement(*analysis, row));
            if (found.band.in_doubt)
                for (std::string* norm : {&item.mean_text, &item.sd_text})
                    if (!norm->empty()) *norm = "(" + *norm + ")";
            if (!item.unverified.empty() && !item.mean_text.empty()) item.mean_text += unverified_mark;
        }
        if (only_fruitful && std::ranges::none_of(all.items, &tool::MeasuredItem::has_result)) {
            result.left_out.push_back(left_out(std::array<const AnalysisResult*, 1>{&found}));
            continue;
        }
        norms_differ = norms_differ || all.norms_differ;
        result.analyses.push_back(std::move(found));
    }
    if (norms_differ) result.record.remarks.push_back(norms_by_sex());
    if (errors) result.record.remarks.push_back(error_remark(result.record.kind, subject));
    const auto assumed = [](const Measurement& item) { return item.error && !item.error->assumed.empty(); };
    if (std::ranges::any_of(result.analyses,
                            [&](const auto& found) { return std::ranges::any_of(found.items, assumed); }))
        result.record.remarks.push_back(
            {"errors_assumed",
             "(±) rests on landmarks whose error nobody measured, and for which one is assumed: it tells the size only."});
    return result;
}

CaseResult measured(Case record, std::span<const Analysis* const> analyses, std::optional<int> band, bool only_fruitful,
                    const tool::LandmarkErrors* errors) {
    return measured(std::move(record), std::vector<AnalysisFamily>(analyses.begin(), analyses.end()), band,
                    only_fruitful, errors);
}

bool has_errors(const CaseResult& result) {
    return std::ranges::any_of(result.analyses, [](const AnalysisResult& analysis) {
        return std::ranges::any_of(analysis.items, [](const Measurement& item) { return item.error.has_value(); });
    });
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
