// What the formula targets measure: a lateral face with every landmark at a place of its own.
#pragma once

#include <algorithm>
#include <cstdio>
#include <string>

#include "LandmarkTable.h"

namespace tool_fuzz {

struct Subject {
    tagPOINTLAT lateral{};
    tagPOINTMO cast{};
    unsigned short virtual_count = 0, user_count = 2;
    tagKPOINT virtuals[4] = {};
    tagUPOINT users[USER_POINT_MAX] = {};

    Subject() {
        lateral.Scale = cast.Scale = 0.1;
        for (int slot = 0; slot < LandmarkTable::Count(0); ++slot)
            *LandmarkTable::Point(0, &lateral, slot) = CPoint(100 + slot * 37 % 1000, 90 + slot * 53 % 1100);
        for (int slot = 0; slot < LandmarkTable::Count(2); ++slot)
            *LandmarkTable::Point(2, &cast, slot) = CPoint(10 + slot * 37 % 500, 9 + slot * 53 % 400);
        std::snprintf(lateral.UserName[0], 6, "Foo");
        lateral.UserPoint[0] = CPoint(17, 19);
    }
    void* record(int kind) { return kind == 2 ? static_cast<void*>(&cast) : &lateral; }
    void add_virtual(const std::string& construction) {
        if (virtual_count == 4) return;
        tagKPOINT& landmark = virtuals[virtual_count];
        std::snprintf(landmark.Name, sizeof landmark.Name, "V%d", virtual_count++);
        std::copy_n(construction.data(), std::min(construction.size(), sizeof landmark.Construction),
                    landmark.Construction);  // as long as the field, without a NUL
    }
};

// A property that must hold for any input.
inline void require(bool holds) {
    if (!holds) __builtin_trap();
}

}  // namespace tool_fuzz
