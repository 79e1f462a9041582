// CCephCalc: definition files.
#include <algorithm>
#include <cstring>

#include "CephCalc.h"
#include "analysis/catalogue.h"
#include "analysis/definition_file.h"
#include "analysis/face.h"
#include "analysis/item_text.h"
#include "analysis/landmark_use.h"

using tool::or_failed;
using tool::text_or_empty;

CString CCephCalc::FormFile(int kind, int index) {
    return or_failed(CString(), [&] { return CString(tool::form_file(kind, index)); });
}

int CCephCalc::Str_Check(const char* line) {
    return tool::key_code(text_or_empty(line));
}

CString CCephCalc::Get_Title(const char* path) {
    return or_failed(CString(),
                     [&] { return CString(tool::DefinitionFile(tool::file_text(text_or_empty(path))).title()); });
}

CString CCephCalc::GetComment(int kind, int index) {
    return or_failed(CString(), [&] {
        return CString(tool::DefinitionFile(tool::file_text(tool::form_file(kind, index))).comment());
    });
}

int CCephCalc::Use_Point(int kind, const char* name) {
    return or_failed(0, [&] { return tool::uses_landmark(kind, text_or_empty(name)) ? 1 : 0; });
}

void CCephCalc::GetType(char* expression, int* column, int* mode) {
    const std::string_view text = text_or_empty(expression);
    const tool::TypedExpression typed = tool::split_type(text);
    if (column) *column = typed.type.column;
    if (mode) *mode = typed.type.mode;
    // Only from the last ":" on; a line end without one stays where it is.
    const std::size_t line_end = std::min(text.find_first_of("\r\n"), text.size());
    if (typed.expression.size() < line_end)
        std::memset(expression + typed.expression.size(), 0, line_end - typed.expression.size());
}

CString CCephCalc::Get_NumStr(char* text, int n) {
    return or_failed(CString(), [&] { return CString(tool::number_field(text_or_empty(text), n)); });
}
