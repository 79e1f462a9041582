#include "tracing/font.h"

#include <CodePage.h>
#include <Tools.h>

#include <algorithm>

#include "base/columns.h"
#include "base/utf8.h"
#include "base/wording.h"

namespace cephtool {
namespace {

constexpr double ascent = 0.905, descent = 0.212;  // of Arial, in units of its em

// Each character of the text as its bytes.
std::vector<std::string_view> characters_of(std::string_view utf8) {
    std::vector<std::string_view> characters;
    while (!utf8.empty()) {
        const std::string_view before = utf8;
        next_character(utf8);
        characters.push_back(before.substr(0, before.size() - utf8.size()));
    }
    return characters;
}

// The last number from `first` to `last` that fits, when none behind one that does not fit would; `first` fits in any
// case. What is tried is never much longer than what fits, so that a long text costs no more than a short one.
template <class Fits>
std::size_t last_that_fits(std::size_t first, std::size_t last, Fits fits) {
    constexpr std::size_t short_text = 64;
    if (last - first <= short_text && fits(last)) return last;
    std::size_t good = first, bad = last + 1;
    for (std::size_t step = short_text / 4; good + step < bad; step *= 2) {
        if (!fits(good + step)) {
            bad = good + step;
        } else {
            good += step;
        }
    }
    while (bad - good > 1) {
        const std::size_t middle = good + (bad - good) / 2;
        (fits(middle) ? good : bad) = middle;
    }
    return good;
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
    for (const std::string_view one : characters_of(utf8)) {
        CString character;
        text += CodePage932FromUtf8(std::string(one).c_str(), &character) ? character : CString("?");
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
    const auto text = [&](std::size_t columns) { return drawable(fitted(utf8, static_cast<int>(columns))); };
    const auto fits = [&](std::size_t columns) { return extent(text(columns)).x <= width; };
    return text(last_that_fits(0, static_cast<std::size_t>(display_width(utf8)), fits));
}

std::vector<std::string> SelectedFont::lines(std::string_view utf8, double width) const {
    const std::vector<std::string_view> characters = characters_of(utf8);
    std::vector<std::string> all;
    for (std::size_t first = 0, last; first < characters.size(); first = last + 1) {
        const auto part = [&](std::size_t end) {
            const char* const start = characters[first].data();
            return trimmed({start, static_cast<std::size_t>(characters[end].data() - start) + characters[end].size()});
        };
        last = last_that_fits(first, characters.size() - 1,
                              [&](std::size_t end) { return extent(drawable(part(end))).x <= width; });
        std::size_t next = last + 1;
        while (next < characters.size() && next > first && !may_break(characters[next - 1], characters[next])) --next;
        if (next > first) last = next - 1;
        all.emplace_back(part(last));
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
