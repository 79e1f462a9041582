#include "host/case.h"

#include "host/numbers.h"
#include "host/text_width.h"

namespace cephtool {
namespace {

bool is_json(const Source& source) {
    const std::size_t first = source.text.find_first_not_of(" \t\r\n");
    const char opening = first == std::string::npos ? '\0' : source.text[first];
    return opening == '{' || opening == '[' || lower_case(source.name).ends_with(".json");
}

Case read_any_case(const Source& source) {
    if (is_json(source)) return read_json_case(source);
    return is_challenge_text(source) ? read_challenge_case(source) : read_csv_case(source);
}

// A value that the command line gives replaces the case's own, and says so when the two differ.
template <class Value, class Show>
void replace(std::optional<Value>& own, const std::optional<Value>& given, const char* what, Case& record, Show show) {
    if (!given) return;
    if (own && *own != *given) {
        record.notes.push_back(std::string(what) + " " + show(*own) + " of the file replaced by " + show(*given));
    }
    own = given;
}

}  // namespace

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

Case read_case(const Source& source, const CaseOptions& options) {
    Case record = read_any_case(source);
    record.file = source.name;
    replace(record.sex, options.sex, "sex", record, [](Sex sex) { return std::string(name_of(sex)); });
    replace(record.mm_per_pixel, options.mm_per_pixel, "scale", record, [](double scale) { return shortest(scale); });
    if (!record.mm_per_pixel) {
        throw source.error("the case has no scale, so no length can be measured",
                           "Say how many millimetres a pixel is: --scale 0.1, or in the file itself.");
    }
    return record;
}

}  // namespace cephtool
