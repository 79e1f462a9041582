#include "ResultList.h"

#include <algorithm>
#include <cmath>

#include "SheetMeasurer.h"
#include "analysis/face.h"
#include "analysis/result_text.h"

namespace {

constexpr int male = 1, female = 2;
// Bits of SheetItem::mode.
constexpr int shows_norm = 1, is_marked = 2;

CString shown(double value, int decimals) {
    return CString(tool::number_text(value, decimals));
}

bool holds(const CStringArray& names, const CString& name) {
    for (INT_PTR i = 0; i < names.GetSize(); ++i)
        if (names.GetAt(i) == name) return true;
    return false;
}

// Norms that are formulas over missing landmarks would come out as numbers all the same: they are left out.
void set_norm(ResultRow& row, const SheetRow& found, SheetMeasurer& measurer, int item, int sex, int band) {
    if (found.norm_needs_band) return;  // a mean without its SD says little, and an SD alone nothing
    row.normMissing = measurer.Missing(0, item, SheetPart::mean, sex, band);
    row.hasMean = found.has_mean && row.normMissing.IsEmpty() && std::isfinite(found.mean);
    if (row.hasMean) row.mean = found.mean;
    const CStringArray for_sd = measurer.Missing(0, item, SheetPart::sd, sex, band);
    row.hasSd = found.has_sd && for_sd.IsEmpty() && std::isfinite(found.sd);
    if (row.hasSd) row.sd = found.sd;
    for (INT_PTR i = 0; i < for_sd.GetSize(); ++i)
        if (!holds(row.normMissing, for_sd.GetAt(i))) row.normMissing.Add(for_sd.GetAt(i));
}

// The row but for its texts; a text item's text goes to valueText.
ResultRow measured(const SheetItem& definition, SheetMeasurer& measurer, int item, int sex, int band) {
    ResultRow row;
    row.title = definition.name;
    row.unit = definition.unit;
    row.column = definition.column;
    row.marked = definition.mode & is_marked;
    row.second = definition.second;
    row.sign = definition.sign;
    if (definition.heading) row.state = ResultState::heading;
    if (definition.expression.IsEmpty()) return row;
    const SheetRow found = measurer.Evaluate(0, item, sex, band);
    set_norm(row, found, measurer, item, sex, band);
    row.missing = measurer.Missing(0, item, SheetPart::value, sex, band);
    if (!row.missing.IsEmpty()) {
        row.state = ResultState::missing;
    } else if (found.at_one_place || found.parallel) {
        row.state = found.parallel ? ResultState::parallel : ResultState::at_one_place;
        std::ranges::copy(found.degenerate, row.degenerate);
    } else if (found.needs_band) {
        row.state = ResultState::differs_by_band;
    } else if (found.is_text) {
        row.state = ResultState::text;
        row.valueText = found.text;
    } else if (!std::isfinite(found.value)) {
        row.state = ResultState::not_finite;
    } else {
        row.state = ResultState::value;
        row.value = found.value;
        row.hasDeviation = row.hasMean && row.hasSd && row.sd != 0 && std::isfinite(found.deviation);
        if (row.hasDeviation) row.deviation = found.deviation;
    }
    return row;
}

bool same_norms(const ResultRow& a, const ResultRow& b) {
    return a.hasMean == b.hasMean && a.hasSd == b.hasSd && a.mean == b.mean && a.sd == b.sd;
}

// What of a man's row holds for a woman, too.
ResultRow common(ResultRow row, const ResultRow& hers) {
    if (row.missing.IsEmpty()) row.missing = hers.missing;
    if (!row.missing.IsEmpty()) {
        row.state = ResultState::missing;
    } else if (row.state != hers.state || row.value != hers.value || !(row.valueText == hers.valueText)) {
        row.state = ResultState::differs_by_sex;
    }
    if (!row.HasResult()) {
        row.value = 0;
        row.valueText.Empty();
    }
    if (!same_norms(row, hers)) {
        row.hasMean = row.hasSd = false;
        row.mean = row.sd = 0;
    }
    if (!row.hasMean || !row.hasSd || row.state != ResultState::value) {
        row.hasDeviation = false;
        row.deviation = 0;
    }
    return row;
}

void set_texts(ResultRow& row, bool with_norm) {
    const auto norm = [](bool has, double number) { return has ? std::optional(number) : std::nullopt; };
    const int decimals = tool::item_decimals(!row.unit.IsEmpty(), norm(row.hasMean, row.mean), norm(row.hasSd, row.sd));
    if (row.state == ResultState::value) row.valueText = shown(row.value, decimals);
    if (!with_norm) return;
    if (row.hasMean) row.meanText = shown(row.mean, decimals);
    if (row.hasSd) row.sdText = shown(row.sd, decimals);
    if (!row.hasDeviation) return;
    row.deviationText = CString(tool::deviation_text(row.deviation));
    row.stars = CString(tool::deviation_stars(row.deviation));
}

}  // namespace

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
        ResultRow row = measured(definition, his_or_known, item, sexKnown ? subject.sex : male, subject.band);
        if (!sexKnown) {
            const ResultRow her_row = measured(definition, hers, item, female, subject.band);
            norms_differ_ = norms_differ_ || !same_norms(row, her_row);
            row = common(std::move(row), her_row);
        }
        set_texts(row, definition.mode & shows_norm);
        rows_.push_back(std::move(row));
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
