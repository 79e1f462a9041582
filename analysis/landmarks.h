// The landmarks of one record as the formulas see them: found by name, resolved to a position. Coordinates are
// pixels, or whole steps of them.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>

#include "Records.h"
#include "geometry/vec2.h"

namespace tool {

class VirtualLandmarks;

// A record with the lists that travel with it. Remembers resolved virtual landmarks, so it serves one call of one
// thread; the record must not change meanwhile.
class Landmarks {
 public:
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
    Vec2 fixed(std::string_view name) const { return position(find(name)); }

    int kind() const { return kind_; }
    double scale() const { return scale_; }  // mm a step
    // Steps of the coordinates a pixel; 1 when they are pixels.
    void set_steps(int steps) { steps_ = std::max(steps, 1); }
    int steps() const { return steps_; }
    // Decimals of cast measures, when they are known; else each measure reads the host's settings.
    void set_cast_decimals(std::optional<int> decimals) { cast_decimals_ = decimals; }
    std::optional<int> cast_decimals() const { return cast_decimals_; }
    tagPOINTMO* cast() const { return cast_; }
    int virtual_count() const { return virtual_count_; }
    const tagKPOINT& virtual_landmark(int index) const { return virtuals_[index]; }
    VirtualLandmarks& virtuals();

 private:
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
    tagPOINTMO* cast_ = nullptr;
    std::unique_ptr<VirtualLandmarks> resolved_;
};

}  // namespace tool
