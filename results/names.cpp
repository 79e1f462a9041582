#include "results/names.h"

#include <algorithm>

#include "base/wording.h"

namespace cephtool {

std::string title_of(const Analysis& analysis, const Texts& texts) {
    const std::string title = title_of(analysis);
    if (texts.language() == Language::english) return title;
    return texts.chosen(texts.part(title), printable(analysis.japanese(analysis.title())));
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

std::vector<std::string> unverified_in_words(std::span<const Measurement> items, const Texts& texts) {
    std::vector<std::pair<std::string, std::vector<std::string>>> reasons;
    for (const Measurement& item : items) {
        if (item.unverified.empty() || item.mean_text.empty()) continue;
        auto reason = std::ranges::find(reasons, item.unverified, [](const auto& each) { return each.first; });
        if (reason == reasons.end()) reason = reasons.insert(reason, {item.unverified, {}});
        reason->second.push_back(label_of(item, texts));
    }
    std::vector<std::string> lines;
    for (const auto& [reason, names] : reasons)
        lines.push_back(texts("† %1: %2", texts.part(reason), joined(names, "; ")));
    return lines;
}

}  // namespace cephtool
