#include "analysis/definition_file.h"

#include <algorithm>
#include <cstring>

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

// Where lines of a section go for a sex; null for sections of no interest.
std::optional<NamedLine>* slot_in(DefinitionFile::Lines& lines, int section, int sex) {
    if (section > second_set) section -= second_set;
    switch (section) {
        case items_section: return &lines.item;
        case mean_section: return &lines.mean;
        case sd_section: return &lines.sd;
        case mean_male_section: return sex == male ? &lines.mean : nullptr;
        case mean_female_section: return sex == male ? nullptr : &lines.mean;
        case sd_male_section: return sex == male ? &lines.sd : nullptr;
        case sd_female_section: return sex == male ? nullptr : &lines.sd;
        default: return nullptr;
    }
}

}  // namespace

std::string engine_text(std::string bytes) {
    if (std::memchr(bytes.data(), '\0', bytes.size())) std::ranges::replace(bytes, '\0', '\n');
    return bytes;
}

DefinitionFile::DefinitionFile(std::string text) : text_(engine_text(std::move(text))) {}

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

DefinitionFile::Lines DefinitionFile::find(std::string_view name, Look look, int sex) const {
    if (indexed()) {
        const auto entry = index_->find(name);
        return entry == index_->end() ? Lines() : sex == male ? entry->second.male : entry->second.female;
    }
    const bool items = look != Look::norms, norms = look != Look::item;
    Lines found;
    int section = content_line;
    std::optional<NamedLine>* slot = nullptr;
    for_each_line(text_, [&](std::string_view line, int code) {
        if (code != content_line) {
            section = code;
            slot = slot_in(found, section, sex);
            if (slot && !(slot == &found.item ? items : norms)) slot = nullptr;
            return false;
        }
        if (!slot || line.empty() || line.size() < name.size()) return false;
        // Most lines are told apart by one byte. A name that was cut has no "=" behind it.
        if (line.size() > name.size() && line[name.size()] != '=' && name.size() != longest_key) return false;
        if (!line.starts_with(name)) return false;
        const NamedLine candidate = named_line(line, section);
        if (candidate.name != name) return false;
        keep_first(*slot, candidate);
        return (!items || found.item) && (!norms || (found.mean && found.sd));
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
        for (const int sex : {male, female}) {
            Lines any;  // only to ask whether the section is of interest: other lines get no entry
            if (!slot_in(any, section, sex)) continue;
            const NamedLine line = named_line(text, section);
            FirstLines& first = index[line.name];
            keep_first(*slot_in(sex == male ? first.male : first.female, section, sex), line);
        }
        return false;
    });
}

}  // namespace tool
