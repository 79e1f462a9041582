// Comma-separated values as RFC 4180 has them. Read with line ends CR LF or LF, and with lines that begin with "#".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/source.h"

namespace cephtool {

struct CsvField {
    std::string text;    // blanks round an unquoted field dropped
    std::size_t at = 0;  // byte of the source at which it begins
};

struct CsvRow {
    bool comment = false;  // a "#" line, whole in the only field
    std::vector<CsvField> fields;
};

// Goes through the rows of a source that outlives it; empty lines are none.
class CsvReader {
 public:
    explicit CsvReader(const Source& source) : source_(source) {}
    // False at the end. Throws an Error for quotes that don't pair.
    bool next(CsvRow& row);

 private:
    CsvField quoted_field();
    CsvField plain_field();
    bool at_end_of_line() const;
    void skip_line_end();

    const Source& source_;
    std::size_t at_ = 0;
};

// The field as it is written: quoted when it holds a comma, a quote or a line end.
std::string csv_field(std::string_view text);

}  // namespace cephtool
