// The one door to the operating system. Each system has a folder that implements it; nobody else asks which one runs.
//
// Paths are code page 932, "\" and "/" alike. Where the system tells names apart by case, a path that is not there is
// looked for again, component by component, ignoring case. A call that fails returns false or nothing and leaves the
// reason in the thread's last error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// --- Whole files ---------------------------------------------------------------------------------------------------

// One open, one read into a text of exactly the file's size. A file that is there and can't be read, or has more bytes
// than `limit`, is also noted for a host to ask after (process.cpp).
std::optional<std::string> read_file(std::string_view path, std::uint64_t limit = UINT64_MAX);
void note_unread(std::string_view path);  // unless the last error tells that it is not there
std::string take_unread();                // the first one noted since the last call; "" for none

// Files of definitions, settings and eras have some kilobytes. Beyond this it is a mistake, which would only cost time.
inline constexpr std::uint64_t largest_text_file = 1 << 24;

// Readers see the old file or the new one, never a part; on failure the old one stays.
bool write_file_atomically(std::string_view path, std::string_view bytes);

// The copy appears whole or not at all. With fail_if_exists an existing target is left alone.
bool copy_file(std::string_view from, std::string_view to, bool fail_if_exists);

// --- Names ---------------------------------------------------------------------------------------------------------

struct FileStatus {
    bool is_folder = false;
    bool is_link = false;  // a symbolic link; the other members describe what it points to
    bool hidden = false;   // off Windows: the name begins with "."
    bool system = false;   // off Windows: neither file nor folder (a device, a pipe)
    bool read_only = false;
    std::uint64_t size = 0;  // bytes; 0 for a folder
};

// Nothing when there is nothing of that name; a link that points nowhere counts as being there. Notes what is there and
// can't be asked.
std::optional<FileStatus> file_status(std::string_view path);

bool remove_file(std::string_view path);
bool remove_folder(std::string_view path);  // only an empty one
bool rename_file(std::string_view from, std::string_view to);
bool make_folder(std::string_view path);  // its parent must be there
bool clear_read_only(std::string_view path);
bool set_current_folder(std::string_view path);
// Both name the same folder, whatever links lead there.
bool same_folder(std::string_view a, std::string_view b);
// Absolute, links followed as far as the path exists; the path itself when that fails.
std::string canonical_path(std::string_view path);

struct FolderEntry {
    std::string name;  // code page 932, without the folder
    FileStatus status;
};

// Everything in the folder but "." and "..", in the order of the names. Names that code page 932 can't write are left
// out, since no path could name them; *left_out then tells what they are. Nothing when the folder can't be read whole.
std::optional<std::vector<FolderEntry>> list_folder(std::string_view path, std::vector<FileStatus>* left_out = nullptr);

// --- One open file -------------------------------------------------------------------------------------------------

enum class FileFault {
    none,
    other,
    not_found,
    bad_path,
    too_many_open,
    access_denied,
    invalid_file,
    bad_seek,
    disk_full,
    io
};

class OpenFile {
 public:
    enum class Access { read, write, read_write };
    struct Mode {
        Access access = Access::read;
        bool create = false;    // make it when it is missing
        bool truncate = false;  // with create: empty an existing one
        // What other openings of the file are allowed meanwhile; has no effect off Windows.
        bool others_read = true, others_write = true;
    };

    // Null on failure; *fault then says why.
    static std::unique_ptr<OpenFile> open(std::string_view path, Mode mode, FileFault* fault);
    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    // Fewer bytes than asked for only at the end of the file.
    FileFault read(void* buffer, std::size_t count, std::size_t* done);
    FileFault write(const void* data, std::size_t count);
    enum class From { begin, current, end };
    FileFault seek(std::int64_t offset, From from, std::uint64_t* position);
    FileFault length(std::uint64_t* bytes) const;
    FileFault set_length(std::uint64_t bytes);
    FileFault flush();
    FileFault close();

 private:
    explicit OpenFile(std::intptr_t handle) : handle_(handle) {}
    std::intptr_t handle_;
};

// --- The process ---------------------------------------------------------------------------------------------------

// Full path of the running program; "" when the system does not tell, or code page 932 can't write it.
std::string program_path();

// Of the calling thread; 0 is no error.
std::uint32_t last_error();
void set_last_error(std::uint32_t code);
std::string error_text(std::uint32_t code);
bool tells_absence(std::uint32_t code);  // of the file that was asked for

struct LocalTime {
    int year, month, day;  // month and day from 1
    int weekday;           // 0 is Sunday
    int hour, minute, second, millisecond;
};
LocalTime system_time();

// What a host or a test may put in place of the last two (the same on every system: process.cpp).
std::string module_file_name();  // the path set, else the program's own
void set_module_file_name(std::optional<std::string> path);
LocalTime local_time();  // by the clock set, else the system's
void set_local_clock(LocalTime (*clock)());

// UTF-8, without a line end; one write.
void write_to_standard_error(std::string_view utf8_line);

// --- Characters ----------------------------------------------------------------------------------------------------

// The system's table of the double-byte characters: rows of 188, one a lead byte (81..9F, E0..FC), in the order of the
// trail bytes (40..7E, 80..FC). 0 is an undefined code.
inline constexpr std::size_t lead_byte_count = 60, trail_byte_count = 188;
void read_double_byte_table(std::span<char16_t, lead_byte_count * trail_byte_count> table);

}  // namespace tool
