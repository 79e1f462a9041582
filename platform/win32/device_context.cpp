// A CDC that draws on a device context of the system's. Without one it keeps its state and draws nothing.
#include <cstring>
#include <memory>
#include <unordered_map>
#include <utility>

#include "framework/drawing.h"
#include "platform/framework/surface_state.h"
#include "platform/win32/names.h"

namespace {

// The first `count` bytes of a text in code page 932: by the library's own table, so that neither the font's character
// set nor the system's code page has a say.
std::wstring shown(LPCSTR text, int count) {
    return text && count > 0 ? tool::win32::wide({text, static_cast<std::size_t>(count)}) : std::wstring();
}

int length_of(const std::wstring& text) {
    return static_cast<int>(text.size());
}

bool is_device_context(HDC dc) {
    const DWORD type = GetObjectType(dc);
    return type == OBJ_DC || type == OBJ_MEMDC || type == OBJ_ENHMETADC || type == OBJ_METADC;
}

}  // namespace

CDC* CDC::FromHandle(HDC dc) {
    if (CDC* const own = tool::living_surfaces().find(dc)) return own;
    thread_local std::unordered_map<HDC, std::unique_ptr<CDC>> passing;
    std::erase_if(passing, [](const auto& entry) { return !is_device_context(entry.first); });
    if (!is_device_context(dc)) return nullptr;
    std::unique_ptr<CDC>& object = passing[dc];
    if (!object) object = std::make_unique<CDC>();
    object->Follow(dc);
    return object.get();
}

BOOL CDC::Attach(HDC dc) {
    if (!is_device_context(dc)) return FALSE;
    Follow(dc);
    tool::living_surfaces().enter(dc, this);
    return TRUE;
}

HDC CDC::Detach() {
    if (!attached_) return nullptr;
    attached_ = false;
    tool::living_surfaces().remove(this);
    return std::exchange(m_hDC, tool::living_surfaces().add(this));
}

void CDC::Follow(HDC dc) {
    m_hDC = dc, attached_ = true;
    stock_pen_.Adopt(GetCurrentObject(dc, OBJ_PEN)), pen_ = &stock_pen_;
    stock_brush_.Adopt(GetCurrentObject(dc, OBJ_BRUSH)), brush_ = &stock_brush_;
    stock_font_.Adopt(GetCurrentObject(dc, OBJ_FONT)), font_ = &stock_font_;
    rop_ = ::GetROP2(dc), background_mode_ = ::GetBkMode(dc);
    text_color_ = ::GetTextColor(dc), text_align_ = ::GetTextAlign(dc);
    POINT position{};
    GetCurrentPositionEx(dc, &position);
    position_ = position;
}

template <class Object>
Object* CDC::Select(Object*& current, Object& stock, Object* object) {
    if (!object || !object->Exists()) return nullptr;
    if (attached_) {
        const HGDIOBJ handle = object->GetSafeHandle();
        const HGDIOBJ before = handle ? ::SelectObject(m_hDC, handle) : nullptr;
        if (!before) return nullptr;
        if (before != current->GetSafeHandle()) {  // selected behind this object's back
            stock.Adopt(before);
            current = &stock;
        }
    }
    return std::exchange(current, object);
}

CPen* CDC::SelectObject(CPen* pen) {
    return Select(pen_, stock_pen_, pen);
}

CBrush* CDC::SelectObject(CBrush* brush) {
    return Select(brush_, stock_brush_, brush);
}

CFont* CDC::SelectObject(CFont* font) {
    return Select(font_, stock_font_, font);
}

int CDC::SetROP2(int mode) {
    const int before = tool::set_mode(rop_, mode, R2_BLACK, R2_WHITE);
    return attached_ && before ? ::SetROP2(m_hDC, mode) : before;
}

int CDC::SetBkMode(int mode) {
    const int before = tool::set_mode(background_mode_, mode, TRANSPARENT, OPAQUE);
    return attached_ && before ? ::SetBkMode(m_hDC, mode) : before;
}

COLORREF CDC::SetTextColor(COLORREF color) {
    const COLORREF before = std::exchange(text_color_, color);
    return attached_ ? ::SetTextColor(m_hDC, color) : before;
}

UINT CDC::SetTextAlign(UINT align) {
    const UINT before = std::exchange(text_align_, align);
    return attached_ ? ::SetTextAlign(m_hDC, align) : before;
}

CPoint CDC::MoveTo(int x, int y) {
    POINT before = std::exchange(position_, CPoint(x, y));
    if (attached_) MoveToEx(m_hDC, x, y, &before);
    return before;
}

int CDC::GetMapMode() const {
    return attached_ ? ::GetMapMode(m_hDC) : MM_TEXT;
}

int CDC::GetDeviceCaps(int index) const {
    return attached_ ? ::GetDeviceCaps(m_hDC, index) : 0;
}

BOOL CDC::IsPrinting() const {
    return m_bPrinting;
}

COLORREF CDC::GetPixel(int x, int y) const {
    return attached_ ? ::GetPixel(m_hDC, x, y) : CLR_INVALID;
}

BOOL CDC::LineTo(int x, int y) {
    position_ = CPoint(x, y);
    return !attached_ || ::LineTo(m_hDC, x, y);
}

BOOL CDC::Polyline(const POINT* points, int count) {
    return !attached_ || ::Polyline(m_hDC, points, count);
}

BOOL CDC::Polygon(const POINT* points, int count) {
    return !attached_ || ::Polygon(m_hDC, points, count);
}

BOOL CDC::Rectangle(int left, int top, int right, int bottom) {
    return !attached_ || ::Rectangle(m_hDC, left, top, right, bottom);
}

BOOL CDC::Ellipse(int left, int top, int right, int bottom) {
    return !attached_ || ::Ellipse(m_hDC, left, top, right, bottom);
}

BOOL CDC::Arc(int left, int top, int right, int bottom, int startX, int startY, int endX, int endY) {
    return !attached_ || ::Arc(m_hDC, left, top, right, bottom, startX, startY, endX, endY);
}

BOOL CDC::FillRgn(CRgn* region, CBrush* brush) {
    if (!attached_) return TRUE;
    if (!region || !brush) return FALSE;
    return ::FillRgn(m_hDC, static_cast<HRGN>(region->GetSafeHandle()), static_cast<HBRUSH>(brush->GetSafeHandle()));
}

void CDC::FillRect(const RECT* rect, CBrush* brush) {
    if (attached_ && rect && brush) ::FillRect(m_hDC, rect, static_cast<HBRUSH>(brush->GetSafeHandle()));
}

void CDC::FrameRect(const RECT* rect, CBrush* brush) {
    if (attached_ && rect && brush) ::FrameRect(m_hDC, rect, static_cast<HBRUSH>(brush->GetSafeHandle()));
}

BOOL CDC::TextOut(int x, int y, LPCSTR text, int count) {
    if (!attached_) return TRUE;
    const std::wstring wide = shown(text, count);
    return TextOutW(m_hDC, x, y, wide.data(), length_of(wide));
}

CSize CDC::GetTextExtent(LPCSTR text, int count) const {
    if (!attached_) return tool::described_extent(*font_, count);
    const std::wstring wide = shown(text, count);
    SIZE size{};
    if (wide.empty()) {  // the system tells no height of nothing
        TEXTMETRICW metrics{};
        GetTextMetricsW(m_hDC, &metrics);
        size.cy = metrics.tmHeight;
    } else {
        GetTextExtentPoint32W(m_hDC, wide.data(), length_of(wide), &size);
    }
    return {size.cx, size.cy};
}

int CDC::DrawText(LPCSTR text, int count, RECT* rect, UINT format) {
    if (!attached_) return tool::draw_text(*this, text, count, rect, format);
    if (!text || !rect || count < -1) return 0;
    const std::wstring wide = shown(text, count < 0 ? static_cast<int>(std::strlen(text)) : count);
    return DrawTextW(m_hDC, wide.data(), length_of(wide), rect, format);
}
