// Tools for the host application: text and numbers, files, folders and settings.
//
// Texts and paths are code page 932. A null text counts as empty. Buffers for results belong to the caller and must
// hold what is stated; unless said otherwise a result must not overlap its source. Nothing is reported to the user
// except by GetLastErrMessage, WriteFile and WriteFileB; failure gives the value stated.
#pragma once

#include "framework/export.h"
#include "framework/scalars.h"
#include "framework/text.h"
#include "framework/window.h"

class CFile;

class TOOL_API CTools {
 public:
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
    // in one buffer of the process that every call rewrites: copy it before another thread can call.
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
    // DESTINATION COMES FIRST. Makes `src` the current directory. 1 on success, 0 at the first failure.
    static int CopyFolderFile(const char* dst, const char* src);
    // Removes the folder and all it holds; a symbolic link goes, what it points to stays. Failures are ignored.
    static void DeleteFolder(const char* path);
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
};
