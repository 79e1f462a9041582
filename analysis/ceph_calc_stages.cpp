// CCephCalc: growth stages, bone age, and the completion of a lateral record.
#include <algorithm>

#include "CephCalc.h"
#include "analysis/bone_age.h"
#include "analysis/catalogue.h"
#include "analysis/evaluation.h"
#include "analysis/face.h"
#include "analysis/growth_stage.h"
#include "analysis/item_text.h"
#include "analysis/lateral_completion.h"

using tool::or_failed;
using tool::text_or_empty;

namespace {

constexpr int ricketts = -1;

}  // namespace

double CCephCalc::GetDentalAge(const char* text) {
    return tool::dental_stage_ordinal(text_or_empty(text));
}

int CCephCalc::Get_RickettsStage(int sex, double age, double value) {
    return or_failed(0, [&] {
        const std::string file = tool::file_text(tool::form_file(0, ricketts));
        int stage = 0, counter = 0;
        // Kept: of stages that overlap the last one wins, and whoever is in none is in stage 0.
        tool::for_each_stage(file, sex, false, [&](const tool::StageLine& line) {
            if (tool::age_range(line.range, tool::ZeroBound::open_above).contains(line.by_age ? age : value))
                stage = counter;
            ++counter;
        });
        return stage;
    });
}

int CCephCalc::SetStageList(int kind, CComboBox* combo, int index, int sex, double age, double dentalStage, int set,
                            const char* selected) {
    if (!combo) return 0;
    combo->ResetContent();
    return or_failed(0, [&] {
        const std::string file = tool::file_text(tool::form_file(kind, index));
        int by_name = -1, by_range = 0, counter = 0;
        tool::for_each_stage(file, sex, set == 2, [&](const tool::StageLine& line) {
            const std::string name(line.name);
            combo->AddString(name.c_str());
            if (!name.empty() && name == text_or_empty(selected)) by_name = counter;
            const tool::StageRange range =
                line.by_age ? tool::age_range(line.range, tool::ZeroBound::open_above_a_nonzero_start)
                            : tool::dental_range(line.range);
            if (range.contains(line.by_age ? age : dentalStage)) by_range = counter;
            ++counter;
        });
        combo->SetCurSel(by_name >= 0 ? by_name : by_range);
        return counter;
    });
}

double CCephCalc::Get_RickettsParam(tagPOINTLAT* points, int item, int sex, int band, double, unsigned int, char* name,
                                    double* value, double* sd, double* mean) {
    return or_failed(0.0, [&] {
        const tool::DefinitionFile file(tool::file_text(tool::form_file(0, ricketts)));
        auto items = file.items();
        std::erase_if(items, [](const tool::NamedLine& line) { return line.second_set(); });
        if (item < 0 || item >= static_cast<int>(items.size())) return 0.0;
        const tool::NamedLine* line = &items[item];
        tool::Landmarks landmarks(0, points, nullptr, nullptr, nullptr);
        tool::Evaluation evaluation([&file] { return &file; }, landmarks, sex, std::max(band, 0));
        double values[tool::value_list_capacity];
        int count = 0;
        const tool::ValueList list(values, &count);
        evaluation.formula(tool::split_type(line->rest).expression, true, list);
        const auto item_mean = evaluation.norm(line->name, tool::NormPart::mean).value;
        const auto item_sd = evaluation.norm(line->name, tool::NormPart::sd).value;
        if (name) name[line->name.copy(name, line->name.size())] = '\0';
        if (value) *value = list.last();
        if (sd) *sd = item_sd.value_or(0.0);
        if (mean) *mean = item_mean.value_or(0.0);
        // Kept: divided plainly, so an SD of 0 gives infinity.
        return item_mean && item_sd ? (list.last() - *item_mean) / *item_sd : 0.0;
    });
}

double CCephCalc::Calc_CVBA(tagCVBA* points, int sex) {
    if (!points) return 0.0;
    return or_failed(0.0, [&] { return tool::bone_age(*points, tool::configured_bone_age_coefficients(sex)); });
}

void CCephCalc::Check_LatPoint(tagPOINTLAT* record) {
    if (record) tool::complete_lateral_record(*record);
}
