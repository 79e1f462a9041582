#include "report/result_table.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/wording.h"
#include "results/names.h"

namespace cephtool {
namespace {

using Items = std::vector<const Measurement*>;  // one a film, of the same item

constexpr double value_mm = 16, unit_mm = 9, mean_mm = 14, sd_mm = 12, deviation_mm = 13, stars_mm = 12, change_mm = 15,
                 parentheses_mm = 4.5;
constexpr double film_mm = 15, narrow_film_mm = 13, film_stars_mm = 8;

int digits_behind_point(const std::string& number) {
    const std::size_t point = number.find('.');
    return point == std::string::npos ? 0 : static_cast<int>(number.size() - point - 1);
}

std::string column_name(const Texts& texts, std::size_t column) {
    return texts("Value") + (column == 0 ? "" : " " + std::to_string(column + 1));
}

class TableMaker {
 public:
    TableMaker(const std::vector<const AnalysisResult*>& times, TableStyle style, const Texts& texts)
        : times_(times), style_(style), texts_(texts) {
        for (const Measurement& item : times.front()->items)
            value_columns_ = std::max(value_columns_, static_cast<std::size_t>(item.column) + 1);
    }

    ResultTable table() const {
        ResultTable table;
        table.title = title_of(*times_.front()->analysis, texts_);
        table.comment = comment_of(*times_.front()->analysis, texts_);
        table.signs = signs_in_words(times_.back()->items, texts_);
        for (std::string& mark : unverified_in_words(times_.back()->items, texts_))
            table.signs.push_back(std::move(mark));
        table.norms = norms_in_words(times_.back()->band, texts_);
        table.remarks = remarks(times_);
        table.columns = several() ? columns_of_several() : columns_of_one();
        for (std::size_t i = 0; i < times_.front()->items.size(); ++i) {
            Items items;
            for (const AnalysisResult* time : times_) items.push_back(&time->items[i]);
            table.rows.push_back(row(items));
            table.has_chart = table.has_chart || std::ranges::any_of(table.rows.back().deviations,
                                                                     [](const auto& d) { return d.has_value(); });
        }
        return table;
    }

 private:
    bool several() const { return times_.size() > 1; }

    // What values take more room by whose error is an assumed one.
    double for_parentheses() const {
        const auto assumed = [](const Measurement& item) { return item.error && !item.error->assumed.empty(); };
        const auto any = [&](const AnalysisResult* time) { return std::ranges::any_of(time->items, assumed); };
        return std::ranges::any_of(times_, any) ? parentheses_mm : 0;
    }

    std::vector<TableColumn> columns_of_one() const {
        std::vector<TableColumn> columns;
        for (std::size_t i = 0; i < value_columns_; ++i)
            columns.push_back({column_name(texts_, i), value_mm + for_parentheses()});
        columns.push_back({"", unit_mm, false});
        if (style_ == TableStyle::chart) return columns;
        columns.push_back({texts_("Mean"), mean_mm});
        columns.push_back({texts_("SD"), sd_mm});
        columns.push_back({texts_("in SD"), deviation_mm});
        columns.push_back({"", stars_mm, false});
        return columns;
    }

    std::vector<TableColumn> columns_of_several() const {
        std::vector<TableColumn> columns;
        const double width = times_.size() > 2 ? narrow_film_mm : film_mm + for_parentheses();
        for (std::size_t i = 0; i < times_.size(); ++i) {
            columns.push_back({texts_.film(i), width, true, i});
            columns.push_back({"", film_stars_mm, false});
        }
        columns.push_back({"", unit_mm, false});
        columns.push_back({texts_("Change"), change_mm});
        if (style_ == TableStyle::chart) return columns;
        columns.push_back({texts_("Mean"), mean_mm});
        columns.push_back({texts_("SD"), sd_mm});
        return columns;
    }

    TableRow row(const Items& items) const {
        const Measurement& item = *items.back();
        TableRow row{.heading = item.heading, .marked = item.marked, .name = label_of(item, texts_)};
        if (item.heading) return row;
        for (const Measurement* each : items) {
            const bool is_shown = !each->deviation_text.empty();
            row.deviations.push_back(is_shown ? each->deviation : std::nullopt);
        }
        const bool has_numbers =
            std::ranges::any_of(items, [](const Measurement* each) { return each->value.has_value(); });
        for (const std::string& remark : remarks(items)) add_remark(row, remark);
        for (const std::string& remark : error_remarks(items)) add_remark(row, remark);
        if (!has_numbers) {
            row.words = words(items);
            return row;
        }
        row.cells = several() ? cells_of_several(items) : cells_of_one(item);
        if (!item.norm_missing.empty()) add_remark(row, texts_("norm missing: %1", joined(item.norm_missing, ", ")));
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (!items[i]->value) add_remark(row, texts_.film(i) + ": " + words_for(*items[i]));
        }
        return row;
    }

    static void add_remark(TableRow& row, const std::string& text) {
        row.remark += (row.remark.empty() ? "" : "; ") + text;
    }

    static std::span<const Remark> remarks_on(const AnalysisResult& result) { return result.remarks(); }
    static std::span<const Remark> remarks_on(const Measurement& item) { return item.remarks; }

    template <class Part>
    std::vector<std::string> remarks(const std::vector<const Part*>& times) const {
        std::vector<std::span<const Remark>> films;
        for (const Part* time : times) films.push_back(remarks_on(*time));
        return texts_.remarks(films);
    }

    std::vector<std::string> error_remarks(const Items& items) const {
        std::vector<std::vector<Remark>> all;
        for (const Measurement* item : items) all.push_back(item->error_remarks());
        return texts_.remarks({all.begin(), all.end()});
    }

    std::vector<std::string> cells_of_one(const Measurement& item) const {
        std::vector<std::string> cells(value_columns_);
        cells[static_cast<std::size_t>(item.column)] = item.value_with_error();
        cells.push_back(unit_sign(item.unit));
        if (style_ == TableStyle::full) {
            cells.insert(cells.end(), {item.mean_text, item.sd_text, item.deviation_text, item.stars_with_error()});
        }
        return cells;
    }

    std::vector<std::string> cells_of_several(const Items& items) const {
        std::vector<std::string> cells;
        for (const Measurement* item : items) {
            cells.insert(cells.end(), {item->value_with_error(), item->stars_with_error()});
        }
        cells.push_back(unit_sign(items.back()->unit));
        cells.push_back(change(*items.front(), *items.back()));
        if (style_ == TableStyle::full) {
            cells.insert(cells.end(), {items.back()->mean_text, items.back()->sd_text});
        }
        return cells;
    }

    // Of the values as they are, not as they are shown.
    static std::string change(const Measurement& first, const Measurement& last) {
        if (!first.value || !last.value) return {};
        const double difference = *last.value - *first.value;
        const std::string text = with_decimals(difference, digits_behind_point(last.value_text));
        const bool grows = difference > 0 && text.find_first_of("123456789") != std::string::npos;
        return (grows ? "+" : "") + text;
    }

    std::vector<std::string> words(const Items& items) const {
        std::vector<std::string> all;
        for (const Measurement* item : items) all.push_back(words_for(*item));
        if (std::ranges::adjacent_find(all, std::not_equal_to()) == all.end()) all.resize(1);
        return all;
    }

    std::string words_for(const Measurement& item) const {
        if (!item.missing.empty()) return texts_("missing: %1", joined(item.missing, ", "));
        if (!item.text.empty()) return verdict_of(item, texts_);
        return texts_(item.reason);
    }

    const std::vector<const AnalysisResult*>& times_;
    TableStyle style_;
    const Texts& texts_;
    std::size_t value_columns_ = 1;
};

}  // namespace

ResultTable result_table(const std::vector<const AnalysisResult*>& times, TableStyle style, const Texts& texts) {
    return TableMaker(times, style, texts).table();
}

}  // namespace cephtool
