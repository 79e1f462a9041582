// The pages of a report while they are being composed. Marks are drawn in the end, when it is known how many pages
// there are.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "report/drawn_file.h"
#include "results/texts.h"

namespace cephtool {

inline constexpr double a4_width_mm = 210, a4_height_mm = 297;

class Pages {
 public:
    // `head` stands at the top of all pages but the first, `foot` at the foot of each, beside the page number.
    // A sheet without end has one page as high as it must be, and neither.
    Pages(const Texts& texts, std::string head, std::string foot);
    static Pages sheet_without_end(const Texts& texts);

    // Room of the page's width and this height: below what is there, or at the top of a new page.
    Box take(double height);
    double height_left() const;
    bool at_top() const;
    static double page_height();
    void new_page();

    // Onto the page that was last taken from.
    void add(DrawPage mark) { marks_.back().push_back(std::move(mark)); }
    // For measuring texts before they are drawn; drawing on it is lost.
    const Canvas& canvas() const { return *canvas_; }
    const Texts& texts() const { return texts_; }

    double used_height() const { return top_; }  // of the last page, margins included
    std::vector<DrawPage> finished() const;

 private:
    explicit Pages(const Texts& texts);

    Texts texts_;
    std::string head_, foot_;
    bool without_end_ = false;
    double top_;
    std::vector<std::vector<DrawPage>> marks_;
    std::unique_ptr<CDC> measure_;
    std::unique_ptr<Canvas> canvas_;
};

// A text that is broken into as many lines as it needs, in the page's width; nothing for an empty one.
void add_paragraph(Pages& pages, const std::string& text, double line_mm, COLORREF colour, bool bold = false);

}  // namespace cephtool
