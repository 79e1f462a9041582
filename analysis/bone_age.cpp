#include "analysis/bone_age.h"

#include <cstdio>

#include "analysis/catalogue.h"
#include "framework/settings.h"
#include "geometry/line.h"
#include "platform/number_text.h"
#include "util/delimiter.h"

namespace tool {
namespace {

constexpr const char* built_in_male[] = {"0.82", "13.17", "0.0", "5.01"};
constexpr const char* built_in_female[] = {"-0.2", "6.2", "5.9", "4.74"};

double height(const tagCVBA& v, int base_from, int base_to, int top) {
    const Vec2 point = v.Point[top];
    return distance(point, foot_of_perpendicular(point, {v.Point[base_from], v.Point[base_to]}));
}

}  // namespace

BoneAgeCoefficients bone_age_coefficients(int sex) {
    const std::string file = with_delimiter(configured_analysis_root()) + "cvba.dat";
    const auto coefficient = [&](int index) {
        char key[16], value[1000];
        std::snprintf(key, sizeof key, sex == 1 ? "PARAM_M%d" : "PARAM_F%d", index);
        GetPrivateProfileStringA("CVB_AGE", key, (sex == 1 ? built_in_male : built_in_female)[index], value,
                                 sizeof value, file.c_str());
        return read_double(value);
    };
    return {coefficient(0), coefficient(1), coefficient(2), coefficient(3)};
}

double bone_age(const tagCVBA& vertebrae, const BoneAgeCoefficients& c) {
    const CPoint* p = vertebrae.Point;
    const double c3_anterior = height(vertebrae, 14, 15, 11), c3_depth = distance(p[12], p[13]);
    const double c4_anterior = height(vertebrae, 20, 21, 17), c4_depth = distance(p[18], p[19]);
    const double c4_posterior = height(vertebrae, 20, 21, 16);
    return c.constant + c.c3_height * (c3_anterior / c3_depth) + c.c4_height * (c4_anterior / c4_depth) +
           c.c4_ratio * (c4_anterior / c4_posterior);
}

}  // namespace tool
