#include "analysis/catalogue.h"

#include "analysis/definition_file.h"
#include "framework/application.h"
#include "framework/system.h"
#include "platform/path.h"
#include "platform/system.h"
#include "platform/text.h"
#include "util/delimiter.h"

namespace tool {
namespace {

std::string_view folder_of_kind(int kind) {
    switch (kind) {
        case 0: return "CalcForm";
        case 1: return "CalcForm_PA";
        case 2: return "CalcForm_Model";
        case 10: return "CalcForm_Diag";
        default: return {};
    }
}

std::string with_backslash(std::string path) {
    bool ends_in_backslash = false;
    for (std::string_view rest = path; !rest.empty(); rest.remove_prefix(char_length(rest)))
        ends_in_backslash = rest.front() == '\\';
    if (!ends_in_backslash) path += '\\';
    return path;
}

// Catalogue entry `index`; empty lines are neither entries nor counted.
std::string_view entry(std::string_view catalogue, int index) {
    std::string_view found;
    int count = 0;
    for_each_line(catalogue, [&](std::string_view line, int) {
        if (!line.empty() && count++ == index) found = line;
        return !found.empty();
    });
    return found;
}

std::string folder_of(int kind) {
    std::string folder = analysis_root();
    return with_backslash(folder.append(folder_of_kind(kind)));
}

std::string surgical_sheet() {
    return analysis_root() + "CalcForm_Surg\\Surgery.txt";
}

}  // namespace

std::string configured_analysis_root() {
    return std::string(AfxGetApp()->GetProfileString("DB_DIR", "ANAITEMPATH", "").View());
}

std::string analysis_root() {
    std::string configured = configured_analysis_root();
    if (!configured.empty()) return with_delimiter(std::move(configured));
    char module[260] = "";
    GetModuleFileNameA(nullptr, module, sizeof module);
    const PathParts parts = split_path(module);
    return with_delimiter(std::string(parts.drive) + std::string(parts.dir) + "ANAITEM\\");
}

std::string form_file(int kind, int index) {
    if (kind == 20) return surgical_sheet();
    std::string folder = folder_of(kind);
    if (kind == 0 && index == -1) return folder + "Ricketts.txt";
    const std::string catalogue = file_text(folder + "list.txt");
    const std::string_view file = entry(catalogue, index);
    return file.empty() ? std::string() : folder.append(file);
}

std::vector<std::string> form_files(int kind) {
    if (kind == 20) return {surgical_sheet()};
    const std::string folder = folder_of(kind), catalogue = file_text(folder + "list.txt");
    std::vector<std::string> files;
    for_each_line(catalogue, [&](std::string_view line, int) {
        if (!line.empty()) files.push_back(folder + std::string(line));
        return false;
    });
    return files;
}

std::string file_text(std::string_view path) {
    return path.empty() ? std::string() : engine_text(read_file(path, largest_text_file).value_or(std::string()));
}

}  // namespace tool
