#include "analysis/check/stages.h"

#include <iterator>
#include <map>
#include <set>

#include "analysis/growth_stage.h"
#include "platform/number_text.h"
#include "platform/text.h"

namespace tool {
namespace {

struct PlacedRange {
    StageLine line;
    StageRange range;
};

bool is_plain_number(std::string_view text) {
    std::size_t used = 0;
    read_double(text, &used);
    return used > 0 && trimmed(text.substr(used)).empty();
}

class StageCheck {
 public:
    StageCheck(std::string_view file, bool ricketts, Findings& findings)
        : file_(file), ricketts_(ricketts), findings_(findings) {}

    void check() {
        check_types();
        for (const bool second : {false, true})
            for (const int sex : {1, 2}) {
                std::set<const char*> read;
                std::map<double, PlacedRange> by_start[2];
                int stages = 0;
                for_each_stage(file_, sex, second, [&](const StageLine& line) {
                    read.insert(line.name.data());
                    if (++stages > most_bands && !second) return found_beyond(line, stages);
                    if (sections_.contains(line.name.data()))
                        check_range(line, by_start[line.by_age]);
                    else
                        found_stray(line.name);
                });
                check_sections(read, second, sex);
            }
    }

 private:
    static bool is_for(int section, bool second, int sex) {
        if (second) section -= second_set;
        return section == stages_section || section == (sex == 1 ? stages_male_section : stages_female_section);
    }

    // A section is not read when it stands directly behind another one that is.
    void check_sections(const std::set<const char*>& read, bool second, int sex) {
        for (const auto& [line, section] : sections_)
            if (is_for(section.code, second, sex) && !read.contains(line))
                findings_.fault(section.key,
                                "the key that ends a stage section starts none, so this one is never read; "
                                "write another key, such as Param:, in front of it");
    }

    void found_beyond(const StageLine& line, int stage) {
        if (stage == most_bands + 1)
            findings_.fault(line.name, "more than " + counted(most_bands, "stage") +
                                           " for one sex, and norms of those from here on are taken from other bands, "
                                           "since a band has two digits; remove them");
    }

    void found_stray(std::string_view line) {
        if (stray_found_) return;
        stray_found_ = true;
        findings_.fault(line,
                        "only a key of the second set ends stages of the second set, so this line is read as a "
                        "stage; write Calc2: in front of it, or move these stages to the end of the file");
    }

    // The types, and where the lines of stage sections stand.
    void check_types() {
        bool below_key = false;
        Section section;
        for_each_line(file_, [&](std::string_view line, int code) {
            const bool is_type_key = !below_key && code % second_set == stage_type_section;
            if (below_key && code != content_line)
                findings_.fault(line,
                                "Stage_Type: has no line of its own, so this key is read as the type; write Age or "
                                "another word above it");
            else if (below_key && line != "Age" && equal_ignoring_case(trimmed(line), "Age"))
                findings_.fault(line, "the stage type is Age only when the line is exactly that; write Age");
            else if (code != content_line && !is_type_key)  // a type ends no section
                section = {code, line};
            else if (!below_key && !is_type_key && !line.empty() && is_stage_code(section.code))
                sections_.emplace(line.data(), section);
            below_key = is_type_key;
            return false;
        });
    }

    static bool is_stage_code(int code) {
        code %= second_set;
        return code >= stages_section && code <= stages_female_section;
    }

    void check_range(const StageLine& line, std::map<double, PlacedRange>& by_start) {
        const std::string_view written = range_of(line);
        if (line.name.size() == longest_stage_name && line.range.data() &&
            line.name.data() + line.name.size() + 1 != line.range.data())
            findings_.fault(line.name.substr(longest_stage_name),
                            "stage names are cut to " + counted(longest_stage_name, "byte") + "; write a shorter one");
        if (trimmed(written).empty()) {
            return findings_.fault(line.name,
                                   "a stage without a range is never chosen; write " + quoted("name=from-to"));
        }
        const std::size_t dash = written.find('-');
        const std::string_view from = written.substr(0, dash),
                               to = dash == std::string_view::npos ? std::string_view() : written.substr(dash + 1);
        const bool dental = !line.by_age && !ricketts_;
        for (const std::string_view bound : {from, to})
            if (!trimmed(bound).empty() && !is_bound(bound, dental))
                return findings_.fault(bound, quoted(bound) + (dental ? " is no dental stage (I, IIA, IIC, IIIA, IIIB, "
                                                                        "IIIC, IVA, IVC, VA); stages of age have "
                                                                        "Stage_Type: Age"
                                                                      : " is no number; write years, as in 6.5-7.5"));
        const StageRange range = dental ? dental_range(written) : age_range(written, ZeroBound::open_above);
        if (!(range.from < range.to))
            return findings_.fault(written, "the range is empty: it ends where it starts or earlier; write " +
                                                quoted("from-to") + " with the larger one behind");
        if (line.by_age && range.from == 0 && dash != std::string_view::npos && read_double(to) == 0)
            return findings_.fault(
                written,
                "a range from 0 needs its end, since not every reader takes it as open; write " + quoted("0-200"));
        // Those that were placed do not overlap, so only the neighbours can.
        const auto next = by_start.upper_bound(range.from);
        const PlacedRange* overlapped = next != by_start.end() && next->first < range.to ? &next->second : nullptr;
        if (next != by_start.begin() && range.from < std::prev(next)->second.range.to)
            overlapped = &std::prev(next)->second;
        if (overlapped)
            return findings_.fault(written, "the range overlaps that of " + quoted(overlapped->line.name) +
                                                "; the last stage that fits is chosen");
        by_start.emplace(range.from, PlacedRange{line, range});
    }

    static std::string_view range_of(const StageLine& line) {
        return line.range.data() ? line.range : std::string_view();
    }

    static bool is_bound(std::string_view text, bool dental) {
        return dental ? dental_stage_ordinal(text) != no_dental_stage : is_plain_number(text);
    }

    struct Section {
        int code = content_line;
        std::string_view key;
    };

    std::string_view file_;
    bool ricketts_;
    Findings& findings_;
    std::map<const char*, Section> sections_;  // of each line of a stage section
    bool stray_found_ = false;
};

}  // namespace

void check_stages(std::string_view file, bool ricketts, Findings& findings) {
    StageCheck(file, ricketts, findings).check();
}

}  // namespace tool
