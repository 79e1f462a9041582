// A sample case as the library's own record.
#pragma once

#include <AnalysisSheet.h>

#include <string>
#include <vector>

namespace constructions {

struct Outline {
    std::string name;
    std::vector<CPoint> points;
    bool closed = false;
};

struct Sample {
    int kind = 0;
    tagPOINTLAT film{};
    tagPOINTPA front{};
    tagPOINTMO cast{};
    unsigned short own_count = 0;
    tagUPOINT own[USER_POINT_MAX] = {};
    std::vector<Outline> outlines;

    void* record();
    CPoint at(const char* landmark) const;
};

// Reads a JSON case of whole pixels.
Sample read_sample(const std::string& path);

}  // namespace constructions
