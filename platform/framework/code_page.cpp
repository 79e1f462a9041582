#include "platform/code_page.h"

#include "CodePage.h"
#include "platform/framework/caller_buffer.h"

std::string Utf8FromCodePage932(const char* text) {
    return tool::utf8_from_code_page(tool::view_or_empty(text));
}

bool CodePage932FromUtf8(const char* utf8, CString* out) {
    const auto text = tool::code_page_from_utf8(tool::view_or_empty(utf8));
    *out = CString(std::string_view(text ? *text : std::string()));
    return text.has_value();
}
