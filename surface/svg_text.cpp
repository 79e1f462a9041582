#include "surface/svg_text.h"

#include <algorithm>
#include <cstdint>

#include "platform/char_conversion.h"

namespace tool {

std::string svg_number(double value) {
    char digits[400];  // the largest double has 309 before the point
    const auto end = to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 3).ptr;
    std::string text(digits, end);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string svg_color(COLORREF color) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "#";
    for (const BYTE part : {GetRValue(color), GetGValue(color), GetBValue(color)}) {
        text += digits[part >> 4];
        text += digits[part & 15];
    }
    return text;
}

std::string xml_escaped(std::string_view utf8) {
    std::string text;
    for (const char c : utf8) {
        switch (c) {
            case '&': text += "&amp;"; break;
            case '<': text += "&lt;"; break;
            case '>': text += "&gt;"; break;
            case '"': text += "&quot;"; break;
            default:
                if (static_cast<unsigned char>(c) >= ' ') text += c;
        }
    }
    return text;
}

std::string base64(std::string_view bytes) {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(bytes.size(), 3))) {
        std::uint32_t three = 0;
        for (std::size_t i = 0; i < 3; ++i)
            three = three << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u);
        for (std::size_t i = 0; i < 4; ++i) text += i <= bytes.size() ? digits[three >> (18 - 6 * i) & 63] : '=';
    }
    return text;
}

}  // namespace tool
