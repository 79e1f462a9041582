#include "host/held_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace cephtool {
namespace {

bool is_still_named(int descriptor, const std::filesystem::path& path) {
    struct stat file, named;
    return fstat(descriptor, &file) == 0 && lstat(path.c_str(), &named) == 0 && file.st_dev == named.st_dev &&
           file.st_ino == named.st_ino;
}

bool is_plain(int descriptor) {
    struct stat file;
    return fstat(descriptor, &file) == 0 && S_ISREG(file.st_mode);
}

bool fill(int descriptor, const std::string& text) {
    return ftruncate(descriptor, 0) == 0 &&
           ::write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

}  // namespace

HeldFile::Outcome HeldFile::take(const std::filesystem::path& path, const std::string& text) {
    constexpr int attempts = 100;  // another may end, and remove the file, between two steps of this one
    constexpr int flags = O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    for (int i = 0; i < attempts; ++i) {
        int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | flags, 0644);
        // Another user's, which is removed when nobody holds it.
        const bool is_foreign = descriptor < 0 && errno == EACCES;
        if (is_foreign) descriptor = ::open(path.c_str(), O_RDONLY | flags);
        if (descriptor < 0) return Outcome::not_written;
        const bool locked = is_plain(descriptor) && flock(descriptor, LOCK_EX | LOCK_NB) == 0;
        const int error = locked || is_plain(descriptor) ? errno : EINVAL;
        const bool named = locked && is_still_named(descriptor, path);
        if (named && !is_foreign && fill(descriptor, text)) {
            path_ = path;
            handle_ = descriptor;
            return Outcome::held;
        }
        const bool removed = named && unlink(path.c_str()) == 0;
        const bool has_no_locks = !locked && (error == ENOLCK || error == ENOTSUP);
        if (has_no_locks) unlink(path.c_str());
        ::close(descriptor);
        if (has_no_locks) return Outcome::without_locks;
        if (!locked) return error == EWOULDBLOCK ? Outcome::held_by_another : Outcome::not_written;
        if (named && !(is_foreign && removed)) return Outcome::not_written;
    }
    return Outcome::not_written;
}

HeldFile::~HeldFile() {
    if (handle_ == -1) return;
    unlink(path_.c_str());
    ::close(static_cast<int>(handle_));
}

}  // namespace cephtool
