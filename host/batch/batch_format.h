// A measured case as a line of the table that a batch writes.
#pragma once

#include <span>
#include <string>

#include "cases/case.h"
#include "host/batch/batch_columns.h"
#include "host/batch/case_measurer.h"
#include "host/result_format.h"

namespace cephtool {

// What the tables of all batches begin with.
inline constexpr std::string_view csv_start = "case,file,name,kind,sex,age_months,notes",
                                  json_lines_start = "{\"case\":";

class BatchFormat {
 public:
    // `format` is csv or json_lines. `columns` must outlive this object.
    BatchFormat(ResultFormat format, const BatchColumns& columns);

    const std::string& head() const { return head_; }
    // What stands in front of the number of a line's case.
    std::string number_mark() const { return format_ == ResultFormat::csv ? "" : std::string(json_lines_start); }
    void append(std::string& lines, std::size_t number, const Case& record, const MeasuredCase& measured) const;

 private:
    template <class Append>
    void for_each_number(std::span<const BatchItem> items, Append append) const;

    ResultFormat format_;
    BatchParts parts_;
    std::string head_;
    std::vector<std::string> keys_;  // ",\"NAME\":"
};

// A row of the table of failed cases.
std::string failure_row(std::size_t number, const std::string& place, const std::string& message,
                        const std::string& advice);

}  // namespace cephtool
