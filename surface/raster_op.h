// The sixteen raster operations: how the colour drawn and the colour there combine, bit by bit.
#pragma once

#include <cstdint>

namespace tool {

// The operation's number less one is its truth table: bit 0 for neither, 1 for only there, 2 for only drawn, 3 for
// both.
inline std::uint32_t combined(int rop, std::uint32_t drawn, std::uint32_t there) {
    const int table = rop - 1;
    std::uint32_t result = 0;
    if (table & 1) result |= ~drawn & ~there;
    if (table & 2) result |= ~drawn & there;
    if (table & 4) result |= drawn & ~there;
    if (table & 8) result |= drawn & there;
    return result;
}

}  // namespace tool
