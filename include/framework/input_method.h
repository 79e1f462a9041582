// The input method of a window as an in-memory model, and the forms of kana.
#pragma once

#include "framework/export.h"
#include "framework/scalars.h"
#include "framework/text.h"
#include "framework/window.h"

#if !defined(_WIN32)
// Bits of the conversion mode.
enum : DWORD {
    IME_CMODE_ALPHANUMERIC = 0x0000,
    IME_CMODE_NATIVE = 0x0001,
    IME_CMODE_KATAKANA = 0x0002,
    IME_CMODE_FULLSHAPE = 0x0008,
    IME_CMODE_ROMAN = 0x0010
};
#endif

// Addition: what a host or a test attaches to a window with CWnd::SetInputMethod.
class TOOL_API CInputMethod {
 public:
    virtual ~CInputMethod();

    // The system's own asks the system; these defaults are the members below.
    virtual BOOL GetOpenStatus() const { return m_bOpen; }
    virtual void SetOpenStatus(BOOL open) { m_bOpen = open; }
    virtual DWORD GetConversion() const { return m_dwConversion; }
    virtual void SetConversion(DWORD conversion) { m_dwConversion = conversion; }  // the sentence mode stays
    virtual CString GetReading() const { return m_strReading; }

    BOOL m_bOpen = FALSE;
    DWORD m_dwConversion = IME_CMODE_ALPHANUMERIC;  // IME_CMODE_ bits
    DWORD m_dwSentence = 0;
    CString m_strReading;  // of the last confirmed text, in hiragana
};

#if !defined(_WIN32)
enum : DWORD {
    LCMAP_HIRAGANA = 0x00100000,
    LCMAP_KATAKANA = 0x00200000,
    LCMAP_HALFWIDTH = 0x00400000,
    LCMAP_FULLWIDTH = 0x00800000
};
#endif

// Addition: what LCMapString gives for a Japanese text and the LCMAP_ bits above; other characters stay.
// LCMAP_KATAKANA | LCMAP_HALFWIDTH turns full-width hiragana into half-width katakana, voiced marks apart.
TOOL_API CString MapKana(LPCSTR text, DWORD flags);
