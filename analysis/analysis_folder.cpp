#include "AnalysisFolder.h"

#include <algorithm>
#include <map>

#include "analysis/bone_age.h"
#include "analysis/catalogue.h"
#include "analysis/definition_file.h"
#include "analysis/display_mode.h"
#include "platform/code_page.h"
#include "platform/folder_file.h"
#include "platform/system.h"

namespace fs = std::filesystem;

namespace tool {

struct AnalysisFolder::Body {
    fs::path path;
    int cast_decimals;
    std::map<Kind, std::vector<Analysis>> analyses;
    std::map<Kind, std::vector<DisplayMode>> modes;
    std::optional<Analysis> ricketts;
    BoneAgeCoefficients male, female;
    std::optional<EraCalendar> eras;
    LandmarkErrors landmark_errors;
    std::vector<FolderProblem> problems;

    // Nothing, with a problem, when it can't be read. That a file is missing which nothing promises is none.
    std::optional<std::string> text(FolderPart part, const fs::path& file, bool promised) {
        auto text = read_file_at(file, largest_text_file);
        if (text) return engine_text(*std::move(text));
        const std::uint32_t error = last_error();
        const bool is_there = !tells_absence(error);
        if (promised || is_there) problems.push_back({part, file, is_there, utf8_from_code_page(error_text(error))});
        return std::nullopt;
    }

    void read_analyses(Kind kind) {
        const auto read = [&](const fs::path& file, std::optional<int> place,
                              bool promised) -> std::optional<Analysis> {
            const auto definition = text(FolderPart::analyses, file, promised);
            if (!definition) return {};
            return Analysis::made(kind, file, *definition, place, cast_decimals);
        };
        std::vector<Analysis>& all = analyses[kind];
        if (kind == Kind::surgery) {  // it has no catalogue, and there need not be one
            if (auto only = read(path_in(path, surgery_file), 0, false)) all.push_back(*std::move(only));
            return;
        }
        const fs::path folder = path_in(path, form_folder_name(static_cast<int>(kind)));
        const auto list = text(FolderPart::analyses, path_in(folder, list_file), false);
        int place = 0;
        for (const std::string& entry : catalogue_entries(list.value_or(""))) {
            if (auto listed = read(path_in(folder, entry), place++, true)) all.push_back(*std::move(listed));
        }
        if (kind != Kind::lateral) return;
        const fs::path table = path_in(folder, ricketts_file);
        const auto listed = std::ranges::find(all, table, &Analysis::file);
        const bool is_known = std::ranges::find(problems, table, &FolderProblem::file) != problems.end();
        if (listed != all.end()) ricketts = *listed;
        if (listed == all.end() && !is_known) ricketts = read(table, {}, false);
    }

    void read_modes(Kind kind) {
        const std::string_view name = mode_folder_name(static_cast<int>(kind));
        if (name.empty()) return;
        const fs::path folder = path_in(path, name);
        const auto list = text(FolderPart::modes, path_in(folder, list_file), false);
        for (const ModeEntry& entry : mode_entries(list.value_or(""))) {
            const fs::path file = path_in(folder, entry.path);
            const auto mode_text = text(FolderPart::modes, file, true);
            if (!mode_text) continue;
            DisplayMode mode = display_mode(*mode_text);
            if (mode.title.empty()) continue;
            mode.file = file;
            mode.number = entry.number;
            modes[kind].push_back(std::move(mode));
        }
    }
};

AnalysisFolder::AnalysisFolder(const fs::path& folder, int cast_decimals) {
    auto body = std::make_shared<Body>();
    body->path = folder;
    body->cast_decimals = cast_decimals;
    std::error_code failure;
    std::optional<std::string> coefficients;
    if (fs::is_directory(folder, failure)) {
        for (const Kind kind : all_kinds) body->read_analyses(kind);
        for (const Kind kind : all_kinds) body->read_modes(kind);
        coefficients = body->text(FolderPart::bone_age, path_in(folder, "cvba.dat"), false);
        if (const auto table = body->text(FolderPart::eras, path_in(folder, "Era.dat"), false))
            body->eras = EraCalendar::from_text(*table);
        if (const auto errors = body->text(FolderPart::landmark_errors, path_in(folder, landmark_error_file), false))
            body->landmark_errors = LandmarkErrors::from_text(*errors);
    } else {
        const bool is_there = fs::exists(folder, failure);
        body->problems.push_back({FolderPart::folder, folder, is_there, is_there ? "Not a folder" : "No such folder"});
    }
    body->male = bone_age_coefficients(coefficients.value_or(""), static_cast<int>(Sex::male));
    body->female = bone_age_coefficients(coefficients.value_or(""), static_cast<int>(Sex::female));
    body_ = std::move(body);
}

const fs::path& AnalysisFolder::path() const {
    return body_->path;
}

std::span<const Analysis> AnalysisFolder::analyses(Kind kind) const {
    const auto found = body_->analyses.find(kind);
    return found == body_->analyses.end() ? std::span<const Analysis>() : found->second;
}

const Analysis* AnalysisFolder::ricketts() const {
    return body_->ricketts ? &*body_->ricketts : nullptr;
}

std::span<const DisplayMode> AnalysisFolder::modes(Kind kind) const {
    const auto found = body_->modes.find(kind);
    return found == body_->modes.end() ? std::span<const DisplayMode>() : found->second;
}

const BoneAgeCoefficients& AnalysisFolder::bone_age(Sex sex) const {
    return sex == Sex::male ? body_->male : body_->female;
}

const std::optional<EraCalendar>& AnalysisFolder::eras() const {
    return body_->eras;
}

const LandmarkErrors& AnalysisFolder::landmark_errors() const {
    return body_->landmark_errors;
}

std::span<const FolderProblem> AnalysisFolder::problems() const {
    return body_->problems;
}

}  // namespace tool
