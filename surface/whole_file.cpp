#include "surface/whole_file.h"

#include <filesystem>
#include <fstream>
#include <random>

namespace tool {

namespace {

namespace fs = std::filesystem;

fs::path system_path(const std::string& utf8) {
    return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

fs::path behind_links(fs::path file) {
    constexpr int most_links = 40;  // as many as systems follow
    std::error_code failure;
    for (int i = 0; i < most_links && fs::is_symlink(fs::symlink_status(file, failure)); ++i)
        file = file.parent_path() / fs::read_symlink(file, failure);
    return file;
}

// A name in the folder of `file` that nothing has yet, however long the file's own is.
fs::path name_beside(const fs::path& file) {
    std::error_code failure;
    for (std::random_device random;;) {
        fs::path candidate = file.parent_path() / (".part-" + std::to_string(random()));
        if (!fs::exists(fs::symlink_status(candidate, failure))) return candidate;
    }
}

bool write(const fs::path& file, std::string_view bytes, fs::perms rights) {
    std::ofstream out(file, std::ios::binary);
    std::error_code failure;
    if (rights != fs::perms::unknown) fs::permissions(file, rights, failure);  // before anything private stands in it
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    return out && !failure;
}

// With the rights of the file whose place it takes, if there is one and they let it be written.
bool replace(const fs::path& file, std::string_view bytes) {
    constexpr fs::perms any_write = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    std::error_code failure;
    const fs::file_status before = fs::status(file, failure);
    if (fs::exists(before) && (!fs::is_regular_file(before) || (before.permissions() & any_write) == fs::perms::none))
        return false;
    const fs::path partial = name_beside(file);
    if (write(partial, bytes, fs::exists(before) ? before.permissions() : fs::perms::unknown)) {
        fs::rename(partial, file, failure);
        if (!failure) return true;
    }
    fs::remove(partial, failure);
    return false;
}

}  // namespace

std::string read_whole_file(const std::string& path, std::size_t limit, std::string* bytes) {
    const fs::path file = system_path(path);
    std::error_code failure;
    const auto size = fs::file_size(file, failure);
    if (failure) return path + " can't be read.";
    if (size > limit) return path + " is too large.";
    std::ifstream in(file, std::ios::binary);
    bytes->resize(size);
    if (!in.read(bytes->data(), static_cast<std::streamsize>(size))) return path + " can't be read.";
    return {};
}

std::string write_whole_file(const std::string& path, std::string_view bytes) {
    return replace(behind_links(system_path(path)), bytes) ? "" : path + " can't be written.";
}

std::string file_behind_links(const std::string& path) {
    const std::u8string file = behind_links(system_path(path)).u8string();
    return {file.begin(), file.end()};
}

}  // namespace tool
