// The extension module cephtool._engine: what Python's modules in python/cephtool stand on. Each part declares its
// functions and classes in a file of its own; python/cephtool/_engine.pyi has their types.
//
// Whatever takes long lets other threads run: it collects what it needs of Python's objects, releases the interpreter's
// lock, works on C++ values, and takes the lock again to give its result.
#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <optional>
#include <string>
#include <vector>

#include "base/error.h"
#include "results/analysis_folder.h"

namespace python {

namespace py = pybind11;

void add_cases(py::module_& module);     // cases and their tracings
void add_analyses(py::module_& module);  // folders, analyses, what they say about cases
void add_arrays(py::module_& module);    // landmarks and images in arrays
void add_facts(py::module_& module);     // dates, eras, photographs
void add_errors(py::module_& module);    // errors of landmarks
void add_study(py::module_& module);     // error of the method

using Doubles = py::array_t<double, py::array::forcecast>;

cephtool::Kind kind_named(const std::string& name);
std::optional<cephtool::Sex> sex_named(const std::optional<std::string>& name);

// As cephtool::shown, without the program's name in front and the line's end behind.
std::string shown_text(const cephtool::Error& error);

// Of a text or path.
std::string path_text(const py::object& path);

// An error of an argument, in which no file has a part.
inline cephtool::Error bad_argument(const std::string& message, const std::string& way_out = {}) {
    return {cephtool::ExitCode::bad_command_line, message, way_out};
}

// The numbers as an array that owns them, without a copy.
template <class Number>
py::array_t<Number> array_of(std::vector<Number>&& numbers, std::vector<py::ssize_t> shape) {
    auto* const kept = new std::vector<Number>(std::move(numbers));
    const py::capsule owner(kept, [](void* vector) { delete static_cast<std::vector<Number>*>(vector); });
    return py::array_t<Number>(std::move(shape), kept->data(), owner);
}

}  // namespace python
