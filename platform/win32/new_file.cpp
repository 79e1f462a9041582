#include "platform/new_file.h"

#include <cstring>
#include <memory>
#include <string>
#include <utility>

#include "framework/scalars.h"
#include "platform/win32/handle.h"
#include "platform/win32/real_path.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

bool failed(DWORD error) {
    SetLastError(error);
    return false;
}

HANDLE handle_of(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

// Nobody else may write or remove it meanwhile, so that others see that its writer lives; what a killed one held is let
// go.
HANDLE open_alone(const fs::path& name, DWORD disposition, DWORD flags) {
    return CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr, disposition,
                       FILE_ATTRIBUTE_NORMAL | flags, nullptr);
}

// By the handle, so that the file is held until it has its name.
bool rename(HANDLE file, const fs::path& target, bool replace) {
    const std::wstring name = fs::absolute(target).make_preferred().wstring();
    const std::size_t size = sizeof(FILE_RENAME_INFO) + name.size() * sizeof(wchar_t);
    const auto bytes = std::make_unique<std::byte[]>(size);
    auto* const info = new (bytes.get()) FILE_RENAME_INFO{};
    info->ReplaceIfExists = replace;
    info->FileNameLength = static_cast<DWORD>(name.size() * sizeof(wchar_t));
    std::memcpy(info->FileName, name.data(), name.size() * sizeof(wchar_t));
    return SetFileInformationByHandle(file, FileRenameInfo, info, static_cast<DWORD>(size));
}

}  // namespace

std::optional<fs::path> behind_links(const fs::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_REPARSE_POINT)) return path;
    const std::optional<std::wstring> real = win32::real_path(path.wstring());
    return real ? std::optional<fs::path>(*real) : std::nullopt;
}

bool NewFile::create_at(const fs::path& name, Access) {
    close();
    const HANDLE file = open_alone(name, CREATE_NEW, 0);
    if (file == INVALID_HANDLE_VALUE) return false;
    name_ = name;
    handle_ = reinterpret_cast<std::intptr_t>(file);
    return true;
}

bool NewFile::go_on(const fs::path& name) {
    close();
    const HANDLE file = open_alone(name, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT);
    if (file == INVALID_HANDLE_VALUE) return false;
    name_ = name;
    handle_ = reinterpret_cast<std::intptr_t>(file);
    is_beside_ = false;
    BY_HANDLE_FILE_INFORMATION found;
    if (GetFileType(file) == FILE_TYPE_DISK && GetFileInformationByHandle(file, &found) &&
        !(found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) &&
        SetFilePointerEx(file, LARGE_INTEGER{}, nullptr, FILE_END))
        return true;
    close();
    return failed(ERROR_INVALID_NAME);
}

bool NewFile::write(std::string_view bytes) {
    return win32::write_all(handle_of(handle_), bytes.data(), bytes.size());
}

bool NewFile::cut(std::uint64_t size) {
    LARGE_INTEGER end;
    end.QuadPart = static_cast<LONGLONG>(size);
    return SetFilePointerEx(handle_of(handle_), end, nullptr, FILE_BEGIN) && SetEndOfFile(handle_of(handle_));
}

bool NewFile::may_replace(const fs::path& target) {
    const DWORD attributes = GetFileAttributesW(target.c_str());
    constexpr DWORD in_the_way =
        FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DEVICE | FILE_ATTRIBUTE_REPARSE_POINT;
    return attributes == INVALID_FILE_ATTRIBUTES || !(attributes & in_the_way) || failed(ERROR_ACCESS_DENIED);
}

bool NewFile::take_place(const fs::path& target, std::optional<unsigned>, bool fail_if_exists) {
    if (!may_replace(target)) return false;
    const HANDLE file = handle_of(handle_);
    FILE_BASIC_INFO basic{};
    const DWORD attributes = GetFileAttributesW(target.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        basic.FileAttributes = attributes;
        if (!SetFileInformationByHandle(file, FileBasicInfo, &basic, sizeof basic)) return false;
    }
    if (!FlushFileBuffers(file) || !rename(file, target, !fail_if_exists)) return false;
    is_beside_ = false;
    close();
    return true;
}

bool NewFile::name_was_taken() {
    return GetLastError() == ERROR_FILE_EXISTS || GetLastError() == ERROR_ALREADY_EXISTS;
}

bool NewFile::remove_abandoned(const fs::path& name) {
    return DeleteFileW(name.c_str());  // not while its writer holds it
}

void NewFile::close() {
    const HANDLE file = handle_of(std::exchange(handle_, -1));
    if (file == INVALID_HANDLE_VALUE) return;
    const DWORD error = GetLastError();
    CloseHandle(file);
    SetLastError(error);
}

void NewFile::remove() const {
    const DWORD error = GetLastError();
    FILE_DISPOSITION_INFO gone{TRUE};
    SetFileInformationByHandle(handle_of(handle_), FileDispositionInfo, &gone, sizeof gone);
    SetLastError(error);
}

}  // namespace tool
