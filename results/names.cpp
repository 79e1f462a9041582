#include "results/names.h"

#include <algorithm>
#include <optional>

#include "base/wording.h"

namespace cephtool {

std::string title_of(const Analysis& analysis, const Texts& texts) {
    const std::string title = title_of(analysis);
    if (texts.language() == Language::english) return title;
    return texts.chosen(texts.part(title), printable(analysis.japanese(analysis.title())));
}

std::string comment_of(const Analysis& analysis, const Texts& texts) {
    return texts.chosen(comment_of(analysis), printable(analysis.japanese("Comment")));
}

std::string title_of(const DisplayMode& mode, const Texts& texts) {
    return texts.language() == Language::english ? title_of(mode) : texts.part(title_of(mode));
}

std::string label_of(const Measurement& item, const Texts& texts) {
    return texts.chosen(item.name, item.japanese);
}

std::string label_of(const tool::Item& item, const Texts& texts) {
    return printable(texts.chosen(item.name, item.japanese));
}

std::string verdict_of(const Measurement& item, const Texts& texts) {
    if (texts.language() == Language::english) return item.text;
    return texts.chosen(texts.part(item.text), item.text_japanese);
}

std::string unit_sign(const std::string& unit) {
    return unit == "deg" ? "°" : unit;
}

std::string what_of(const Finding& finding, const Texts& texts) {
    return texts.chosen(texts(finding.what), finding.japanese_what);
}

std::string stage_of(const Finding& finding, const Texts& texts) {
    if (texts.language() == Language::english) return finding.name;
    return texts.chosen(texts.part(finding.name), finding.japanese_name);
}

std::string in_words(const tool::Population& population, const Texts& texts) {
    const std::string whole = printable(population.text), part = texts.part(whole);
    return texts.language() == Language::japanese && part == whole ? printable(population.japanese) : part;
}

std::string norms_in_words(const NormBand& band, const Texts& texts) {
    std::vector<std::string> parts;
    if (band.population) parts.push_back(in_words(*band.population, texts));
    for (const Finding& stage : band.stages) {
        if (!stage.stage) continue;
        std::vector<std::string> grounds;
        for (const Ground& ground : stage.grounds) {
            grounds.push_back(ground.name == "age"            ? texts("age %1", ground.text)
                              : ground.name == "dental stage" ? texts("dental stage %1", ground.text)
                                                              : texts(ground.text));
        }
        parts.push_back(stage_of(stage, texts) + (grounds.empty() ? "" : " (" + joined(grounds, ", ") + ")"));
    }
    return parts.empty() ? "" : texts("Norms: %1", joined(parts, "; "));
}

namespace {

constexpr std::size_t few = 2;  // items, which are named rather than called "all"

// An item that something can be said of.
struct Spoken {
    std::string label, heading;
    std::string_view saying;  // "" when nothing is said of it
};

std::vector<std::string> names_of(std::string_view saying, std::span<const Spoken> items, const Texts& texts) {
    const auto all_said = [&](const auto& among) {
        std::size_t count = 0;
        for (const Spoken& item : items) {
            if (!among(item)) continue;
            if (item.saying != saying) return false;
            ++count;
        }
        return count > few;
    };
    if (all_said([](const Spoken&) { return true; })) return {texts("all items")};
    std::vector<std::string> names;
    for (const Spoken& item : items) {
        if (item.saying != saying) continue;
        const bool whole =
            !item.heading.empty() && all_said([&](const Spoken& other) { return other.heading == item.heading; });
        std::string name = whole ? texts("all of %1", item.heading) : item.label;
        if (names.empty() || names.back() != name) names.push_back(std::move(name));
    }
    return names;
}

// A line for each saying. `said_of` gives nothing for items that don't count.
template <class SaidOf>
std::vector<std::string> said_in_words(const char* form, std::span<const Measurement> items, const Texts& texts,
                                       SaidOf said_of) {
    std::vector<Spoken> spoken;
    std::vector<std::string_view> sayings;
    std::string heading;
    for (const Measurement& item : items) {
        if (item.heading) heading = label_of(item, texts);
        const std::optional<std::string_view> saying = item.heading ? std::nullopt : said_of(item);
        if (!saying) continue;
        spoken.push_back({label_of(item, texts), heading, *saying});
        if (!saying->empty() && std::ranges::find(sayings, *saying) == sayings.end()) sayings.push_back(*saying);
    }
    std::vector<std::string> lines;
    for (const std::string_view saying : sayings)
        lines.push_back(texts(form, texts.part(std::string(saying)), joined(names_of(saying, spoken, texts), "; ")));
    return lines;
}

}  // namespace

std::vector<std::string> signs_in_words(std::span<const Measurement> items, const Texts& texts) {
    return said_in_words("+ %1: %2", items, texts, [](const Measurement& item) -> std::optional<std::string_view> {
        if (!item.value) return std::nullopt;
        return item.sign;
    });
}

std::vector<std::string> unverified_in_words(std::span<const Measurement> items, const Texts& texts) {
    return said_in_words("† %1: %2", items, texts, [](const Measurement& item) -> std::optional<std::string_view> {
        if (item.mean_text.empty()) return std::nullopt;
        return item.unverified;
    });
}

}  // namespace cephtool
