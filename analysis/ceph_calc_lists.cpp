#include <algorithm>

#include "CephCalc.h"
#include "ResultList.h"
#include "analysis/catalogue.h"
#include "analysis/face.h"
#include "analysis/landmark_names.h"
#include "analysis/measures.h"

namespace {

constexpr int diagnosis_kind = 10, surgery_kind = 20;

int fill(ResultList* list, int kind, int index, SheetSubject subject) {
    subject.band = std::max(subject.band, 0);
    return tool::or_failed(0, [&] {
        const int decimals = tool::is_cast(kind) ? tool::cast_decimals() : AnalysisSheet::usual_cast_decimals;
        ResultList rows(AnalysisSheet(kind, tool::form_file(kind, index).c_str(), decimals), subject);
        const int count = rows.GetCount();
        if (list) *list = std::move(rows);
        return count;
    });
}

}  // namespace

int CCephCalc::User_Calc(int kind, int index, void* record, unsigned short* kCount, tagKPOINT* kPoints,
                         unsigned short* uCount, tagUPOINT* uPoints, int sex, int band, ResultList* list) {
    return fill(list, kind, index, {record, kCount, kPoints, uCount, uPoints, sex, band});
}

int CCephCalc::User_Diag(int index, void* record, unsigned short* kCount, tagKPOINT* kPoints, unsigned short* uCount,
                         tagUPOINT* uPoints, int sex, int band, ResultList* list) {
    return fill(list, diagnosis_kind, index, {record, kCount, kPoints, uCount, uPoints, sex, band});
}

int CCephCalc::User_CalcSurg(void* record, unsigned short* kCount, tagKPOINT* kPoints, unsigned short* uCount,
                             tagUPOINT* uPoints, int sex, int band, ResultList* list) {
    constexpr int only_file = 0;
    return fill(list, surgery_kind, only_file, {record, kCount, kPoints, uCount, uPoints, sex, band});
}
