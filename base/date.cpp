#include "base/date.h"

#include <Tools.h>

namespace cephtool {
namespace {

std::string digits(unsigned value, std::size_t count) {
    std::string text(count, '0');
    for (auto place = text.rbegin(); place != text.rend(); ++place, value /= 10)
        *place = static_cast<char>('0' + value % 10);
    return text;
}

std::string text_with(const char* between, Date date) {
    std::string text = digits(static_cast<unsigned>(static_cast<int>(date.year())), 4);
    text.append(between).append(digits(static_cast<unsigned>(date.month()), 2));
    return text.append(between).append(digits(static_cast<unsigned>(date.day()), 2));
}

std::string counted(int number, const char* what) {
    return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

}  // namespace

std::string text_of(Date date) {
    return text_with("-", date);
}

std::string stored_text(Date date) {
    return text_with("", date);
}

Date today() {
    int year = 0, month = 0, day = 0;
    CTools::GetToday(&year, &month, &day);
    return Date(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                std::chrono::day(static_cast<unsigned>(day)));
}

int months_at(Date day, Date birth) {
    return CTools::CalcAge(stored_text(birth).c_str(), stored_text(day).c_str());
}

Age age_at(Date day, Date birth) {
    const int months = months_at(day, birth);
    return {months / 12, months % 12};
}

double years_at(Date day, Date birth) {
    return months_at(day, birth) / 12.0;
}

std::string text_of(const Age& age) {
    return counted(age.years, "year") + " " + counted(age.months, "month");
}

}  // namespace cephtool
