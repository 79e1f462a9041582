#include "analysis/check/variants.h"

#include "analysis/population.h"
#include "platform/code_page.h"
#include "platform/text.h"

namespace tool {
namespace {

// The names of items that `file` has and `other` has not, as far as a sentence holds them.
std::string only_in(const DefinitionFile& file, const DefinitionFile& other) {
    constexpr int most_named = 3;
    std::string names;
    int count = 0;
    for (const NamedLine& item : file.items()) {
        if (!item.rest.data() || other.find_item(item.name)) continue;
        if (++count <= most_named) names += (names.empty() ? "" : ", ") + quoted(item.name);
    }
    return count > most_named ? names + " and " + std::to_string(count - most_named) + " more" : names;
}

}  // namespace

std::string population_of(const Sample& sample) {
    return lower(population_name(utf8_from_code_page(sample.population)).name);
}

void check_variant(const DefinitionFile& variant, const DefinitionFile* base, Findings& findings) {
    const Sample sample = sample_of(variant.text());
    const std::string_view place = sample.variant_of;
    const std::string name = quoted(place);
    if (!base)
        return findings.fault(place, "there is no file " + name + " in this folder, so this one is never chosen");
    const Sample of_base = sample_of(base->text());
    if (!of_base.variant_of.empty())
        return findings.fault(place, name + " is a variant itself; write the name of the file that it is one of");
    if (!sample.population.empty() && population_of(sample) == population_of(of_base))
        findings.fault(sample.population, name + " has norms of this population itself, so this file is never chosen");
    for (const NamedLine& item : variant.items()) {
        const auto same = base->find_item(item.name);
        if (item.rest.data() && same && same->rest.data() && same->rest != item.rest)
            findings.fault(item.name, quoted(item.name) + " is another formula in " + name +
                                          "; a name means one measure, so rename one of them");
    }
    const std::string added = only_in(variant, *base), lacking = only_in(*base, variant);
    if (!added.empty()) findings.note(place, name + " lacks " + added + ", which this file has");
    if (!lacking.empty()) findings.note(place, "this file lacks " + lacking + " of " + name);
}

}  // namespace tool
