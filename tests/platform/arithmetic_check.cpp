// Checks the correctly rounded functions against MPFR:
//
//     arithmetic_check [COUNT [SEED]]
//
// takes COUNT arguments, 1,000,000 if not said: ordinary ones, any bits, neighbours of special ones, and the hardest of
// 200, whose results lie nearest to the middle of two doubles. For all, the result must be MPFR's. For every tenth the
// approximation must keep its bound, and the exact comparison must tell the middles above and below the result, whether
// the function needs it or not. The last column counts how often the C library has other bits.
#include <mpfr.h>

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include "platform/arithmetic.h"
#include "platform/arithmetic/approximation.h"
#include "platform/arithmetic/decision.h"

namespace {

using tool::Approximation;
using tool::Parts;

constexpr double pi = 3.14159265358979323846;

struct Function {
    const char* name;
    double (*rounded)(double);
    double (*of_c_library)(double);
    int (*of_mpfr)(mpfr_t, const mpfr_t, mpfr_rnd_t);
    Approximation (*approximation)(double);
    bool (*above)(double, Parts);
    double smallest, largest;  // sizes that the approximation is for
    double ordinary, step;     // ordinary arguments are -ordinary ... ordinary; special ones are multiples of `step`
};

Approximation approximate_exp(double x) {
    const auto [value, power] = tool::approximate_exp(x);
    return {std::ldexp(value.high, power), std::ldexp(value.low, power), std::ldexp(value.error, power)};
}

// A number that is no result where a lane has another one than the function by itself.
template <double (*alone)(double), void (*of_lanes)(const tool::LaneNumbers&, tool::LaneNumbers&)>
double both_ways(double x) {
    static tool::LaneNumbers arguments{}, results{};
    static std::size_t lane = 0;
    arguments[lane = (lane + 1) % tool::lane_count] = x;
    of_lanes(arguments, results);
    const double result = alone(x);
    return std::memcmp(&result, &results[lane], sizeof result) == 0 || std::isnan(result) ? result : 1000;
}

const Function functions[] = {
    {"acos", both_ways<tool::acos, tool::acos>, std::acos, mpfr_acos,
     [](double x) { return tool::approximate_acos(x); }, tool::acos_above, 0, 1 - 0x1p-53, 1, 1 / 128.},
    {"atan", both_ways<tool::atan, tool::atan>, std::atan, mpfr_atan,
     [](double x) { return tool::approximate_atan(x); }, tool::atan_above, 0x1p-27, 0x1p53, 4, 1 / 64.},
    {"sin", both_ways<tool::sin, tool::sin>, std::sin, mpfr_sin, [](double x) { return tool::approximate_sin(x, 0); },
     [](double x, Parts middle) { return tool::sin_above(x, 0, middle); }, 0x1p-26, 1.7e308, 10, pi / 2},
    {"cos", both_ways<tool::cos, tool::cos>, std::cos, mpfr_cos, [](double x) { return tool::approximate_sin(x, 1); },
     [](double x, Parts middle) { return tool::sin_above(x, 1, middle); }, 0x1p-27, 1.7e308, 10, pi / 2},
    {"exp", tool::exp, std::exp, mpfr_exp, approximate_exp, tool::exp_above, 0x1p-54, 600, 700,
     0.69314718055994531 / 256},
};

class Arguments {
 public:
    Arguments(const Function& function, std::uint64_t seed) : function_(function), random_(seed) {}

    double next(std::uint64_t i) {
        switch (i % 4) {
            case 0: return ordinary();
            case 1: return std::bit_cast<double>(random_());
            case 2: return special();
            default: return hardest();
        }
    }

 private:
    double ordinary() {
        const double size = i_++ % 2 ? function_.ordinary : function_.ordinary / 100;
        return std::uniform_real_distribution<double>(-size, size)(random_);
    }
    double special() {  // a multiple of the step, or of a power of two, 1, or an end, and its neighbours
        const double whole = static_cast<double>(random_() >> random_() % 64);
        const double some[] = {whole * function_.step,
                               std::ldexp(1, static_cast<int>(random_() % 2100) - 1074),
                               1,
                               1 - whole * 0x1p-64,
                               709.782712893384,
                               -745.1332191019411,
                               -708.3964185322641,
                               std::ldexp(pi, static_cast<int>(random_() % 1024) - 2)};
        const std::uint64_t bits = std::bit_cast<std::uint64_t>(some[random_() % std::size(some)]) + random_() % 17 - 8;
        return std::bit_cast<double>(bits ^ random_() << 63);
    }
    double hardest() {
        double found = 0, least = 1;
        for (int i = 0; i < 200; ++i) {
            const double x = ordinary(), size = std::abs(x);
            if (size < function_.smallest || size > function_.largest) continue;
            const Approximation value = function_.approximation(function_.of_mpfr == mpfr_atan ? size : x);
            const double sum = value.high + value.low, rest = std::abs((value.high - sum) + value.low);
            const double last = std::nextafter(std::abs(sum), INFINITY) - std::abs(sum);
            const double distance = std::abs(rest / last - 0.5);
            if (distance < least) found = x, least = distance;
        }
        return found;
    }

    const Function& function_;
    std::mt19937_64 random_;
    unsigned i_ = 0;
};

struct Check {
    explicit Check(const Function& f) : function(f) {
        mpfr_inits2(53, argument, nearest, nullptr);
        mpfr_inits2(200, exact, part, nullptr);
    }
    ~Check() { mpfr_clears(argument, nearest, exact, part, nullptr); }
    Check(const Check&) = delete;
    Check& operator=(const Check&) = delete;

    double by_mpfr(double x) {
        mpfr_set_emin(-1073), mpfr_set_emax(1024);
        mpfr_set_d(argument, x, MPFR_RNDN);
        const int side = function.of_mpfr(nearest, argument, MPFR_RNDN);
        mpfr_subnormalize(nearest, side, MPFR_RNDN);
        return mpfr_get_d(nearest, MPFR_RNDN);
    }

    // The error of the approximation in parts of its bound.
    double share_of_bound(double x) {
        mpfr_set_emin(mpfr_get_emin_min()), mpfr_set_emax(mpfr_get_emax_max());
        mpfr_set_d(argument, x, MPFR_RNDN);
        function.of_mpfr(exact, argument, MPFR_RNDN);
        const Approximation value = function.approximation(x);
        mpfr_sub_d(part, exact, value.high, MPFR_RNDN);
        mpfr_sub_d(part, part, value.low, MPFR_RNDN);
        return std::abs(mpfr_get_d(part, MPFR_RNDN)) / value.error;
    }

    bool middles_told(double x, double result) {
        const double size = std::abs(result);
        const Parts after = tool::parts_of(size), before = tool::parts_of(std::nextafter(size, 0));
        return function.above(x, {2 * before.mantissa + 1, before.exponent - 1}) &&
               !function.above(x, {2 * after.mantissa + 1, after.exponent - 1});
    }

    const Function& function;
    mpfr_t argument, nearest, exact, part;
};

// Whether all is right; says where it is not.
bool checked(const Function& function, std::uint64_t count, std::uint64_t seed) {
    Arguments arguments(function, seed);
    Check check(function);
    double largest_share = 0;
    std::uint64_t undecided = 0, other_bits = 0, wrong = 0;
    const auto complain = [&](const char* what, double x) {
        if (++wrong < 10) std::printf("%s(%a): %s\n", function.name, x, what);
    };
    for (std::uint64_t i = 0; i < count; ++i) {
        const double x = arguments.next(i), result = function.rounded(x), expected = check.by_mpfr(x);
        if (std::memcmp(&result, &expected, sizeof result) != 0 && !(result != result && expected != expected))
            complain("not as MPFR has it", x);
        const double theirs = function.of_c_library(x);
        other_bits += theirs != result && theirs == theirs;
        const double size = std::abs(x), y = function.of_mpfr == mpfr_atan ? size : x;
        if (!(size >= function.smallest && size <= function.largest)) continue;
        const Approximation value = function.approximation(y);
        undecided += value.high + (value.low - value.error) != value.high + (value.low + value.error);
        if (i % 10 != 0 && i % 4 != 3) continue;
        const double share = check.share_of_bound(y);
        if (!(share < 1)) complain("the approximation misses its bound", x);
        if (share > largest_share) largest_share = share;
        if (i % 10 == 0 && !check.middles_told(y, result)) complain("a middle on the wrong side", x);
    }
    std::printf("%-5s %11" PRIu64 " arguments, %7" PRIu64
                " undecided by the approximation, whose largest error is %.2f of its bound; "
                "C library: %" PRIu64 " others\n",
                function.name, count, undecided, largest_share, other_bits);
    return wrong == 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::uint64_t count = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000;
    const std::uint64_t seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : std::random_device()();
    std::printf("seed %" PRIu64 "\n", seed);
    bool right = count > 0;
    for (const Function& function : functions) right &= checked(function, count / std::size(functions), seed);
    return right ? 0 : 1;
}
