#include "tracing/cast_outlines.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <complex>
#include <map>
#include <optional>

namespace cephtool {
namespace {

using Point = std::complex<double>;

// From the mesial contact at -0.5 to the distal one at 0.5, in widths of the crown; the cheek or lip is upward.
struct CrownShape {
    std::vector<Point> outline;             // closed; the first point is the mesial contact
    std::vector<std::vector<Point>> marks;  // edges and fissures
    Point cusp;                             // where "16c" belongs
};

const CrownShape& shape_of(bool lower, int position) {
    static const std::vector<Point> edge{{-0.43, 0.03}, {-0.22, 0.10}, {0, 0.12}, {0.22, 0.10}, {0.43, 0.03}};
    static const std::vector<Point> fissure{{-0.33, -0.03}, {-0.15, -0.09}, {0, -0.06}, {0.15, -0.09}, {0.33, -0.03}};
    static const CrownShape upper_incisor{{{-0.5, 0},
                                           {-0.44, 0.12},
                                           {-0.24, 0.22},
                                           {0, 0.25},
                                           {0.24, 0.22},
                                           {0.44, 0.12},
                                           {0.5, 0},
                                           {0.42, -0.2},
                                           {0.27, -0.41},
                                           {0.1, -0.56},
                                           {-0.09, -0.57},
                                           {-0.26, -0.43},
                                           {-0.42, -0.21}},
                                          {edge},
                                          {0, 0.12}};
    static const CrownShape lower_incisor{{{-0.5, 0},
                                           {-0.43, 0.16},
                                           {-0.22, 0.36},
                                           {0, 0.44},
                                           {0.22, 0.36},
                                           {0.43, 0.16},
                                           {0.5, 0},
                                           {0.4, -0.25},
                                           {0.24, -0.52},
                                           {0.08, -0.69},
                                           {-0.08, -0.69},
                                           {-0.24, -0.52},
                                           {-0.4, -0.25}},
                                          {edge},
                                          {0, 0.12}};
    static const CrownShape canine{
        {{-0.5, 0},
         {-0.42, 0.18},
         {-0.23, 0.36},
         {0, 0.43},
         {0.23, 0.35},
         {0.43, 0.16},
         {0.5, 0},
         {0.42, -0.22},
         {0.25, -0.46},
         {0.06, -0.6},
         {-0.1, -0.6},
         {-0.27, -0.45},
         {-0.43, -0.21}},
        {{{-0.43, 0.03}, {-0.2, 0.12}, {0, 0.19}, {0.22, 0.1}, {0.43, 0.02}}, {{0, 0.19}, {0, -0.25}}},
        {0, 0.19}};
    static const CrownShape upper_premolar{{{-0.5, 0},
                                            {-0.5, 0.22},
                                            {-0.37, 0.47},
                                            {-0.14, 0.6},
                                            {0.1, 0.61},
                                            {0.36, 0.48},
                                            {0.5, 0.22},
                                            {0.5, 0},
                                            {0.47, -0.28},
                                            {0.33, -0.55},
                                            {0.12, -0.67},
                                            {-0.12, -0.67},
                                            {-0.33, -0.55},
                                            {-0.47, -0.28}},
                                           {fissure},
                                           {0, 0.3}};
    static const CrownShape lower_premolar{{{-0.5, 0},
                                            {-0.47, 0.2},
                                            {-0.33, 0.42},
                                            {-0.1, 0.52},
                                            {0.12, 0.52},
                                            {0.35, 0.41},
                                            {0.48, 0.2},
                                            {0.5, 0},
                                            {0.45, -0.26},
                                            {0.3, -0.48},
                                            {0.09, -0.57},
                                            {-0.1, -0.57},
                                            {-0.3, -0.47},
                                            {-0.45, -0.25}},
                                           {fissure},
                                           {0, 0.26}};
    static const CrownShape upper_molar{{{-0.5, 0},
                                         {-0.49, 0.25},
                                         {-0.38, 0.45},
                                         {-0.17, 0.51},
                                         {0, 0.46},
                                         {0.17, 0.47},
                                         {0.38, 0.39},
                                         {0.49, 0.2},
                                         {0.5, 0},
                                         {0.5, -0.25},
                                         {0.42, -0.49},
                                         {0.24, -0.59},
                                         {0.04, -0.55},
                                         {-0.17, -0.62},
                                         {-0.38, -0.53},
                                         {-0.49, -0.27}},
                                        {{{-0.34, -0.02}, {-0.2, -0.1}, {-0.03, -0.06}, {0.13, -0.14}, {0.34, -0.08}},
                                         {{-0.03, -0.06}, {0, 0.18}, {0, 0.44}},
                                         {{0.13, -0.14}, {0.07, -0.34}, {0.04, -0.53}}},
                                        {-0.2, 0.27}};
    static const CrownShape lower_molar{{{-0.5, 0},
                                         {-0.49, 0.2},
                                         {-0.38, 0.38},
                                         {-0.22, 0.43},
                                         {-0.08, 0.4},
                                         {0.08, 0.42},
                                         {0.22, 0.38},
                                         {0.36, 0.31},
                                         {0.48, 0.14},
                                         {0.5, 0},
                                         {0.48, -0.24},
                                         {0.36, -0.45},
                                         {0.16, -0.5},
                                         {0, -0.46},
                                         {-0.17, -0.51},
                                         {-0.37, -0.46},
                                         {-0.48, -0.25}},
                                        {{{-0.36, -0.02}, {-0.2, -0.09}, {-0.06, -0.04}, {0.12, -0.08}, {0.36, -0.03}},
                                         {{-0.06, -0.04}, {-0.07, 0.18}, {-0.08, 0.38}},
                                         {{0.12, -0.08}, {0.18, 0.14}, {0.25, 0.33}},
                                         {{-0.02, -0.05}, {0, -0.25}, {0, -0.44}}},
                                        {-0.24, 0.22}};
    if (position <= 2) return lower ? lower_incisor : upper_incisor;
    if (position == 3) return canine;
    if (position <= 5) return lower ? lower_premolar : upper_premolar;
    return lower ? lower_molar : upper_molar;
}

struct Tooth {
    std::string number;
    bool lower, right;
    int position;  // 1 to 6 from the middle
    Point mesial, distal;
    Point middle() const { return (mesial + distal) / 2.0; }
    double width() const { return std::abs(distal - mesial); }
};

double dot(Point a, Point b) {
    return (std::conj(a) * b).real();
}

using Places = std::map<std::string, Point>;

constexpr double at_one_place = 1e-3;  // pixels

std::vector<Tooth> teeth_of(const Places& places, bool lower) {
    std::vector<Tooth> teeth;
    for (const char quadrant : lower ? std::string("43") : std::string("12"))
        for (char position = '1'; position <= '6'; ++position) {
            const std::string number{quadrant, position};
            const auto mesial = places.find(number + "m"), distal = places.find(number + "d");
            if (mesial == places.end() || distal == places.end() ||
                std::abs(mesial->second - distal->second) < at_one_place)
                continue;
            teeth.push_back(
                {number, lower, quadrant == '1' || quadrant == '4', position - '0', mesial->second, distal->second});
        }
    return teeth;
}

// 1 or -1: how the way from mesial to distal of a right tooth is turned by a right angle to look outward. Which it is
// depends on how the picture was taken; the teeth of an arch agree by the majority, as one may stand across.
double outward_turn(const std::vector<Tooth>& teeth) {
    Point centre;
    for (const Tooth& tooth : teeth) centre += tooth.middle() / static_cast<double>(teeth.size());
    double votes = 0;
    for (const Tooth& tooth : teeth) {
        const Point turned = (tooth.distal - tooth.mesial) * Point(0, tooth.right ? 1 : -1);
        votes += dot(turned, tooth.middle() - centre);
    }
    return votes < 0 ? -1 : 1;
}

Outline outline_of(std::string name, bool closed, const std::vector<Point>& points) {
    Outline outline{std::move(name), closed, {}, {}};
    for (const Point p : points) outline.points.push_back({p.real(), p.imag()});
    return outline;
}

// Places of a crown's shape on the picture.
class Crown {
 public:
    Crown(const Tooth& tooth, double turn, const Places& places)
        : tooth_(tooth),
          shape_(shape_of(tooth.lower, tooth.position)),
          along_(tooth.distal - tooth.mesial),
          outward_(along_ * Point(0, tooth.right ? turn : -turn)) {
        double outer = 0, inner = 0;
        for (const Point p : shape_.outline) {
            outer = std::max(outer, p.imag());
            inner = std::min(inner, p.imag());
        }
        // How many widths of the crown a landmark lies outward, as a part of where the shape has it.
        const auto part = [&](char mark, double of) -> std::optional<double> {
            const auto found = places.find(tooth.number + mark);
            if (found == places.end()) return {};
            constexpr double least = 0.5, most = 2;  // or it is a slip of the hand
            return std::clamp(dot(found->second - tooth.middle(), outward_) / std::norm(outward_) / of, least, most);
        };
        if (const auto depth = part('f', outer)) {
            outer_ = *depth;
        } else if (const auto cusp = part('c', shape_.cusp.imag())) {
            outer_ = *cusp;
        }
        inner_ = part('l', inner).value_or(1);
        height_ = outer * outer_;
    }

    Point at(Point p) const {
        return tooth_.middle() + p.real() * along_ + p.imag() * (p.imag() > 0 ? outer_ : inner_) * outward_;
    }

    void add_to(CastPicture& picture, std::vector<FittedCurve>& marks, double mm_per_pixel) const {
        std::vector<Point> points;
        for (const Point p : shape_.outline) points.push_back(at(p));
        picture.curves.push_back({outline_of(tooth_.number, true, points), {Tissue::tooth, false}});
        picture.curves.back().outline.anchors = {tooth_.number + "m", tooth_.number + "d"};
        for (const std::vector<Point>& mark : shape_.marks) {
            points.clear();
            for (const Point p : mark) points.push_back(at(p));
            marks.push_back({outline_of(tooth_.number, false, points), {Tissue::hard, true}});
        }
        constexpr double room_mm = 2.6;  // from the crown to the middle of a figure beside it
        const Point beside = tooth_.middle() + outward_ * (height_ + room_mm / mm_per_pixel / std::abs(outward_));
        picture.widths.push_back({tooth_.number, tooth_.width(), {beside.real(), beside.imag()}});
    }

 private:
    const Tooth& tooth_;
    const CrownShape& shape_;
    Point along_, outward_;
    double outer_ = 1, inner_ = 1, height_ = 0;
};

const Tooth* find(const std::vector<Tooth>& teeth, bool right, int position) {
    const auto found =
        std::ranges::find_if(teeth, [&](const Tooth& t) { return t.right == right && t.position == position; });
    return found == teeth.end() ? nullptr : &*found;
}

std::optional<Outline> ideal_arch(const std::vector<Tooth>& teeth) {
    constexpr int least_of_a_side = 3, canine = 3, steps = 24;
    for (const bool right : {true, false})
        if (std::ranges::count(teeth, right, &Tooth::right) < least_of_a_side) return {};
    const Tooth *right = nullptr, *left = nullptr;
    for (int position = 6; position > canine && !(right && left); --position) {
        right = find(teeth, true, position);
        left = find(teeth, false, position);
    }
    if (!right || !left) return {};
    const Point origin = (right->middle() + left->middle()) / 2.0, half = (left->middle() - right->middle()) / 2.0;
    if (std::abs(half) < at_one_place) return {};
    // In half widths of the arch, so that the equations stay well conditioned.
    Eigen::MatrixXd powers(static_cast<Eigen::Index>(teeth.size()), 3);
    Eigen::VectorXd heights(static_cast<Eigen::Index>(teeth.size()));
    for (Eigen::Index row = 0; row < heights.size(); ++row) {
        const Point p = (teeth[static_cast<std::size_t>(row)].middle() - origin) / half;
        const double square = p.real() * p.real();
        powers.row(row) << 1, square, square * square;
        heights(row) = p.imag();
    }
    const Eigen::Vector3d fit = powers.colPivHouseholderQr().solve(heights);
    if (!fit.allFinite()) return {};
    const double reach = (std::abs((right->distal - origin) / half) + std::abs((left->distal - origin) / half)) / 2;
    const double end = std::clamp(reach, 1.0, 1.2);
    std::vector<Point> points;
    for (int step = 0; step <= steps; ++step) {
        const double x = end * (2.0 * step / steps - 1), square = x * x;
        points.push_back(origin + half * Point(x, fit(0) + fit(1) * square + fit(2) * square * square));
    }
    return outline_of(teeth.front().lower ? "lower arch" : "upper arch", false, points);
}

}  // namespace

CastPicture cast_picture(const std::vector<Landmark>& landmarks, const std::vector<Landmark>& user,
                         double mm_per_pixel) {
    Places places;
    for (const auto* placed : {&landmarks, &user})
        for (const Landmark& landmark : *placed)
            places.emplace(landmark.name, Point(landmark.position.x, landmark.position.y));
    CastPicture picture;
    std::vector<FittedCurve> marks;
    for (const bool lower : {false, true})
        if (auto arch = ideal_arch(teeth_of(places, lower)))
            picture.curves.push_back({std::move(*arch), {.tissue = Tissue::soft, .fine = false, .dotted = true}});
    for (const bool lower : {false, true}) {
        const std::vector<Tooth> teeth = teeth_of(places, lower);
        const double turn = outward_turn(teeth);
        for (const Tooth& tooth : teeth) Crown(tooth, turn, places).add_to(picture, marks, mm_per_pixel);
    }
    picture.curves.insert(picture.curves.end(), marks.begin(), marks.end());
    return picture;
}

}  // namespace cephtool
