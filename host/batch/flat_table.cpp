#include "host/batch/flat_table.h"

#include <Records.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "base/numbers.h"
#include "base/suggestion.h"
#include "base/wording.h"
#include "cases/case_names.h"
#include "cases/case_record.h"
#include "cases/case_settings.h"

namespace cephtool {
namespace {

// The setting that a column gives, under the names that tables have for it.
std::string setting_of(const std::string& column) {
    const std::string lower = lower_case(column);
    if (lower == "id") return "name";
    if (lower == "scale") return "scale_mm_per_px";
    const std::vector<std::string> keys = setting_keys();
    return std::ranges::find(keys, lower) == keys.end() ? std::string() : lower;
}

std::size_t column_of(const CsvRow& row, const std::string& name) {
    const auto found = std::ranges::find(row.fields, name, &CsvField::text);
    return static_cast<std::size_t>(found - row.fields.begin());
}

}  // namespace

bool is_flat_header(const Source& line) {
    if (line.text.find("_x") == std::string::npos) return false;
    CsvRow row;
    try {
        if (!CsvReader(line).next(row) || row.comment) return false;
    } catch (const Error&) {
        return false;
    }
    return std::ranges::any_of(row.fields, [&](const CsvField& field) {
        return field.text.ends_with("_x") &&
               column_of(row, field.text.substr(0, field.text.size() - 1) + "y") < row.fields.size();
    });
}

FlatTable::FlatTable(const Source& head) {
    CsvReader reader(head);
    CaseBuilder scratch(head);  // settings are checked once, here
    for (CsvRow row; reader.next(row);) {
        if (!row.comment) {
            read_header(row, head);
            continue;
        }
        const CsvField& comment = row.fields.front();
        const std::string_view text = trimmed(std::string_view(comment.text).substr(1));
        if (read_setting_comment(scratch, head, text, comment.at) == Comment::unknown) continue;
        const std::size_t equals = text.find('=');
        common_.emplace_back(trimmed(text.substr(0, equals)), trimmed(text.substr(equals + 1)));
    }
    const bool common_kind =
        std::ranges::find(common_, "kind", &std::pair<std::string, std::string>::first) != common_.end();
    const bool own_kind = std::ranges::find(own_, "kind", &Own::key) != own_.end();
    if (!common_kind && !own_kind) {
        std::vector<NamedPoint> names;
        for (const Point& point : points_) names.push_back({point.name, {}, 0});
        kind_ = kind_of(names, head);
    }
    CaseBuilder usual(head);
    for (const auto& [key, value] : common_) read_setting(usual, head, key, value, 0);
    usual_kind_ = usual.kind_is_known() ? usual.kind() : kind_.value_or(Kind::lateral);
    for (Own& own : own_) {
        own.read_plain = plain_setting(own.key);
        if (!own.read_plain) return;
        if (own.key == "kind") kind_column_ = own.column;
    }
    for (const Kind kind : all_kinds)
        if (own_kind || kind == usual_kind_) plain_[static_cast<std::size_t>(kind)] = plain_case(kind, head);
}

// Nothing when the settings of all rows call for more than a row by itself shows.
std::optional<FlatTable::PlainCase> FlatTable::plain_case(Kind kind, const Source& head) const {
    CaseBuilder builder(head);
    for (const auto& [key, value] : common_) read_setting(builder, head, key, value, 0);
    builder.kind(kind);
    try {
        PlainCase plain{builder.finished(), {}};
        for (const Point& point : points_) plain.uses.push_back(use_of(point, kind, head));
        return plain;
    } catch (const Error&) {  // each row will tell
        return {};
    }
}

FlatTable::Use FlatTable::use_of(const Point& point, Kind kind, const Source& head) const {
    CaseBuilder builder(head);
    builder.kind(kind);
    try {
        add_points(builder, std::array{NamedPoint{point.name, {1, 1}, 0}}, head);
    } catch (const Error&) {
        return {.landmark = {}, .note = {}, .refused = true};
    }
    const Case alone = builder.finished();
    for (const auto list : {&Case::landmarks, &Case::vertebrae, &Case::user})
        if (!(alone.*list).empty())
            return {.list = list, .landmark = (alone.*list).front(), .note = joined(alone.notes, "")};
    return {.landmark = {}, .note = joined(alone.notes, ""), .auxiliary = true};
}

bool FlatTable::read_plain(std::string_view line, Case& record, std::vector<std::string_view>& fields) const {
    if (!split_plain_row(line, fields) || fields.size() != columns_) return false;
    Kind kind = usual_kind_;
    if (kind_column_ && !fields[*kind_column_].empty()) {
        const auto named = [&](Kind each) { return fields[*kind_column_] == name_of(each); };
        const auto found = std::ranges::find_if(all_kinds, named);
        if (found == std::end(all_kinds)) return false;
        kind = *found;
    }
    const auto& plain = plain_[static_cast<std::size_t>(kind)];
    if (!plain) return false;
    record = plain->start;
    for (const Own& own : own_) {
        const std::string_view value = fields[own.column];
        if (!value.empty() && !own.read_plain(value, record)) return false;
    }
    if (record.birth && record.film && *record.film < *record.birth) return false;
    bool any = false;
    const std::string* left_out = nullptr;
    for (std::size_t i = 0; i < points_.size(); ++i) {
        const std::string_view x = fields[points_[i].x], y = fields[points_[i].y];
        if (x.empty() && y.empty()) continue;
        const Use& use = plain->uses[i];
        Position position;
        if (use.refused || !read_plain_coordinate(x, position.x) || !read_plain_coordinate(y, position.y)) return false;
        if (!(std::abs(position.x) <= largest_coordinate && std::abs(position.y) <= largest_coordinate)) return false;
        any = true;
        if (use.auxiliary) {
            left_out = &use.note;
            continue;
        }
        if (counts_as_absent(position)) return false;
        auto& list = record.*use.list;
        list.emplace_back(use.landmark).position = position;
        if (!use.note.empty()) record.notes.push_back(use.note);
    }
    if (left_out) record.notes.push_back(*left_out);
    return any && record.user.size() <= USER_POINT_MAX;
}

void FlatTable::read_header(const CsvRow& row, const Source& head) {
    columns_ = row.fields.size();
    for (std::size_t column = 0; column < columns_; ++column) {
        const CsvField& field = row.fields[column];
        if (column_of(row, field.text) != column) {
            throw head.error_at(field.at, "a second column " + in_quotes(field.text), "Keep one of them.");
        }
        const std::string setting = setting_of(field.text);
        if (!setting.empty()) {
            if (std::ranges::find(own_, setting, &Own::key) != own_.end()) {
                throw head.error_at(field.at, "a second column that gives " + in_quotes(setting), "Keep one of them.");
            }
            own_.push_back({setting, column});
        } else if (field.text.ends_with("_x") || field.text.ends_with("_y")) {
            const std::string name = field.text.substr(0, field.text.size() - 2);
            const bool is_x = field.text.back() == 'x';
            const std::size_t other = column_of(row, name + (is_x ? "_y" : "_x"));
            if (other == columns_) {
                throw head.error_at(field.at, "the column " + in_quotes(field.text) + " stands without its other one",
                                    "A landmark has two columns: " + name + "_x," + name + "_y");
            }
            if (is_x) points_.push_back({name, column, other});
        } else {
            const std::string meant = did_you_mean(field.text, setting_keys());
            if (!meant.empty()) {
                throw head.error_at(field.at, "the column " + in_quotes(field.text) + " is not known", meant);
            }
            unknown_.push_back(field.text);
        }
    }
}

Case FlatTable::read(const Source& line) const {
    CsvReader reader(line);
    CsvRow row;
    if (!reader.next(row) || row.comment || row.fields.size() != columns_) {
        throw line.error_at(
            0, "this row has " + std::to_string(row.fields.size()) + " fields, the header " + std::to_string(columns_));
    }
    CaseBuilder builder(line);
    for (const auto& [key, value] : common_) read_setting(builder, line, key, value, 0);
    for (const Own& own : own_) {
        const CsvField& field = row.fields[own.column];
        if (!field.text.empty()) read_setting(builder, line, own.key, field.text, field.at);
    }
    if (!builder.kind_is_known()) builder.kind(kind_.value_or(Kind::lateral));
    std::vector<NamedPoint> placed;
    placed.reserve(points_.size());
    for (const Point& point : points_) {
        const CsvField &x = row.fields[point.x], &y = row.fields[point.y];
        if (x.text.empty() && y.text.empty()) continue;
        const auto coordinate = [&](const CsvField& field) {
            const std::optional<double> number = number_from(field.text);
            if (!number) {
                throw line.error_at(field.at, in_quotes(field.text) + " is no coordinate",
                                    "Write a decimal number of pixels, or leave both coordinates empty.");
            }
            return builder.checked_coordinate(*number, field.at);
        };
        placed.push_back({point.name, {coordinate(x), coordinate(y)}, x.at});
    }
    if (placed.empty()) throw line.error_at(0, "there is no landmark in this row");
    add_points(builder, placed, line);
    return builder.finished();
}

}  // namespace cephtool
