#include "host/case_facts.h"

#include <nlohmann/json.hpp>

#include "host/numbers.h"
#include "host/text_width.h"

namespace cephtool {

std::string case_heading(const Case& record) {
    std::string text = printable(record.file) + ": ";
    if (!record.name.empty()) text += record.name + ", ";
    text += record.sex ? name_of(*record.sex) : "sex not given";
    if (record.birth && record.film) {
        const Age age = age_at(*record.film, *record.birth);
        text += ", " + std::to_string(age.years) + " years " + std::to_string(age.months) + " months";
    }
    text += std::string(", ") + name_of(record.kind) + ", " + shortest(record.mm_per_pixel.value()) + " mm a pixel";
    return wrapped(text, page_width, "  ") + "\n";
}

nlohmann::ordered_json case_facts(const Case& record) {
    nlohmann::ordered_json json = {{"file", record.file}, {"name", record.name}, {"kind", name_of(record.kind)}};
    if (record.sex) json["sex"] = name_of(*record.sex);
    if (record.birth) json["birth"] = text_of(*record.birth);
    if (record.film) json["film"] = text_of(*record.film);
    if (record.birth && record.film) {
        const Age age = age_at(*record.film, *record.birth);
        json["age"] = {{"years", age.years}, {"months", age.months}};
    }
    if (!record.dental_stage.empty()) json["dental_stage"] = record.dental_stage;
    json["mm_per_pixel"] = record.mm_per_pixel.value();
    json["notes"] = record.notes;
    return json;
}

}  // namespace cephtool
