#include "analysis/check/display_mode.h"

#include <algorithm>

#include "analysis/check/landmarks.h"
#include "analysis/display_mode.h"
#include "platform/number_text.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr std::string_view headers[] = {"Point:", "SuppLine:", "PointSetting:", "[End]"};
constexpr std::string_view attributes[] = {"Color=", "Line=", "Decimal=", "Pos=", "Size="};
constexpr int most_lines = 30;
constexpr std::size_t longest_name = sizeof tagSUPPLINE::from - 1;

// What a line of a "SuppLine:" section does, told by letting the reader read it between lines that show the current
// attributes. Under two sets of attributes, so that one that sets what is already set is told from none.
struct Effect {
    bool any = false;
    std::vector<tagSUPPLINE> lines;
};
Effect effect_of(std::string_view line) {
    constexpr const char* settings[] = {"Color=1,2,3\nLine=BOLD\nDecimal=0\nPos=a\nSize=1\n",
                                        "Color=4,5,6\nLine=NORMAL\nDecimal=1\nPos=b\nSize=2\n"};
    Effect effect;
    for (const char* setting : settings) {
        const std::string before = std::string("SuppLine:\n") + setting, behind = "\n[A]-[B]\n=probe";
        const std::string with_line = before + std::string(line) + behind, without = before + behind;
        const ModeFile mode = read_display_mode(with_line), plain = read_display_mode(without);
        const bool same_probe = mode.lines.size() == 1 && mode.lines[0].color == plain.lines[0].color &&
                                mode.lines[0].style == plain.lines[0].style && mode.values == plain.values;
        effect.any |= !same_probe;
        effect.lines.assign(mode.lines.begin(), mode.lines.end() - 1);
    }
    return effect;
}

bool does_something(std::string_view line) {
    const Effect effect = effect_of(line);
    return effect.any || !effect.lines.empty();
}

bool is_int(std::string_view text) {
    const LeadingInteger number = read_leading_integer(text);
    return number.used > 0 && trimmed(text.substr(number.used)).empty();
}

// The two names of a supplementary line.
std::vector<std::string_view> bracketed_names(std::string_view line) {
    std::vector<std::string_view> names;
    while (names.size() < 2) {
        const std::size_t open = std::min(find_char(line, '['), line.size());
        line.remove_prefix(std::min(open + 1, line.size()));
        const std::size_t close = find_char(line, ']');
        if (close == std::string_view::npos) break;
        names.push_back(line.substr(0, close));
        line.remove_prefix(close + 1);
    }
    return names;
}

class ModeCheck {
 public:
    ModeCheck(int kind, Findings& findings) : findings_(findings), landmarks_(kind, findings) {}

    void run(const DefinitionFile& file) {
        std::string_view section;
        bool read_on = true, has_header = false, in_front = true;
        for_each_line(file.text(), [&](std::string_view line, int code) {
            if (!read_on) {
                if (!line.empty()) findings_.note(line, "nothing behind [End] is read; move it in front");
                return !line.empty();
            }
            if (lines_ == most_lines) {
                if (line.empty()) return false;
                if (line != "[End]")
                    findings_.fault(line, "nothing is read behind the " + counted(most_lines, "line") +
                                              " that a tracing can have; move it in front of them");
                return true;
            }
            if (code != content_line) in_front = false;
            const auto header = std::ranges::find(headers, line);
            if (header != std::end(headers)) {
                section = *header;
                has_header = true;
                read_on = section != "[End]";
            } else if (!check_header(line)) {
                if (section == "Point:" && !line.empty()) landmarks_.check(line);
                if (section == "SuppLine:" && !line.empty()) check_line(line);
                if (section.empty() && in_front && !line.empty())
                    findings_.fault(
                        line, "nothing in front of title: is read; remarks can stand below a Comment: of their own");
                else if (section.empty() && code == content_line && does_something(line))
                    findings_.fault(line,
                                    "nothing in front of the first of Point:, SuppLine: and PointSetting: is read; "
                                    "write one of them above it");
            }
            return false;
        });
        if (file.title().empty())
            findings_.fault_of_file(
                "a display mode without a title appears in no list; write title: and a line with it on top");
        if (!has_header)
            findings_.fault_of_file("there is no Point:, SuppLine: or PointSetting: in it, so it shows nothing");
    }

 private:
    // Whether the line was meant as a header.
    bool check_header(std::string_view line) {
        const std::string_view word = trimmed(line.substr(0, line.find_first_of(" \t=")));
        for (const std::string_view header : headers) {
            if (!equal_ignoring_case(word, header) && !equal_ignoring_case(trimmed(line), header)) continue;
            findings_.fault(line,
                            quoted(line) + " is no section; write exactly " + quoted(header) + " on a line of its own");
            return true;
        }
        return false;
    }

    void check_line(std::string_view line) {
        const Effect effect = effect_of(line);
        lines_ += static_cast<int>(effect.lines.size());
        if (!effect.any && effect.lines.empty()) return explain_inert(line);
        if (!effect.lines.empty()) {
            for (const std::string_view name : bracketed_names(line)) {
                if (name.size() > longest_name)
                    findings_.fault(name, "landmark names of lines are cut to " + counted(longest_name, "byte") +
                                              "; draw the line to another landmark than " + quoted(name));
                else
                    landmarks_.check(name);
            }
            return;
        }
        if (line.starts_with('=')) {
            if (trimmed(line.substr(1)).empty())
                findings_.fault(line, "a measurement without a name; write one behind \"=\"");
            return;
        }
        check_attribute(line);
    }

    void check_attribute(std::string_view line) {
        const std::size_t equals = line.find('=');
        const std::string_view name = line.substr(0, equals), value = line.substr(equals + 1);
        if (equal_ignoring_case(name, "Color")) {
            const std::size_t first = value.find(','), second = value.find(',', first + 1);
            for (const std::string_view part :
                 {value.substr(0, first), value.substr(first + 1, second - first - 1), value.substr(second + 1)}) {
                if (!is_int(part) || read_int(part) < 0 || read_int(part) > 255)
                    findings_.fault(part, quoted(part) + " is no part of a colour; write three numbers from 0 to 255");
            }
        } else if (equal_ignoring_case(name, "Decimal")) {
            constexpr std::string_view known[] = {"0", "1", "2", "0.5"};
            if (std::ranges::find(known, value) == std::end(known))
                findings_.fault(value, quoted(value) + " counts as 2 decimals; write 0, 1, 2 or 0.5");
        } else if (equal_ignoring_case(name, "Size") && !is_int(value)) {
            findings_.fault(value, quoted(value) + " is no whole number; write one like 12");
        }
    }

    void explain_inert(std::string_view line) {
        const std::size_t equals = line.find('=');
        const std::string name(trimmed(line.substr(0, equals == std::string_view::npos ? 0 : equals)));
        for (const std::string_view attribute : attributes) {
            if (!equal_ignoring_case(name + '=', attribute)) continue;
            if (line.starts_with(attribute) || line.starts_with(lower(attribute)))
                return findings_.fault(line, attribute == "Size="
                                                 ? "size= in small letters is not read; write Size="
                                                 : "a colour has three numbers with commas between them; "
                                                   "this line changes nothing");
            return findings_.fault(line,
                                   quoted(line.substr(0, equals + 1)) + " is not read; write " + quoted(attribute));
        }
        findings_.fault(line, quoted(line) +
                                  " is no line [A]-[B], no =measurement and no attribute (Color=, Line=, "
                                  "Decimal=, Pos=, Size=)");
    }

    Findings& findings_;
    LandmarkCheck landmarks_;
    int lines_ = 0;
};

}  // namespace

void check_display_mode(const DefinitionFile& file, int kind, Findings& findings) {
    ModeCheck(kind, findings).run(file);
}

}  // namespace tool
