#include "cases/case_facts.h"

#include <nlohmann/json.hpp>

#include "base/columns.h"
#include "base/eras.h"
#include "base/numbers.h"
#include "base/paint.h"
#include "base/wording.h"

namespace cephtool {
namespace {

// "  born 2001-05-14 (平成13年5月14日), film 2013-08-20 (平成25年8月20日)", "" without dates.
std::string dates_line(const Case& record) {
    if (!record.birth && !record.film) return {};
    const std::optional<EraCalendar> calendar = program_eras();
    std::vector<std::string> parts;
    const auto add_date = [&](const char* what, const std::optional<Date>& date) {
        if (!date) return;
        const std::string era = era_text(calendar, *date, japanese_text);
        parts.push_back(what + text_of(*date) + (era.empty() ? "" : " (" + era + ")"));
    };
    add_date("born ", record.birth);
    add_date("film ", record.film);
    return "  " + wrapped(joined(parts, ", "), page_width - 2, "  ") + "\n";
}

}  // namespace

std::string case_heading(const Case& record, bool colour) {
    std::string text = printable(record.file) + ": ";
    if (!record.name.empty()) text += fitted(printable(record.name), page_width) + ", ";
    text += record.sex ? name_of(*record.sex) : "sex not given";
    if (record.birth && record.film) {
        text += ", " + text_of(age_at(*record.film, *record.birth));
    }
    text += std::string(", ") + name_of(record.kind);
    if (record.side) text += std::string(", ") + name_of(*record.side) + " side";
    if (!record.population.empty()) text += ", norms of " + printable(record.population);
    text += ", " + readable(record.mm_per_pixel.value()) + " mm a pixel";
    text = wrapped(text, page_width, "  ") + "\n" + dates_line(record);
    for (const Remark& remark : record.remarks) text += remark_line(remark, colour);
    return text;
}

std::string remark_line(const Remark& remark, bool colour) {
    return "  " + painted(wrapped(in_english(remark), page_width - 2, "  "), amber, colour) + "\n";
}

nlohmann::ordered_json json_of(std::span<const Remark> remarks) {
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    for (const Remark& remark : remarks) json.push_back({{"code", remark.code}, {"text", in_english(remark)}});
    return json;
}

nlohmann::ordered_json case_facts(const Case& record) {
    nlohmann::ordered_json json = {{"file", record.file}, {"name", record.name}, {"kind", name_of(record.kind)}};
    if (record.sex) json["sex"] = name_of(*record.sex);
    const std::optional<EraCalendar> calendar = program_eras();
    const auto add_date = [&](const std::string& key, const std::optional<Date>& date) {
        if (!date) return;
        json[key] = text_of(*date);
        const std::string era = era_text(calendar, *date, code_text);
        if (!era.empty()) json[key + "_era"] = era;
    };
    add_date("birth", record.birth);
    add_date("film", record.film);
    if (record.birth && record.film) {
        const Age age = age_at(*record.film, *record.birth);
        json["age"] = {
            {"years", age.years}, {"months", age.months}, {"total_months", months_at(*record.film, *record.birth)}};
    }
    if (record.side) json["side"] = name_of(*record.side);
    if (!record.dental_stage.empty()) json["dental_stage"] = record.dental_stage;
    if (!record.population.empty()) json["population"] = record.population;
    json["mm_per_pixel"] = record.mm_per_pixel.value();
    json["remarks"] = json_of(record.remarks);
    json["notes"] = record.notes;
    return json;
}

}  // namespace cephtool
