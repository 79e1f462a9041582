#include <gtest/gtest.h>

#include <random>

#include "CalcTool.h"
#include "tests/geometry/plain_formulas.h"

namespace {

// Other bits are a failure, but any NaN equals any other.
void same(const char* name, double library, double plain) {
    if (std::memcmp(&library, &plain, sizeof plain) == 0 || (std::isnan(library) && std::isnan(plain))) return;
    ADD_FAILURE() << name << ": " << testing::PrintToString(library) << " is not " << testing::PrintToString(plain);
}
void same(const char* name, CPointD library, CPointD plain) {
    same(name, library.x, plain.x), same(name, library.y, plain.y);
}

void check(const CPointD& a, const CPointD& b, const CPointD& c, const CPointD& d, double scale, double n, double deg) {
    const double ab = Plain::length(a, b, scale), bc = Plain::length(b, c, scale), ca = Plain::length(c, a, scale);
    same("length", CCalcTool::Get_Lengthd(&a, &b, scale), ab);
    same("area", CCalcTool::Get_Heron(&a, &b, &c, scale), Plain::area(ab, bc, ca));
    same("angle abc", CCalcTool::Angle_Cald(&a, &b, &c), Plain::angle_abc(b - a, c - b));
    same("signed angle", CCalcTool::Get_Angled(&a, &b, &c, &d), Plain::signed_angle(b - a, d - c));
    same("middle", AT(Get_Mpointd, &a, &b), {Plain::halfway(a.x, b.x), Plain::halfway(a.y, b.y)});
    const CPointD fc = Plain::foot(a, b, c), fd = Plain::foot(a, b, d);
    same("foot", AT(Get_Pointd, &a, &b, &c), fc);
    same("suisen", CCalcTool::Get_Suisen_Length(&a, &b, &c, scale), Plain::length(c, fc, scale));
    for (const int i : {0, 1})
        same("touei", CCalcTool::Get_Touei_Length(&a, &b, &c, &d, scale, i), Plain::projected(a, b, fc, fd, scale, i));
    same("foot on parallel", AT(Get_GPointd, &a, &b, &c, &d), Plain::foot_on_parallel(a, b, c, d));
    CPointD met(7, 7), written;
    const int meet = Plain::cross(a, b, c, d, met);
    same("cross", CCalcTool::Get_Cross_Pointd(&a, &b, &c, &d, &written), meet);
    same("cross", AT(Get_Cross_Pointd, &a, &b, &c, &d), met);
    same("pile", AT(Pile_Pointd, &a, &b, &c, &d), meet ? met : CPointD());
    same("toward", AT(Get_CirclePointd, &a, &b, n), Plain::toward(a, b, n));
    same("moved", AT(V_Moved, &a, &b, &c), b - a + c);
    for (const double d2 : {0.0, deg})
        same("frame", AT(Vartical_Pointd, &a, &b, &c, scale, n, d2), Plain::in_frame(a, b, scale, n, d2));
    same("trans", AT(Trans_Pointd, &a, &b, n, deg, scale), Plain::translated(a, b, b, n, deg, scale));
    same("trans 2", AT(Trans_Pointd2, &a, &b, &c, n, deg, scale), Plain::translated(a, b, c, n, deg, scale));
    same("trans 3", AT(Trans_Pointd3, &a, &b, &c, n, deg), Plain::translated(a, b, c, n, deg, 1));
    same("lot 2", AT(Lot_Pointd2, &a, &b, deg, scale), Plain::turned_about(a, b, deg, scale, scale));
    same("lot 3", AT(Lot_Pointd3, &a, &b, deg, scale), Plain::turned_about(a, b, deg, scale, 1));
}

void check_pixels(CPoint a, CPoint b, CPoint c, CPoint p, double scale) {
    const CPointD f = Plain::pixel_foot(a, b, p), g = Plain::pixel_foot(a, c, p);
    same("whole foot", CCalcTool::Get_Point(a, b, p), f);
    const CPointD level = CPointD(a) - p;
    const CPointD ab = Plain::standing(a, b, p, f, level.y), ac = Plain::standing(a, c, p, g, level.x);
    CPointD out;
    CCalcTool::Vartical_Length(a, b, c, p, scale, &out.x, &out.y);
    same("vartical", out, {ac.x * ab.y * scale, ab.x * ac.y * scale});
}

}  // namespace

TEST(ExactBits, EverySmallPicture) {  // every four points of a 4 x 4 grid, about 0.1 s
    const auto point = [](int i) { return CPoint(i % 4 * 2 - 3, i / 4 % 4 * 3 - 4); };
    for (int i = 0; i < 1 << 16 && !HasFailure(); ++i) {
        check(point(i), point(i >> 4), point(i >> 8), point(i >> 12), i % 3 * 0.35, i % 7 - 3.5, i % 25 * 30 - 360.0);
        check_pixels(point(i), point(i >> 4), point(i >> 8), point(i >> 12), 0.5);
    }
}

TEST(ExactBits, RandomAndExtremePictures) {
    const unsigned seed = std::random_device()();
    std::mt19937 random(seed);
    const double inf = INFINITY, extremes[] = {0, -0.0, 1, 1e-320, 1e-160, 1e160, -1.7e308, inf, -inf, inf - inf};
    const int bounds[] = {-2147483647 - 1, -70000, -1, 0, 3, 2147483647};
    for (int i = 0; i < 60000; ++i) {
        const auto real = [&] { return i % 2 ? double(random()) / 1e6 - 2000 : extremes[random() % 10]; };
        const auto whole = [&] { return i % 2 ? int(random() % 4000) - 300 : bounds[random() % 6]; };
        const auto point = [&] { return CPointD(real(), real()); };
        const auto pixel = [&] { return CPoint(whole(), whole()); };
        check(point(), point(), point(), point(), real(), real(), real());
        const CPointD u = point(), v = u * 2 + point() / std::pow(2, i % 60);  // nearly parallel
        same("slight angle", CCalcTool::Get_Angled(CPoint(), &u, CPoint(), &v), Plain::signed_angle(u, v));
        check_pixels(pixel(), pixel(), pixel(), pixel(), 0.1);
        ASSERT_FALSE(HasFailure()) << "seed " << seed << ", picture " << i;
    }
}
