#include "cases/case.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/path.h"
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

Case with_options(Case record, const Source& source, const CaseOptions& options) {
    record.file = source.name;
    if (options.sex) {
        if (record.sex.value_or(*options.sex) != *options.sex) {
            record.remarks.push_back({"sex_replaced", "The sex is that of --sex, not that of the file."});
        }
        record.sex = options.sex;
    }
    if (options.mm_per_pixel) {
        if (record.mm_per_pixel.value_or(*options.mm_per_pixel) != *options.mm_per_pixel) {
            record.remarks.push_back({"scale_replaced",
                                      "The scale is that of --scale, %1 mm a pixel, not the %2 of the file.",
                                      {shortest(*options.mm_per_pixel), shortest(*record.mm_per_pixel)}});
        }
        record.mm_per_pixel = options.mm_per_pixel;
    }
    if (!record.mm_per_pixel) {
        throw source.error("the case has no scale, so no length can be measured",
                           "Say how many millimetres a pixel is: --scale 0.1, or in the file itself.");
    }
    return turned_right(std::move(record), options);
}

std::vector<Case> read_cases(const Source& source, const CaseOptions& options) {
    const auto formats = case_formats();
    const auto format = std::ranges::find_if(formats, [&](const CaseFormat& each) { return each.recognises(source); });
    std::vector<Case> cases = format->read(source, options);
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
