#include "util/delimiter.h"

#include "platform/text.h"

namespace tool {
namespace {

constexpr std::size_t shortest_with_folder = 4;  // "C:\x"; what is shorter names at most a drive

}  // namespace

char delimiter_of(std::string_view path) {
    return find_char(path.substr(char_length(path)), '/') == std::string_view::npos ? '\\' : '/';
}

bool ends_in_delimiter(std::string_view path) {
    return !path.empty() && find_last_char(path, delimiter_of(path)) == path.size() - 1;
}

std::string with_delimiter(std::string path) {
    if (!ends_in_delimiter(path)) path += delimiter_of(path);
    return path;
}

std::string without_delimiter(std::string path) {
    if (path.empty()) return path;
    // Kept: bytes are counted and the first byte stays even when it is half a character. Only drives are this short.
    if (path.size() < shortest_with_folder) return path.substr(0, 1) + ":\\";
    if (ends_in_delimiter(path)) path.pop_back();
    return path;
}

}  // namespace tool
