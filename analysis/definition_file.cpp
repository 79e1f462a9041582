#include "analysis/definition_file.h"

#include <algorithm>

#include "util/key_value.h"

namespace tool {
namespace {

constexpr int lookups_without_index = 16;
constexpr int male = 1, female = 2;

void keep_first(std::optional<NamedLine>& slot, const NamedLine& line) {
    if (!slot) slot = line;
}

bool is_item_section(int section) {
    return section == items_section || section == second_set + items_section;
}

NamedLine named_line(std::string_view line, int section) {
    const KeyValue parts = split_at_equals(line);
    return {parts.key, parts.value, section};
}

// Visits the content lines of the wanted sections whose name matches, until visit returns true.
template <class Wanted, class Visit>
void for_each_named(std::string_view text, std::string_view name, Wanted&& wanted, Visit&& visit) {
    int section = content_line;
    bool searching = false;
    for_each_line(text, [&](std::string_view line, int code) {
        if (code != content_line) {
            section = code;
            searching = wanted(section);
        }
        // Most lines are told apart by one byte. A name that was cut has no "=" behind it.
        const bool possible = code == content_line && searching && !line.empty() && line.size() >= name.size() &&
                              (line.size() == name.size() || line[name.size()] == '=' || name.size() == longest_key);
        if (!possible || !line.starts_with(name)) return false;
        const NamedLine candidate = named_line(line, section);
        return candidate.name == name && visit(candidate);
    });
}

}  // namespace

bool holds_norms(int section, NormPart part, int sex) {
    if (section > second_set) section -= second_set;
    if (part == NormPart::mean)
        return section == mean_section || section == (sex == 1 ? mean_male_section : mean_female_section);
    return section == sd_section || section == (sex == 1 ? sd_male_section : sd_female_section);
}

DefinitionFile::DefinitionFile(std::string text) : text_(std::move(text)) {
    if (text_.find('\0') != std::string::npos) std::replace(text_.begin(), text_.end(), '\0', '\n');
}

std::string_view DefinitionFile::title() const {
    std::string_view title;
    bool below_title_key = false;
    for_each_line(text_, [&](std::string_view line, int code) {
        if (code != content_line)
            below_title_key = code == title_section;
        else if (below_title_key)
            title = line;
        return !title.empty();
    });
    return title;
}

std::string_view DefinitionFile::comment() const {
    std::string_view comment;
    bool below_comment_key = false;
    for_each_line(text_, [&](std::string_view line, int code) {
        if (below_comment_key) {
            comment = line;
            return true;
        }
        below_comment_key = code == comment_section;
        return false;
    });
    return comment;
}

std::vector<NamedLine> DefinitionFile::items() const {
    std::vector<NamedLine> items;
    int section = content_line;
    for_each_line(text_, [&](std::string_view line, int code) {
        if (code != content_line)
            section = code;
        else if (is_item_section(section) && !line.empty())
            items.push_back(named_line(line, section));
        return false;
    });
    return items;
}

std::optional<NamedLine> DefinitionFile::find_item(std::string_view name) const {
    if (indexed()) {
        const auto entry = index_->find(name);
        return entry == index_->end() ? std::nullopt : entry->second.item;
    }
    std::optional<NamedLine> found;
    for_each_named(text_, name, is_item_section, [&](const NamedLine& line) {
        found = line;
        return true;
    });
    return found;
}

DefinitionFile::Norms DefinitionFile::find_norms(std::string_view name, int sex) const {
    if (indexed()) {
        const auto entry = index_->find(name);
        return entry == index_->end() ? Norms() : sex == 1 ? entry->second.male : entry->second.female;
    }
    Norms found;
    const auto wanted = [sex](int section) {
        return holds_norms(section, NormPart::mean, sex) || holds_norms(section, NormPart::sd, sex);
    };
    for_each_named(text_, name, wanted, [&](const NamedLine& line) {
        keep_first(holds_norms(line.section, NormPart::mean, sex) ? found.mean : found.sd, line);
        return found.mean && found.sd;
    });
    return found;
}

bool DefinitionFile::indexed() const {
    if (!index_ && ++lookups_ == lookups_without_index) build_index();
    return index_.has_value();
}

void DefinitionFile::build_index() const {
    if (index_) return;
    auto& index = index_.emplace();
    int section = content_line;
    for_each_line(text_, [&](std::string_view text, int code) {
        if (code != content_line) {
            section = code;
            return false;
        }
        if (text.empty()) return false;
        if (is_item_section(section)) {
            const NamedLine line = named_line(text, section);
            keep_first(index[line.name].item, line);
        }
        for (const int sex : {male, female})
            for (const NormPart part : {NormPart::mean, NormPart::sd}) {
                if (!holds_norms(section, part, sex)) continue;
                const NamedLine line = named_line(text, section);
                Norms& norms = sex == male ? index[line.name].male : index[line.name].female;
                keep_first(part == NormPart::mean ? norms.mean : norms.sd, line);
            }
        return false;
    });
}

}  // namespace tool
