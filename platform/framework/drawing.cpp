#include "framework/drawing.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "platform/framework/surface_state.h"

namespace {

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

}  // namespace

namespace tool {

LivingHandles<HDC, CDC>& living_surfaces() {
    static auto& living = *new LivingHandles<HDC, CDC>;  // never destroyed: surfaces may live longer than a library
    return living;
}

CSize described_extent(const CFont& selected, int count) {
    LOGFONTA font = stock_font;
    selected.GetLogFont(&font);
    if (font.lfHeight == 0) font.lfHeight = stock_font.lfHeight;
    const std::int64_t height = std::abs(std::int64_t{font.lfHeight}), width = height * std::max(count, 0) / 2;
    const auto bounded = [](std::int64_t size) {
        return static_cast<int>(std::min<std::int64_t>(size, std::numeric_limits<int>::max()));
    };
    return {bounded(width), bounded(height)};
}

}  // namespace tool

CGdiObject::~CGdiObject() = default;

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
    : m_hDC(tool::living_surfaces().add(this)),
      stock_pen_(PS_SOLID, 1, RGB(0, 0, 0)),
      stock_brush_(RGB(255, 255, 255)) {
    stock_font_.CreateFontIndirectA(&stock_font);
}

CDC::~CDC() {
    tool::living_surfaces().remove(this);
}
