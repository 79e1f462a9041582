#include "analysis/definition_file.h"

#include <algorithm>

#include "util/key_value.h"

namespace tool {
namespace {

constexpr int lookups_without_index = 16;

bool is_item_section(int section) {
    return section == items_section || section == second_set + items_section;
}

NamedLine named_line(std::string_view line, int section) {
    const KeyValue parts = split_at_equals(line);
    return {parts.key, parts.value, section};
}

// First non-empty content line of the wanted sections whose name matches.
template <class Wanted>
std::optional<NamedLine> find_named(std::string_view text, std::string_view name, Wanted&& wanted) {
    std::optional<NamedLine> found;
    int section = content_line;
    bool searching = false;
    for_each_line(text, [&](std::string_view line, int code) {
        if (code != content_line) {
            section = code;
            searching = wanted(section);
        } else if (searching && line.starts_with(name) && !line.empty()) {
            const NamedLine candidate = named_line(line, section);
            if (candidate.name == name) found = candidate;
        }
        return found.has_value();
    });
    return found;
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
    if (!indexed()) return find_named(text_, name, is_item_section);
    const auto entry = index_->find(name);
    return entry == index_->end() ? std::nullopt : entry->second.item;
}

std::optional<NamedLine> DefinitionFile::find_norm(std::string_view name, NormPart part, int sex) const {
    if (!indexed()) return find_named(text_, name, [&](int section) { return holds_norms(section, part, sex); });
    const auto entry = index_->find(name);
    if (entry == index_->end()) return std::nullopt;
    const FirstLines& lines = entry->second;
    if (part == NormPart::mean) return sex == 1 ? lines.mean_male : lines.mean_female;
    return sex == 1 ? lines.sd_male : lines.sd_female;
}

bool DefinitionFile::indexed() const {
    if (!index_ && ++lookups_ == lookups_without_index) build_index();
    return index_.has_value();
}

void DefinitionFile::build_index() const {
    if (index_) return;
    auto& index = index_.emplace();
    const auto keep_first = [](std::optional<NamedLine>& slot, const NamedLine& line) {
        if (!slot) slot = line;
    };
    int section = content_line;
    for_each_line(text_, [&](std::string_view text, int code) {
        if (code != content_line) {
            section = code;
            return false;
        }
        const bool male_mean = holds_norms(section, NormPart::mean, 1), male_sd = holds_norms(section, NormPart::sd, 1);
        const bool female_mean = holds_norms(section, NormPart::mean, 2);
        const bool female_sd = holds_norms(section, NormPart::sd, 2);
        const bool item = is_item_section(section);
        if (text.empty() || !(item || male_mean || female_mean || male_sd || female_sd)) return false;
        const NamedLine line = named_line(text, section);
        FirstLines& first = index[line.name];
        if (item) keep_first(first.item, line);
        if (male_mean) keep_first(first.mean_male, line);
        if (female_mean) keep_first(first.mean_female, line);
        if (male_sd) keep_first(first.sd_male, line);
        if (female_sd) keep_first(first.sd_female, line);
        return false;
    });
}

}  // namespace tool
