#include "host/output.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "host/error.h"
#include "host/path.h"
#include "host/text_width.h"

namespace cephtool {
namespace {

namespace fs = std::filesystem;

Error not_written(const std::string& path) {
    return {ExitCode::bad_input, printable(path) + " could not be written",
            "Check that the folder exists, that you may write there, and that the disk has room."};
}

void write_bytes(const std::string& text, const fs::path& file, const std::string& path) {
    std::ofstream out(file, std::ios::binary);
    out << text;
    out.close();
    if (!out) throw not_written(path);
}

// A name beside `path` that nothing has yet.
fs::path name_beside(const std::string& path) {
    std::error_code failure;
    for (int i = 0;; ++i) {
        fs::path candidate = path_from_utf8(path + ".part" + std::to_string(i));
        if (!fs::exists(fs::symlink_status(candidate, failure))) return candidate;
    }
}

}  // namespace

void write_result(const std::string& text, const std::string& path, std::ostream& out) {
    if (path.empty() || path == "-") {
        out << text;
        return;
    }
    std::error_code failure;
    const fs::path file = path_from_utf8(path);
    const fs::file_status there = fs::status(file, failure);
    if (fs::exists(there) && !fs::is_regular_file(there)) return write_bytes(text, file, path);  // a device or a pipe
    const fs::path partial = name_beside(path);
    try {
        write_bytes(text, partial, path);
        fs::rename(partial, file);
    } catch (const std::exception&) {
        fs::remove(partial, failure);
        throw not_written(path);
    }
}

}  // namespace cephtool
