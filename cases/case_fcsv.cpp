// 3D Slicer's older format of fiducials: comma-separated, with the coordinate system and the columns in comments.

#include "base/csv.h"
#include "base/numbers.h"
#include "base/wording.h"
#include "cases/case_format.h"
#include "cases/case_names.h"
#include "cases/case_settings.h"
#include "cases/slicer_space.h"

namespace cephtool {
namespace {

constexpr std::string_view opening = "# Markups fiducial file";
constexpr const char* columns_line =
    "# columns = id,x,y,z,ow,ox,oy,oz,vis,sel,lock,label,desc,associatedNodeID,positionStatus\n";
constexpr std::size_t most_rows = 1000;
constexpr std::size_t x_column = 1, y_column = 2, z_column = 3, label_column = 11, status_column = 14;
constexpr double status_defined = 2;  // 0 undefined, 1 preview, 3 missing

class FcsvReader {
 public:
    FcsvReader(const Source& source, const CaseOptions& options)
        : source_(source), options_(options), builder_(source) {}

    Case read() {
        CsvReader reader(source_);
        for (CsvRow row; reader.next(row);) {
            if (row.comment) {
                read_comment(row.fields.front());
            } else {
                read_row(row);
            }
        }
        const SlicerScale scale = slicer_scale(builder_.scale(), options_.mm_per_pixel, space_);
        if (!builder_.scale() && !options_.mm_per_pixel) builder_.remark(positions_in_mm());
        builder_.scale(scale.mm_per_pixel, 0);
        for (NamedPoint& point : points_) {
            const Position position = film_position(point.position.x, point.position.y, space_, scale);
            point.position = {builder_.checked_coordinate(position.x, point.at),
                              builder_.checked_coordinate(position.y, point.at)};
        }
        add_points(builder_, points_, source_);
        return builder_.finished();
    }

 private:
    void read_comment(const CsvField& comment) {
        const std::string_view text = trimmed(std::string_view(comment.text).substr(1));
        const std::size_t equals = text.find('=');
        const std::string_view key = trimmed(text.substr(0, equals));
        if (key == "CoordinateSystem" && equals != std::string_view::npos) {
            const std::string_view name = text.substr(equals + 1);
            const auto space = slicer_space(name);
            if (!space) throw source_.error_at(comment.at, in_quotes(name) + " is no coordinate system", "Use LPS.");
            builder_.first_setting(std::string(key), comment.at);
            space_ = *space;
        } else if (key != "columns" && !comment.text.starts_with(opening)) {
            read_setting_comment(builder_, source_, text, comment.at);
        }
    }

    double number(const CsvRow& row, std::size_t column) const {
        const CsvField& field = row.fields[column];
        const auto value = number_from(field.text);
        if (!value) throw source_.error_at(field.at, in_quotes(field.text) + " is no coordinate");
        return *value;
    }

    void read_row(const CsvRow& row) {
        const std::size_t at = row.fields.front().at;
        if (row.fields.size() <= label_column) {
            throw source_.error_at(at, "this line has " + std::to_string(row.fields.size()) + " fields",
                                   "Label and position stand in the first twelve.");
        }
        if (row.fields.size() > status_column) {
            const auto status = number_from(row.fields[status_column].text);
            if (status && *status != status_defined) return;
        }
        if (points_.size() == most_rows) throw source_.error_at(at, "more than " + std::to_string(most_rows) + " rows");
        const double z = number(row, z_column);
        if (!points_.empty() && z != z_) {
            throw source_.error_at(row.fields[z_column].at, "the points do not lie in one plane",
                                   "A film's points have one z; those of a volume can't be measured as a film.");
        }
        z_ = z;
        const CsvField& label = row.fields[label_column];
        points_.push_back({label.text, {number(row, x_column), number(row, y_column)}, label.at});
    }

    const Source& source_;
    const CaseOptions& options_;
    CaseBuilder builder_;
    SlicerSpace space_ = SlicerSpace::ras;  // of files that don't say, which are the oldest
    std::vector<NamedPoint> points_;
    double z_ = 0;
};

}  // namespace

bool is_fcsv(const Source& source) {
    return source.text.starts_with(opening) || lower_case(source.name).ends_with(".fcsv");
}

std::vector<Case> read_fcsv_cases(const Source& source, const CaseOptions& options) {
    std::vector<Case> cases;
    cases.push_back(FcsvReader(source, options).read());
    return cases;
}

std::string to_fcsv(const Case& record, const CaseOptions&) {
    std::string text = std::string(opening) + " version = 4.11\n# CoordinateSystem = LPS\n" + columns_line;
    for (const auto& [key, value] : settings_of(record)) text += "# " + key + "=" + value + "\n";
    int id = 0;
    for (const Landmark& landmark : all_landmarks(record)) {
        const Position p = lps_position(landmark.position, record.mm_per_pixel.value());
        text += std::to_string(++id) + "," + shortest(p.x) + "," + shortest(p.y) + ",0,0,0,0,1,1,1,0," +
                csv_quoted(landmark.name) + ",,," + shortest(status_defined) + "\n";
    }
    return text;
}

}  // namespace cephtool
