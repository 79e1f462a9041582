#include "study/agreement.h"

#include <algorithm>
#include <boost/math/distributions/fisher_f.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <span>

namespace cephtool {
namespace {

constexpr double upper_tail = 0.025, normal_95 = 1.959963984540054;

double f_quantile(double first, double second) {
    return boost::math::quantile(boost::math::complement(boost::math::fisher_f(first, second), upper_tail));
}

PairAgreement pair_of(const Readings& readings, std::size_t other) {
    PairAgreement pair;
    const double n = static_cast<double>(readings.size());
    double sum = 0, squares = 0, about_mean = 0;
    for (const auto& film : readings) {
        const double d = film[other] - film[0];
        sum += d, squares += d * d;
    }
    pair.bias = sum / n;
    for (const auto& film : readings) {
        const double d = film[other] - film[0] - pair.bias;
        about_mean += d * d;
    }
    pair.sd = std::sqrt(about_mean / (n - 1));
    pair.dahlberg = std::sqrt(squares / (2 * n));
    pair.limits = {pair.bias - normal_95 * pair.sd, pair.bias + normal_95 * pair.sd};
    pair.limit_error = std::sqrt(3 / n) * pair.sd;
    const double mean_error = pair.sd / std::sqrt(n);
    const boost::math::students_t distribution(n - 1);
    const double reach = boost::math::quantile(boost::math::complement(distribution, upper_tail)) * mean_error;
    pair.bias_interval = {pair.bias - reach, pair.bias + reach};
    if (mean_error > 0) {
        pair.t = pair.bias / mean_error;
        pair.p = 2 * boost::math::cdf(boost::math::complement(distribution, std::abs(*pair.t)));
    }
    return pair;
}

void add_correlations(Agreement& all) {
    const double n = static_cast<double>(all.films), k = static_cast<double>(all.readings);
    const double b = all.between_films, j = all.between_readings, e = all.error;
    if (!(b > 0)) return;
    const double consistent = (b - e) / (b + (k - 1) * e), agreeing = (b - e) / (b + (k - 1) * e + k * (j - e) / n);
    const double d1 = n - 1, d2 = (n - 1) * (k - 1);
    if (!(e > 0)) {  // a constant difference at most
        all.icc31 = {consistent, {consistent, consistent}};
        if (!(j > 0)) all.icc21 = {agreeing, {agreeing, agreeing}};
        return;
    }
    const double f = b / e, low = f / f_quantile(d1, d2), high = f * f_quantile(d2, d1);
    all.icc31 = {consistent, {(low - 1) / (low + k - 1), (high - 1) / (high + k - 1)}};
    const double fj = j / e, r = agreeing, rest = n * (1 + (k - 1) * r) - k * r;
    const double root = k * r * fj + rest;
    const double v = d2 * root * root / ((n - 1) * k * k * r * r * fj * fj + rest * rest);
    const double upper = f_quantile(d1, v), lower = f_quantile(v, d1), spread = k * j + (k * n - k - n) * e;
    all.icc21 = {r, {n * (b - upper * e) / (upper * spread + n * b), n * (lower * b - e) / (spread + n * lower * b)}};
}

std::optional<ObserverSpread> observers_of(const Agreement& all, const Readings& readings, std::size_t repeats) {
    const std::size_t observers = all.readings / repeats;
    if (repeats < 2 || observers < 2) return std::nullopt;
    const double n = static_cast<double>(all.films), k = static_cast<double>(observers);
    const double r = static_cast<double>(repeats);
    std::vector<double> of_observer(observers);
    for (const auto& film : readings)
        for (std::size_t i = 0; i < film.size(); ++i) of_observer[i / repeats] += film[i] / (n * r);
    double observer = 0, interaction = 0, within = 0;
    for (const double mean : of_observer) observer += n * r * (mean - all.mean) * (mean - all.mean);
    for (const auto& film : readings) {
        double film_mean = 0;
        for (const double value : film) film_mean += value / (k * r);
        for (std::size_t o = 0; o < observers; ++o) {
            const auto cell = std::span(film).subspan(o * repeats, repeats);
            double mean = 0;
            for (const double value : cell) mean += value / r;
            const double apart = mean - film_mean - of_observer[o] + all.mean;
            interaction += r * apart * apart;
            for (const double value : cell) within += (value - mean) * (value - mean);
        }
    }
    observer /= k - 1, interaction /= (n - 1) * (k - 1), within /= n * k * (r - 1);
    const double between = std::max(interaction - within, 0.0) / r + std::max(observer - interaction, 0.0) / (n * r);
    return ObserverSpread{std::sqrt(within), std::sqrt(between), std::sqrt(within + between)};
}

}  // namespace

std::optional<Agreement> agreement(const Readings& readings, std::size_t repeats) {
    constexpr std::size_t least_films = 3;
    if (readings.size() < least_films || readings.front().size() < 2) return std::nullopt;
    if (repeats == 0 || readings.front().size() % repeats != 0) return std::nullopt;
    Agreement all{.films = readings.size(),
                  .readings = readings.front().size(),
                  .icc21 = {},
                  .icc31 = {},
                  .pairs = {},
                  .observers = {}};
    const double n = static_cast<double>(all.films), k = static_cast<double>(all.readings);
    std::vector<double> of_reading(all.readings);
    for (const auto& film : readings) {
        if (film.size() != all.readings) return std::nullopt;
        for (std::size_t i = 0; i < film.size(); ++i) {
            if (!std::isfinite(film[i])) return std::nullopt;
            of_reading[i] += film[i] / n;
        }
    }
    for (const double mean : of_reading) all.mean += mean / k;
    double films = 0, between = 0, within = 0, errors = 0;
    for (const double mean : of_reading) between += n * (mean - all.mean) * (mean - all.mean);
    for (const auto& film : readings) {
        double mean = 0;
        for (const double value : film) mean += value / k;
        films += k * (mean - all.mean) * (mean - all.mean);
        for (std::size_t i = 0; i < film.size(); ++i) {
            const double left = film[i] - mean, error = left - (of_reading[i] - all.mean);
            within += left * left, errors += error * error;
        }
    }
    all.technical_error = std::sqrt(within / (n * (k - 1)));
    all.between_films = films / (n - 1);
    all.between_readings = between / (k - 1);
    all.error = errors / ((n - 1) * (k - 1));
    add_correlations(all);
    for (std::size_t other = 1; other < all.readings; ++other) all.pairs.push_back(pair_of(readings, other));
    all.observers = observers_of(all, readings, repeats);
    return all;
}

int films_for_icc(double icc, std::size_t readings, double width) {
    const double k = static_cast<double>(readings), grown = 1 + (k - 1) * icc;
    const double n = 8 * normal_95 * normal_95 * (1 - icc) * (1 - icc) * grown * grown / (k * (k - 1) * width * width);
    return static_cast<int>(std::ceil(std::max(n, 0.0))) + 1;
}

int films_for_limits(double part) {
    return static_cast<int>(std::ceil(3 * normal_95 * normal_95 / (part * part)));
}

}  // namespace cephtool
