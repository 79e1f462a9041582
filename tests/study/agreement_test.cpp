// The statistics of readings against published worked examples.
#include "study/agreement.h"

#include <gtest/gtest.h>

#include <cmath>

namespace cephtool {
namespace {

// Shrout & Fleiss, Psychol Bull 1979;86:420-428: six targets by four judges. The intervals are those that
// the manual of R's psych prints for them.
TEST(Agreement, IsThatOfSixTargetsByFourJudges) {
    const Agreement found =
        *agreement({{9, 2, 5, 8}, {6, 1, 3, 2}, {8, 4, 6, 8}, {7, 1, 2, 6}, {10, 5, 6, 9}, {6, 2, 4, 7}});
    EXPECT_NEAR(found.between_films, 11.24, 0.005);
    EXPECT_NEAR(found.between_readings, 32.49, 0.005);
    EXPECT_NEAR(found.error, 1.02, 0.005);
    EXPECT_NEAR(found.icc21->value, 0.29, 0.005);
    EXPECT_NEAR(found.icc31->value, 0.71, 0.005);
    EXPECT_NEAR(found.icc21->interval.low, 0.019, 0.001);
    EXPECT_NEAR(found.icc21->interval.high, 0.76, 0.005);
    EXPECT_NEAR(found.icc31->interval.low, 0.342, 0.001);
    EXPECT_NEAR(found.icc31->interval.high, 0.95, 0.005);
    EXPECT_EQ(found.pairs.size(), 3);
}

// Bland & Altman, Lancet 1986;1:307-310: peak flow of 17 people by two meters, large less mini; the paper takes 2 SD,
// and t = 2.12, for its intervals.
TEST(Agreement, IsThatOfPeakFlowByTwoMeters) {
    const double large[] = {494, 395, 516, 434, 476, 557, 413, 442, 650, 433, 417, 656, 267, 478, 178, 423, 427};
    const double mini[] = {512, 430, 520, 428, 500, 600, 364, 380, 658, 445, 432, 626, 260, 477, 259, 350, 451};
    Readings readings;
    double squares = 0;
    for (std::size_t i = 0; i < std::size(large); ++i) {
        readings.push_back({mini[i], large[i]});
        squares += (large[i] - mini[i]) * (large[i] - mini[i]);
    }
    const Agreement found = *agreement(readings);
    const PairAgreement& pair = found.pairs.front();
    EXPECT_NEAR(pair.bias, -2.1, 0.05);
    EXPECT_NEAR(pair.sd, 38.8, 0.05);
    EXPECT_NEAR(pair.bias - 2 * pair.sd, -79.7, 0.06);
    EXPECT_NEAR(pair.bias_interval.low, -22.0, 0.1);
    EXPECT_NEAR(pair.bias_interval.high, 17.8, 0.1);
    EXPECT_NEAR(pair.limit_error, 16.3, 0.05);
    EXPECT_NEAR(pair.dahlberg, std::sqrt(squares / 34), 1e-9);
    EXPECT_NEAR(found.technical_error, pair.dahlberg, 1e-9);  // of two readings they are one
    EXPECT_GT(*pair.p, 0.8);
}

TEST(Agreement, OfReadingsThatDoNotScatterIsTold) {
    const Agreement shifted = *agreement({{1, 2}, {3, 4}, {7, 8}});
    EXPECT_EQ(shifted.icc31->value, 1);
    EXPECT_FALSE(shifted.pairs.front().p);
    EXPECT_EQ(shifted.pairs.front().bias, 1);
    EXPECT_FALSE(agreement({{2, 2}, {2, 2}, {2, 2}})->icc21);
    EXPECT_FALSE(agreement({{1, 2}, {3, 4}}));
    EXPECT_FALSE(agreement({{1, 2}, {3, 4}, {3}}));
    EXPECT_FALSE(agreement({{1, 2}, {3, NAN}, {3, 5}}));
}

TEST(Agreement, SizesOfSamples) {
    EXPECT_EQ(films_for_icc(0.8, 3, 0.2), 36);  // 8 z^2 0.2^2 2.6^2 / (6 0.2^2) = 34.6, and 1
    EXPECT_EQ(films_for_limits(0.34), 100);     // Bland & Altman: 100 people for limits to 0.34 SD
}

}  // namespace
}  // namespace cephtool
