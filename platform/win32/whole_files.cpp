#include <atomic>
#include <exception>

#include "framework/scalars.h"
#include "platform/folder_file.h"
#include "platform/new_file.h"
#include "platform/system.h"
#include "platform/win32/handle.h"
#include "platform/win32/names.h"

namespace tool {
namespace {

using win32::Handle;

bool failed(DWORD error) {
    SetLastError(error);
    return false;
}

bool read_plain_file(const wchar_t* path, std::uint64_t limit, std::string& bytes) try {
    const Handle file(CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    LARGE_INTEGER size;
    if (!file.is_open() || !GetFileSizeEx(file.get(), &size)) return false;
    if (GetFileType(file.get()) != FILE_TYPE_DISK) return failed(ERROR_INVALID_NAME);
    if (static_cast<std::uint64_t>(size.QuadPart) > limit) return failed(ERROR_FILE_TOO_LARGE);
    bytes.resize(static_cast<std::size_t>(size.QuadPart));
    std::size_t got = 0;
    if (!win32::read_all(file.get(), bytes.data(), bytes.size(), &got)) return false;
    bytes.resize(got);
    return true;
} catch (const std::exception&) {  // no memory for it, or longer than any text can be
    return failed(ERROR_NOT_ENOUGH_MEMORY);
}

// A new name beside a target; the copy that gets it disappears unless it takes the target's place.
class Replacement {
 public:
    explicit Replacement(const std::wstring& target) : target_(target) {
        static std::atomic<unsigned> made = 0;
        name_ = target.substr(0, target.find_last_of(L"\\:") + 1) + L".new-" + std::to_wstring(GetCurrentProcessId()) +
                L"-" + std::to_wstring(++made);
    }
    ~Replacement() {
        if (name_.empty()) return;
        const DWORD error = GetLastError();
        SetFileAttributesW(name_.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileW(name_.c_str());
        SetLastError(error);
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    const wchar_t* name() const { return name_.c_str(); }
    bool take_place(DWORD flags) {
        if (!MoveFileExW(name_.c_str(), target_.c_str(), flags)) return false;
        name_.clear();
        return true;
    }

 private:
    std::wstring target_, name_;
};

// False with the error set where `target` is there but a folder or read-only. *attributes are an existing file's.
bool may_replace(const std::wstring& target, DWORD* attributes) {
    *attributes = GetFileAttributesW(target.c_str());
    if (*attributes == INVALID_FILE_ATTRIBUTES) return true;
    return !(*attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DEVICE)) ||
           failed(ERROR_ACCESS_DENIED);
}

}  // namespace

std::optional<std::string> read_file(std::string_view path, std::uint64_t limit) {
    std::string bytes;
    if (read_plain_file(win32::spelled(path).c_str(), limit, bytes)) return bytes;
    note_unread(path);
    return std::nullopt;
}

std::optional<std::string> read_file_at(const std::filesystem::path& path, std::uint64_t limit) {
    std::string bytes;
    if (read_plain_file(path.c_str(), limit, bytes)) return bytes;
    return std::nullopt;
}

std::filesystem::path path_in(const std::filesystem::path& folder, std::string_view name) {
    return folder / win32::spelled(name);
}

bool write_file_atomically(std::string_view path, std::string_view bytes) {
    const auto target = behind_links(win32::spelled(path));
    NewFile file;
    return target && file.create_beside(*target, Access::usual) && file.write(bytes) && file.take_place(*target);
}

bool copy_file(std::string_view from, std::string_view to, bool fail_if_exists) {
    const auto real = behind_links(win32::spelled(to));
    if (!real) return false;
    const std::wstring target = real->wstring();
    DWORD attributes;
    if (!may_replace(target, &attributes)) return false;
    if (fail_if_exists && attributes != INVALID_FILE_ATTRIBUTES) return failed(ERROR_FILE_EXISTS);
    Replacement replacement(target);
    if (!CopyFileW(win32::spelled(from).c_str(), replacement.name(), TRUE)) return false;
    return replacement.take_place(fail_if_exists ? 0 : MOVEFILE_REPLACE_EXISTING);
}

}  // namespace tool
