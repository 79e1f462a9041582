#include "tracing/landmark_outliers.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>

#include "base/numbers.h"

namespace cephtool {
namespace {

constexpr std::size_t least_landmarks = 8, most_outliers = 3;
// mm of the average face: of the shifts that neighbours share, how far they reach, and each landmark's own spread.
constexpr double shared = 4, reach = 60, own = 1.2, own_of_the_free = 3;
constexpr double far = 4.5;  // standard deviations

// Those that faces differ by, or observers by their definitions.
constexpr const char* free_landmarks[] = {"U1", "L1", "TUL", "TLL", "A", "ANS", "Po", "Ar", "Pog(s)", "Sto"};

using Points = Eigen::Matrix<double, Eigen::Dynamic, 2>;

// What the similarity that lays `from` on `to` leaves, in units of `from`, and how much it enlarges.
struct Laid {
    Points left;
    double enlarged = 0;
    double misfit = 0;
};
Laid laid(const Points& from, const Points& to) {
    constexpr int rounds = 5;
    constexpr double far_mm = 6;
    Eigen::VectorXd weights = Eigen::VectorXd::Ones(from.rows());
    Laid best;
    for (int round = 0; round < rounds; ++round) {
        const double all = weights.sum();
        const Eigen::RowVector2d middle_from = weights.transpose() * from / all,
                                 middle_to = weights.transpose() * to / all;
        const Points a = from.rowwise() - middle_from, b = to.rowwise() - middle_to;
        const double size = weights.dot(a.rowwise().squaredNorm());
        const double c = weights.dot((a.array() * b.array()).rowwise().sum().matrix()) / size;
        const double s =
            weights.dot((a.col(0).array() * b.col(1).array() - a.col(1).array() * b.col(0).array()).matrix()) / size;
        best.enlarged = std::hypot(c, s);
        if (!(best.enlarged > 0)) return {};
        Eigen::Matrix2d turn;
        turn << c, s, -s, c;
        // Back into the axes of `from`.
        best.left = (b - a * turn) * turn.transpose() / (best.enlarged * best.enlarged);
        weights = 1 / (1 + best.left.rowwise().squaredNorm().array() / (far_mm * far_mm));
    }
    best.misfit = weights.dot(best.left.rowwise().squaredNorm());
    return best;
}

}  // namespace

struct LandmarkOutliers::Spread {
    Points face;                // mm
    Eigen::MatrixXd precision;  // the inverse of the covariance
};

LandmarkOutliers::LandmarkOutliers(const OutlineTemplate& face, Kind kind) : kind_(kind) {
    for (const Landmark& landmark : face.landmarks) {
        const Position at = landmark.position;
        if (places_.emplace(landmark.name, face_.size()).second)
            face_.push_back({landmark.name, {at.x * face.mm_per_pixel, at.y * face.mm_per_pixel}});
    }
}
LandmarkOutliers::~LandmarkOutliers() = default;

const LandmarkOutliers::Spread& LandmarkOutliers::spread_of(const Names& names) {
    constexpr std::size_t most_kept = 100;  // cases of one source lack the same few landmarks
    const auto known = spreads_.find(names);
    if (known != spreads_.end()) return *known->second;
    if (spreads_.size() >= most_kept) spreads_.clear();
    Spread& made = *(spreads_[names] = std::make_unique<Spread>());
    const auto count = static_cast<Eigen::Index>(names.size());
    made.face.resize(count, 2);
    Eigen::MatrixXd covariance(count, count);
    for (Eigen::Index i = 0; i < count; ++i) {
        const Landmark& landmark = face_[names[static_cast<std::size_t>(i)]];
        made.face.row(i) << landmark.position.x, landmark.position.y;
        for (Eigen::Index j = 0; j <= i; ++j)
            covariance(i, j) = covariance(j, i) =
                shared * shared * std::exp(-(made.face.row(i) - made.face.row(j)).norm() / reach);
        const double spread =
            std::ranges::find(free_landmarks, landmark.name) == std::end(free_landmarks) ? own : own_of_the_free;
        covariance(i, i) += spread * spread;
    }
    made.precision = covariance.ldlt().solve(Eigen::MatrixXd::Identity(count, count));
    return made;
}

std::vector<LandmarkOutlier> LandmarkOutliers::operator()(const Case& record) {
    std::vector<LandmarkOutlier> outliers;
    if (record.kind != kind_ || !record.mm_per_pixel) return outliers;
    std::vector<const Landmark*> placed;
    Names names;
    for (const Landmark& landmark : record.landmarks) {
        const auto place = places_.find(landmark.name);
        if (place == places_.end()) continue;
        placed.push_back(&landmark);
        names.push_back(place->second);
    }
    while (placed.size() >= least_landmarks && outliers.size() < most_outliers) {
        Points at(static_cast<Eigen::Index>(placed.size()), 2), mirrored;
        for (std::size_t i = 0; i < placed.size(); ++i) {
            at.row(static_cast<Eigen::Index>(i)) << placed[i]->position.x * *record.mm_per_pixel,
                placed[i]->position.y * *record.mm_per_pixel;
        }
        mirrored = at;
        mirrored.col(0) *= -1;
        const Spread& spread = spread_of(names);
        Laid fit = laid(spread.face, at);
        const Laid other = laid(spread.face, mirrored);
        if (other.enlarged > 0 && !(fit.misfit <= other.misfit)) fit = other;
        if (!(fit.enlarged > 0)) return outliers;
        // Foretold without itself, the way is that in K^-1 left over its place on the diagonal, whose inverse is the
        // variance.
        const Points weighed = spread.precision * fit.left;
        std::size_t farthest = 0;
        double most = 0, mm = 0;
        for (Eigen::Index i = 0; i < weighed.rows(); ++i) {
            const double precision = spread.precision(i, i), way = weighed.row(i).norm() / precision;
            const double deviations = way * std::sqrt(precision);
            if (deviations > most) most = deviations, mm = way * fit.enlarged, farthest = static_cast<std::size_t>(i);
        }
        if (!(most > far)) return outliers;
        outliers.push_back({placed[farthest]->name, mm, placed.size() - 1});
        placed.erase(placed.begin() + static_cast<std::ptrdiff_t>(farthest));
        names.erase(names.begin() + static_cast<std::ptrdiff_t>(farthest));
    }
    return outliers;
}

Remark remark_of(const LandmarkOutlier& outlier) {
    return {"landmark_far",
            "%1 lies %2 mm from where the other %3 landmarks expect it.",
            {outlier.name, with_decimals(outlier.mm, 0), std::to_string(outlier.others)}};
}

void LandmarkOutliers::remark(Case& record) {
    for (const LandmarkOutlier& outlier : (*this)(record)) record.remarks.push_back(remark_of(outlier));
}

}  // namespace cephtool
