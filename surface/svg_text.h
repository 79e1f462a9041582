// Pieces of SVG: numbers, colours, escaped text, Base64.
#pragma once

#include <string>
#include <string_view>

#include "framework/scalars.h"

namespace tool {

// Up to three decimals, without trailing zeros; "." whatever the locale.
std::string svg_number(double value);
std::string svg_color(COLORREF color);  // "#rrggbb"

// For content and attribute values. Control characters, which XML can't have, are left out.
std::string xml_escaped(std::string_view utf8);
std::string base64(std::string_view bytes);

}  // namespace tool
