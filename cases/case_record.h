// A case as the engine wants it: the kind's record of whole pixels and the lists beside it.
//
// A record holds whole pixels. When any coordinate has a fraction, everything is measured in 1/64 pixel: coordinates
// times 64, the scale divided by 64. Both steps are powers of two, so lengths and angles keep their bits,
// and constructions count in pixels as before.
#pragma once

#include <AnalysisSheet.h>

#include <memory>

#include "cases/case.h"

namespace cephtool {

// Closer to (0, 0) than the finest step of a record, so that the engine would take it for a missing landmark.
bool counts_as_absent(Position position);

// In 1/64 pixel.
CPoint fine_point(Position position);

// From 0.000001 to 1000000 mm a pixel.
bool is_scale(double mm_per_pixel);

class CaseRecord {
 public:
    // The case must have a scale.
    explicit CaseRecord(const Case& record);
    ~CaseRecord();
    CaseRecord(const CaseRecord&) = delete;
    CaseRecord& operator=(const CaseRecord&) = delete;

    // Stays valid as long as this object. Sexes other than 1 are female, as the engine has it.
    SheetSubject subject(int sex, int band);

 private:
    struct Fields;
    std::unique_ptr<Fields> fields_;
};

}  // namespace cephtool
