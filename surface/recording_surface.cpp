#include "surface/recording_surface.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <span>

#include "CodePage.h"

namespace tool {

namespace {

using Points = std::span<const POINT>;

std::string printed(const char* format, unsigned value) {
    char text[16];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string in_hex(int style) {
    return printed("%x", static_cast<unsigned>(style));
}

std::string in_colour(COLORREF color) {
    return printed("%06x", static_cast<unsigned>(RGB(GetBValue(color), GetGValue(color), GetRValue(color))));
}

std::string in_colour(const CBrush* brush) {
    LOGBRUSH description;
    if (!brush || !brush->GetLogBrush(&description)) return "none";
    return description.lbStyle == BS_NULL ? "null" : in_colour(description.lbColor);
}

// Quoted; quotes, backslashes and control characters as \xHH, so that a text never ends its line.
std::string in_quotes(const std::string& code_page_932) {
    std::string quoted = "\"";
    for (const char c : Utf8FromCodePage932(code_page_932.c_str())) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || c == '"' || c == '\\')
            quoted += printed("\\x%02X", byte);
        else
            quoted += c;
    }
    return quoted + '"';
}

void append(std::string& line, const std::string& word) {
    line += ' ';
    line += word;
}
void append(std::string& line, std::int64_t number) {
    append(line, std::to_string(number));
}
void append(std::string& line, const RECT& rect) {
    for (const LONG edge : {rect.left, rect.top, rect.right, rect.bottom}) append(line, edge);
}
void append(std::string& line, Points points) {
    for (const POINT& p : points) append(line, p.x), append(line, p.y);
}

Points points_of(const POINT* points, int count) {
    return points && count > 0 ? Points(points, static_cast<std::size_t>(count)) : Points();
}

}  // namespace

template <class... Words>
void RecordingSurface::write(const char* command, const Words&... words) {
    text_ += command;
    (append(text_, words), ...);
    text_ += '\n';
}

void RecordingSurface::set_size(int width_px, int height_px, int width_mm, int height_mm) {
    size_px_ = CSize(width_px, height_px);
    size_mm_ = CSize(width_mm, height_mm);
}

int RecordingSurface::GetDeviceCaps(int index) const {
    switch (index) {
        case HORZRES: return size_px_.cx;
        case VERTRES: return size_px_.cy;
        case HORZSIZE: return size_mm_.cx;
        case VERTSIZE: return size_mm_.cy;
        default: return 0;
    }
}

CPen* RecordingSurface::SelectObject(CPen* pen) {
    if (pen && pen->Exists()) {
        const bool geometric = (pen->GetStyle() & PS_TYPE_MASK) == PS_GEOMETRIC;
        write(geometric ? "extpen" : "pen", in_hex(pen->GetStyle()), pen->GetWidth(), in_colour(pen->GetColor()));
    }
    return CDC::SelectObject(pen);
}

CBrush* RecordingSurface::SelectObject(CBrush* brush) {
    if (brush && brush->Exists()) write("brush", in_colour(brush));
    return CDC::SelectObject(brush);
}

CFont* RecordingSurface::SelectObject(CFont* font) {
    LOGFONTA f;
    if (font && font->GetLogFont(&f))
        write("font", f.lfHeight, f.lfWeight, f.lfItalic, f.lfUnderline, f.lfStrikeOut, f.lfCharSet, f.lfQuality,
              in_quotes(std::string(f.lfFaceName, strnlen(f.lfFaceName, sizeof f.lfFaceName))));
    return CDC::SelectObject(font);
}

int RecordingSurface::SetROP2(int mode) {
    write("rop", mode);
    return CDC::SetROP2(mode);
}

int RecordingSurface::SetBkMode(int mode) {
    write("bkmode", mode);
    return CDC::SetBkMode(mode);
}

COLORREF RecordingSurface::SetTextColor(COLORREF color) {
    write("textcolor", in_colour(color));
    return CDC::SetTextColor(color);
}

UINT RecordingSurface::SetTextAlign(UINT align) {
    write("textalign", align);
    return CDC::SetTextAlign(align);
}

CPoint RecordingSurface::MoveTo(int x, int y) {
    write("move", x, y);
    return CDC::MoveTo(x, y);
}

BOOL RecordingSurface::LineTo(int x, int y) {
    write("line", x, y);
    return CDC::LineTo(x, y);
}

BOOL RecordingSurface::Polyline(const POINT* points, int count) {
    write("polyline", points_of(points, count));
    return TRUE;
}

BOOL RecordingSurface::Polygon(const POINT* points, int count) {
    write("polygon", points_of(points, count));
    return TRUE;
}

BOOL RecordingSurface::Rectangle(int left, int top, int right, int bottom) {
    write("rect", CRect(left, top, right, bottom));
    return TRUE;
}

BOOL RecordingSurface::Ellipse(int left, int top, int right, int bottom) {
    write("ellipse", CRect(left, top, right, bottom));
    return TRUE;
}

BOOL RecordingSurface::Arc(int left, int top, int right, int bottom, int startX, int startY, int endX, int endY) {
    write("arc", CRect(left, top, right, bottom), startX, startY, endX, endY);
    return TRUE;
}

BOOL RecordingSurface::FillRgn(CRgn* region, CBrush* brush) {
    if (!region || !region->Exists()) return FALSE;
    write("fillrgn", in_colour(brush), region->GetPolyFillMode(), Points(region->GetPoints()));
    return TRUE;
}

void RecordingSurface::FillRect(const RECT* rect, CBrush* brush) {
    if (rect) write("fillrect", in_colour(brush), *rect);
}

void RecordingSurface::FrameRect(const RECT* rect, CBrush* brush) {
    if (rect) write("framerect", in_colour(brush), *rect);
}

BOOL RecordingSurface::TextOut(int x, int y, LPCSTR text, int count) {
    if (!text || count < 0) return FALSE;
    write("text", x, y, in_quotes(std::string(text, static_cast<std::size_t>(count))));
    return TRUE;
}

}  // namespace tool
