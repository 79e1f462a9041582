// Writes the characters of double_byte_table.cpp when the library is built, so that the text of a program that runs
// does not hang on which converters its system has, or on whether one can be opened just then.
#include <iconv.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

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
    unsigned character(unsigned lead, unsigned trail) {
        char in[2] = {static_cast<char>(lead), static_cast<char>(trail)};
        unsigned char out[4] = {};
        char* from = in;
        char* to = reinterpret_cast<char*>(out);
        std::size_t in_left = sizeof in, out_left = sizeof out;
        iconv(descriptor_, nullptr, nullptr, nullptr, nullptr);
        if (iconv(descriptor_, &from, &in_left, &to, &out_left) == static_cast<std::size_t>(-1) || out_left != 2)
            return 0;
        return out[0] | out[1] << 8u;
    }

 private:
    iconv_t descriptor_;
};

}  // namespace

int main(int argc, char** argv) {
    Converter converter;
    if (argc != 2 || !converter.is_open()) {
        std::fputs("write_double_byte_characters FILE: needs an iconv that knows CP932\n", stderr);
        return EXIT_FAILURE;
    }
    std::ofstream file(argv[1]);
    for (unsigned lead = 0x81; lead <= 0xFC; ++lead) {
        if (lead == 0xA0) lead = 0xE0;
        for (unsigned trail = 0x40; trail <= 0xFC; ++trail)
            if (trail != 0x7F) file << converter.character(lead, trail) << ',';
        file << '\n';
    }
    return file.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}
