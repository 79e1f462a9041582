// DefinitionCheck: which checks a text, a file or a folder needs.
#include "DefinitionCheck.h"

#include <algorithm>
#include <map>

#include "analysis/check/catalogue.h"
#include "analysis/check/definition.h"
#include "analysis/check/display_mode.h"
#include "analysis/check/landmark_errors.h"
#include "analysis/check/settings.h"
#include "analysis/check/text.h"
#include "analysis/check/variants.h"
#include "analysis/face.h"
#include "platform/path.h"
#include "platform/settings_form.h"
#include "platform/system.h"
#include "platform/text.h"

namespace {

using tool::equal_ignoring_case;
using tool::Findings;

constexpr int any_kind = -1, lateral = 0, surgery = 20;
constexpr std::string_view list_name = "list.txt", ricketts_name = "Ricketts.txt";

struct KnownFolder {
    std::string_view name;
    CheckFamily list, file;
    int kind;
    std::string_view unlisted;  // a file that the engine reads without a list
};
constexpr KnownFolder known_folders[] = {
    {"CalcForm", CheckFamily::definition_list, CheckFamily::definition, lateral, ricketts_name},
    {"CalcForm_PA", CheckFamily::definition_list, CheckFamily::definition, 1, {}},
    {"CalcForm_Model", CheckFamily::definition_list, CheckFamily::definition, 2, {}},
    {"CalcForm_Diag", CheckFamily::definition_list, CheckFamily::definition, 10, {}},
    {"CalcForm_Surg", CheckFamily::definition_list, CheckFamily::definition, surgery, "Surgery.txt"},
    {"CalcMode", CheckFamily::mode_list, CheckFamily::mode, lateral, {}},
    {"CalcMode_PA", CheckFamily::mode_list, CheckFamily::mode, 1, {}},
    {"CalcMode_Model", CheckFamily::mode_list, CheckFamily::mode, 2, {}},
};

struct KnownFile {
    std::string_view name;
    CheckFamily family;
};
constexpr KnownFile known_files[] = {{"Era.dat", CheckFamily::eras},
                                     {"cvba.dat", CheckFamily::bone_age},
                                     {"LandmarkError.txt", CheckFamily::landmark_errors}};

template <class Known>
const Known* named(std::span<const Known> all, std::string_view name) {
    const auto found = std::ranges::find_if(all, [name](const Known& k) { return equal_ignoring_case(k.name, name); });
    return found == all.end() ? nullptr : &*found;
}

bool ends_in_separator(std::string_view path) {
    const std::size_t last = path.size() - 1;
    return !path.empty() && (tool::find_last_char(path, '/') == last || tool::find_last_char(path, '\\') == last);
}

// The last two names of a path: its folder's and its own.
struct PathNames {
    std::string_view folder, own;
};
PathNames names_of(std::string_view path) {
    const auto take_last = [&path] {
        while (ends_in_separator(path)) path.remove_suffix(1);
        const tool::PathParts parts = tool::split_path(path);
        const std::string_view name = path.substr(parts.drive.size() + parts.dir.size());
        path.remove_suffix(name.size());
        return name;
    };
    const std::string_view own = take_last();
    return {take_last(), own};
}

std::string joined(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.empty() && !ends_in_separator(path))
        path += tool::find_char(folder, '\\') == std::string_view::npos ? '/' : '\\';
    return path.append(name);
}

bool is_readable_file(std::string_view path) {
    const auto status = tool::file_status(path);
    return status && !status->is_folder && !status->system;
}

// Has `check` look at a definition, mode or list file as the engine's readers take it. That is a copy; what is found
// lies at the same places.
template <class Check>
void check_as_read(std::string_view text, Findings& findings, Check&& check) {
    const tool::DefinitionFile file{std::string(text)};
    Findings in_copy(file.text());
    check(file, in_copy);
    findings.take(in_copy);
}

void check_content(CheckFamily family, int kind, bool ricketts, std::string_view text, Findings& findings) {
    if (family == CheckFamily::eras) return tool::check_eras(text, findings);
    if (family == CheckFamily::bone_age) return tool::check_bone_age(text, findings);
    if (family == CheckFamily::landmark_errors) return tool::check_landmark_errors(text, findings);
    check_as_read(text, findings, [=](const tool::DefinitionFile& file, Findings& in_copy) {
        if (family == CheckFamily::definition)
            tool::check_definition(file, kind, ricketts, in_copy);
        else if (family == CheckFamily::mode)
            tool::check_display_mode(file, kind, in_copy);
        else
            tool::check_catalogue(family, file.text(), in_copy, nullptr);
    });
}

class PathCheck {
 public:
    void path(std::string_view path) {
        const auto status = tool::file_status(path);
        const std::string full = tool::canonical_path(path);
        const PathNames names = names_of(full);
        if (!status) return fault_of(path, "there is no such file or folder");
        if (!status->is_folder) return told_by_name(path, names);
        if (const KnownFolder* known = named<KnownFolder>(known_folders, names.own)) return folder(path, *known);
        root(path);
    }

    CheckResult result() { return std::move(result_); }

 private:
    void fault_of(std::string_view path, std::string message) {
        Findings findings({});
        findings.fault_of_file(std::move(message));
        findings.append_to(result_.findings, path);
    }

    void told_by_name(std::string_view path, const PathNames& names) {
        const KnownFolder* folder = named<KnownFolder>(known_folders, names.folder);
        if (const KnownFile* known = named<KnownFile>(known_files, names.own))
            return file(path, known->family, any_kind);
        if (!folder) return file(path, CheckFamily::definition, any_kind);
        const bool is_list = equal_ignoring_case(names.own, list_name);
        if (!is_list) return file(path, folder->file, folder->kind);
        list(path.substr(0, path.size() - names_of(path).own.size()), path, *folder);
    }

    // Has `check` look at the file's text, when it can be read and is text; settings may be UTF-16.
    template <class Check>
    void file_with(std::string_view path, bool settings, Check&& check) {
        auto text = is_readable_file(path) ? tool::read_file(path, tool::largest_text_file) : std::nullopt;
        if (!text) return fault_of(path, "the file can't be read");
        if (settings) *text = tool::settings_text(std::move(*text));
        ++result_.files;
        Findings findings(*text);
        if (tool::check_text(*text, findings)) check(std::string_view(*text), findings);
        findings.append_to(result_.findings, path);
    }

    void file(std::string_view path, CheckFamily family, int kind) {
        const bool ricketts = kind == lateral && equal_ignoring_case(names_of(path).own, ricketts_name);
        const bool settings = family == CheckFamily::eras || family == CheckFamily::bone_age;
        file_with(path, settings, [=, this](std::string_view text, Findings& findings) {
            check_content(family, kind, ricketts, text, findings);
            if (family == CheckFamily::definition) variant(path, text, findings);
        });
    }

    void variant(std::string_view path, std::string_view text, Findings& findings) {
        const tool::Sample sample = tool::sample_of(text);
        if (sample.variant_of.empty()) return;
        const std::string_view folder = path.substr(0, path.size() - names_of(path).own.size());
        const std::string base = joined(folder, sample.variant_of);
        auto of_base = is_readable_file(base) ? tool::read_file(base, tool::largest_text_file) : std::nullopt;
        std::optional<tool::DefinitionFile> base_file;
        if (of_base) base_file.emplace(*std::move(of_base));
        check_as_read(text, findings, [&](const tool::DefinitionFile& file, Findings& in_copy) {
            tool::check_variant(file, base_file ? &*base_file : nullptr, in_copy);
        });
        const std::string population = tool::population_of(sample);
        const auto [first, is_first] = variants_.emplace(tool::lower(base) + "\n" + population, path);
        if (!is_first && !population.empty())
            findings.fault(sample.population, tool::quoted(names_of(first->second).own) +
                                                  " is a variant for this population, too, and only one is chosen");
    }

    // Checks the list; the files in it that are there.
    std::vector<std::string> list(std::string_view folder, std::string_view path, const KnownFolder& known) {
        std::vector<std::string> files;
        const auto is_there = [folder](std::string_view name) { return is_readable_file(joined(folder, name)); };
        file_with(path, false, [&](std::string_view text, Findings& findings) {
            check_as_read(text, findings, [&](const tool::DefinitionFile& list_file, Findings& in_copy) {
                for (const std::string_view name :
                     tool::check_catalogue(known.list, list_file.text(), in_copy, is_there))
                    files.emplace_back(name);
            });
        });
        return files;
    }

    void folder(std::string_view path, const KnownFolder& known) {
        const auto entries = tool::list_folder(path);
        if (!entries) return fault_of(path, "the folder can't be read");
        std::string_view list_file;
        for (const tool::FolderEntry& entry : *entries)
            if (equal_ignoring_case(entry.name, list_name)) list_file = entry.name;
        std::vector<std::string> files;
        if (!list_file.empty()) files = list(path, joined(path, list_file), known);
        const auto is_listed = [&files](std::string_view name) {
            return std::ranges::any_of(files,
                                       [name](const std::string& file) { return equal_ignoring_case(file, name); });
        };
        std::vector<std::string> unlisted;
        for (const tool::FolderEntry& entry : *entries) {
            if (!is_text_file(entry) || is_listed(entry.name) || entry.name == list_file) continue;
            if (equal_ignoring_case(entry.name, known.unlisted))
                files.push_back(entry.name);
            else
                unlisted.push_back(entry.name);
        }
        for (const std::string& name : files) file(joined(path, name), known.file, known.kind);
        if (list_file.empty() && !unlisted.empty()) {
            fault_of(path,
                     "there is no list.txt in this folder, so none of its files is found; write one that names them");
            return;
        }
        for (const std::string& name : unlisted) {
            Findings findings({});
            findings.note_of_file("no list names this file, so it is never read");
            findings.append_to(result_.findings, joined(path, name));
        }
    }

    static bool is_text_file(const tool::FolderEntry& entry) {
        return !entry.status.is_folder && !entry.status.system &&
               equal_ignoring_case(tool::split_path(entry.name).ext, ".txt");
    }

    void root(std::string_view path) {
        const auto entries = tool::list_folder(path);
        if (!entries) return fault_of(path, "the folder can't be read");
        bool found = false;
        for (const tool::FolderEntry& entry : *entries) {
            const std::string below = joined(path, entry.name);
            const KnownFolder* known_folder = named<KnownFolder>(known_folders, entry.name);
            const KnownFile* known_file = named<KnownFile>(known_files, entry.name);
            if (entry.status.is_folder && known_folder)
                folder(below, *known_folder);
            else if (!entry.status.is_folder && known_file)
                file(below, known_file->family, any_kind);
            else
                continue;
            found = true;
        }
        if (!found) fault_of(path, "this is no analysis folder; one holds CalcForm with a list.txt in it");
    }

    CheckResult result_;
    std::map<std::string, std::string> variants_;  // the first file by the base's path and the population
};

// A check that could not be made says so: without a finding it would be taken for the best of all results.
template <class Check>
CheckResult checked(const char* path, Check&& check) {
    CheckResult result;
    const bool made = tool::or_failed(false, [&] { return result = check(), true; });
    if (made) return result;
    result = {};
    tool::as_far_as_possible([&] {
        result.findings.emplace_back();
        result.findings.back().path = path;
        result.findings.back().message = "there is not enough memory to check this";
    });
    return result;
}

}  // namespace

CheckResult DefinitionCheck::Text(CheckFamily family, int kind, const char* text, std::size_t size) {
    return checked("", [&] {
        CheckResult result;
        const std::string_view content(text ? text : "", text ? size : 0);
        Findings findings(content);
        if (tool::check_text(content, findings)) check_content(family, kind, false, content, findings);
        findings.append_to(result.findings, {});
        result.files = 1;
        return result;
    });
}

CheckResult DefinitionCheck::Path(const char* path) {
    return checked(path, [&] {
        PathCheck check;
        check.path(tool::text_or_empty(path));
        return check.result();
    });
}
