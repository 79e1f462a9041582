#include "surface/whole_file.h"

#include <filesystem>
#include <fstream>

#include "platform/new_file.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

fs::path system_path(const std::string& utf8) {
    return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

}  // namespace

std::string read_whole_file(const std::string& path, std::size_t limit, std::string* bytes) {
    const fs::path file = system_path(path);
    std::error_code failure;
    const auto size = fs::file_size(file, failure);
    if (failure) return path + " can't be read.";
    if (size > limit) return path + " is larger than " + std::to_string(limit) + " bytes.";
    std::ifstream in(file, std::ios::binary);
    bytes->resize(static_cast<std::size_t>(size));
    if (!in.read(bytes->data(), static_cast<std::streamsize>(size))) return path + " can't be read.";
    return {};
}

std::string write_whole_file(const std::string& path, std::string_view bytes) {
    const std::optional<fs::path> target = behind_links(system_path(path));
    NewFile file;
    const bool written =
        target && file.create_beside(*target, Access::owner) && file.write(bytes) && file.take_place(*target);
    return written ? "" : path + " can't be written.";
}

}  // namespace tool
