#include "host/film_reading.h"

#include <film/film.h>

#include <algorithm>

#include "base/date_reader.h"
#include "base/numbers.h"
#include "base/wording.h"
#include "report/film.h"

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
    facts.scale_error = printable(scale.error);
    facts.mm_per_pixel = scale.mm_per_pixel;
    if (!scale.mm_per_pixel) return;
    const bool at_patient = scale.plane == tool::FilmPlane::patient;
    facts.most_mm = *scale.mm_per_pixel * (1 + agrees_within);
    facts.least_mm = *scale.mm_per_pixel / (at_patient ? 1 : most_magnification) * (1 - agrees_within);
    facts.scale_remark = scale_remark(scale);
    facts.scale_source = printable(scale.source);
}

Remark doubt(const char* text, std::vector<std::string> values = {}) {
    return {"film_doubtful", text, std::move(values)};
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
    if (!patient.birth_date.empty() && !facts.birth)
        facts.patient_doubts.push_back(doubt("The birth date in the film's header is none."));
    if (!patient.film_date.empty() && !facts.film)
        facts.patient_doubts.push_back(doubt("The film date in the film's header is none."));
    if (facts.birth && facts.film && *facts.film < *facts.birth)
        facts.patient_doubts.push_back(doubt("The film was taken before the patient's birth."));
    return facts;
}

std::vector<Remark> scale_doubts(const tool::FilmScale& scale, int longest_px, int pictures) {
    // Head films are 18 x 24 to 24 x 30 cm; sensors are smaller, prints may be larger.
    constexpr double least_mm = 60, most_mm = 600;
    std::vector<Remark> doubts;
    for (const tool::FilmDoubt& each : scale.doubts) doubts.push_back(doubt(each.text, {printable(each.value)}));
    if (pictures > 1)
        doubts.push_back(
            doubt("The film's file holds %1 pictures; only the first is read.", {std::to_string(pictures)}));
    if (!scale.mm_per_pixel || longest_px == 0) return doubts;
    const double longest = longest_px * *scale.mm_per_pixel;
    if (longest < least_mm || longest > most_mm)
        doubts.push_back(
            doubt("By its scale the film is %1 mm long, which no head film is.", {with_decimals(longest, 0)}));
    return doubts;
}

void check_film(const std::string& path) {
    if (tool::film_format(path).empty()) stored_film(path);
}

Remark scale_remark(const tool::FilmScale& scale) {
    const std::vector<std::string> values{readable(scale.mm_per_pixel.value()), printable(scale.source)};
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
        if (tool::film_format(file) != "DICOM" && !by_resolution) return {};
        const tool::ReadHeader read = tool::read_film_header(file);
        FilmFacts facts = patient_facts(read.header.patient);
        facts.file = shown_name(file);
        facts.failure = printable(read.error);
        if (!read.error.empty()) return facts;
        const tool::FilmScale scale = by_resolution ? scale_of_resolution(read.header, magnification)
                                                    : scale_of_header(read.header, magnification);
        take_scale(scale, facts);
        facts.scale_doubts = scale_doubts(scale, std::max(read.width, read.height), read.header.frames);
        return facts;
    };
}

}  // namespace cephtool
