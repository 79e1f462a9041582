#include "web/engine/folders.h"

#include <CodePage.h>
#include <DefinitionCheck.h>
#include <MeasuredAnalysis.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include "base/library_name.h"
#include "base/path.h"
#include "base/wording.h"
#include "cases/case_builder.h"
#include "cases/case_names.h"
#include "results/names.h"
#include "web/engine/fault.h"

namespace engine {
namespace {

namespace fs = std::filesystem;
using cephtool::Analysis;
using cephtool::AnalysisFolder;
using cephtool::Error;
using cephtool::ExitCode;

const fs::path opened = "/folders";

struct Folder {
    explicit Folder(AnalysisFolder read) : folder(std::move(read)) {}

    AnalysisFolder folder;
    fs::path files;  // that were written for it; "" for the one that ships
    std::vector<Analysis> analyses;
    std::vector<cephtool::KindOfMode> modes;
    std::vector<int> analysis_numbers, mode_numbers;
    Json problems = Json::array();
};

std::vector<std::unique_ptr<Folder>> folders;
std::vector<const Analysis*> numbered_analyses;  // null: closed
std::vector<const cephtool::DisplayMode*> numbered_modes;

int enter(std::unique_ptr<Folder> folder) {
    for (const Analysis& analysis : folder->analyses) {
        folder->analysis_numbers.push_back(static_cast<int>(numbered_analyses.size()));
        numbered_analyses.push_back(&analysis);
    }
    for (const cephtool::KindOfMode& mode : folder->modes) {
        folder->mode_numbers.push_back(static_cast<int>(numbered_modes.size()));
        numbered_modes.push_back(mode.mode);
    }
    folders.push_back(std::move(folder));
    return static_cast<int>(folders.size()) - 1;
}

std::unique_ptr<Folder> read_folder(const std::string& path) {
    auto folder = std::make_unique<Folder>(cephtool::analysis_folder(
        path, {tool::FolderPart::analyses, tool::FolderPart::modes, tool::FolderPart::bone_age}));
    folder->analyses = cephtool::listed_analyses(folder->folder);
    folder->modes = cephtool::listed_modes(folder->folder);
    return folder;
}

Folder& folder_at(int number) {
    if (folders.empty()) enter(read_folder(""));
    const auto place = static_cast<std::size_t>(number);
    if (number < 0 || place >= folders.size() || !folders[place])
        throw Error(ExitCode::bad_input, "this folder of analyses is closed");
    return *folders[place];
}

bool is_part(const std::string& name) {
    return name.starts_with("CalcForm") || name.starts_with("CalcMode");
}

// Where a file goes: its path within the analysis folder, without the folders around that. "" for a path that leads out
// of it.
fs::path place_of(const std::string& name) {
    fs::path place;
    for (const fs::path& part : cephtool::path_from_utf8(name).relative_path()) {
        if (part == "..") return {};
        if (part == "." || part.empty()) continue;
        if (is_part(cephtool::utf8_from_path(part))) place.clear();
        place /= part;
    }
    return place;
}

bool in_part(const fs::path& place) {
    return !place.empty() && is_part(cephtool::utf8_from_path(*place.begin())) && place.has_parent_path();
}

void write_file(const fs::path& file, const std::string& bytes) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// Of a folder, or a file in it: names of files are as below `root`.
Json problems_of(const fs::path& path, const fs::path& root) {
    Json list = Json::array();
    const std::optional<CString> name = cephtool::library_name(cephtool::utf8_from_path(path));
    if (!name) return list;
    const auto utf8 = [](const CString& text) { return cephtool::printable(Utf8FromCodePage932(text)); };
    for (const CheckFinding& finding : DefinitionCheck::Path(*name).findings) {
        std::string file = utf8(finding.path);
        const std::string folder = cephtool::utf8_from_path(root) + "/";
        if (file.starts_with(folder)) file.erase(0, folder.size());
        list.push_back({{"file", file},
                        {"line", finding.line},
                        {"column", finding.column},
                        {"note", finding.note},
                        {"message", utf8(finding.message)}});
    }
    return list;
}

// All landmarks that the values of an analysis ask for, item by item: those that a case without any lacks.
std::vector<std::vector<std::string>> needed_landmarks(const Analysis& analysis) {
    std::vector<std::vector<std::string>> needed;
    const tool::Subject nobody{.mm_per_pixel = 1, .sex = tool::Sex::male};
    const auto all = tool::measure_all(analysis, nobody, tool::Shapes::left_out);
    for (const tool::MeasuredItem& item : (*all).items) {
        std::vector<std::string>& names = needed.emplace_back(item.missing);
        for (const std::string& name : item.norm_missing)
            if (std::ranges::find(names, name) == names.end()) names.push_back(name);
    }
    return needed;
}

// As a person places them: those of the kind's table in its order, others behind.
void put_in_order(std::vector<std::string>& names, cephtool::Kind kind) {
    const std::vector<std::string> table = cephtool::landmark_names(kind);
    std::stable_sort(names.begin(), names.end(), [&](const std::string& a, const std::string& b) {
        return std::ranges::find(table, a) < std::ranges::find(table, b);
    });
}

Json in_both(const std::string& text) {
    return {{"en", texts_in("en").part(text)}, {"ja", texts_in("ja").part(text)}};
}

Json label_of(const tool::Item& item) {
    return {{"en", cephtool::label_of(item, texts_in("en"))}, {"ja", cephtool::label_of(item, texts_in("ja"))}};
}

Json population_of(const Analysis& analysis) {
    const auto& population = analysis.population();
    if (!population) return nullptr;
    return {{"name", cephtool::printable(population->name)},
            {"label", {{"en", population->name}, {"ja", population->japanese}}},
            {"words",
             {{"en", cephtool::in_words(*population, texts_in("en"))},
              {"ja", cephtool::in_words(*population, texts_in("ja"))}}}};
}

Json json_of(const Analysis& analysis, int number) {
    const auto needed = needed_landmarks(analysis);
    Json items = Json::array();
    std::vector<std::string> landmarks;
    for (std::size_t i = 0; i < analysis.items().size(); ++i) {
        const tool::Item& item = analysis.items()[i];
        for (const std::string& name : needed[i])
            if (std::ranges::find(landmarks, name) == landmarks.end()) landmarks.push_back(name);
        items.push_back({{"name", cephtool::printable(item.name)},
                         {"label", label_of(item)},
                         {"heading", item.heading},
                         {"unit", item.unit},
                         {"formula", item.formula},
                         {"column", item.column},
                         {"marked", item.marked},
                         {"sign", in_both(cephtool::printable(item.sign))},
                         {"unverified", in_both(cephtool::printable(item.unverified))},
                         {"landmarks", needed[i]}});
    }
    put_in_order(landmarks, cephtool::case_kind(analysis));
    return {
        {"id", number},
        {"kind", cephtool::kind_name(analysis)},
        {"caseKind", cephtool::name_of(cephtool::case_kind(analysis))},
        {"name", cephtool::short_name(analysis)},
        {"title", cephtool::title_of(analysis)},
        {"label",
         {{"en", cephtool::title_of(analysis, texts_in("en"))}, {"ja", cephtool::title_of(analysis, texts_in("ja"))}}},
        {"population", population_of(analysis)},
        {"comment", cephtool::comment_of(analysis)},
        {"items", items},
        {"landmarks", landmarks}};
}

}  // namespace

int open_folder(const std::vector<NamedBytes>& files) {
    folder_at(shipped_folder);
    const fs::path root = opened / std::to_string(folders.size());
    const bool is_folder =
        std::ranges::any_of(files, [](const NamedBytes& file) { return in_part(place_of(file.name)); });
    try {
        std::unique_ptr<Folder> folder;
        if (is_folder) {
            for (const NamedBytes& file : files)
                if (const fs::path place = place_of(file.name); !place.empty())
                    write_file(root / (in_part(place) ? place : place.filename()), file.bytes);
            folder = read_folder(cephtool::utf8_from_path(root));
            folder->problems = problems_of(root, root);
        } else if (files.size() == 1) {
            const fs::path file = root / cephtool::path_from_utf8(files.front().name).filename();
            write_file(file, files.front().bytes);
            folder = std::make_unique<Folder>(folder_at(shipped_folder).folder);
            std::istringstream no_input;
            std::vector<std::string> notes;
            folder->analyses = cephtool::analyses_in_file(cephtool::utf8_from_path(file), no_input, notes);
            folder->problems = problems_of(file, root);
        }
        if (!folder || (folder->analyses.empty() && folder->modes.empty())) {
            throw Fault("no_analysis", "there is no analysis in it",
                        "A folder of analyses holds CalcForm/list.txt, which names the definition files beside it.");
        }
        folder->files = root;
        return enter(std::move(folder));
    } catch (...) {
        fs::remove_all(root);
        throw;
    }
}

void close_folder(int number) {
    if (number == shipped_folder) return;
    Folder& folder = folder_at(number);
    for (const int analysis : folder.analysis_numbers) numbered_analyses[static_cast<std::size_t>(analysis)] = nullptr;
    for (const int mode : folder.mode_numbers) numbered_modes[static_cast<std::size_t>(mode)] = nullptr;
    fs::remove_all(folder.files);
    folders[static_cast<std::size_t>(number)].reset();
}

Json description_of(int number) {
    const Folder& folder = folder_at(number);
    Json analyses = Json::array(), modes = Json::array();
    const auto number_of = [&](const Analysis* analysis) {
        return folder.analysis_numbers[static_cast<std::size_t>(analysis - folder.analyses.data())];
    };
    for (std::size_t i = 0; i < folder.analyses.size(); ++i)
        analyses.push_back(json_of(folder.analyses[i], folder.analysis_numbers[i]));
    Json families = Json::array();
    for (const cephtool::AnalysisFamily& family : cephtool::families_of(folder.analyses)) {
        Json variants = Json::array();
        for (const Analysis* variant : family.variants) variants.push_back(number_of(variant));
        families.push_back({{"base", number_of(family.base)}, {"variants", variants}});
    }
    for (std::size_t i = 0; i < folder.modes.size(); ++i) {
        const cephtool::KindOfMode& mode = folder.modes[i];
        modes.push_back({{"id", folder.mode_numbers[i]},
                         {"kind", cephtool::name_of(mode.kind)},
                         {"name", cephtool::short_name(*mode.mode)},
                         {"title", cephtool::title_of(*mode.mode)},
                         {"label", in_both(cephtool::title_of(*mode.mode))}});
    }
    return {{"problems", folder.problems}, {"analyses", analyses}, {"families", families}, {"modes", modes}};
}

const AnalysisFolder& folder_numbered(int number) {
    return folder_at(number).folder;
}

const std::vector<Analysis>& analyses_of(int number) {
    return folder_at(number).analyses;
}

const tool::LandmarkErrors& landmark_errors_of(const Analysis& analysis) {
    for (const auto& folder : folders) {
        const auto is_it = [&](const Analysis& each) { return &each == &analysis; };
        if (folder && std::ranges::any_of(folder->analyses, is_it) && !folder->folder.landmark_errors().all().empty())
            return folder->folder.landmark_errors();
    }
    return folder_at(shipped_folder).folder.landmark_errors();
}

const Analysis& analysis_numbered(int number) {
    const auto place = static_cast<std::size_t>(number);
    if (number < 0 || place >= numbered_analyses.size() || !numbered_analyses[place])
        throw Error(ExitCode::bad_input, "this analysis is of no open folder");
    return *numbered_analyses[place];
}

std::vector<const Analysis*> analyses_numbered(const std::vector<int>& numbers) {
    std::vector<const Analysis*> all;
    for (const int number : numbers) all.push_back(&analysis_numbered(number));
    return all;
}

const cephtool::DisplayMode& mode_numbered(int number) {
    const auto place = static_cast<std::size_t>(number);
    if (number < 0 || place >= numbered_modes.size() || !numbered_modes[place])
        throw Error(ExitCode::bad_input, "this display mode is of no open folder");
    return *numbered_modes[place];
}

}  // namespace engine
