#include "cases/case_record.h"

#include <CodePage.h>
#include <LandmarkTable.h>

#include <cmath>
#include <cstring>
#include <variant>

namespace cephtool {
namespace {

constexpr int whole_steps = 1, fine_steps = 64;

bool is_whole(Position p) {
    return p.x == std::floor(p.x) && p.y == std::floor(p.y);
}

int steps_a_pixel(const Case& record) {
    for (const auto* landmarks : {&record.landmarks, &record.user})
        for (const Landmark& landmark : *landmarks)
            if (!is_whole(landmark.position)) return fine_steps;
    return whole_steps;
}

// Coordinates are bounded by the readers: a million pixels, 64 million steps.
CPoint point_of(Position p, int steps) {
    return {static_cast<int>(std::lround(p.x * steps)), static_cast<int>(std::lround(p.y * steps))};
}

// The readers made sure that the text fits and has its place in the code page.
template <std::size_t size>
void copy_text(const std::string& utf8, char (&field)[size]) {
    CString bytes;
    CodePage932FromUtf8(utf8.c_str(), &bytes);
    std::strncpy(field, bytes, size - 1);
}

}  // namespace

bool counts_as_absent(Position position) {
    const CPoint point = fine_point(position);
    return point.x == 0 && point.y == 0;
}

CPoint fine_point(Position position) {
    return point_of(position, fine_steps);
}

bool is_scale(double mm_per_pixel) {
    constexpr double finest = 1e-6, coarsest = 1e6;  // no picture of a head comes near; beyond, pages have no size
    return mm_per_pixel >= finest && mm_per_pixel <= coarsest;
}

struct CaseRecord::Fields {
    std::variant<tagPOINTLAT, tagPOINTPA, tagPOINTMO> record;
    std::vector<tagKPOINT> virtuals;
    std::vector<tagUPOINT> user;
    unsigned short virtual_count = 0, user_count = 0;
    int steps = whole_steps;

    void* address() {
        return std::visit([](auto& kind) -> void* { return &kind; }, record);
    }
};

CaseRecord::CaseRecord(const Case& record) : fields_(std::make_unique<Fields>()) {
    const int steps = fields_->steps = steps_a_pixel(record);
    const int kind = static_cast<int>(record.kind);
    if (record.kind == Kind::frontal) fields_->record = tagPOINTPA{};
    if (record.kind == Kind::model) {
        tagPOINTMO cast{};
        cast.Palate = record.palate.value_or(-1);
        fields_->record = cast;
    }
    for (const Landmark& landmark : record.landmarks) {
        const int slot = LandmarkTable::Find(kind, landmark.name.c_str());
        if (CPoint* point = LandmarkTable::Point(kind, fields_->address(), slot)) {
            *point = point_of(landmark.position, steps);
        }
    }
    std::visit(
        [&](auto& fields) {
            fields.Scale = record.mm_per_pixel.value() / steps;
            for (std::size_t i = 0; i < record.user.size(); ++i) {
                copy_text(record.user[i].name, fields.UserName[i]);
                fields.UserPoint[i] = point_of(record.user[i].position, steps);
            }
        },
        fields_->record);
    for (const Landmark& landmark : record.user) copy_text(landmark.name, fields_->user.emplace_back().Name);
    for (const VirtualLandmark& made : record.virtuals) {
        tagKPOINT& point = fields_->virtuals.emplace_back();
        copy_text(made.name, point.Name);
        copy_text(made.construction, point.Construction);
    }
    fields_->virtual_count = static_cast<unsigned short>(fields_->virtuals.size());
    fields_->user_count = static_cast<unsigned short>(fields_->user.size());
}

CaseRecord::~CaseRecord() = default;

SheetSubject CaseRecord::subject(int sex, int band) {
    return {fields_->address(),
            &fields_->virtual_count,
            fields_->virtuals.data(),
            &fields_->user_count,
            fields_->user.data(),
            sex,
            band,
            fields_->steps};
}

}  // namespace cephtool
