#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <memory>

#include "base/path.h"
#include "base/wording.h"
#include "cases/case_builder.h"
#include "cases/case_format.h"
#include "cases/vertebrae.h"
#include "host/batch/case_stream.h"
#include "host/film_reading.h"
#include "python/engine/engine.h"
#include "report/tracing_file.h"
#include "tracing/japanese_legend.h"
#include "tracing/landmark_finder.h"
#include "tracing/measures.h"

namespace python {
namespace {

using cephtool::Case;
using cephtool::Error;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

struct Wishes {
    cephtool::CaseOptions options;

    Wishes(const std::optional<std::string>& sex, std::optional<double> mm_per_pixel, bool mirror, bool flip_y,
           std::vector<std::string> landmarks, std::optional<double> image_height, std::string image) {
        if (mm_per_pixel && !cephtool::is_scale(*mm_per_pixel))
            throw bad_argument("a pixel is 0.000001 to 1000000 mm wide, not " + std::to_string(*mm_per_pixel));
        options.sex = sex_named(sex);
        options.mm_per_pixel = mm_per_pixel;
        options.mirror = mirror;
        options.flip_y = flip_y;
        options.landmarks = std::move(landmarks);
        options.image_height = image_height;
        options.image = std::move(image);
        options.film_facts = cephtool::film_reader(options.film_scale, {});
    }
};

struct ReadCases {
    std::vector<std::shared_ptr<Case>> cases;
    std::vector<Error> failures;
    std::vector<std::string> notes;  // of the file as a whole
};

ReadCases cases_in(const std::string& path, const Wishes& wishes, bool stop_at_failure) {
    if (path == "-") throw bad_argument("standard input is not read", "Give a file or a folder.");
    ReadCases all;
    cephtool::CaseStream stream({path}, std::cin, [](const std::string&) { return false; });
    cephtool::CaseReader reader(wishes.options);
    cephtool::CaseText text;
    while (stream.next(text)) {
        try {
            all.cases.push_back(std::make_shared<Case>(reader.read(text)));
        } catch (const Error& error) {
            if (stop_at_failure) throw;
            all.failures.push_back(error);
        }
        for (std::string& note : stream.take_notes()) all.notes.push_back(std::move(note));
    }
    return all;
}

py::tuple read(const py::object& path, const Wishes& wishes, bool stop_at_failure) {
    const std::string name = path_text(path);
    ReadCases all;
    {
        const py::gil_scoped_release others_run;
        all = cases_in(name, wishes, stop_at_failure);
    }
    py::list failures;
    for (const Error& failure : all.failures) failures.append(shown_text(failure));
    return py::make_tuple(all.cases, failures, all.notes);
}

std::shared_ptr<Case> case_from(const std::string& name, const std::string& text, const Wishes& wishes) {
    return std::make_shared<Case>(cephtool::read_case(cephtool::checked_text({name, text}), wishes.options));
}

const cephtool::Landmark* placed(const Case& record, const std::string& name) {
    for (const auto* list : {&record.landmarks, &record.user, &record.vertebrae})
        for (const cephtool::Landmark& landmark : *list)
            if (landmark.name == name) return &landmark;
    return nullptr;
}

py::array_t<double> points(const Case& record, const std::vector<std::string>& names) {
    std::vector<double> coordinates;
    std::optional<cephtool::LandmarkFinder> constructed;
    for (const std::string& name : names) {
        std::optional<cephtool::Position> at;
        if (const cephtool::Landmark* landmark = placed(record, name)) {
            at = landmark->position;
        } else if (!record.virtuals.empty()) {
            if (!constructed) constructed.emplace(record);
            at = (*constructed)(name);
        }
        coordinates.push_back(at ? at->x : nan);
        coordinates.push_back(at ? at->y : nan);
    }
    return array_of(std::move(coordinates), {static_cast<py::ssize_t>(names.size()), 2});
}

py::list remarks(const Case& record) {
    py::list all;
    for (const cephtool::Remark& remark : record.remarks)
        all.append(py::make_tuple(remark.code, cephtool::in_english(remark)));
    return all;
}

py::tuple written(const Case& record, const std::string& name) {
    const cephtool::CaseFormat* format = cephtool::format_by_name(name);
    if (!format) format = cephtool::format_by_extension(name);
    if (!format) {
        std::vector<std::string> names;
        for (const cephtool::CaseFormat& each : cephtool::case_formats()) names.push_back(each.name);
        throw bad_argument(cephtool::in_quotes(name) + " is no case format and ends as none does",
                           "Formats are " + cephtool::joined(names, ", ") + ".");
    }
    return py::make_tuple(format->write(record, {}), cephtool::lost_in(*format, record));
}

struct TracingWish {
    std::string mode, outlines, style, language, format;
    std::vector<std::string> measures;
    bool actual_size;
};

template <class Value>
Value one_of(const std::string& what, const std::string& name,
             std::initializer_list<std::pair<const char*, Value>> choices) {
    std::vector<std::string> names;
    for (const auto& [choice, value] : choices) {
        if (name == choice) return value;
        names.push_back(cephtool::in_quotes(choice));
    }
    throw bad_argument(cephtool::in_quotes(name) + " is no " + what,
                       "It is one of " + cephtool::joined(names, ", ") + ".");
}

std::string tracing_bytes(const Case& record, const cephtool::AnalysisFolder& folder, const TracingWish& wish,
                          std::vector<std::string>& notes) {
    using cephtool::OutlineSource;
    const auto outlines = one_of<OutlineSource>(
        "source of outlines", wish.outlines,
        {{"case", OutlineSource::own_or_fitted}, {"fitted", OutlineSource::fitted}, {"none", OutlineSource::none}});
    const auto format = one_of<cephtool::FileFormat>(
        "format of a tracing", wish.format,
        {{"svg", cephtool::FileFormat::svg}, {"pdf", cephtool::FileFormat::pdf}, {"png", cephtool::FileFormat::png}});
    const bool dark = one_of<bool>("style of a tracing", wish.style, {{"paper", false}, {"film", true}});
    const bool japanese = one_of<bool>("language", wish.language, {{"en", false}, {"ja", true}});
    const cephtool::OutlineTemplate face =
        outlines == OutlineSource::none ? cephtool::OutlineTemplate{} : cephtool::shipped_template(record.kind);
    const std::vector<cephtool::Analysis> analyses = cephtool::listed_analyses(folder);
    cephtool::Tracing tracing =
        cephtool::tracing_of(record, cephtool::chosen_mode(folder, record.kind, wish.mode), analyses, face, outlines);
    for (const std::string& name : wish.measures) cephtool::add_measure(tracing, record, analyses, name);
    notes = tracing.notes;
    if (japanese) cephtool::put_legend_into_japanese(tracing, record);
    std::optional<cephtool::Page> page =
        wish.actual_size ? cephtool::sheet_for(tracing, {}) : cephtool::page_for(tracing, {});
    if (!page)
        throw bad_argument("at true size the tracing is larger than a sheet of A3", "Check the scale of the case.");
    constexpr double longest_side_px = 1600;  // of a PNG picture
    const cephtool::TracingPaper paper{*page, dark ? cephtool::film_style() : cephtool::paper_style(), nullptr,
                                       longest_side_px / std::max(page->width_mm, page->height_mm),
                                       wish.actual_size ? cephtool::long_ruler() : cephtool::short_ruler()};
    return cephtool::tracing_file(format, tracing, paper, notes);
}

py::tuple tracing(const Case& record, const cephtool::AnalysisFolder& folder, const TracingWish& wish) {
    std::string bytes;
    std::vector<std::string> notes;
    {
        const py::gil_scoped_release others_run;
        bytes = tracing_bytes(record, folder, wish, notes);
    }
    return py::make_tuple(py::bytes(bytes), notes);
}

}  // namespace

void add_cases(py::module_& module) {
    py::class_<Wishes>(module, "CaseOptions")
        .def(py::init<const std::optional<std::string>&, std::optional<double>, bool, bool, std::vector<std::string>,
                      std::optional<double>, std::string>(),
             py::arg("sex"), py::arg("mm_per_pixel"), py::arg("mirror"), py::arg("flip_y"), py::arg("landmarks"),
             py::arg("image_height"), py::arg("image"));
    py::class_<Case, std::shared_ptr<Case>>(module, "Case")
        .def_static("from_text", case_from, py::arg("name"), py::arg("text"), py::arg("options"))
        .def_readonly("file", &Case::file)
        .def_property_readonly("kind", [](const Case& record) { return cephtool::name_of(record.kind); })
        .def_readonly("notes", &Case::notes)
        .def_property_readonly("remarks", remarks)
        .def("json", [](const Case& record) { return cephtool::to_json(record); })
        .def("points", points, py::arg("names"))
        .def("written", written, py::arg("format"));
    py::class_<TracingWish>(module, "TracingOptions")
        .def(
            py::init<std::string, std::string, std::string, std::string, std::string, std::vector<std::string>, bool>(),
            py::arg("mode"), py::arg("outlines"), py::arg("style"), py::arg("language"), py::arg("format"),
            py::arg("measures"), py::arg("actual_size"));
    module.def("read", read, py::arg("path"), py::arg("options"), py::arg("stop_at_failure"));
    module.def("tracing", tracing, py::arg("record"), py::arg("folder"), py::arg("options"));
    module.def(
        "landmark_names", [](const std::string& kind) { return cephtool::landmark_names(kind_named(kind)); },
        py::arg("kind"));
    module.def("vertebra_point_names", cephtool::vertebra_point_names);
}

}  // namespace python
