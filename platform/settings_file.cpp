#include "platform/settings_file.h"

#include "platform/text.h"

namespace tool {
namespace {

// One line of the file: where it stands, its end included, and what it says.
struct Line {
    std::size_t begin = 0, end = 0;  // `end` is behind the line end
    std::string_view text;           // without blanks and line end
};

class Lines {
 public:
    explicit Lines(std::string_view file) : file_(file) {}

    bool next(Line& line) {
        if (at_ == file_.size()) return false;
        std::size_t stop = at_;
        while (stop < file_.size() && file_[stop] != '\r' && file_[stop] != '\n') ++stop;
        line.begin = at_;
        line.text = trimmed(file_.substr(at_, stop - at_));
        at_ = stop;
        if (at_ < file_.size() && file_[at_++] == '\r' && at_ < file_.size() && file_[at_] == '\n') ++at_;
        line.end = at_;
        return true;
    }

 private:
    std::string_view file_;
    std::size_t at_ = 0;
};

std::optional<std::string_view> section_name(std::string_view line) {
    if (!line.starts_with('[')) return std::nullopt;
    const std::size_t close = find_last_char(line, ']');
    if (close == std::string_view::npos) return std::nullopt;
    return trimmed(line.substr(1, close - 1));
}

// The key of a line that is no section; empty when it has none.
std::string_view key_of(std::string_view line) {
    const std::size_t equals = line.find('=');  // never a trail byte
    if (equals == std::string_view::npos || line.starts_with(';')) return {};
    return trimmed(line.substr(0, equals));
}

std::string_view value_of(std::string_view line) {
    std::string_view value = line.substr(line.find('=') + 1);
    value = trimmed(value.substr(0, value.find('\0')));
    const bool quoted = value.size() >= 2 && (value[0] == '"' || value[0] == '\'') && value.back() == value[0];
    return quoted ? value.substr(1, value.size() - 2) : value;
}

// The first section of a name, and in it the first line with a key.
struct Place {
    std::size_t begin = 0, end = 0;  // of the section, from its own line to the next section
    std::size_t content_end = 0;     // behind its last line that is not blank
    std::optional<Line> entry;
};

std::optional<Place> find_place(std::string_view file, std::string_view section, std::string_view key) {
    Lines lines(file);
    Line line;
    std::optional<Place> place;
    while (lines.next(line)) {
        if (const auto name = section_name(line.text)) {
            if (place) break;
            if (equal_ignoring_case(*name, section)) place = Place{line.begin, line.end, line.end, std::nullopt};
        } else if (place) {
            if (!line.text.empty()) place->content_end = line.end;
            place->end = line.end;
            if (!place->entry && !key.empty() && equal_ignoring_case(key_of(line.text), key)) place->entry = line;
        }
    }
    return place;
}

std::string_view line_end_of(std::string_view file) {
    const std::size_t first = file.find_first_of("\r\n");
    if (first == std::string_view::npos || file[first] == '\n') return first == std::string_view::npos ? "\r\n" : "\n";
    return file.substr(first).starts_with("\r\n") ? "\r\n" : "\r";
}

bool ends_line(std::string_view text) {
    return text.empty() || text.ends_with('\n') || text.ends_with('\r');
}

// `file` with [begin, end) replaced, and with a line end behind its last line.
std::string spliced(std::string_view file, std::size_t begin, std::size_t end, std::string_view replacement) {
    const std::string_view line_end = line_end_of(file);
    std::string result(file.substr(0, begin));
    if (!replacement.empty() && !ends_line(result)) result += line_end;
    result += replacement;
    result += file.substr(end);
    if (!ends_line(result)) result += line_end;
    return result;
}

bool has_line_end(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

}  // namespace

std::optional<std::string_view> setting(std::string_view file, std::string_view section, std::string_view key) {
    section = trimmed(section);
    key = trimmed(key);
    Lines lines(file);
    Line line;
    bool inside = false;
    while (lines.next(line)) {
        if (const auto name = section_name(line.text)) {
            if (inside) break;
            inside = equal_ignoring_case(*name, section);
        } else if (inside && !key.empty() && equal_ignoring_case(key_of(line.text), key)) {
            return value_of(line.text);
        }
    }
    return std::nullopt;
}

std::vector<std::string_view> setting_sections(std::string_view file) {
    std::vector<std::string_view> names;
    Lines lines(file);
    Line line;
    while (lines.next(line))
        if (const auto name = section_name(line.text)) names.push_back(*name);
    return names;
}

std::vector<std::string_view> setting_keys(std::string_view file, std::string_view section) {
    std::vector<std::string_view> keys;
    const auto place = find_place(file, trimmed(section), {});
    if (!place) return keys;
    Lines lines(file.substr(place->begin, place->end - place->begin));
    Line line;
    lines.next(line);
    while (lines.next(line))
        if (const std::string_view key = key_of(line.text); !key.empty()) keys.push_back(key);
    return keys;
}

std::optional<std::string> with_setting(std::string_view file, std::string_view section, std::string_view key,
                                        std::string_view value) {
    section = trimmed(section);
    key = trimmed(key);
    value = trimmed(value);
    const std::string line = std::string(key) + "=" + std::string(value);
    const std::string header = "[" + std::string(section) + "]";
    if (has_line_end(header + line)) return std::nullopt;
    if (key.empty() || key_of(line) != key || section_name(line) || section_name(header) != section)
        return std::nullopt;

    const std::string line_end(line_end_of(file));
    const auto place = find_place(file, section, key);
    if (!place) return spliced(file, file.size(), file.size(), header + line_end + line + line_end);
    if (!place->entry) return spliced(file, place->content_end, place->content_end, line + line_end);

    // Only the value changes, so that the author's own way of writing the key stays.
    const std::string_view old = place->entry->text;
    const std::string_view old_value = trimmed(old.substr(old.find('=') + 1));
    if (old_value == value) return std::string(file);
    const auto begin = static_cast<std::size_t>(old.data() - file.data()) + old.find('=') + 1;
    const auto end = static_cast<std::size_t>(old.data() - file.data()) + old.size();
    std::string result(file.substr(0, begin));
    result += value;
    result += file.substr(end);
    if (!ends_line(result)) result += line_end;
    return result;
}

std::string without_setting(std::string_view file, std::string_view section, std::string_view key) {
    const auto place = find_place(file, trimmed(section), trimmed(key));
    if (!place || !place->entry) return std::string(file);
    return spliced(file, place->entry->begin, place->entry->end, {});
}

std::string without_section(std::string_view file, std::string_view section) {
    const auto place = find_place(file, trimmed(section), {});
    if (!place) return std::string(file);
    return spliced(file, place->begin, place->end, {});
}

}  // namespace tool
