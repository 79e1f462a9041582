// The text of the 2014/2015 cephalometric challenges (Wang et al., Medical Image Analysis 2016;31:63-76): nineteen
// lines "x,y", then lines of one integer each, the observer's classes, which are left out.
#include <algorithm>

#include "base/csv.h"
#include "base/numbers.h"
#include "base/wording.h"
#include "cases/case_builder.h"
#include "cases/case_format.h"

namespace cephtool {
namespace {

// The challenge's points in its order, under the names of the lateral table.
constexpr const char* challenge_names[] = {"S",  "N",  "Or",  "Po",  "A",  "B",      "Pog", "Me",  "Gn", "Go",
                                           "L1", "U1", "TUL", "TLL", "SN", "Pog(s)", "PNS", "ANS", "Ar"};
constexpr std::size_t point_count = std::size(challenge_names);

// The films of the challenges were scanned at this many millimetres a pixel.
constexpr double challenge_scale = 0.1;

bool is_pair_of_numbers(const CsvRow& row) {
    return !row.comment && row.fields.size() == 2 && number_from(row.fields[0].text) && number_from(row.fields[1].text);
}

bool is_class(const CsvRow& row) {
    const std::string& text = row.fields.front().text;
    return row.fields.size() == 1 && text.find_first_not_of("0123456789") == std::string::npos;
}

}  // namespace

bool is_challenge_text(const Source& source) {
    const std::size_t first = source.text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) return false;
    const std::size_t end = source.text.find_first_of("\r\n", first);
    const Source line{source.name, source.text.substr(first, end - first)};
    if (line.text.find('"') != std::string::npos) return false;
    CsvRow row;
    return CsvReader(line).next(row) && is_pair_of_numbers(row);
}

std::vector<Case> read_challenge_cases(const Source& source, const CaseOptions& options) {
    CaseBuilder builder(source);
    builder.kind(Kind::lateral);
    CsvReader reader(source);
    std::size_t points = 0;
    for (CsvRow row; reader.next(row);) {
        const std::size_t at = row.fields.front().at;
        if (points >= point_count && is_class(row)) continue;
        if (!is_pair_of_numbers(row) || points == point_count) {
            throw source.error_at(at,
                                  in_quotes(row.fields.front().text) + "… stands behind " + std::to_string(points) +
                                      " points and is none of the " + std::to_string(point_count),
                                  "This text has one point x,y in each of its first nineteen lines.");
        }
        double xy[2];
        for (std::size_t i = 0; i < 2; ++i) {
            xy[i] = builder.checked_coordinate(*number_from(row.fields[i].text), row.fields[i].at);
        }
        builder.landmark(challenge_names[points++], {xy[0], xy[1]}, at);
    }
    if (points < point_count) {
        throw source.error(
            "it holds " + std::to_string(points) + " points, " + std::to_string(point_count) + " are needed",
            "For other sets of landmarks write name,x,y in every line.");
    }
    if (!options.mm_per_pixel) {
        builder.scale(challenge_scale, 0);
        builder.remark({"scale_assumed", "The scale is taken as 0.1 mm a pixel, that of the films of challenges."});
    }
    std::vector<Case> cases;
    cases.push_back(builder.finished());
    return cases;
}

std::string to_challenge_text(const Case& record, const CaseOptions&) {
    if (record.kind != Kind::lateral) {
        throw Error(ExitCode::bad_input,
                    std::string("this is a ") + name_of(record.kind) + " case, and a challenge text is a lateral one",
                    "Name another format: --format csv.");
    }
    std::string text;
    for (const char* name : challenge_names) {
        const auto landmark = std::ranges::find(record.landmarks, name, &Landmark::name);
        const Position position = landmark == record.landmarks.end() ? Position() : landmark->position;
        text += shortest(position.x) + "," + shortest(position.y) + "\n";
    }
    return text;
}

}  // namespace cephtool
