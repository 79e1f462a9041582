#include "analysis/check/definition.h"

#include <algorithm>
#include <set>

#include "analysis/check/circles.h"
#include "analysis/check/formula.h"
#include "analysis/check/key.h"
#include "analysis/check/stages.h"
#include "analysis/formula_names.h"
#include "analysis/growth_stage.h"
#include "analysis/item_text.h"
#include "analysis/sample.h"
#include "platform/number_text.h"
#include "platform/text.h"
#include "util/decimal_text.h"
#include "util/key_value.h"

namespace tool {
namespace {

using Look = DefinitionFile::Look;
using Lines = DefinitionFile::Lines;

constexpr int male = 1, female = 2;

bool in_quotes(std::string_view text, std::size_t at) {
    return std::ranges::count(text.substr(0, at), '"') % 2 == 1;
}

bool is_blank(std::string_view text) {
    return trimmed(text).empty();
}

std::vector<std::string_view> norm_fields(std::string_view values) {
    std::vector<std::string_view> fields;
    for (int band = 0; band <= most_bands; ++band) {  // one more tells that there are too many
        const std::string_view field = norm_field(values, band);
        if (band > 0 && field.data() == fields.back().data()) break;
        fields.push_back(field);
    }
    return fields;
}

bool has_norm(const std::optional<NamedLine>& line) {
    return line && !is_blank(line->rest);
}

// The texts in quotes that a finding chooses from.
std::vector<std::string_view> texts_of(std::string_view item) {
    std::vector<std::string_view> texts;
    std::size_t at = item.find(';');
    while (at != std::string_view::npos && (at = item.find('"', at)) != std::string_view::npos) {
        const std::size_t end = item.find('"', at + 1);
        if (end == std::string_view::npos) break;
        texts.push_back(item.substr(at + 1, end - at - 1));
        at = end + 1;
    }
    return texts;
}

struct ReferenceList : FormulaNames {
    void landmark(std::string_view) override {}
    void cast_measure(std::string_view) override {}
    void reference(Ask ask, std::string_view item) override { found.push_back({ask, item}); }
    std::vector<Reference> found;
};

class Check {
 public:
    Check(const DefinitionFile& file, int kind, Findings& findings)
        : file_(file), findings_(findings), formulas_(kind, findings) {}

    void run() {
        for (const NamedLine& item : file_.items()) {
            names_.push_back(item.name);
            if (!item.rest.data()) headings_.push_back(item.name);
            for (const std::string_view text : texts_of(item.rest)) displayed_.push_back(text);
            for (const int sex : {male, female}) has_norms_ |= has_norm(file_.find(item.name, Look::norms, sex).mean);
        }
        displayed_.insert(displayed_.end(), names_.begin(), names_.end());
        displayed_.push_back(file_.title());
        displayed_.push_back("Comment");
        for (const bool second : {false, true})
            for (const int sex : {male, female})
                for_each_stage(file_.text(), sex, second,
                               [&](const StageLine& stage) { displayed_.push_back(stage.name); });
        const std::string_view title = file_.title(), comment = file_.comment();
        int section = content_line;
        bool in_front = true, below_comment = false;
        for_each_line(file_.text(), [&](std::string_view line, int code) {
            if (code != content_line) {
                section = code, in_front = false;
                if (below_comment)
                    findings_.fault(
                        line,
                        "Comment: has no line of its own, so this key is read as the comment; leave an empty line above it");
            } else if (!line.empty() && line.data() != title.data() && line.data() != comment.data()) {
                check_line(line, section, in_front);
            }
            below_comment = code == comment_section;
            return false;
        });
        if (variant_ && !parameters_.contains(population_key))
            findings_.fault(*variant_, "a variant without a population is never chosen; add Population=");
        check_circles(file_, references_, findings_);
    }

 private:
    void check_line(std::string_view line, int section, bool in_front) {
        if (check_for_key(line, findings_)) return;
        if (in_front) {
            findings_.fault(
                line,
                "nothing in front of the first key is read; write Calc:, Mean: or another key above it, and "
                "remarks below the first line of Comment:");
            return;
        }
        switch (section % second_set) {
            case items_section: return check_item(line, section);
            case mean_section:
            case mean_male_section:
            case mean_female_section: return check_norm(line, section, NormPart::mean);
            case sd_section:
            case sd_male_section:
            case sd_female_section: return check_norm(line, section, NormPart::sd);
            case parameter_section: return check_parameter(line);
            case title_section: return findings_.note(line, "only one line is read as the title; this one is not");
            default: return;
        }
    }

    // The name and what stands behind its "="; nothing when there is no "=".
    std::optional<KeyValue> named(std::string_view line, const char* form) {
        const KeyValue parts = split_at_equals(line);
        if (!parts.value.data()) {
            findings_.fault(line, std::string("a line without \"=\" ") + "is not read; write " + form);
            return std::nullopt;
        }
        if (is_blank(parts.key))
            findings_.fault(line, std::string("a name is missing in front of \"=\"; write ") + form);
        if (static_cast<std::size_t>(parts.value.data() - line.data()) > longest_key + 1)
            findings_.fault(line.substr(longest_key),
                            "names are cut to " + counted(longest_key, "byte") + "; write a shorter one");
        return parts;
    }

    // --- Items -----------------------------------------------------------------------------------------------------

    void check_item(std::string_view line, int section) {
        if (line.find_first_of("=[(") == std::string_view::npos)
            return findings_.note(line, "a line without \"=\" is a heading in result lists, not an item");
        const auto parts = named(line, "name=formula");
        if (!parts) return;
        const NamedLine first = *file_.find_item(parts->key);
        if (first.name.data() != line.data()) {
            if (first.section == section || first.rest != parts->value)
                findings_.fault(line, "there is an item " + quoted(parts->key) +
                                          " further up, and only that one is read; rename or remove one");
            return;
        }
        if (is_blank(parts->value))
            return findings_.fault(line, "an item without a formula counts as missing; write one behind \"=\"");
        check_norms_of(first);
        check_expression(parts->value, line.data());
    }

    void check_expression(std::string_view text, const char* line) {
        const std::size_t colon = text.find(':');
        if (colon != std::string_view::npos) {
            const std::string_view type = trimmed(text.substr(colon + 1));
            if (type.empty() || type.size() > 4 || !std::ranges::all_of(type, is_digit)) {
                return findings_.fault(
                    text.substr(colon),
                    in_quotes(text, colon)
                        ? "\":\" starts the item's type, also inside quotes; use names and texts without it"
                        : "behind \":\" stands the item's type, a number of at most four digits");
            }
        }
        const std::string_view expression = split_type(text).expression;
        const std::size_t semicolon = expression.find(';');
        if (semicolon != std::string_view::npos && in_quotes(expression, semicolon)) {
            return findings_.fault(
                expression.substr(semicolon),
                "\";\" ends the formula, also inside quotes; rename the item and write its new name here");
        }
        if (is_blank(expression.substr(0, semicolon)))
            return findings_.fault(text, "a formula is missing here; without one the item is 0");
        check_formula(expression.substr(0, semicolon), line);
        if (semicolon != std::string_view::npos) check_alternatives(expression.substr(semicolon + 1), line);
    }

    void check_alternatives(std::string_view list, const char* line) {
        bool texts = false;
        for (std::size_t begin = 0; begin <= list.size();) {
            const std::size_t end = std::min(list.find(';', begin), list.size());
            const std::string_view alternative = list.substr(begin, end - begin);
            const auto quotes = std::ranges::count(alternative, '"');
            begin = end + 1;
            ReferenceList references;
            visit_names(alternative, references);
            if (is_blank(alternative))
                findings_.fault(
                    alternative,
                    "an alternative is missing between the \";\"; write a formula, or a text in double quotes");
            else if (!references.found.empty())
                findings_.fault(
                    alternative,
                    "a quote makes this alternative a text, so it can't refer to an item; refer to it in front of the \";\"");
            else if (quotes % 2 == 1)
                findings_.fault(alternative,
                                "the quotes of this text are not closed before the next \";\"; a text can't hold one");
            else if (texts && quotes == 0)
                findings_.fault(
                    alternative,
                    "behind a text every alternative is a text; put it in double quotes, or in front of the texts");
            else if (quotes == 0)
                check_formula(alternative, line);
            texts |= quotes > 0;
        }
    }

    // `line` is where the item or norm begins.
    void check_formula(std::string_view formula, const char* line) {
        formulas_.check(formula);
        ReferenceList references;
        visit_names(formula, references);
        for (const Reference& reference : references.found) check_reference(reference);
        if (references.found.empty()) return;
        auto& known = references_[line];
        known.insert(known.end(), references.found.begin(), references.found.end());
    }

    void check_reference(const Reference& reference) {
        const std::string_view name = reference.name;
        if (!file_.find_item(name)) {
            return findings_.fault(name, "there is no item " + quoted(name) + ", so it counts as 0" +
                                             suggestion(meant_name(name, names_)));
        }
        const auto lacks = [&](std::optional<NamedLine> Lines::*part) {
            return !has_norm(file_.find(name, Look::norms, male).*part) &&
                   !has_norm(file_.find(name, Look::norms, female).*part);
        };
        const bool deviation = reference.ask == Ask::deviation;
        if ((deviation || reference.ask == Ask::mean) && lacks(&Lines::mean))
            findings_.fault(name, quoted(name) + " has no mean, so 0 is taken; add one in Mean:");
        if ((deviation || reference.ask == Ask::sd) && lacks(&Lines::sd))
            findings_.fault(name, quoted(name) + " has no SD, so 0 is taken; add one in SD:");
    }

    // --- Parameters ------------------------------------------------------------------------------------------------

    // Lines of other hosts stand here, too.
    void check_parameter(std::string_view line) {
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) return;
        const std::string_view name = line.substr(0, equals), value = line.substr(equals + 1);
        const auto key = std::ranges::find_if(sample_keys, [name](std::string_view each) {
            return each.ends_with(' ') ? name.starts_with(each) : name == each;
        });
        if (key == std::end(sample_keys)) return check_for_parameter_key(line, name);
        if (!parameters_.insert(name).second)
            return findings_.fault(line, "a line further up already says this, and only that one is read; remove one");
        if (*key == ages_key) {
            if (!age_range_of_sample(value))
                findings_.fault(
                    line.substr(equals),
                    quoted(value) +
                        " is no range of ages; write whole years, as in 12-17, or 18- when it is open above");
        } else if (!key->ends_with(' ')) {
            if (*key == variant_key) variant_ = line;
            if (is_blank(value))
                findings_.fault(line, *key == population_key
                                          ? "say behind \"=\" whose norms these are, such as Japanese"
                                          : "say behind \"=\" which file this is a variant of, such as Steiner.txt");
        } else {
            check_parameter_of(name.substr(key->size()), *key, line, value);
        }
    }

    // Keys with slips in them.
    void check_for_parameter_key(std::string_view line, std::string_view name) {
        for (const std::string_view key : sample_keys) {
            const bool slip = key.ends_with(' ') ? equal_ignoring_case(name.substr(0, key.size()), key)
                                                 : !meant_name(name, std::span(&key, 1)).empty();
            if (slip) findings_.fault(line, quoted(name.substr(0, key.size())) + " is not read; write " + quoted(key));
        }
    }

    // A line on something that has a name in the file.
    void check_parameter_of(std::string_view name, std::string_view key, std::string_view line,
                            std::string_view value) {
        if (key == japanese_key) {
            if (std::ranges::find(displayed_, name) == displayed_.end())
                findings_.fault(line, "there is no title, item, heading, stage or finding " + quoted(name) +
                                          ", so its Japanese name is never read" +
                                          suggestion(meant_name(name, displayed_)));
            else if (is_blank(value))
                findings_.fault(line, "write the Japanese name behind \"=\"");
            return;
        }
        const bool sign = key == sign_key;
        if (!file_.find_item(name) || std::ranges::find(headings_, name) != headings_.end())
            findings_.fault(line, "there is no item " + quoted(name) + ", so its " + (sign ? "sign" : "mark") +
                                      " is never read" + suggestion(meant_name(name, names_)));
        else if (is_blank(value))
            findings_.fault(line, sign ? "say behind \"=\" what a positive value means, such as in front of the line"
                                       : "say behind \"=\" why the norm is to be doubted, such as textbook figure, "
                                         "not seen in print");
        else if (!sign && !has_norm(file_.find(name, Look::norms, male).mean) &&
                 !has_norm(file_.find(name, Look::norms, female).mean))
            findings_.fault(line, quoted(name) + " has no norm that could be doubted; remove the line");
    }

    // --- Norms -----------------------------------------------------------------------------------------------------

    void check_norms_of(const NamedLine& item) {
        const Lines men = file_.find(item.name, Look::norms, male), women = file_.find(item.name, Look::norms, female);
        for (const Lines& norms : {men, women}) {
            if (has_norm(norms.sd) && !has_norm(norms.mean))
                findings_.fault(norms.sd->name,
                                "an SD without a mean; the deviation is reckoned from 0 until the mean is added");
            if (has_norm(norms.mean) && !has_norm(norms.sd))
                findings_.note(norms.mean->name,
                               "a mean without an SD, so the deviation is always 0; add one in SD: if there is one");
            if (!has_norm(norms.mean) || !has_norm(norms.sd)) continue;
            const std::size_t means = norm_fields(norms.mean->rest).size(), sds = norm_fields(norms.sd->rest).size();
            if (means != sds && means > 1 && sds > 1)
                findings_.fault(norms.sd->name, counted(static_cast<int>(sds), "SD") + " for " +
                                                    counted(static_cast<int>(means), "mean") +
                                                    "; write one for each band, or a single one for all");
        }
        const bool for_men = has_norm(men.mean), for_women = has_norm(women.mean);
        const bool is_text = item.rest.find(';') != std::string_view::npos;
        if (for_men != for_women)
            findings_.note(item.name, std::string("a mean for ") + (for_men ? "men" : "women") +
                                          " only; add one in Mean_F: or Mean_M:, or move it to Mean:");
        else if (!for_men && has_norms_ && !is_text)
            findings_.note(item.name,
                           "an item without a norm, so it has no deviation; add one in Mean: and SD: if there is one");
    }

    void check_norm(std::string_view line, int section, NormPart part) {
        const auto parts = named(line, "name=value or name=value,value,...");
        if (!parts) return;
        if (!file_.find_item(parts->key)) {
            return findings_.fault(line, "there is no item " + quoted(parts->key) + ", so this norm is never read" +
                                             suggestion(meant_name(parts->key, names_)));
        }
        const auto serves = [&](int sex) {
            const Lines lines = file_.find(parts->key, Look::norms, sex);
            return (part == NormPart::mean ? lines.mean : lines.sd)->name.data() == line.data();
        };
        const int kind_of_section = section % second_set;
        const bool for_men = kind_of_section != mean_female_section && kind_of_section != sd_female_section;
        const bool for_women = kind_of_section != mean_male_section && kind_of_section != sd_male_section;
        if (!(for_men && serves(male)) && !(for_women && serves(female))) {
            return findings_.fault(line,
                                   "a line further up already gives this norm, so this one is never read; remove one, "
                                   "or move the section for one sex in front");
        }
        const std::vector<std::string_view> fields = norm_fields(parts->value);
        if (fields.size() > most_bands && section < second_set) {
            return findings_.fault(fields.back(), "more than " + counted(most_bands, "value") +
                                                      ", and those from here on are never read, since a band has two "
                                                      "digits; remove them, or make analyses of their own for some");
        }
        for (const std::string_view field : fields) check_value(field, parts->value, line.data(), part);
    }

    void check_value(std::string_view field, std::string_view values, const char* line, NormPart part) {
        const std::string_view behind =
            values.substr(static_cast<std::size_t>(field.data() - values.data()) + field.size());
        if (!behind.empty() && behind[0] != ',')
            return findings_.fault(behind,
                                   "a norm is cut here, at " + counted(static_cast<int>(field.size()), "byte") +
                                       "; make a formula of this length an item and refer to it with case(\"name\")");
        if (field.empty()) return;
        if (is_blank(field))
            return findings_.fault(field, "a blank counts as the norm 0; leave nothing between the commas for no norm");
        if (is_number(field)) {
            const double value = read_double(field);
            if (part == NormPart::sd && value <= 0)
                findings_.fault(field, value == 0
                                           ? "an SD of 0 makes every deviation 0; remove it when there is none"
                                           : "an SD below 0 turns the deviation's sign round; write it without \"-\"");
            return;
        }
        if (field.find_first_not_of("0123456789.,+-eE \t") == std::string_view::npos) {
            return findings_.fault(field, quoted(field) +
                                              " is not read as a number; write it like -0.5 or 12.25, with at most six "
                                              "decimals and without \"+\", blanks or zeros in front");
        }
        const std::size_t size = field.size();
        const char separator = size > 2 ? field[size - 2] : '\0';
        if (separator == '\0' || !is_digit(field.back()) || is_digit(separator) ||
            std::string_view(".)]*/+-<>=").find(separator) != std::string_view::npos) {
            return findings_.fault(field,
                                   "a norm is a number, or a formula with its decimals behind, as in len([A],[B]):1");
        }
        check_formula(field.substr(0, size - 2), line);
    }

    const DefinitionFile& file_;
    Findings& findings_;
    FormulaCheck formulas_;
    std::vector<std::string_view> names_, headings_, displayed_;  // the last can have a Japanese name
    bool has_norms_ = false;
    References references_;
    std::set<std::string_view> parameters_;
    std::optional<std::string_view> variant_;  // the line
};

}  // namespace

void check_definition(const DefinitionFile& file, int kind, bool ricketts, Findings& findings) {
    file.build_index();
    Check(file, kind, findings).run();
    check_stages(file.text(), ricketts, findings);
    if (file.title().empty()) findings.note_of_file("no title; write one below title:, or the file's name is shown");
}

}  // namespace tool
