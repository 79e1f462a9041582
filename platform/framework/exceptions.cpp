#include "framework/exceptions.h"

#include "platform/framework/caller_buffer.h"

CException::~CException() = default;
CInvalidArgException::~CInvalidArgException() = default;
CFileException::~CFileException() = default;

BOOL CException::GetErrorMessage(LPSTR text, UINT size, UINT* helpContext) const {
    if (helpContext) *helpContext = 0;
    tool::copy_cut("", text, size);
    return FALSE;
}

void CException::Delete() {
    if (auto_delete_) delete this;
}

BOOL CInvalidArgException::GetErrorMessage(LPSTR text, UINT size, UINT* helpContext) const {
    if (helpContext) *helpContext = 0;
    tool::copy_cut("An invalid argument was encountered.", text, size);
    return TRUE;
}

CFileException::CFileException(int cause, LONG osError, LPCSTR fileName)
    : m_cause(cause), m_lOsError(osError), m_strFileName(fileName) {}

BOOL CFileException::GetErrorMessage(LPSTR text, UINT size, UINT* helpContext) const {
    // In the order of Cause.
    constexpr LPCSTR reasons[] = {
        "No error occurred.",
        "An unknown error occurred while accessing the file.",
        "The file was not found.",
        "The path is invalid.",
        "Too many files are open.",
        "Access to the file was denied.",
        "The file is not open.",
        "The current folder can't be removed.",
        "The folder is full.",
        "The place in the file can't be reached.",
        "The file could not be read or written.",
        "The file is in use.",
        "The file is locked.",
        "The disk is full.",
        "The end of the file was reached.",
    };
    const bool known = m_cause >= none && m_cause <= endOfFile;
    CString message = reasons[known ? m_cause : genericException];
    if (!m_strFileName.IsEmpty()) message = m_strFileName + ": " + message;
    if (helpContext) *helpContext = 0;
    tool::copy_cut(message.View(), text, size);
    return TRUE;
}

void AfxThrowInvalidArgException() {
    throw new CInvalidArgException;
}

void AfxThrowFileException(int cause, LONG osError, LPCSTR fileName) {
    throw new CFileException(cause, osError, fileName);
}
