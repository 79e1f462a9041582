// One analysis definition file: a text in memory and the readers that find things in it.
//
// 1. A line ends at CR LF or at a bare LF; a NUL ends one too. Nothing follows the last line end.
// 2. A line that is a key (key_line.h) opens a section; the next key line ends it. Other lines are its content.
// 3. Content in front of the first key belongs to no section. There are no comments.
// 4. In item and norm sections a line is "name=rest"; a line without "=" is all name. Names keep 50 bytes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "analysis/key_line.h"

namespace tool {

enum class NormPart { mean, sd };

// A content line of an item or norm section. Views into the file's text; name.data() tells lines apart, and without "="
// rest.data() is null.
struct NamedLine {
    std::string_view name;
    std::string_view rest;
    int section = 0;  // SectionCode of the section it stands in
    bool second_set() const { return section > 100; }
};

class DefinitionFile {
 public:
    explicit DefinitionFile(std::string text);
    // Views into the text are handed out: the file stays where it is.
    DefinitionFile(const DefinitionFile&) = delete;
    DefinitionFile& operator=(const DefinitionFile&) = delete;

    // First content line that is not empty in a title section; a key line in between ends the search of that section.
    std::string_view title() const;
    // The line behind the first "Comment:", whatever it holds.
    std::string_view comment() const;
    // Items of both sets in the order of the file.
    std::vector<NamedLine> items() const;

    // The lines that an item's name leads to: the first item line of either set, and the first line in any section that
    // holds means, and SDs, for the sex (1 male, else female). Names compare case-sensitively.
    struct Lines {
        std::optional<NamedLine> item, mean, sd;
    };
    enum class Look { item = 1, norms = 2, both = 3 };  // what is looked for; the rest may stay empty
    Lines find(std::string_view name, Look look, int sex) const;
    std::optional<NamedLine> find_item(std::string_view name) const { return find(name, Look::item, 0).item; }

    // From here on look-ups use a table and change nothing, so that threads may share the file. Without it the first
    // look-ups walk the text and the 16th builds the table.
    void build_index() const;

    std::string_view text() const { return text_; }

 private:
    struct FirstLines {
        Lines male, female;
    };
    std::string text_;
    bool indexed() const;

    mutable std::optional<std::unordered_map<std::string_view, FirstLines>> index_;
    mutable int lookups_ = 0;
};

// The text of an engine file as its readers take it: a NUL ends a line.
std::string engine_text(std::string bytes);

// Calls visit(line, code) for every line; code is its key_code. Stops when visit returns true.
template <class Visit>
void for_each_line(std::string_view text, Visit&& visit) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (visit(line, key_code(line))) return;
        if (end == std::string_view::npos) return;
        text.remove_prefix(end + 1);
    }
}

}  // namespace tool
