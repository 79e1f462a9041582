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
    return with_backslash(folder.append(form_folder_name(kind)));
}

std::string surgical_sheet() {
    return analysis_root().append(surgery_file);
}

}  // namespace

std::string_view form_folder_name(int kind) {
    switch (kind) {
        case 0: return "CalcForm";
        case 1: return "CalcForm_PA";
        case 2: return "CalcForm_Model";
        case 10: return "CalcForm_Diag";
        default: return {};
    }
}

std::vector<std::string> catalogue_entries(std::string_view catalogue) {
    std::vector<std::string> entries;
    for_each_line(catalogue, [&](std::string_view line, int) {
        if (!line.empty()) entries.emplace_back(line);
        return false;
    });
    return entries;
}

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
    if (kind == 0 && index == -1) return folder.append(ricketts_file);
    const std::string catalogue = file_text(folder + std::string(list_file));
    const std::string_view file = entry(catalogue, index);
    return file.empty() ? std::string() : folder.append(file);
}

std::vector<std::string> form_files(int kind) {
    if (kind == 20) return {surgical_sheet()};
    const std::string folder = folder_of(kind);
    std::vector<std::string> files = catalogue_entries(file_text(folder + std::string(list_file)));
    for (std::string& file : files) file.insert(0, folder);
    return files;
}

std::string file_text(std::string_view path) {
    return path.empty() ? std::string() : engine_text(read_file(path, largest_text_file).value_or(std::string()));
}

}  // namespace tool
