// Landmarks as comma-separated values: docs/case_format.md, "CSV".
#include <algorithm>
#include <span>

#include "host/case_builder.h"
#include "host/csv.h"
#include "host/numbers.h"
#include "host/suggestion.h"
#include "host/text_width.h"
#include "host/vertebrae.h"

namespace cephtool {
namespace {

constexpr std::size_t most_rows = 1000;  // the largest table, a person's own landmarks, and some to spare

struct Row {
    CsvField name, x, y;
};

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
        if (rows_.empty()) throw source_.error("there is no landmark in it", "Write lines such as S,850,850.");
        if (!kind_given_) builder_.kind(guessed_kind());
        for (const Row& row : rows_) add(row);
        if (auxiliary_) builder_.note("auxiliary points (auxNN) left out");
        return builder_.finished();
    }

 private:
    struct Setting {
        const char* key;
        void (CsvCaseReader::*read)(std::string_view value, std::size_t at);
    };
    static std::span<const Setting> settings();

    // "# key=value"; any other comment is for people. A slip in a key must not pass for one.
    void read_comment(const CsvField& comment) {
        const std::string_view text = trimmed(std::string_view(comment.text).substr(1));
        const std::size_t equals = text.find('=');
        if (equals == std::string_view::npos) return;
        const std::string_view key = trimmed(text.substr(0, equals));
        std::vector<std::string> keys;
        for (const Setting& setting : settings()) {
            if (key == setting.key) return (this->*setting.read)(trimmed(text.substr(equals + 1)), comment.at);
            keys.emplace_back(setting.key);
        }
        const std::string meant = did_you_mean(key, keys);
        if (!meant.empty())
            throw source_.error_at(comment.at, "the setting " + in_quotes(key) + " is not known", meant);
    }

    void read_scale(std::string_view value, std::size_t at) {
        const std::optional<double> scale = number_from(value);
        if (!scale) throw source_.error_at(at, in_quotes(value) + " is no number", "Write # scale_mm_per_px=0.1");
        builder_.scale(*scale, at);
    }
    void read_kind(std::string_view value, std::size_t at) {
        builder_.kind(value, at);
        kind_given_ = true;
    }
    void read_name(std::string_view value, std::size_t at) { builder_.name(value, at); }
    void read_sex(std::string_view value, std::size_t at) { builder_.sex(value, at); }
    void read_birth(std::string_view value, std::size_t at) { builder_.birth(value, at); }
    void read_film(std::string_view value, std::size_t at) { builder_.film(value, at); }

    void read_dental_stage(std::string_view value, std::size_t at) { builder_.dental_stage(value, at); }

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
        if (rows_.size() == most_rows) {
            throw source_.error_at(row.fields.front().at, "more than " + std::to_string(most_rows) + " landmarks",
                                   "One file holds one case.");
        }
        rows_.push_back({fields[0], fields[1], fields[2]});
    }

    // The kind whose table knows most of the names.
    Kind guessed_kind() const {
        Kind best = Kind::lateral;
        std::ptrdiff_t most = 0;
        for (const Kind kind : all_kinds) {
            const std::vector<std::string> names = landmark_names(kind);
            const auto count = std::ranges::count_if(
                rows_, [&](const Row& row) { return std::ranges::find(names, row.name.text) != names.end(); });
            if (count > most) {
                most = count;
                best = kind;
            }
        }
        if (most == 0) {
            throw source_.error_at(rows_.front().name.at, "no landmark of any kind of case is among the names",
                                   did_you_mean(rows_.front().name.text, landmark_names(Kind::lateral)));
        }
        return best;
    }

    double coordinate(const CsvField& field) const {
        const std::optional<double> value = number_from(field.text);
        if (!value) {
            throw source_.error_at(field.at, in_quotes(field.text) + " is no coordinate",
                                   "Write a decimal number of pixels, with a point: 1055.5");
        }
        return builder_.checked_coordinate(*value, field.at);
    }

    static bool is_auxiliary(const std::string& name) {
        return name.size() == 5 && name.starts_with("aux") &&
               name.find_first_not_of("0123456789", 3) == std::string::npos;
    }

    void add(const Row& row) {
        const Position position{coordinate(row.x), coordinate(row.y)};
        const std::string& name = row.name.text;
        // Films of other kinds may have landmarks of one's own under the names of vertebra points.
        const std::vector<std::string> points =
            builder_.kind() == Kind::lateral ? vertebra_point_names() : std::vector<std::string>();
        std::vector<std::string> names = landmark_names(builder_.kind());
        if (std::ranges::find(names, name) != names.end()) {
            builder_.landmark(name, position, row.name.at);
        } else if (std::ranges::find(points, name) != points.end()) {
            builder_.vertebra_point(name, position, row.name.at);
        } else if (is_auxiliary(name)) {
            auxiliary_ = true;
        } else {
            names.insert(names.end(), points.begin(), points.end());
            add_own(name, position, row.name.at, names);
        }
    }

    void add_own(const std::string& name, Position position, std::size_t at, const std::vector<std::string>& names) {
        const std::string meant = did_you_mean(name, names);
        if (!fits_user_landmark(name)) {
            throw source_.error_at(at, in_quotes(name) + " is no landmark of a " + name_of(builder_.kind()) + " case",
                                   (meant.empty() ? "" : meant + " ") + "Names of your own have up to five bytes.");
        }
        builder_.user_landmark(name, position, at);
        builder_.note(in_quotes(name) + " is kept as a landmark of your own" + (meant.empty() ? "" : ". " + meant));
    }

    const Source& source_;
    CaseBuilder builder_;
    std::vector<Row> rows_;
    bool first_row_ = true, kind_given_ = false, auxiliary_ = false;
};

std::span<const CsvCaseReader::Setting> CsvCaseReader::settings() {
    static constexpr Setting table[] = {
        {"scale_mm_per_px", &CsvCaseReader::read_scale},
        {"kind", &CsvCaseReader::read_kind},
        {"name", &CsvCaseReader::read_name},
        {"sex", &CsvCaseReader::read_sex},
        {"birth", &CsvCaseReader::read_birth},
        {"film", &CsvCaseReader::read_film},
        {"dental_stage", &CsvCaseReader::read_dental_stage},
    };
    return table;
}

}  // namespace

Case read_csv_case(const Source& source) {
    return CsvCaseReader(source).read();
}

}  // namespace cephtool
