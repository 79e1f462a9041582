#include "host/program_folder.h"

#include <CodePage.h>
#include <Framework.h>

#include <algorithm>

#include "host/path.h"

namespace cephtool {

std::filesystem::path program_folder() {
    char path[4096];
    GetModuleFileNameA(nullptr, path, sizeof path);
    std::string program = Utf8FromCodePage932(path);
    std::ranges::replace(program, '\\', '/');
    return path_from_utf8(program).parent_path().make_preferred();
}

std::filesystem::path shared_folder() {
    const std::filesystem::path beside = (program_folder() / "../share/tool").lexically_normal();
    std::error_code failure;
    return std::filesystem::is_directory(beside, failure) ? beside
                                                          : (program_folder() / "../../share/tool").lexically_normal();
}

}  // namespace cephtool
