#include "python/engine/engine.h"

#ifdef PYTHON_HAS_STUDY
#include "study/agreement.h"
#endif

namespace python {
namespace {

#ifdef PYTHON_HAS_STUDY

py::tuple interval(const cephtool::Interval& between) {
    return py::make_tuple(between.low, between.high);
}

py::object correlation(const std::optional<cephtool::IntraclassCorrelation>& found) {
    if (!found) return py::none();
    return py::make_tuple(found->value, interval(found->interval));
}

py::object agreement(const Doubles& values) {
    if (values.ndim() != 2) throw bad_argument("readings do not have the shape (n_films, n_readings)");
    const auto all = values.unchecked<2>();
    cephtool::Readings readings(static_cast<std::size_t>(all.shape(0)));
    for (py::ssize_t film = 0; film < all.shape(0); ++film)
        for (py::ssize_t reading = 0; reading < all.shape(1); ++reading)
            readings[static_cast<std::size_t>(film)].push_back(all(film, reading));
    const auto found = cephtool::agreement(readings);
    if (!found)
        throw bad_argument("agreement takes three films and two readings at least, all of them finite",
                           "Leave out films that lack a reading.");
    py::list pairs;
    for (const cephtool::PairAgreement& pair : found->pairs)
        pairs.append(py::make_tuple(pair.bias, interval(pair.bias_interval), pair.sd, pair.t, pair.p, pair.dahlberg,
                                    interval(pair.limits), pair.limit_error));
    return py::make_tuple(found->mean, found->technical_error, correlation(found->icc21), correlation(found->icc31),
                          pairs);
}

#else

py::object agreement(const Doubles&) {
    throw bad_argument("this build can't tell agreement, since Boost.Math was not found when it was made",
                       "Debian has it as libboost-math-dev.");
}

#endif

}  // namespace

void add_study(py::module_& module) {
    module.def("agreement", agreement, py::arg("readings"));
}

}  // namespace python
