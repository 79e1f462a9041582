#include "tracing/display_mode.h"

#include <CephCalc.h>
#include <CodePage.h>

#include <algorithm>

#include "base/error.h"
#include "base/numbers.h"
#include "base/suggestion.h"
#include "base/wording.h"

namespace cephtool {
namespace {

constexpr std::size_t most_lines = 30;

std::string utf8(const char* text) {
    return printable(Utf8FromCodePage932(text));
}

std::string hex(unsigned red, unsigned green, unsigned blue) {
    constexpr const char* digits = "0123456789abcdef";
    std::string text = "#";
    for (const unsigned part : {red, green, blue}) {
        text += digits[part >> 4 & 15];
        text += digits[part & 15];
    }
    return text;
}

std::vector<std::string> filled(const CStringArray& list) {
    std::vector<std::string> texts;
    for (INT_PTR i = 0; i < list.GetSize(); ++i)
        if (!list.GetAt(i).IsEmpty()) texts.push_back(utf8(list.GetAt(i)));
    return texts;
}

// What stands in front of `mark`, which is taken off with it.
std::string cut_before(std::string& text, std::string_view mark) {
    const std::size_t at = std::min(text.find(mark), text.size());
    const std::string front = text.substr(0, at);
    text.erase(0, at + mark.size());
    return front;
}

// "RRRGGGBBBd<position>SIZE=<size>CALC=<text>"
ModeValue unpacked(const CString& packed) {
    constexpr int colour_digits = 3;
    const auto part = [&](int i) {
        const CString digits = packed.Mid(i * colour_digits, colour_digits);
        return static_cast<unsigned>(std::clamp(std::atoi(digits), 0, 255));
    };
    constexpr int decimals_at = 3 * colour_digits;
    ModeValue value;
    value.colour = hex(part(0), part(1), part(2));
    const std::string decimals = utf8(packed.Mid(decimals_at, 1));
    value.decimals = decimals == "9" ? "0.5" : decimals;
    std::string rest = utf8(packed.Mid(decimals_at + 1));
    value.position = cut_before(rest, "SIZE=");
    value.size = cut_before(rest, "CALC=");
    value.text = rest;
    return value;
}

DisplayMode mode_in(const CString& path) {
    tagSUPPLINE lines[most_lines] = {};
    CStringArray landmarks, values, settings;
    CCephCalc::ReadCalcMode(path, lines, &landmarks, &values, &settings);
    DisplayMode mode{};
    for (const tagSUPPLINE& line : lines) {
        constexpr int bold_line = 102;
        if (line.from[0] == '\0') break;
        mode.lines.push_back({utf8(line.from), utf8(line.to),
                              hex(line.color & 255, line.color >> 8 & 255, line.color >> 16 & 255),
                              line.style == bold_line});
    }
    for (INT_PTR i = 0; i < values.GetSize(); ++i) mode.values.push_back(unpacked(values.GetAt(i)));
    mode.every_landmark = landmarks.IsEmpty();  // an empty line names none, so that a mode can show no landmark
    mode.landmarks = filled(landmarks);
    mode.settings = filled(settings);
    return mode;
}

std::string stem(const std::string& file) {
    return file.substr(0, file.rfind('.'));
}

}  // namespace

std::vector<DisplayMode> listed_modes(Kind kind) {
    const int code = static_cast<int>(kind);
    CComboBox choice;  // behind a first entry that is no mode, the listed files with a title
    CCephCalc::SetCalcMode(code, &choice);
    std::vector<DisplayMode> modes;
    int entry = 1;
    for (int index = 0; entry < choice.GetCount(); ++index) {
        const CString path = CCephCalc::CalcModeFile(code, index);
        if (path.IsEmpty()) break;
        if (CCephCalc::Get_Title(path).IsEmpty()) continue;  // the list counts this file, the choice does not
        DisplayMode& mode = modes.emplace_back(mode_in(path));
        CString title;
        choice.GetLBText(entry, title);
        const std::string whole_path = utf8(path);
        mode.kind = kind;
        mode.number = static_cast<int>(choice.GetItemData(entry));
        mode.title = utf8(title);
        mode.file = whole_path.substr(whole_path.find_last_of("/\\") + 1);
        ++entry;
    }
    return modes;
}

std::vector<DisplayMode> modes_named(const std::vector<DisplayMode>& modes, const std::string& name,
                                     const std::string& wanted_for) {
    const std::string wanted = lower_case(name);
    std::vector<DisplayMode> found;
    std::vector<std::string> known;
    for (const DisplayMode& mode : modes) {
        const std::string file = lower_case(mode.file);
        const bool meant = wanted == std::to_string(mode.number) || wanted == lower_case(mode.title) ||
                           wanted == file || wanted == stem(file);
        if (meant) found.push_back(mode);
        known.insert(known.end(), {mode.title, stem(mode.file)});
    }
    if (found.empty()) {
        const std::string meant = did_you_mean(name, known);
        throw Error(ExitCode::bad_command_line, "there is no display mode " + in_quotes(name) + wanted_for,
                    (meant.empty() ? "" : meant + " ") + "\"cephtool modes\" lists them.");
    }
    return found;
}

DisplayMode chosen_mode(Kind kind, const std::string& name) {
    const std::vector<DisplayMode> modes = listed_modes(kind);
    if (name.empty()) return modes.empty() ? DisplayMode{} : modes.front();
    return modes_named(modes, name, std::string(" for a ") + name_of(kind) + " case").front();
}

}  // namespace cephtool
