#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>

#include "platform/posix/names.h"
#include "platform/system.h"

namespace tool {
namespace {

bool succeeded(int result) {
    if (result != 0) set_last_error(static_cast<std::uint32_t>(errno));
    return result == 0;
}

// Of `name` as seen from the open folder (or AT_FDCWD).
std::optional<FileStatus> status_at(int folder, const char* name) {
    struct stat own, behind;
    if (!succeeded(fstatat(folder, name, &own, AT_SYMLINK_NOFOLLOW))) return std::nullopt;
    FileStatus result;
    result.is_link = S_ISLNK(own.st_mode);
    if (!result.is_link || fstatat(folder, name, &behind, 0) != 0) behind = own;
    result.is_folder = S_ISDIR(behind.st_mode);
    result.system = !result.is_folder && !S_ISREG(behind.st_mode);
    result.read_only = !(behind.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH));
    result.size = S_ISREG(behind.st_mode) ? static_cast<std::uint64_t>(behind.st_size) : 0;
    return result;
}

bool names_hidden(std::string_view name) {
    return name.starts_with('.') && name != "." && name != "..";
}

std::string last_name(std::string_view path) {
    while (path.ends_with('/')) path.remove_suffix(1);
    return std::string(path.substr(path.rfind('/') + 1));
}

}  // namespace

std::optional<FileStatus> file_status(std::string_view path) {
    const std::string name = posix::found(path);
    std::optional<FileStatus> status = status_at(AT_FDCWD, name.c_str());
    if (status)
        status->hidden = names_hidden(last_name(name));
    else
        note_unread(path);
    return status;
}

bool remove_file(std::string_view path) {
    return succeeded(unlink(posix::found(path).c_str()));
}

bool remove_folder(std::string_view path) {
    return succeeded(rmdir(posix::found(path).c_str()));
}

bool rename_file(std::string_view from, std::string_view to) {
    struct stat status;
    const std::string target = posix::in_found_folder(to);
    if (lstat(target.c_str(), &status) == 0) {
        set_last_error(EEXIST);
        return false;
    }
    return succeeded(rename(posix::found(from).c_str(), target.c_str()));
}

bool make_folder(std::string_view path) {
    return succeeded(mkdir(posix::found(path).c_str(), 0777));
}

bool clear_read_only(std::string_view path) {
    const std::string name = posix::found(path);
    struct stat status;
    if (!succeeded(stat(name.c_str(), &status))) return false;
    return (status.st_mode & S_IWUSR) || succeeded(chmod(name.c_str(), (status.st_mode & 07777) | S_IWUSR));
}

bool set_current_folder(std::string_view path) {
    return succeeded(chdir(posix::found(path).c_str()));
}

bool same_folder(std::string_view a, std::string_view b) {
    struct stat status_a, status_b;
    return stat(posix::found(a).c_str(), &status_a) == 0 && stat(posix::found(b).c_str(), &status_b) == 0 &&
           status_a.st_dev == status_b.st_dev && status_a.st_ino == status_b.st_ino;
}

std::string canonical_path(std::string_view path) {
    // The part that exists, with what is missing put behind it again.
    std::string existing = posix::found(path), missing;
    while (!existing.empty() && existing != "/") {
        const std::unique_ptr<char, decltype(&std::free)> real(realpath(existing.c_str(), nullptr), std::free);
        if (real) return posix::code_page_name(real.get() + missing).value_or(std::string(path));
        while (existing.size() > 1 && existing.ends_with('/')) existing.pop_back();
        const std::size_t slash = existing.rfind('/');
        missing.insert(0, "/" + existing.substr(slash == std::string::npos ? 0 : slash + 1));
        existing = slash == std::string::npos ? "." : existing.substr(0, std::max<std::size_t>(slash, 1));
        if (existing == "." && missing.starts_with("/./")) break;
    }
    return std::string(path);
}

std::optional<std::vector<FolderEntry>> list_folder(std::string_view path, std::vector<FileStatus>* left_out) {
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(posix::found(path).c_str()), closedir);
    if (!listing) {
        succeeded(-1);
        return std::nullopt;
    }
    std::vector<FolderEntry> entries;
    for (;;) {
        errno = 0;
        const dirent* const entry = readdir(listing.get());
        if (!entry && !succeeded(errno)) return std::nullopt;
        if (!entry) break;
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..") continue;
        const std::optional<std::string> code_page_name = posix::code_page_name(name);
        std::optional<FileStatus> status = status_at(dirfd(listing.get()), entry->d_name);
        if (status) status->hidden = names_hidden(name);
        if (code_page_name && status)
            entries.push_back({*code_page_name, *status});
        else if (left_out)
            left_out->push_back(status.value_or(FileStatus()));
    }
    std::ranges::sort(entries, {}, &FolderEntry::name);
    return entries;
}

}  // namespace tool
