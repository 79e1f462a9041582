// Code page 932 to and from UTF-8, with the platform's own choices where tables differ.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

// Undefined codes and a lead byte without its trail byte become U+30FB.
std::string utf8_from_code_page(std::string_view text);

// Characters without a code of their own get the platform's nearest one ("é" becomes "e"). Nothing when a character
// has not even that, or the UTF-8 is broken.
std::optional<std::string> code_page_from_utf8(std::string_view utf8);

// The character of a code (one byte, or lead * 256 + trail), and back. 0 where there is none.
char16_t character_of_code(std::uint16_t code);
std::uint16_t code_of_character(char16_t character);

}  // namespace tool
