// Texts of a drawing: UTF-8 in, the library's code page on the surface.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tracing/canvas.h"

namespace cephtool {

// In the code page of the drawing functions; what it lacks becomes "?".
CString drawable(std::string_view utf8);

// A font of the canvas from here to the end of the scope. Heights are those of the face asked for, whatever a surface
// has in its place.
class SelectedFont {
 public:
    SelectedFont(const Canvas& canvas, double height_mm, bool bold = false);
    ~SelectedFont();
    SelectedFont(const SelectedFont&) = delete;
    SelectedFont& operator=(const SelectedFont&) = delete;

    // Width and height in mm.
    Position extent(const CString& text) const;
    // As much of the text as fits.
    CString cut(const std::string& utf8, double width) const;
    // In lines that fit, broken at blanks and between wide characters; a word that does not fit is broken anywhere.
    std::vector<std::string> lines(std::string_view utf8, double width) const;
    // `corner` is the upper left of the text.
    void write(Position corner, const CString& text, COLORREF colour) const;
    // With a shadow, to be read on the greys of a film.
    void write_on_film(Position corner, const CString& text, COLORREF colour, COLORREF shadow) const;

 private:
    double em_mm() const;
    // The font for this text is the one in use from here on.
    void select_for(const CString& text) const;

    const Canvas& canvas_;
    double height_mm_;
    mutable CFont latin_, japanese_;
    CFont* before_;
    CFont* measured_before_;
    UINT align_before_;
};

}  // namespace cephtool
