// A case as the library measures it.
#pragma once

#include <MeasuredAnalysis.h>

#include "cases/case.h"

namespace cephtool {

// Closer to (0, 0) than the finest step of a record, so that the engine would take it for a missing landmark.
bool counts_as_absent(Position position);

// In 1/64 pixel.
CPoint fine_point(Position position);

// From 0.000001 to 1000000 mm a pixel.
bool is_scale(double mm_per_pixel);

// The case must have a scale. Age, dental stage and band are left out.
tool::Subject subject_of(const Case& record);

class CaseRecord {
 public:
    // The case must have a scale.
    explicit CaseRecord(const Case& record);

    // Stays valid as long as this object. Sexes other than 1 are female, as the engine has it.
    SheetSubject subject(int sex, int band);

 private:
    tool::SubjectRecord record_;
};

}  // namespace cephtool
