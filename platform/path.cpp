#include "platform/path.h"

#include "platform/text.h"

namespace tool {

PathParts split_path(std::string_view path) {
    PathParts parts;
    const std::size_t drive = path.size() >= 2 && path[1] == ':' ? 2 : 0;
    parts.drive = path.substr(0, drive);
    std::size_t name = drive, dot = std::string_view::npos;
    for (std::size_t at = drive; at < path.size(); at += char_length(path.substr(at))) {
        if (path[at] == '\\' || path[at] == '/') {
            name = at + 1;
            dot = std::string_view::npos;
        } else if (path[at] == '.') {
            dot = at;
        }
    }
    if (dot == std::string_view::npos) dot = path.size();
    parts.dir = path.substr(drive, name - drive);
    parts.name = path.substr(name, dot - name);
    parts.ext = path.substr(dot);
    return parts;
}

}  // namespace tool
