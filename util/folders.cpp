#include "util/folders.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "platform/system.h"
#include "platform/text.h"
#include "util/delimiter.h"

namespace tool {
namespace {

bool is_delimiter(char c) {
    return c == '\\' || c == '/';
}

// Without trailing delimiters, unless there is nothing else: with one behind it the system follows a link.
std::string_view bare(std::string_view path) {
    std::size_t end = 0;
    for (std::size_t i = 0; i < path.size(); i += char_length(path.substr(i)))
        if (!is_delimiter(path[i])) end = i + char_length(path.substr(i));
    return end == 0 ? path : path.substr(0, end);
}

bool is_folder(std::string_view path) {
    const auto status = file_status(path);
    return status && status->is_folder;
}

// The part of the path that is there; "." when nothing of a relative one is.
std::string existing_part(std::string path) {
    while (!path.empty() && !file_status(path)) {
        const std::size_t name = std::max(find_last_char(path, '/') + 1, find_last_char(path, '\\') + 1);
        path.resize(name < path.size() ? name : path.size() - 1);
    }
    return path.empty() ? "." : path;
}

// Also below folders whose names code page 932 can't write, of which no canonical path can tell.
bool is_or_lies_in(std::string_view path, std::string_view folder) {
    std::string at = existing_part(canonical_path(bare(path)));
    for (;;) {
        if (same_folder(at, folder)) return true;
        const std::string above = with_delimiter(at) + "..";
        if (!is_folder(above) || same_folder(at, above)) return false;
        at = above;
    }
}

// What is to be copied; nothing when that would leave out or lose any of it.
std::optional<std::vector<FolderEntry>> entries_to_copy(std::string_view folder, bool (*wanted)(const FileStatus&)) {
    std::vector<FileStatus> left_out;
    auto entries = list_folder(folder, &left_out);
    if (!entries || std::ranges::any_of(left_out, wanted)) return std::nullopt;
    std::erase_if(*entries, [wanted](const FolderEntry& entry) { return !wanted(entry.status); });
    // Of names that differ in case only, the second would be copied over the first.
    std::vector<std::string> names;
    for (const FolderEntry& entry : *entries) names.push_back(lower(entry.name));
    std::ranges::sort(names);
    if (std::ranges::adjacent_find(names) != names.end()) return std::nullopt;
    return entries;
}

class FolderCopy {
 public:
    bool copy(std::string_view from, std::string_view to) {
        const auto is_source = [from](std::string_view folder) { return same_folder(folder, from); };
        if (is_or_lies_in(to, from) || std::ranges::any_of(being_copied_, is_source)) return false;
        if (!make_folders(to)) return false;
        const auto entries = entries_to_copy(from, [](const FileStatus&) { return true; });
        if (!entries) return false;

        being_copied_.emplace_back(from);
        const bool all = std::all_of(entries->begin(), entries->end(), [&](const FolderEntry& entry) {
            const std::string old_path = with_delimiter(std::string(from)) + entry.name;
            const std::string new_path = with_delimiter(std::string(to)) + entry.name;
            return entry.status.is_folder ? copy(old_path, new_path) : copy_file(old_path, new_path, false);
        });
        being_copied_.pop_back();
        return all;
    }

 private:
    std::vector<std::string> being_copied_;  // from the outermost folder inwards
};

}  // namespace

bool make_folders(std::string_view path) {
    if (path.empty()) return false;
    // A beginning that can't be made (a drive, a server) does not matter: only the whole path does.
    for (std::size_t i = 0; i < path.size(); i += char_length(path.substr(i)))
        if (i > 0 && is_delimiter(path[i]) && !file_status(path.substr(0, i))) make_folder(path.substr(0, i));
    if (!file_status(path)) make_folder(path);
    return is_folder(path);
}

bool copy_folder(std::string_view from, std::string_view to) {
    return !from.empty() && !to.empty() && FolderCopy().copy(from, to);
}

bool copy_plain_files(std::string_view from, std::string_view to) {
    if (!set_current_folder(from)) return false;
    make_folders(to);
    const auto entries = entries_to_copy(
        ".", [](const FileStatus& status) { return !status.is_folder && !status.system && !status.hidden; });
    return entries && std::ranges::all_of(*entries, [&](const FolderEntry& entry) {
               return copy_file(std::string(from) + entry.name, std::string(to) + entry.name, false);
           });
}

void empty_folder(std::string_view path) {
    path = bare(path);
    const auto status = file_status(path);
    if (!status || status->is_link) return;
    for (const FolderEntry& entry : list_folder(path).value_or(std::vector<FolderEntry>())) {
        const std::string inner = with_delimiter(std::string(path)) + entry.name;
        if (entry.status.is_folder) {
            delete_folder(inner);
        } else {
            remove_file(inner);
        }
    }
}

void delete_folder(std::string_view path) {
    path = bare(path);
    const auto status = file_status(path);
    if (!status || (status->is_link && remove_file(path))) return;
    empty_folder(path);
    remove_folder(path);  // also what a link to a folder needs on systems where it is a kind of folder
}

}  // namespace tool
