// CFile: unbuffered access to one file. Paths are code page 932 with "\" or "/"; where names are told apart by case,
// one that differs only in case is found when the exact one is missing.
#pragma once

#include <memory>

#include "framework/exceptions.h"
#include "framework/export.h"
#include "framework/scalars.h"
#include "framework/text.h"

namespace tool {
class OpenFile;
}

struct CFileStatus {
    LONGLONG m_size;         // bytes; 0 for a folder
    BYTE m_attribute;        // CFile::readOnly and its like
    char m_szFullName[260];  // the path asked about
};

class TOOL_API CFile {
 public:
    // Sharing flags have no effect off Windows, where without any nobody else may open the file; text mode is binary.
    enum OpenFlags {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeText = 0x4000,
        typeBinary = 0x8000
    };
    enum SeekPosition { begin, current, end };
    static constexpr BYTE normal = 0, readOnly = 1, hidden = 2, system = 4, volume = 8, directory = 16, archive = 32;

    CFile();
    CFile(LPCSTR path, UINT flags);  // throws CFileException* when the file can't be opened
    virtual ~CFile();                // closes
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    // FALSE on failure, *failure then says why. Whatever was open before is closed.
    virtual BOOL Open(LPCSTR path, UINT flags, CFileException* failure = nullptr);

    virtual void Close();
    virtual void Flush();

    // These throw CFileException* on failure; Read gives fewer bytes only at the end of the file.
    virtual UINT Read(void* buffer, UINT count);
    virtual void Write(const void* data, UINT count);
    virtual ULONGLONG Seek(LONGLONG offset, UINT from);
    virtual ULONGLONG GetPosition() const;
    virtual ULONGLONG GetLength() const;
    virtual void SetLength(ULONGLONG length);
    void SeekToBegin() { Seek(0, begin); }
    ULONGLONG SeekToEnd() { return Seek(0, end); }

    virtual CString GetFilePath() const { return path_; }
    BOOL GetStatus(CFileStatus& status) const;
    static BOOL GetStatus(LPCSTR path, CFileStatus& status);
    // These throw CFileException* on failure.
    static void Rename(LPCSTR from, LPCSTR to);
    static void Remove(LPCSTR path);

 private:
    std::unique_ptr<tool::OpenFile> handle_;  // null while closed
    CString path_;
};
