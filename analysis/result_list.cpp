#include "ResultList.h"

#include <algorithm>
#include <cmath>

#include "NumberTexts.h"
#include "SheetMeasurer.h"
#include "analysis/face.h"
#include "analysis/result_text.h"
#include "analysis/sheet_run.h"

namespace {

constexpr int male = 1, female = 2;
// Bits of SheetItem::mode.
constexpr int shows_norm = 1, is_marked = 2;

bool holds(const CStringArray& names, const CString& name) {
    for (INT_PTR i = 0; i < names.GetSize(); ++i)
        if (names.GetAt(i) == name) return true;
    return false;
}

void set_numbers(ResultRow& row, const ResultNumbers& found) {
    row.state = found.state;
    row.value = found.value.value_or(0);
    row.valueText = found.text;
    row.hasMean = found.mean.has_value();
    row.mean = found.mean.value_or(0);
    row.hasSd = found.sd.has_value();
    row.sd = found.sd.value_or(0);
    row.hasDeviation = found.deviation.has_value();
    row.deviation = found.deviation.value_or(0);
    std::ranges::copy(found.degenerate, row.degenerate);
}

void set_texts(ResultRow& row, const ResultNumbers& found, bool with_norm) {
    const tool::NumberTexts texts = tool::number_texts(found, !row.unit.IsEmpty(), with_norm);
    if (row.state == ResultState::value) row.valueText = CString(texts.value);
    row.meanText = CString(texts.mean);
    row.sdText = CString(texts.sd);
    row.deviationText = CString(texts.deviation);
    row.stars = CString(texts.stars);
}

}  // namespace

tool::NumberTexts tool::number_texts(const ResultNumbers& numbers, bool has_unit, bool with_norm) {
    NumberTexts texts;
    const int decimals = item_decimals(has_unit, numbers.mean, numbers.sd);
    if (numbers.value) texts.value = number_text(*numbers.value, decimals);
    if (!with_norm) return texts;
    if (numbers.mean) texts.mean = number_text(*numbers.mean, decimals);
    if (numbers.sd) texts.sd = number_text(*numbers.sd, decimals);
    if (!numbers.deviation) return texts;
    texts.deviation = deviation_text(*numbers.deviation);
    texts.stars = deviation_stars(*numbers.deviation);
    return texts;
}

// Norms that are formulas over missing landmarks would come out as numbers all the same: they are left out. A mean
// without its SD says little, and an SD alone nothing: without the band there is neither.
ResultNumbers ResultList::Numbers(SheetMeasurer& measurer, int sheet, int index, int sex, int band, bool norms) {
    ResultNumbers found;
    tool::SheetRun* const run = measurer.run();
    const auto numbers = [&] {
        const auto at = run ? run->place(sheet, index) : std::nullopt;
        if (!at) return;
        const auto lacks = [&](SheetPart part) { return run->lacks(*at, part, sex, band); };
        const bool lacks_value = lacks(SheetPart::value);
        if (lacks_value && !norms) return;
        const tool::SheetRun::Found item = run->found(*at, sex, band);
        found.norm_needs_band = item.norm_needs_band;
        if (norms && !item.norm_needs_band) {
            if (item.mean && std::isfinite(*item.mean) && !lacks(SheetPart::mean)) found.mean = item.mean;
            if (item.sd && std::isfinite(*item.sd) && !lacks(SheetPart::sd)) found.sd = item.sd;
        }
        if (lacks_value) return;
        if (item.degeneracy) {
            found.state = item.degeneracy->parallel ? ResultState::parallel : ResultState::at_one_place;
            found.degenerate[0] = CString(item.degeneracy->first);
            found.degenerate[1] = CString(item.degeneracy->second);
        } else if (item.needs_band) {
            found.state = ResultState::differs_by_band;
        } else if (item.text) {
            found.text = CString(tool::unquoted(*item.text));
            found.state = ResultState::text;
        } else if (!std::isfinite(item.value)) {
            found.state = ResultState::not_finite;
        } else {
            found.state = ResultState::value;
            found.value = item.value;
            if (!found.mean || !found.sd || *found.sd == 0) return;
            const double deviation = tool::deviation_of(item);
            if (std::isfinite(deviation)) found.deviation = deviation;
        }
    };
    tool::as_far_as_possible(numbers);
    return found;
}

ResultNumbers ResultList::Common(const ResultNumbers& his, const ResultNumbers& hers) {
    ResultNumbers both = his;
    if (his.state == ResultState::missing || hers.state == ResultState::missing) {
        both.state = ResultState::missing;
    } else if (his.state != hers.state || his.value != hers.value || !(his.text == hers.text)) {
        both.state = ResultState::differs_by_sex;
    }
    if (both.state != ResultState::value) both.value.reset();
    if (both.state != ResultState::text) both.text.Empty();
    if (!his.HasSameNorms(hers)) both.mean = both.sd = std::nullopt;
    if (!both.mean || !both.sd || !both.value) both.deviation.reset();
    return both;
}

ResultList::ResultList(const AnalysisSheet& sheet, const SheetSubject& subject, bool sexKnown) {
    tool::as_far_as_possible([&] {
        ResultList whole;
        whole.fill(sheet, subject, sexKnown);
        *this = std::move(whole);
    });
}

void ResultList::fill(const AnalysisSheet& sheet, const SheetSubject& subject, bool sexKnown) {
    title_ = sheet.Title();
    const SheetSet alone(sheet);
    SheetMeasurer his_or_known(alone), hers(alone);
    his_or_known.Measure(subject);
    if (!sexKnown) hers.Measure(subject);
    for (int item = 0; item < sheet.GetCount(); ++item) {
        const SheetItem definition = sheet.GetItem(item);
        ResultRow& row = rows_.emplace_back();
        row.title = definition.name;
        row.unit = definition.unit;
        row.column = definition.column;
        row.marked = definition.mode & is_marked;
        row.second = definition.second;
        row.sign = definition.sign;
        if (definition.heading) row.state = ResultState::heading;
        if (definition.expression.IsEmpty()) continue;
        const int sex = sexKnown ? subject.sex : male;
        const auto missing = [&](SheetPart part) { return his_or_known.Missing(0, item, part, sex, subject.band); };
        ResultNumbers found = Numbers(his_or_known, 0, item, sex, subject.band);
        if (found.state == ResultState::missing) row.missing = missing(SheetPart::value);
        if (!found.norm_needs_band) {
            row.normMissing = missing(SheetPart::mean);
            const CStringArray for_sd = missing(SheetPart::sd);
            for (INT_PTR i = 0; i < for_sd.GetSize(); ++i)
                if (!holds(row.normMissing, for_sd.GetAt(i))) row.normMissing.Add(for_sd.GetAt(i));
        }
        if (!sexKnown) {
            const ResultNumbers her = Numbers(hers, 0, item, female, subject.band);
            if (row.missing.IsEmpty() && her.state == ResultState::missing)
                row.missing = hers.Missing(0, item, SheetPart::value, female, subject.band);
            norms_differ_ = norms_differ_ || !found.HasSameNorms(her);
            found = Common(found, her);
        }
        set_numbers(row, found);
        set_texts(row, found, definition.mode & shows_norm);
    }
}

const ResultRow& ResultList::GetRow(int index) const {
    static const ResultRow none;
    return index >= 0 && index < GetCount() ? rows_[static_cast<std::size_t>(index)] : none;
}

int ResultList::GetColumnCount() const {
    int count = 0;
    for (const ResultRow& row : rows_)
        if (row.state != ResultState::heading) count = std::max(count, row.column + 1);
    return count;
}

bool ResultList::HasResults() const {
    return std::ranges::any_of(rows_, &ResultRow::HasResult);
}
