#include "util/program_folder.h"

#include "platform/path.h"
#include "platform/system.h"

namespace tool {

std::string program_folder() {
    const std::string program = module_file_name();
    const PathParts parts = split_path(program);
    std::string folder = std::string(parts.drive) + std::string(parts.dir);
    if (!parts.dir.empty()) folder.back() = '\\';  // a directory's last character is always a delimiter
    return folder;
}

}  // namespace tool
