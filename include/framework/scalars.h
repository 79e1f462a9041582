// The host framework's integer types at their own widths (LONG is 32 bits on every system) and the colour type.
#pragma once

#include <cstdint>

#if defined(_WIN32)

// The system's own types, so that a host can include its headers too, in any order. As in the host framework their
// macros rename members (TextOut is TextOutA); commdlg.h is here so that they do so in every file.
#if defined(UNICODE) || defined(_UNICODE)
#error "Texts are multibyte here (code page 932): build without UNICODE."
#endif
#if !defined(WIN32_LEAN_AND_MEAN)
#define WIN32_LEAN_AND_MEAN
#endif
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>
// Behind windows.h.
#include <commdlg.h>
#include <imm.h>
// Empty words of 16-bit times that names here would vanish in.
#undef near
#undef far
#undef NEAR
#undef FAR
#define NEAR
#define FAR

#else

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using LPCSTR = const char*;
using LPSTR = char*;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using INT_PTR = std::intptr_t;
using DWORD_PTR = std::uintptr_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;

// Handles stand for a window or a drawing surface and are never pointed into.
using HWND = struct HWND__*;
using HDC = struct HDC__*;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

// A colour: red in the low byte, then green, then blue; the top byte is 0.
using COLORREF = DWORD;

constexpr COLORREF RGB(int red, int green, int blue) {
    return static_cast<COLORREF>(static_cast<BYTE>(red)) | static_cast<COLORREF>(static_cast<BYTE>(green)) << 8 |
           static_cast<COLORREF>(static_cast<BYTE>(blue)) << 16;
}
constexpr BYTE GetRValue(COLORREF colour) {
    return static_cast<BYTE>(colour);
}
constexpr BYTE GetGValue(COLORREF colour) {
    return static_cast<BYTE>(colour >> 8);
}
constexpr BYTE GetBValue(COLORREF colour) {
    return static_cast<BYTE>(colour >> 16);
}

#endif
