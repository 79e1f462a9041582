#include "study/films.h"

#include <algorithm>

#include "base/path.h"
#include "base/wording.h"

namespace cephtool {
namespace {

constexpr std::size_t least_films = 3;

void check_alike(const StudyFilm& film, Kind kind) {
    const Case& first = film.readings.front();
    for (const Case& each : film.readings) {
        if (each.kind != kind)
            throw Error(ExitCode::bad_input, printable(each.file) + " is of another kind than the first case",
                        "Study films of one kind.");
        if (each.mm_per_pixel != first.mm_per_pixel)
            throw Error(ExitCode::bad_input, printable(each.file) + " has another scale than " + printable(first.file),
                        "Readings are compared on the same picture: --scale gives all of them one scale.");
    }
}

}  // namespace

void StudyReading::add(const std::string& film, Case record) {
    Error twice(ExitCode::bad_input, "there is another case " + in_quotes(film) + " in this reading",
                "Films go by the names of their files, those of a file with several by their number.");
    twice.file = record.file;
    if (!cases_.emplace(film, std::move(record)).second) throw twice;
    names_.push_back(film);
}

void StudyReading::add_file(const std::string& file, std::vector<Case> cases) {
    const std::string stem = utf8_from_path(path_from_utf8(file).stem().stem());
    for (std::size_t i = 0; i < cases.size(); ++i)
        add(cases.size() == 1 ? stem : std::to_string(i + 1), std::move(cases[i]));
}

std::vector<StudyFilm> films_of(std::vector<StudyReading> readings, std::size_t& left_out) {
    std::vector<StudyFilm> films;
    for (const std::string& name : readings.front().names_) {
        if (!std::ranges::all_of(readings, [&](const StudyReading& each) { return each.cases_.contains(name); }))
            continue;
        StudyFilm& film = films.emplace_back(StudyFilm{name, {}});
        for (StudyReading& reading : readings) film.readings.push_back(std::move(reading.cases_.at(name)));
        check_alike(film, films.front().readings.front().kind);
    }
    if (films.empty()) {
        throw Error(
            ExitCode::bad_input, "the readings have no film in common",
            "Films go by the names of their files: name the files of a film alike, in a folder for each reading.");
    }
    left_out = 0;
    for (const StudyReading& reading : readings) left_out = std::max(left_out, reading.names_.size() - films.size());
    if (films.size() < least_films)
        throw Error(ExitCode::bad_input, "fewer than three films are in all readings", "Read more films twice.");
    return films;
}

}  // namespace cephtool
