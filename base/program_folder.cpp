#include "base/program_folder.h"

#include <Framework.h>

#include "base/error.h"
#include "base/library_name.h"
#include "base/system.h"

namespace cephtool {
namespace {

// As the library has it, which is also what a test has set. "" when code page 932 can't write it.
std::filesystem::path program_of_library() {
    char path[4096];
    GetModuleFileNameA(nullptr, path, sizeof path);
    return path_from_library(path);
}

std::filesystem::path& folder_of_host() {
    static std::filesystem::path folder;
    return folder;
}

}  // namespace

void set_program_folder(const std::filesystem::path& folder) {
    folder_of_host() = folder;
}

std::filesystem::path program_folder() {
    if (!folder_of_host().empty()) return folder_of_host();
    std::filesystem::path program = program_of_library();
    if (program.empty()) program = running_program();
    if (program.empty()) {  // never the current folder: it may be anybody's
        throw Error(ExitCode::bad_input, "the system does not tell where the program lies", "On Linux it needs /proc.");
    }
    return program.parent_path();
}

std::filesystem::path shared_folder() {
    const std::filesystem::path beside = (program_folder() / "../share/tool").lexically_normal();
    std::error_code failure;
    return std::filesystem::is_directory(beside, failure) ? beside
                                                          : (program_folder() / "../../share/tool").lexically_normal();
}

}  // namespace cephtool
