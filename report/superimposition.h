// Tracings of one face at several times, laid over each other on structures that hardly change.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cases/case.h"
#include "tracing/page.h"
#include "tracing/plane_motion.h"

namespace cephtool {

// The line from `at` to `toward` coincides, and the points `at`.
struct Registration {
    const char* title;  // in English, for Texts
    const char* at;
    const char* toward;
};

// Anterior cranial base, palatal plane and mandibular plane. After W. R. Proffit, Contemporary Orthodontics, chapter 6.
inline constexpr Registration registrations[] = {
    {"Superimposition on S-N at S", "S", "N"},
    {"Superimposition on ANS-PNS at ANS", "ANS", "PNS"},
    {"Superimposition on the mandibular plane at Me", "Me", "Go"},
};

// Landmarks of the registration that the case lacks.
std::vector<std::string> missing_for(const Registration& registration, const Case& record);

// From the pixels of `other` to those of `base`: lengths in mm are kept. Nothing when a landmark is missing or the line
// has no length.
std::optional<AffineMap> superimposed(const Registration& registration, const Case& base, const Case& other);

Tracing moved(Tracing tracing, const AffineMap& map);

}  // namespace cephtool
