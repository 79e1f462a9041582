#include "analysis/bone_age.h"

#include "analysis/catalogue.h"
#include "framework/settings.h"
#include "geometry/line.h"
#include "platform/number_text.h"
#include "platform/settings_file.h"
#include "platform/settings_form.h"
#include "util/delimiter.h"

namespace tool {
namespace {

constexpr const char* built_in_male[] = {"0.82", "13.17", "0.0", "5.01"};
constexpr const char* built_in_female[] = {"-0.2", "6.2", "5.9", "4.74"};

double height(const tagCVBA& v, int base_from, int base_to, int top) {
    const Vec2 point = v.Point[top];
    return distance(point, foot_of_perpendicular(point, {v.Point[base_from], v.Point[base_to]}));
}

constexpr const char* section = "CVB_AGE";

// `value` gives a key's value, or the other text when there is no such key.
BoneAgeCoefficients coefficients(int sex, auto&& value) {
    const auto coefficient = [&](int index) {
        const std::string key = (sex == 1 ? "PARAM_M" : "PARAM_F") + print_int(index);
        return read_double(value(key, (sex == 1 ? built_in_male : built_in_female)[index]));
    };
    return {coefficient(0), coefficient(1), coefficient(2), coefficient(3)};
}

}  // namespace

BoneAgeCoefficients bone_age_coefficients(std::string_view cvba_dat, int sex) {
    const std::string text = settings_text(std::string(cvba_dat));
    int from_file = 0;
    BoneAgeCoefficients found = coefficients(sex, [&](const std::string& key, const char* built_in) {
        const auto value = setting(text, section, key);
        from_file += value && !value->empty();
        return value.value_or(built_in);
    });
    found.from_file = from_file;
    return found;
}

BoneAgeCoefficients configured_bone_age_coefficients(int sex) {
    const std::string file = with_delimiter(configured_analysis_root()) + "cvba.dat";
    return coefficients(sex, [&](const std::string& key, const char* built_in) {
        char value[1000];
        GetPrivateProfileStringA(section, key.c_str(), built_in, value, sizeof value, file.c_str());
        return std::string(value);
    });
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
