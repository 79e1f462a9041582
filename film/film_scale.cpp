#include "film/film_scale.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/char_conversion.h"

namespace tool {
namespace {

constexpr double square_within = 0.001;  // 0.1 mm in a face of 100 mm
constexpr double same_within = 0.01;     // headers round their factors to two or three digits
constexpr double most_usual_magnification = 1.5;

constexpr const char* imager_name = "Imager Pixel Spacing (0018,1164)";
constexpr const char* pixel_name = "Pixel Spacing (0028,0030)";
constexpr const char* factor_name = "Estimated Radiographic Magnification Factor (0018,1114)";
constexpr const char* distances_name = "its distances (0018,1110) and (0018,1111)";

// Six digits, more than any header means.
std::string text_of(double number) {
    std::array<char, 32> digits;
    const auto end = to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::general, 6);
    return {digits.data(), end.ptr};
}

bool differ(double one, double other, double part) {
    return !(std::abs(one - other) <= part * std::max(std::abs(one), std::abs(other)));
}

// What a film is enlarged by, and who says so.
struct Magnification {
    double over, under;  // a ratio, so that 0.11 mm * 1500 / 1650 comes to 0.1
    std::string source;

    double factor() const { return over / under; }
};

class HeaderScale {
 public:
    HeaderScale(const DicomScale& tags, std::optional<double> given) : tags_(tags), given_(given) {}

    FilmScale scale() {
        const std::optional<double> imager = width(tags_.imager_spacing, imager_name);
        const std::optional<double> pixel = width(tags_.pixel_spacing, pixel_name);
        check_aspect();
        const std::optional<Magnification> noted = noted_magnification();
        const bool typed = is_known(tags_.calibration_type);
        if (pixel && (typed || (imager && differ(*pixel, *imager, square_within)))) {
            take_calibrated(*pixel, imager, noted);
        } else if (imager) {
            take(*imager, imager_name, given_ ? given() : noted, FilmPlane::detector);
        } else if (pixel) {
            take(*pixel, pixel_name, given(), FilmPlane::unknown);
            if (noted && !given_)
                scale_.doubts.push_back(
                    {"The film notes a magnification of %1, which may be out of its Pixel Spacing "
                     "or not; it is not applied.",
                     text_of(noted->factor())});
        }
        doubt_calibration(pixel.has_value());
        if (!scale_.error.empty()) scale_.mm_per_pixel.reset();
        return std::move(scale_);
    }

 private:
    // The first contradiction is told.
    void fail(const std::string& sentence) {
        if (scale_.error.empty()) scale_.error = sentence;
    }

    std::optional<double> width(const std::optional<PixelSpacing>& spacing, const char* name) {
        if (!spacing) return {};
        if (!(spacing->down_mm > 0 && spacing->across_mm > 0)) {
            fail(std::string(name) + " is " + text_of(spacing->down_mm) + "\\" + text_of(spacing->across_mm) +
                 ", which is no width.");
            return {};
        }
        if (differ(spacing->down_mm, spacing->across_mm, square_within)) {
            fail("Its pixels are not square: by " + std::string(name) + " rows lie " + text_of(spacing->down_mm) +
                 " mm apart and columns " + text_of(spacing->across_mm) + " mm.");
        }
        return spacing->across_mm;
    }

    void check_aspect() {
        if (!tags_.aspect_down || !tags_.aspect_across ||
            !differ(*tags_.aspect_down, *tags_.aspect_across, square_within))
            return;
        fail("Its pixels are not square: Pixel Aspect Ratio (0028,0034) is " + text_of(*tags_.aspect_down) + ":" +
             text_of(*tags_.aspect_across) + ".");
    }

    std::optional<Magnification> given() const {
        if (!given_) return {};
        return Magnification{*given_, 1, "the magnification given, " + text_of(*given_)};
    }

    // A zero stands where a device knows none.
    std::optional<Magnification> noted_magnification() {
        const double factor = tags_.magnification.value_or(0);
        const double detector = tags_.detector_distance.value_or(0), patient = tags_.patient_distance.value_or(0);
        std::optional<Magnification> noted;
        if (detector != 0 && patient != 0) {
            noted = {detector, patient,
                     "Distance Source to Detector (0018,1110) " + text_of(detector) +
                         " mm / Distance Source to Patient (0018,1111) " + text_of(patient) +
                         " mm = " + text_of(detector / patient)};
        }
        if (factor != 0) {
            if (noted && !given_ && differ(noted->factor(), factor, same_within)) {
                fail("Its magnification is " + text_of(factor) + " by " + factor_name + " and " +
                     text_of(noted->factor()) + " by " + distances_name + ".");
            }
            noted = {factor, 1, std::string(factor_name) + " " + text_of(factor)};
        }
        if (noted && !given_ && !(noted->factor() >= 1)) {
            fail("Its magnification is " + text_of(noted->factor()) + ", but X-rays never make smaller (" +
                 noted->source + ").");
            return {};
        }
        return noted;
    }

    void take_calibrated(double pixel, std::optional<double> imager, const std::optional<Magnification>& noted) {
        const std::string& type = tags_.calibration_type;
        if (given_) fail(std::string("The magnification is out of its ") + pixel_name + " already, and one is given.");
        if (imager && pixel > *imager * (1 + same_within)) {
            fail("Its pixels would be larger at the patient (" + std::string(pixel_name) + " " + text_of(pixel) +
                 " mm) than on the detector (" + imager_name + " " + text_of(*imager) + " mm).");
        }
        // An object of known size may have stood elsewhere than the distances say.
        if (imager && noted && type != "FIDUCIAL" && differ(pixel * noted->factor(), *imager, same_within)) {
            fail(std::string(pixel_name) + " is " + text_of(pixel) + " mm, but " + imager_name + " " +
                 text_of(*imager) + " mm / " + noted->source + " comes to " + text_of(*imager / noted->factor()) +
                 " mm.");
        }
        if (type.empty())
            scale_.doubts.push_back(
                {"The film's Pixel Spacing was calibrated, but the film does not say how (0028,0A02)."});
        take(pixel, std::string(pixel_name) + ", calibrated" + (type.empty() ? "" : " (" + type + ")"), {},
             FilmPlane::patient);
    }

    void take(double width, const std::string& name, const std::optional<Magnification>& magnification,
              FilmPlane plane) {
        scale_.mm_per_pixel = magnification ? width * magnification->under / magnification->over : width;
        scale_.plane = magnification ? FilmPlane::patient : plane;
        scale_.source = name + " " + text_of(width) + " mm" + (magnification ? " / " + magnification->source : "");
        if (magnification && magnification->factor() > most_usual_magnification)
            scale_.doubts.push_back({"A magnification of %1 is unusual.", text_of(magnification->factor())});
    }

    void doubt_calibration(bool has_pixel_spacing) {
        const std::string& type = tags_.calibration_type;
        if (type.empty()) return;
        if (!has_pixel_spacing)
            scale_.doubts.push_back({"The film has a calibration type (0028,0A02), but no Pixel Spacing (0028,0030)."});
        else if (!is_known(type))
            scale_.doubts.push_back({"The film's calibration type (0028,0A02), %1, is not known.", type});
    }

    static bool is_known(const std::string& type) { return type == "GEOMETRY" || type == "FIDUCIAL"; }

    const DicomScale& tags_;
    std::optional<double> given_;
    FilmScale scale_;
};

}  // namespace

std::string FilmDoubt::sentence() const {
    std::string all = text;
    const std::size_t place = all.find("%1");
    return place == std::string::npos ? all : all.replace(place, 2, value);
}

FilmScale scale_of_header(const FilmHeader& header, std::optional<double> magnification) {
    return HeaderScale(header.scale, magnification).scale();
}

FilmScale scale_of_resolution(const FilmHeader& header, std::optional<double> magnification) {
    constexpr double mm_per_inch = 25.4;
    FilmScale scale;
    if (!header.resolution) {
        scale.error = "Its file notes no resolution.";
        return scale;
    }
    const auto [across, down] = *header.resolution;
    if (differ(across, down, square_within)) {
        scale.error = "Its pixels are not square: " + text_of(across) + " dpi across and " + text_of(down) + " down.";
        return scale;
    }
    scale.mm_per_pixel = mm_per_inch / across / magnification.value_or(1);
    scale.plane = magnification ? FilmPlane::patient : FilmPlane::unknown;
    scale.source = "resolution of " + text_of(across) + " dpi" +
                   (magnification ? " / the magnification given, " + text_of(*magnification) : "");
    for (const double screen : {72.0, 96.0})
        if (!differ(across, screen, square_within))
            scale.doubts.push_back({"%1 dpi is what programs write that know no resolution.", text_of(screen)});
    return scale;
}

}  // namespace tool
