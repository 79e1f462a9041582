#include <framework/exceptions.h>

#include "base/path.h"
#include "base/program_folder.h"
#include "base/wording.h"
#include "python/engine/engine.h"

namespace python {
namespace {

// cephtool.Error, which lives as long as the process.
PyObject* error_type() {
    static PyObject* const type = py::object(py::module_::import("cephtool._errors").attr("Error")).release().ptr();
    return type;
}

void raise(const cephtool::Error& error) {
    const py::tuple arguments = py::make_tuple(shown_text(error), std::string(error.what()), error.file, error.line,
                                               error.column, error.way_out);
    PyErr_SetObject(error_type(), arguments.ptr());
}

void translate(std::exception_ptr thrown) {
    try {
        if (thrown) std::rethrow_exception(thrown);
    } catch (const cephtool::Error& error) {
        raise(error);
    }
}

}  // namespace

cephtool::Kind kind_named(const std::string& name) {
    for (const cephtool::Kind kind : cephtool::all_kinds)
        if (name == cephtool::name_of(kind)) return kind;
    throw bad_argument(cephtool::in_quotes(name) + " is no kind of case",
                       "It is \"lateral\", \"frontal\" or \"model\".");
}

std::optional<cephtool::Sex> sex_named(const std::optional<std::string>& name) {
    if (!name) return {};
    if (*name == "male" || *name == "m") return cephtool::Sex::male;
    if (*name == "female" || *name == "f") return cephtool::Sex::female;
    throw bad_argument(cephtool::in_quotes(*name) + " is no sex", "It is \"male\" or \"female\".");
}

std::string shown_text(const cephtool::Error& error) {
    std::string shown = cephtool::shown(error);
    constexpr std::string_view program = "cephtool: ";
    if (shown.starts_with(program)) shown.erase(0, program.size());
    while (shown.ends_with('\n')) shown.pop_back();
    return shown;
}

std::string path_text(const py::object& path) {
    return py::str(py::module_::import("os").attr("fspath")(path));
}

}  // namespace python

PYBIND11_MODULE(_engine, module) {
    pybind11::register_exception_translator(python::translate);
    module.attr("version") = CEPHTOOL_VERSION;
    module.def("set_program_folder", [](const pybind11::object& folder) {
        cephtool::set_program_folder(cephtool::path_from_utf8(python::path_text(folder)));
    });
    python::add_cases(module);
    python::add_errors(module);
    python::add_analyses(module);
    python::add_arrays(module);
    python::add_facts(module);
    python::add_study(module);
}
