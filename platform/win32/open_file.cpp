#include <limits>

#include "platform/system.h"
#include "platform/win32/handle.h"
#include "platform/win32/names.h"

namespace tool {
namespace {

FileFault fault_of(DWORD error) {
    set_last_error(error);
    switch (error) {
        case ERROR_FILE_NOT_FOUND: return FileFault::not_found;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_DIRECTORY:
        case ERROR_BAD_NETPATH:
        case ERROR_FILENAME_EXCED_RANGE: return FileFault::bad_path;
        case ERROR_TOO_MANY_OPEN_FILES: return FileFault::too_many_open;
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_WRITE_PROTECT: return FileFault::access_denied;
        case ERROR_INVALID_HANDLE: return FileFault::invalid_file;
        case ERROR_NEGATIVE_SEEK:
        case ERROR_SEEK:
        case ERROR_INVALID_PARAMETER: return FileFault::bad_seek;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL: return FileFault::disk_full;
        case ERROR_CRC:
        case ERROR_READ_FAULT:
        case ERROR_WRITE_FAULT:
        case ERROR_IO_DEVICE: return FileFault::io;
        default: return FileFault::other;
    }
}

FileFault fault_if(bool failed) {
    return failed ? fault_of(GetLastError()) : FileFault::none;
}

HANDLE as_handle(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

}  // namespace

std::unique_ptr<OpenFile> OpenFile::open(std::string_view path, Mode mode, FileFault* fault) {
    const DWORD access = mode.access == Access::read    ? GENERIC_READ
                         : mode.access == Access::write ? GENERIC_WRITE
                                                        : GENERIC_READ | GENERIC_WRITE;
    const DWORD sharing = (mode.others_read ? FILE_SHARE_READ : 0u) | (mode.others_write ? FILE_SHARE_WRITE : 0u);
    const DWORD disposition = !mode.create ? OPEN_EXISTING : mode.truncate ? CREATE_ALWAYS : OPEN_ALWAYS;
    const HANDLE handle = CreateFileW(win32::spelled(path).c_str(), access, sharing, nullptr, disposition,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    *fault = fault_if(handle == INVALID_HANDLE_VALUE);
    if (handle == INVALID_HANDLE_VALUE) return nullptr;
    return std::unique_ptr<OpenFile>(new OpenFile(reinterpret_cast<std::intptr_t>(handle)));
}

OpenFile::~OpenFile() {
    close();
}

FileFault OpenFile::read(void* buffer, std::size_t count, std::size_t* done) {
    return fault_if(!win32::read_all(as_handle(handle_), buffer, count, done));
}

FileFault OpenFile::write(const void* data, std::size_t count) {
    return fault_if(!win32::write_all(as_handle(handle_), data, count));
}

FileFault OpenFile::seek(std::int64_t offset, From from, std::uint64_t* position) {
    const DWORD method = from == From::begin ? FILE_BEGIN : from == From::current ? FILE_CURRENT : FILE_END;
    LARGE_INTEGER distance, at;
    distance.QuadPart = offset;
    const bool failed = !SetFilePointerEx(as_handle(handle_), distance, &at, method);
    if (!failed) *position = static_cast<std::uint64_t>(at.QuadPart);
    return fault_if(failed);
}

FileFault OpenFile::length(std::uint64_t* bytes) const {
    LARGE_INTEGER size;
    const bool failed = !GetFileSizeEx(as_handle(handle_), &size);
    if (!failed) *bytes = static_cast<std::uint64_t>(size.QuadPart);
    return fault_if(failed);
}

FileFault OpenFile::set_length(std::uint64_t bytes) {
    if (bytes > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) return fault_of(ERROR_DISK_FULL);
    FILE_END_OF_FILE_INFO end;
    end.EndOfFile.QuadPart = static_cast<std::int64_t>(bytes);
    return fault_if(!SetFileInformationByHandle(as_handle(handle_), FileEndOfFileInfo, &end, sizeof end));
}

FileFault OpenFile::flush() {
    // Refused for a file open for reading, which has nothing to flush.
    return fault_if(!FlushFileBuffers(as_handle(handle_)) && GetLastError() != ERROR_ACCESS_DENIED);
}

FileFault OpenFile::close() {
    const HANDLE handle = as_handle(std::exchange(handle_, reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE)));
    return fault_if(handle != INVALID_HANDLE_VALUE && !CloseHandle(handle));
}

}  // namespace tool
