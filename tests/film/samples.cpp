// samples FILE: the film's samples as they are stored, as PGM (P5, 16 bits; of signed samples counted from the lowest)
// or PPM, for tests/film/compare.
#include <cstdio>

#include "film/film.h"

int main(int count, char** arguments) {
    if (count != 2) return 2;
    const tool::Film film = tool::read_film(arguments[1]);
    if (!film) return std::fprintf(stderr, "%s: %s\n", arguments[1], film.error.c_str()), 1;
    const bool grey = !film.grey.empty();
    std::printf("P%d %d %d %d\n", grey ? 5 : 6, film.width, film.height, grey ? 65535 : 255);
    for (const std::uint16_t sample : film.grey) std::putchar(sample >> 8), std::putchar(sample & 0xFF);
    for (const std::uint32_t pixel : film.colour)
        for (const int shift : {16, 8, 0}) std::putchar(static_cast<int>(pixel >> shift & 0xFF));
}
