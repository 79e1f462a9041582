#include "report/pages.h"

#include "report/style.h"
#include "tracing/font.h"

namespace cephtool {
namespace {

constexpr double side_mm = 15, first_top_mm = 13, later_top_mm = 21, head_mm = 11;
constexpr double bottom_mm = a4_height_mm - 17, foot_mm = a4_height_mm - 12;

void draw_at_right(const SelectedFont& font, double right, double top, const std::string& text) {
    const CString shown = drawable(text);
    font.write({right - font.extent(shown).x, top}, shown, quiet_ink);
}

}  // namespace

Pages::Pages(const Texts& texts) : texts_(texts), top_(first_top_mm), marks_(1), measure_(text_measure()) {
    canvas_ = std::make_unique<Canvas>(Canvas{*measure_, *measure_, [](const char*) {}, {}});
}

Pages::Pages(const Texts& texts, std::string head, std::string foot) : Pages(texts) {
    head_ = std::move(head);
    foot_ = std::move(foot);
}

Pages Pages::sheet_without_end(const Texts& texts) {
    Pages pages(texts);
    pages.without_end_ = true;
    return pages;
}

double Pages::page_height() {
    return bottom_mm - later_top_mm;
}

double Pages::height_left() const {
    return without_end_ ? page_height() : bottom_mm - top_;
}

bool Pages::at_top() const {
    return top_ <= (marks_.size() == 1 ? first_top_mm : later_top_mm);
}

void Pages::new_page() {
    if (without_end_) return;
    marks_.emplace_back();
    top_ = later_top_mm;
}

Box Pages::take(double height) {
    if (height > height_left() && !at_top()) new_page();
    const Box box{side_mm, top_, a4_width_mm - side_mm, top_ + height};
    top_ = box.bottom;
    return box;
}

std::vector<DrawPage> Pages::finished() const {
    std::vector<DrawPage> pages;
    for (std::size_t i = 0; i < marks_.size(); ++i) {
        pages.push_back([this, i](const Canvas& canvas) {
            canvas.dc.m_bPrinting = TRUE;
            for (const DrawPage& mark : marks_[i]) mark(canvas);
            if (without_end_) return;
            constexpr double right = a4_width_mm - side_mm;
            const std::string number = texts_("Page %1 of %2", std::to_string(i + 1), std::to_string(marks_.size()));
            const SelectedFont font(canvas, note_mm);
            draw_line(canvas.dc, {side_mm, foot_mm - 1.5}, {right, foot_mm - 1.5}, 1, rule_ink);
            font.write({side_mm, foot_mm}, font.cut(foot_, right - side_mm - 40), quiet_ink);
            draw_at_right(font, right, foot_mm, number);
            if (i == 0) return;
            font.write({side_mm, head_mm}, font.cut(head_, right - side_mm), quiet_ink);
            draw_line(canvas.dc, {side_mm, head_mm + 5}, {right, head_mm + 5}, 1, rule_ink);
        });
    }
    return pages;
}

void add_paragraph(Pages& pages, const std::string& text, double line_mm, COLORREF colour, bool bold) {
    if (text.empty()) return;
    constexpr double width = a4_width_mm - 2 * side_mm;
    const std::vector<std::string> lines = SelectedFont(pages.canvas(), line_mm, bold).lines(text, width);
    for (const std::string& line : lines) {
        const Box box = pages.take(line_mm * 1.15);
        pages.add([=](const Canvas& canvas) {
            SelectedFont(canvas, line_mm, bold).write({box.left, box.top}, drawable(line), colour);
        });
    }
}

}  // namespace cephtool
