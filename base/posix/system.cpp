#include "base/system.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace cephtool {

void prepare_standard_streams() {}

bool is_terminal(StandardStream stream) {
    return isatty(static_cast<int>(stream)) == 1;
}

std::string this_process() {
    char computer[256] = "";
    const bool named = gethostname(computer, sizeof computer - 1) == 0;
    return "process " + std::to_string(getpid()) + (named ? std::string(" on ") + computer : "");
}

bool is_standard_input(const std::filesystem::path& file) {
    struct stat input, named;
    return fstat(STDIN_FILENO, &input) == 0 && stat(file.c_str(), &named) == 0 && S_ISREG(input.st_mode) &&
           input.st_dev == named.st_dev && input.st_ino == named.st_ino;
}

std::filesystem::path running_program() {
    std::error_code failure;
    return std::filesystem::read_symlink("/proc/self/exe", failure);
}

std::ptrdiff_t read_standard_input(char* to, std::size_t size, bool (*stop)()) {
    constexpr int look_up_ms = 100;  // for a signal that came just before the wait
    while (!stop()) {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        const int ready = poll(&input, 1, look_up_ms);
        if (ready == 0 || (ready < 0 && errno == EINTR)) continue;
        const ssize_t got = read(STDIN_FILENO, to, size);
        if (got >= 0 || (errno != EINTR && errno != EAGAIN)) return got;
    }
    return 0;
}

bool can_open_files(int count) {
    const int file = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (file < 0) return errno != EMFILE && errno != ENFILE;
    const bool more = count <= 1 || can_open_files(count - 1);
    close(file);
    return more;
}

std::FILE* opened_to_read(const std::filesystem::path& path) {
    return std::fopen(path.c_str(), "rb");
}

}  // namespace cephtool
