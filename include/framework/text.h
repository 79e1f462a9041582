// CString and CStringArray: text in code page 932 and lists of it, under the host framework's names. Positions and
// lengths count bytes. Comparing, upper and lower case, Find and ReverseFind know double-byte characters, so that a
// trail byte is never taken for a letter or a delimiter.
#pragma once

#include <compare>
#include <string>
#include <string_view>
#include <vector>

#include "framework/export.h"
#include "framework/scalars.h"

class TOOL_API CString {
 public:
    CString() = default;
    CString(LPCSTR text);  // null gives ""
    CString(LPCSTR text, int count);
    explicit CString(char c, int repeat = 1);
    // Addition: from any stretch of bytes; View gives it back without a copy and lives as long as the text stays.
    explicit CString(std::string_view text);
    std::string_view View() const { return text_; }

    CString& operator=(LPCSTR text);
    CString& operator+=(const CString& text);
    CString& operator+=(LPCSTR text);
    CString& operator+=(char c);

    operator LPCSTR() const { return text_.c_str(); }
    int GetLength() const { return static_cast<int>(text_.size()); }
    BOOL IsEmpty() const { return text_.empty(); }
    void Empty() { text_.clear(); }
    // An index outside the text throws CInvalidArgException*; the terminating NUL may be read.
    char GetAt(int index) const;
    void SetAt(int index, char c);
    char operator[](int index) const { return GetAt(index); }

    // Starts and counts outside the text are cut to it.
    CString Left(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Right(int count) const;

    // Position from `start` on, or -1.
    int Find(char c, int start = 0) const;
    int Find(LPCSTR text, int start = 0) const;
    int ReverseFind(char c) const;
    int FindOneOf(LPCSTR characters) const;

    // Below 0, 0 or above 0, by code.
    int Compare(LPCSTR other) const;
    int CompareNoCase(LPCSTR other) const;

    CString& MakeUpper();
    CString& MakeLower();
    // White space when nothing is named.
    CString& Trim();
    CString& Trim(char c);
    CString& Trim(LPCSTR characters);
    CString& TrimLeft();
    CString& TrimLeft(char c);
    CString& TrimLeft(LPCSTR characters);
    CString& TrimRight();
    CString& TrimRight(char c);
    CString& TrimRight(LPCSTR characters);
    // These return how many were replaced or removed.
    int Replace(char from, char to);
    int Replace(LPCSTR from, LPCSTR to);
    int Remove(char c);
    // An index or a count outside the text is cut to it. These return the new length.
    int Insert(int index, LPCSTR text);
    int Delete(int index, int count = 1);

    // printf's conversions with exact doubles and "." in every locale. "l" is 32 bits wide as LONG is, "ll" and
    // "I64" 64 bits. A CString argument is passed as static_cast<LPCSTR>(text).
    void Format(LPCSTR format, ...);
    void AppendFormat(LPCSTR format, ...);

    // Room for at least `length` bytes and a NUL, valid until ReleaseBuffer, which cuts at `length` or the first NUL.
    LPSTR GetBuffer(int length = 0);
    void ReleaseBuffer(int length = -1);

    friend bool operator==(const CString& a, const CString& b) { return a.text_ == b.text_; }
    friend bool operator==(const CString& a, LPCSTR b) { return a.Compare(b) == 0; }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) {
        return a.Compare(b.text_.c_str()) <=> 0;
    }
    friend std::strong_ordering operator<=>(const CString& a, LPCSTR b) { return a.Compare(b) <=> 0; }

 private:
    std::string text_;
};

TOOL_API CString operator+(const CString& a, const CString& b);
TOOL_API CString operator+(const CString& a, LPCSTR b);
TOOL_API CString operator+(LPCSTR a, const CString& b);
TOOL_API CString operator+(const CString& a, char b);
TOOL_API CString operator+(char a, const CString& b);

// An index outside the list throws CInvalidArgException*.
class TOOL_API CStringArray {
 public:
    INT_PTR GetSize() const { return static_cast<INT_PTR>(items_.size()); }
    INT_PTR GetCount() const { return GetSize(); }
    INT_PTR GetUpperBound() const { return GetSize() - 1; }
    BOOL IsEmpty() const { return items_.empty(); }
    void SetSize(INT_PTR size);

    const CString& GetAt(INT_PTR index) const;
    CString& ElementAt(INT_PTR index);
    void SetAt(INT_PTR index, LPCSTR text) { ElementAt(index) = text; }
    const CString& operator[](INT_PTR index) const { return GetAt(index); }
    CString& operator[](INT_PTR index) { return ElementAt(index); }

    INT_PTR Add(LPCSTR text);                   // index of the new item
    INT_PTR Append(const CStringArray& other);  // index of the first new item
    void Copy(const CStringArray& other) { items_ = other.items_; }
    void RemoveAt(INT_PTR index, INT_PTR count = 1);
    void RemoveAll() { items_.clear(); }
    // An index behind the end fills up with empty texts.
    void InsertAt(INT_PTR index, LPCSTR text, INT_PTR count = 1);

 private:
    std::vector<CString> items_;
};
