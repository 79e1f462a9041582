// A CDC that no device stands behind: it keeps its state and draws nothing.
#include "framework/drawing.h"
#include "platform/framework/surface_state.h"

BOOL CGdiObject::DeleteObject() {
    return std::exchange(exists_, false);
}

BOOL CGdiObject::Create(bool valid) {
    return exists_ = valid;
}

CDC* CDC::FromHandle(HDC dc) {
    return tool::living_surfaces().find(dc);
}

CPen* CDC::SelectObject(CPen* pen) {
    return tool::select(pen_, pen);
}

CBrush* CDC::SelectObject(CBrush* brush) {
    return tool::select(brush_, brush);
}

CFont* CDC::SelectObject(CFont* font) {
    return tool::select(font_, font);
}

int CDC::SetROP2(int mode) {
    return tool::set_mode(rop_, mode, R2_BLACK, R2_WHITE);
}

int CDC::SetBkMode(int mode) {
    return tool::set_mode(background_mode_, mode, TRANSPARENT, OPAQUE);
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
    return tool::described_extent(*font_, count);
}

int CDC::DrawText(LPCSTR text, int count, RECT* rect, UINT format) {
    return tool::draw_text(*this, text, count, rect, format);
}
