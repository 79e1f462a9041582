// Where a name leads, links followed.
#pragma once

#include <optional>
#include <string>

#include "framework/scalars.h"
#include "platform/win32/handle.h"

namespace tool::win32 {

// For asking about a file or folder; `flags` may leave links unfollowed.
inline HANDLE open_for_status(const std::wstring& name, DWORD flags = 0) {
    return CreateFileW(name.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                       nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
}

// Without the prefix that lifts the limit of a path's length. Nothing when there is no such file.
inline std::optional<std::wstring> real_path(const std::wstring& name) {
    const Handle file(open_for_status(name));
    if (!file.is_open()) return std::nullopt;
    std::wstring path(32768, L'\0');
    const DWORD length = GetFinalPathNameByHandleW(file.get(), path.data(), static_cast<DWORD>(path.size()), 0);
    if (length == 0 || length >= path.size()) return std::nullopt;
    path.resize(length);
    if (path.starts_with(L"\\\\?\\UNC\\")) return L"\\" + path.substr(7);
    return path.starts_with(L"\\\\?\\") ? path.substr(4) : path;
}

}  // namespace tool::win32
