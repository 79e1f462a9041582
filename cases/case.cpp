#include "cases/case.h"

#include <algorithm>

#include "base/path.h"
#include "cases/case_film.h"
#include "cases/case_format.h"
#include "cases/mirror.h"

namespace cephtool {
const char* name_of(Kind kind) {
    switch (kind) {
        case Kind::lateral: return "lateral";
        case Kind::frontal: return "frontal";
        case Kind::model: return "model";
    }
    return "";
}

const char* name_of(Sex sex) {
    return sex == Sex::male ? "male" : "female";
}

const char* name_of(Side side) {
    return side == Side::left ? "left" : "right";
}

Case with_options(Case record, const Source& source, const CaseOptions& options) {
    record.file = source.name;
    if (!options.image.empty()) record.image = image_seen_from(record.file, options.image);
    const std::optional<FilmFacts> film = facts_of_film(record, source, options);
    if (options.sex) {
        if (record.sex.value_or(*options.sex) != *options.sex) {
            record.remarks.push_back({"sex_replaced", "The sex is that of --sex, not that of the file."});
        }
        record.sex = options.sex;
    }
    if (!options.population.empty()) {
        if (!record.population.empty() && record.population != options.population) {
            record.remarks.push_back(
                {"population_replaced", "The population is that of --population, not that of the file."});
        }
        record.population = options.population;
    }
    if (film) complete_patient(record, source, *film);
    settle_scale(record, source, options, film);
    return turned_right(std::move(record), options);
}

std::vector<Case> read_cases(const Source& source, const CaseOptions& options) {
    const auto formats = case_formats();
    const auto format = std::ranges::find_if(formats, [&](const CaseFormat& each) { return each.recognises(source); });
    std::vector<Case> cases = format->read(source, options);
    if (cases.size() > 1 && !options.image.empty()) {
        throw source.error("it holds " + std::to_string(cases.size()) + " specimens, and an X-ray is that of one case",
                           "Name them in the file, IMAGE=film.dcm, and leave --image away.");
    }
    for (Case& record : cases) record = with_options(std::move(record), source, options);
    return cases;
}

Case read_case(const Source& source, const CaseOptions& options) {
    std::vector<Case> cases = read_cases(source, options);
    if (cases.size() != 1) {
        throw source.error("it holds " + std::to_string(cases.size()) + " specimens, where one case is needed",
                           "\"cephtool analyze\" and \"cephtool batch\" measure them all.");
    }
    return std::move(cases.front());
}

std::string image_file(const Case& record) {
    if (record.image.empty()) return {};
    return utf8_from_path(path_from_utf8(record.file).parent_path() / path_from_utf8(record.image));
}

}  // namespace cephtool
