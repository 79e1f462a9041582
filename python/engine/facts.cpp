#include <iostream>

#include "base/date_reader.h"
#include "base/eras.h"
#include "host/exif/picture.h"
#include "python/engine/engine.h"
#include "results/growth.h"
#include "results/growth_findings.h"

namespace python {
namespace {

using cephtool::Date;

py::object python_date(Date date) {
    return py::module_::import("datetime")
        .attr("date")(static_cast<int>(date.year()), unsigned{date.month()}, unsigned{date.day()});
}

// Of a datetime.date, or of a text as people write dates.
Date date_of(const py::object& date) {
    if (py::isinstance<py::str>(date)) return cephtool::read_date(date.cast<std::string>());
    return cephtool::read_date(py::str(date.attr("isoformat")()).cast<std::string>().substr(0, 10));
}

py::object era(const py::object& given) {
    const Date date = date_of(given);
    const auto found = cephtool::era_of(cephtool::required_eras(), date);
    if (!found) return py::none();
    return py::make_tuple(found->code, found->name, found->year, cephtool::code_text(*found),
                          cephtool::japanese_text(*found));
}

py::tuple age(const py::object& born, const py::object& on) {
    const Date birth = date_of(born), day = date_of(on);
    if (day < birth)
        throw bad_argument(cephtool::text_of(day) + " lies before birth (" + cephtool::text_of(birth) + ")",
                           "Check both dates.");
    const cephtool::Age found = cephtool::age_at(day, birth);
    return py::make_tuple(found.years, found.months, cephtool::years_at(day, birth));
}

py::tuple photograph(const py::object& path) {
    const std::string name = path_text(path);
    if (name == "-") throw bad_argument("standard input is not read", "Give a file.");
    cephtool::Picture picture;
    {
        const py::gil_scoped_release others_run;
        picture = cephtool::read_picture(name, std::cin);
    }
    if (picture.damage && !picture.tells_anything()) throw *picture.damage;
    py::dict facts;
    for (const cephtool::PictureFact& fact : picture.facts) {
        if (fact.number)
            facts[fact.key] = *fact.number;
        else if (!fact.text.empty())
            facts[fact.key] = fact.text;
    }
    py::list notes;
    if (!picture.note.empty()) notes.append(picture.file + ": " + picture.note);
    if (picture.damage) notes.append(shown_text(*picture.damage));
    return py::make_tuple(facts, py::bytes(picture.thumbnail), notes);
}

py::tuple finding_tuple(const cephtool::Finding& finding) {
    py::dict grounds;
    for (const cephtool::Ground& ground : finding.grounds) {
        if (ground.number)
            grounds[py::str(ground.name)] = *ground.number;
        else
            grounds[py::str(ground.name)] = ground.text;
    }
    return py::make_tuple(finding.what, finding.name, finding.stage, finding.years, grounds, finding.missing,
                          finding.reason);
}

py::list growth(const cephtool::Case& record, const cephtool::AnalysisFolder& folder) {
    py::list all;
    for (const cephtool::Finding& finding : cephtool::growth_findings(record, folder))
        all.append(finding_tuple(finding));
    return all;
}

}  // namespace

void add_facts(py::module_& module) {
    module.def(
        "date", [](const std::string& text) { return python_date(cephtool::read_date(text)); }, py::arg("text"));
    module.def("era", era, py::arg("date"));
    module.def("age", age, py::arg("born"), py::arg("on"));
    module.def("photograph", photograph, py::arg("path"));
    module.def("growth", growth, py::arg("record"), py::arg("folder"));
}

}  // namespace python
