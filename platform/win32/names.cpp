#include "platform/win32/names.h"

#include <algorithm>

#include "framework/scalars.h"
#include "platform/code_page.h"
#include "platform/text.h"

namespace tool::win32 {

std::wstring wide_from_utf8(std::string_view utf8) {
    const int length = static_cast<int>(utf8.size());
    std::wstring text(utf8.size(), L'\0');
    text.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::wstring wide(std::string_view text) {
    return wide_from_utf8(utf8_from_code_page(text));
}

std::optional<std::string> code_page_text(std::wstring_view wide) {
    const int length = static_cast<int>(wide.size());
    std::string utf8(3 * wide.size(), '\0');
    utf8.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(),
                                                             static_cast<int>(utf8.size()), nullptr, nullptr)));
    return code_page_from_utf8(utf8);
}

std::string nearest_code_page_text(std::wstring_view wide) {
    std::string text;
    for (const wchar_t unit : wide) text += code_page_text({&unit, 1}).value_or("?");
    return text;
}

std::wstring spelled(std::string_view path) {
    std::wstring name = wide(path);
    std::ranges::replace(name, L'/', L'\\');
    return name;
}

std::optional<std::string> code_page_name(std::wstring_view name) {
    std::optional<std::string> text = code_page_text(name);
    if (text && wide(*text) != name) text.reset();
    return text;
}

}  // namespace tool::win32
