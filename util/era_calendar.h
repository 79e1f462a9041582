// The spans of an era table. A span is one of
//
//   YYYY.MM.DD-YYYY.MM.DD   first and last day, both included
//   -YYYY.MM.DD             all days up to the last one
//   YYYY.MM.DD-             all days from the first one
//
// and is told apart by its length alone; days are compared as text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "framework/text.h"
#include "util/stored_date.h"

namespace tool {

// Views into the span's text.
struct EraSpan {
    std::string_view first, last;

    bool holds(std::string_view day) const { return first <= day && day <= last; }
    // 1 when the span has no beginning.
    int first_year() const;
    // The year counted in this era, the first one being 1; 0 when the span has no beginning.
    int year_in_era(int year) const;
};

// Nothing for a text of any other length.
std::optional<EraSpan> era_span(std::string_view text);

// A day as spans have it; month and day 0 count as 1.
std::string era_day(DateFields date);

struct EraYear {
    int entry = 0;  // index among the spans
    int year = 0;   // 0 when the span has no beginning
};

// The first span that holds the date. Spans shorter than 11 characters are passed over.
std::optional<EraYear> era_year(const CStringArray& spans, const DateFields& date);

// Years far beyond any calendar stay within 32 bits.
int western_year(int first_year, int era_year);

}  // namespace tool
