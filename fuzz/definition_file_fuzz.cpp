// Any definition file: every item ends, within its limits, and gives the same bits twice.
#include <cstdint>
#include <cstring>

#include "AnalysisSheet.h"
#include "CephCalc.h"
#include "fuzz/subject.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tool_fuzz::require;
    if (size == 0) return 0;
    const int kind = data[0] & 1 ? 2 : 0, sex = data[0] >> 1 & 1, band = (data[0] >> 2 & 3) * 100 + (data[0] >> 4);
    const char* const text = reinterpret_cast<const char*>(data + 1);
    const AnalysisSheet sheet(kind, text, size - 1);
    tool_fuzz::Subject subject;
    subject.add_virtual("mid([S],[V1])");
    subject.add_virtual("[N]");
    const SheetSubject measured{
        subject.record(kind), &subject.virtual_count, subject.virtuals, &subject.user_count, subject.users, sex, band};
    require(sheet.Title().Find('\n') < 0 && sheet.Comment().Find('\n') < 0);
    for (int i = 0; i < std::min(sheet.GetCount(), 20); ++i) {
        const SheetItem item = sheet.GetItem(i);
        require(item.name.GetLength() <= 50 && item.column >= 0 && item.column <= 2 && item.mode >= 0 &&
                item.mode <= 3);
        const SheetRow row = sheet.Evaluate(i, measured), again = sheet.Evaluate(i, measured);
        require(std::memcmp(&row.value, &again.value, sizeof row.value) == 0);
        require(std::memcmp(&row.deviation, &again.deviation, sizeof row.deviation) == 0);
        const double value = sheet.Calc_1(0, item.name, measured, 1.0, nullptr, nullptr);
        require(std::memcmp(&value, &row.value, sizeof value) == 0);
        for (const SheetPart part : {SheetPart::value, SheetPart::mean, SheetPart::sd})
            sheet.Missing(i, part, measured);
        sheet.Get_MeanSD(item.name, 0, measured, 1.1, 0);
    }
    return 0;
}
