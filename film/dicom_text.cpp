// Texts of a DICOM header in UTF-8. DCMTK's own conversion knows no ISO 2022, which names in Japan are written in,
// where it is built with the iconv of the C library, as Debian's is; so the escapes are followed here.
#include <string>
#ifdef TOOL_FILM_ICONV
#include <iconv.h>
#endif

#include "film/dicom_pixels.h"

namespace tool {
namespace {

constexpr char escape = '\x1B';

// What the bytes of a text stand for: those below 0x80 (G0) and the others (G1).
enum class LowBytes { ascii, kanji, more_kanji };  // ISO 646, JIS X 0208, JIS X 0212

struct CodeSets {
    LowBytes low = LowBytes::ascii;
    const char* high = nullptr;  // as iconv calls it; nothing: none
};

constexpr const char* katakana = "katakana";  // of JIS X 0201

// DICOM PS3.3 C.12.1.1.2: the names of sets, and the escapes that choose them.
struct HighSet {
    const char *name, *escape, *iconv;  // "100" of "ISO_IR 100" and "ISO 2022 IR 100"
} constexpr high_sets[] = {
    {"13", ")I", katakana},      {"100", "-A", "ISO-8859-1"}, {"101", "-B", "ISO-8859-2"},  {"109", "-C", "ISO-8859-3"},
    {"110", "-D", "ISO-8859-4"}, {"144", "-L", "ISO-8859-5"}, {"127", "-G", "ISO-8859-6"},  {"126", "-F", "ISO-8859-7"},
    {"138", "-H", "ISO-8859-8"}, {"148", "-M", "ISO-8859-9"}, {"203", "-b", "ISO-8859-15"}, {"166", "-T", "TIS-620"},
    {"149", "$)C", "EUC-KR"},    {"58", "$)A", "GB2312"},
};
constexpr struct {
    const char* escape;
    LowBytes low;
} low_sets[] = {
    {"(B", LowBytes::ascii}, {"(J", LowBytes::ascii}, {"$B", LowBytes::kanji}, {"$(D", LowBytes::more_kanji}};

// Sets of several bytes that know no escapes.
constexpr struct {
    const char *name, *iconv;
} whole_sets[] = {{"ISO_IR 192", "UTF-8"}, {"GB18030", "GB18030"}, {"GBK", "GBK"}};

// "?" for each byte that can't be converted.
std::string converted([[maybe_unused]] const char* set, const std::string& bytes) {
    std::string text;
#ifdef TOOL_FILM_ICONV
    const iconv_t conversion = iconv_open("UTF-8", set);
    if (conversion != iconv_t(-1)) {
        std::string from = bytes;
        char* next = from.data();
        std::size_t left = from.size();
        while (left > 0) {
            char block[256];
            char* to = block;
            std::size_t room = sizeof block;
            const bool stopped = iconv(conversion, &next, &left, &to, &room) == std::size_t(-1);
            text.append(block, sizeof block - room);
            if (!stopped || left == 0 || room < 8) continue;  // the block is full
            text += '?';
            ++next, --left;
            iconv(conversion, nullptr, nullptr, nullptr, nullptr);
        }
        iconv_close(conversion);
        return text;
    }
#endif
    for (const char byte : bytes) text += static_cast<unsigned char>(byte) < 0x80 ? byte : '?';
    return text;
}

// A half-width katakana: U+FF61 to U+FF9F in the order of the set.
std::string katakana_text(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
        const unsigned code = static_cast<unsigned char>(byte);
        if (code < 0xA1 || code > 0xDF) {
            text += '?';
            continue;
        }
        const unsigned letter = 0xFF61 + code - 0xA1;
        text += {static_cast<char>(0xE0 | letter >> 12), static_cast<char>(0x80 | (letter >> 6 & 0x3F)),
                 static_cast<char>(0x80 | (letter & 0x3F))};
    }
    return text;
}

// JIS X 0208 and 0212 are the two sets of EUC-JP, with their high bits set and the second marked.
std::string kanji_text(const std::string& bytes, bool second) {
    std::string marked;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (second && i % 2 == 0) marked += '\x8F';
        marked += static_cast<char>(bytes[i] | 0x80);
    }
    return converted("EUC-JP", marked);
}

bool is_high(char byte) {
    return static_cast<unsigned char>(byte) >= 0x80;
}

// Changes the sets as the escape that `text` begins with says; its length, 1 for one that is not known.
std::size_t follow_escape(std::string_view text, CodeSets& sets) {
    text.remove_prefix(1);
    for (const auto& set : low_sets)
        if (text.starts_with(set.escape)) return sets.low = set.low, 1 + std::string_view(set.escape).size();
    for (const HighSet& set : high_sets)
        if (text.starts_with(set.escape)) return sets.high = set.iconv, 1 + std::string_view(set.escape).size();
    return 1;
}

// The first of several sets holds from the start of each part of a text.
CodeSets first_sets(std::string_view sets) {
    const std::string_view first = sets.substr(0, sets.find('\\'));
    const std::size_t number = first.rfind(' ');
    for (const HighSet& set : high_sets)
        if (number != first.npos && first.substr(number + 1) == set.name) return {LowBytes::ascii, set.iconv};
    return {};
}

}  // namespace

std::string utf8_of_dicom(const std::string& text, const std::string& character_sets) {
    for (const auto& set : whole_sets)
        if (character_sets == set.name) return converted(set.iconv, text);
    const CodeSets initial = first_sets(character_sets);
    CodeSets sets = initial;
    std::string utf8;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == escape) {
            at += follow_escape(std::string_view(text).substr(at), sets);
            continue;
        }
        const bool high = is_high(text[at]);
        // Parts of a name begin anew; among kanji these are bytes like all others.
        const auto ends_part = [&](char byte) {
            return sets.low == LowBytes::ascii && (byte == '^' || byte == '=' || byte == '\\');
        };
        if (ends_part(text[at])) {
            utf8 += text[at++];
            sets = initial;
            continue;
        }
        std::size_t end = at;
        while (end < text.size() && text[end] != escape && is_high(text[end]) == high && !ends_part(text[end])) ++end;
        const std::string run = text.substr(at, end - at);
        at = end;
        if (high) {
            utf8 += sets.high == katakana ? katakana_text(run) : converted(sets.high ? sets.high : "ASCII", run);
        } else {
            utf8 += sets.low == LowBytes::ascii ? run : kanji_text(run, sets.low == LowBytes::more_kanji);
        }
    }
    return utf8;
}

}  // namespace tool
