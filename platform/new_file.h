// Files that are written under a name of their own, and take another's place when they are whole.
//
// Compiled twice: into the library, and into the surfaces for the writers of hosts and of the program. So paths are the
// system's own, and the reason for a failure is errno or GetLastError.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

namespace tool {

// What a path stands for: what its links lead to, be it there or not. Nothing when they lead in a circle; on Windows
// neither when they lead nowhere.
std::optional<std::filesystem::path> behind_links(const std::filesystem::path& path);

// Who may read a file that takes nobody's place: its owner, or whom the user's mask lets. Windows asks the folder.
enum class Access { owner, usual };

class NewFile {
 public:
    NewFile() = default;
    ~NewFile();  // what stands beside its target yet goes away
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    // False where anything has that name, be it a link that leads nowhere.
    bool create(const std::filesystem::path& name, Access access);
    // In the folder of `target`, which is no link, under a name made from the target's and open to nobody whom that
    // shuts out. What a killed writer of the same target has left there is removed.
    bool create_beside(const std::filesystem::path& target, Access access);
    // A plain file that is there, to be written at its end; false for a link to one.
    bool go_on(const std::filesystem::path& name);

    bool write(std::string_view bytes);
    // To its first `size` bytes; what is written next stands behind them.
    bool cut(std::uint64_t size);
    void close();

    // Brings it to the disk, then gives it the name `target`. It gets owner, group and rights of the file that had that
    // name, or the rights `mode`. False, with nothing changed, where the name is that of something else than a plain
    // file, or of one that nobody may write; with `fail_if_exists` where it is taken at all.
    bool take_place(const std::filesystem::path& target, std::optional<unsigned> mode = {},
                    bool fail_if_exists = false);

 private:
    static bool remove_abandoned(const std::filesystem::path& name);
    static bool name_was_taken();  // the last create_at failed for that
    static bool may_replace(const std::filesystem::path& target);
    bool create_at(const std::filesystem::path& name, Access access);
    void remove() const;

    std::filesystem::path name_;
    std::intptr_t handle_ = -1;
    bool is_beside_ = false;
};

}  // namespace tool
