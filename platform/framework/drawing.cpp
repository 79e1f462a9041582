#include "framework/drawing.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string_view>
#include <utility>

#include "platform/framework/living_handles.h"

namespace {

using LivingSurfaces = tool::LivingHandles<HDC, CDC>;

LivingSurfaces& living_surfaces() {
    static LivingSurfaces living;
    return living;
}

constexpr LOGFONTA stock_font = {
    .lfHeight = 16,
    .lfWidth = 0,
    .lfEscapement = 0,
    .lfOrientation = 0,
    .lfWeight = FW_NORMAL,
    .lfItalic = FALSE,
    .lfUnderline = FALSE,
    .lfStrikeOut = FALSE,
    .lfCharSet = SHIFTJIS_CHARSET,
    .lfOutPrecision = 0,
    .lfClipPrecision = 0,
    .lfQuality = DEFAULT_QUALITY,
    .lfPitchAndFamily = 0,
    .lfFaceName = "\x82\x6C\x82\x72 \x83\x53\x83\x56\x83\x62\x83\x4E",  // ＭＳ ゴシック
};

// What was current before; null and no change for an object that cannot be selected.
template <class Object>
Object* select(Object*& current, Object* object) {
    return object && object->Exists() ? std::exchange(current, object) : nullptr;
}

// What was set before; 0 and no change outside first to last.
int set_mode(int& current, int mode, int first, int last) {
    return mode >= first && mode <= last ? std::exchange(current, mode) : 0;
}

}  // namespace

CGdiObject::~CGdiObject() = default;

BOOL CGdiObject::DeleteObject() {
    return std::exchange(exists_, false);
}

CPen::CPen(int style, int width, COLORREF color) {
    CreatePen(style, width, color);
}

CPen::CPen(int style, int width, const LOGBRUSH* brush) {
    CreatePen(style, width, brush);
}

BOOL CPen::CreatePen(int style, int width, COLORREF color) {
    // The magnitude of a width counts; the smallest number has none.
    style_ = style, width_ = std::abs(std::max(width, -std::numeric_limits<int>::max())), color_ = color;
    return Create(style >= PS_SOLID && style <= PS_INSIDEFRAME);
}

BOOL CPen::CreatePen(int style, int width, const LOGBRUSH* brush) {
    style_ = style, width_ = width, color_ = brush ? brush->lbColor : 0;
    return Create(brush && brush->lbStyle == BS_SOLID && width >= 0 && (style & PS_STYLE_MASK) <= PS_INSIDEFRAME);
}

CBrush::CBrush(COLORREF color) {
    CreateSolidBrush(color);
}

BOOL CBrush::CreateSolidBrush(COLORREF color) {
    brush_ = {BS_SOLID, color, 0};
    return Create(true);
}

BOOL CBrush::CreateBrushIndirect(const LOGBRUSH* brush) {
    if (brush) brush_ = *brush;
    return Create(brush && brush->lbStyle <= BS_NULL);
}

int CBrush::GetLogBrush(LOGBRUSH* brush) const {
    if (!Exists() || !brush) return 0;
    *brush = brush_;
    return sizeof *brush;
}

BOOL CFont::CreateFontIndirectA(const LOGFONTA* font) {
    if (font) font_ = *font;
    return Create(font != nullptr);
}

int CFont::GetLogFont(LOGFONTA* font) const {
    if (!Exists() || !font) return 0;
    *font = font_;
    return sizeof *font;
}

BOOL CRgn::CreatePolygonRgn(const POINT* points, int count, int mode) {
    const bool valid = points && count >= 2 && (mode == ALTERNATE || mode == WINDING);
    points_.clear();
    if (valid) points_.assign(points, points + count);
    mode_ = mode;
    return Create(valid);
}

CDC::CDC()
    : m_hDC(living_surfaces().add(this)), stock_pen_(PS_SOLID, 1, RGB(0, 0, 0)), stock_brush_(RGB(255, 255, 255)) {
    stock_font_.CreateFontIndirectA(&stock_font);
}

CDC::~CDC() {
    living_surfaces().remove(this);
}

CDC* CDC::FromHandle(HDC dc) {
    return living_surfaces().find(dc);
}

CPen* CDC::SelectObject(CPen* pen) {
    return select(pen_, pen);
}

CBrush* CDC::SelectObject(CBrush* brush) {
    return select(brush_, brush);
}

CFont* CDC::SelectObject(CFont* font) {
    return select(font_, font);
}

int CDC::SetROP2(int mode) {
    return set_mode(rop_, mode, R2_BLACK, R2_WHITE);
}

int CDC::SetBkMode(int mode) {
    return set_mode(background_mode_, mode, TRANSPARENT, OPAQUE);
}

COLORREF CDC::SetTextColor(COLORREF color) {
    return std::exchange(text_color_, color);
}

UINT CDC::SetTextAlign(UINT align) {
    return std::exchange(text_align_, align);
}

CPoint CDC::MoveTo(int x, int y) {
    return std::exchange(position_, CPoint(x, y));
}

int CDC::GetMapMode() const {
    return MM_TEXT;
}

int CDC::GetDeviceCaps(int) const {
    return 0;
}

BOOL CDC::IsPrinting() const {
    return m_bPrinting;
}

COLORREF CDC::GetPixel(int, int) const {
    return CLR_INVALID;
}

BOOL CDC::LineTo(int x, int y) {
    position_ = CPoint(x, y);
    return TRUE;
}

BOOL CDC::Polyline(const POINT*, int) {
    return TRUE;
}

BOOL CDC::Polygon(const POINT*, int) {
    return TRUE;
}

BOOL CDC::Rectangle(int, int, int, int) {
    return TRUE;
}

BOOL CDC::Ellipse(int, int, int, int) {
    return TRUE;
}

BOOL CDC::Arc(int, int, int, int, int, int, int, int) {
    return TRUE;
}

BOOL CDC::FillRgn(CRgn*, CBrush*) {
    return TRUE;
}

void CDC::FillRect(const RECT*, CBrush*) {}

void CDC::FrameRect(const RECT*, CBrush*) {}

BOOL CDC::TextOut(int, int, LPCSTR, int) {
    return TRUE;
}

CSize CDC::GetTextExtent(LPCSTR, int count) const {
    LOGFONTA font = stock_font;
    font_->GetLogFont(&font);
    if (font.lfHeight == 0) font.lfHeight = stock_font.lfHeight;
    const std::int64_t height = std::abs(std::int64_t{font.lfHeight}), width = height * std::max(count, 0) / 2;
    const auto bounded = [](std::int64_t size) {
        return static_cast<int>(std::min<std::int64_t>(size, std::numeric_limits<int>::max()));
    };
    return {bounded(width), bounded(height)};
}
