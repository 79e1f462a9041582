// film_open FILE [TIMES]: opens an X-ray so many times. Prints the least time and the least time of
// the processors in ms, the samples' size and the most
// memory that the process had beyond what it began with, both in MB; bench/film_bench makes a table of it.
#include <film/film.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

namespace {

double peak_mb() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmHWM:") return status >> word, std::atof(word.c_str()) * 1024 / 1e6;
    return 0;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) return std::fprintf(stderr, "usage: film_open FILE [TIMES]\n"), 2;
    const double before_mb = peak_mb();
    double least_ms = 1e9, least_cpu_ms = 1e9, size_mb = 0, most_mb = 0;
    for (int i = 0; i < (count > 2 ? std::atoi(arguments[2]) : 5); ++i) {
        const auto begin = std::chrono::steady_clock::now();
        const std::clock_t cpu_begin = std::clock();
        const tool::Film film = tool::read_film(arguments[1]);
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - begin;
        const double cpu_ms = 1e3 * static_cast<double>(std::clock() - cpu_begin) / CLOCKS_PER_SEC;
        if (!film) return std::fprintf(stderr, "%s: %s\n", arguments[1], film.error.c_str()), 1;
        least_ms = std::min(least_ms, taken.count());
        least_cpu_ms = std::min(least_cpu_ms, cpu_ms);
        size_mb = static_cast<double>(film.grey.size() * 2 + film.colour.size() * 4) / 1e6;
        if (i == 0) most_mb = peak_mb() - before_mb;
    }
    std::printf("%.1f %.1f %.1f %.1f\n", least_ms, least_cpu_ms, size_mb, most_mb);
}
