#include "base/utf8.h"

namespace cephtool {
namespace {

unsigned byte_at(std::string_view text, std::size_t i) {
    return static_cast<unsigned char>(text[i]);
}

}  // namespace

Utf8Character first_character(std::string_view text) {
    const unsigned lead = byte_at(text, 0);
    if (lead < 0x80) return {lead, 1, true};
    const std::size_t bytes = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < bytes) return {};
    char32_t character = lead & (0x7Fu >> bytes);
    for (std::size_t i = 1; i < bytes; ++i) {
        if ((byte_at(text, i) & 0xC0) != 0x80) return {};
        character = character << 6 | (byte_at(text, i) & 0x3F);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    if (character < smallest[bytes] || character > 0x10FFFF || surrogate) return {};
    return {character, bytes, true};
}

char32_t next_character(std::string_view& text) {
    const Utf8Character first = first_character(text);
    text.remove_prefix(first.bytes);
    return first.code;
}

std::size_t first_malformed(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Character first = first_character(text.substr(at));
        if (!first.well_formed) return at;
        at += first.bytes;
    }
    return std::string_view::npos;
}

}  // namespace cephtool
