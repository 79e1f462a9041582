#include "PointD.h"

#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

static_assert(sizeof(CPointD) == sizeof(tagDPOINT) && std::is_standard_layout_v<CPointD>);

TEST(PointD, ComparesExactly) {
    EXPECT_EQ(CPointD(0, -0.0).IsPointNull(), 1);
    EXPECT_EQ(CPointD(1e-300, 0).IsPointNull() | CPointD(0, NAN).IsPointNull(), 0);
    EXPECT_EQ((CPointD(1.0, 2.0) == CPoint(1, 2)) - (CPointD(1.0000001, 2.0) == CPoint(1, 2)), 1);
    EXPECT_EQ(CPointD(1, NAN) != CPointD(1, NAN), 1);
}

TEST(PointD, AssigningOperatorsAgreeWithPlainOnes) {
    const CPoint q(3, -4);
    const CPointD p(0.1, 7);
    CPointD s = p, k = p;
    EXPECT_TRUE((s += q) == CPointD(3.1, 3) && s == p + q && (s += CPointD(q)) == p + q + CPointD(q) && s != q);
    EXPECT_TRUE((s -= q) == p + q + q - q && (s -= p) == p + q + q - q - p);
    EXPECT_TRUE((k *= 3) == CPointD(0.1 * 3, 21) && k == p * 3 && (k /= 0.0) == CPointD(INFINITY, INFINITY));
    EXPECT_TRUE(k.FromDPOINT(p.ToDPOINT()) == p && k.SetPointEmpty() == CPoint() && p / 2 == CPointD(0.05, 3.5));
}
