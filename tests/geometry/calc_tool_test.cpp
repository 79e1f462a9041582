#include "CalcTool.h"

#include <gtest/gtest.h>

#include <fstream>
#include <tuple>

#include "tests/geometry/plain_formulas.h"

using CT = CCalcTool;
using Pt = CPoint;

TEST(CalcTool, EdgesAndOddities) {
    const int low = -2147483647 - 1, high = 2147483647;
    const Pt o(0, 0), p1(1, 1), p10(10, 10), x10(10, 0), y10(0, 10), c(8, 3), d(2, 7);
    const auto weight = CT::Get_NormalWeight;
    const CPointD far(INFINITY, 0);
    tagDPOINT* const none = nullptr;
    CPointD two(1, 0);
    const std::tuple<const char*, CPointD, CPointD> rows[] = {
        {"short pi; no side", {CT::Angle_Cald(o, Pt(1, 0), p1), CT::Angle_Cal(o, o, p1)}, {90.00000001175155, -1}},
        {"antiparallel", {CT::Get_Angle(o, p1, o, Pt(-2, -2)), CT::Get_Angle(o, p1, o, Pt(-1, -1))}, {0, 180}},
        {"quarter turn", {std::floor(CT::Get_Angle(o, x10, o, y10) * 1e6), 0}, {-90e6, 0}},
        {"middle, cut toward the first point", CT::Get_Mpoint(Pt(5, low), Pt(2, high)), {4, -1}},
        {"foot rounded up", CT::Get_Point(o, p10, Pt(3, 0)), {2, 2}},
        {"foot below zero cut", CT::Get_Point(o, p10, Pt(-3, 0)), {-1, -1}},
        {"two verticals", AT(Pile_Pointd, x10, p10, o, y10), {0, 0}},
        {"two verticals write x", AT(Get_Cross_Pointd, x10, p10, o, y10), {10, 7}},
        {"3-4-5", AT(Get_CirclePointd, o, Pt(3, 4), 5.0), {3, 4}},
        {"steps cut", AT(Get_CirclePointd, o, Pt(3, 4), 4.9), {2, 3}},
        {"whole steps to a bound", CT::Get_CirclePoint(Pt(-5, -5), Pt(-5, 1), 1e99), {-5, 2147483642}},
        {"vector cut, not rounded", CT::V_Move(o, Pt(5, -5), p1, 0.39), {2, 0}},
        {"vector to a bound", CT::V_Move(Pt(high, low), Pt(low, high), o, 0.9), {low, high}},
        {"touei", {CT::Get_Touei_Length(o, x10, c, d, 1, 0), CT::Get_Touei_Length(o, x10, c, d, 1, 1)}, {6, -6}},
        {"newborn, boy of 1", {weight(0.4, 50, 1), weight(0.5, 80, 1)}, {0, 0.00206 * 80 * 80 - 0.1166 * 80 + 6.5273}},
        {"girl of 5", {weight(5.4, 80, 0), 0}, {0.00249 * 80 * 80 - 0.1858 * 80 + 9.036, 0}},
        {"touei on a vertical", {CT::Get_Touei_Length(x10, p10, c, d, 1, 1), 0}, {0, 0}},
        {"touei from far", {CT::Get_Touei_Length(o, p1, &far, &far, 1, 1), 0}, {0, 0}},
        {"d1 0 overrules d2", AT(Vartical_Pointd, p1, p10, o, 1, 0, 5), {1, 1}},
        {"d1 below 0 with d2 0", AT(Vartical_Pointd, o, x10, o, 1, -5, 0), {5, 0}},
        {"out may be an input", (CT::Get_Pointd(o, p10, &two, &two), two), {0.5, 0.5}},
        {"null is empty", AT(V_Moved, none, p1, p10), {11, 11}},
        {"two horizontal axes", (CT::Vartical_Length(o, x10, x10, d, 2, &two.x, &two.y), two), {-4, -14}},
    };
    for (const auto& [name, got, want] : rows) EXPECT_TRUE(got == want) << name << ": " << got.x << ", " << got.y;
    CT::V_Moved(o, p1, p10, none);
}

TEST(CalcTool, LotTurnsClockwiseOnTheScreenAndLot3AlsoScales) {
    for (int angle = -720; angle <= 720; angle += 15) {
        const CPointD step = Plain::turned({6, 2}, angle / 180.0 * Plain::pi), centre(3, 4);  // y points down
        EXPECT_LT(Plain::size(AT(Lot_Pointd2, &centre, Pt(9, 6), angle, 0.5) - centre - step), 1e-7) << angle;
        EXPECT_LT(Plain::size(AT(Lot_Pointdd, &centre, Pt(9, 6), angle, 0.5) - centre - step * 0.5), 1e-7) << angle;
    }
}

TEST(CalcTool, NormalWeightFollowsItsTable) {
    std::ifstream table(TOOL_TEST_DATA "/normal_weight.txt");  // age, then slope and offset of girls and of boys
    for (double age, g, g0, b, b0; table >> age >> g >> g0 >> b >> b0;) {
        EXPECT_EQ(CT::Get_NormalWeight(age - 0.5, 123.4, 1), b * 123.4 + b0) << age;
        EXPECT_EQ(CT::Get_NormalWeight(age + 0.4, 123.4, 2), g * 123.4 + g0) << age;
    }
    EXPECT_TRUE(table.eof());
}

TEST(CalcTool, EveryMixOfPointKindsIsOneFunction) {
    const Pt w[] = {{3, 4}, {9, 6}, {-7, 1}, {2, 9}};
    const CPointD o[] = {w[0], w[1], w[2], w[3]};
    const tagDPOINT r[] = {o[0].ToDPOINT(), o[1].ToDPOINT(), o[2].ToDPOINT(), o[3].ToDPOINT()};
    const auto sum_of_all = [](auto a, auto b, auto c, auto d) {
        const CPointD p =
            AT(Get_GPointd, a, b, c, d) + AT(Pile_Pointd, a, b, c, d) + AT(Get_Cross_Pointd, a, b, c, d) +
            CT::CrossPoint(a, b, c, d) + AT(Get_Pointd, a, b, c) + CT::Get_Pointd(a, b, c) + AT(V_Moved, a, b, c) +
            AT(Get_Mpointd, a, b) + CT::Get_Mpoint(a, b) + AT(Get_CirclePointd, a, b, 9) +
            AT(Trans_Pointd, a, b, 9, 8, 7) + AT(Trans_Pointd2, a, b, c, 9, 8, 7) + AT(Trans_Pointd3, a, b, c, 9, 8) +
            AT(Lot_Pointd2, a, b, 9, 8) + AT(Lot_Pointd3, a, b, 9, 8) + AT(Vartical_Pointd, a, b, c, 9, 8, 7);
        return p.x + p.y + CT::Get_Length(a, b, 9) + CT::Get_Lengthd(a, b, 9) + CT::Angle_Cal(a, b, c) +
               CT::Angle_Cald(a, b, c) + CT::Get_Angle(a, b, c, d) + CT::Get_Angled(a, b, c, d) +
               CT::Get_Suisen_Length(a, b, c, 9) + CT::Get_Heron(a, b, c, 9) + CT::Get_Touei_Length(a, b, c, d, 9, 1);
    };
    const double all = sum_of_all(&o[0], &o[1], &o[2], &o[3]);
    EXPECT_EQ(sum_of_all(w[0], &r[1], &o[2], w[3]), all);
    EXPECT_EQ(sum_of_all(&r[0], w[1], w[2], &r[3]), all);
    EXPECT_EQ(sum_of_all(&o[0], w[1], &r[2], POINT(w[3])), all);
}
