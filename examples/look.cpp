// look FILE: what an X-ray is, and which greys of a screen it is shown with.
#include <film/window.h>

#include <algorithm>
#include <cstdio>

int main(int count, char** arguments) {
    if (count != 2) return std::fprintf(stderr, "usage: look FILE\n"), 2;
    const tool::Film film = tool::read_film(arguments[1]);
    if (!film) return std::fprintf(stderr, "%s\n", film.error.c_str()), 1;
    std::printf("%s, %s, %d x %d, %d bits\n", film.header.format.c_str(), film.header.compression.c_str(), film.width,
                film.height, film.bits);
    if (film.grey.empty()) return 0;
    const auto [darkest, brightest] = std::minmax_element(film.grey.begin(), film.grey.end());
    const auto table = tool::shades(film);  // 8 bits of a screen for each value of a sample
    std::printf("from %d to %d\n", table[*darkest], table[*brightest]);
}
