// Comma-separated values as RFC 4180 has them, without formulas. Read with line ends CR LF or LF, and with lines that
// begin with "#".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/source.h"

namespace cephtool {

struct CsvField {
    std::string text;    // blanks round an unquoted field dropped, and the apostrophe of csv_field
    std::size_t at = 0;  // byte of the source at which it begins
};

struct CsvRow {
    bool comment = false;  // a "#" line, whole in the only field; spreadsheets put one with a comma in quotes
    std::vector<CsvField> fields;
};

// A row of more is an error before it takes memory: no table that is read here has so many columns.
inline constexpr std::size_t most_csv_fields = 10'000;

// Goes through the rows of a source that outlives it; empty lines are none.
class CsvReader {
 public:
    explicit CsvReader(const Source& source) : source_(source) {}
    // False at the end. Throws an Error for quotes that don't pair and for too many fields.
    bool next(CsvRow& row);

 private:
    CsvField quoted_field();
    CsvField plain_field();
    bool at_end_of_line() const;
    void skip_line_end();

    const Source& source_;
    std::size_t at_ = 0;
};

// The field as it is written: quoted when it holds a comma, a quote or a line end, or when blanks would be lost.
std::string csv_quoted(std::string_view text);

// The same for tables that a spreadsheet opens: a text, other than a number, that the spreadsheet would take for a
// formula (with =, +, -, @, a tab or a line end at its start) gets an apostrophe in front, which CsvReader takes off
// again.
std::string csv_field(std::string_view text);

}  // namespace cephtool
