// CCephCalc: formulas, items and norms.
#include <algorithm>

#include "CephCalc.h"
#include "analysis/cast_measures.h"
#include "analysis/catalogue.h"
#include "analysis/evaluation.h"
#include "analysis/face.h"
#include "analysis/norm_text.h"
#include "platform/numbers.h"

using tool::Ask;
using tool::Evaluation;
using tool::Landmarks;
using tool::NormPart;
using tool::or_failed;
using tool::text_or_empty;

namespace {

// One exported call: the landmarks it was given, and its definition file, read when the first reference asks for it.
class Call {
 public:
    Call(int kind, int index, void* record, unsigned short* kCount, tagKPOINT* kPoints, unsigned short* uCount,
         int sex = 0, int band = 0)
        : landmarks_(kind, record, kCount, kPoints, uCount),
          evaluation_([this, kind, index] { return load(kind, index); }, landmarks_, sex, std::max(band, 0)) {}

    Evaluation& evaluation() { return evaluation_; }

 private:
    const tool::DefinitionFile* load(int kind, int index) {
        return &file_.emplace(tool::file_text(tool::form_file(kind, index)));
    }

    std::optional<tool::DefinitionFile> file_;
    Landmarks landmarks_;
    Evaluation evaluation_;
};

NormPart part_of(int which) {
    return which == 0 ? NormPart::mean : NormPart::sd;
}

// Item `name` asked in one of the modes 0 to 3; the outputs as in Calc_1.
double asked_item(Call& call, std::string_view name, int mode, double* value_out, double* sd_out) {
    if (mode < 0 || mode > static_cast<int>(Ask::sd)) return 0.0;
    const auto result = call.evaluation().item(name, Ask{mode});
    return result ? tool::item_outputs(*result, Ask{mode}, value_out, sd_out) : 0.0;
}

}  // namespace

double CCephCalc::Calc(int kind, int index, char* formula, double* values, int* count, void* record,
                       unsigned short* kCount, tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT*, int sex,
                       int band, double, int topLevel) {
    if (!formula || !values || !count) return 0.0;
    return or_failed(0.0, [&] {
        Call call(kind, index, record, kCount, kPoints, uCount, sex, band);
        const tool::ValueList list(values, count);
        tool::blank(formula, call.evaluation().formula(formula, topLevel != 0, list));
        return list.last();
    });
}

double CCephCalc::Calc_Mult(int kind, unsigned int function, char* text, void* record, unsigned short* kCount,
                            tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT*, char) {
    return or_failed(0.0, [&] {
        Landmarks landmarks(kind, record, kCount, kPoints, uCount);
        tool::PointReader points(landmarks);
        const auto result = tool::read_measure(tool::Measure{function}, text_or_empty(text), points);
        tool::blank(text, result.end);
        return result.value;
    });
}

double CCephCalc::Calc_SDU(int kind, int mode, int index, char* text, void* record, unsigned short* kCount,
                           tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT*, int sex, int band, double) {
    return or_failed(0.0, [&] {
        const auto quoted = tool::quoted_name(text_or_empty(text));
        if (!quoted) return 0.0;
        const std::string name(quoted->name);
        tool::blank(text, quoted->end);
        Call call(kind, index, record, kCount, kPoints, uCount, sex, band);
        return asked_item(call, name, mode, nullptr, nullptr);
    });
}

double CCephCalc::Calc_1(int mode, int kind, int index, const char* name, void* record, unsigned short* kCount,
                         tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT*, int sex, int band, double,
                         double* valueOut, double* sdOut) {
    return or_failed(0.0, [&] {
        Call call(kind, index, record, kCount, kPoints, uCount, sex, band);
        return asked_item(call, text_or_empty(name), mode, valueOut, sdOut);
    });
}

CString CCephCalc::Get_MeanSD(int kind, int index, const char* name, int which, int sex, int band, void* record,
                              unsigned short* kCount, tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT*, double,
                              int keepDecimals) {
    return or_failed(CString(), [&] {
        Call call(kind, index, record, kCount, kPoints, uCount, sex, band);
        return CString(tool::norm_text(call.evaluation().norm(text_or_empty(name), part_of(which)), keepDecimals != 0));
    });
}

int CCephCalc::Get_MeanSD(int kind, int index, double* out, int which, int sex, int band, const char* name,
                          void* record, unsigned short* kCount, tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT*,
                          double) {
    const auto value = or_failed(std::optional<double>(), [&] {
        Call call(kind, index, record, kCount, kPoints, uCount, sex, band);
        return call.evaluation().norm(text_or_empty(name), part_of(which)).value;
    });
    if (out) *out = value.value_or(0.0);
    return value ? 1 : 0;
}

int CCephCalc::GetSDU(double value, double mean, double sd) {
    return tool::truncated(tool::deviation(value, mean, sd));
}

double CCephCalc::GetDoubleSDU(double value, double mean, double sd) {
    return tool::deviation(value, mean, sd);
}

double CCephCalc::Calc_Model(const char* token, tagPOINTMO* record) {
    if (!record) return 0.0;
    return or_failed(0.0, [&] { return tool::cast_measure(text_or_empty(token), *record); });
}
