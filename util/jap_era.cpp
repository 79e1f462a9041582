// CJapEra: the era table of the running program.
#include "JapEra.h"

#include <algorithm>
#include <string>

#include "framework/application.h"
#include "framework/settings.h"
#include "platform/or_failed.h"
#include "platform/system.h"
#include "util/era_calendar.h"
#include "util/era_table.h"
#include "util/program_folder.h"

using tool::or_failed;

namespace {

constexpr int last_western_year = 2500;

// The span with this number; a number outside the list throws. One that is no span has no days and first year 0.
tool::EraSpan span_at(const CStringArray& ranges, INT_PTR entry) {
    return tool::era_span(ranges.GetAt(entry).View()).value_or(tool::EraSpan{});
}

}  // namespace

CJapEra::CJapEra() {
    if (or_failed(false, [&] { return read_table(), true; })) return;
    found_ = slot_count_ = 0;
    for (CStringArray* list : {&names_, &codes_, &ranges_}) list->RemoveAll();
}

void CJapEra::read_table() {
    path_ = (tool::program_folder() + "Era.dat").c_str();
    if (!tool::file_status(path_.View())) {
        AfxMessageBox("ERA data file not found");
        return;
    }
    found_ = 1;
    const tool::EraTable table = tool::read_era_table([this](const char* section, const char* key) {
        char value[101];
        GetPrivateProfileStringA(section, key, "", value, sizeof value, path_);
        return std::string(value);
    });
    names_.Copy(table.names);
    codes_.Copy(table.codes);
    ranges_.Copy(table.ranges);
    slot_count_ = static_cast<int>(ranges_.GetSize());
}

int CJapEra::GetEraYear(int year, int month, int day, int* eraYear) const {
    const auto hit = tool::era_year(ranges_, {year, month, day});
    if (eraYear) *eraYear = hit ? hit->year : 0;
    return hit ? hit->entry - 1 : -1;
}

int CJapEra::GetEraYear(int year, int, int, int era) const {
    return found_ ? span_at(ranges_, era).year_in_era(year) : -1;
}

CString CJapEra::GetEraYearName(int year, int month, int day, int* eraYear) const {
    const int era = GetEraYear(year, month, day, eraYear);
    return or_failed(CString(), [&] { return era < 0 ? CString() : names_[era]; });
}

CString CJapEra::GetEraYearCode(int year, int month, int day, int* eraYear) const {
    const int era = GetEraYear(year, month, day, eraYear);
    return or_failed(CString(), [&] { return era < 0 ? CString() : codes_[era]; });
}

int CJapEra::GetChristYear(int era, int eraYear) const {
    if (!found_) return 0;
    const tool::EraSpan span = span_at(ranges_, INT_PTR{era} + 1);
    return std::min(tool::western_year(span.first_year(), eraYear), last_western_year);
}

int CJapEra::CheckEra(int era, int eraYear, int month, int day) const {
    if (!found_) return 0;
    const tool::EraSpan span = span_at(ranges_, INT_PTR{era} + 1);
    return span.holds(tool::era_day({tool::western_year(span.first_year(), eraYear), month, day}));
}

CString CJapEra::GetEraName(int era) const {
    return or_failed(CString(), [&] { return found_ ? names_[era] : CString(); });
}

CString CJapEra::GetEraCode(int era) const {
    return or_failed(CString(), [&] { return found_ ? codes_[era] : CString(); });
}

void CJapEra::GetEraNameSet(CStringArray* names) const {
    if (names) tool::as_far_as_possible([&] { names->Copy(names_); });
}

void CJapEra::GetEraCodeSet(CStringArray* codes) const {
    if (codes) tool::as_far_as_possible([&] { codes->Copy(codes_); });
}
