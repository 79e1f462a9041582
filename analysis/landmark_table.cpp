#include "LandmarkTable.h"

#include "AnalysisSheet.h"
#include "analysis/cast_points.h"
#include "analysis/face.h"
#include "analysis/landmark_names.h"
#include "analysis/point_expression.h"

namespace {

bool is_film(int kind) {
    return tool::is_lateral(kind) || tool::is_frontal(kind);
}

}  // namespace

int LandmarkTable::Count(int kind) {
    return is_film(kind) ? static_cast<int>(tool::landmark_names(kind).size()) : tool::cast_point_count;
}

const char* LandmarkTable::Name(int kind, int slot) {
    if (slot < 0 || slot >= Count(kind)) return "";
    return is_film(kind) ? tool::landmark_names(kind)[slot].data() : tool::cast_point_name(slot).data();
}

int LandmarkTable::Find(int kind, const char* name) {
    if (!name) return -1;
    if (is_film(kind)) return tool::landmark_slot(kind, name).value_or(-1);
    for (int slot = 0; slot < tool::cast_point_count; ++slot)
        if (tool::cast_point_name(slot) == name) return slot;
    return -1;
}

CPoint* LandmarkTable::Point(int kind, void* record, int slot) {
    if (!record || slot < 0 || slot >= Count(kind)) return nullptr;
    if (tool::is_lateral(kind)) return &static_cast<tagPOINTLAT*>(record)->Point[slot];
    if (tool::is_frontal(kind)) return &static_cast<tagPOINTPA*>(record)->Point[slot];
    return &tool::cast_point(*static_cast<tagPOINTMO*>(record), slot);
}

CPointD LandmarkTable::Position(int kind, const char* name, const SheetSubject& subject) {
    return tool::or_failed(CPointD(), [&] {
        tool::Landmarks landmarks(kind, subject.record, subject.kCount, subject.kPoints, subject.uCount);
        landmarks.set_steps(subject.steps);
        const tool::Vec2 found = tool::PointReader(landmarks).landmark(tool::text_or_empty(name));
        const double pixel = landmarks.steps();
        return CPointD(found.x / pixel, found.y / pixel);
    });
}
