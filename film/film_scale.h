// How wide a pixel of a film is at the patient, as far as the film's file says it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "film/film_header.h"

namespace tool {

// Where a pixel has its width. The patient stands between source and detector, so every film is enlarged: in a
// cephalostat the median plane by 8 to 15 %.
enum class FilmPlane {
    patient,   // the enlargement is out of the width
    detector,  // it is still in it: lengths come out too long
    unknown    // the file doesn't say
};

// A sentence in which "%1" stands for the value, so that hosts can translate it.
struct FilmDoubt {
    const char* text;
    std::string value = {};

    std::string sentence() const;
};

struct FilmScale {
    std::optional<double> mm_per_pixel;  // nothing when the file has none, or `error` says why it can't be used
    FilmPlane plane = FilmPlane::unknown;
    std::string source;  // "Imager Pixel Spacing (0018,1164) 0.1 mm / Estimated Radiographic ... (0018,1114) 1.1"
    std::string error;   // what the file says against itself, in a sentence
    std::vector<FilmDoubt> doubts;
};

// Out of a DICOM header, by PS3.3 10.7 and C.8.11.5: a Pixel Spacing that was calibrated is that of the patient; Imager
// Pixel Spacing is that of the detector, to be divided by the magnification; a Pixel Spacing alone may be either. The
// magnification is the one given, else the factor in the header, else what its distances come to.
FilmScale scale_of_header(const FilmHeader& header, std::optional<double> magnification = {});

// Out of the resolution that TIFF, PNG and JPEG files note. Mostly it is what the last program that wrote the file had
// for a screen or a printer, so it is for whoever knows better.
FilmScale scale_of_resolution(const FilmHeader& header, std::optional<double> magnification = {});

}  // namespace tool
