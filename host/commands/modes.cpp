// cephtool modes: what a tracing can show.
#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "base/columns.h"
#include "base/suggestion.h"
#include "base/wording.h"
#include "host/command_line.h"
#include "host/output.h"
#include "host/profile.h"
#include "tracing/display_mode.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kind_width = 8, number_width = 4, title_width = 30, count_width = 6, file_width = 13;

std::string row(const std::string& kind, const std::string& number, const std::string& title,
                const std::string& landmarks, const std::string& lines, const std::string& values,
                const std::string& file) {
    return left_aligned(kind, kind_width) + right_aligned(number, number_width) + "  " +
           left_aligned(fitted(title, title_width), title_width) + right_aligned(landmarks, count_width) +
           right_aligned(lines, count_width) + right_aligned(values, count_width + 1) + "  " +
           fitted(file, file_width) + "\n";
}

std::string shown(const std::vector<DisplayMode>& modes) {
    std::string text = row("Kind", "No", "Mode", "Points", "Lines", "Values", "File");
    for (const DisplayMode& mode : modes) {
        const std::string landmarks = mode.every_landmark ? "all" : std::to_string(mode.landmarks.size());
        text += row(name_of(mode.kind), std::to_string(mode.number), mode.title, landmarks,
                    std::to_string(mode.lines.size()), std::to_string(mode.values.size()), mode.file);
    }
    return text;
}

std::string heading(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + "\n";
}

std::string shown(const DisplayMode& mode) {
    constexpr int name_width = 38, position_width = 18;
    std::string text = wrapped(mode.title, page_width, "") + "\n" + name_of(mode.kind) + " mode " +
                       std::to_string(mode.number) + ", " + mode.file + "\n\n";
    text += mode.every_landmark ? "All landmarks\n" : heading(mode.landmarks.size(), "landmarks");
    if (!mode.landmarks.empty()) text += "  " + wrapped(joined(mode.landmarks, " "), page_width - 2, "  ") + "\n";
    text += heading(mode.lines.size(), "lines");
    for (const ModeLine& line : mode.lines) {
        text += "  " + left_aligned(line.from + " - " + line.to, name_width) + line.colour + "  " +
                (line.bold ? "bold" : "normal") + "\n";
    }
    text += heading(mode.values.size(), "values: colour, position, decimals, size");
    for (const ModeValue& value : mode.values) {
        text += "  " + left_aligned(fitted(value.text, name_width - 1), name_width) + value.colour + "  " +
                left_aligned(fitted("at " + value.position, position_width), position_width) + " " +
                right_aligned(value.decimals, 3) + "  " + fitted(value.size, 4) + "\n";
    }
    if (!mode.settings.empty()) text += heading(mode.settings.size(), "settings of landmarks");
    for (const std::string& setting : mode.settings) text += "  " + wrapped(setting, page_width - 2, "  ") + "\n";
    return text;
}

Json json_of(const ModeLine& line) {
    return {{"from", line.from}, {"to", line.to}, {"colour", line.colour}, {"weight", line.bold ? "bold" : "normal"}};
}

Json json_of(const ModeValue& value) {
    return {{"text", value.text},
            {"colour", value.colour},
            {"decimals", value.decimals},
            {"position", value.position},
            {"size", value.size}};
}

template <class Part>
Json json_list(const std::vector<Part>& parts) {
    Json list = Json::array();
    for (const Part& part : parts) list.push_back(json_of(part));
    return list;
}

Json json_of(const DisplayMode& mode, bool with_parts) {
    Json json = {{"kind", name_of(mode.kind)}, {"number", mode.number}, {"title", mode.title}, {"file", mode.file}};
    if (with_parts) {
        json["every_landmark"] = mode.every_landmark;
        json["landmarks"] = mode.landmarks;
        json["lines"] = json_list(mode.lines);
        json["values"] = json_list(mode.values);
        json["settings"] = mode.settings;
    } else {
        json["landmark_count"] = mode.landmarks.size();
        json["line_count"] = mode.lines.size();
        json["value_count"] = mode.values.size();
    }
    return json;
}

std::string as_json(const std::vector<DisplayMode>& modes, bool with_parts) {
    Json all = Json::array();
    for (const DisplayMode& mode : modes) all.push_back(json_of(mode, with_parts));
    return Json({{"modes", all}}).dump(2) + "\n";
}

}  // namespace

ExitCode run_modes(const Command& command, const Arguments& arguments, Streams& streams) {
    std::string name, kind_name, folder, format, output;
    CommandLine line(command, "cephtool modes --kind frontal", "cephtool modes --kind lateral ricketts");
    line.add_argument("MODE", name, "title, file name or number of a mode");
    line.add_choice("--kind", kind_name, {"lateral", "frontal", "model"}, "lateral, frontal or model: only these");
    line.add_analysis_folder(folder);
    line.add_format(format, output, {"table", "json"});
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    const ProgramProfile profile(folder);
    std::vector<DisplayMode> modes;
    for (const Kind kind : all_kinds) {
        if (!kind_name.empty() && kind_name != name_of(kind)) continue;
        std::ranges::move(listed_modes(kind), std::back_inserter(modes));
    }
    if (!name.empty()) modes = modes_named(modes, name);
    std::string text;
    if (format == "json") {
        text = as_json(modes, !name.empty());
    } else if (name.empty()) {
        text = shown(modes);
    } else {
        for (const DisplayMode& mode : modes) text += (text.empty() ? "" : "\n") + shown(mode);
    }
    write_result(text, output, streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
