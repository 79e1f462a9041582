// Which cases of several readings are of one film.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "study/reliability.h"

namespace cephtool {

// One reading of films.
class StudyReading {
 public:
    // The cases of a file. Its film goes by the name of the file without folder and end, those of a file with several
    // by their number, from 1. Throws an Error that names the file when the reading has the film.
    void add_file(const std::string& file, std::vector<Case> cases);
    void add(const std::string& film, Case record);

 private:
    friend std::vector<StudyFilm> films_of(std::vector<StudyReading> readings, std::size_t& left_out);
    std::vector<std::string> names_;  // of the films, in their order
    std::map<std::string, Case> cases_;
};

// The films that all readings have, in the order of the first, and how many are left out. Throws an Error when they are
// fewer than three, of unlike kinds, or of another scale in another reading.
std::vector<StudyFilm> films_of(std::vector<StudyReading> readings, std::size_t& left_out);

}  // namespace cephtool
