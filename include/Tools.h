// Tools for the host application: dates and ages, text and numbers, files, folders and settings, drawing.
//
// Texts and paths are code page 932. A null text counts as empty. Buffers for results belong to the caller and must
// hold what is stated; unless said otherwise a result must not overlap its source. Nothing is reported to the user
// except by GetLastErrMessage, WriteFile and WriteFileB; failure, a lack of memory included, gives the value stated.
#pragma once

#include "AnyPoint.h"
#include "framework/drawing.h"
#include "framework/export.h"
#include "framework/scalars.h"
#include "framework/text.h"
#include "framework/window.h"

#ifdef GetFileTitle
#undef GetFileTitle  // a macro of commdlg.h, under which CTools::GetFileTitle would have another name on Windows
#endif

class CFile;

class TOOL_API CTools {
 public:
    // --- Dates and ages ----------------------------------------------------------------------------------------
    // Stored dates are YYYYMMDD, year-months YYYYMM. They are not checked against the calendar. `ref` null is today.

    // A year from 2080 on comes out a hundred years earlier. Each of the three may be null.
    static void GetToday(int* year, int* month, int* day);
    // "2024/ 3/ 5", or with flag 1 "2024年 3月 5日"; what the date lacks is 0.
    static CString MakeDate(const char* ymd, unsigned int flag);
    // The stored date of "2001/12/31" or "98/1/2" (two digits: 1980 to 2079); what can't be read is 0. "" gives
    // "20000000".
    static CString MakeDateR(const char* text);
    // (Cacl: calc.) Completed years and months, for display; a month is 365/12 days. Whether a month counts that ends
    // on the very day is chance of rounding. When `ref` lies before birth the years are 0 and the months mean nothing.
    // Both numbers may be null.
    static void CaclAge(const char* birth, const char* ref, int* years, int* months);
    // All completed months, for growth and norms; a month is 30.4 days. Negative when `ref` lies before birth, 0
    // without a year. A short birth date is filled up with zeros first ("20001" is October), `ref` is not (January).
    static short CalcAge(const char* birth, const char* ref);
    // 1 when the date lies in the months from `fromYm` to `toYm`, else 0. "" as a bound is open, a date without a year
    // lies in every range, and one without a month is compared by years alone.
    static int MakeCompYmd(const char* ymd, const char* fromYm, const char* toYm);
    // (Nengappi: year, month and day.) A date into and out of the fields of a dialog, where 0 is an empty field. With
    // idDay 0 there are only year and month. A date too short changes nothing; with idDay 0 it empties the fields.
    static void SetNengappi(CWnd* dlg, UINT idYear, UINT idMonth, UINT idDay, const char* ymd);
    static CString GetNengappi(CWnd* dlg, UINT idYear, UINT idMonth, UINT idDay);

    // --- Text ------------------------------------------------------------------------------------------------
    // Copies at most `count` bytes of `src` from byte `start` (from 0) into `dst` (count + 1 bytes) and terminates
    // it. A start outside the text, a negative start or a negative count gives "". `dst` may be `src`.
    static void StrCut(char* src, char* dst, int start, int count);
    // Cuts trailing blanks (0x20 only) off in place.
    static void Del_Space(char* text);
    // Doubles every "&", so that a label shows it. `dst` holds up to 2 * length + 1 bytes.
    static void And_Check(char* src, char* dst);
    // Splits at the first "=". `key` receives at most 50 bytes and NO terminator: pass it zeroed, 51 bytes long.
    // `value` receives all that follows, terminated (length of src + 1 bytes). Without "=" the key is the start of
    // the text, again at most 50 bytes, and the value is "".
    static void Div_Str(const char* src, char* key, char* value);
    static void Div_Str(const CString& src, char* key, char* value);
    // As Div_Str, but a key in front of "=" has no limit (both buffers: length of src + 1, the key at least 51), and
    // in the value "%%" becomes "%" and a lone "%" at its end vanishes.
    static void Div_StrFree(const char* src, char* key, char* value);
    // The line at the start of `buffer`, up to a carriage return, a NUL or `max` bytes; nothing at or behind `max` is
    // read. *consumed is where the next line starts: 2 behind the line's length when a carriage return ended it (a
    // line feed is assumed behind it), else 1. It may thus pass the end of the text.
    static CString GetLineText(char* buffer, int* consumed, int max);
    // 1 when `count` is 0 or all `count` bytes are 0, else 0.
    static int IsNull(unsigned char* data, unsigned int count);

    // --- Numbers ---------------------------------------------------------------------------------------------
    // Fixed-point text with at least `decimals` and at most six decimals; the point always stays (3.0 with 0 gives
    // "3."). The integer part is cut to 32 bits and never carried: 2.9999999 gives "2.".
    static CString FtoA(double value, int decimals);
    // 1 for plain decimal text without leading blanks, plus sign or exponent that prints back as itself with six
    // decimals ("12", "-0", "12.50") and for an empty or blank text, else 0.
    static int IsNum(const char* text);
    // Index code: `value` (not negative) in `width` (0 to 20) characters, zeros in front; what is one digit too long
    // folds its first two digits into a letter, and what is longer still gives "z99...".
    static CString TransIndex(int value, int width);
    // Reads an index code; "" gives 0. Not the inverse of TransIndex at the 25th letter, see there.
    static int ConvIndex(const char* code);

    // --- Colours ---------------------------------------------------------------------------------------------
    // The complement of each of red, green and blue.
    static COLORREF Envert(COLORREF colour);
    // Each of red, green and blue less `amount`, not below 0. Black gives RGB(50, 150, 50).
    static COLORREF Dark(COLORREF colour, int amount);

    // --- File names ------------------------------------------------------------------------------------------
    // The file name without directory and extension.
    static CString GetFileTitle(const char* path);
    // The extension with its "."; "" when there is none.
    static CString GetFileExt(const char* path);
    // Appends the path's delimiter unless the path ends in it: a backslash, or "/" when there is a "/" behind the
    // first character. Room for one byte more is needed. The char* form returns the new length.
    static int LastDelimAdd(char* path);
    static void LastDelimAdd(CString& path);
    // Removes one trailing delimiter. A text of fewer than 4 bytes becomes a drive's root instead: its first
    // character, ":" and a backslash (room for 5 bytes); "" stays. The char* form returns the new length, 3 for a root.
    static int LastDelimDel(char* path);
    static void LastDelimDel(CString& path);

    // --- Application and settings ------------------------------------------------------------------------------
    // Name of the settings file, without directory.
    static CString GetIniFileName();
    // Drive and directory of the running program, ending in a backslash; "" when they exceed 259 bytes. The text lies
    // in one buffer of the process, which changes only with the path of the program (SetModuleFileNameA).
    static const char* GetExecutionFileDirectoryPath();
    // Integer of a settings file; with an empty `file` of the application's own profile.
    static int GetProfileIntEx(const char* section, const char* key, int defaultValue, const char* file);
    static void WriteProfileIntEx(const char* section, const char* key, int value, const char* file);
    // Window placement in section "ENV" of the application's profile, keys `prefix` + "MAXWINDOW", "POS_X", "POS_Y",
    // "POS_CX", "POS_CY". Load moves the window back into the virtual screen; without a stored size it only maximises.
    static void LoadWindowPos(CWnd* wnd, const char* prefix);
    static void SaveWindowPos(CWnd* wnd, const char* prefix);

    // --- Files -----------------------------------------------------------------------------------------------
    // Length in bytes; 0 when the file cannot be opened for reading, and for a folder.
    static unsigned long GetFileSize(const char* path);
    // 1 when the status of the file (or folder) can be read, else 0.
    static int ExistFile(const char* path);
    // Removes the file. Failure is ignored.
    static void FileRemove(const char* path);
    // Write the text without its terminator, or `count` bytes. 1 on success; on any exception "Disk Full" is shown
    // and the result is 0.
    static int WriteFile(CFile* file, const char* text);
    static int WriteFileB(CFile* file, void* data, unsigned long count);
    // Copies a file and clears the copy's read-only attribute. 0 when the copy fails (with failIfExists not 0 also
    // when `dst` is there), else 1.
    static int fCopyNonrFile(const char* src, const char* dst, int failIfExists);

    // --- Folders ---------------------------------------------------------------------------------------------
    // Creates every missing directory of the path. 1 on success, 0 on failure and for an empty path.
    static int MkDir(const char* path);
    // Copies folder `src` with all it holds into `dst`, overwriting; both receive a trailing delimiter. 1 on success;
    // 0 at the first failure, for an empty path, and when dst is src or lies below it.
    static int DirectoryCopy(CString& src, CString& dst);
    // Copies the plain files of a folder: no folders, system or hidden files. Both paths must end in a delimiter; the
    // DESTINATION COMES FIRST. Makes `src` the current directory of all threads. 1 on success, 0 at the first failure.
    static int CopyFolderFile(const char* dst, const char* src);
    // Removes the folder and all it holds; a symbolic link goes, what it points to stays. Failures are ignored.
    static void DeleteFolder(const char* path);
    // The same, but the folder stays, and nothing happens when the path is a link.
    static void _DeleteFolder(const char* path);
    // Lets the user choose a folder, starting at `path`. Non-zero and the folder in `path` (260 bytes) when one was
    // chosen, else 0 and `path` as it was. See FolderPicker.h; without an installed picker the result is 0.
    static int BrowseFolder(CWnd* owner, char* path, const char* title, UINT flags);
    static int BrowseFolder(CWnd* owner, CString& path, const char* title, UINT flags);

    // --- Input method, messages ------------------------------------------------------------------------------
    // Reading (furigana) of the text last confirmed in the window's input method: kind 0 full-width hiragana, 1
    // full-width katakana, else half-width katakana. "" without window or input method.
    static CString GetFurigana(CWnd* edit, int kind);
    // Opens (1) or closes (0) the window's input method. When opened, mode selects 0 hiragana, 1 katakana, 2 and 5
    // half-width katakana, 3 full-width and else half-width alphanumerics; roman or kana typing stays as it was.
    static void ImmSet(HWND wnd, int open, UINT mode);
    // Dispatches the calling thread's waiting messages until none is left.
    static void MessageProcessing();
    // Shows the system's text for the calling thread's last error code.
    static void GetLastErrMessage();
    // Kept: does nothing. Hosts link to it, some still call it.
    static void Debug(char* text, int value);

    // --- Line images -----------------------------------------------------------------------------------------
    // width * height bytes, rows from the top without gaps: 255 is line, 0 is paper, any other value neither. Dira,
    // Eros and Linear work in place without allocating. They never change the outermost rows and columns, and nothing
    // in an image of fewer than 3 pixels a side. The neighbours of a pixel are the three above it, the three below and
    // the one to its RIGHT, never the one to its left.
    //
    // One step of widening: paper beside line becomes line, and so does 100. Connectivity 4 looks above, below and to
    // the right only.
    static void Dira(unsigned char* image, int width, int height, int connectivity);
    // One step of narrowing (erosion): line beside paper becomes paper, and so does 100.
    static void Eros(unsigned char* image, int width, int height, int connectivity);
    // Thins all lines to one pixel. 50 and 100 become 255, 200 is taken for the edge of a line. The surface is not
    // used.
    static void Linear(CDC* dc, unsigned char* image, int width, int height);
    // A line image of what was drawn on a surface that tells its pixels (GetPixel), from the upper left corner. A pixel
    // is line when its grey (0 to 255) is below `threshold`, with `bright` not 0 when it is not. With a `path` the
    // image is also written there as by WriteBuff. 1 on success, 0 without pixels or when the file can't be written.
    static int MakeLineImg(CDC* dc, unsigned char* image, int width, int height, int threshold, int bright = 0,
                           const char* path = nullptr);
    // The same of a picture: 1 byte a pixel of grey, or 3 or 4 in the order blue, green, red. `stride` is the number of
    // bytes from one row to the next, below 0 when the picture is stored from the bottom (`pixels` is the top row).
    static int MakeLineImg(const unsigned char* pixels, int bytesPerPixel, int stride, unsigned char* image, int width,
                           int height, int threshold, int bright = 0, const char* path = nullptr);
    // As MakeLineImg, then thinned as by Linear.
    static int MakeLinear(CDC* dc, unsigned char* image, int width, int height, int threshold, int bright = 0,
                          const char* path = nullptr);
    static int MakeLinear(const unsigned char* pixels, int bytesPerPixel, int stride, unsigned char* image, int width,
                          int height, int threshold, int bright = 0, const char* path = nullptr);
    // Reads a file of WriteBuff, or any 8-bit PGM picture, into `image` of `size` bytes. With a null image only its
    // width and height are told. 1 on success; 0, and nothing is changed, when the file can't be read, is none or is
    // damaged, or has more than `size` pixels.
    static int SetBuff(const char* path, unsigned char* image, unsigned long size, int* width, int* height);
    // Writes a line image, whatever its values, as a PGM picture: whole or, on failure (0), not at all.
    static int WriteBuff(const char* path, const unsigned char* image, int width, int height);

    // === Drawing =============================================================================================
    // On a CDC (a null one draws nothing). Afterwards the surface is as it was, but for its current position. Functions
    // with `zoom` and `offset` take image pixels; on the device these are trunc(zoom * v) - offset, cut to 32 bits. All
    // others take device coordinates. `style` is a pen style 0 to 4 (PS_SOLID to PS_DASHDOTDOT) with the width given,
    // or a tracing line: 101 solid, 1 wide; 102 solid, 2 wide; 103 dotted, 104 dashed, 105 dash-dot, 106 dash-dot-dot,
    // 1 wide. 5 and 6 are PS_NULL and PS_INSIDEFRAME, any other code is solid. While the surface prints, the low 16
    // bits of `width` are the line's width in tenths of a millimetre, for style 102 the high ones (at least 0.1 mm; in
    // MM_TEXT never thinner than on the screen). Gaps of dashes show what is below.

    // --- Lines -----------------------------------------------------------------------------------------------
    // With flipY not 0 from (x1, -y1) to (x2, -y2), for map modes whose y points up.
    static void Draw_Line(CDC* dc, int x1, int y1, int x2, int y2, int width, COLORREF color, int style, int flipY);
    // For drawing into the image itself: dashes are never wider than the platform dashes them, widths do not follow
    // the printer but for style 102: there 0.6 mm while printing, else the width given.
    static void Draw_Line_Image(CDC* dc, int x1, int y1, int x2, int y2, int width, COLORREF color, int style,
                                int flipY);
    // With xorMode not 0 drawn with R2_XORPEN, so that the same call again erases the line.
    static void Line_Make2(CDC* dc, CPoint a, CPoint b, double zoom, CPoint offset, int width, COLORREF color,
                           int style, int xorMode);
    // Into an image of `imageSize` pixels: the width is 2, and 2 more for each further 750; the one given is not used.
    static void Line_Make2_Image(CDC* dc, CPoint a, CPoint b, double zoom, CPoint offset, int width, COLORREF color,
                                 int style, int xorMode, int imageSize);
    // Fractional points; the width is zoomed, too, and cut.
    static void Line_Maked(CDC* dc, tagDPOINT* a, tagDPOINT* b, double zoom, CPoint offset, int width, COLORREF color,
                           int style);
    // Whole points; the width is not zoomed.
    static void Draw_LineF(CDC* dc, CPoint offset, double zoom, CPoint a, CPoint b, int width, COLORREF color,
                           int style);
    static void Draw_LineF(CDC* dc, int x1, int y1, int x2, int y2, double zoom, CPoint offset, int width,
                           COLORREF color, int style);
    // The sides between pairs of landmarks: each row of `pairs` names two of the `pointCount` points. A row with an
    // index outside, or with a point that is (0, 0) (not placed), is passed over.
    static void Line_Pile(CDC* dc, const tagPOINT* points, int pointCount, const int (*pairs)[2], int pairCount,
                          double zoom, CPoint offset, int width, COLORREF color, int style, int xorMode);
    static void Line_Pile_Image(CDC* dc, const tagPOINT* points, int pointCount, const int (*pairs)[2], int pairCount,
                                double zoom, CPoint offset, int width, COLORREF color, int style, int xorMode,
                                int imageSize);
    // A line and, filled in its colour, heads at a (bit 0 of `ends`) and b (bit 1): barbs of headLength at 20 degrees
    // to the shaft. The heads are NOT zoomed: with a zoom other than 1 or an offset draw at zoom 1 with device points.
    static void DrawArrowLine(CDC* dc, CPoint a, CPoint b, double headLength, int ends, double zoom, CPoint offset,
                              int width, COLORREF color, int style);

    // --- Construction lines ----------------------------------------------------------------------------------
    // The parallel to a-b through p (image pixels), and the perpendicular (Vartical: vertical), from edge to edge of
    // r: from its top to its bottom when the slope is at least 0.5 or at most -1.5, else from its left to its right.
    // *end, which may be null, is the end further right in image pixels. Width 0 draws nothing. With flipY not 0 as in
    // Draw_Line. The double behind zoom is not used. A line a-b without length counts as vertical.
    static void Parallel_Line(CDC* dc, AnyPoint a, AnyPoint b, AnyPoint p, tagRECT r, int offx, int offy,
                              COLORREF color, CPoint* end, int width, double zoom, double, int style, int flipY = 0);
    static void Vartical_Line(CDC* dc, AnyPoint a, AnyPoint b, AnyPoint p, tagRECT r, int offx, int offy,
                              COLORREF color, CPoint* end, int width, double zoom, double, int style, int flipY = 0);
    static void Parallel_Line_Image(CDC* dc, AnyPoint a, AnyPoint b, AnyPoint p, tagRECT r, int offx, int offy,
                                    COLORREF color, CPoint* end, int width, double zoom, double, int style,
                                    int flipY = 0);
    static void Vartical_Line_Image(CDC* dc, AnyPoint a, AnyPoint b, AnyPoint p, tagRECT r, int offx, int offy,
                                    COLORREF color, CPoint* end, int width, double zoom, double, int style,
                                    int flipY = 0);

    // --- Dots and shapes -------------------------------------------------------------------------------------
    // A filled dot of radius r image pixels that no zoom makes vanish; Spot2's radius is r device pixels, so that the
    // dot keeps its size at any zoom. The last argument is not used.
    static void Spot(CDC* dc, CPoint p, double zoom, CPoint offset, short r, COLORREF color, int);
    static void Spot2(CDC* dc, CPoint p, double zoom, CPoint offset, short r, COLORREF color, int);
    // Outlines with nothing inside. Right and bottom are exclusive.
    static void DrawRect(CDC* dc, int x1, int y1, int x2, int y2, int width, COLORREF color, int style, int flipY);
    static void Rect_Make(CDC* dc, CRect r, int width, COLORREF color, int style);
    static void Rect_Make(CDC* dc, tagRECT r, double zoom, CPoint offset, int width, COLORREF color, int style,
                          int xorMode);
    static void Ellipse(CDC* dc, tagRECT r, int width, COLORREF color, int style);
    static void EllipseF(CDC* dc, tagRECT r, double zoom, CPoint offset, int width, COLORREF color, int style);
    // The radius is in image pixels.
    static void Draw_Circle(CDC* dc, CPoint center, double radius, double zoom, CPoint offset, int width,
                            COLORREF color, int style);
    // The part of r's ellipse from the ray through `from` counterclockwise, as seen, to the ray through `to`.
    static void Arc_MakeF(CDC* dc, tagRECT r, CPoint from, CPoint to, double zoom, CPoint offset, int width,
                          COLORREF color, int style);
    // Outlined and filled.
    static void Rect_MakeEx(CDC* dc, tagRECT r, double zoom, CPoint offset, int width, COLORREF color, int style,
                            COLORREF fill);
    // A border of one unit inside the rectangle.
    static void Frame_Make(CDC* dc, tagRECT r, COLORREF color);
    // Filled, without an outline.
    static void Area_Make(CDC* dc, tagRECT r, COLORREF color);
    static void Area_MakeF(CDC* dc, tagRECT r, double zoom, CPoint offset, COLORREF color);
    // On the surface behind a handle; a handle without a surface draws nothing.
    static void Line_MakeH(HDC dc, int x1, int y1, int x2, int y2, int width, COLORREF color, int style);
    static void Box_MakeH(HDC dc, tagRECT r, int width, COLORREF color, int style);

    // --- On paper: trunc(zx * (ox + x)) and -trunc(zy * (oy + y)), for map modes whose y points up --------------
    static void P_Line(CDC* dc, int ox, int oy, double zx, double zy, int x1, int y1, int x2, int y2, int width,
                       COLORREF color, int style);
    static void P_Area(CDC* dc, int ox, int oy, double zx, double zy, int x1, int y1, int x2, int y2, COLORREF color);
    // The font as in TextMake; its height is in units of the map mode. The background stays visible.
    static void P_Text(CDC* dc, int ox, int oy, double zx, double zy, int x, int y, const char* text,
                       unsigned int height, unsigned int weight, int face, int italic, COLORREF color);

    // --- Text (code page 932) --------------------------------------------------------------------------------
    // Placed as the surface's text alignment says. Height 0 takes the surface's current font, whatever else is given.
    // bkMode is TRANSPARENT or OPAQUE; any other leaves the surface's.
    //
    // Upright or italic "ＭＳ ゴシック" in proof quality. The int behind the weight is not used.
    static void TextMakeOut(CDC* dc, int x, int y, const char* text, unsigned int height, unsigned int weight, int,
                            int italic, COLORREF color, int bkMode);
    // Without smoothing. Face 9 is "Times New Roman", any other "ＭＳ ゴシック". Orientation 1 negates y.
    static void TextMake(CDC* dc, int x, int y, const char* text, unsigned int height, unsigned int weight, int face,
                         int italic, COLORREF color, int bkMode, int orientation, unsigned char strikeOut,
                         unsigned char underline);
    // A label at a place of the image, "ＭＳ ゴシック" of that height on the device, the background staying visible.
    static void Draw_Text(CDC* dc, CPoint p, double zoom, CPoint offset, const char* text, unsigned int height,
                          COLORREF color);
    // Text in a rectangle by DT_ bits, the background staying visible; returns its height, 0 without surface or text.
    // With DT_CALCRECT nothing is drawn. A null face is "ＭＳ ゴシック", a null font the surface's current one.
    static int Rect_Text(CDC* dc, tagRECT r, const char* text, const char* face, unsigned int height,
                         unsigned int weight, int italic, COLORREF color, unsigned int format);
    static int Rect_Text_LF(CDC* dc, tagRECT r, const char* text, const LOGFONTA* font, COLORREF color,
                            unsigned int format);

    // --- Curves ----------------------------------------------------------------------------------------------
    // The point at t (0 to 1) between control points 1 and 2: kind 0 uniform Catmull-Rom, through both; any other kind
    // uniform cubic B-spline. Cut into `clip` (right and bottom included) unless that is empty. Null outX or outY
    // takes nothing.
    static void SplineCal(double* outX, double* outY, double x0, double y0, double x1, double y1, double x2, double y2,
                          double x3, double y3, double t, CRect clip, int kind);
    // The Catmull-Rom curve through n control points as one polyline of samples at least 10 image pixels apart; an
    // open curve's end may thus fall short of the last control point, a closed one returns to its first sample. Two
    // points give a line, one gives nothing. With flipY not 0 y is negated.
    static void Draw_SPLine(CDC* dc, CPoint offset, double zoom, const tagPOINT* pts, short n, COLORREF color,
                            unsigned int width, unsigned char closed, int style, int flipY);
    // With the pens of Draw_Line_Image.
    static void Draw_SPLine_Image(CDC* dc, CPoint offset, double zoom, const tagPOINT* pts, short n, COLORREF color,
                                  unsigned int width, unsigned char closed, int style, int flipY);
    // Length of that curve between the control points `from` and `to` (from 0), times `scale`. On a closed curve the
    // way leads forward, if need be past the start, and index n is the start again. 0.0 for an index outside and for
    // fewer than two points.
    static double Get_SPLineLength(const tagPOINT* pts, short n, int from, int to, unsigned char closed, double scale);
    static double Get_SPLineLengthd(const tagDPOINT* pts, short n, int from, int to, unsigned char closed,
                                    double scale);
};
