// The landmarks of one record as the formulas see them: found by name, resolved to a position. Coordinates are
// pixels, or whole steps of them.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "MeasuredShape.h"
#include "Records.h"
#include "analysis/arithmetic.h"
#include "geometry/vec2.h"

namespace tool {

template <class Point>
class VirtualLandmarks;

// A record with the lists that travel with it. Remembers resolved virtual landmarks, so it serves one call of one
// thread; the record must not change meanwhile.
class Landmarks {
 public:
    // What formulas over them come to: numbers at once (arithmetic.h).
    using Point = Vec2;
    using Number = double;

    // `record` is of the kind's type; any pointer may be null, which leaves its landmarks unknown.
    Landmarks(int kind, void* record, const unsigned short* virtual_count, const tagKPOINT* virtuals,
              const unsigned short* user_count);
    ~Landmarks();
    Landmarks(const Landmarks&) = delete;
    Landmarks& operator=(const Landmarks&) = delete;

    // Reads positions and scale from elsewhere than the record; a null array leaves the record's own.
    void replace_points(const tagPOINT* fixed, const tagPOINT* user, double scale);

    enum class Source { none, fixed, user, virtually };
    struct Found {
        Source source = Source::none;
        int slot = 0;
    };
    // Fixed names first, then user, then virtual ones; names compare case-sensitively.
    Found find(std::string_view name) const;

    // Of a fixed or user landmark; (0, 0) for any other. Virtual ones are constructed by PointReader.
    Vec2 position(Found found) const;

    int kind() const { return kind_; }
    bool has_record() const { return user_ != nullptr; }
    double scale() const { return scale_; }  // mm a step
    // Steps of the coordinates a pixel; 1 when they are pixels.
    void set_steps(int steps) { steps_ = std::max(steps, 1); }
    int steps() const { return steps_; }
    // Decimals of cast measures, when they are known; else each measure reads the host's settings.
    void set_cast_decimals(std::optional<int> decimals) { cast_decimals_ = decimals; }
    std::optional<int> cast_decimals() const { return cast_decimals_; }
    // From here on what is constructed and measured is told there, in pixels; null: no longer.
    void record_shapes(std::vector<MeasuredShape>* shapes) { shapes_ = shapes; }
    tagPOINTMO* cast() const { return cast_; }
    int virtual_count() const { return virtual_count_; }
    const tagKPOINT& virtual_landmark(int index) const { return virtuals_[index]; }
    std::string_view virtual_construction(int index) const;
    VirtualLandmarks<Vec2>& virtuals();

    // What formulas come to.
    bool at_one_place(Vec2 p, Vec2 q) const { return tool::at_one_place(p, q); }
    bool parallel(const std::array<Vec2, 4>& points) const { return tool::parallel(points); }
    Vec2 constructed(Construction construction, const std::array<Vec2, 4>& points, double number) const {
        const Vec2 made = tool::constructed(construction, points, number, scale_, steps_);
        if (shapes_) note_shape(construction, points, made);
        return made;
    }
    Vec2 effective_a(Vec2 n, Vec2 a, const std::array<Vec2, 2>& incisor, Vec2 u1c) const {
        const Vec2 made = tool::effective_a(n, a, u1c, incisor_lean(n, a, {incisor[0], incisor[1]}), scale_);
        if (shapes_) note_shape(ShapeKind::effective_a, std::array{n, a, incisor[0], incisor[1], u1c, made});
        return made;
    }
    double measured(Measure measure, const std::array<Vec2, 4>& points) const {
        if (shapes_) note_shape(measure, points);
        return tool::measured(measure, points, scale_);
    }
    double cast_measure(std::string_view token) const;
    double combined(Operation operation, double left, double right) const {
        return tool::combined(operation, left, right);
    }
    double first_not_zero(std::span<const double> numbers) const { return tool::first_not_zero(numbers); }
    double number(double number) const { return number; }

 private:
    void note_shape(ShapeKind kind, std::span<const Vec2> points) const;
    void note_shape(Construction construction, std::span<const Vec2> points, Vec2 made) const;
    void note_shape(Measure measure, std::span<const Vec2> points) const;

    int kind_;
    const tagPOINT* fixed_ = nullptr;
    const char (*user_names_)[6] = nullptr;
    const tagPOINT* user_ = nullptr;
    int user_count_ = 0;
    const tagKPOINT* virtuals_ = nullptr;
    int virtual_count_ = 0;
    double scale_ = 0;
    int steps_ = 1;
    std::optional<int> cast_decimals_;
    std::vector<MeasuredShape>* shapes_ = nullptr;
    tagPOINTMO* cast_ = nullptr;
    std::unique_ptr<VirtualLandmarks<Vec2>> resolved_;
};

}  // namespace tool
