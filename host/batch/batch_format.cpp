#include "host/batch/batch_format.h"

#include <nlohmann/json.hpp>

#include "base/csv.h"
#include "base/numbers.h"
#include "base/wording.h"

namespace cephtool {
namespace {

std::string quoted(const std::string& text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

// Thousands of cells a line are put together before they are appended to it.
class Cells {
 public:
    explicit Cells(std::string& line) : line_(line) {}
    void next(const std::optional<double>& value) {
        if (std::end(bytes_) - end_ < static_cast<std::ptrdiff_t>(1 + shortest_room)) flush();
        *end_++ = ',';
        if (value) end_ = write_shortest(end_, *value);
    }
    void add(std::string_view text) {
        flush();
        line_ += text;
    }

 private:
    void flush() {
        line_.append(bytes_, end_);
        end_ = bytes_;
    }

    std::string& line_;
    char bytes_[4096];
    char* end_ = bytes_;
};

}  // namespace

BatchFormat::BatchFormat(ResultFormat format, const BatchColumns& columns) : format_(format), parts_(columns.parts) {
    if (format == ResultFormat::csv) head_ = std::string(csv_start) + ",remarks,population";
    for (const std::string& name : columns.names) {
        if (format == ResultFormat::csv) {
            head_ += "," + csv_field(name);
        } else {
            keys_.push_back("," + quoted(name) + ":");
        }
    }
    if (format == ResultFormat::csv) head_ += "\r\n";
}

template <class Append>
void BatchFormat::for_each_number(std::span<const BatchItem> items, Append append) const {
    for (const BatchItem& item : items) {
        append(item.value, item.text);
        if (item.has_no_norms) continue;
        if (parts_.norms) {
            append(item.mean, {});
            append(item.sd, {});
        }
        if (parts_.deviations) append(item.deviation, {});
        if (!parts_.errors) continue;
        append(item.error, {});
        append({}, item.mostly);
        append({}, item.assumed);
        if (parts_.deviations) append(item.deviation_error, {});
    }
}

void BatchFormat::append(std::string& lines, std::size_t number, const Case& record,
                         const MeasuredCase& measured) const {
    const std::string file = printable(record.file), notes = joined(record.notes, "; "),
                      remarks = joined(measured.remarks, "; ");
    const std::string sex = record.sex ? name_of(*record.sex) : "";
    const std::string months = measured.months ? std::to_string(*measured.months) : std::string();
    if (format_ == ResultFormat::csv) {
        lines += std::to_string(number);
        for (const std::string& text :
             {csv_field(file), csv_field(printable(record.name)), std::string(name_of(record.kind)), sex, months,
              csv_field(notes), csv_field(remarks), csv_field(printable(record.population))})
            lines.append(1, ',').append(text);
        Cells cells(lines);
        for_each_number(measured.items, [&](const std::optional<double>& value, std::string_view text) {
            cells.next(value);
            if (!text.empty()) cells.add(csv_field(text));
        });
        cells.add("\r\n");
        return;
    }
    lines += number_mark() + std::to_string(number) + ",\"file\":" + quoted(file) + ",\"name\":" + quoted(record.name) +
             ",\"kind\":\"" + name_of(record.kind) + "\",\"sex\":" + (sex.empty() ? "null" : "\"" + sex + "\"") +
             ",\"age_months\":" + (months.empty() ? "null" : months) + ",\"notes\":" + quoted(notes) +
             ",\"remarks\":" + quoted(remarks) +
             ",\"population\":" + (record.population.empty() ? "null" : quoted(record.population));
    std::size_t key = 0;
    for_each_number(measured.items, [&](const std::optional<double>& value, std::string_view text) {
        lines += keys_[key++];
        if (value) {
            lines += shortest(*value);
        } else {
            lines += text.empty() ? "null" : quoted(std::string(text));
        }
    });
    lines += "}\n";
}

std::string failure_row(std::size_t number, const std::string& place, const std::string& message,
                        const std::string& advice) {
    return std::to_string(number) + "," + csv_field(place) + "," + csv_field(printable(message)) + "," +
           csv_field(printable(advice)) + "\r\n";
}

}  // namespace cephtool
