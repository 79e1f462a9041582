// Whole files by the system's own paths, which may hold characters outside code page 932. As in system.h, the thread's
// last error tells why a call failed; nothing is noted for a host to ask after.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

// A plain file of at most `limit` bytes.
std::optional<std::string> read_file_at(const std::filesystem::path& path, std::uint64_t limit);

// The file that `name` (code page 932, "\" and "/" alike, case ignored where no exact one is there) names in `folder`;
// where it would be, when there is none.
std::filesystem::path path_in(const std::filesystem::path& folder, std::string_view name);

}  // namespace tool
