#include "pictures.h"

namespace constructions {
namespace {

constexpr Picture all[] = {
    {"signs", 3, draw_signs},
    {"len", 1, draw_len},
    {"lenR", 2, draw_len_right},
    {"lenD", 2, draw_len_down},
    {"angle1", 2, draw_angle_at},
    {"angle2", 3, draw_angle_between},
    {"Model", 4, draw_cast},
    {"references", 1, draw_references},
    {"switch", 2, draw_switch},
    {"mid", 1, draw_middle},
    {"vertical", 2, draw_feet},
    {"cross", 2, draw_crossing},
    {"AngleBisector", 2, draw_bisectors},
    {"extension", 2, draw_extensions},
    {"EffectiveA", 1, draw_effective_a},
    {"examples", 2, draw_examples},
};

}  // namespace

std::span<const Picture> pictures() {
    return all;
}

}  // namespace constructions
