// CDC, the drawing surface, and the pens, brushes, fonts and regions it draws with.
//
// A host's surface derives from CDC and overrides the operations it can draw; everything else has a harmless default.
// On Windows a CDC that a device context is attached to draws there.
// It asks GetCurrentPen, GetBkMode and their like when it draws: CDC itself keeps all state, so that SelectObject,
// SetROP2 and so on need no override. (Whoever overrides one of several functions of a name writes `using CDC::name`.)
#pragma once

#include <vector>

#include "framework/export.h"
#include "framework/plane.h"
#include "framework/scalars.h"

#if !defined(_WIN32)
// Pens: one style, in geometric ones with the bits of kind and end cap.
enum {
    PS_SOLID = 0,
    PS_DASH = 1,
    PS_DOT = 2,
    PS_DASHDOT = 3,
    PS_DASHDOTDOT = 4,
    PS_NULL = 5,
    PS_INSIDEFRAME = 6,
    PS_STYLE_MASK = 0xF,
    PS_ENDCAP_ROUND = 0,
    PS_ENDCAP_SQUARE = 0x100,
    PS_ENDCAP_FLAT = 0x200,
    PS_ENDCAP_MASK = 0xF00,
    PS_JOIN_ROUND = 0,
    PS_JOIN_BEVEL = 0x1000,
    PS_JOIN_MITER = 0x2000,
    PS_JOIN_MASK = 0xF000,
    PS_COSMETIC = 0,
    PS_GEOMETRIC = 0x10000,
    PS_TYPE_MASK = 0xF0000
};

enum : UINT { BS_SOLID = 0, BS_NULL = 1, BS_HOLLOW = 1 };

// Polygon fill modes: inside is what a ray leaves an odd number of times, or what the outline winds around.
enum { ALTERNATE = 1, WINDING = 2 };

// Raster operations: how the colour drawn (pen) and the one there combine.
enum {
    R2_BLACK = 1,
    R2_NOTMERGEPEN = 2,
    R2_MASKNOTPEN = 3,
    R2_NOTCOPYPEN = 4,
    R2_MASKPENNOT = 5,
    R2_NOT = 6,
    R2_XORPEN = 7,
    R2_NOTMASKPEN = 8,
    R2_MASKPEN = 9,
    R2_NOTXORPEN = 10,
    R2_NOP = 11,
    R2_MERGENOTPEN = 12,
    R2_COPYPEN = 13,
    R2_MERGEPENNOT = 14,
    R2_MERGEPEN = 15,
    R2_WHITE = 16
};

// Whether text and the gaps of dashed lines paint their background.
enum { TRANSPARENT = 1, OPAQUE = 2 };

// Which point of a text stands at the given place; TA_LEFT | TA_TOP is 0.
enum : UINT {
    TA_NOUPDATECP = 0,
    TA_UPDATECP = 1,
    TA_LEFT = 0,
    TA_RIGHT = 2,
    TA_CENTER = 6,
    TA_TOP = 0,
    TA_BOTTOM = 8,
    TA_BASELINE = 24
};

// Placement of text in a rectangle.
enum : UINT {
    DT_TOP = 0,
    DT_LEFT = 0,
    DT_CENTER = 0x1,
    DT_RIGHT = 0x2,
    DT_VCENTER = 0x4,
    DT_BOTTOM = 0x8,
    DT_WORDBREAK = 0x10,
    DT_SINGLELINE = 0x20,
    DT_NOCLIP = 0x100,
    DT_CALCRECT = 0x400,
    DT_NOPREFIX = 0x800
};

// Map modes. In MM_TEXT a unit is a device pixel and y points down; in the others y points up and a unit is 0.1 mm
// (MM_LOMETRIC), 0.01 mm (MM_HIMETRIC), 0.01 or 0.001 inch, or 1/1440 inch (MM_TWIPS).
enum {
    MM_TEXT = 1,
    MM_LOMETRIC = 2,
    MM_HIMETRIC = 3,
    MM_LOENGLISH = 4,
    MM_HIENGLISH = 5,
    MM_TWIPS = 6,
    MM_ISOTROPIC = 7,
    MM_ANISOTROPIC = 8
};

// Device capabilities: size in mm and in pixels, colour depth, pixels an inch.
enum { HORZSIZE = 4, VERTSIZE = 6, HORZRES = 8, VERTRES = 10, BITSPIXEL = 12, LOGPIXELSX = 88, LOGPIXELSY = 90 };

enum { FW_DONTCARE = 0, FW_NORMAL = 400, FW_BOLD = 700 };
enum : BYTE { ANSI_CHARSET = 0, DEFAULT_CHARSET = 1, SHIFTJIS_CHARSET = 128 };
enum : BYTE { DEFAULT_QUALITY = 0, DRAFT_QUALITY = 1, PROOF_QUALITY = 2, NONANTIALIASED_QUALITY = 3 };

inline constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;

struct LOGBRUSH {
    UINT lbStyle;
    COLORREF lbColor;
    DWORD_PTR lbHatch;
};

inline constexpr int LF_FACESIZE = 32;

struct LOGFONTA {
    LONG lfHeight;  // above 0 of the cell, below 0 of the characters; 0 the surface's own size
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    char lfFaceName[LF_FACESIZE];  // code page 932
};
#endif

#if defined(_WIN32)
namespace tool {
// A drawing object of the system's. Copies are empty, as each owner makes and deletes its own.
class SystemObject {
 public:
    SystemObject() = default;
    SystemObject(const SystemObject&) {}
    SystemObject& operator=(const SystemObject&) { return reset(), *this; }
    ~SystemObject() { reset(); }
    void reset(HGDIOBJ object = nullptr, bool owned = false) {
        if (owned_) ::DeleteObject(object_);
        object_ = object, owned_ = owned;
    }
    HGDIOBJ get() const { return object_; }

 private:
    HGDIOBJ object_ = nullptr;
    bool owned_ = false;
};
}  // namespace tool
#endif

// What a surface draws with: a plain description. It exists from its creator's success to DeleteObject, and must
// outlive its selection into a surface.
class TOOL_API CGdiObject {
 public:
    virtual ~CGdiObject();
    BOOL DeleteObject();  // FALSE when there was nothing
    BOOL Exists() const { return exists_; }
#if defined(_WIN32)
    // The system's object of this description, made when it is first asked for and gone with the description; null when
    // there is none. A copy of this object makes its own.
    HGDIOBJ GetSafeHandle() const;
#endif

 protected:
    CGdiObject() = default;
    CGdiObject(const CGdiObject&) = default;
    CGdiObject& operator=(const CGdiObject&) = default;
    BOOL Create(bool valid);

 private:
    bool exists_ = false;

#if defined(_WIN32)
    friend class CDC;
    virtual HGDIOBJ MakeSystemObject() const {
        return nullptr;
    }
    // Describes an object of the system's that stays its maker's.
    void Adopt(HGDIOBJ object);
    virtual void Describe(HGDIOBJ) {}

    mutable tool::SystemObject system_;
#endif
};

class TOOL_API CPen : public CGdiObject {
 public:
    CPen() = default;
    CPen(int style, int width, COLORREF color);
    CPen(int style, int width, const LOGBRUSH* brush);

    // A cosmetic pen: styles 0 to 6, any other fails. Dashes and dots wider than 1 are to be drawn solid; a width of 0
    // is one pixel.
    BOOL CreatePen(int style, int width, COLORREF color);
    // A pen of the style's kind (PS_GEOMETRIC: its dashes may be wide, the unit of a dash is the pen's width).
    BOOL CreatePen(int style, int width, const LOGBRUSH* brush);

    // Additions: what a surface reads. The style comes with its bits.
    int GetStyle() const { return style_; }
    int GetWidth() const { return width_; }
    COLORREF GetColor() const { return color_; }

 private:
#if defined(_WIN32)
    HGDIOBJ MakeSystemObject() const override;
    void Describe(HGDIOBJ pen) override;
#endif
    int style_ = PS_SOLID, width_ = 1;
    COLORREF color_ = 0;
};

class TOOL_API CBrush : public CGdiObject {
 public:
    CBrush() = default;
    explicit CBrush(COLORREF color);

    BOOL CreateSolidBrush(COLORREF color);
    BOOL CreateBrushIndirect(const LOGBRUSH* brush);  // BS_SOLID or BS_NULL, any other style fails
    int GetLogBrush(LOGBRUSH* brush) const;           // bytes written, 0 without a brush

 private:
#if defined(_WIN32)
    HGDIOBJ MakeSystemObject() const override;
    void Describe(HGDIOBJ brush) override;
#endif
    LOGBRUSH brush_ = {BS_SOLID, 0, 0};
};

class TOOL_API CFont : public CGdiObject {
 public:
    BOOL CreateFontIndirectA(const LOGFONTA* font);
    int GetLogFont(LOGFONTA* font) const;  // bytes written, 0 without a font

 private:
#if defined(_WIN32)
    HGDIOBJ MakeSystemObject() const override;
    void Describe(HGDIOBJ font) override;
#endif
    LOGFONTA font_ = {};
};

class TOOL_API CRgn : public CGdiObject {
 public:
    // Two points or more, closed from the last to the first; mode ALTERNATE or WINDING.
    BOOL CreatePolygonRgn(const POINT* points, int count, int mode);

    // Additions: what a surface reads.
    const std::vector<POINT>& GetPoints() const { return points_; }
    int GetPolyFillMode() const { return mode_; }

 private:
#if defined(_WIN32)
    HGDIOBJ MakeSystemObject() const override;
#endif
    std::vector<POINT> points_;
    int mode_ = ALTERNATE;
};

// Coordinates are logical units of the map mode. A surface belongs to one thread at a time.
class TOOL_API CDC {
 public:
    // A black pen of width 1, a white brush, a 16 unit font "ＭＳ ゴシック", R2_COPYPEN, OPAQUE, black text, TA_LEFT |
    // TA_TOP, current position (0, 0), not printing.
    CDC();
    virtual ~CDC();
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    HDC m_hDC;
    BOOL m_bPrinting = FALSE;
    HDC GetSafeHdc() const { return m_hDC; }
    // Null for a handle that is null or whose surface is gone.
    // On Windows a device context that nothing is attached to gets an object of the calling thread's, with the state
    // that the context has now.
    static CDC* FromHandle(HDC dc);

#if defined(_WIN32)
    // Draws there from now on, until Detach, with the pens, modes and colours that the context has; it stays its
    // maker's. FALSE when there is no such context. What is selected into it behind this object's back is put back by
    // the next SelectObject pair; the Get functions below know only what was set through this object.
    BOOL Attach(HDC dc);
    HDC Detach();  // null when nothing was attached
#endif

    // --- State: each returns what was set before -------------------------------------------------------------
    // Null, and no change, for an object that is null or does not exist.
    virtual CPen* SelectObject(CPen* pen);
    virtual CBrush* SelectObject(CBrush* brush);
    virtual CFont* SelectObject(CFont* font);
    // 0, and no change, for a mode that does not exist.
    virtual int SetROP2(int mode);
    virtual int SetBkMode(int mode);

    virtual COLORREF SetTextColor(COLORREF color);
    virtual UINT SetTextAlign(UINT align);
    virtual CPoint MoveTo(int x, int y);

    CPen* GetCurrentPen() const {
        return pen_;
    }
    CBrush* GetCurrentBrush() const {
        return brush_;
    }
    CFont* GetCurrentFont() const {
        return font_;
    }
    int GetROP2() const {
        return rop_;
    }
    int GetBkMode() const {
        return background_mode_;
    }
    COLORREF GetTextColor() const {
        return text_color_;
    }
    UINT GetTextAlign() const {
        return text_align_;
    }
    CPoint GetCurrentPosition() const {
        return position_;
    }

    // --- The device ------------------------------------------------------------------------------------------
    virtual int GetMapMode() const;              // MM_TEXT
    virtual int GetDeviceCaps(int index) const;  // 0: unknown
    virtual BOOL IsPrinting() const;             // m_bPrinting
    // CLR_INVALID where the surface has no pixel; the default has none at all.
    virtual COLORREF GetPixel(int x, int y) const;

    // --- Drawing: the defaults draw nothing and succeed ------------------------------------------------------
    // From the current position up to, but without, (x, y), which becomes the current position: an override calls this
    // one, too.
    virtual BOOL LineTo(int x, int y);
    // From the first point on; the current position stays.
    virtual BOOL Polyline(const POINT* points, int count);
    // Outlined with the pen, filled with the brush; right and bottom are exclusive.
    virtual BOOL Polygon(const POINT* points, int count);
    virtual BOOL Rectangle(int left, int top, int right, int bottom);
    virtual BOOL Ellipse(int left, int top, int right, int bottom);
    // The part of that ellipse's outline that runs counterclockwise, as seen, from the ray through `start` to the one
    // through `end`; all of it when they are the same.
    virtual BOOL Arc(int left, int top, int right, int bottom, int startX, int startY, int endX, int endY);
    // Filled with the given brush alone.
    virtual BOOL FillRgn(CRgn* region, CBrush* brush);
    virtual void FillRect(const RECT* rect, CBrush* brush);
    virtual void FrameRect(const RECT* rect, CBrush* brush);  // a border of one unit inside the rectangle

    // --- Text in code page 932 -------------------------------------------------------------------------------
    virtual BOOL TextOut(int x, int y, LPCSTR text, int count);
    // The default counts half the font's height a byte, as MS Gothic has it.
    virtual CSize GetTextExtent(LPCSTR text, int count) const;
    // Draws text in the rectangle by the DT_ bits and returns its height; count -1 is up to the NUL. The default places
    // each line with TextOut by its extent, breaks with DT_WORDBREAK at blanks and beside double-byte characters, with
    // DT_CALCRECT only sets the rectangle's right and bottom, and neither clips nor underlines after "&".
    virtual int DrawText(LPCSTR text, int count, RECT* rect, UINT format);

 private:
    CPen stock_pen_;
    CBrush stock_brush_;
    CFont stock_font_;
    CPen* pen_ = &stock_pen_;
    CBrush* brush_ = &stock_brush_;
    CFont* font_ = &stock_font_;
    int rop_ = R2_COPYPEN, background_mode_ = OPAQUE;
    COLORREF text_color_ = 0;
    UINT text_align_ = TA_LEFT | TA_TOP;
    CPoint position_;

#if defined(_WIN32)
    void Follow(HDC dc);
    template <class Object>
    Object* Select(Object*& current, Object& stock, Object* object);

    bool attached_ = false;
#endif
};
