// CTools: dates and ages.
#include <string>
#include <string_view>

#include "Tools.h"
#include "platform/number_text.h"
#include "platform/or_failed.h"
#include "util/age.h"
#include "util/caller_text.h"
#include "util/stored_date.h"

using tool::or_empty, tool::or_failed;

namespace {

CString text_of(const std::string& text) {
    return CString(std::string_view(text));
}

tool::DateFields filled_up_fields(const char* text, std::size_t digits) {
    return tool::date_fields(tool::filled_up(or_empty(text), digits));
}

tool::DateFields fields_or_today(const char* text) {
    return text ? tool::date_fields(text) : tool::today();
}

void give(int* out, int value) {
    if (out) *out = value;
}

}  // namespace

void CTools::GetToday(int* year, int* month, int* day) {
    const tool::DateFields today = tool::today();
    give(year, today.year);
    give(month, today.month);
    give(day, today.day);
}

CString CTools::MakeDate(const char* ymd, unsigned int flag) {
    return or_failed(CString(), [&] {
        const tool::DateFields date = filled_up_fields(ymd, tool::date_digits);
        return text_of(flag == 1 ? tool::japanese_date(date) : tool::slashed_date(date));
    });
}

CString CTools::MakeDateR(const char* text) {
    return or_failed(CString(), [&] { return text_of(tool::date_text(tool::typed_date(or_empty(text)), "")); });
}

void CTools::CaclAge(const char* birth, const char* ref, int* years, int* months) {
    const tool::Age age = tool::completed_age(tool::date_fields(or_empty(birth)), fields_or_today(ref));
    give(years, age.years);
    give(months, age.months);
}

short CTools::CalcAge(const char* birth, const char* ref) {
    // Kept: only the birth date is filled up, so that "20001" is October there and January as `ref`.
    return or_failed(short{0}, [&] {
        const tool::DateFields born = filled_up_fields(birth, tool::date_digits);
        // Kept: cut to 16 bits, from 2731 years on.
        return static_cast<short>(tool::age_in_months(born, fields_or_today(ref)));
    });
}

int CTools::MakeCompYmd(const char* ymd, const char* fromYm, const char* toYm) {
    return or_failed(0, [&] {
        return int{tool::in_months(filled_up_fields(ymd, tool::date_digits),
                                   filled_up_fields(fromYm, tool::year_month_digits),
                                   filled_up_fields(toYm, tool::year_month_digits))};
    });
}

void CTools::SetNengappi(CWnd* dlg, UINT idYear, UINT idMonth, UINT idDay, const char* ymd) {
    if (!dlg) return;
    const std::string_view text = or_empty(ymd);
    const bool complete = text.size() >= (idDay != 0 ? tool::date_digits : tool::year_month_digits);
    if (idDay != 0 && !complete) return;
    // Kept: without a day field and a date the control with number 0 is emptied, too, as dialogs were made to expect.
    const tool::DateFields date = complete ? tool::date_fields(text) : tool::DateFields{};
    const auto set = [dlg](UINT id, int value) {
        dlg->SetDlgItemText(static_cast<int>(id), value == 0 ? "" : tool::print_int(value).c_str());
    };
    tool::as_far_as_possible([&] {
        set(idYear, date.year);
        set(idMonth, date.month);
        if (idDay != 0 || !complete) set(idDay, date.day);
    });
}

CString CTools::GetNengappi(CWnd* dlg, UINT idYear, UINT idMonth, UINT idDay) {
    return or_failed(CString(), [&] {
        const auto field = [dlg](UINT id) {
            return dlg ? static_cast<int>(dlg->GetDlgItemInt(static_cast<int>(id))) : 0;
        };
        const tool::DateFields date{field(idYear), field(idMonth), idDay != 0 ? field(idDay) : 0};
        const std::string text = tool::date_text(date, "");
        return text_of(idDay != 0 ? text : text.substr(0, text.size() - 2));
    });
}
