#include "report/table_section.h"

#include <algorithm>
#include <memory>

#include "report/deviation_chart.h"
#include "report/style.h"
#include "tracing/font.h"

namespace cephtool {
namespace {

constexpr double gap_mm = 7, sign_gap_mm = 1, row_padding_mm = 0.75, head_mm = 6.5;
constexpr double cell_gap_mm = 1.5, chart_gap_mm = 4;
constexpr double kept_together_mm = 110;  // tables up to this height are not broken
constexpr double narrowest_name_mm = 34, widest_name_mm = 60, narrowest_chart_mm = 36;
constexpr double line_mm = body_mm * 1.08;

// A row as it will be drawn.
struct LaidRow {
    const TableRow* row;
    std::vector<std::string> name_lines;
    std::vector<std::string> wide_lines;  // words, or the remark below the cells
    double height;
};

class TableLayout {
 public:
    TableLayout(Pages& pages, std::shared_ptr<const ResultTable> table)
        : pages_(pages), table_(std::move(table)), body_(pages.canvas(), body_mm) {
        double cells = 0;
        for (const TableColumn& column : table_->columns) cells += column.width_mm;
        width_ = pages_.take(0).width();
        double widest = narrowest_name_mm;
        for (const TableRow& row : table_->rows) {
            widest = std::max(widest, body_.extent(drawable(row.name)).x + cell_gap_mm);
        }
        const double room = width_ - cells - (table_->has_chart ? chart_gap_mm + narrowest_chart_mm : 0);
        name_width_ = std::min({widest, widest_name_mm, room});
        cells_width_ = cells;
        const SelectedFont note(pages.canvas(), note_mm);
        const auto add_lines = [&](std::vector<std::string>& lines, const std::string& text) {
            for (std::string& line : note.lines(text, width_)) lines.push_back(std::move(line));
        };
        if (!table_->comment.empty()) add_lines(comment_lines_, table_->comment);
        for (const std::string& remark : table_->remarks) add_lines(remark_lines_, remark);
        for (const std::string& sign : table_->signs) add_lines(sign_lines_, sign);
        for (const TableRow& row : table_->rows) rows_.push_back(laid(row));
    }

    void add() {
        double height = head_height() + notes_height(sign_lines_.size());
        for (const LaidRow& row : rows_) height += row.height;
        const bool whole = height <= kept_together_mm || height <= pages_.height_left();
        if (height + gap_mm > pages_.height_left() && (whole || pages_.height_left() < kept_together_mm / 2)) {
            pages_.new_page();
        } else if (!pages_.at_top()) {
            pages_.take(gap_mm);
        }
        add_title();
        std::size_t from = 0;
        while (from < rows_.size()) from = add_part(from);
        if (!sign_lines_.empty()) pages_.take(sign_gap_mm);
        for (const std::string& line : sign_lines_) {
            if (pages_.height_left() < notes_height(1)) pages_.new_page();
            add_note(line, quiet_ink);
        }
    }

 private:
    static double notes_height(std::size_t lines) { return static_cast<double>(lines) * note_mm * 1.3; }

    double head_height() const {
        return title_mm * 1.5 + notes_height(comment_lines_.size() + remark_lines_.size() + !table_->norms.empty()) +
               head_mm;
    }

    double chart_left(const Box& box) const { return box.left + name_width_ + cells_width_ + chart_gap_mm; }

    LaidRow laid(const TableRow& row) const {
        LaidRow laid{&row, body_.lines(row.name, name_width_ - cell_gap_mm), {}, 0};
        const double beside = table_->has_chart && row.words.empty() ? cells_width_ : width_ - name_width_;
        const double wide = beside - cell_gap_mm;
        std::vector<std::string> parts = row.words;
        if (parts.size() > 1) {
            for (std::size_t i = 0; i < parts.size(); ++i) {
                parts[i] = pages_.texts().film(i) + ": " + parts[i];
            }
        }
        if (!row.remark.empty()) parts.push_back(row.remark);
        for (const std::string& part : parts) {
            const std::vector<std::string> lines = body_.lines(part, wide);
            laid.wide_lines.insert(laid.wide_lines.end(), lines.begin(), lines.end());
        }
        const std::size_t cell_lines = row.cells.empty() ? 0 : 1;
        const std::size_t lines = std::max(laid.name_lines.size(), cell_lines + laid.wide_lines.size());
        laid.height = static_cast<double>(std::max<std::size_t>(lines, 1)) * line_mm + 2 * row_padding_mm;
        return laid;
    }

    void add_title() {
        const Box title = pages_.take(title_mm * 1.5);
        pages_.add([box = title, table = table_](const Canvas& canvas) {
            const SelectedFont font(canvas, title_mm, true);
            font.write({box.left, box.top}, font.cut(table->title, box.width()), ink);
        });
        for (const std::string& line : comment_lines_) add_note(line, quiet_ink);
        if (!table_->norms.empty()) add_note(table_->norms, quiet_ink);
        for (const std::string& line : remark_lines_) add_note(line, remark_ink);
    }

    void add_note(const std::string& text, COLORREF colour) {
        pages_.add([box = pages_.take(notes_height(1)), text, colour](const Canvas& canvas) {
            const SelectedFont font(canvas, note_mm);
            font.write({box.left, box.top}, font.cut(text, box.width()), colour);
        });
    }

    // The head and as many rows as the page holds; returns the first row that is left.
    std::size_t add_part(std::size_t from) {
        if (pages_.height_left() < head_mm + rows_[from].height) pages_.new_page();
        add_head(pages_.take(head_mm));
        std::vector<ChartRow> chart;
        std::size_t row = from;
        Box part{};
        for (; row < rows_.size() && (row == from || rows_[row].height <= pages_.height_left()); ++row) {
            const Box box = pages_.take(rows_[row].height);
            if (row == from) part = box;
            part.bottom = box.bottom;
            add_row(rows_[row], box);
            if (rows_[row].row->heading) continue;
            chart.push_back({box.top + row_padding_mm + line_mm / 2, rows_[row].row->deviations});
        }
        if (table_->has_chart) {
            const ChartScale scale{chart_left(part), part.right};
            pages_.add([=](const Canvas& canvas) { draw_polygons(canvas, scale, chart); });
        }
        pages_.add([=](const Canvas& canvas) {
            draw_line(canvas.dc, {part.left, part.top}, {part.right, part.top}, 3, quiet_ink);
            draw_line(canvas.dc, {part.left, part.bottom}, {part.right, part.bottom}, 2, rule_ink);
        });
        return row;
    }

    void add_head(const Box& box) {
        const double name_width = name_width_;
        const ChartScale scale{chart_left(box), box.right};
        const std::string item = pages_.texts()("Item");
        pages_.add([=, table = table_](const Canvas& canvas) {
            const SelectedFont font(canvas, note_mm, true);
            const double top = box.bottom - note_mm - 1;
            font.write({box.left, top}, drawable(item), ink);
            double left = box.left + name_width;
            for (const TableColumn& column : table->columns) {
                const CString text = font.cut(column.heading, column.width_mm);
                const double indent = column.at_right ? column.width_mm - font.extent(text).x : cell_gap_mm;
                if (column.time) draw_time_mark(canvas, {left + indent - 2, top + note_mm / 2}, *column.time);
                font.write({left + indent, top}, text, column.time ? time_inks[*column.time] : ink);
                left += column.width_mm;
            }
        });
        if (!table_->has_chart) return;
        pages_.add([=](const Canvas& canvas) { draw_scale_numbers(canvas, scale, box.bottom - note_mm - 1, note_mm); });
    }

    void add_row(const LaidRow& laid, const Box& box) {
        const ChartScale scale{chart_left(box), box.right};
        const double name_width = name_width_;
        pages_.add([=, table = table_](const Canvas& canvas) {
            const TableRow& row = *laid.row;
            const double top = box.top + row_padding_mm;
            const bool beside_chart = table->has_chart && row.words.empty();
            if (beside_chart) draw_bands(canvas, scale, box.top, box.bottom);
            const double end = beside_chart ? scale.left - chart_gap_mm : box.right;
            draw_line(canvas.dc, {box.left, box.bottom}, {end, box.bottom}, 1, rule_ink);
            {
                const SelectedFont font(canvas, body_mm, row.heading || row.marked);
                for (std::size_t i = 0; i < laid.name_lines.size(); ++i) {
                    const double y = top + static_cast<double>(i) * line_mm;
                    font.write({box.left, y}, font.cut(laid.name_lines[i], name_width), ink);
                }
            }
            const SelectedFont font(canvas, body_mm);
            double left = box.left + name_width;
            for (std::size_t i = 0; i < row.cells.size(); ++i) {
                const TableColumn& column = table->columns[i];
                const CString text = font.cut(row.cells[i], column.width_mm);
                const double indent = column.at_right ? column.width_mm - font.extent(text).x : cell_gap_mm;
                font.write({left + indent, top}, text, ink);
                left += column.width_mm;
            }
            double y = top + (row.cells.empty() ? 0 : line_mm);
            for (const std::string& line : laid.wide_lines) {
                font.write({box.left + name_width + cell_gap_mm, y}, drawable(line), quiet_ink);
                y += line_mm;
            }
        });
    }

    Pages& pages_;
    std::shared_ptr<const ResultTable> table_;
    SelectedFont body_;
    double width_ = 0, name_width_ = 0, cells_width_ = 0;
    std::vector<std::string> comment_lines_, remark_lines_, sign_lines_;
    std::vector<LaidRow> rows_;
};

}  // namespace

void add_table(Pages& pages, const ResultTable& table) {
    TableLayout(pages, std::make_shared<const ResultTable>(table)).add();
}

}  // namespace cephtool
