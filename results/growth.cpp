#include "results/growth.h"

#include <MeasuredAnalysis.h>

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/wording.h"
#include "results/names.h"

namespace cephtool {
namespace {

constexpr int most_bands = 100;  // a band code has two digits a set

// What is known of a patient.
struct Patient {
    std::optional<Sex> sex;
    std::optional<double> age;
    std::optional<int> dental_stage;
};

std::optional<double> age_of(const Case& record) {
    return record.birth && record.film ? std::optional(years_at(*record.film, *record.birth)) : std::nullopt;
}

std::optional<double> age_of(const Case& record, std::vector<std::string>& missing) {
    if (!record.birth) missing.emplace_back("birth");
    if (!record.film) missing.emplace_back("film");
    return age_of(record);
}

std::optional<int> dental_stage_of(const Case& record, std::vector<std::string>& missing) {
    if (record.dental_stage.empty()) missing.emplace_back("dental_stage");
    return tool::dental_stage_named(record.dental_stage);
}

// A set of an analysis' stages. Who is of unknown sex is asked for as a woman.
class Stages {
 public:
    Stages(const Analysis& analysis, StageSet set) : analysis_(analysis), set_(set) {}

    std::span<const tool::Stage> of(Sex sex) const {
        return analysis_.stages(set_, sex == Sex::male ? tool::Sex::male : tool::Sex::female);
    }
    bool any() const { return !of(Sex::male).empty() || !of(Sex::female).empty(); }
    bool goes_by(bool age) const {
        const auto is_so = [age](const tool::Stage& stage) { return stage.by_age == age; };
        return std::ranges::any_of(of(Sex::male), is_so) || std::ranges::any_of(of(Sex::female), is_so);
    }
    bool same_for_both() const { return std::ranges::equal(of(Sex::male), of(Sex::female)); }
    std::optional<int> place(Sex sex, const Patient& known) const {
        return analysis_.stage_of(set_, static_cast<tool::Sex>(sex), known.age, known.dental_stage);
    }

 private:
    const Analysis& analysis_;
    StageSet set_;
};

Patient patient(const Case& record, const Stages& stages, Finding& finding) {
    Patient known;
    if (stages.goes_by(true)) {
        known.age = age_of(record, finding.missing);
        if (known.age) finding.grounds.push_back({"age", with_decimals(*known.age, 2), *known.age});
    }
    if (stages.goes_by(false)) {
        known.dental_stage = dental_stage_of(record, finding.missing);
        finding.grounds.push_back({"dental stage", record.dental_stage});
    }
    known.sex = record.sex;
    if (!stages.same_for_both()) {
        if (record.sex)
            finding.grounds.push_back({"sex", name_of(*record.sex)});
        else if (!finding.missing.empty() || stages.place(Sex::male, known) != stages.place(Sex::female, known))
            finding.missing.emplace_back("sex");
    }
    if (!finding.missing.empty()) finding.grounds.clear();
    return known;
}

// Whose stages the patient's are; of unknown sex only when they are the same for both.
Sex sex_of(const Patient& known) {
    return known.sex.value_or(Sex::female);
}

void set_stage(Finding& finding, const Stages& stages, const Patient& known) {
    finding.stage = stages.place(sex_of(known), known);
    if (finding.stage) {
        const tool::Stage& stage = stages.of(sex_of(known))[static_cast<std::size_t>(*finding.stage)];
        finding.name = printable(stage.name);
        finding.japanese_name = printable(stage.japanese);
    }
}

// Why norms of stages that the patient is in none of are left out.
Remark outside_stages(std::span<const tool::Stage> stages, const Finding& finding) {
    const std::string code = "outside_stages";
    double begin = stages.front().from, end = 0;
    bool by_age = true;
    for (const tool::Stage& stage : stages) {
        begin = std::min(begin, stage.from);
        end = std::max(end, stage.to);
        by_age = by_age && stage.by_age;
    }
    const std::optional<double> age = finding.grounds.front().number;
    if (by_age && *age >= end)
        return {code,
                "Norms that change with age are left out: they end at %1 years, and the patient is %2.",
                {shortest(end), shortest(std::floor(*age))}};
    if (by_age && *age < begin)
        return {code,
                "Norms that change with age are left out: they begin at %1 years, and the patient is %2.",
                {shortest(begin), shortest(std::floor(*age))}};
    return {code, "Norms that change with growth are left out: the patient is in none of their stages."};
}

// Whether the norms were taken from people of the patient's age.
void compare_ages(NormBand& band, const std::optional<tool::Ages>& ages, const Case& record) {
    if (!ages || !record.birth || !record.film) return;
    const int age = static_cast<int>(years_at(*record.film, *record.birth));
    const bool too_old = ages->to && age > *ages->to;
    if (age >= ages->from && !too_old) return;
    band.in_doubt = true;
    band.remarks.push_back({"outside_ages",
                            too_old ? "The norms end at %1 years, and the patient is %2; they stand in parentheses."
                                    : "The norms begin at %1 years, and the patient is %2; they stand in parentheses.",
                            {std::to_string(too_old ? *ages->to : ages->from), std::to_string(age)}});
}

// Whose norms they are, and that those of the population that is asked for are not known.
void tell_population(NormBand& band, const Analysis& analysis, const Case& record) {
    if (!analysis.has_norms()) return;
    band.population = analysis.population();
    const std::string theirs =
        band.population && names_one_population(band.population->name) ? band.population->name : "";
    if (record.population.empty() || record.population == theirs) return;
    band.remarks.push_back({"other_population",
                            theirs.empty()
                                ? "There are no norms of %&1 for this analysis; its file does not say whose these are."
                                : "There are no norms of %&1 for this analysis; these are of %&2.",
                            {record.population, theirs}});
}

}  // namespace

Finding age_finding(const Case& record) {
    Finding finding{.what = "Age"};
    finding.years = age_of(record, finding.missing);
    if (!finding.years) return finding;
    finding.grounds = {{"birth", text_of(*record.birth)}, {"film", text_of(*record.film)}};
    return finding;
}

Finding dental_stage_finding(const Case& record) {
    Finding finding{.what = "Hellman stage", .name = record.dental_stage};
    finding.stage = dental_stage_of(record, finding.missing);
    return finding;
}

Finding ricketts_stage_finding(const Case& record, const AnalysisFolder& folder) {
    Finding finding{.what = "Ricketts stage"};
    const Analysis* const table = folder.ricketts();
    if (!table || !Stages(*table, StageSet::first).any()) {
        finding.reason = "the folder of analyses has no stages in CalcForm/Ricketts.txt";
        return finding;
    }
    const Stages stages(*table, StageSet::first);
    const Patient known = patient(record, stages, finding);
    if (!finding.missing.empty()) return finding;
    set_stage(finding, stages, known);
    if (!finding.stage) {
        finding.reason =
            stages.of(sex_of(known)).empty() ? "the table has no stages for this sex" : "in none of its stages";
    }
    return finding;
}

Finding stage_finding(const Analysis& analysis, StageSet set, const Case& record) {
    Finding finding{.what = title_of(analysis) + (set == StageSet::second ? ", second set" : "")};
    finding.japanese_what = title_of(analysis, Texts(Language::japanese)) + (set == StageSet::second ? "、第2組" : "");
    const Stages stages(analysis, set);
    if (!stages.any()) return finding;
    const Patient known = patient(record, stages, finding);
    if (!finding.missing.empty()) return finding;
    set_stage(finding, stages, known);
    if (!finding.stage && !stages.of(sex_of(known)).empty()) {
        finding.remark = outside_stages(stages.of(sex_of(known)), finding);
        finding.reason = "in none of its stages";
    }
    return finding;
}

NormBand norm_band(const Analysis& analysis, const Case& record, std::optional<int> given) {
    NormBand band{.code = given.value_or(0)};
    tell_population(band, analysis, record);
    if (given && analysis.has_stages()) {
        band.remarks.push_back(
            {"band_given", "The norms are those of band %1, as --band says.", {std::to_string(*given)}});
        return band;
    }
    std::vector<std::string> stages;
    for (const StageSet set : {StageSet::first, StageSet::second}) {
        const Finding finding = stage_finding(analysis, set, record);
        if (finding.stage || !finding.missing.empty() || !finding.reason.empty()) band.stages.push_back(finding);
        if (finding.stage) {
            const int column = std::min(*finding.stage, most_bands - 1);
            std::vector<std::string> grounds;
            for (const Ground& ground : finding.grounds) grounds.push_back(ground.name + " " + ground.text);
            stages.push_back((set == StageSet::second ? "in the second set band " : "band ") + std::to_string(column) +
                             ", " + finding.name + " (" + joined(grounds, ", ") + ")");
        } else if (!finding.missing.empty()) {
            band.remarks.push_back({"norms_by_stage",
                                    "Norms that change with growth are left out, since the case lacks %1.",
                                    {joined(finding.missing, ", ")}});
        } else if (finding.remark) {
            band.remarks.push_back(*finding.remark);
        }
    }
    tool::Subject patient{.age_years = age_of(record), .dental_stage = tool::dental_stage_named(record.dental_stage)};
    if (record.sex) patient.sex = static_cast<tool::Sex>(*record.sex);
    if (!given) band.code = tool::norm_band(analysis, patient);
    if (band.code != NormBand::unknown && !stages.empty()) band.words = "Norms of " + joined(stages, "; ");
    compare_ages(band, analysis.ages(), record);
    return band;
}

}  // namespace cephtool
