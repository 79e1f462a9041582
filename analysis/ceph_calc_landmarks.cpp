// CCephCalc: landmarks and point expressions.
#include "CephCalc.h"
#include "analysis/face.h"
#include "analysis/point_expression.h"

using tool::Landmarks;
using tool::or_failed;
using tool::PointReader;
using tool::text_or_empty;
using tool::Vec2;

namespace {

CPointD exported(Vec2 point) {
    return {point.x, point.y};
}

// Index of a virtual landmark in the list: the entry itself, else one of its name and construction; -1 for none.
int index_of(const tagKPOINT& wanted, const Landmarks& landmarks) {
    for (int i = 0; i < landmarks.virtual_count(); ++i)
        if (&landmarks.virtual_landmark(i) == &wanted) return i;
    for (int i = 0; i < landmarks.virtual_count(); ++i) {
        const tagKPOINT& entry = landmarks.virtual_landmark(i);
        if (std::strncmp(entry.Name, wanted.Name, sizeof entry.Name) == 0 &&
            std::strncmp(entry.Construction, wanted.Construction, sizeof entry.Construction) == 0)
            return i;
    }
    return -1;
}

}  // namespace

CPointD CCephCalc::PointPos(int kind, const char* name, void* record, unsigned short* kCount, tagKPOINT* kPoints,
                            unsigned short* uCount, tagUPOINT*) {
    return or_failed(CPointD(), [&] {
        Landmarks landmarks(kind, record, kCount, kPoints, uCount);
        return exported(PointReader(landmarks).landmark(text_or_empty(name)));
    });
}

CPointD CCephCalc::Calc_Point(int kind, char* text, void* record, unsigned short* kCount, tagKPOINT* kPoints,
                              unsigned short* uCount, tagUPOINT*) {
    return or_failed(CPointD(), [&] {
        Landmarks landmarks(kind, record, kCount, kPoints, uCount);
        const auto point = PointReader(landmarks).first(text_or_empty(text));
        if (!point) return CPointD();
        tool::blank(text, point->end);
        return exported(point->point);
    });
}

int CCephCalc::GetVirtualPoint(unsigned int kind, double scale, tagKPOINT* which, unsigned short* kCount,
                               tagKPOINT* kPoints, unsigned short* uCount, tagUPOINT*, tagPOINT* fixedPoints,
                               tagPOINT* userPoints, void* record, CPointD* out) {
    const auto resolved = or_failed(std::optional<Vec2>(), [&]() -> std::optional<Vec2> {
        if (!which) return std::nullopt;
        Landmarks landmarks(static_cast<int>(kind), record, kCount, kPoints, uCount);
        landmarks.replace_points(fixedPoints, userPoints, scale);
        PointReader points(landmarks);
        const int index = index_of(*which, landmarks);
        if (index >= 0) return points.virtual_landmark(index);
        return points.construction({which->Construction, strnlen(which->Construction, sizeof which->Construction)});
    });
    if (out) *out = exported(resolved.value_or(Vec2()));
    return resolved ? 1 : 0;
}
