// Cases as rows of one table: docs/batch.md, "Flat CSV". The header names the columns; "# key=value" lines above it
// hold for every row.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/csv.h"
#include "cases/case.h"
#include "host/batch/plain_row.h"

namespace cephtool {

// Whether the line is the header of a table: quotes that pair, and a column NAME_x and one NAME_y.
bool is_flat_header(const Source& line);

class FlatTable {
 public:
    // `head` is the text from its first line to the header, which is the last one. Throws an Error for a column that
    // is there twice, that lacks its other coordinate, or that looks like a slip of a known one.
    explicit FlatTable(const Source& head);

    // Columns that are passed over, for a note.
    const std::vector<std::string>& unknown_columns() const { return unknown_; }

    // The case of a row. Throws an Error.
    Case read(const Source& line) const;

    // The same, sooner, for a row that holds nothing out of the common, as nearly all do: text as it stands, dates with
    // "-", points that are placed or not. Else false, and `record` may hold anything. Memory of `record` and `fields`
    // is used again.
    bool read_plain(std::string_view line, Case& record, std::vector<std::string_view>& fields) const;

 private:
    struct Point {
        std::string name;
        std::size_t x = 0, y = 0;  // columns
    };
    // A setting of each row.
    struct Own {
        std::string key;
        std::size_t column;
        PlainSetting read_plain = nullptr;
    };
    // What becomes of a point in the cases of a kind; the readers of all formats have said so of a case with it alone.
    struct Use {
        std::vector<Landmark> Case::*list = nullptr;  // that it goes to
        Landmark landmark;
        std::string note;        // of a landmark of the person's own
        bool auxiliary = false;  // left out
        bool refused = false;    // where it is placed
    };
    struct PlainCase {
        Case start;             // what all rows of the kind begin with
        std::vector<Use> uses;  // of the points
    };

    void read_header(const CsvRow& row, const Source& head);
    std::optional<PlainCase> plain_case(Kind kind, const Source& head) const;
    Use use_of(const Point& point, Kind kind, const Source& head) const;

    std::vector<std::pair<std::string, std::string>> common_;  // settings of all rows
    std::vector<Own> own_;                                     // settings of each row
    std::vector<Point> points_;
    std::vector<std::string> unknown_;
    std::size_t columns_ = 0;
    std::optional<std::size_t> kind_column_;
    std::optional<Kind> kind_;                              // where neither setting tells it: as the names have it
    Kind usual_kind_ = Kind::lateral;                       // of rows that do not tell theirs
    std::optional<PlainCase> plain_[std::size(all_kinds)];  // of each kind whose rows can be read plainly
};

}  // namespace cephtool
