#include "util/folders.h"

#include <algorithm>
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

// Both canonical.
bool is_or_lies_in(std::string_view inner, std::string_view outer) {
    if (!inner.starts_with(outer)) return false;
    const std::string_view below = inner.substr(outer.size());
    return below.empty() || is_delimiter(below.front()) || is_delimiter(outer.back());
}

class FolderCopy {
 public:
    bool copy(std::string_view from, std::string_view to) {
        const std::string source = canonical_path(bare(from));
        if (is_or_lies_in(canonical_path(bare(to)), source)) return false;
        if (std::find(being_copied_.begin(), being_copied_.end(), source) != being_copied_.end()) return false;
        if (!make_folders(to)) return false;
        const auto entries = list_folder(from);
        if (!entries) return false;

        being_copied_.push_back(source);
        const bool all = std::all_of(entries->begin(), entries->end(), [&](const FolderEntry& entry) {
            const std::string old_path = with_delimiter(std::string(from)) + entry.name;
            const std::string new_path = with_delimiter(std::string(to)) + entry.name;
            return entry.status.is_folder ? copy(old_path, new_path) : copy_file(old_path, new_path, false);
        });
        being_copied_.pop_back();
        return all;
    }

 private:
    std::vector<std::string> being_copied_;  // from the outermost folder inwards, canonical
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
    const auto entries = list_folder(".");
    return entries && std::all_of(entries->begin(), entries->end(), [&](const FolderEntry& entry) {
               const FileStatus& status = entry.status;
               return status.is_folder || status.system || status.hidden ||
                      copy_file(std::string(from) + entry.name, std::string(to) + entry.name, false);
           });
}

void delete_folder(std::string_view path) {
    path = bare(path);
    const auto status = file_status(path);
    if (!status) return;
    if (status->is_link && remove_file(path)) return;
    if (!status->is_link) {
        for (const FolderEntry& entry : list_folder(path).value_or(std::vector<FolderEntry>())) {
            const std::string inner = with_delimiter(std::string(path)) + entry.name;
            if (entry.status.is_folder) {
                delete_folder(inner);
            } else {
                remove_file(inner);
            }
        }
    }
    remove_folder(path);  // also what a link to a folder needs on systems where it is a kind of folder
}

}  // namespace tool
