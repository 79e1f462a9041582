// What is drawn without being an outline of the patient: crowns and arches of casts, mirrored halves of faces.
#include <gmock/gmock.h>

#include <cmath>
#include <complex>

#include "host/host_test.h"
#include "tracing/cast_outlines.h"
#include "tracing/mirrored_half.h"

namespace cephtool {
namespace {

using Point = std::complex<double>;

Case sample(const std::string& name) {
    std::istringstream none;
    return read_case(checked_text(read_bytes(SAMPLES + ("/" + name), none)));
}

Point at(Position p) {
    return {p.x, p.y};
}

Point at(const std::vector<Landmark>& landmarks, const std::string& name) {
    return at(std::ranges::find(landmarks, name, &Landmark::name)->position);
}

double nearest(const std::vector<Position>& points, Point to) {
    double least = 1e9;
    for (const Position p : points) least = std::min(least, std::abs(at(p) - to));
    return least;
}

const FittedCurve* curve(const CastPicture& picture, const std::string& name) {
    const auto found = std::ranges::find(picture.curves, name, [](const auto& c) { return c.outline.name; });
    return found == picture.curves.end() ? nullptr : &*found;
}

TEST(CastPicture, HasEachCrownOnItsContactsAndOutsideOfTheArchHoweverThePictureLies) {
    const Case even = sample("model-average.json");
    struct {
        const char* what;
        Point turn;
        bool over;
    } const rows[] = {
        {"as it is", 1, false}, {"turned", {-0.3, 1.1}, false}, {"in a mirror", 1, true}, {"both", {0, -2}, true}};
    for (const auto& row : rows) {
        auto landmarks = even.landmarks, user = even.user;
        for (auto* all : {&landmarks, &user})
            for (Landmark& landmark : *all) {
                const Point p = row.turn * (row.over ? std::conj(at(landmark.position)) : at(landmark.position));
                landmark.position = {p.real(), p.imag()};
            }
        const CastPicture picture = cast_picture(landmarks, user, 0.05 / std::abs(row.turn));
        EXPECT_EQ(picture.widths.size(), 24u) << row.what;
        for (const ToothWidth& width : picture.widths) {
            const std::string where = row.what + (", " + width.tooth);
            const Point mesial = at(landmarks, width.tooth + "m"), distal = at(landmarks, width.tooth + "d");
            EXPECT_NEAR(width.width, std::abs(distal - mesial), 1e-6) << where;
            const auto& outline = curve(picture, width.tooth)->outline;
            EXPECT_LT(nearest(outline.points, mesial) + nearest(outline.points, distal), 1e-6) << where;
            const bool upper = width.tooth[0] < '3';
            const Point inside = (at(landmarks, upper ? "16m" : "46m") + at(landmarks, upper ? "26m" : "36m")) / 2.0;
            EXPECT_GT(std::abs(at(width.beside) - inside), std::abs((mesial + distal) / 2.0 - inside)) << where;
        }
        // The ends of an incisor that the case has.
        for (const char* end : {"41f", "41l", "32f", "32l"}) {
            const Point middle =
                (at(landmarks, std::string(end, 2) + "m") + at(landmarks, std::string(end, 2) + "d")) / 2.0;
            double deepest = 0;
            const Point out = at(user, end) - middle;
            for (const Position p : curve(picture, std::string(end, 2))->outline.points)
                deepest = std::max(deepest, ((at(p) - middle) * std::conj(out)).real() / std::abs(out));
            EXPECT_NEAR(deepest, std::abs(out), 0.03 * std::abs(out)) << row.what << " " << end;
        }
        const auto& arch = curve(picture, "lower arch")->outline.points;
        for (const char* tooth : {"46", "44", "43", "41"}) {  // whose contacts lie on a parabola
            const Point middle =
                (at(landmarks, std::string(tooth) + "m") + at(landmarks, std::string(tooth) + "d")) / 2.0;
            double least = 1e9;
            for (std::size_t i = 1; i < arch.size(); ++i) {
                const Point way = at(arch[i]) - at(arch[i - 1]), to = (middle - at(arch[i - 1])) / way;
                if (to.real() >= 0 && to.real() <= 1) least = std::min(least, std::abs(to.imag() * way));
            }
            EXPECT_LT(least * 0.05 / std::abs(row.turn), 0.3) << row.what << " " << tooth << ", mm off the arch";
        }
    }
}

TEST(CastPicture, LeavesOutWhatIsNotThere) {
    Case record = sample("model-average.json");
    EXPECT_TRUE(cast_picture({}, {}, 0.05).curves.empty());
    std::erase_if(record.landmarks, [](const Landmark& l) { return l.name[0] == '2' || l.name == "13d"; });
    record.landmarks.insert(record.landmarks.end(), {{"24m", {1e-200, 0}}, {"24d", {2e-200, 0}}});
    const CastPicture picture = cast_picture(record.landmarks, {{"24f", {5, 5}}}, 0.05);
    EXPECT_FALSE(curve(picture, "13") || curve(picture, "24"));
    EXPECT_FALSE(curve(picture, "upper arch")) << "of one side alone";
    EXPECT_TRUE(curve(picture, "12") && curve(picture, "lower arch"));
}

TEST(MirroredHalf, LiesOnTheOtherSideAsFarFromTheMidline) {
    const Midline line{"CG-ANS", {100, 0}, {120, 200}};
    const Point from = at(line.from), way = at(line.to) - from;
    const FittedCurve across{{"across", false, {{20, 50}, {60, 40}, {140, 60}, {190, 50}}, {}}, {}};
    const FittedCurve ring{{"ring", true, {{30, 90}, {60, 80}, {70, 120}, {40, 130}}, {}}, {Tissue::soft, true}};
    for (const Half half : {Half::right, Half::left}) {
        const auto made = mirrored_half({across, ring}, line, half);
        ASSERT_EQ(made.size(), half == Half::right ? 2u : 1u);
        for (const FittedCurve& curve : made) {
            EXPECT_TRUE(curve.style.dotted && !curve.outline.closed);
            for (const Position p : curve.outline.points) {
                const double side = ((at(p) - from) / way).imag();  // the patient's right is above 0
                EXPECT_GE(half == Half::right ? -side : side, -1e-9) << p.x << ", " << p.y;
            }
        }
        const Position end = half == Half::right ? across.outline.points.front() : across.outline.points.back();
        const Point turned = from + way * std::conj((at(end) - from) / way);
        EXPECT_LT(nearest(made[0].outline.points, turned), 1e-9);
    }
    // The midline itself: CG-ANS, else square to ZR-ZL, else none.
    std::vector<Landmark> face{{"ZR", {100, 300}}, {"ZL", {300, 340}}};
    const auto level = midline_of(face);
    ASSERT_TRUE(level);
    EXPECT_EQ((std::conj(at(level->to) - at(level->from)) * Point(200, 40)).real(), 0);
    EXPECT_GT(level->to.y, level->from.y);
    face.insert(face.end(), {{"CG", {201, 250}}, {"ANS", {205, 600}}});
    EXPECT_EQ(midline_of(face)->name, "CG-ANS");
    EXPECT_FALSE(midline_of({face[0]}) || midline_of({{"ZR", {1e-200, 0}}, {"ZL", {2e-200, 0}}}));
}

}  // namespace
}  // namespace cephtool
