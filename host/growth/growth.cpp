#include "host/growth/growth.h"

#include <CephCalc.h>
#include <CodePage.h>
#include <Framework.h>

#include <algorithm>
#include <cmath>

#include "host/numbers.h"
#include "host/text_width.h"

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

Patient patient(const Case& record, const StageSections& asked, Finding& finding) {
    Patient known;
    if (asked.age) {
        known.age = age_of(record, finding.missing);
        finding.grounds.push_back({"age", with_decimals(known.age, 2), known.age});
    }
    if (asked.dental_stage) {
        known.dental_stage = dental_stage_of(record, finding.missing);
        finding.grounds.push_back({"dental stage", record.dental_stage});
    }
    if (record.sex) known.sex = static_cast<int>(*record.sex);
    if (asked.sex && !record.sex) finding.missing.emplace_back("sex");
    if (asked.sex && record.sex) finding.grounds.push_back({"sex", name_of(*record.sex)});
    if (!finding.missing.empty()) finding.grounds.clear();
    return known;
}

// The names of the stages of a definition file, the patient's one selected.
void list_stages(CComboBox& names, int kind, int index, const Patient& known, StageSet set) {
    CCephCalc::SetStageList(kind, &names, index, known.sex, known.age, known.dental_stage, static_cast<int>(set), "");
}

void set_stage(Finding& finding, const CComboBox& names, int stage) {
    if (stage < 0 || stage >= names.GetCount()) return;
    CString name;
    names.GetLBText(stage, name);
    finding.stage = stage;
    finding.name = printable(Utf8FromCodePage932(name));
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
    const StageSections asked = stage_sections(definition_bytes(path), StageSet::first);
    if (!asked.any) {
        finding.reason = "the folder of analyses has no stages in CalcForm/Ricketts.txt";
        return finding;
    }
    const Patient known = patient(record, asked, finding);
    if (!finding.missing.empty()) return finding;
    CComboBox names;
    list_stages(names, ricketts_kind, ricketts_index, known, StageSet::first);
    set_stage(finding, names, CCephCalc::Get_RickettsStage(known.sex, known.age, known.dental_stage));
    if (!finding.stage) finding.reason = "the table has no stages for this sex";
    return finding;
}

Finding stage_finding(const Analysis& analysis, StageSet set, const Case& record) {
    Finding finding{.what = analysis.title + (set == StageSet::second ? ", second set" : "")};
    const StageSections& asked = analysis.stages[set == StageSet::second];
    if (!asked.any) return finding;
    if (!analysis.index) {
        finding.reason = "stages are read only of analyses that the folder's list names";
        return finding;
    }
    const Patient known = patient(record, asked, finding);
    if (!finding.missing.empty()) return finding;
    CComboBox names;
    list_stages(names, analysis.engine_kind, *analysis.index, known, set);
    set_stage(finding, names, names.GetCurSel());
    return finding;
}

NormBand norm_band(const Analysis& analysis, const Case& record) {
    NormBand band;
    std::vector<std::string> stages;
    int weight = 1;
    for (const StageSet set : {StageSet::first, StageSet::second}) {
        const Finding finding = stage_finding(analysis, set, record);
        if (finding.stage || !finding.missing.empty() || !finding.reason.empty()) band.stages.push_back(finding);
        const std::string of_set = set == StageSet::second ? "in the second set " : "";
        if (finding.stage) {
            const int column = std::min(*finding.stage, most_bands - 1);
            band.code += weight * column;
            std::vector<std::string> grounds;
            for (const Ground& ground : finding.grounds) grounds.push_back(ground.name + " " + ground.text);
            stages.push_back(of_set + "band " + std::to_string(column) + ", " + finding.name + " (" +
                             joined(grounds, ", ") + ")");
        } else if (!finding.missing.empty()) {
            stages.push_back(of_set + "band 0, since the case lacks " + joined(finding.missing, ", "));
        } else if (!finding.reason.empty()) {
            stages.push_back(of_set + "band 0; " + finding.reason);
        }
        weight *= most_bands;
    }
    if (!stages.empty()) band.words = "Norms of " + joined(stages, "; ");
    return band;
}

}  // namespace cephtool
