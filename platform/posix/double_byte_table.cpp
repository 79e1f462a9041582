#include <iconv.h>

#include <cstring>

#include "platform/system.h"

namespace tool {
namespace {

class Converter {
 public:
    Converter() : descriptor_(iconv_open("UTF-16LE", "CP932")) {}
    ~Converter() {
        if (is_open()) iconv_close(descriptor_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool is_open() const { return descriptor_ != reinterpret_cast<iconv_t>(-1); }

    // 0 for an undefined code.
    char16_t character(unsigned lead, unsigned trail) {
        char in[2] = {static_cast<char>(lead), static_cast<char>(trail)};
        unsigned char out[4] = {};
        char* from = in;
        char* to = reinterpret_cast<char*>(out);
        std::size_t in_left = sizeof in, out_left = sizeof out;
        iconv(descriptor_, nullptr, nullptr, nullptr, nullptr);
        if (iconv(descriptor_, &from, &in_left, &to, &out_left) == static_cast<std::size_t>(-1) || out_left != 2)
            return 0;
        return static_cast<char16_t>(out[0] | out[1] << 8);
    }

 private:
    iconv_t descriptor_;
};

}  // namespace

void read_double_byte_table(std::span<char16_t, lead_byte_count * trail_byte_count> table) {
    Converter converter;
    if (!converter.is_open()) return;
    std::size_t next = 0;
    for (unsigned lead = 0x81; lead <= 0xFC; ++lead) {
        if (lead == 0xA0) lead = 0xE0;
        for (unsigned trail = 0x40; trail <= 0xFC; ++trail)
            if (trail != 0x7F) table[next++] = converter.character(lead, trail);
    }
}

}  // namespace tool
