#include "host/held_file.h"

#include <windows.h>

namespace cephtool {

HeldFile::Outcome HeldFile::take(const std::filesystem::path& path, const std::string& text) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_SHARING_VIOLATION ? Outcome::held_by_another : Outcome::not_written;
    path_ = path;
    handle_ = reinterpret_cast<std::intptr_t>(file);
    DWORD written = 0;
    if (GetFileType(file) == FILE_TYPE_DISK && SetEndOfFile(file) &&
        WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) && written == text.size())
        return Outcome::held;
    CloseHandle(file);
    handle_ = -1;
    return Outcome::not_written;
}

HeldFile::~HeldFile() {
    if (handle_ == -1) return;
    CloseHandle(reinterpret_cast<HANDLE>(handle_));
    DeleteFileW(path_.c_str());  // which fails when another has taken it since
}

}  // namespace cephtool
