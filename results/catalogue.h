// The analyses that a person can choose from: those of the analysis folder, and single definition files.
#pragma once

#include <AnalysisSheet.h>

#include <span>
#include <string>
#include <vector>

#include "cases/case.h"

namespace cephtool {

struct Analysis {
    int engine_kind;    // 10 and 20 are measured on lateral cases
    std::string file;   // without folder
    std::string title;  // the file's name where it has none
    std::string comment;
    AnalysisSheet sheet;
    std::optional<int> index = {};  // in the catalogue of its kind; none for a file of the person's own

    // The file's name without extension, by which the analysis can be asked for.
    std::string short_name() const { return file.substr(0, file.rfind('.')); }
};

Kind case_kind(const Analysis& analysis);
const char* name_of_engine_kind(int engine_kind);

// All that the folder's catalogues list, in their order. What is listed but can't be read goes to `notes`.
std::vector<Analysis> listed_analyses(std::vector<std::string>& notes);

// A definition file of the person's own, once for each kind of case, since the file itself does not tell.
// That it is UTF-8, where code page 932 is read, goes to `notes`. Throws an Error when it can't be read or holds no
// item.
std::vector<Analysis> analyses_in_file(const std::string& path, std::istream& standard_input,
                                       std::vector<std::string>& notes);

// Those whose title or file name, with or without extension, is `name`, without regard to case.
std::vector<const Analysis*> named(std::span<const Analysis> analyses, std::string_view name);

// "No such analysis", with the closest title or file name.
Error unknown_analysis(std::span<const Analysis> analyses, std::string_view name);

}  // namespace cephtool
