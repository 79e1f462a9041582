#include "host/film_reading.h"

#include <film/film.h>

#include "base/date_reader.h"
#include "base/numbers.h"
#include "base/wording.h"

namespace cephtool {
namespace {

// "20250602", or "2025.06.02" of old files. Some archives write the year 1 or 1900 where they know none; a date that
// is none is left out.
std::optional<Date> date_of(const std::string& text) {
    try {
        const Date date = read_date(text);
        constexpr int first_xrays = 1896;
        if (static_cast<int>(date.year()) >= first_xrays) return date;
    } catch (const Error&) {
    }
    return {};
}

void take_scale(const tool::FilmScale& scale, FilmFacts& facts) {
    constexpr double agrees_within = 0.01, most_magnification = 1.5;
    facts.scale_error = scale.error;
    facts.mm_per_pixel = scale.mm_per_pixel;
    if (!scale.mm_per_pixel) return;
    const bool at_patient = scale.plane == tool::FilmPlane::patient;
    facts.most_mm = *scale.mm_per_pixel * (1 + agrees_within);
    facts.least_mm = *scale.mm_per_pixel / (at_patient ? 1 : most_magnification) * (1 - agrees_within);
    facts.scale_remark = scale_remark(scale);
    facts.scale_source = scale.source;
    facts.doubts = scale.doubts;
}

}  // namespace

FilmFacts patient_facts(const tool::FilmPatient& patient) {
    FilmFacts facts;
    facts.name = printable(patient.name);
    if (patient.sex == "M") facts.sex = Sex::male;
    if (patient.sex == "F") facts.sex = Sex::female;
    facts.birth = date_of(patient.birth_date);
    facts.film = date_of(patient.film_date);
    if (patient.laterality == "L") facts.side = Side::left;
    if (patient.laterality == "R") facts.side = Side::right;
    return facts;
}

Remark scale_remark(const tool::FilmScale& scale) {
    const std::vector<std::string> values{readable(scale.mm_per_pixel.value()), scale.source};
    switch (scale.plane) {
        case tool::FilmPlane::patient:
            return {"scale_of_film", "The scale is that of the film, %1 mm a pixel: %2. Magnification is out of it.",
                    values};
        case tool::FilmPlane::detector:
            return {"scale_magnified",
                    "The scale is that of the film, %1 mm a pixel: %2. Magnification is still in it, so that lengths "
                    "are too long; --magnification takes it out.",
                    values};
        case tool::FilmPlane::unknown: break;
    }
    return {"scale_unsettled",
            "The scale is that of the film, %1 mm a pixel: %2. The film does not say whether magnification is out of "
            "it; --magnification takes it out.",
            values};
}

std::function<std::optional<FilmFacts>(const std::string& file)> film_reader(FilmScaleUse use,
                                                                             std::optional<double> magnification) {
    return [=](const std::string& file) -> std::optional<FilmFacts> {
        const bool by_resolution = use == FilmScaleUse::resolution;
        const bool dicom = tool::is_dicom(file);
        if (!dicom && !by_resolution) return {};
        const tool::ReadHeader read = tool::read_film_header(file);
        FilmFacts facts = patient_facts(read.header.patient);
        facts.file = shown_name(file);
        facts.failure = printable(read.error);
        if (read.error.empty()) {
            take_scale(by_resolution ? scale_of_resolution(read.header, magnification)
                                     : scale_of_header(read.header, magnification),
                       facts);
        }
        return facts;
    };
}

}  // namespace cephtool
