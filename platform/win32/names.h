// Text and names as the system spells them: UTF-16, in names with "\".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tool::win32 {

// Of a text in code page 932, by the library's own table: the same whatever the system's code page is.
std::wstring wide(std::string_view text);
// Nothing when code page 932 can't write it.
std::optional<std::string> code_page_text(std::wstring_view wide);

// As that, with "?" for what code page 932 can't write.
std::string nearest_code_page_text(std::wstring_view wide);

std::wstring spelled(std::string_view path);
// A name in code page 932; nothing for one that no path in code page 932 could name.
std::optional<std::string> code_page_name(std::wstring_view name);

// UTF-8 to UTF-16.
std::wstring wide_from_utf8(std::string_view utf8);

}  // namespace tool::win32
