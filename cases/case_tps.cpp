// Thin-plate-spline files, in which morphometricians keep landmarks (F. James Rohlf's tps programs): any number of
// specimens, each a line LM=COUNT, so many lines "x y", and lines KEY=VALUE. y points up, from the lower edge of the
// image. Landmarks have no names: --landmarks gives them, or a line COMMENT=landmarks=S,N,... as this program writes
// it.
#include <algorithm>
#include <cmath>

#include "base/csv.h"
#include "base/numbers.h"
#include "base/wording.h"
#include "cases/case_format.h"
#include "cases/case_names.h"
#include "cases/case_settings.h"

namespace cephtool {
namespace {

constexpr std::size_t most_points = 100'000;  // of a specimen, its curves included
constexpr double missing = -1;                // both coordinates of a landmark that was not placed
constexpr const char* passed_over = "-";      // in a list of names

struct Line {
    std::string_view text;
    std::size_t at = 0;

    bool empty() const { return text.empty(); }
    bool has_key() const { return text.find('=') != std::string_view::npos; }
    std::string key() const { return lower_case(trimmed(text.substr(0, text.find('=')))); }
    std::string_view value() const { return trimmed(text.substr(text.find('=') + 1)); }
};

struct Curve {
    bool closed = false;
    std::vector<Position> points;
};

// The sum of a y and what it becomes when no height of the image is known: all points keep the range that they have.
double range_about(const std::vector<Position>& points) {
    if (points.empty()) return 0;
    const auto [lowest, highest] = std::ranges::minmax(points, {}, &Position::y);
    return lowest.y + highest.y;
}

class TpsReader {
 public:
    TpsReader(const Source& source, std::size_t from, std::size_t to, const CaseOptions& options)
        : source_(source), at_(from), end_(to), options_(options), builder_(source) {}

    Case read() {
        const Line first = next();
        if (first.key() != "lm") {
            throw source_.error_at(first.at, "landmarks in three dimensions",
                                   "A film has two: LM=19 and lines of x y.");
        }
        start_ = first.at;
        points_ = read_points(first, places_);
        for (Line line = next(); !line.empty(); line = next()) read_line(line);
        name_points();
        flip();
        add_points(builder_, named_, source_);
        for (std::size_t i = 0; i < curves_.size(); ++i) {
            builder_.outline({"Curve " + std::to_string(i + 1), curves_[i].closed, curves_[i].points, {}});
        }
        return builder_.finished();
    }

 private:
    // The next line with content, trimmed; an empty one at the end.
    Line next() {
        while (at_ < end_) {
            const std::string_view text = std::string_view(source_.text).substr(at_, end_ - at_);
            const std::size_t length = std::min(text.find_first_of("\r\n"), text.size());
            const std::size_t indent = std::min(text.find_first_not_of(" \t"), length);
            const Line line{trimmed(text.substr(0, length)), at_ + indent};
            at_ += std::min(length + 1, text.size());
            if (!line.empty()) return line;
        }
        return {{}, end_};
    }

    std::size_t count(const Line& line) const {
        const std::optional<double> number = number_from(line.value());
        if (!number || !(*number >= 0 && *number <= most_points) || *number != std::floor(*number)) {
            throw source_.error_at(line.at, in_quotes(line.text) + " gives no number of points",
                                   "Write the number of lines that follow: LM=19");
        }
        return static_cast<std::size_t>(*number);
    }

    std::vector<Position> read_points(const Line& header, std::vector<std::size_t>& places) {
        const std::size_t points = count(header);
        total_ += points;
        if (total_ > most_points) throw source_.error_at(header.at, "more points than any specimen has");
        std::vector<Position> read;
        while (read.size() < points) {
            const Line line = next();
            const std::size_t gap = line.text.find_first_of(" \t");
            const auto x = number_from(line.text.substr(0, gap));
            const auto y = number_from(gap == std::string_view::npos ? std::string_view() : line.text.substr(gap));
            if (!x || !y) {
                throw source_.error_at(line.at,
                                       "point " + std::to_string(read.size() + 1) + " of " + std::to_string(points) +
                                           " is not two numbers",
                                       "Write x, a blank and y, with decimal points.");
            }
            read.push_back({builder_.checked_coordinate(*x, line.at), builder_.checked_coordinate(*y, line.at)});
            places.push_back(line.at);
        }
        return read;
    }

    void read_line(const Line& line) {
        const std::string key = line.key();
        if (!line.has_key()) {
            throw source_.error_at(line.at, in_quotes(line.text) + " stands behind the last point",
                                   "Check the number behind LM= or POINTS=.");
        }
        if (key == "curves" || key == "outlines") {
            read_curves(line, key == "outlines");
        } else if (key == "scale") {
            const auto scale = number_from(line.value());
            if (!scale) throw source_.error_at(line.at, in_quotes(line.value()) + " is no number");
            builder_.first_setting("scale_mm_per_px", line.at);
            builder_.scale(*scale, line.at);
        } else if (key == "id") {
            builder_.first_setting("name", line.at);
            builder_.name(line.value(), line.at);
        } else if (key == "image") {
            builder_.first_setting(key, line.at);
            if (!line.value().empty()) builder_.image(line.value(), line.at);
        } else if (key == "comment") {
            read_comment(line);
        } else {
            builder_.pass_over("the line " + in_quotes(line.text));
        }
    }

    void read_curves(const Line& line, bool closed) {
        for (std::size_t curve = count(line); curve > 0; --curve) {
            const Line header = next();
            if (header.key() != "points" || !header.has_key()) {
                throw source_.error_at(header.at, "a line POINTS= should stand here");
            }
            std::vector<std::size_t> places;
            curves_.push_back({closed, read_points(header, places)});
        }
    }

    void read_comment(const Line& line) {
        const Line remark{line.value(), line.at};
        const bool has_own_key = remark.has_key() && (remark.key() == "landmarks" || remark.key() == "flip");
        if (has_own_key) builder_.first_setting(remark.key(), line.at);
        if (has_own_key && remark.key() == "landmarks") {
            names_ = names_in(remark.value(), line.at);
        } else if (has_own_key) {
            flip_ = number_from(remark.value());
            if (!flip_) throw source_.error_at(line.at, in_quotes(remark.value()) + " is no number");
        } else {
            read_setting_comment(builder_, source_, remark.text, line.at, {"landmarks", "flip"});
        }
    }

    std::vector<std::string> names_in(std::string_view list, std::size_t at) const {
        const Source line{source_.name, std::string(list)};
        CsvReader reader(line);
        CsvRow row;
        std::vector<std::string> names;
        try {
            reader.next(row);
        } catch (const Error& error) {
            throw source_.error_at(at, error.what(), error.way_out);
        }
        for (const CsvField& field : row.fields) names.push_back(field.text);
        return names;
    }

    void name_points() {
        const std::vector<std::string>& names = options_.landmarks.empty() ? names_ : options_.landmarks;
        if (names.empty()) {
            throw source_.error_at(start_, "a TPS file does not name its landmarks",
                                   "Name them in their order: --landmarks S,N,A,B, or --landmarks @FILE.");
        }
        if (names.size() != points_.size()) {
            throw source_.error_at(
                start_,
                std::to_string(points_.size()) + " landmarks, but " + std::to_string(names.size()) + " names for them",
                "Give one name for each; \"-\" passes a landmark over.");
        }
        for (std::size_t i = 0; i < points_.size(); ++i) {
            const bool placed = points_[i].x != missing || points_[i].y != missing;
            if (placed && names[i] != passed_over) named_.push_back({names[i], points_[i], places_[i]});
        }
    }

    // y up becomes y down.
    void flip() {
        std::optional<double> height = flip_ ? flip_ : options_.image_height;
        if (!height) {
            std::vector<Position> all;
            for (const NamedPoint& point : named_) all.push_back(point.position);
            for (const Curve& curve : curves_) all.insert(all.end(), curve.points.begin(), curve.points.end());
            height = range_about(all);
            builder_.note("y was turned within its own range; --image-height puts the points on their image");
        }
        const auto turn = [&](Position& position, std::size_t at) {
            position = {on_grid(position.x), builder_.checked_coordinate(on_grid(*height - position.y), at)};
        };
        for (NamedPoint& point : named_) turn(point.position, point.at);
        for (Curve& curve : curves_)
            for (Position& position : curve.points) turn(position, start_);
    }

    const Source& source_;
    std::size_t at_, end_;
    const CaseOptions& options_;
    CaseBuilder builder_;
    std::size_t start_ = 0, total_ = 0;
    std::vector<Position> points_;
    std::vector<std::size_t> places_;  // of the points in the source
    std::vector<Curve> curves_;
    std::vector<std::string> names_;
    std::vector<NamedPoint> named_;
    std::optional<double> flip_;
};

// Of points on the grid.
std::string points_text(const std::vector<Position>& points, double height) {
    std::string text;
    for (const Position& point : points) text += shortest(point.x) + " " + shortest(on_grid(height - point.y)) + "\n";
    return text;
}

void append_curves(std::string& text, const std::vector<Outline>& outlines, bool closed, double height) {
    const auto count = std::ranges::count(outlines, closed, &Outline::closed);
    if (count == 0) return;
    text += (closed ? "OUTLINES=" : "CURVES=") + std::to_string(count) + "\n";
    for (const Outline& outline : outlines) {
        if (outline.closed != closed) continue;
        text += "POINTS=" + std::to_string(outline.points.size()) + "\n" + points_text(outline.points, height);
    }
}

// A list of names in which commas and quotes are safe.
std::string names_text(const std::vector<Landmark>& landmarks) {
    std::string text;
    for (const Landmark& landmark : landmarks) text += (text.empty() ? "" : ",") + csv_field(landmark.name);
    return text;
}

bool is_landmark_count(std::string_view line) {
    const std::string key = lower_case(trimmed(line.substr(0, line.find('='))));
    return line.find('=') != std::string_view::npos && (key == "lm" || key == "lm3");
}

}  // namespace

bool is_tps(const Source& source) {
    const std::string_view text = source.text;
    const std::size_t first = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    return is_landmark_count(text.substr(first, text.find_first_of("\r\n", first) - first)) ||
           lower_case(source.name).ends_with(".tps");
}

std::vector<std::size_t> tps_specimens(std::string_view text) {
    std::vector<std::size_t> starts;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", at), text.size());
        if (is_landmark_count(text.substr(at, end - at))) starts.push_back(at);
        at = end + 1;
    }
    return starts;
}

std::vector<Case> read_tps_cases(const Source& source, const CaseOptions& options) {
    std::vector<std::size_t> starts = tps_specimens(source.text);
    if (starts.empty() || source.text.find_first_not_of(" \t\r\n") < starts.front()) {
        throw source.error_at(source.text.find_first_not_of(" \t\r\n"), "a TPS file begins with a line LM=COUNT",
                              "docs/case_format.md shows one.");
    }
    starts.push_back(source.text.size());
    std::vector<Case> cases;
    for (std::size_t i = 0; i + 1 < starts.size(); ++i) {
        cases.push_back(TpsReader(source, starts[i], starts[i + 1], options).read());
    }
    return cases;
}

std::string to_tps(const Case& record, const CaseOptions& options) {
    const std::vector<Landmark> landmarks = all_landmarks(record);
    std::vector<Position> points, all;
    for (const Landmark& landmark : landmarks) points.push_back(on_grid(landmark.position));
    all = points;
    std::vector<Outline> outlines = record.outlines;
    for (Outline& outline : outlines) {
        std::ranges::transform(outline.points, outline.points.begin(), [](Position point) { return on_grid(point); });
        all.insert(all.end(), outline.points.begin(), outline.points.end());
    }
    double height = on_grid(options.image_height.value_or(range_about(all)));
    const auto reads_as_missing = [&](const Position& point) {
        return point.x == missing && on_grid(height - point.y) == missing;
    };
    while (std::ranges::any_of(points, reads_as_missing)) height = on_grid(height + 1);

    std::string text = "LM=" + std::to_string(points.size()) + "\n" + points_text(points, height);
    append_curves(text, outlines, false, height);
    append_curves(text, outlines, true, height);
    if (!record.image.empty()) text += "IMAGE=" + record.image + "\n";
    if (!record.name.empty()) text += "ID=" + record.name + "\n";
    text += "COMMENT=landmarks=" + names_text(landmarks) + "\nCOMMENT=flip=" + shortest(height) + "\n";
    for (const auto& [key, value] : settings_of(record))
        if (key != "name" && key != "scale_mm_per_px" && key != "image") text += "COMMENT=" + key + "=" + value + "\n";
    if (record.mm_per_pixel) text += "SCALE=" + shortest(*record.mm_per_pixel) + "\n";
    return text;
}

}  // namespace cephtool
