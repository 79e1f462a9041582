#include "tracing/thin_plate_spline.h"

#include <algorithm>
#include <cmath>

namespace cephtool {
namespace {

// Distances are taken in this many pixels, so that the system's numbers are of one size.
constexpr double unit = 1000;

// r^2 log r^2 as a function of r^2.
double bending(double squared) {
    return squared > 0 ? squared * std::log(squared) : 0;
}

double squared_distance(Position a, Position b) {
    return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

// A square system with two right sides, solved by elimination with partial pivoting.
class LinearSystem {
 public:
    explicit LinearSystem(std::size_t size) : size_(size), rows_(size, std::vector<double>(size)), right_(size) {}

    double& operator()(std::size_t row, std::size_t column) { return rows_[row][column]; }
    Position& right(std::size_t row) { return right_[row]; }

    // Nothing for a singular system.
    std::optional<std::vector<Position>> solution() {
        for (std::size_t step = 0; step < size_; ++step)
            if (!eliminate(step)) return {};
        for (std::size_t row = size_; row-- > 0;) {
            for (std::size_t column = row + 1; column < size_; ++column) subtract(row, column, rows_[row][column]);
            right_[row] = {right_[row].x / rows_[row][row], right_[row].y / rows_[row][row]};
        }
        return right_;
    }

 private:
    bool eliminate(std::size_t step) {
        constexpr double nothing = 1e-11;
        std::size_t pivot = step;
        for (std::size_t row = step + 1; row < size_; ++row)
            if (std::abs(rows_[row][step]) > std::abs(rows_[pivot][step])) pivot = row;
        if (!(std::abs(rows_[pivot][step]) > nothing)) return false;
        std::swap(rows_[step], rows_[pivot]);
        std::swap(right_[step], right_[pivot]);
        for (std::size_t row = step + 1; row < size_; ++row) {
            const double factor = rows_[row][step] / rows_[step][step];
            if (factor == 0) continue;
            for (std::size_t column = step; column < size_; ++column)
                rows_[row][column] -= factor * rows_[step][column];
            subtract(row, step, factor);
        }
        return true;
    }

    void subtract(std::size_t row, std::size_t other, double factor) {
        right_[row].x -= factor * right_[other].x;
        right_[row].y -= factor * right_[other].y;
    }

    std::size_t size_;
    std::vector<std::vector<double>> rows_;
    std::vector<Position> right_;
};

}  // namespace

std::optional<ThinPlateSpline> ThinPlateSpline::through(std::span<const Position> sources,
                                                        std::span<const Position> targets, double smoothing) {
    const std::size_t count = std::min(sources.size(), targets.size());
    if (count < 3) return {};
    ThinPlateSpline spline;
    for (const Position& source : sources.first(count)) {
        spline.middle_.x += source.x / static_cast<double>(count);
        spline.middle_.y += source.y / static_cast<double>(count);
    }
    for (const Position& source : sources.first(count)) spline.weights_.push_back({spline.in_units(source), {}});
    LinearSystem system(count + 3);
    for (std::size_t i = 0; i < count; ++i) {
        const Position p = spline.weights_[i].at;
        for (std::size_t j = 0; j < count; ++j) {
            system(i, j) = bending(squared_distance(p, spline.weights_[j].at)) + (i == j ? smoothing : 0);
        }
        const double terms[] = {1, p.x, p.y};
        for (std::size_t k = 0; k < 3; ++k) system(i, count + k) = system(count + k, i) = terms[k];
        system.right(i) = targets[i];
    }
    const auto solution = system.solution();
    if (!solution) return {};
    for (std::size_t i = 0; i < count; ++i) spline.weights_[i].bend = (*solution)[i];
    spline.constant_ = (*solution)[count];
    spline.along_x_ = (*solution)[count + 1];
    spline.along_y_ = (*solution)[count + 2];
    return spline;
}

Position ThinPlateSpline::in_units(Position p) const {
    return {(p.x - middle_.x) / unit, (p.y - middle_.y) / unit};
}

Position ThinPlateSpline::operator()(Position p) const {
    p = in_units(p);
    Position to{constant_.x + along_x_.x * p.x + along_y_.x * p.y, constant_.y + along_x_.y * p.x + along_y_.y * p.y};
    for (const Weight& weight : weights_) {
        const double height = bending(squared_distance(p, weight.at));
        to.x += height * weight.bend.x;
        to.y += height * weight.bend.y;
    }
    return to;
}

double ThinPlateSpline::area_factor(Position p) const {
    p = in_units(p);
    Position by_x = along_x_, by_y = along_y_;
    for (const Weight& weight : weights_) {
        const double squared = squared_distance(p, weight.at);
        if (squared == 0) continue;
        const double slope = 2 * (std::log(squared) + 1);  // d(r^2 log r^2)/dx is this times x
        const Position away{slope * (p.x - weight.at.x), slope * (p.y - weight.at.y)};
        by_x.x += away.x * weight.bend.x;
        by_x.y += away.x * weight.bend.y;
        by_y.x += away.y * weight.bend.x;
        by_y.y += away.y * weight.bend.y;
    }
    return (by_x.x * by_y.y - by_x.y * by_y.x) / (unit * unit);
}

}  // namespace cephtool
