#include "platform/new_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

#include "platform/posix/descriptor.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

bool failed(int error) {
    errno = error;
    return false;
}

int descriptor_of(std::intptr_t handle) {
    return static_cast<int>(handle);
}

// A writer holds its file, so that others see that it lives: the system lets go of what a killed one held. Where the
// file system has no locks nothing counts as abandoned.
bool is_held_by_another(int descriptor) {
    return flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

bool is_named(const struct stat& file, const fs::path& name) {
    struct stat named;
    return lstat(name.c_str(), &named) == 0 && named.st_dev == file.st_dev && named.st_ino == file.st_ino;
}

// On the disk; where a file system can't tell, it is as good as it gets.
bool sync(int descriptor) {
    return fsync(descriptor) == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP;
}

// So that the new name outlives a loss of power, too. The file is whole in any case.
void sync_folder(const fs::path& folder) {
    const posix::Descriptor open(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (open.is_open()) fsync(open.get());
}

constexpr mode_t any_write = S_IWUSR | S_IWGRP | S_IWOTH;

}  // namespace

std::optional<fs::path> behind_links(const fs::path& path) {
    constexpr int most_links = 40;  // as many as systems follow
    std::error_code failure;
    fs::path file = path;
    for (int i = 0; i <= most_links; ++i) {
        if (!fs::is_symlink(fs::symlink_status(file, failure))) return file;
        file = file.parent_path() / fs::read_symlink(file, failure);
    }
    errno = ELOOP;
    return std::nullopt;
}

bool NewFile::create_at(const fs::path& name, Access access) {
    close();
    const int descriptor =
        ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, access == Access::owner ? 0600 : 0666);
    if (descriptor < 0) return false;
    name_ = name;
    handle_ = descriptor;
    struct stat status;
    if (!is_held_by_another(descriptor) && fstat(descriptor, &status) == 0 && status.st_nlink > 0) return true;
    close();  // another writer took it for abandoned before it was held
    return failed(EEXIST);
}

bool NewFile::go_on(const fs::path& name) {
    close();
    const int descriptor = ::open(name.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return false;
    name_ = name;
    handle_ = descriptor;
    is_beside_ = false;
    struct stat status;
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && !is_held_by_another(descriptor) &&
        lseek(descriptor, 0, SEEK_END) >= 0)
        return true;
    close();
    return failed(EINVAL);
}

bool NewFile::write(std::string_view bytes) {
    return posix::write_all(descriptor_of(handle_), bytes.data(), bytes.size());
}

bool NewFile::cut(std::uint64_t size) {
    const int descriptor = descriptor_of(handle_);
    const auto end = static_cast<off_t>(size);
    return ftruncate(descriptor, end) == 0 && lseek(descriptor, end, SEEK_SET) == end;
}

bool NewFile::may_replace(const fs::path& target) {
    struct stat status;
    if (lstat(target.c_str(), &status) != 0) return true;
    if (!S_ISREG(status.st_mode)) return failed(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    return (status.st_mode & any_write) != 0 || failed(EACCES);
}

bool NewFile::take_place(const fs::path& target, std::optional<unsigned> mode, bool fail_if_exists) {
    if (!may_replace(target)) return false;
    const int descriptor = descriptor_of(handle_);
    struct stat before;
    if (lstat(target.c_str(), &before) == 0) {
        // As far as the user may give it away: a file that root writes stays its owner's.
        if (fchown(descriptor, before.st_uid, before.st_gid) != 0) {
            [[maybe_unused]] const int no_matter = fchown(descriptor, static_cast<uid_t>(-1), before.st_gid);
        }
        if (!mode) mode = before.st_mode & 07777;
    }
    if (mode && fchmod(descriptor, static_cast<mode_t>(*mode)) != 0) return false;
    if (!sync(descriptor)) return false;
    // A link is refused where the name is taken, a rename is not. Some file systems know no links.
    const bool linked = fail_if_exists && link(name_.c_str(), target.c_str()) == 0;
    if (fail_if_exists && !linked) {
        const bool taken = errno == EEXIST || lstat(target.c_str(), &before) == 0;
        if (taken) return failed(EEXIST);
    }
    if (linked) remove();
    if (!linked && rename(name_.c_str(), target.c_str()) != 0) return false;
    is_beside_ = false;
    close();  // what closing can tell of a file system was told when the file was synced
    sync_folder(target.parent_path());
    return true;
}

bool NewFile::name_was_taken() {
    return errno == EEXIST;
}

bool NewFile::remove_abandoned(const fs::path& name) {
    struct stat status;
    if (lstat(name.c_str(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_uid != geteuid()) return false;
    const posix::Descriptor file(::open(name.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    return file.is_open() && flock(file.get(), LOCK_EX | LOCK_NB) == 0 && fstat(file.get(), &status) == 0 &&
           is_named(status, name) && unlink(name.c_str()) == 0;
}

void NewFile::close() {
    const int error = errno, descriptor = descriptor_of(std::exchange(handle_, -1));
    if (descriptor >= 0) ::close(descriptor);
    errno = error;
}

void NewFile::remove() const {
    const int error = errno;
    unlink(name_.c_str());
    errno = error;
}

}  // namespace tool
