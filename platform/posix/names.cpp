#include "platform/posix/names.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <ctime>
#include <memory>

#include "platform/code_page.h"
#include "platform/text.h"

namespace tool::posix {
namespace {

bool is_there(const std::string& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

bool is_ascii(std::string_view text) {
    unsigned char bits = 0;
    for (const char c : text) bits |= static_cast<unsigned char>(c);  // without a branch, so that it runs as vectors
    return bits < 0x80;
}

// `entry` as the system spells it, `name` in code page 932. Most entries differ in length, which case never changes.
bool same_name(std::string_view entry, std::string_view name) {
    if (is_ascii(entry)) return entry.size() == name.size() && equal_ignoring_case(entry, name);
    const std::optional<std::string> own = code_page_name(entry);
    return own && own->size() == name.size() && lower(*own) == lower(name);
}

// A search that found nothing, remembered as long as the folder has not changed since: a program without a settings
// file asks for it in every call, and its folder may hold thousands of names.
struct VainSearch {
    dev_t device = 0;
    ino_t folder = 0;
    timespec changed{};
    std::string name;

    bool operator==(const VainSearch& other) const {
        return device == other.device && folder == other.folder && changed.tv_sec == other.changed.tv_sec &&
               changed.tv_nsec == other.changed.tv_nsec && name == other.name;
    }
    // A folder changed just now may change once more without a new time.
    bool is_certain() const { return std::time(nullptr) - changed.tv_sec > 3; }
};

// The entry of `folder` that `name` (code page 932) names ignoring case.
std::optional<std::string> entry_ignoring_case(const std::string& folder, std::string_view name) {
    thread_local VainSearch last;
    struct stat status;
    const char* const path = folder.empty() ? "." : folder.c_str();
    if (stat(path, &status) != 0) return std::nullopt;
    const VainSearch search{status.st_dev, status.st_ino, status.st_mtim, std::string(name)};
    const bool certain = search.is_certain();  // before the folder is read
    if (certain && search == last) return std::nullopt;

    const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(path), closedir);
    if (!listing) return std::nullopt;
    std::optional<std::string> best;
    while (const dirent* entry = readdir(listing.get()))
        if (same_name(entry->d_name, name) && (!best || entry->d_name < *best)) best = entry->d_name;
    if (!best && certain) last = search;
    return best;
}

bool is_delimiter(char c) {
    return c == '/' || c == '\\';
}

std::string found(std::string result, std::string_view path, bool last_as_written) {
    std::string exact = result + spelled(path);
    if (is_there(exact)) return exact;

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
        const bool as_written = last_as_written && std::ranges::all_of(path, is_delimiter);
        if (as_written || is_there(result + next)) {
            result += next;
        } else if (const auto entry = entry_ignoring_case(result, name)) {
            result += *entry;
        } else {
            return result + next + spelled(path);
        }
    }
    return result;
}

}  // namespace

std::string spelled(std::string_view path) {
    std::string with_slashes(path);
    if (is_ascii(path)) {
        std::ranges::replace(with_slashes, '\\', '/');
        return with_slashes;
    }
    for (std::size_t at = 0; at < with_slashes.size(); at += char_length(path.substr(at)))
        if (with_slashes[at] == '\\') with_slashes[at] = '/';
    return utf8_from_code_page(with_slashes);
}

std::string found(std::string_view path) {
    return found("", path, false);
}

std::string found_in(std::string folder, std::string_view path) {
    return found(std::move(folder), path, false);
}

std::string in_found_folder(std::string_view path) {
    return found("", path, true);
}

std::optional<std::string> code_page_name(std::string_view name) {
    std::optional<std::string> result = code_page_from_utf8(name);
    if (result && (find_char(*result, '\\') != std::string::npos || utf8_from_code_page(*result) != name))
        result.reset();
    return result;
}

}  // namespace tool::posix
