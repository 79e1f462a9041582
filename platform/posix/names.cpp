#include "platform/posix/names.h"

#include <dirent.h>
#include <sys/stat.h>

#include <memory>

#include "platform/code_page.h"
#include "platform/text.h"

namespace tool::posix {
namespace {

bool is_there(const std::string& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

bool same_name(std::string_view a, std::string_view b) {
    return equal_ignoring_case(a, b) || lower(a) == lower(b);
}

// The entry of `folder` that `name` (code page 932) names ignoring case.
std::optional<std::string> entry_ignoring_case(const std::string& folder, std::string_view name) {
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder.empty() ? "." : folder.c_str()), closedir);
    std::optional<std::string> best;
    if (!listing) return best;
    while (const dirent* entry = readdir(listing.get())) {
        const std::optional<std::string> candidate = code_page_name(entry->d_name);
        if (candidate && same_name(*candidate, name) && (!best || entry->d_name < *best)) best = entry->d_name;
    }
    return best;
}

bool is_delimiter(char c) {
    return c == '/' || c == '\\';
}

}  // namespace

std::string spelled(std::string_view path) {
    std::string with_slashes(path);
    for (std::size_t at = 0; at < with_slashes.size(); at += char_length(path.substr(at)))
        if (with_slashes[at] == '\\') with_slashes[at] = '/';
    return utf8_from_code_page(with_slashes);
}

std::string found(std::string_view path) {
    std::string exact = spelled(path);
    if (is_there(exact)) return exact;

    std::string result;
    while (!path.empty()) {
        if (is_delimiter(path[0])) {
            result += '/';
            path.remove_prefix(1);
            continue;
        }
        std::size_t length = 0;
        while (length < path.size() && !is_delimiter(path[length])) length += char_length(path.substr(length));
        const std::string_view name = path.substr(0, length);
        const std::string next = spelled(name);
        path.remove_prefix(length);
        if (is_there(result + next)) {
            result += next;
        } else if (const auto entry = entry_ignoring_case(result, name)) {
            result += *entry;
        } else {
            return result + next + spelled(path);
        }
    }
    return result;
}

std::optional<std::string> code_page_name(std::string_view name) {
    std::optional<std::string> result = code_page_from_utf8(name);
    if (result && (find_char(*result, '\\') != std::string::npos || utf8_from_code_page(*result) != name))
        result.reset();
    return result;
}

}  // namespace tool::posix
