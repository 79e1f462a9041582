#include "base/source.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "base/columns.h"
#include "base/path.h"
#include "base/utf8.h"
#include "base/wording.h"

namespace cephtool {
namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

Error too_large(const std::string& name, const InputLimit& limit) {
    Source source{name, {}};
    return source.error(std::string("the input is larger than ") + limit.shown, limit.way_out);
}

std::string bytes_of(std::istream& in, const std::string& name, const InputLimit& limit) {
    std::string bytes;
    char block[1 << 16];
    while (in.read(block, sizeof block) || in.gcount() > 0) {
        bytes.append(block, static_cast<std::size_t>(in.gcount()));
        if (bytes.size() > limit.bytes) throw too_large(name, limit);
    }
    if (in.bad()) throw not_read({name, {}});
    return bytes;
}

}  // namespace

Error Source::error(const std::string& message, std::string way_out) const {
    Error made(ExitCode::bad_input, message, std::move(way_out));
    made.file = shown_name(name);
    return made;
}

Error Source::error_at(std::size_t offset, const std::string& message, std::string way_out) const {
    Error made = error(message, std::move(way_out));
    const std::string_view all = text;
    const std::string_view before = all.substr(0, offset);
    const std::size_t line_start = before.rfind('\n') + 1;  // npos + 1 is 0
    std::string_view line = all.substr(line_start, all.find('\n', line_start) - line_start);
    if (line.ends_with('\r')) line.remove_suffix(1);
    const std::string_view in_front = line.substr(0, std::min(before.size() - line_start, line.size()));

    made.line = static_cast<int>(std::count(before.begin(), before.end(), '\n')) + 1;
    made.column = 1;
    for (std::string_view rest = in_front; !rest.empty(); ++made.column) next_character(rest);

    // At most this much of a long line is shown on either side of the fault.
    constexpr std::size_t context = 36;
    std::size_t from = in_front.size() > context ? in_front.size() - context : 0;
    while (from > 0 && from < line.size() && (line[from] & 0xC0) == 0x80) --from;
    const std::string shown_front = printable(in_front.substr(from));
    made.excerpt = fitted(shown_front + printable(line.substr(in_front.size()).substr(0, 4 * context)), 2 * context);
    made.caret = display_width(shown_front);
    return made;
}

Error not_read(const Source& source) {
    return source.error("reading it failed in the middle", "Check the disk, or copy the file once more.");
}

Source checked_text(Source source) {
    if (source.text.starts_with("\xFF\xFE") || source.text.starts_with("\xFE\xFF")) {
        throw source.error("the text is UTF-16", "Save it as UTF-8.");
    }
    if (source.text.starts_with(byte_order_mark)) source.text.erase(0, byte_order_mark.size());
    if (source.text.find_first_not_of(" \t\r\n") == std::string::npos) {
        throw source.error("the input is empty", "It should hold landmarks; docs/case_format.md shows the formats.");
    }
    if (const std::size_t at = source.text.find('\0'); at != std::string::npos) {
        throw source.error_at(at, "a zero byte: this is no text", "Give the file that holds the coordinates as text.");
    }
    if (const std::size_t at = first_malformed(source.text); at != std::string::npos) {
        throw source.error_at(at, "a byte that is not UTF-8", "Save the file as UTF-8.");
    }
    return source;
}

Source read_bytes(const std::string& path, std::istream& standard_input, const InputLimit& limit) {
    if (path == "-") return {"standard input", bytes_of(standard_input, "standard input", limit)};
    Source source{path, {}};
    std::error_code failure;
    const std::filesystem::path file = path_from_utf8(path);
    const auto status = std::filesystem::status(file, failure);
    if (!std::filesystem::exists(status)) throw source.error("there is no such file", "Check the name and the folder.");
    if (std::filesystem::is_directory(status)) {
        throw source.error("this is a folder", limit.plain_files_only ? limit.way_out : "Give the files in it.");
    }
    if (limit.plain_files_only && !std::filesystem::is_regular_file(status))
        throw source.error("this is a device or a pipe, no file", limit.way_out);
    const std::uintmax_t size =
        std::filesystem::is_regular_file(status) ? std::filesystem::file_size(file, failure) : 0;
    if (failure) throw not_read(source);
    if (size > limit.bytes) throw too_large(path, limit);
    std::ifstream in(file, std::ios::binary);
    if (!in) throw source.error("the file can't be opened", "Check that you may read it.");
    source.text = bytes_of(in, path, limit);
    if (source.text.size() < size) throw not_read(source);  // someone has cut it meanwhile
    return source;
}

}  // namespace cephtool
