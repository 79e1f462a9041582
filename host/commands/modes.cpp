// cephtool modes: what a tracing can show.
#include <nlohmann/json.hpp>
#include <ostream>

#include "base/columns.h"
#include "base/wording.h"
#include "host/command_line.h"
#include "host/output.h"
#include "results/names.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kind_width = 8, number_width = 4, title_width = 30, count_width = 6, file_width = 13;

std::string text_of(tool::ModeDecimals decimals) {
    switch (decimals) {
        case tool::ModeDecimals::none: return "0";
        case tool::ModeDecimals::one: return "1";
        case tool::ModeDecimals::halves: return "0.5";
        default: return "2";
    }
}

std::string row(const std::string& kind, const std::string& number, const std::string& title,
                const std::string& landmarks, const std::string& lines, const std::string& values,
                const std::string& file) {
    return left_aligned(kind, kind_width) + right_aligned(number, number_width) + "  " +
           left_aligned(fitted(title, title_width), title_width) + right_aligned(landmarks, count_width) +
           right_aligned(lines, count_width) + right_aligned(values, count_width + 1) + "  " +
           fitted(file, file_width) + "\n";
}

std::string shown(const std::vector<KindOfMode>& modes, const Texts& texts) {
    std::string text =
        row(texts("Kind"), texts("No"), texts("Mode"), texts("Points"), texts("Lines"), texts("Values"), texts("File"));
    for (const auto& [kind, listed] : modes) {
        const DisplayMode& mode = *listed;
        const std::string landmarks = mode.every_landmark ? texts("all") : std::to_string(mode.landmarks.size());
        text += row(texts(name_of(kind)), std::to_string(mode.number), title_of(mode, texts), landmarks,
                    std::to_string(mode.lines.size()), std::to_string(mode.values.size()), file_of(mode));
    }
    return text;
}

std::string shown(const KindOfMode& listed, const Texts& texts) {
    const DisplayMode& mode = *listed.mode;
    constexpr int name_width = 38, position_width = 18;
    const auto heading = [&](const char* what, std::size_t count) { return texts(what, std::to_string(count)) + "\n"; };
    std::string text = wrapped(title_of(mode, texts), page_width, "") + "\n" +
                       texts("%1 mode %2", texts(name_of(listed.kind)), std::to_string(mode.number)) + ", " +
                       file_of(mode) + "\n\n";
    text += mode.every_landmark ? texts("All landmarks") + "\n" : heading("%1 landmarks", mode.landmarks.size());
    if (!mode.landmarks.empty())
        text += "  " + wrapped(joined(printable(mode.landmarks), " "), page_width - 2, "  ") + "\n";
    text += heading("%1 lines", mode.lines.size());
    for (const tool::ModeLine& line : mode.lines) {
        text += "  " + left_aligned(printable(line.from + " - " + line.to), name_width) + hex(line.colour) + "  " +
                texts(line.bold ? "bold" : "normal") + "\n";
    }
    text += heading("%1 values: colour, position, decimals, size", mode.values.size());
    for (const tool::ModeValue& value : mode.values) {
        text += "  " + left_aligned(fitted(printable(value.item), name_width - 1), name_width) + hex(value.colour) +
                "  " + left_aligned(fitted(texts("at %1", printable(value.position)), position_width), position_width) +
                " " + right_aligned(text_of(value.decimals), 3) + "  " + fitted(std::to_string(value.size), 4) + "\n";
    }
    const std::vector<std::string>& settings = mode.landmark_settings;
    if (!settings.empty()) text += heading("%1 settings of landmarks", settings.size());
    for (const std::string& setting : settings) text += "  " + wrapped(printable(setting), page_width - 2, "  ") + "\n";
    return text;
}

Json json_of(const tool::ModeLine& line) {
    return {{"from", printable(line.from)},
            {"to", printable(line.to)},
            {"colour", hex(line.colour)},
            {"weight", line.bold ? "bold" : "normal"}};
}

Json json_of(const tool::ModeValue& value) {
    return {{"text", printable(value.item)},
            {"colour", hex(value.colour)},
            {"decimals", text_of(value.decimals)},
            {"position", printable(value.position)},
            {"size", std::to_string(value.size)}};
}

template <class Part>
Json json_list(const std::vector<Part>& parts) {
    Json list = Json::array();
    for (const Part& part : parts) list.push_back(json_of(part));
    return list;
}

Json json_of(const KindOfMode& listed, bool with_parts, const Texts& texts) {
    const DisplayMode& mode = *listed.mode;
    Json json = {{"kind", name_of(listed.kind)},
                 {"number", mode.number},
                 {"title", title_of(mode)},
                 {"label", title_of(mode, texts)},
                 {"file", file_of(mode)}};
    if (with_parts) {
        json["every_landmark"] = mode.every_landmark;
        json["landmarks"] = printable(mode.landmarks);
        json["lines"] = json_list(mode.lines);
        json["values"] = json_list(mode.values);
        json["settings"] = printable(mode.landmark_settings);
    } else {
        json["landmark_count"] = mode.landmarks.size();
        json["line_count"] = mode.lines.size();
        json["value_count"] = mode.values.size();
    }
    return json;
}

std::string as_json(const std::vector<KindOfMode>& modes, bool with_parts, const Texts& texts) {
    Json all = Json::array();
    for (const KindOfMode& mode : modes) all.push_back(json_of(mode, with_parts, texts));
    return Json({{"modes", all}}).dump(2) + "\n";
}

}  // namespace

ExitCode run_modes(const Command& command, const Arguments& arguments, Streams& streams) {
    std::string name, kind_name, folder, output;
    ResultFormat format{};
    Language language = Language::english;
    CommandLine line(command, "cephtool modes --kind frontal", "cephtool modes --kind lateral ricketts");
    line.add_argument("MODE", name, "title, file name or number of a mode");
    line.add_choice("--kind", kind_name, {"lateral", "frontal", "model"}, "lateral, frontal or model: only these");
    line.add_analysis_folder(folder);
    line.add_language(language, "en or ja: of names and texts");
    line.add_format(format, output, {ResultFormat::table, ResultFormat::json});
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    const AnalysisFolder analyses = analysis_folder(folder, {FolderPart::modes});
    for (const std::string& note : problem_notes(analyses, FolderPart::modes)) streams.err << "note: " << note << "\n";
    std::vector<KindOfMode> modes = listed_modes(analyses);
    std::erase_if(modes, [&](const KindOfMode& mode) { return !kind_name.empty() && kind_name != name_of(mode.kind); });
    if (!name.empty()) modes = modes_named(modes, name);
    const Texts texts(language);
    std::string text;
    if (format == ResultFormat::json) {
        text = as_json(modes, !name.empty(), texts);
    } else if (name.empty()) {
        text = shown(modes, texts);
    } else {
        text = tables(modes, [&](const KindOfMode& mode) { return shown(mode, texts); });
    }
    write_result(text, output, streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
