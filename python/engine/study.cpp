#include "python/engine/engine.h"

#ifdef PYTHON_HAS_STUDY
#include <algorithm>
#include <memory>

#include "study/agreement.h"
#include "study/films.h"
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

using cephtool::Case;
using cephtool::Study;

// Films by the names that they were given, or "": by their files.
using NamedCases = std::vector<std::pair<std::string, std::shared_ptr<Case>>>;

struct FoundStudy : Study {
    std::size_t left_out = 0;  // films that not all readings have
};

cephtool::StudyReading reading_of(const NamedCases& cases) {
    cephtool::StudyReading reading;
    std::vector<std::pair<std::string, std::vector<Case>>> files;
    for (const auto& [film, record] : cases) {
        if (!film.empty()) {
            reading.add(film, *record);
            continue;
        }
        auto file = std::ranges::find(files, record->file, &decltype(files)::value_type::first);
        if (file == files.end()) file = files.insert(file, {record->file, {}});
        file->second.push_back(*record);
    }
    for (auto& [file, its_cases] : files) reading.add_file(file, std::move(its_cases));
    return reading;
}

FoundStudy study(const std::vector<NamedCases>& all, const std::vector<cephtool::Analysis>& analyses,
                 std::size_t repeats) {
    const py::gil_scoped_release others_run;
    if (all.size() < 2) throw bad_argument("a study takes two readings at least", "Give a list of cases for each.");
    if (repeats == 0 || all.size() % repeats != 0)
        throw bad_argument(
            std::to_string(all.size()) + " readings are not " + std::to_string(repeats) + " of each observer",
            "Give the readings of the first observer, then those of the second and so on.");
    std::vector<cephtool::StudyReading> readings;
    for (const NamedCases& each : all) readings.push_back(reading_of(each));
    std::vector<const cephtool::Analysis*> wanted;
    for (const cephtool::Analysis& analysis : analyses) wanted.push_back(&analysis);
    FoundStudy found;
    static_cast<Study&>(found) =
        cephtool::studied(cephtool::films_of(std::move(readings), found.left_out), wanted, repeats);
    return found;
}

// (analysis, item, its values: films, readings)
py::list values(const FoundStudy& study) {
    py::list all;
    for (const cephtool::StudyItem& item : study.items) {
        std::vector<double> numbers;
        for (const auto& film : item.values) numbers.insert(numbers.end(), film.begin(), film.end());
        all.append(py::make_tuple(item.analysis, item.name,
                                  array_of(std::move(numbers), {static_cast<py::ssize_t>(item.values.size()),
                                                                static_cast<py::ssize_t>(study.readings)})));
    }
    return all;
}

// (landmark, its places less the film's mean: films, readings, mm along and across)
py::list places(const FoundStudy& study) {
    py::list all;
    for (const cephtool::StudyLandmark& landmark : study.landmarks) {
        std::vector<double> numbers;
        for (const cephtool::Position& at : landmark.from_mean) numbers.insert(numbers.end(), {at.x, at.y});
        const std::size_t films = landmark.from_mean.size() / study.readings;
        all.append(py::make_tuple(
            landmark.name, array_of(std::move(numbers), {static_cast<py::ssize_t>(films),
                                                         static_cast<py::ssize_t>(study.readings), py::ssize_t{2}})));
    }
    return all;
}

void add_studies(py::module_& module) {
    py::class_<FoundStudy>(module, "Study")
        .def(py::init(&study), py::arg("readings"), py::arg("analyses"), py::arg("repeats"))
        .def_readonly("films", &FoundStudy::films)
        .def_readonly("readings", &FoundStudy::readings)
        .def_readonly("left_out", &FoundStudy::left_out)
        .def_property_readonly("table", [](const FoundStudy& study) { return cephtool::study_table(study); })
        .def_property_readonly("csv", [](const FoundStudy& study) { return cephtool::study_csv(study); })
        .def_property_readonly("json", [](const FoundStudy& study) { return cephtool::study_json(study); })
        .def_property_readonly("values", values)
        .def_property_readonly("places", places)
        .def(
            "errors",
            [](const FoundStudy& study, const std::string& source) { return cephtool::errors_of(study, source); },
            py::arg("source"));
}

#else

// The same error for whoever asks for a study.
struct Study {
    explicit Study(const py::args&, const py::kwargs&);
};

py::object agreement(const Doubles&) {
    throw bad_argument("this build can't tell agreement, since Boost.Math was not found when it was made",
                       "Debian has it as libboost-math-dev.");
}

Study::Study(const py::args&, const py::kwargs&) {
    agreement({});
}

void add_studies(py::module_& module) {
    py::class_<Study>(module, "Study").def(py::init<py::args, py::kwargs>());
}

#endif

}  // namespace

void add_study(py::module_& module) {
    module.def("agreement", agreement, py::arg("readings"));
    add_studies(module);
}

}  // namespace python
