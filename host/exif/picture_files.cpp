#include "host/exif/picture_files.h"

#include <algorithm>
#include <filesystem>

#include "base/path.h"
#include "base/source.h"
#include "base/wording.h"

namespace cephtool {
namespace {

namespace fs = std::filesystem;

bool is_named_as_picture(const fs::path& file) {
    constexpr const char* extensions[] = {".jpg", ".jpeg", ".jpe", ".jfif"};
    return std::ranges::find(extensions, lower_case(utf8_from_path(file.extension()))) != std::end(extensions);
}

}  // namespace

std::vector<std::string> pictures_below(const std::string& folder) {
    const Source source{folder, {}};
    std::vector<std::string> files;
    std::error_code failure;
    fs::recursive_directory_iterator at(path_from_utf8(folder), failure);
    for (; !failure && at != fs::recursive_directory_iterator(); at.increment(failure)) {
        std::error_code passed_over;  // a link that leads nowhere
        if (is_named_as_picture(at->path()) && at->is_regular_file(passed_over))
            files.push_back(utf8_from_path(at->path()));
    }
    if (failure) throw source.error("the folder can't be read", "Check that you may read it and the folders in it.");
    if (files.empty())
        throw source.error("there are no JPEG pictures in this folder", "Their names end in .jpg or .jpeg.");
    std::ranges::sort(files);
    return files;
}

}  // namespace cephtool
