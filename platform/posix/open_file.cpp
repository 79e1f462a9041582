#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <limits>

#include "platform/posix/descriptor.h"
#include "platform/posix/names.h"
#include "platform/system.h"

namespace tool {
namespace {

FileFault fault_of(int error) {
    set_last_error(static_cast<std::uint32_t>(error));
    switch (error) {
        case ENOENT: return FileFault::not_found;
        case ENOTDIR:
        case ENAMETOOLONG:
        case ELOOP: return FileFault::bad_path;
        case EMFILE:
        case ENFILE: return FileFault::too_many_open;
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
        case ETXTBSY: return FileFault::access_denied;
        case EBADF: return FileFault::invalid_file;
        case EINVAL:
        case ESPIPE: return FileFault::bad_seek;
        case ENOSPC:
        case EDQUOT:
        case EFBIG: return FileFault::disk_full;
        case EIO: return FileFault::io;
        default: return FileFault::other;
    }
}

FileFault fault_if(bool failed) {
    return failed ? fault_of(errno) : FileFault::none;
}

int open_flags(OpenFile::Mode mode) {
    using Access = OpenFile::Access;
    int flags = mode.access == Access::read ? O_RDONLY : mode.access == Access::write ? O_WRONLY : O_RDWR;
    if (mode.create) flags |= O_CREAT;
    if (mode.create && mode.truncate) flags |= O_TRUNC;
    return flags | O_CLOEXEC | O_NONBLOCK;
}

// Opened without blocking, so that a pipe without another end is not waited for; read and written with.
bool make_blocking(int descriptor) {
    const int flags = fcntl(descriptor, F_GETFL);
    return flags >= 0 && fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK) == 0;
}

}  // namespace

std::unique_ptr<OpenFile> OpenFile::open(std::string_view path, Mode mode, FileFault* fault) {
    const int descriptor = ::open(posix::found(path).c_str(), open_flags(mode), 0666);
    *fault = fault_if(descriptor < 0);
    if (descriptor < 0) return nullptr;
    auto file = std::unique_ptr<OpenFile>(new OpenFile(descriptor));
    struct stat status;
    if (fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode))
        *fault = fault_of(EISDIR);
    else
        *fault = fault_if(!make_blocking(descriptor));
    if (*fault != FileFault::none) file.reset();
    return file;
}

OpenFile::~OpenFile() {
    close();
}

FileFault OpenFile::read(void* buffer, std::size_t count, std::size_t* done) {
    const ssize_t got = posix::read_all(static_cast<int>(handle_), buffer, count);
    *done = got < 0 ? 0 : static_cast<std::size_t>(got);
    return fault_if(got < 0);
}

FileFault OpenFile::write(const void* data, std::size_t count) {
    return fault_if(!posix::write_all(static_cast<int>(handle_), data, count));
}

FileFault OpenFile::seek(std::int64_t offset, From from, std::uint64_t* position) {
    const int whence = from == From::begin ? SEEK_SET : from == From::current ? SEEK_CUR : SEEK_END;
    const off_t at = lseek(static_cast<int>(handle_), offset, whence);
    if (at >= 0) *position = static_cast<std::uint64_t>(at);
    return fault_if(at < 0);
}

FileFault OpenFile::length(std::uint64_t* bytes) const {
    struct stat status;
    const bool failed = fstat(static_cast<int>(handle_), &status) != 0;
    if (!failed) *bytes = static_cast<std::uint64_t>(status.st_size);
    return fault_if(failed);
}

FileFault OpenFile::set_length(std::uint64_t bytes) {
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());
    if (bytes > largest) return fault_of(EFBIG);
    return fault_if(ftruncate(static_cast<int>(handle_), static_cast<off_t>(bytes)) != 0);
}

FileFault OpenFile::flush() {
    return fault_if(fsync(static_cast<int>(handle_)) != 0 && errno != EINVAL && errno != EROFS);
}

FileFault OpenFile::close() {
    const int descriptor = static_cast<int>(handle_);
    handle_ = -1;
    return fault_if(descriptor >= 0 && ::close(descriptor) != 0);
}

}  // namespace tool
