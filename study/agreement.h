// How well readings of the same films agree. n films, k readings of each: two by one observer, or one each by several.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace cephtool {

// Of each film the value of each reading.
using Readings = std::vector<std::vector<double>>;

struct Interval {
    double low = 0, high = 0;
};

// An intraclass correlation of single readings with its 95 % interval.
struct IntraclassCorrelation {
    double value = 0;
    Interval interval;
};

// A further reading against the first.
struct PairAgreement {
    double bias = 0;  // mean of its values less those of the first
    Interval bias_interval;
    double sd = 0;               // of the differences
    std::optional<double> t, p;  // of the paired t-test, two-sided; nothing when all differences are the same
    double dahlberg = 0;         // sqrt(sum of d^2 / 2n) (Dahlberg, Statistical Methods, 1940)
    Interval limits;             // bias -/+ 1.96 SD (Bland & Altman, Lancet 1986;1:307-310)
    double limit_error = 0;      // standard error of either limit, sqrt(3 / n) SD
};

// Observers who each read more than once: standard deviations of a single reading (two-way analysis of variance with
// interaction, observers and films at random; ISO 5725-2:2019, Montgomery, Design and Analysis of Experiments, ch. 13).
struct ObserverSpread {
    double within = 0;    // of one observer's readings of a film: repeatability
    double between = 0;   // of observers, who differ on all films or on some; 0 when less than chance would make it
    double together = 0;  // of one reading by any observer: reproducibility
};

struct Agreement {
    std::size_t films = 0, readings = 0;
    double mean = 0;
    // Technical error of measurement: the root of the mean square between the readings of a film (Ulijaszek & Kerr,
    // Br J Nutr 1999;82:165-177); of two readings it is Dahlberg's.
    double technical_error = 0;
    // Two-way analysis of variance (Shrout & Fleiss, Psychol Bull 1979;86:420-428): mean squares between films, between
    // readings, and of the error.
    double between_films = 0, between_readings = 0, error = 0;
    // Agreement of readers who stand for others, ICC(2,1), and consistency of these readers, ICC(3,1); nothing where
    // all values are the same.
    std::optional<IntraclassCorrelation> icc21, icc31;
    std::vector<PairAgreement> pairs;  // of each reading behind the first
    std::optional<ObserverSpread> observers;
};

// Readings by one observer follow each other, `repeats` of each; with two observers and two repeats at least their
// spread is told. Nothing for fewer than three films or two readings, when films have unlike numbers of readings or
// a value is not finite, and when `repeats` does not divide the number of readings.
std::optional<Agreement> agreement(const Readings& readings, std::size_t repeats = 1);

// How many films must be read for a 95 % interval of the ICC that is so wide (Bonett, Stat Med 2002;21:1331-1335).
int films_for_icc(double icc, std::size_t readings, double width);
// How many for limits of agreement that are known to +/- `part` of the SD of the differences (95 %).
int films_for_limits(double part);

}  // namespace cephtool
