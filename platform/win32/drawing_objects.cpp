// The system's pens, brushes, fonts and regions behind the descriptions.
#include <cstddef>
#include <cstring>
#include <utility>

#include "framework/drawing.h"
#include "platform/framework/caller_buffer.h"
#include "platform/win32/names.h"

namespace {

// Both forms of a font are the same in front of its face's name.
static_assert(offsetof(LOGFONTA, lfFaceName) == offsetof(LOGFONTW, lfFaceName));

std::string_view face_of(const LOGFONTA& font) {
    return {font.lfFaceName, strnlen(font.lfFaceName, LF_FACESIZE)};
}

}  // namespace

BOOL CGdiObject::DeleteObject() {
    system_.reset();
    return std::exchange(exists_, false);
}

BOOL CGdiObject::Create(bool valid) {
    system_.reset();
    return exists_ = valid;
}

HGDIOBJ CGdiObject::GetSafeHandle() const {
    if (exists_ && !system_.get()) system_.reset(MakeSystemObject(), true);
    return system_.get();
}

void CGdiObject::Adopt(HGDIOBJ object) {
    Create(object != nullptr);
    Describe(object);
    system_.reset(object);
}

HGDIOBJ CPen::MakeSystemObject() const {
    if ((style_ & PS_TYPE_MASK) != PS_GEOMETRIC) return ::CreatePen(style_ & PS_STYLE_MASK, width_, color_);
    const LOGBRUSH brush = {BS_SOLID, color_, 0};
    return ExtCreatePen(static_cast<DWORD>(style_), static_cast<DWORD>(width_), &brush, 0, nullptr);
}

void CPen::Describe(HGDIOBJ pen) {
    LOGPEN plain;
    if (GetObjectW(pen, sizeof plain, &plain) != sizeof plain) return;  // an extended pen serves by its handle alone
    style_ = static_cast<int>(plain.lopnStyle), width_ = static_cast<int>(plain.lopnWidth.x), color_ = plain.lopnColor;
}

HGDIOBJ CBrush::MakeSystemObject() const {
    return ::CreateBrushIndirect(&brush_);
}

void CBrush::Describe(HGDIOBJ brush) {
    GetObjectW(brush, sizeof brush_, &brush_);
}

HGDIOBJ CFont::MakeSystemObject() const {
    LOGFONTW font{};
    std::memcpy(&font, &font_, offsetof(LOGFONTA, lfFaceName));
    tool::win32::wide(face_of(font_)).copy(font.lfFaceName, LF_FACESIZE - 1);
    return CreateFontIndirectW(&font);
}

void CFont::Describe(HGDIOBJ font) {
    LOGFONTW found{};
    GetObjectW(font, sizeof found, &found);
    std::memcpy(&font_, &found, offsetof(LOGFONTA, lfFaceName));
    tool::copy_cut(tool::win32::nearest_code_page_text(found.lfFaceName), font_.lfFaceName, LF_FACESIZE);
}

HGDIOBJ CRgn::MakeSystemObject() const {
    return ::CreatePolygonRgn(points_.data(), static_cast<int>(points_.size()), mode_);
}
