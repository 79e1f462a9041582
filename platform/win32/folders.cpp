#include <algorithm>

#include "framework/scalars.h"
#include "platform/system.h"
#include "platform/win32/handle.h"
#include "platform/win32/names.h"
#include "platform/win32/real_path.h"

namespace tool {
namespace {

using win32::Handle;
using win32::open_for_status;
using win32::real_path;

bool names_another_place(DWORD reparse_tag) {
    return reparse_tag == IO_REPARSE_TAG_SYMLINK || reparse_tag == IO_REPARSE_TAG_MOUNT_POINT;
}

FileStatus status_of(DWORD attributes, DWORD size_high, DWORD size_low) {
    FileStatus status;
    status.is_folder = attributes & FILE_ATTRIBUTE_DIRECTORY;
    status.hidden = attributes & FILE_ATTRIBUTE_HIDDEN;
    status.system = attributes & (FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_DEVICE);
    status.read_only = attributes & FILE_ATTRIBUTE_READONLY;
    status.size = status.is_folder ? 0 : std::uint64_t{size_high} << 32 | size_low;
    return status;
}

// Of what the link `name` points to; its own when that is not there.
FileStatus followed(const std::wstring& name, FileStatus own) {
    const Handle target(open_for_status(name));
    BY_HANDLE_FILE_INFORMATION found;
    if (target.is_open() && GetFileInformationByHandle(target.get(), &found))
        own = status_of(found.dwFileAttributes, found.nFileSizeHigh, found.nFileSizeLow);
    own.is_link = true;
    return own;
}

std::optional<BY_HANDLE_FILE_INFORMATION> identity(std::string_view path) {
    const Handle file(open_for_status(win32::spelled(path)));
    BY_HANDLE_FILE_INFORMATION found;
    if (!file.is_open() || !GetFileInformationByHandle(file.get(), &found)) return std::nullopt;
    return found;
}

}  // namespace

std::optional<FileStatus> file_status(std::string_view path) {
    const std::wstring name = win32::spelled(path);
    WIN32_FILE_ATTRIBUTE_DATA found;
    if (!GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &found)) {
        note_unread(path);
        return std::nullopt;
    }
    const FileStatus own = status_of(found.dwFileAttributes, found.nFileSizeHigh, found.nFileSizeLow);
    if (!(found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT)) return own;
    const Handle link(open_for_status(name, FILE_FLAG_OPEN_REPARSE_POINT));
    FILE_ATTRIBUTE_TAG_INFO tag;
    const bool known =
        link.is_open() && GetFileInformationByHandleEx(link.get(), FileAttributeTagInfo, &tag, sizeof tag);
    return known && names_another_place(tag.ReparseTag) ? followed(name, own) : own;
}

bool remove_file(std::string_view path) {
    const std::wstring name = win32::spelled(path);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    constexpr DWORD folder_link = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & folder_link) == folder_link)
        return RemoveDirectoryW(name.c_str());
    return DeleteFileW(name.c_str());
}

bool remove_folder(std::string_view path) {
    return RemoveDirectoryW(win32::spelled(path).c_str());
}

bool rename_file(std::string_view from, std::string_view to) {
    return MoveFileW(win32::spelled(from).c_str(), win32::spelled(to).c_str());
}

bool make_folder(std::string_view path) {
    return CreateDirectoryW(win32::spelled(path).c_str(), nullptr);
}

bool clear_read_only(std::string_view path) {
    const std::wstring name = win32::spelled(path);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return false;
    return !(attributes & FILE_ATTRIBUTE_READONLY) ||
           SetFileAttributesW(name.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
}

bool set_current_folder(std::string_view path) {
    return SetCurrentDirectoryW(win32::spelled(path).c_str());
}

bool same_folder(std::string_view a, std::string_view b) {
    const auto first = identity(a), second = identity(b);
    if (!first || !second || first->dwVolumeSerialNumber != second->dwVolumeSerialNumber ||
        first->nFileIndexHigh != second->nFileIndexHigh || first->nFileIndexLow != second->nFileIndexLow)
        return false;
    const bool has_number = first->nFileIndexHigh || first->nFileIndexLow;  // not every file system gives one
    return has_number || real_path(win32::spelled(a)) == real_path(win32::spelled(b));
}

std::string canonical_path(std::string_view path) {
    std::wstring existing(32768, L'\0');
    const DWORD length =
        GetFullPathNameW(win32::spelled(path).c_str(), static_cast<DWORD>(existing.size()), existing.data(), nullptr);
    if (length == 0 || length >= existing.size()) return std::string(path);
    existing.resize(length);
    // The part that exists, with what is missing put behind it again.
    for (std::wstring missing; !existing.empty();) {
        if (const auto real = real_path(existing))
            return win32::code_page_name(*real + missing).value_or(std::string(path));
        const std::size_t delimiter = existing.rfind(L'\\');
        if (delimiter == std::wstring::npos) break;
        missing.insert(0, existing.substr(delimiter));
        existing.resize(delimiter);
    }
    return std::string(path);
}

std::optional<std::vector<FolderEntry>> list_folder(std::string_view path, std::vector<FileStatus>* left_out) {
    const std::wstring folder = path.empty() ? L"." : win32::spelled(path);
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return std::nullopt;
    std::vector<FolderEntry> entries;
    do {
        const std::wstring name = found.cFileName;
        if (name == L"." || name == L"..") continue;
        const std::optional<std::string> code_page_name = win32::code_page_name(name);
        const FileStatus own = status_of(found.dwFileAttributes, found.nFileSizeHigh, found.nFileSizeLow);
        const bool is_link =
            (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) && names_another_place(found.dwReserved0);
        const FileStatus status = is_link ? followed(folder + L"\\" + name, own) : own;
        if (code_page_name)
            entries.push_back({*code_page_name, status});
        else if (left_out)
            left_out->push_back(status);
    } while (FindNextFileW(search, &found));
    const DWORD error = GetLastError();
    FindClose(search);
    SetLastError(error);
    if (error != ERROR_NO_MORE_FILES) return std::nullopt;
    std::ranges::sort(entries, {}, &FolderEntry::name);
    return entries;
}

}  // namespace tool
