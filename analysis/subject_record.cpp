#include <cmath>
#include <cstring>
#include <variant>

#include "LandmarkTable.h"
#include "MeasuredAnalysis.h"
#include "analysis/film_steps.h"
#include "platform/code_page.h"
#include "platform/numbers.h"

namespace tool {
namespace {

constexpr int whole_steps = 1;

bool is_far(FilmPoint p) {
    return !(std::abs(p.x) <= farthest_px && std::abs(p.y) <= farthest_px);
}

// Of coordinates that are not far. Most are whole, and say so without a call of the C library.
bool is_whole(double coordinate) {
    return coordinate == truncated(coordinate);
}

int nearest(double coordinate) {
    const int whole = truncated(coordinate);
    return whole == coordinate ? whole : static_cast<int>(std::lround(coordinate));
}

CPoint point_of(FilmPoint p, int steps) {
    return {nearest(p.x * steps), nearest(p.y * steps)};
}

// False when the text does not fit or has no place in the code page.
template <std::size_t size>
bool copy_text(const std::string& utf8, char (&field)[size]) {
    const auto bytes = code_page_from_utf8(utf8);
    if (!bytes || bytes->size() >= size || bytes->find('\0') != std::string::npos) return false;
    std::memcpy(field, bytes->data(), bytes->size());
    return true;
}

}  // namespace

struct SubjectRecord::Fields {
    std::variant<tagPOINTLAT, tagPOINTPA, tagPOINTMO> record;
    std::vector<tagKPOINT> virtuals;
    std::vector<tagUPOINT> user;
    unsigned short virtual_count = 0, user_count = 0;
    int steps = whole_steps;

    void* address() {
        return std::visit([](auto& kind) -> void* { return &kind; }, record);
    }

    // "" or what is wrong with the landmark.
    std::string place(int kind, void* table, const PlacedLandmark& landmark) {
        const bool by_name = landmark.slot < 0;
        const int slot = by_name ? LandmarkTable::Find(kind, landmark.name.c_str()) : landmark.slot;
        if (is_far(landmark.at))
            return "Landmark \"" + (by_name ? landmark.name : LandmarkTable::Name(kind, slot)) + "\" lies too far off";
        if (CPoint* const point = LandmarkTable::Point(kind, table, slot)) {
            *point = point_of(landmark.at, steps);
            return {};
        }
        if (!by_name) return "There is no landmark of number " + std::to_string(slot);
        if (user.size() >= USER_POINT_MAX) return "There are more than 100 landmarks that the table does not have";
        tagUPOINT own{};
        if (!copy_text(landmark.name, own.Name)) return "\"" + landmark.name + "\" is no name for a landmark";
        std::visit(
            [&](auto& fields) {
                std::memcpy(fields.UserName[user.size()], own.Name, sizeof own.Name);
                fields.UserPoint[user.size()] = point_of(landmark.at, steps);
            },
            record);
        user.push_back(own);
        return {};
    }
};

SubjectRecord::SubjectRecord(std::unique_ptr<Fields> fields) : fields_(std::move(fields)) {}
SubjectRecord::SubjectRecord(SubjectRecord&&) noexcept = default;
SubjectRecord& SubjectRecord::operator=(SubjectRecord&&) noexcept = default;
SubjectRecord::~SubjectRecord() = default;

Result<SubjectRecord> SubjectRecord::of(Kind kind, const Subject& subject) {
    if (!(subject.mm_per_pixel > 0) || !std::isfinite(subject.mm_per_pixel)) return Failure{"The scale is not above 0"};
    std::unique_ptr<Fields> fields(new Fields);  // not filled with zeros as a whole before
    const Kind record_kind = measured_on(kind);
    if (record_kind == Kind::frontal) fields->record = tagPOINTPA{};
    if (record_kind == Kind::cast) fields->record.emplace<tagPOINTMO>().Palate = subject.palate.value_or(-1);
    for (const PlacedLandmark& landmark : subject.landmarks)
        if (!is_whole(landmark.at.x) || !is_whole(landmark.at.y)) fields->steps = fine_steps;
    std::visit([&](auto& record) { record.Scale = subject.mm_per_pixel / fields->steps; }, fields->record);
    void* const table = fields->address();
    for (const PlacedLandmark& landmark : subject.landmarks) {
        const std::string fault = fields->place(static_cast<int>(record_kind), table, landmark);
        if (!fault.empty()) return Failure{fault};
    }
    for (const VirtualLandmark& made : subject.virtuals) {
        tagKPOINT& point = fields->virtuals.emplace_back();
        if (!copy_text(made.name, point.Name) || !copy_text(made.construction, point.Construction))
            return Failure{"\"" + made.name + "\" is no virtual landmark: its name or construction is too long"};
    }
    if (fields->virtuals.size() > UINT16_MAX) return Failure{"There are too many virtual landmarks"};
    fields->virtual_count = static_cast<unsigned short>(fields->virtuals.size());
    fields->user_count = static_cast<unsigned short>(fields->user.size());
    return SubjectRecord(std::move(fields));
}

SheetSubject SubjectRecord::subject(Sex sex, int band) {
    return {fields_->address(),
            &fields_->virtual_count,
            fields_->virtuals.data(),
            &fields_->user_count,
            fields_->user.data(),
            static_cast<int>(sex),
            band,
            fields_->steps};
}

}  // namespace tool
