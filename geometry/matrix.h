// 2 x 2 matrices, by rows.
#pragma once

#include "geometry/vec2.h"

namespace tool {

struct Matrix {
    Vec2 x, y;
};
inline constexpr Matrix identity{{1, 0}, {0, 1}};

constexpr Matrix operator*(double k, const Matrix& m) {
    return {k * m.x, k * m.y};
}
constexpr Matrix operator+(const Matrix& m, const Matrix& n) {
    return {m.x + n.x, m.y + n.y};
}
constexpr Matrix operator-(const Matrix& m, const Matrix& n) {
    return {m.x - n.x, m.y - n.y};
}
constexpr Matrix operator*(const Matrix& m, const Matrix& n) {
    const auto row = [&](Vec2 r) { return r.x * n.x + r.y * n.y; };
    return {row(m.x), row(m.y)};
}
// A column times a row.
constexpr Matrix outer(Vec2 column, Vec2 row) {
    return {column.x * row, column.y * row};
}

}  // namespace tool
