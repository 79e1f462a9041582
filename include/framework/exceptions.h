// The host framework's exceptions. They are thrown as pointers; whoever catches one ends it with Delete:
//   catch (CFileException* failure) { ...; failure->Delete(); }
#pragma once

#include "framework/export.h"
#include "framework/scalars.h"
#include "framework/text.h"

class TOOL_API CException {
 public:
    CException() = default;
    explicit CException(BOOL autoDelete) : auto_delete_(autoDelete != FALSE) {}
    virtual ~CException();

    // Copies at most size - 1 bytes and a NUL. FALSE, and "" where there is room, when there is no text.
    virtual BOOL GetErrorMessage(LPSTR text, UINT size, UINT* helpContext = nullptr) const;
    // Frees an exception made with new; one made with autoDelete FALSE (on the stack) stays.
    void Delete();

 private:
    bool auto_delete_ = true;
};

// A list index or another argument outside its range.
class TOOL_API CInvalidArgException : public CException {
 public:
    using CException::CException;
    ~CInvalidArgException() override;
    BOOL GetErrorMessage(LPSTR text, UINT size, UINT* helpContext = nullptr) const override;
};

class TOOL_API CFileException : public CException {
 public:
    enum Cause {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    explicit CFileException(int cause = none, LONG osError = -1, LPCSTR fileName = nullptr);
    ~CFileException() override;
    BOOL GetErrorMessage(LPSTR text, UINT size, UINT* helpContext = nullptr) const override;

    int m_cause;
    LONG m_lOsError;  // the system's own code, -1 when unknown
    CString m_strFileName;
};

[[noreturn]] TOOL_API void AfxThrowInvalidArgException();
[[noreturn]] TOOL_API void AfxThrowFileException(int cause, LONG osError = -1, LPCSTR fileName = nullptr);
