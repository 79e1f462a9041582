// Keeps a second run away from the files of one that goes on.
#pragma once

#include <filesystem>

#include "host/held_file.h"

namespace cephtool {

class RunLock {
 public:
    // Until the end of the object the file `path` tells who is at work. Throws an Error that names whoever is already,
    // or when the file can't be written or is somebody's own.
    explicit RunLock(const std::filesystem::path& path);

    // Whether a second run would see it; not where the file system has no locks.
    bool keeps_others_away() const { return outcome_ == HeldFile::Outcome::held; }

 private:
    HeldFile file_;
    HeldFile::Outcome outcome_;
};

}  // namespace cephtool
