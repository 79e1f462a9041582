#include "analysis/landmarks.h"

#include <algorithm>
#include <cstring>

#include "analysis/cast_measures.h"
#include "analysis/functions.h"
#include "analysis/landmark_names.h"
#include "analysis/measures.h"
#include "analysis/virtual_landmarks.h"

namespace tool {
namespace {

template <std::size_t N>
bool is_name(const char (&field)[N], std::string_view name) {
    return name.size() <= N && std::memcmp(field, name.data(), name.size()) == 0 &&
           (name.size() == N || field[name.size()] == '\0');
}

}  // namespace

Landmarks::Landmarks(int kind, void* record, const unsigned short* virtual_count, const tagKPOINT* virtuals,
                     const unsigned short* user_count)
    : kind_(kind), virtuals_(virtuals), virtual_count_(virtuals && virtual_count ? *virtual_count : 0) {
    if (!record) return;
    const auto read_user_landmarks_and_scale = [&](const auto& of) {
        scale_ = of.Scale;
        user_names_ = of.UserName;
        user_ = of.UserPoint;
        user_count_ = user_count ? std::min<int>(*user_count, USER_POINT_MAX) : 0;
    };
    if (is_lateral(kind)) {
        const auto& lateral = *static_cast<const tagPOINTLAT*>(record);
        fixed_ = lateral.Point;
        read_user_landmarks_and_scale(lateral);
    } else if (is_frontal(kind)) {
        const auto& frontal = *static_cast<const tagPOINTPA*>(record);
        fixed_ = frontal.Point;
        read_user_landmarks_and_scale(frontal);
    } else {
        cast_ = static_cast<tagPOINTMO*>(record);
        read_user_landmarks_and_scale(*cast_);
    }
}

Landmarks::~Landmarks() = default;

void Landmarks::replace_points(const tagPOINT* fixed, const tagPOINT* user, double scale) {
    if (fixed) fixed_ = fixed;
    if (user) user_ = user;
    scale_ = scale;
}

Landmarks::Found Landmarks::find(std::string_view name) const {
    if (name.empty()) return {};
    if (fixed_)
        if (const auto slot = landmark_slot(kind_, name)) return {Source::fixed, *slot};
    for (int i = 0; i < user_count_; ++i)
        if (is_name(user_names_[i], name)) return {Source::user, i};
    for (int i = 0; i < virtual_count_; ++i)
        if (is_name(virtuals_[i].Name, name)) return {Source::virtually, i};
    return {};
}

Vec2 Landmarks::position(Found found) const {
    if (found.source == Source::fixed) return fixed_ ? Vec2(fixed_[found.slot]) : Vec2();
    if (found.source == Source::user) return user_[found.slot];
    return {};
}

std::string_view Landmarks::virtual_construction(int index) const {
    const auto& text = virtuals_[index].Construction;
    return {text, strnlen(text, sizeof text)};
}

double Landmarks::cast_measure(std::string_view token) const {
    if (shapes_ && cast_)
        for (const CastLine& line : lines_of_measure(token, *cast_)) note_shape(ShapeKind::length, line);
    return measured_cast(token, *this);
}

VirtualLandmarks<Vec2>& Landmarks::virtuals() {
    if (!resolved_) resolved_ = std::make_unique<VirtualLandmarks<Vec2>>(virtual_count_);
    return *resolved_;
}

void Landmarks::note_shape(ShapeKind kind, std::span<const Vec2> points) const {
    MeasuredShape& shape = shapes_->emplace_back(MeasuredShape{kind, {}});
    for (const Vec2 point : points) shape.points.push_back({point.x / steps_, point.y / steps_});
}

void Landmarks::note_shape(Construction construction, std::span<const Vec2> points, Vec2 made) const {
    constexpr struct {
        Construction construction;
        ShapeKind kind;
        std::size_t points;
    } shapes[] = {{Construction::middle, ShapeKind::middle, 2},
                  {Construction::foot, ShapeKind::foot, 3},
                  {Construction::crossing, ShapeKind::crossing, 4},
                  {Construction::bisector, ShapeKind::bisector, 3},
                  {Construction::extension, ShapeKind::extension, 2}};
    for (const auto& row : shapes) {
        if (row.construction != construction) continue;
        note_shape(row.kind, points.first(row.points));
        shapes_->back().points.push_back({made.x / steps_, made.y / steps_});
    }
}

void Landmarks::note_shape(Measure measure, std::span<const Vec2> points) const {
    ShapeKind kind = ShapeKind::length;
    switch (measure) {
        case Measure::length_right: kind = ShapeKind::length_right; break;
        case Measure::length_down: kind = ShapeKind::length_down; break;
        case Measure::angle1:
        case Measure::angle3: kind = ShapeKind::angle; break;
        case Measure::angle2:
        case Measure::angle4: kind = ShapeKind::line_angle; break;
        default: break;
    }
    note_shape(kind, points.first(static_cast<std::size_t>(points_needed(measure))));
}

}  // namespace tool
