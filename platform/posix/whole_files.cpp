#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <exception>

#include "platform/folder_file.h"
#include "platform/new_file.h"
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

// Opens it beside what `path` stands for; nothing with the error set when it can't.
std::optional<std::filesystem::path> opened_beside(std::string_view path, NewFile& file) {
    std::optional<std::filesystem::path> target = behind_links(posix::found(path));
    if (target && file.create_beside(*target, Access::usual)) return target;
    failed(errno);
    return std::nullopt;
}

}  // namespace

std::optional<std::string> read_file(std::string_view path, std::uint64_t limit) {
    const Descriptor file(open_found(path));
    std::string bytes;
    if (read_plain_file(file.get(), limit, bytes)) return bytes;
    note_unread(path);
    return std::nullopt;
}

std::optional<std::string> read_file_at(const std::filesystem::path& path, std::uint64_t limit) {
    const Descriptor file(open_for_reading(path.native()));
    std::string bytes;
    if (read_plain_file(file.get(), limit, bytes)) return bytes;
    return std::nullopt;
}

std::filesystem::path path_in(const std::filesystem::path& folder, std::string_view name) {
    return posix::found_in((folder / "").native(), name);
}

bool write_file_atomically(std::string_view path, std::string_view bytes) {
    NewFile file;
    const auto target = opened_beside(path, file);
    return target && ((file.write(bytes) && file.take_place(*target)) || failed(errno));
}

bool copy_file(std::string_view from, std::string_view to, bool fail_if_exists) {
    const Descriptor source(open_found(from));
    struct stat status;
    if (!plain_file(source.get(), status)) return false;
    NewFile file;
    const auto target = opened_beside(to, file);
    if (!target) return false;
    std::array<char, 65536> block;
    while (const ssize_t got = posix::read_all(source.get(), block.data(), block.size()))
        if (got < 0 || !file.write({block.data(), static_cast<std::size_t>(got)})) return failed(errno);
    // Whoever owns the copy runs it as himself.
    return file.take_place(*target, status.st_mode & 0777, fail_if_exists) || failed(errno);
}

}  // namespace tool
