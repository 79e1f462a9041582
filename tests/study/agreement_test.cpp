// The statistics of readings against published worked examples.
#include "study/agreement.h"

#include <gtest/gtest.h>

#include <cmath>

namespace cephtool {
namespace {

const Readings six_targets = {{9, 2, 5, 8}, {6, 1, 3, 2}, {8, 4, 6, 8}, {7, 1, 2, 6}, {10, 5, 6, 9}, {6, 2, 4, 7}};

// Fifteen films, four readings that scatter alike each time.
Readings made_films() {
    Readings readings;
    for (int f = 0; f < 15; ++f) {
        const double value = 70 + f * 1.25 + f * 7 % 5;
        readings.push_back({value, value + 0.5 + (f * 37 % 11 - 5) / 4.0, value - 0.25 + (f * 53 % 13 - 6) / 4.0,
                            value + 0.75 + (f * 29 % 7 - 3) / 4.0});
    }
    return readings;
}

// R 4.2.2 with psych 2.2.9, as agreement.R beside this prints them: Shrout & Fleiss, Psychol Bull 1979;86:420-428, six
// targets by four judges, and films that were made up.
TEST(Agreement, IsThatOfR) {
    struct Row {
        Readings readings;
        double icc21[3], icc31[3], second[6], observers[3];  // value, low, high; bias, its interval, t, p, sd; SD
    };
    const Row rows[] = {
        {six_targets,
         {0.289763779528, 0.0187865133747, 0.761084369649},
         {0.714840714841, 0.342464765034, 0.945858259955},
         {-5.16666666667, -6.39350435837, -3.93982897496, -10.8256695844, 0.000116714134743, 1.16904519445},
         {2.99304749934, 0.129099444874, 2.99583043579}},
        {made_films(),
         {0.982407669541, 0.954871472796, 0.993774102702},
         {0.987747428836, 0.973391173671, 0.99537718428},
         {0.383333333333, -0.0813704490489, 0.848037115716, 1.76923076923, 0.098624811185, 0.839146391678},
         {0.87856416954, 0, 0.87856416954}},
    };
    for (const Row& row : rows) {
        const Agreement found = *agreement(row.readings, 2);
        const PairAgreement& pair = found.pairs[0];
        const ObserverSpread& observers = *found.observers;
        const double compared[][2] = {{found.icc21->value, row.icc21[0]},
                                      {found.icc21->interval.low, row.icc21[1]},
                                      {found.icc21->interval.high, row.icc21[2]},
                                      {found.icc31->value, row.icc31[0]},
                                      {found.icc31->interval.low, row.icc31[1]},
                                      {found.icc31->interval.high, row.icc31[2]},
                                      {pair.bias, row.second[0]},
                                      {pair.bias_interval.low, row.second[1]},
                                      {pair.bias_interval.high, row.second[2]},
                                      {*pair.t, row.second[3]},
                                      {*pair.p, row.second[4]},
                                      {pair.sd, row.second[5]},
                                      {observers.within, row.observers[0]},
                                      {observers.between, row.observers[1]},
                                      {observers.together, row.observers[2]}};
        for (const auto& [ours, theirs] : compared) EXPECT_NEAR(ours, theirs, 1e-9 * std::max(1.0, std::abs(theirs)));
        EXPECT_EQ(found.pairs.size(), 3);
    }
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
    EXPECT_FALSE(agreement({{1, 2, 3}, {3, 4, 5}, {7, 8, 1}}, 2));
}

TEST(Agreement, SizesOfSamples) {
    EXPECT_EQ(films_for_icc(0.8, 3, 0.2), 36);  // 8 z^2 0.2^2 2.6^2 / (6 0.2^2) = 34.6, and 1
    EXPECT_EQ(films_for_limits(0.34), 100);     // Bland & Altman: 100 people for limits to 0.34 SD
}

}  // namespace
}  // namespace cephtool
