#include "host/desktop.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

extern char** environ;

namespace cephtool {

std::filesystem::path private_temporary_folder() {
    std::string name = (std::filesystem::temp_directory_path() / "cephtool-XXXXXX").string();
    if (mkdtemp(name.data())) return name;
    throw std::filesystem::filesystem_error("no temporary folder", name, {errno, std::generic_category()});
}

bool open_in_browser(const std::filesystem::path& page) {
#ifdef __APPLE__
    std::string opener = "open";
#else
    if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY")) return false;
    std::string opener = "xdg-open";
#endif
    std::string file = page.string();
    char* const arguments[] = {opener.data(), file.data(), nullptr};
    pid_t process = 0;
    if (posix_spawnp(&process, opener.c_str(), nullptr, nullptr, arguments, environ) != 0) return false;
    int state = 0;
    while (waitpid(process, &state, 0) < 0)
        if (errno != EINTR) return false;
    return WIFEXITED(state) && WEXITSTATUS(state) == 0;
}

}  // namespace cephtool
