#include "platform/code_page.h"

#include "CodePage.h"
#include "platform/framework/caller_buffer.h"
#include "platform/or_failed.h"

std::string Utf8FromCodePage932(const char* text) {
    return tool::or_failed(std::string(), [&] { return tool::utf8_from_code_page(tool::view_or_empty(text)); });
}

bool CodePage932FromUtf8(const char* utf8, CString* out) {
    out->Empty();
    return tool::or_failed(false, [&] {
        const auto text = tool::code_page_from_utf8(tool::view_or_empty(utf8));
        if (text) *out = CString(std::string_view(*text));
        return text.has_value();
    });
}
