#include "framework/input_method.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/code_page.h"
#include "platform/framework/caller_buffer.h"
#include "platform/text.h"

namespace {

// Katakana from U+30A1 to U+30F6 in half-width form: the letter, and behind it its voiced or half-voiced mark. Letters
// without a form of their own (ヮ ヰ ヱ ヵ ヶ) take the nearest one.
constexpr std::u16string_view half_width_katakana =
    u"ｧ ｱ ｨ ｲ ｩ ｳ ｪ ｴ ｫ ｵ ｶ ｶﾞｷ ｷﾞｸ ｸﾞｹ ｹﾞｺ ｺﾞｻ ｻﾞｼ ｼﾞｽ ｽﾞｾ ｾﾞｿ ｿﾞﾀ ﾀﾞﾁ ﾁﾞｯ ﾂ ﾂﾞﾃ ﾃﾞﾄ ﾄﾞﾅ ﾆ ﾇ ﾈ ﾉ "
    u"ﾊ ﾊﾞﾊﾟﾋ ﾋﾞﾋﾟﾌ ﾌﾞﾌﾟﾍ ﾍﾞﾍﾟﾎ ﾎﾞﾎﾟﾏ ﾐ ﾑ ﾒ ﾓ ｬ ﾔ ｭ ﾕ ｮ ﾖ ﾗ ﾘ ﾙ ﾚ ﾛ ﾜ ﾜ ｲ ｴ ｦ ﾝ ｳﾞｶ ｹ ";
static_assert(half_width_katakana.size() == 2 * (0x30F6 - 0x30A1 + 1));

// Marks that come in both widths, full and half.
constexpr std::u16string_view marks = u"。｡「｢」｣、､・･ーｰ゛ﾞ゜ﾟ　 ";

constexpr bool is_hiragana(char16_t c) {
    return c >= u'ぁ' && c <= u'ゖ';
}
constexpr bool is_katakana(char16_t c) {
    return c >= u'ァ' && c <= u'ヶ';
}
constexpr char16_t kana_distance = u'ァ' - u'ぁ';

std::u16string half_width(char16_t c) {
    if (is_katakana(c)) {
        const auto form = half_width_katakana.substr(2u * (c - u'ァ'), 2);
        return std::u16string(form.substr(0, form[1] == u' ' ? 1 : 2));
    }
    for (std::size_t i = 0; i < marks.size(); i += 2)
        if (marks[i] == c) return {marks[i + 1]};
    if (c >= u'！' && c <= u'～') return {static_cast<char16_t>(c - u'！' + u'!')};
    return {c};
}

// Takes one character, or a half-width letter with its mark, off the text.
char16_t take_full_width(std::u16string_view& text) {
    const char16_t c = text[0];
    for (std::size_t length = std::min<std::size_t>(text.size(), 2); length > 0; --length) {
        const std::u16string_view wanted = text.substr(0, length);
        for (char16_t full = u'ァ'; full <= u'ヶ'; ++full) {
            if (full == u'ヮ' || half_width(full) != wanted) continue;  // ﾜ is the plain ワ
            text.remove_prefix(length);
            return full;
        }
    }
    text.remove_prefix(1);
    for (std::size_t i = 0; i < marks.size(); i += 2)
        if (marks[i + 1] == c) return marks[i];
    return c >= u'!' && c <= u'~' ? static_cast<char16_t>(c - u'!' + u'！') : c;
}

std::u16string full_width(std::u16string_view text) {
    std::u16string result;
    while (!text.empty()) result += take_full_width(text);
    return result;
}

std::u16string mapped(std::u16string_view text, DWORD flags) {
    std::u16string wide = flags & LCMAP_FULLWIDTH ? full_width(text) : std::u16string(text);
    for (char16_t& c : wide) {
        if ((flags & LCMAP_KATAKANA) && is_hiragana(c)) {
            c = static_cast<char16_t>(c + kana_distance);
        } else if ((flags & LCMAP_HIRAGANA) && is_katakana(c) && c <= u'ン') {  // what follows has no code as hiragana
            c = static_cast<char16_t>(c - kana_distance);
        }
    }
    if (!(flags & LCMAP_HALFWIDTH)) return wide;
    std::u16string narrow;
    for (const char16_t c : wide) narrow += half_width(c);
    return narrow;
}

void append_code(std::string& text, unsigned code) {
    if (code > 0xFF) text += static_cast<char>(code >> 8);
    text += static_cast<char>(code);
}

}  // namespace

CInputMethod::~CInputMethod() = default;

CString MapKana(LPCSTR text, DWORD flags) {
    std::string result;
    std::u16string run;  // characters with a code, up to one without, whose bytes stay
    const auto finish_run = [&] {
        for (const char16_t c : mapped(run, flags)) append_code(result, tool::code_of_character(c));
        run.clear();
    };
    for (std::string_view rest = tool::view_or_empty(text); !rest.empty();) {
        const std::size_t length = tool::char_length(rest);
        const auto first = static_cast<unsigned char>(rest[0]);
        const unsigned code = length == 2 ? first << 8 | static_cast<unsigned char>(rest[1]) : first;
        const char16_t c = tool::character_of_code(static_cast<std::uint16_t>(code));
        if (c != 0 && tool::code_of_character(c) == code) {
            run += c;
        } else {
            finish_run();
            result += rest.substr(0, length);
        }
        rest.remove_prefix(length);
    }
    finish_run();
    return CString(std::string_view(result));
}
