// How landmarks in pixels come to the whole steps that records have.
#pragma once

namespace tool {

// Steps a pixel, where any of a film's landmarks has a fraction; else 1.
inline constexpr int fine_steps = 64;
inline constexpr double farthest_px = 1e6;  // 64 million steps

}  // namespace tool
