#include "host/case_option_flags.h"

#include <cmath>
#include <sstream>

#include "base/csv.h"
#include "base/numbers.h"
#include "base/wording.h"
#include "cases/case_builder.h"
#include "cases/case_record.h"
#include "host/film_reading.h"

namespace cephtool {
namespace {

// "S,N,A", or "@FILE" with names between commas or in lines of their own.
std::vector<std::string> names_in(const std::string& list) {
    if (list.empty()) return {};
    std::istringstream none;
    const Source source =
        list.starts_with('@') ? checked_text(read_bytes(list.substr(1), none)) : Source{"--landmarks", list};
    std::vector<std::string> names;
    CsvReader reader(source);
    for (CsvRow row; reader.next(row);) {
        if (row.comment) continue;
        for (const CsvField& field : row.fields) names.push_back(field.text);
    }
    return names;
}

constexpr double most_magnification = 3;

struct RulerLine {
    double length_px, mm;
};

// "310,82,310,494=40mm", or without "mm".
std::optional<RulerLine> ruler_from(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) return {};
    std::string length = text.substr(equals + 1);
    if (length.ends_with("mm")) length.resize(length.size() - 2);
    std::vector<double> ends;
    std::istringstream parts(text.substr(0, equals));
    for (std::string part; std::getline(parts, part, ',');) {
        const std::optional<double> number = number_from(part);
        if (!number || std::abs(*number) > largest_coordinate) return {};
        ends.push_back(*number);
    }
    const std::optional<double> mm = number_from(length);
    if (ends.size() != 4 || !mm || !(*mm > 0)) return {};
    const RulerLine ruler{std::hypot(ends[2] - ends[0], ends[3] - ends[1]), *mm};
    return ruler.length_px > 0 && is_scale(ruler.mm / ruler.length_px) ? std::optional(ruler) : std::nullopt;
}

}  // namespace

CaseOptionFlags::CaseOptionFlags(CommandLine& line) : line_(line) {
    line.add_choice("--sex", sex_, {"m", "f"}, "m or f: the patient's sex");
    line.add_population(population_);
    const Option scale = line.add_text(
        "--scale", "MM", scale_,
        "width of a pixel in millimetres; film: that\nof the X-ray's header; dpi: its resolution",
        [](const std::string& given) {
            const std::optional<double> number = number_from(given);
            const bool known = given == "film" || given == "dpi" || (number && is_scale(*number));
            return known ? "" : in_quotes(given) + " is no width of a pixel in millimetres, nor \"film\" or \"dpi\"";
        });
    line.add_text("--ruler", "LINE", ruler_, "X1,Y1,X2,Y2=40mm: ends and length of a ruler\nin the X-ray",
                  [](const std::string& given) {
                      return ruler_from(given) ? "" : in_quotes(given) + " is no ruler such as 310,82,310,494=40mm";
                  })
        .excludes(scale);
    line.add_text("--magnification", "X", magnification_, "the scale told is enlarged so much at the\ndetector, 1.1",
                  [](const std::string& given) {
                      const std::optional<double> number = number_from(given);
                      return number && *number >= 1 && *number <= most_magnification
                                 ? ""
                                 : in_quotes(given) + " is no magnification from 1 to 3, such as 1.1";
                  });
    line.add_flag("--mirror", mirror_, "turn films round that are mirrored");
    line.add_flag("--flip-y", flip_y_, "turn y round where a file counts it the other\nway");
    line.add_text("--landmarks", "LIST", landmarks_,
                  "TPS: names of the points in their order;\nS,N,- passes the third over; @FILE has them");
    line.add_text("--image-height", "PX", image_height_, "TPS, --flip-y: height of the image in pixels",
                  [](const std::string& given) {
                      const std::optional<double> number = number_from(given);
                      return number && *number > 0 && *number <= largest_coordinate
                                 ? ""
                                 : in_quotes(given) + " is no height in pixels";
                  });
}

Option CaseOptionFlags::add_image(const std::string& help) {
    return line_.add_text("--image", "FILE", image_, help);
}

Option CaseOptionFlags::add_images(const std::string& help) {
    return line_.add_texts("--image", "FILE", images_, help);
}

// What is said of the scale itself, by number or ruler.
void CaseOptionFlags::tell_scale(CaseOptions& options) const {
    const std::optional<RulerLine> ruler = ruler_from(ruler_);
    std::optional<double>& scale = options.mm_per_pixel;
    scale = ruler ? ruler->mm / ruler->length_px : number_from(scale_);
    if (!scale) return;
    const std::string told = readable(*scale);
    const std::string enlarged = options.magnification ? readable(*options.magnification) : "";
    if (options.magnification) scale = *scale / *options.magnification;
    const std::string used = readable(*scale);
    if (ruler) {
        const std::string mm = readable(ruler->mm), px = readable(ruler->length_px);
        options.scale_remark =
            enlarged.empty()
                ? Remark{"scale_given",
                         "The scale is that of --ruler, %1 mm a pixel: %2 mm on %3 pixels.",
                         {used, mm, px}}
                : Remark{"scale_given",
                         "The scale is that of --ruler, %1 mm a pixel: %2 mm on %3 pixels, at a magnification of %4.",
                         {used, mm, px, enlarged}};
    } else if (!enlarged.empty()) {
        options.scale_remark = {"scale_given",
                                "The scale is that of --scale, %1 mm a pixel: %2 mm at a magnification of %3.",
                                {used, told, enlarged}};
    }
    options.magnification.reset();  // it is out
}

std::string CaseOptionFlags::population() const {
    return tool::population_named(population_).name;
}

CaseOptions CaseOptionFlags::options() const {
    CaseOptions options;
    if (!sex_.empty()) options.sex = sex_ == "m" ? Sex::male : Sex::female;
    options.population = population();
    options.magnification = number_from(magnification_);
    if (scale_ == "film") options.film_scale = FilmScaleUse::header;
    if (scale_ == "dpi") options.film_scale = FilmScaleUse::resolution;
    tell_scale(options);
    options.film_facts = film_reader(options.film_scale, options.magnification);
    options.mirror = mirror_;
    options.flip_y = flip_y_;
    options.landmarks = names_in(landmarks_);
    options.image_height = number_from(image_height_);
    return options;
}

CaseOptions CaseOptionFlags::options(std::size_t place) const {
    CaseOptions options = this->options();
    options.image = place < images_.size() ? images_[place] : image_;
    if (!options.image.empty()) check_film(options.image);
    return options;
}

std::vector<std::string> CaseOptionFlags::files() const {
    std::vector<std::string> files = images_;
    files.push_back(image_);
    if (landmarks_.starts_with('@')) files.push_back(landmarks_.substr(1));
    return files;
}

void CaseOptionFlags::check_images(std::size_t cases) const {
    if (images_.size() <= cases) return;
    throw Error(ExitCode::bad_command_line, "more X-rays than cases", "Name one with --image for each case.");
}

}  // namespace cephtool
