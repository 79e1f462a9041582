#include "framework/scalars.h"
#include "platform/system.h"

namespace tool {

void read_double_byte_table(std::span<char16_t, lead_byte_count * trail_byte_count> table) {
    std::size_t next = 0;
    for (unsigned lead = 0x81; lead <= 0xFC; ++lead) {
        if (lead == 0xA0) lead = 0xE0;
        for (unsigned trail = 0x40; trail <= 0xFC; ++trail) {
            if (trail == 0x7F) continue;
            const char code[2] = {static_cast<char>(lead), static_cast<char>(trail)};
            wchar_t character[2];
            const bool defined = MultiByteToWideChar(932, MB_ERR_INVALID_CHARS, code, 2, character, 2) == 1;
            table[next++] = defined ? static_cast<char16_t>(character[0]) : u'\0';
        }
    }
}

}  // namespace tool
