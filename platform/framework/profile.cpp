#include "platform/framework/profile.h"

#include "platform/path.h"
#include "platform/system.h"

namespace tool {

std::string profile_path(std::string_view file) {
    const PathParts parts = split_path(file);
    if (!parts.drive.empty() || !parts.dir.empty()) return std::string(file);
    const std::string program = module_file_name();
    const PathParts beside = split_path(program);
    return std::string(beside.drive).append(beside.dir).append(file);
}

}  // namespace tool
