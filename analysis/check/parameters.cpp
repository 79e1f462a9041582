#include "analysis/check/parameters.h"

#include <algorithm>
#include <span>

#include "analysis/sample.h"
#include "platform/text.h"

namespace tool {

void ParameterCheck::check(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return;
    const std::string_view name = line.substr(0, equals), value = line.substr(equals + 1);
    const auto key = std::ranges::find_if(sample_keys, [name](std::string_view each) {
        return each.ends_with(' ') ? name.starts_with(each) : name == each;
    });
    if (key == std::end(sample_keys)) return check_for_key(line, name);
    if (!met_.insert(name).second)
        return file_.findings.fault(line, "a line further up already says this, and only that one is read; remove one");
    if (*key == ages_key) {
        if (!age_range_of_sample(value))
            file_.findings.fault(
                line.substr(equals),
                quoted(value) + " is no range of ages; write whole years, as in 12-17, or 18- when it is open above");
    } else if (!key->ends_with(' ')) {
        if (*key == variant_key) variant_ = line;
        if (is_blank(value))
            file_.findings.fault(line, *key == population_key
                                           ? "say behind \"=\" whose norms these are, such as Japanese"
                                           : "say behind \"=\" which file this is a variant of, such as Steiner.txt");
    } else {
        check_named(name.substr(key->size()), *key, line, value);
    }
}

// Keys with slips in them.
void ParameterCheck::check_for_key(std::string_view line, std::string_view name) {
    for (const std::string_view key : sample_keys) {
        const bool slip = key.ends_with(' ') ? equal_ignoring_case(name.substr(0, key.size()), key)
                                             : !meant_name(name, std::span(&key, 1)).empty();
        if (slip) file_.findings.fault(line, quoted(name.substr(0, key.size())) + " is not read; write " + quoted(key));
    }
}

// A line on something that has a name in the file.
void ParameterCheck::check_named(std::string_view name, std::string_view key, std::string_view line,
                                 std::string_view value) {
    if (key == japanese_key) {
        if (std::ranges::find(file_.displayed, name) == file_.displayed.end())
            file_.findings.fault(line, "there is no title, item, heading, stage or finding " + quoted(name) +
                                           ", so its Japanese name is never read" +
                                           suggestion(meant_name(name, file_.displayed)));
        else if (is_blank(value))
            file_.findings.fault(line, "write the Japanese name behind \"=\"");
        return;
    }
    const bool sign = key == sign_key;
    if (!file_.definition.find_item(name) || std::ranges::find(file_.headings, name) != file_.headings.end())
        file_.findings.fault(line, "there is no item " + quoted(name) + ", so its " + (sign ? "sign" : "mark") +
                                       " is never read" + suggestion(meant_name(name, file_.names)));
    else if (is_blank(value))
        file_.findings.fault(line, sign ? "say behind \"=\" what a positive value means, such as in front of the line"
                                        : "say behind \"=\" why the norm is to be doubted, such as textbook figure, "
                                          "not seen in print");
    else if (!sign && !file_.has(&CheckedFile::Lines::mean, name))
        file_.findings.fault(line, quoted(name) + " has no norm that could be doubted; remove the line");
}

void ParameterCheck::finish() {
    if (variant_ && !met_.contains(population_key))
        file_.findings.fault(*variant_, "a variant without a population is never chosen; add Population=");
}

}  // namespace tool
