#include "tracing/thin_plate_spline.h"

#define EIGEN_DONT_VECTORIZE  // the order of sums, and so the last bit, is the same everywhere
#include <Eigen/LU>
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
    const auto points = static_cast<Eigen::Index>(count), size = points + 3;
    Eigen::MatrixXd system = Eigen::MatrixXd::Zero(size, size), right = Eigen::MatrixXd::Zero(size, 2);
    for (Eigen::Index i = 0; i < points; ++i) {
        const Position p = spline.weights_[static_cast<std::size_t>(i)].at;
        for (Eigen::Index j = 0; j < points; ++j) {
            const Position q = spline.weights_[static_cast<std::size_t>(j)].at;
            system(i, j) = bending(squared_distance(p, q)) + (i == j ? smoothing : 0);
        }
        const double terms[] = {1, p.x, p.y};
        for (Eigen::Index k = 0; k < 3; ++k) system(i, points + k) = system(points + k, i) = terms[k];
        const Position target = targets[static_cast<std::size_t>(i)];
        right.row(i) << target.x, target.y;
    }
    const Eigen::PartialPivLU<Eigen::MatrixXd> elimination(system);
    constexpr double nothing = 1e-11;
    if (!(elimination.matrixLU().diagonal().cwiseAbs().minCoeff() > nothing)) return {};
    const Eigen::MatrixXd solution = elimination.solve(right);
    const auto row = [&](Eigen::Index i) { return Position{solution(i, 0), solution(i, 1)}; };
    for (std::size_t i = 0; i < count; ++i) spline.weights_[i].bend = row(static_cast<Eigen::Index>(i));
    spline.constant_ = row(points);
    spline.along_x_ = row(points + 1);
    spline.along_y_ = row(points + 2);
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
