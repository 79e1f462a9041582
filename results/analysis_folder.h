// The analyses and display modes that a person can choose from: those of the analysis folder, and single definition
// files.
#pragma once

#include <AnalysisFolder.h>

#include <initializer_list>
#include <span>
#include <string>
#include <vector>

#include "base/error.h"
#include "base/source.h"
#include "cases/case.h"

namespace cephtool {

using tool::Analysis;
using tool::AnalysisFolder;
using tool::DisplayMode;
using tool::FolderPart;

// The folder of this name, "" for the one that ships. Throws an Error when it is no folder, or a file of the parts that
// are wanted of it is there but can't be read: without it results would be others.
AnalysisFolder analysis_folder(const std::string& name, std::initializer_list<FolderPart> wanted);
// Of the folder that ships.
std::string shipped_analyses();

// "FILE is listed, but can't be read: No such file or directory", of the part.
std::vector<std::string> problem_notes(const AnalysisFolder& folder, FolderPart part);

// All analyses of the folder, kind by kind, in the order of their catalogues.
std::vector<Analysis> listed_analyses(const AnalysisFolder& folder);

// An analysis, and sheets with norms of other populations for it.
struct AnalysisFamily {
    AnalysisFamily(const Analysis* its_base) : base(its_base) {}  // NOLINT: one without variants is the analysis

    const Analysis* base;
    std::vector<const Analysis*> variants = {};

    // The sheet with norms of the population, as tool::population_named has it; the base where there is none, and for
    // "".
    const Analysis* of(std::string_view population) const;
};

// Those of the analyses that are no variant of another one of their folder, in their order, with their variants.
std::vector<AnalysisFamily> families_of(std::span<const Analysis> analyses);

// A definition file of the person's own, once for each kind of case, since the file itself does not tell.
// That it is UTF-8, where code page 932 is read, goes to `notes`. Throws an Error when it can't be read or holds no
// item.
std::vector<Analysis> analyses_in_file(const std::string& path, std::istream& standard_input,
                                       std::vector<std::string>& notes);

// Whether norms can be asked for by the name: not by what files say of norms that are those of no one population.
bool names_one_population(const std::string& name);

// What is shown of an analysis.
Kind case_kind(const Analysis& analysis);
const char* kind_name(const Analysis& analysis);  // "diagnosis"
std::string title_of(const Analysis& analysis);
std::string comment_of(const Analysis& analysis);
std::string file_of(const Analysis& analysis);     // without folder
std::string short_name(const Analysis& analysis);  // the file's, without extension; the analysis can be asked for by it

// Those whose title or file name, with or without extension, is `name`, without regard to case.
std::vector<const Analysis*> named(std::span<const Analysis> analyses, std::string_view name);

// "No such analysis", with the closest title or file name.
Error unknown_analysis(std::span<const Analysis> analyses, std::string_view name);

// A display mode with the kind of case that it is for, and what is shown of it.
struct KindOfMode {
    Kind kind;
    const DisplayMode* mode;
};
std::vector<KindOfMode> listed_modes(const AnalysisFolder& folder, std::span<const Kind> kinds = all_kinds);
std::string hex(tool::Colour colour);  // "#rrggbb"
std::string title_of(const DisplayMode& mode);
std::string file_of(const DisplayMode& mode);
std::string short_name(const DisplayMode& mode);

// Those whose number, title or file name, with or without extension, is `name`. None is an Error of the command line,
// in which `wanted_for` (" for a lateral case", or "") says what it was wanted for.
std::vector<KindOfMode> modes_named(std::span<const KindOfMode> modes, const std::string& name,
                                    const std::string& wanted_for = "");

// The mode of this name for a kind of case, the first that is listed when it is "". Throws an Error as modes_named
// does.
DisplayMode chosen_mode(const AnalysisFolder& folder, Kind kind, const std::string& name);

}  // namespace cephtool
