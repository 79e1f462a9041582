#include "surface/whole_file.h"

#include <filesystem>
#include <fstream>

namespace tool {

namespace {

namespace fs = std::filesystem;

fs::path system_path(const std::string& utf8) {
    return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

// A name beside `file` that nothing has yet.
fs::path name_beside(const fs::path& file) {
    std::error_code failure;
    for (int i = 0;; ++i) {
        fs::path candidate = file;
        candidate += ".part" + std::to_string(i);
        if (!fs::exists(fs::symlink_status(candidate, failure))) return candidate;
    }
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
    const fs::path file = system_path(path), partial = name_beside(file);
    std::error_code failure;
    {
        std::ofstream out(partial, std::ios::binary);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.close();
        if (out) fs::rename(partial, file, failure);
        if (out && !failure) return {};
    }
    fs::remove(partial, failure);
    return path + " can't be written.";
}

}  // namespace tool
