// What a film is, as "cephtool film" tells it.
#pragma once

#include <film/film.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace cephtool {

struct FilmFact {
    const char *key, *label;
    std::string text;  // "" when it is not known
    std::optional<double> number = {};
    bool personal = false;  // of the patient
};

struct FilmReport {
    std::string file;
    std::vector<FilmFact> facts;  // the same of all films, in the same order
    std::vector<std::string> doubts;
    std::optional<double> mm_per_pixel;
};

FilmReport film_report(const std::string& file, const tool::Film& film);

// Without what is personal; the file, whose name may be the patient's, is called "film 1" by its number.
FilmReport anonymous(FilmReport report, std::size_t number);

std::string film_table(const FilmReport& report, bool colour);
std::string film_json(std::span<const FilmReport> reports);
std::string film_csv(std::span<const FilmReport> reports);

}  // namespace cephtool
