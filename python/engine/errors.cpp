#include <LandmarkErrors.h>

#include <iostream>
#include <tuple>

#include "base/wording.h"
#include "python/engine/engine.h"
#include "results/landmark_error_file.h"

namespace python {
namespace {

using tool::LandmarkError;
using tool::LandmarkErrors;

// name, frontal, mm along and across, readings, source, assumed
using Figures = std::tuple<std::string, bool, double, double, int, std::string, bool>;

LandmarkErrors errors_of(const std::vector<Figures>& all) {
    std::vector<LandmarkError> errors;
    for (const auto& [name, frontal, along, across, readings, source, assumed] : all)
        errors.push_back({name, frontal, along, across, readings, source, assumed});
    return LandmarkErrors(errors);
}

std::vector<Figures> figures(const LandmarkErrors& errors) {
    std::vector<Figures> all;
    for (const LandmarkError& each : errors.all())
        all.emplace_back(each.name, each.frontal, each.along_mm, each.across_mm, each.readings,
                         cephtool::printable(each.source), each.assumed);
    return all;
}

LandmarkErrors errors_in(const py::object& path) {
    const std::string name = path_text(path);
    if (name == "-") throw bad_argument("standard input is not read", "Give a file.");
    return cephtool::landmark_errors_in(cephtool::read_bytes(name, std::cin));
}

py::bytes file_text(const LandmarkErrors& errors, const std::string& heading) {
    const auto text = errors.to_text(heading);
    if (!text)
        throw bad_argument("a name, a source or the heading holds a character that code page 932 lacks",
                           "The file is written in code page 932.");
    return *text;
}

}  // namespace

void add_errors(py::module_& module) {
    py::class_<LandmarkErrors>(module, "LandmarkErrors")
        .def(py::init(&errors_of), py::arg("figures"))
        .def_static("read", errors_in, py::arg("path"))
        .def_property_readonly("figures", figures)
        .def("measured", &LandmarkErrors::measured)
        .def("file_text", file_text, py::arg("heading"));
}

}  // namespace python
