// Landmarks as comma-separated values: docs/case_format.md, "CSV".
#include "base/csv.h"
#include "base/numbers.h"
#include "base/wording.h"
#include "cases/case_format.h"
#include "cases/case_names.h"
#include "cases/case_settings.h"

namespace cephtool {
namespace {

constexpr std::size_t most_rows = 1000;  // the largest table, a person's own landmarks, and some to spare

class CsvCaseReader {
 public:
    explicit CsvCaseReader(const Source& source) : source_(source), builder_(source) {}

    Case read() {
        CsvReader reader(source_);
        for (CsvRow row; reader.next(row);) {
            if (row.comment) {
                read_comment(row.fields.front());
            } else {
                read_row(row);
            }
        }
        if (points_.empty()) throw source_.error("there is no landmark in it", "Write lines such as S,850,850.");
        add_points(builder_, points_, source_);
        return builder_.finished();
    }

 private:
    void read_comment(const CsvField& comment) {
        read_setting_comment(builder_, source_, trimmed(std::string_view(comment.text).substr(1)), comment.at);
    }

    // NAME,X,Y or SLOT,NAME,X,Y. The slot is for people: names decide.
    void read_row(const CsvRow& row) {
        const std::size_t count = row.fields.size();
        if (count != 3 && count != 4) {
            throw source_.error_at(row.fields.front().at, "this line has " + std::to_string(count) + " fields",
                                   "Write name,x,y or slot,name,x,y, separated by commas.");
        }
        const CsvField* const fields = &row.fields[count - 3];
        const bool header = first_row_ && lower_case(fields[1].text) == "x" && lower_case(fields[2].text) == "y";
        first_row_ = false;
        if (header) return;
        if (points_.size() == most_rows) {
            throw source_.error_at(row.fields.front().at, "more than " + std::to_string(most_rows) + " landmarks",
                                   "One file holds one case.");
        }
        const Position position{coordinate(fields[1]), coordinate(fields[2])};
        points_.push_back({fields[0].text, position, fields[0].at});
    }

    double coordinate(const CsvField& field) const {
        const std::optional<double> value = number_from(field.text);
        if (!value) {
            throw source_.error_at(field.at, in_quotes(field.text) + " is no coordinate",
                                   "Write a decimal number of pixels, with a point: 1055.5");
        }
        return builder_.checked_coordinate(*value, field.at);
    }

    const Source& source_;
    CaseBuilder builder_;
    std::vector<NamedPoint> points_;
    bool first_row_ = true;
};

// A name that a reader would take for something else stands in quotes.
std::string name_field(const std::string& name) {
    return name.starts_with('#') ? "\"" + name + "\"" : csv_field(name);
}

}  // namespace

std::vector<Case> read_csv_cases(const Source& source, const CaseOptions&) {
    std::vector<Case> cases;
    cases.push_back(CsvCaseReader(source).read());
    return cases;
}

std::string to_csv(const Case& record, const CaseOptions&) {
    std::string text;
    for (const auto& [key, value] : settings_of(record)) text += csv_quoted("# " + key + "=" + value) + "\n";
    text += "name,x,y\n";
    for (const Landmark& landmark : all_landmarks(record)) {
        text += name_field(landmark.name) + "," + shortest(landmark.position.x) + "," + shortest(landmark.position.y) +
                "\n";
    }
    return text;
}

}  // namespace cephtool
