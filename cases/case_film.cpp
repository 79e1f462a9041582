#include "cases/case_film.h"

#include <cmath>

#include "base/numbers.h"
#include "base/path.h"
#include "base/wording.h"
#include "cases/case_record.h"

namespace cephtool {
namespace {

constexpr const char* say_scale = "Say how many millimetres a pixel is: --scale 0.1, or in the file itself.";
constexpr const char* say_which =
    "Say which scale is right: --scale 0.1, or measured on a ruler: --ruler 100,50,100,450=40mm.";

void remark_scale(Case& record, const FilmFacts& film) {
    if (film.scale_remark) record.remarks.push_back(*film.scale_remark);
    record.remarks.insert(record.remarks.end(), film.scale_doubts.begin(), film.scale_doubts.end());
}

// Throws when the film was asked for a scale and gives none.
double scale_of(const Source& source, const FilmFacts& film) {
    if (!film.failure.empty()) throw source.error("its X-ray can't be asked for the scale: " + film.failure, say_scale);
    if (!film.scale_error.empty())
        throw source.error("its X-ray " + film.file + " contradicts itself: " + film.scale_error, say_which);
    if (!film.mm_per_pixel)
        throw source.error("neither the case nor its X-ray " + film.file + " has a scale, so no length can be measured",
                           say_scale);
    if (!is_scale(*film.mm_per_pixel))
        throw source.error("by its X-ray " + film.file + " a pixel is " + shortest(*film.mm_per_pixel) + " mm wide",
                           say_scale);
    return *film.mm_per_pixel;
}

void take_film_scale(Case& record, const Source& source, const std::optional<FilmFacts>& film, bool asked_for) {
    if (!film && asked_for)
        throw source.error("the scale is to be that of the X-ray, and the case names none that says its scale",
                           "Name the X-ray in the case, or with --image.");
    if (!film) {
        std::error_code failure;
        const std::string image = "its X-ray " + shown_name(record.image);
        const std::string what = record.image.empty() ? "the case has no scale"
                                 : std::filesystem::exists(path_from_utf8(image_file(record)), failure)
                                     ? "neither the case nor " + image + " has a scale"
                                     : "the case has no scale, and " + image + " is not there";
        throw source.error(what + ", so no length can be measured", say_scale);
    }
    const double mm = scale_of(source, *film);
    if (record.mm_per_pixel && *record.mm_per_pixel != mm)
        record.remarks.push_back({"scale_replaced",
                                  "The scale is that of the command line, %1 mm a pixel, not the %2 of the file.",
                                  {readable(mm), readable(*record.mm_per_pixel)}});
    record.mm_per_pixel = mm;
    remark_scale(record, *film);
}

// A case and its film may both have a scale.
void compare_scales(Case& record, const Source& source, const FilmFacts& film) {
    constexpr double equal_within = 0.001;
    if (!film.scale_error.empty())
        record.remarks.push_back({"film_doubtful",
                                  "The X-ray %1 contradicts itself; the scale is that of the case. %2",
                                  {film.file, film.scale_error}});
    if (!film.mm_per_pixel) return;
    const double mm = record.mm_per_pixel.value();
    if (std::abs(mm - *film.mm_per_pixel) <= equal_within * mm) {
        remark_scale(record, film);
    } else if (mm < film.least_mm || mm > film.most_mm) {
        throw source.error("the scale of the case, " + readable(mm) + " mm a pixel, contradicts its X-ray " +
                               film.file + ", " + readable(*film.mm_per_pixel) + " mm (" + film.scale_source + ")",
                           "Say which is right: --scale " + readable(mm) + " or --scale film.");
    }
}

}  // namespace

std::optional<FilmFacts> facts_of_film(Case& record, const Source& source, const CaseOptions& options) {
    if (record.image.empty() || !options.film_facts) return {};
    std::optional<FilmFacts> film = options.film_facts(image_file(record));
    if (!film || film->failure.empty()) return film;
    if (!options.image.empty())
        throw source.error("its X-ray " + film->file + " can't be read: " + film->failure, "Name another, or none.");
    record.remarks.push_back(
        {"film_doubtful", "The X-ray %1 can't be asked for scale and patient. %2", {film->file, film->failure}});
    return film;
}

void complete_patient(Case& record, const Source& source, const FilmFacts& film) {
    std::vector<std::string> taken;
    const auto take = [&](auto& field, const auto& known, const char* what) {
        if (field == std::remove_cvref_t<decltype(field)>{} && field != known) field = known, taken.emplace_back(what);
    };
    if (record.sex && film.sex && record.sex != film.sex)
        record.remarks.push_back({"other_patient", "Another patient? The sex is not that of %1.", {film.file}});
    if (record.birth && film.birth && record.birth != film.birth)
        record.remarks.push_back({"other_patient",
                                  "Another patient? Born on %1, in %2 on %3.",
                                  {text_of(*record.birth), film.file, text_of(*film.birth)}});
    take(record.name, film.name, "name");
    take(record.sex, film.sex, "sex");
    take(record.birth, film.birth, "birth");
    take(record.film, film.film, "film date");
    take(record.side, film.side, "side");
    if (!record.birth || !record.film)
        record.remarks.insert(record.remarks.end(), film.patient_doubts.begin(), film.patient_doubts.end());
    if (taken.empty()) return;
    if (record.birth && record.film && *record.film < *record.birth)
        throw source.error(
            "the film of " + text_of(*record.film) + " was taken before birth (" + text_of(*record.birth) + ")",
            "One of the dates is from the header of " + film.file + ". Write the right ones into the case.");
    record.remarks.push_back({"patient_of_film", "From the header of %1: %*2.", {film.file, joined(taken, ", ")}});
}

void settle_scale(Case& record, const Source& source, const CaseOptions& options,
                  const std::optional<FilmFacts>& film) {
    const bool of_film = options.film_scale != FilmScaleUse::where_missing;
    if (options.mm_per_pixel) {
        if (record.mm_per_pixel.value_or(*options.mm_per_pixel) != *options.mm_per_pixel) {
            record.remarks.push_back({"scale_replaced",
                                      "The scale is that of the command line, %1 mm a pixel, not the %2 of the file.",
                                      {readable(*options.mm_per_pixel), readable(*record.mm_per_pixel)}});
        }
        record.mm_per_pixel = options.mm_per_pixel;
        if (options.scale_remark) record.remarks.push_back(*options.scale_remark);
    } else if (options.scale_may_lack && !record.mm_per_pixel && !film && !of_film) {
        return;
    } else if (of_film || !record.mm_per_pixel) {
        take_film_scale(record, source, film, of_film);
    } else if (options.magnification) {
        throw source.error("the case has a scale of its own, " + readable(*record.mm_per_pixel) +
                               " mm a pixel at the patient, and --magnification is to change it",
                           "If it is that of the detector, say so: --scale " + readable(*record.mm_per_pixel) +
                               " --magnification " + readable(*options.magnification));
    } else if (film) {
        compare_scales(record, source, *film);
    }
}

std::string image_seen_from(const std::string& case_file, const std::string& image) {
    const std::filesystem::path path = path_from_utf8(image), here = ".";
    const std::filesystem::path folder = path_from_utf8(case_file).parent_path();
    if (path.has_root_path()) return image;
    if (folder.empty()) return utf8_from_path(path.generic_u8string());
    std::error_code error;
    std::filesystem::path way = std::filesystem::relative(here / path, here / folder, error);
    if (way.empty()) way = std::filesystem::absolute(path, error);  // on another drive
    return utf8_from_path(way.generic_u8string());                  // "/" is understood everywhere
}

}  // namespace cephtool
