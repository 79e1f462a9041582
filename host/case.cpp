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

std::optional<Date> date_from(std::string_view text) {
    constexpr std::string_view form = "dddd-dd-dd";
    if (text.size() != form.size()) return {};
    int fields[3] = {};
    for (std::size_t i = 0, field = 0; i < form.size(); ++i) {
        if (form[i] == '-') {
            if (text[i] != '-') return {};
            ++field;
        } else {
            if (text[i] < '0' || text[i] > '9') return {};
            fields[field] = fields[field] * 10 + (text[i] - '0');
        }
    }
    const Date date{std::chrono::year(fields[0]), std::chrono::month(static_cast<unsigned>(fields[1])),
                    std::chrono::day(static_cast<unsigned>(fields[2]))};
    if (!date.ok()) return {};
    return date;
}

std::string text_of(Date date) {
    const auto digits = [](unsigned value, std::size_t count) {
        std::string text = std::to_string(value);
        return std::string(count - text.size(), '0') + text;
    };
    return digits(static_cast<unsigned>(static_cast<int>(date.year())), 4) + "-" +
           digits(static_cast<unsigned>(date.month()), 2) + "-" + digits(static_cast<unsigned>(date.day()), 2);
}

Age age_at(Date day, Date birth) {
    const auto months_of = [](Date date) {
        return static_cast<int>(date.year()) * 12 + static_cast<int>(static_cast<unsigned>(date.month()));
    };
    const int months = months_of(day) - months_of(birth) - (day.day() < birth.day() ? 1 : 0);
    return {months / 12, months % 12};
}

double years_at(Date day, Date birth) {
    using namespace std::chrono;
    constexpr double days_a_year = 365.25;
    const int completed = age_at(day, birth).years;
    const sys_days last_birthday = birth + years(completed);  // 29 February becomes 1 March where there is none
    return completed + static_cast<double>((sys_days(day) - last_birthday).count()) / days_a_year;
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
