#include "host/film_report.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "base/columns.h"
#include "base/csv.h"
#include "base/numbers.h"
#include "base/paint.h"
#include "base/wording.h"
#include "host/film_reading.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

constexpr int label_width = 12;

const char* magnification_words(const tool::FilmScale& scale) {
    switch (scale.plane) {
        case tool::FilmPlane::patient: return "magnification is out of it";
        case tool::FilmPlane::detector: return "magnification is still in it";
        case tool::FilmPlane::unknown: break;
    }
    return "whether magnification is out of it is not said";
}

const char* magnification_word(const tool::FilmScale& scale) {
    if (!scale.mm_per_pixel) return "";
    switch (scale.plane) {
        case tool::FilmPlane::patient: return "out";
        case tool::FilmPlane::detector: return "in";
        case tool::FilmPlane::unknown: break;
    }
    return "unknown";
}

std::string scale_text(const tool::FilmScale& scale, const tool::FilmHeader& header) {
    if (scale.mm_per_pixel) {
        return readable(*scale.mm_per_pixel) + " mm a pixel: " + printable(scale.source) + "; " +
               magnification_words(scale);
    }
    if (!scale.error.empty()) return "contradictory";
    return header.resolution ? "none; \"--scale dpi\" takes the resolution" : "none";
}

std::string resolution_text(const tool::FilmHeader& header) {
    if (!header.resolution) return {};
    const auto [across, down] = *header.resolution;
    return readable(across) + (across == down ? "" : " x " + readable(down)) + " dpi";
}

Json json_of(const FilmFact& fact) {
    if (fact.number) {
        const bool whole = *fact.number == std::floor(*fact.number);
        return whole ? Json(static_cast<std::int64_t>(*fact.number)) : Json(*fact.number);
    }
    return fact.text.empty() ? Json(nullptr) : Json(fact.text);
}

std::string line(const std::string& label, const std::string& text) {
    return "  " + left_aligned(label, label_width) +
           wrapped(text, page_width - label_width - 2, std::string(label_width + 2, ' ')) + "\n";
}

}  // namespace

FilmReport film_report(const std::string& file, const tool::Film& film) {
    const tool::FilmHeader& header = film.header;
    const tool::FilmScale scale = scale_of_header(header);
    const FilmFacts patient = patient_facts(header.patient);
    const auto whole = [](int number) { return std::optional<double>(number); };
    FilmReport report{printable(file), {}, header.doubts, scale.mm_per_pixel};
    report.facts = {
        {"format", "Format", header.format},
        {"compression", "Compression", header.compression},
        {"width_px", "Width", std::to_string(film.width) + " pixels", whole(film.width)},
        {"height_px", "Height", std::to_string(film.height) + " pixels", whole(film.height)},
        {"bits", "Depth", std::to_string(film.bits) + (film.grey.empty() ? " bits of each colour" : " bits of grey"),
         whole(film.bits)},
        {"frames", "Pictures", header.frames > 1 ? std::to_string(header.frames) : "", whole(header.frames)},
        {"mm_per_pixel", "", "", scale.mm_per_pixel},
        {"magnification", "", magnification_word(scale)},
        {"scale", "Scale", scale_text(scale, header)},
        {"dpi", "Resolution", resolution_text(header),
         header.resolution ? std::optional(header.resolution->across_dpi) : std::nullopt},
        {"name", "Name", patient.name, {}, true},
        {"id", "Patient ID", printable(header.patient.id), {}, true},
        {"sex", "Sex", patient.sex ? name_of(*patient.sex) : "", {}, true},
        {"birth", "Born", patient.birth ? text_of(*patient.birth) : "", {}, true},
        {"film", "Film", patient.film ? text_of(*patient.film) : "", {}, true},
        {"side", "Side", patient.side ? name_of(*patient.side) : ""},
        {"made_by", "Made by", printable(header.made_by)},
    };
    if (!scale.error.empty()) report.doubts.push_back(printable(scale.error));
    for (const Remark& doubt : scale_doubts(scale, std::max(film.width, film.height), header.frames))
        report.doubts.push_back(in_english(doubt));
    for (const Remark& doubt : patient.patient_doubts) report.doubts.push_back(in_english(doubt));
    return report;
}

FilmReport anonymous(FilmReport report, std::size_t number) {
    std::erase_if(report.facts, [](const FilmFact& fact) { return fact.personal; });
    report.file = "film " + std::to_string(number);
    return report;
}

std::string film_table(const FilmReport& report, bool colour) {
    std::string text = painted(wrapped(report.file, page_width, ""), bold, colour) + "\n";
    for (const FilmFact& fact : report.facts)
        if (*fact.label && !fact.text.empty()) text += line(fact.label, fact.text);
    for (const std::string& doubt : report.doubts) text += painted(line("Doubtful", doubt), amber, colour);
    return text;
}

std::string film_json(std::span<const FilmReport> reports) {
    Json list = Json::array();
    for (const FilmReport& report : reports) {
        Json json = {{"file", report.file}};
        for (const FilmFact& fact : report.facts) json[fact.key] = json_of(fact);
        json["doubts"] = report.doubts;
        list.push_back(json);
    }
    return Json({{"format", "cephtool-film"}, {"version", 1}, {"films", list}}).dump(2) + "\n";
}

std::string film_csv(std::span<const FilmReport> reports) {
    std::string text = "file";
    for (const FilmFact& fact : reports.front().facts) text += std::string(",") + fact.key;
    text += ",doubts\r\n";
    for (const FilmReport& report : reports) {
        text += csv_field(report.file);
        for (const FilmFact& fact : report.facts)
            text += "," + (fact.number ? shortest(*fact.number) : csv_field(fact.text));
        text += "," + csv_field(joined(report.doubts, " ")) + "\r\n";
    }
    return text;
}

}  // namespace cephtool
