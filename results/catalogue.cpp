#include "results/catalogue.h"

#include <CephCalc.h>
#include <CodePage.h>
#include <Framework.h>

#include <algorithm>

#include "base/library_name.h"
#include "base/path.h"
#include "base/suggestion.h"
#include "base/utf8.h"
#include "base/wording.h"

namespace cephtool {
namespace {

struct EngineKind {
    int code;
    const char* name;
    Kind measured_on;
};

constexpr int surgical = 20;

// As of a file that the library reads itself.
constexpr InputLimit definition_limit{
    std::size_t{16} << 20, "16 MiB",
    "A definition file is some kilobytes of text. Give the file that holds the items."};

constexpr EngineKind engine_kinds[] = {
    {0, "lateral", Kind::lateral}, {10, "diagnosis", Kind::lateral}, {surgical, "surgery", Kind::lateral},
    {1, "frontal", Kind::frontal}, {2, "model", Kind::model},
};

const EngineKind& engine_kind(int code) {
    for (const EngineKind& kind : engine_kinds)
        if (kind.code == code) return kind;
    return engine_kinds[0];
}

std::string without_folder(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

std::string without_extension(const std::string& file) {
    return file.substr(0, file.rfind('.'));
}

Analysis described(int code, const std::string& path, AnalysisSheet sheet) {
    const std::string file = printable(without_folder(path));
    const std::string title = printable(Utf8FromCodePage932(sheet.Title()));
    const std::string comment = printable(Utf8FromCodePage932(sheet.Comment()));
    return {code, file, title.empty() ? without_extension(file) : title, comment, std::move(sheet)};
}

}  // namespace

Kind case_kind(const Analysis& analysis) {
    return engine_kind(analysis.engine_kind).measured_on;
}

const char* name_of_engine_kind(int code) {
    return engine_kind(code).name;
}

std::vector<Analysis> listed_analyses(std::vector<std::string>& notes) {
    std::vector<Analysis> analyses;
    for (const EngineKind& kind : engine_kinds) {
        for (int index = 0;; ++index) {
            const CString path = CCephCalc::FormFile(kind.code, index);
            if (path.IsEmpty()) break;
            AnalysisSheet sheet(kind.code, path);
            const bool single = kind.code == surgical;  // its one path is given for every index, file or no file
            if (sheet.IsLoaded()) {
                analyses.push_back(described(kind.code, Utf8FromCodePage932(path), std::move(sheet)));
                analyses.back().index = index;
            } else if (!single) {
                notes.push_back(shown_name(utf8_from_path(path_from_library(path))) + " is listed, but can't be read");
            }
            if (single) break;
        }
    }
    return analyses;
}

std::vector<Analysis> analyses_in_file(const std::string& path, std::istream& standard_input,
                                       std::vector<std::string>& notes) {
    const Source source = read_bytes(path, standard_input, definition_limit);
    const bool is_ascii = std::ranges::none_of(source.text, [](char c) { return (c & 0x80) != 0; });
    if (!is_ascii && first_malformed(source.text) == std::string::npos) {
        notes.push_back(shown_name(path) +
                        " is UTF-8, but definition files are read in code page 932: names and units come out as other "
                        "characters. Convert it: iconv -f UTF-8 -t CP932 OLD > NEW, or save it as Shift JIS");
    }
    std::vector<Analysis> analyses;
    for (const Kind kind : all_kinds) {
        const int code = static_cast<int>(kind);
        analyses.push_back(described(code, path, AnalysisSheet(code, source.text.data(), source.text.size())));
    }
    if (analyses.front().sheet.GetCount() == 0) {
        throw source.error("this definition file holds no item",
                           "Items stand below a line \"Calc:\", one a line: SNA=angle1([S],[N],[A])");
    }
    return analyses;
}

std::vector<const Analysis*> named(std::span<const Analysis> analyses, std::string_view name) {
    const std::string wanted = lower_case(name);
    std::vector<const Analysis*> found;
    for (const Analysis& analysis : analyses) {
        const std::string file = lower_case(analysis.file);
        if (wanted == lower_case(analysis.title) || wanted == file || wanted == without_extension(file)) {
            found.push_back(&analysis);
        }
    }
    return found;
}

Error unknown_analysis(std::span<const Analysis> analyses, std::string_view name) {
    std::vector<std::string> names;
    for (const Analysis& analysis : analyses) {
        names.push_back(analysis.title);
        names.push_back(without_extension(analysis.file));
    }
    const std::string meant = did_you_mean(name, names);
    return {ExitCode::bad_command_line, "there is no analysis " + in_quotes(name),
            (meant.empty() ? "" : meant + " ") + "\"cephtool analyses\" lists them."};
}

}  // namespace cephtool
