#include "cases/mirror.h"

#include <algorithm>
#include <optional>

#include "cases/case_record.h"
#include "cases/orientation.h"

namespace cephtool {
namespace {

// Calls `visit` with every point of the case, which it may change.
template <class Record, class Visit>
void for_each_point(Record& record, Visit visit) {
    for (auto* landmarks : {&record.landmarks, &record.vertebrae, &record.user})
        for (auto& landmark : *landmarks) visit(landmark.position, true);
    for (auto& outline : record.outlines)
        for (auto& point : outline.points) visit(point, false);
}

std::optional<Remark> remark_on(const Case& record) {
    switch (orientation(record)) {
        case Orientation::mirrored:
            return record.kind == Kind::frontal
                       ? Remark{"mirrored",
                                "The film is mirrored, or its right and left landmarks are exchanged: signs of angles "
                                "and lengths are reversed. --mirror turns it round."}
                       : Remark{"mirrored",
                                "The film is mirrored, the face looks left: signs of angles and lengths are reversed. "
                                "--mirror turns it round."};
        case Orientation::y_flipped:
            return Remark{"y_flipped",
                          "The face stands on its head, as when y points up where the format has it down: signs of "
                          "angles and lengths are reversed. --flip-y turns it round."};
        case Orientation::reversed:
            return Remark{"reversed",
                          "The film is mirrored, or its y points up where the format has it down: signs of angles and "
                          "lengths are reversed. --mirror or --flip-y turns it round."};
        default: return {};
    }
}

}  // namespace

double mirror_extent(const Case& record, Axis axis) {
    std::optional<double> least, greatest;
    for_each_point(record, [&](const Position& point, bool) {
        const double at = axis == Axis::x ? point.x : point.y;
        least = least ? std::min(*least, at) : at;
        greatest = greatest ? std::max(*greatest, at) : at;
    });
    return least.value_or(0) + greatest.value_or(0);
}

Case mirrored(Case record, Axis axis, double extent) {
    const auto turned = [&](const Position& point) {
        return axis == Axis::x ? Position{extent - point.x, point.y} : Position{point.x, extent - point.y};
    };
    bool on_empty_point;
    do {
        on_empty_point = false;
        for_each_point(record, [&](const Position& point, bool is_landmark) {
            if (is_landmark && counts_as_absent(turned(point))) on_empty_point = true;
        });
        extent += on_empty_point;
    } while (on_empty_point);
    for_each_point(record, [&](Position& point, bool) { point = turned(point); });
    return record;
}

Case turned_right(Case record, const CaseOptions& options) {
    if (record.kind == Kind::model) return record;
    const auto turn = [&](Axis axis, std::optional<double> extent, Remark remark) {
        if (orientation(record) == Orientation::right) {
            record.notes.push_back("it lies as it should already, so " +
                                   std::string(axis == Axis::x ? "--mirror" : "--flip-y") + " did nothing");
            return;
        }
        record = mirrored(std::move(record), axis, extent.value_or(mirror_extent(record, axis)));
        record.remarks.push_back(std::move(remark));
        if (extent) return;
        record.off_its_picture = true;
        if (record.image.empty()) return;
        record.image.clear();
        record.notes.emplace_back("the X-ray is not turned with it, so it is left out");
    };
    if (options.flip_y) {
        turn(Axis::y, options.image_height, {"measured_flipped", "Measured with y turned round, as --flip-y says."});
    }
    if (options.mirror) turn(Axis::x, {}, {"measured_mirrored", "Measured mirrored, as --mirror says."});
    if (const std::optional<Remark> remark = remark_on(record)) record.remarks.push_back(*remark);
    return record;
}

}  // namespace cephtool
