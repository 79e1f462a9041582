#include "surface/whole_file.h"

#include "platform/new_file.h"

namespace tool {

std::string write_whole_file(const std::string& path, std::string_view bytes) {
    const auto target = behind_links(std::u8string(path.begin(), path.end()));
    NewFile file;
    const bool written =
        target && file.create_beside(*target, Access::owner) && file.write(bytes) && file.take_place(*target);
    return written ? "" : path + " can't be written.";
}

}  // namespace tool
