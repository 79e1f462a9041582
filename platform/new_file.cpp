#include "platform/new_file.h"

#include <string>

namespace tool {
namespace {

namespace fs = std::filesystem;

// One for each that writes the same file at the same time. Those that a killed one may have left are looked for in the
// first few only, which costs less than reading the folder.
constexpr int most_writers = 64, looked_after = 4;

// FNV-1a, so that the longest name of a target gives no longer one.
std::uint64_t hash_of(const std::u8string& name) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char8_t byte : name) hash = (hash ^ byte) * 0x100000001B3;
    return hash;
}

fs::path name_beside(const fs::path& target, int writer) {
    std::string name = ".new-";
    const std::uint64_t hash = hash_of(target.filename().u8string());
    for (int shift = 60; shift >= 0; shift -= 4) name += "0123456789abcdef"[hash >> shift & 15];
    return target.parent_path() / (name + "-" + std::to_string(writer));
}

}  // namespace

NewFile::~NewFile() {
    if (handle_ == -1) return;
    if (is_beside_) remove();
    close();
}

bool NewFile::create(const fs::path& name, Access access) {
    is_beside_ = false;
    return create_at(name, access);
}

bool NewFile::create_beside(const fs::path& target, Access access) {
    if (!may_replace(target)) return false;
    std::error_code failure;
    if (fs::exists(fs::symlink_status(target, failure))) access = Access::owner;
    for (int writer = 0; handle_ == -1 && writer < most_writers; ++writer) {
        const fs::path name = name_beside(target, writer);
        if (create_at(name, access)) break;
        if (!name_was_taken()) return false;
        if (remove_abandoned(name)) create_at(name, access);
    }
    is_beside_ = handle_ != -1;
    for (int writer = 0; is_beside_ && writer < looked_after; ++writer) remove_abandoned(name_beside(target, writer));
    return is_beside_;
}

}  // namespace tool
