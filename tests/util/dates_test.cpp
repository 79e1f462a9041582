#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "Tools.h"
#include "framework/system.h"
#include "util/call_table.h"

namespace {

using std::string, std::to_string;
using namespace std::chrono;

WORD year_of_clock = 2024;
SYSTEMTIME clock_of_test() {
    return {year_of_clock, 6, 6, 15, 23, 59, 59, 0};
}

string in_dialog(UINT day_id, const char* date) {
    CWnd dialog;
    for (const UINT id : {0U, 1U, 2U, 3U}) dialog.AddField(id)->SetWindowText("?");
    CTools::SetNengappi(&dialog, 1, 2, day_id, date);
    string shown;
    CString text;
    for (const int id : {1, 2, 3, 0}) {
        dialog.GetDlgItemText(id, text);
        shown += string(id == 1 ? "" : ",") + string(text);
    }
    return shown + " " + string(CTools::GetNengappi(&dialog, 1, 2, day_id));
}

string answer(const string& call, Fields f) {
    f.resize(3);
    const char *const first = f[0].c_str(), *const second = f[1] == "null" ? nullptr : f[1].c_str();
    const auto number = static_cast<unsigned>(std::atoi(call == "MakeDate" ? second : first));
    int year = 7, month = 7, day = 7;
    if (call == "MakeDate") return string(CTools::MakeDate(first, number));
    if (call == "MakeDateR") return string(CTools::MakeDateR(first));
    if (call == "CaclAge")
        return CTools::CaclAge(first, second, &year, &month), to_string(year) + ' ' + to_string(month);
    if (call == "CalcAge") return to_string(CTools::CalcAge(first, second));
    if (call == "MakeCompYmd") return to_string(CTools::MakeCompYmd(first, second, f[2].c_str()));
    if (call == "Nengappi") return in_dialog(number, second);
    if (call == "fields") {
        CWnd dialog;
        for (const UINT id : {1U, 2U, 3U}) dialog.AddField(id)->SetWindowText(f[id - 1].c_str());
        return string(CTools::GetNengappi(&dialog, 1, 2, 3));
    }
    year_of_clock = static_cast<WORD>(number);
    CTools::GetToday(&year, &month, &day);
    return to_string(year) + "/" + to_string(month) + "/" + to_string(day);
}

TEST(Dates, AnswerAsTheTableSays) {
    SetLocalClock(clock_of_test);
    expect_answers(TOOL_TEST_DATA "/dates.txt", answer);
    SetLocalClock(nullptr);
    CTools::GetToday(nullptr, nullptr, nullptr), CTools::CaclAge(nullptr, "", nullptr, nullptr);
    CTools::SetNengappi(nullptr, 1, 2, 3, "20240305");
    EXPECT_EQ(CTools::GetNengappi(nullptr, 1, 2, 3), "00000000");
}

string stored(year_month_day date) {
    return to_string(int(date.year()) * 10000 + int(unsigned(date.month()) * 100 + unsigned(date.day())));
}

// The month count is the calendar's; years and months are, too, but for months that end on the very day, of which
// rounding keeps or takes the last one.
TEST(Ages, AgreeWithTheCalendar) {
    std::mt19937 random(11);
    int kept = 0, taken = 0;
    for (int i = 0; i < 200000; ++i) {
        const sys_days birth = sys_days(2000y / 1 / 1) + days(random() % 40000), day = birth + days(random() % 40000);
        const year_month_day from = birth, to = day;
        const double from_month = unsigned(from.month()), to_month = unsigned(to.month());
        const months between = to.year() / to.month() - from.year() / from.month();
        const int plain = int(between.count()) - (to.day() < from.day());
        const string a = stored(from), b = stored(to);
        ASSERT_EQ(CTools::CalcAge(a.c_str(), b.c_str()), plain) << a << " " << b;
        const double part = unsigned(to.day()) / (365.0 / 12),
                     wrapped = to_month + part + (to_month < from_month ? 12 : 0);
        const bool ends = to.day() == from.day(), lost = ends && wrapped - (from_month + part) < plain % 12;
        ASSERT_EQ(answer("CaclAge", {a, b}), to_string(plain / 12) + ' ' + to_string(plain % 12 - lost))
            << a << " " << b;
        kept += ends && !lost;
        taken += lost;
    }
    EXPECT_GT(kept, taken);
    EXPECT_GT(taken, 500);
}

}  // namespace
