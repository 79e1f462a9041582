#include "results/growth.h"

#include <CephCalc.h>
#include <CodePage.h>

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/wording.h"

namespace cephtool {
namespace {

constexpr int most_bands = 100;  // a band code has two digits a set
constexpr int no_such_sex = 0;
constexpr double no_such_age = -1, no_such_stage = -1;
constexpr int ricketts_kind = 0, ricketts_index = -1;

// What the engine is told of a patient, and what of that it had to be told.
struct Patient {
    int sex = no_such_sex;
    double age = no_such_age, dental_stage = no_such_stage;
};

double age_of(const Case& record, std::vector<std::string>& missing) {
    if (!record.birth) missing.emplace_back("birth");
    if (!record.film) missing.emplace_back("film");
    return record.birth && record.film ? years_at(*record.film, *record.birth) : no_such_age;
}

double dental_stage_of(const Case& record, std::vector<std::string>& missing) {
    if (record.dental_stage.empty()) missing.emplace_back("dental_stage");
    return record.dental_stage.empty() ? no_such_stage : CCephCalc::GetDentalAge(record.dental_stage.c_str());
}

// The stages of a set, for men and for women.
struct Stages {
    std::vector<SheetStage> men, women;

    Stages(const AnalysisSheet& sheet, StageSet set)
        : men(sheet.Stages(static_cast<int>(Sex::male), set == StageSet::second)),
          women(sheet.Stages(static_cast<int>(Sex::female), set == StageSet::second)) {}

    bool any() const { return !men.empty() || !women.empty(); }
    bool goes_by(bool age) const {
        const auto is_so = [age](const SheetStage& stage) { return stage.byAge == age; };
        return std::ranges::any_of(men, is_so) || std::ranges::any_of(women, is_so);
    }
    const std::vector<SheetStage>& of(int sex) const { return sex == static_cast<int>(Sex::male) ? men : women; }
};

// Of stages that overlap the last one counts.
std::optional<int> place_in(const std::vector<SheetStage>& stages, const Patient& known) {
    std::optional<int> place;
    for (std::size_t i = 0; i < stages.size(); ++i) {
        const double at = stages[i].byAge ? known.age : known.dental_stage;
        if (stages[i].from <= at && at < stages[i].to) place = static_cast<int>(i);
    }
    return place;
}

Patient patient(const Case& record, const Stages& stages, Finding& finding) {
    Patient known;
    if (stages.goes_by(true)) {
        known.age = age_of(record, finding.missing);
        finding.grounds.push_back({"age", with_decimals(known.age, 2), known.age});
    }
    if (stages.goes_by(false)) {
        known.dental_stage = dental_stage_of(record, finding.missing);
        finding.grounds.push_back({"dental stage", record.dental_stage});
    }
    if (record.sex) known.sex = static_cast<int>(*record.sex);
    if (stages.men != stages.women) {
        if (record.sex)
            finding.grounds.push_back({"sex", name_of(*record.sex)});
        else if (!finding.missing.empty() || place_in(stages.men, known) != place_in(stages.women, known))
            finding.missing.emplace_back("sex");
    }
    if (!finding.missing.empty()) finding.grounds.clear();
    return known;
}

void set_stage(Finding& finding, const std::vector<SheetStage>& stages, std::optional<int> place) {
    if (!place || *place < 0 || *place >= static_cast<int>(stages.size())) return;
    finding.stage = place;
    finding.name = printable(Utf8FromCodePage932(stages[static_cast<std::size_t>(*place)].name));
}

// Why norms of stages that the patient is in none of are left out.
Remark outside_stages(const std::vector<SheetStage>& stages, const Finding& finding) {
    const std::string code = "outside_stages";
    double begin = stages.front().from, end = 0;
    bool by_age = true;
    for (const SheetStage& stage : stages) {
        begin = std::min(begin, stage.from);
        end = std::max(end, stage.to);
        by_age = by_age && stage.byAge;
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
void compare_ages(NormBand& band, const AnalysisSheet& sheet, const Case& record) {
    const SheetAges ages = sheet.Ages();
    if (!ages.known || !record.birth || !record.film) return;
    const int age = static_cast<int>(years_at(*record.film, *record.birth));
    const bool too_old = ages.to >= 0 && age > ages.to;
    if (age >= ages.from && !too_old) return;
    band.in_doubt = true;
    band.remarks.push_back({"outside_ages",
                            too_old ? "The norms end at %1 years, and the patient is %2; they stand in parentheses."
                                    : "The norms begin at %1 years, and the patient is %2; they stand in parentheses.",
                            {std::to_string(too_old ? ages.to : ages.from), std::to_string(age)}});
}

}  // namespace

Finding age_finding(const Case& record) {
    Finding finding{.what = "Age"};
    const double age = age_of(record, finding.missing);
    if (!finding.missing.empty()) return finding;
    finding.years = age;
    finding.grounds = {{"birth", text_of(*record.birth)}, {"film", text_of(*record.film)}};
    return finding;
}

Finding dental_stage_finding(const Case& record) {
    Finding finding{.what = "Hellman stage", .name = record.dental_stage};
    const double ordinal = dental_stage_of(record, finding.missing);
    if (finding.missing.empty()) finding.stage = static_cast<int>(std::lround(ordinal));
    return finding;
}

Finding ricketts_stage_finding(const Case& record) {
    Finding finding{.what = "Ricketts stage"};
    const CString path = CCephCalc::FormFile(ricketts_kind, ricketts_index);
    const Stages stages(AnalysisSheet(ricketts_kind, path), StageSet::first);
    if (!stages.any()) {
        finding.reason = "the folder of analyses has no stages in CalcForm/Ricketts.txt";
        return finding;
    }
    const Patient known = patient(record, stages, finding);
    if (!finding.missing.empty()) return finding;
    set_stage(finding, stages.of(known.sex), CCephCalc::Get_RickettsStage(known.sex, known.age, known.dental_stage));
    if (!finding.stage) finding.reason = "the table has no stages for this sex";
    return finding;
}

Finding stage_finding(const Analysis& analysis, StageSet set, const Case& record) {
    Finding finding{.what = analysis.title + (set == StageSet::second ? ", second set" : "")};
    const Stages stages(analysis.sheet, set);
    if (!stages.any()) return finding;
    const Patient known = patient(record, stages, finding);
    if (!finding.missing.empty()) return finding;
    set_stage(finding, stages.of(known.sex), place_in(stages.of(known.sex), known));
    if (!finding.stage && !stages.of(known.sex).empty()) {
        finding.remark = outside_stages(stages.of(known.sex), finding);
        finding.reason = "in none of its stages";
    }
    return finding;
}

NormBand norm_band(const Analysis& analysis, const Case& record, std::optional<int> given) {
    NormBand band{.code = given.value_or(0)};
    const bool has_stages =
        Stages(analysis.sheet, StageSet::first).any() || Stages(analysis.sheet, StageSet::second).any();
    if (given && has_stages) {
        band.remarks.push_back(
            {"band_given", "The norms are those of band %1, as --band says.", {std::to_string(*given)}});
        return band;
    }
    std::vector<std::string> stages;
    bool known = true;
    int weight = 1;
    for (const StageSet set : {StageSet::first, StageSet::second}) {
        const Finding finding = stage_finding(analysis, set, record);
        if (finding.stage || !finding.missing.empty() || !finding.reason.empty()) band.stages.push_back(finding);
        if (finding.stage) {
            const int column = std::min(*finding.stage, most_bands - 1);
            band.code += weight * column;
            std::vector<std::string> grounds;
            for (const Ground& ground : finding.grounds) grounds.push_back(ground.name + " " + ground.text);
            stages.push_back((set == StageSet::second ? "in the second set band " : "band ") + std::to_string(column) +
                             ", " + finding.name + " (" + joined(grounds, ", ") + ")");
        } else if (!finding.missing.empty()) {
            known = false;
            band.remarks.push_back({"norms_by_stage",
                                    "Norms that change with growth are left out, since the case lacks %1.",
                                    {joined(finding.missing, ", ")}});
        } else if (finding.remark) {
            known = false;
            band.remarks.push_back(*finding.remark);
        }
        weight *= most_bands;
    }
    if (!known) band.code = NormBand::unknown;
    if (known && !stages.empty()) band.words = "Norms of " + joined(stages, "; ");
    compare_ages(band, analysis.sheet, record);
    return band;
}

}  // namespace cephtool
