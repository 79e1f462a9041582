#include "host/drawing/font.h"

#include <CodePage.h>
#include <Tools.h>

#include <algorithm>

#include "host/text_width.h"

namespace cephtool {
namespace {

constexpr double ascent = 0.905, descent = 0.212;  // of Arial, in units of its em

// The text's first character, as its bytes.
std::string_view first_character(std::string_view utf8) {
    std::string_view rest = utf8;
    next_character(rest);
    return utf8.substr(0, utf8.size() - rest.size());
}

// Kana or Chinese characters. In a Japanese font figures and signs look foreign among Latin text.
bool has_japanese(const CString& text) {
    constexpr unsigned char last_row_of_signs = 0x81;
    return std::ranges::any_of(text.View(), [](char c) { return static_cast<unsigned char>(c) > last_row_of_signs; });
}

// A line may end behind a blank, and in front of and behind a wide character.
bool may_break(std::string_view before, std::string_view after) {
    return before == " " || display_width(before) > 1 || display_width(after) > 1;
}

}  // namespace

CString drawable(std::string_view utf8) {
    CString text;
    if (CodePage932FromUtf8(std::string(utf8).c_str(), &text)) return text;
    text.Empty();
    while (!utf8.empty()) {
        const std::string one(first_character(utf8));
        CString character;
        text += CodePage932FromUtf8(one.c_str(), &character) ? character : CString("?");
        utf8.remove_prefix(one.size());
    }
    return text;
}

SelectedFont::SelectedFont(const Canvas& canvas, double height_mm, bool bold) : canvas_(canvas), height_mm_(height_mm) {
    LOGFONTA description{};
    description.lfHeight = std::min(-unit(em_mm(), units_a_mm), -1);
    description.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    std::copy_n("Arial", sizeof "Arial", description.lfFaceName);
    description.lfCharSet = ANSI_CHARSET;
    latin_.CreateFontIndirectA(&description);
    description.lfCharSet = SHIFTJIS_CHARSET;
    japanese_.CreateFontIndirectA(&description);
    before_ = canvas_.dc.SelectObject(&japanese_);
    measured_before_ = canvas_.measure.SelectObject(&japanese_);
    align_before_ = canvas_.dc.SetTextAlign(TA_LEFT | TA_BASELINE);
}

SelectedFont::~SelectedFont() {
    canvas_.dc.SetTextAlign(align_before_);
    canvas_.measure.SelectObject(measured_before_);
    canvas_.dc.SelectObject(before_);
}

double SelectedFont::em_mm() const {
    return height_mm_ / (ascent + descent);
}

void SelectedFont::select_for(const CString& text) const {
    CFont* const font = has_japanese(text) ? &japanese_ : &latin_;
    canvas_.dc.SelectObject(font);
    canvas_.measure.SelectObject(font);
}

Position SelectedFont::extent(const CString& text) const {
    select_for(text);
    return {canvas_.measure.GetTextExtent(text, text.GetLength()).cx / units_a_mm, height_mm_};
}

CString SelectedFont::cut(const std::string& utf8, double width) const {
    CString text = drawable(utf8);
    for (int columns = display_width(utf8); columns > 0 && extent(text).x > width; --columns) {
        text = drawable(fitted(utf8, columns));
    }
    return text;
}

std::vector<std::string> SelectedFont::lines(std::string_view utf8, double width) const {
    std::vector<std::string> all;
    while (!utf8.empty()) {
        std::size_t end = 0, last_break = 0;
        std::string_view before;
        while (end < utf8.size()) {
            const std::string_view next = first_character(utf8.substr(end));
            if (end > 0 && may_break(before, next)) last_break = end;
            if (next != " " && end > 0 && extent(drawable(utf8.substr(0, end + next.size()))).x > width) break;
            end += next.size();
            before = next;
        }
        if (end < utf8.size() && last_break > 0) end = last_break;
        all.emplace_back(trimmed(utf8.substr(0, end)));
        utf8.remove_prefix(end);
    }
    if (all.empty()) all.emplace_back();
    return all;
}

void SelectedFont::write(Position corner, const CString& text, COLORREF colour) const {
    select_for(text);
    const CPoint at = upward(Position{corner.x, corner.y + ascent * em_mm()});
    CTools::TextMakeOut(&canvas_.dc, at.x, at.y, text, 0, 0, 0, 0, colour, TRANSPARENT);
}

void SelectedFont::write_on_film(Position corner, const CString& text, COLORREF colour, COLORREF shadow) const {
    constexpr double shadow_mm = 0.2;
    write({corner.x + shadow_mm, corner.y + shadow_mm}, text, shadow);
    write(corner, text, colour);
}

}  // namespace cephtool
