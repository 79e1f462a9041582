#include "analysis/check/norms.h"

#include "analysis/check/stages.h"
#include "analysis/item_text.h"
#include "platform/number_text.h"
#include "platform/text.h"
#include "util/decimal_text.h"

namespace tool {
namespace {

void check_value(std::string_view field, std::string_view values, const char* line, NormPart part, CheckedFile& file) {
    const std::string_view behind =
        values.substr(static_cast<std::size_t>(field.data() - values.data()) + field.size());
    if (!behind.empty() && behind[0] != ',')
        return file.findings.fault(behind,
                                   "a norm is cut here, at " + counted(static_cast<int>(field.size()), "byte") +
                                       "; make a formula of this length an item and refer to it with case(\"name\")");
    if (field.empty()) return;
    if (is_blank(field))
        return file.findings.fault(field, "a blank counts as the norm 0; leave nothing between the commas for no norm");
    if (is_number(field)) {
        const double value = read_double(field);
        if (part == NormPart::sd && value <= 0)
            file.findings.fault(field, value == 0
                                           ? "an SD of 0 makes every deviation 0; remove it when there is none"
                                           : "an SD below 0 turns the deviation's sign round; write it without \"-\"");
        return;
    }
    if (field.find_first_not_of("0123456789.,+-eE \t") == std::string_view::npos) {
        return file.findings.fault(field, quoted(field) +
                                              " is not read as a number; write it like -0.5 or 12.25, with at most six "
                                              "decimals and without \"+\", blanks or zeros in front");
    }
    const std::size_t size = field.size();
    const char separator = size > 2 ? field[size - 2] : '\0';
    if (separator == '\0' || !is_digit(field.back()) || is_digit(separator) ||
        std::string_view(".)]*/+-<>=").find(separator) != std::string_view::npos) {
        return file.findings.fault(field,
                                   "a norm is a number, or a formula with its decimals behind, as in len([A],[B]):1");
    }
    file.check_formula(field.substr(0, size - 2), line);
}

}  // namespace

void check_norms_of(const NamedLine& item, CheckedFile& file) {
    const CheckedFile::Lines men = file.norms(item.name, CheckedFile::male),
                             women = file.norms(item.name, CheckedFile::female);
    for (const CheckedFile::Lines& norms : {men, women}) {
        if (has_norm(norms.sd) && !has_norm(norms.mean))
            file.findings.fault(norms.sd->name,
                                "an SD without a mean; the deviation is reckoned from 0 until the mean is added");
        if (has_norm(norms.mean) && !has_norm(norms.sd))
            file.findings.note(norms.mean->name,
                               "a mean without an SD, so the deviation is always 0; add one in SD: if there is one");
        if (!has_norm(norms.mean) || !has_norm(norms.sd)) continue;
        const std::size_t means = norm_fields(norms.mean->rest).size(), sds = norm_fields(norms.sd->rest).size();
        if (means != sds && means > 1 && sds > 1)
            file.findings.fault(norms.sd->name, counted(static_cast<int>(sds), "SD") + " for " +
                                                    counted(static_cast<int>(means), "mean") +
                                                    "; write one for each band, or a single one for all");
    }
    const bool for_men = has_norm(men.mean), for_women = has_norm(women.mean);
    const bool is_text = item.rest.find(';') != std::string_view::npos;
    if (for_men != for_women)
        file.findings.note(item.name, std::string("a mean for ") + (for_men ? "men" : "women") +
                                          " only; add one in Mean_F: or Mean_M:, or move it to Mean:");
    else if (!for_men && file.has_norms && !is_text)
        file.findings.note(item.name,
                           "an item without a norm, so it has no deviation; add one in Mean: and SD: if there is one");
}

void check_norm(std::string_view line, int section, NormPart part, CheckedFile& file) {
    const auto parts = file.named(line, "name=value or name=value,value,...");
    if (!parts) return;
    if (!file.definition.find_item(parts->key)) {
        return file.findings.fault(line, "there is no item " + quoted(parts->key) + ", so this norm is never read" +
                                             suggestion(meant_name(parts->key, file.names)));
    }
    const auto serves = [&](int sex) {
        const CheckedFile::Lines lines = file.norms(parts->key, sex);
        return (part == NormPart::mean ? lines.mean : lines.sd)->name.data() == line.data();
    };
    const int kind_of_section = section % second_set;
    const bool for_men = kind_of_section != mean_female_section && kind_of_section != sd_female_section;
    const bool for_women = kind_of_section != mean_male_section && kind_of_section != sd_male_section;
    if (!(for_men && serves(CheckedFile::male)) && !(for_women && serves(CheckedFile::female))) {
        return file.findings.fault(line,
                                   "a line further up already gives this norm, so this one is never read; remove one, "
                                   "or move the section for one sex in front");
    }
    const std::vector<std::string_view> fields = norm_fields(parts->value);
    if (fields.size() > most_bands && section < second_set) {
        return file.findings.fault(fields[most_bands],
                                   "more than " + counted(most_bands, "value") +
                                       ", and those from here on are never read, since a band has two "
                                       "digits; remove them, or make analyses of their own for some");
    }
    for (const std::string_view field : fields) check_value(field, parts->value, line.data(), part, file);
}

}  // namespace tool
