#include "analysis/cast_measures.h"

#include <algorithm>

#include "analysis/cast_points.h"
#include "geometry/line.h"

namespace tool {
namespace {

enum class Quantity { arch_width, arch_length, tooth_sum, tooth_ratio, palate };

struct Measure {
    std::string_view token;
    Quantity quantity;
    CastCurve curve;  // of arch measures; of tooth sums only whether it is lower
    int first_tooth, last_tooth;
};

constexpr int first_front = 3, last_front = 8, last_tooth = teeth_in_arch - 1;
constexpr CastCurve any_upper = CastCurve::upper_coronal, any_lower = CastCurve::lower_coronal;

constexpr Measure measures[] = {
    {"[UCAW]", Quantity::arch_width, CastCurve::upper_coronal, 0, 0},
    {"[UCAL]", Quantity::arch_length, CastCurve::upper_coronal, 0, 0},
    {"[UBAW]", Quantity::arch_width, CastCurve::upper_basal, 0, 0},
    {"[UBAL]", Quantity::arch_length, CastCurve::upper_basal, 0, 0},
    {"[LCAW]", Quantity::arch_width, CastCurve::lower_coronal, 0, 0},
    {"[LCAL]", Quantity::arch_length, CastCurve::lower_coronal, 0, 0},
    {"[LBAW]", Quantity::arch_width, CastCurve::lower_basal, 0, 0},
    {"[LBAL]", Quantity::arch_length, CastCurve::lower_basal, 0, 0},
    {"[UATW]", Quantity::tooth_sum, any_upper, first_front, last_front},
    {"[UTTW]", Quantity::tooth_sum, any_upper, 0, last_tooth},
    {"[LATW]", Quantity::tooth_sum, any_lower, first_front, last_front},
    {"[LTTW]", Quantity::tooth_sum, any_lower, 0, last_tooth},
    {"[ATR]", Quantity::tooth_ratio, any_lower, first_front, last_front},
    {"[TTR]", Quantity::tooth_ratio, any_lower, 0, last_tooth},
    {"[PLTU]", Quantity::palate, any_upper, 0, 0},
};

const Measure* find_measure(std::string_view token) {
    const auto found = std::ranges::find(measures, token, &Measure::token);
    return found == std::end(measures) ? nullptr : found;
}

double tooth_sum(tagPOINTMO& record, bool lower, const Measure& m) {
    double sum = 0;
    for (int tooth = m.first_tooth; tooth <= m.last_tooth; ++tooth) {
        const int slot = tooth_slot(lower, tooth);
        sum += distance(cast_point(record, slot), cast_point(record, slot + 1)) * record.Scale;
    }
    return sum;
}

double arch_width(tagPOINTMO& record, CastCurve curve) {
    const int slot = curve_slot(curve);
    return distance(cast_point(record, slot), cast_point(record, slot + 1)) * record.Scale;
}

double arch_length(tagPOINTMO& record, CastCurve curve) {
    const int slot = curve_slot(curve);
    const Vec2 front = cast_point(record, slot + 2);
    const Line rear{cast_point(record, slot + 3), cast_point(record, slot + 4)};
    return distance(front, foot_of_perpendicular(front, rear)) * record.Scale;
}

bool lacks_a_point(std::string_view token, tagPOINTMO& record) {
    return std::ranges::any_of(points_of_measure(token),
                               [&](int slot) { return cast_point(record, slot) == CPoint(); });
}

}  // namespace

bool is_cast_token(std::string_view token) {
    return find_measure(token) != nullptr || cast_terms(token);
}

std::vector<int> points_of_measure(std::string_view token) {
    std::vector<int> slots;
    const Measure* m = find_measure(token);
    if (!m) {
        if (const auto terms = cast_terms(token))
            for (const CastTerm& term : *terms)
                for (const CastPlace& place : term.places) {
                    slots.push_back(place.slot);
                    if (place.other != place.slot) slots.push_back(place.other);
                }
        return slots;
    }
    if (m->quantity == Quantity::palate) return slots;
    const int base = curve_slot(m->curve);
    if (m->quantity == Quantity::arch_width) return {base, base + 1};
    if (m->quantity == Quantity::arch_length) return {base + 2, base + 3, base + 4};
    for (const bool lower : {false, true}) {
        if (m->quantity == Quantity::tooth_sum && lower != (m->curve == any_lower)) continue;
        for (int slot = tooth_slot(lower, m->first_tooth); slot <= tooth_slot(lower, m->last_tooth) + 1; ++slot)
            slots.push_back(slot);
    }
    return slots;
}

double cast_measure(std::string_view token, tagPOINTMO& record) {
    if (lacks_a_point(token, record)) return 0.0;
    const Measure* m = find_measure(token);
    if (!m) {
        double sum = 0;
        if (const auto terms = cast_terms(token))
            for (const CastTerm& term : *terms) sum += measured_term(term, record) * record.Scale;
        return sum;
    }
    switch (m->quantity) {
        case Quantity::arch_width: return arch_width(record, m->curve);
        case Quantity::arch_length: return arch_length(record, m->curve);
        case Quantity::tooth_sum: return tooth_sum(record, m->curve == any_lower, *m);
        case Quantity::tooth_ratio: {
            const double upper = tooth_sum(record, false, *m);
            return upper == 0 ? 0.0 : tooth_sum(record, true, *m) / upper * 100.0;
        }
        case Quantity::palate: return record.Palate;
    }
    return 0.0;
}

std::vector<CastLine> lines_of_measure(std::string_view token, tagPOINTMO& record) {
    std::vector<CastLine> lines;
    if (lacks_a_point(token, record)) return lines;
    const Measure* m = find_measure(token);
    if (!m) {
        for (const CastTerm& term : cast_terms(token).value_or(std::vector<CastTerm>()))
            for (const CastLine& line : lines_of_term(term, record)) lines.push_back(line);
        return lines;
    }
    const std::vector<int> slots = points_of_measure(token);
    if (m->quantity == Quantity::arch_length) {
        const Vec2 front = cast_point(record, slots[0]);
        return {{front, foot_of_perpendicular(front, {cast_point(record, slots[1]), cast_point(record, slots[2])})}};
    }
    for (std::size_t i = 0; i + 1 < slots.size(); i += 2)
        lines.push_back({cast_point(record, slots[i]), cast_point(record, slots[i + 1])});
    return lines;
}

}  // namespace tool
