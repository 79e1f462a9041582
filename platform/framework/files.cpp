#include "framework/files.h"

#include <algorithm>

#include "platform/framework/caller_buffer.h"
#include "platform/system.h"

namespace {

using tool::FileFault;
using tool::OpenFile;

constexpr UINT share_mask = 0x70;

int cause_of(FileFault fault) {
    switch (fault) {
        case FileFault::none: return CFileException::none;
        case FileFault::not_found: return CFileException::fileNotFound;
        case FileFault::bad_path: return CFileException::badPath;
        case FileFault::too_many_open: return CFileException::tooManyOpenFiles;
        case FileFault::access_denied: return CFileException::accessDenied;
        case FileFault::invalid_file: return CFileException::invalidFile;
        case FileFault::bad_seek: return CFileException::badSeek;
        case FileFault::disk_full: return CFileException::diskFull;
        case FileFault::io: return CFileException::hardIO;
        case FileFault::other: break;
    }
    return CFileException::genericException;
}

LONG system_error() {
    return static_cast<LONG>(tool::last_error());
}

void require(FileFault fault, LPCSTR path) {
    if (fault != FileFault::none) AfxThrowFileException(cause_of(fault), system_error(), path);
}

// What there is to say after a call that only tells whether it went well.
void require_done(bool done, LPCSTR path) {
    if (done) return;
    const LONG error = system_error();
    const bool is_there = tool::file_status(tool::view_or_empty(path)).has_value();
    // With the file there, it is the folder of its new name that is not.
    const bool has_nowhere_to_go = is_there && tool::tells_absence(static_cast<std::uint32_t>(error));
    AfxThrowFileException(has_nowhere_to_go ? CFileException::badPath
                          : is_there        ? CFileException::accessDenied
                                            : CFileException::fileNotFound,
                          error, path);
}

OpenFile& required(const std::unique_ptr<OpenFile>& file, LPCSTR path) {
    if (!file) AfxThrowFileException(CFileException::invalidFile, -1, path);
    return *file;
}

}  // namespace

CFile::CFile() = default;

CFile::CFile(LPCSTR path, UINT flags) {
    CFileException failure;
    if (!CFile::Open(path, flags, &failure))
        AfxThrowFileException(failure.m_cause, failure.m_lOsError, failure.m_strFileName);
}

CFile::~CFile() = default;

BOOL CFile::Open(LPCSTR path, UINT flags, CFileException* failure) {
    handle_.reset();
    path_ = path;
    const UINT access = flags & 3;
    const UINT sharing = flags & share_mask;
    const OpenFile::Mode mode{.access = access == modeWrite       ? OpenFile::Access::write
                                        : access == modeReadWrite ? OpenFile::Access::read_write
                                                                  : OpenFile::Access::read,
                              .create = (flags & modeCreate) != 0,
                              .truncate = !(flags & modeNoTruncate),
                              .others_read = sharing == shareDenyNone || sharing == shareDenyWrite,
                              .others_write = sharing == shareDenyNone || sharing == shareDenyRead};
    FileFault fault;
    handle_ = OpenFile::open(path_.View(), mode, &fault);
    if (handle_) return TRUE;
    if (failure) {
        failure->m_cause = cause_of(fault);
        failure->m_lOsError = system_error();
        failure->m_strFileName = path_;
    }
    return FALSE;
}

void CFile::Close() {
    if (!handle_) return;
    const FileFault fault = handle_->close();
    handle_.reset();
    require(fault, path_);
}

void CFile::Flush() {
    if (handle_) require(handle_->flush(), path_);
}

UINT CFile::Read(void* buffer, UINT count) {
    std::size_t done = 0;
    require(required(handle_, path_).read(buffer, count, &done), path_);
    return static_cast<UINT>(done);
}

void CFile::Write(const void* data, UINT count) {
    require(required(handle_, path_).write(data, count), path_);
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from) {
    tool::OpenFile& file = required(handle_, path_);
    ULONGLONG at = 0;
    require(file.seek(offset, static_cast<OpenFile::From>(std::min<UINT>(from, end)), &at), path_);
    return at;
}

ULONGLONG CFile::GetPosition() const {
    ULONGLONG at = 0;
    require(required(handle_, path_).seek(0, OpenFile::From::current, &at), path_);
    return at;
}

ULONGLONG CFile::GetLength() const {
    ULONGLONG bytes = 0;
    require(required(handle_, path_).length(&bytes), path_);
    return bytes;
}

void CFile::SetLength(ULONGLONG bytes) {
    require(required(handle_, path_).set_length(bytes), path_);
}

BOOL CFile::GetStatus(CFileStatus& status) const {
    return handle_ && GetStatus(path_, status);
}

BOOL CFile::GetStatus(LPCSTR path, CFileStatus& status) {
    const auto found = tool::file_status(tool::view_or_empty(path));
    if (!found) return FALSE;
    status.m_size = static_cast<LONGLONG>(found->size);
    status.m_attribute = static_cast<BYTE>((found->is_folder ? directory : normal) | (found->read_only ? readOnly : 0) |
                                           (found->hidden ? hidden : 0) | (found->system ? system : 0));
    tool::copy_cut(path, status.m_szFullName, sizeof status.m_szFullName);
    return TRUE;
}

void CFile::Rename(LPCSTR from, LPCSTR to) {
    require_done(tool::rename_file(tool::view_or_empty(from), tool::view_or_empty(to)), from);
}

void CFile::Remove(LPCSTR path) {
    require_done(tool::remove_file(tool::view_or_empty(path)), path);
}
