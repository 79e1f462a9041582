#include "analysis/error_frame.h"

#include <numbers>

#include "FilmAxes.h"
#include "analysis/landmark_names.h"
#include "geometry/angle.h"

namespace tool {

ErrorFrame error_frame(const Landmarks& landmarks) {
    if (!is_lateral(landmarks.kind())) return {};
    const auto place = [&](std::string_view name) { return landmarks.position(landmarks.find(name)); };
    const auto placed = [&](Vec2 p, Vec2 q) { return p != Vec2() && q != Vec2() && !at_one_place(p, q); };
    const auto frame = [](ErrorAxes axes, Vec2 way) {
        const Vec2 along = way / length(way);
        return ErrorFrame{axes, along, {along.y, -along.x}};
    };
    const Vec2 po = place("Po"), orbitale = place("Or"), s = place("S"), n = place("N");
    if (placed(po, orbitale)) return frame(ErrorAxes::frankfort, orbitale - po);
    // Frankfort is taken to fall forward by 7 degrees from S-N (Burstone et al., J Oral Surg 1978;36:269).
    constexpr double frankfort_to_sn = 7 / (180.0 / std::numbers::pi);
    if (placed(s, n))
        return frame(ErrorAxes::sella_nasion, turned(n - s, n.x < s.x ? -frankfort_to_sn : frankfort_to_sn));
    return {};
}

Result<FilmAxes> film_axes(Kind kind, const Subject& subject) {
    Result<SubjectRecord> record = SubjectRecord::of(kind, subject);
    if (!record) return Failure{record.reason()};
    const SheetSubject fields = record->subject(Sex::male, 0);
    const Landmarks landmarks(static_cast<int>(measured_on(kind)), fields.record, fields.kCount, fields.kPoints,
                              fields.uCount);
    const ErrorFrame frame = error_frame(landmarks);
    return FilmAxes{frame.axes, {frame.along.x, frame.along.y}, {frame.across.x, frame.across.y}};
}

}  // namespace tool
