// A small file that says what one process at a time is doing. The system lets go of it when that process ends, however
// it does, so that nobody waits for a killed one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace cephtool {

class HeldFile {
 public:
    HeldFile() = default;
    ~HeldFile();  // removes the file that is held
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    enum class Outcome {
        held,
        held_by_another,
        without_locks,  // the file system has none; there is no file then
        not_written,    // nor is anything else at this name changed
    };
    // Makes the plain file `path`, or takes the one that is there, and writes `text` into it, which all may read.
    Outcome take(const std::filesystem::path& path, const std::string& text);

 private:
    std::filesystem::path path_;
    std::intptr_t handle_ = -1;
};

}  // namespace cephtool
