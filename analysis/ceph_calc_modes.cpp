// CCephCalc: display modes.
#include <algorithm>

#include "CephCalc.h"
#include "analysis/catalogue.h"
#include "analysis/definition_file.h"
#include "analysis/display_mode.h"
#include "analysis/face.h"
#include "platform/number_text.h"
#include "platform/system.h"

using tool::text_or_empty;

namespace {

void append(CStringArray* list, const auto& texts) {
    if (!list) return;
    for (const auto& text : texts) list->Add(CString(std::string_view(text)));
}

std::string three_digits(int number) {
    std::string digits = tool::print_int(number);
    return std::string(3 - std::min<std::size_t>(digits.size(), 3), '0') + digits;
}

int code_of(tool::ModeDecimals decimals) {
    switch (decimals) {
        case tool::ModeDecimals::none: return 0;
        case tool::ModeDecimals::one: return 1;
        case tool::ModeDecimals::halves: return 9;
        default: return 2;
    }
}

// "RRRGGGBBBd<position>SIZE=<size>CALC=<text>"
std::string packed(const tool::ModeFile::Value& value) {
    std::string entry = three_digits(GetRValue(value.colour)) + three_digits(GetGValue(value.colour)) +
                        three_digits(GetBValue(value.colour)) + tool::print_int(code_of(value.decimals));
    entry.append(value.position).append("SIZE=").append(tool::print_int(value.size));
    return entry.append("CALC=").append(value.item);
}

}  // namespace

void CCephCalc::SetCalcMode(int kind, CComboBox* combo) {
    if (!combo) return;
    tool::as_far_as_possible([&] {
        combo->AddString("-----------");
        for (const tool::ModeEntry& entry : tool::listed_modes(kind)) {
            const tool::DefinitionFile file(tool::file_text(entry.path));
            if (file.title().empty()) continue;
            const int index = combo->AddString(CString(file.title()));
            combo->SetItemData(index, static_cast<DWORD_PTR>(entry.number));
        }
    });
    combo->SetCurSel(0);
    if (combo->GetCount() < 2) combo->EnableWindow(FALSE);
}

// Kept: this counts files that exist, SetCalcMode those with a title.
CString CCephCalc::CalcModeFile(int kind, int index) {
    return tool::or_failed(CString(), [&] {
        int counter = 0;
        for (const tool::ModeEntry& entry : tool::listed_modes(kind))
            if (tool::file_status(entry.path) && counter++ == index) return CString(entry.path);
        return CString();
    });
}

void CCephCalc::ReadCalcMode(const char* path, void* suppLines, CStringArray* points, CStringArray* calcs,
                             CStringArray* pointSettings) {
    tool::as_far_as_possible([&] {
        const std::string text = tool::file_text(text_or_empty(path));
        const tool::ModeFile mode = tool::read_display_mode(text);
        append(points, mode.points);
        std::vector<std::string> measurements;
        for (const tool::ModeFile::Value& value : mode.values) measurements.push_back(packed(value));
        append(calcs, measurements);
        append(pointSettings, mode.point_settings);
        if (suppLines) std::ranges::copy(mode.lines, static_cast<tagSUPPLINE*>(suppLines));
    });
}

int CCephCalc::CheckCalcModePoint(CStringArray* points, const char* name) {
    if (!points || points->IsEmpty()) return 1;
    for (int i = 0; i < points->GetSize(); ++i)
        if ((*points)[i].View() == text_or_empty(name)) return 1;
    return 0;
}
