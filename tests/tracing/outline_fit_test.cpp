#include "tracing/outline_fit.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

#include "host/host_test.h"
#include "tracing/plane_motion.h"

namespace cephtool {
namespace {

using testing::AllOf;
using testing::HasSubstr;

OutlineTemplate face(const char* kind) {
    std::istringstream none;
    return read_template(read_bytes(std::string(OUTLINES) + "/" + kind + ".json", none));
}

Case sample(const std::string& name) {
    std::istringstream none;
    return read_case(checked_text(read_bytes(SAMPLES + ("/" + name), none)));
}

const Position* find(const std::vector<Landmark>& landmarks, const std::string& name) {
    const auto found = std::ranges::find(landmarks, name, &Landmark::name);
    return found == landmarks.end() ? nullptr : &found->position;
}

double gap(Position a, Position b) {
    return std::max(std::abs(a.x - b.x), std::abs(a.y - b.y));
}

double signed_area(const std::vector<Position>& points) {
    double area = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Position a = points[i], b = points[(i + 1) % points.size()];
        area += a.x * b.y - a.y * b.x;
    }
    return area / 2;
}

const Outline& template_curve(const OutlineTemplate& face, const std::string& name) {
    return std::ranges::find_if(face.curves, [&](const auto& each) { return each.outline.name == name; })->outline;
}

const std::vector<Position>& points_of(const OutlineTemplate& face, const std::string& name) {
    return template_curve(face, name).points;
}

// Every anchor that the case has is one of the curve's points.
void expect_through_anchors(const OutlineTemplate& face, const OutlineFit& fit, const std::vector<Landmark>& landmarks,
                            const std::string& what) {
    for (const FittedCurve& curve : fit.curves) {
        for (const std::string& anchor : template_curve(face, curve.outline.name).anchors) {
            const Position* at = find(landmarks, anchor);
            if (!at) continue;
            double nearest = 1e9;
            for (const Position& p : curve.outline.points) nearest = std::min(nearest, gap(p, *at));
            EXPECT_LT(nearest, 1e-6) << what << ": " << curve.outline.name << " misses " << anchor;
        }
    }
}

std::vector<std::string> names(const OutlineFit& fit) {
    std::vector<std::string> all;
    for (const FittedCurve& curve : fit.curves) all.push_back(curve.outline.name);
    return all;
}

std::vector<Landmark> jittered(std::vector<Landmark> landmarks, unsigned seed, double pixels) {
    std::mt19937 random(seed);
    std::normal_distribution<double> off(0, pixels);
    for (Landmark& landmark : landmarks) {
        landmark.position.x += off(random);
        landmark.position.y += off(random);
    }
    return landmarks;
}

TEST(OutlineFit, PassesThroughEveryAnchorOfEverySample) {
    struct {
        const char *face, *sample;
        std::size_t least_curves;
    } const rows[] = {{"lateral", "lateral-average.json", 26},
                      {"lateral", "lateral-class2.json", 26},
                      {"lateral", "lateral-openbite.json", 26},
                      {"lateral", "lateral-average-19-points.txt", 10},
                      {"frontal", "frontal-average.json", 17}};
    for (const auto& row : rows) {
        const OutlineTemplate outlines = face(row.face);
        const Case record = sample(row.sample);
        const OutlineFit fit = fitted_outlines(outlines, record.landmarks);
        EXPECT_GE(fit.curves.size() + 1, row.least_curves) << row.sample;
        expect_through_anchors(outlines, fit, record.landmarks, row.sample);
    }
}

TEST(OutlineFit, FollowsAFaceOfAnotherSizePlaceAndTurn) {
    for (const char* kind : {"lateral", "frontal"})
        for (const AffineMap& motion : {AffineMap{}, AffineMap{0.4, -0.1, 0.1, 0.4, 77, -12}}) {
            const OutlineTemplate outlines = face(kind);
            std::vector<Landmark> landmarks = outlines.landmarks;
            for (Landmark& landmark : landmarks) landmark.position = motion(landmark.position);
            const OutlineFit fit = fitted_outlines(outlines, landmarks);
            EXPECT_GE(fit.curves.size(), 17u);
            for (const FittedCurve& curve : fit.curves) {
                const std::vector<Position>& original = points_of(outlines, curve.outline.name);
                for (std::size_t i = 0; i < original.size(); ++i) {
                    EXPECT_LT(gap(curve.outline.points[i], motion(original[i])), 1e-6) << curve.outline.name;
                }
            }
        }
}

TEST(OutlineFit, FoldsNoToothUnderPlausibleErrorsOfLandmarks) {
    for (const char* kind : {"lateral", "frontal"}) {
        const OutlineTemplate outlines = face(kind);
        OutlineTemplate begun_elsewhere = outlines;
        for (TemplateCurve& curve : begun_elsewhere.curves)
            if (std::vector<Position>& points = curve.outline.points; curve.outline.closed)
                std::ranges::rotate(points, points.begin() + 3);
        for (unsigned seed = 1; seed <= 200; ++seed) {
            const auto landmarks = jittered(outlines.landmarks, seed, 12);  // 1.2 mm, as observers differ
            const OutlineFit fit = fitted_outlines(outlines, landmarks);
            const OutlineFit other = fitted_outlines(begun_elsewhere, landmarks);
            ASSERT_EQ(fit.curves.size(), other.curves.size());
            expect_through_anchors(outlines, fit, landmarks, "seed " + std::to_string(seed));
            for (const FittedCurve& curve : fit.curves) {
                if (!curve.outline.closed) continue;
                const double before = signed_area(points_of(outlines, curve.outline.name));
                const double ratio = signed_area(curve.outline.points) / before;
                EXPECT_TRUE(ratio > 0.05 && ratio < 3) << seed << " " << curve.outline.name << " " << ratio;
                const Position end = curve.outline.points.back();  // wherever a closed curve begins, it is the same
                const auto& same = other.curves[static_cast<std::size_t>(&curve - fit.curves.data())].outline.points;
                EXPECT_LT(gap(end, same[same.size() - 4]), 1e-6) << seed << " " << curve.outline.name;
            }
        }
    }
}

TEST(OutlineFit, SmoothsACurveThatItsLandmarksWouldFold) {
    const OutlineTemplate outlines = face("lateral");
    std::vector<Landmark> landmarks = outlines.landmarks;
    const auto at = [&](const char* name) -> Position& {
        return std::ranges::find(landmarks, std::string(name), &Landmark::name)->position;
    };
    std::swap(at("Go(P)"), at("Go(L)"));
    const OutlineFit fit = fitted_outlines(outlines, landmarks);
    EXPECT_THAT(fit.notes, testing::Contains(AllOf(HasSubstr("smoother"), HasSubstr("Mandible"))));
    expect_through_anchors(outlines, fit, landmarks, "exchanged");
}

TEST(OutlineFit, ATurnedToothKeepsItsShapeAndTheBoneItsPlace) {
    const OutlineTemplate outlines = face("lateral");
    std::vector<Landmark> landmarks = outlines.landmarks;
    const Position root = *outlines.find_landmark("U1R");
    for (Landmark& landmark : landmarks) {
        if (landmark.name != "U1" && landmark.name != "U1C") continue;
        const double x = landmark.position.x - root.x, y = landmark.position.y - root.y, angle = -0.35;
        landmark.position = {root.x + x * std::cos(angle) - y * std::sin(angle),
                             root.y + x * std::sin(angle) + y * std::cos(angle)};
    }
    const OutlineFit fit = fitted_outlines(outlines, landmarks);
    for (const FittedCurve& curve : fit.curves) {
        const std::vector<Position>& original = points_of(outlines, curve.outline.name);
        if (curve.outline.name == "Upper incisor, crown") {
            EXPECT_NEAR(signed_area(curve.outline.points), signed_area(original), 1e-3);
        }
        if (curve.outline.name != "Orbit" && curve.outline.name != "Lower molar, crown") continue;
        for (std::size_t i = 0; i < original.size(); ++i) EXPECT_LT(gap(curve.outline.points[i], original[i]), 12);
    }
}

TEST(OutlineFit, LeavesOutWhatTheCaseSaysNothingAbout) {
    const OutlineFit fit = fitted_outlines(face("lateral"), sample("lateral-average-19-points.txt").landmarks);
    EXPECT_THAT(names(fit),
                testing::IsSupersetOf({"Soft tissue profile", "Cranial base", "Orbit", "Palate", "Mandible"}));
    for (const char* left_out : {"Upper incisor, crown", "Lower molar, roots", "Vertebra C3", "Hyoid"}) {
        EXPECT_THAT(names(fit), testing::Not(testing::Contains(left_out)));
        EXPECT_THAT(fit.notes.front(), HasSubstr(left_out));
    }
}

TEST(OutlineFit, DrawsNothingWithoutThreeLandmarksOrOnAMirroredFace) {
    const OutlineTemplate outlines = face("lateral");
    std::vector<Landmark> mirrored = outlines.landmarks;
    for (Landmark& landmark : mirrored) landmark.position.x = 2000 - landmark.position.x;
    const std::vector<Landmark> two(outlines.landmarks.begin(), outlines.landmarks.begin() + 2);
    std::vector<Landmark> one_place = outlines.landmarks;
    for (Landmark& landmark : one_place) landmark.position = {500, 500};
    for (const auto& landmarks : {mirrored, two, one_place, std::vector<Landmark>{}}) {
        const OutlineFit fit = fitted_outlines(outlines, landmarks);
        EXPECT_TRUE(fit.curves.empty());
        ASSERT_EQ(fit.notes.size(), 1u);
        EXPECT_THAT(fit.notes[0], HasSubstr("looking right"));
    }
    EXPECT_TRUE(fitted_outlines({}, outlines.landmarks).notes.empty());  // casts have no template
}

TEST(OutlineTemplate, ADamagedFileIsRefused) {
    const std::string good = host_test::bytes_of(std::string(OUTLINES) + "/lateral.json");
    std::string without_or = good;
    without_or.replace(without_or.find("\"Or\": ["), 4, "\"Ox\"");
    for (const std::string& text : {std::string(), good.substr(0, good.size() / 2), without_or, std::string("[1]")}) {
        EXPECT_THROW(read_template({"lateral.json", text}), Error);
    }
}

}  // namespace
}  // namespace cephtool
