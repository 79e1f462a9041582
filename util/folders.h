// Chores on whole folders. Empty paths and failures give false; an operation stops at its first failure unless stated.
#pragma once

#include <string_view>

namespace tool {

// Creates every missing folder of the path; true when the folder is there at the end.
bool make_folders(std::string_view path);

// Copies all that `from` holds, subfolders included, over what `to` holds. Refused when `to` is `from` or lies in it,
// and when a link inside leads back to a folder that is being copied. Fails where a name can't be copied: one that code
// page 932 can't write, or two that differ in case only.
bool copy_folder(std::string_view from, std::string_view to);

// Copies the plain files of a folder: no folders, system or hidden files. Both paths end in a delimiter and should be
// full ones, since `from` becomes the current folder first. Fails as copy_folder does.
bool copy_plain_files(std::string_view from, std::string_view to);

// Removes all that the folder holds, as far as that is possible. Links are removed, never followed: of a path that is
// one nothing is touched.
void empty_folder(std::string_view path);

// The same and the folder, or the link to it.
void delete_folder(std::string_view path);

}  // namespace tool
