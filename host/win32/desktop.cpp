#include "host/desktop.h"

#include <windows.h>

#include <shellapi.h>

#include <string>

namespace cephtool {

// The folder for temporary files is the person's own.
std::filesystem::path private_temporary_folder() {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("cephtool-" + std::to_string(GetCurrentProcessId()));
    std::filesystem::create_directories(folder);
    return folder;
}

bool open_in_browser(const std::filesystem::path& page) {
    return reinterpret_cast<INT_PTR>(ShellExecuteW(nullptr, L"open", page.c_str(), nullptr, nullptr, SW_SHOWNORMAL)) >
           32;
}

}  // namespace cephtool
