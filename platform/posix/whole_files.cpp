#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "platform/posix/descriptor.h"
#include "platform/posix/names.h"
#include "platform/system.h"

namespace tool {
namespace {

using posix::Descriptor;

bool failed(int error) {
    set_last_error(static_cast<std::uint32_t>(error));
    return false;
}

// Not blocking, so that a pipe of that name is refused and not waited for.
int open_for_reading(const std::string& path) {
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
}

int open_found(std::string_view path) {
    const std::string exact = posix::spelled(path);
    const int descriptor = open_for_reading(exact);
    if (descriptor >= 0 || (errno != ENOENT && errno != ENOTDIR)) return descriptor;
    const int error = errno;
    const std::string other = posix::found(path);
    if (other != exact) return open_for_reading(other);
    errno = error;
    return -1;
}

// False with the error set unless the descriptor is that of a plain file.
bool plain_file(int descriptor, struct stat& status) {
    if (descriptor < 0 || fstat(descriptor, &status) != 0) return failed(errno);
    return S_ISREG(status.st_mode) || failed(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
}

bool read_plain_file(int descriptor, std::uint64_t limit, std::string& bytes) try {
    struct stat status;
    if (!plain_file(descriptor, status)) return false;
    if (static_cast<std::uint64_t>(status.st_size) > limit) return failed(EFBIG);
    bytes.resize(static_cast<std::size_t>(status.st_size));
    const ssize_t got = posix::read_all(descriptor, bytes.data(), bytes.size());
    if (got < 0) return failed(errno);
    bytes.resize(static_cast<std::size_t>(got));
    return true;
} catch (const std::exception&) {  // no memory for it, or longer than any text can be
    return failed(ENOMEM);
}

// A new file beside its target, which disappears unless it takes the target's place.
class Replacement {
 public:
    explicit Replacement(const std::string& target) : target_(target), file_(create()) {}
    ~Replacement() {
        if (is_temporary_) unlink(name_.c_str());
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    bool is_open() const { return file_.is_open(); }
    int descriptor() const { return file_.get(); }

    // As far as the user may give it away: a file that root writes stays its owner's.
    void belong_as(const struct stat& before) {
        if (fchown(file_.get(), before.st_uid, before.st_gid) == 0) return;
        [[maybe_unused]] const int no_matter = fchown(file_.get(), static_cast<uid_t>(-1), before.st_gid);
    }

    // Without a mode the new file keeps what the user's mask made of it.
    bool take_place(std::optional<mode_t> mode, bool fail_if_exists) {
        if (mode && fchmod(file_.get(), *mode & 07777) != 0) return failed(errno);
        if (!file_.close()) return failed(errno);
        if (fail_if_exists) {
            // A link is refused where the name is taken, a rename is not. Some file systems know no links.
            if (link(name_.c_str(), target_.c_str()) == 0) return true;
            struct stat status;
            if (errno == EEXIST || lstat(target_.c_str(), &status) == 0) return failed(EEXIST);
        }
        if (rename(name_.c_str(), target_.c_str()) != 0) return failed(errno);
        is_temporary_ = false;
        return true;
    }

 private:
    int create() {
        static std::atomic<unsigned> made = 0;
        const std::string folder = target_.substr(0, target_.rfind('/') + 1);
        for (int attempt = 0; attempt < 100; ++attempt) {
            name_ = folder + ".new-" + std::to_string(getpid()) + "-" + std::to_string(++made);
            const int descriptor = ::open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            is_temporary_ = descriptor >= 0;
            if (is_temporary_ || errno != EEXIST) return descriptor;
        }
        return -1;
    }

    std::string target_, name_;
    bool is_temporary_ = false;
    Descriptor file_;
};

// The file itself where `path` is a link to one, so that writing it does not replace the link.
std::string behind_links(std::string path) {
    char* const real = realpath(path.c_str(), nullptr);
    if (real) path = real;
    std::free(real);
    return path;
}

constexpr mode_t any_write = S_IWUSR | S_IWGRP | S_IWOTH;

// False with the error set where `target` is there but no plain file, or read-only. *before is an existing file's.
bool may_replace(const std::string& target, std::optional<struct stat>* before) {
    struct stat status;
    if (stat(target.c_str(), &status) != 0) return true;
    if (!S_ISREG(status.st_mode)) return failed(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    *before = status;
    return (status.st_mode & any_write) || failed(EACCES);
}

}  // namespace

std::optional<std::string> read_file(std::string_view path, std::uint64_t limit) {
    const Descriptor file(open_found(path));
    std::string bytes;
    if (read_plain_file(file.get(), limit, bytes)) return bytes;
    note_unread(path);
    return std::nullopt;
}

bool write_file_atomically(std::string_view path, std::string_view bytes) {
    const std::string target = behind_links(posix::found(path));
    std::optional<struct stat> before;
    if (!may_replace(target, &before)) return false;
    Replacement file(target);
    if (!file.is_open() || !posix::write_all(file.descriptor(), bytes.data(), bytes.size())) return failed(errno);
    if (!before) return file.take_place(std::nullopt, false);
    file.belong_as(*before);
    return file.take_place(before->st_mode, false);
}

bool copy_file(std::string_view from, std::string_view to, bool fail_if_exists) {
    const Descriptor source(open_found(from));
    struct stat status;
    if (!plain_file(source.get(), status)) return false;
    const std::string target = behind_links(posix::found(to));
    std::optional<struct stat> before;
    if (!may_replace(target, &before)) return false;
    Replacement file(target);
    if (!file.is_open()) return failed(errno);
    std::array<char, 65536> block;
    while (const ssize_t got = posix::read_all(source.get(), block.data(), block.size()))
        if (got < 0 || !posix::write_all(file.descriptor(), block.data(), static_cast<std::size_t>(got)))
            return failed(errno);
    if (before) file.belong_as(*before);
    return file.take_place(status.st_mode & 0777, fail_if_exists);  // whoever owns the copy runs it as himself
}

}  // namespace tool
