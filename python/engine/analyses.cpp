#include <CodePage.h>
#include <ComposedAnalysis.h>
#include <DefinitionCheck.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <sstream>

#include "base/path.h"
#include "base/wording.h"
#include "python/engine/engine.h"
#include "results/landmark_error_file.h"
#include "results/measurement.h"
#include "tracing/landmark_outliers.h"

namespace python {
namespace {

using cephtool::Analysis;
using cephtool::AnalysisFolder;
using cephtool::Case;
using cephtool::FolderPart;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

AnalysisFolder folder_at(const std::string& path) {
    const py::gil_scoped_release others_run;
    return cephtool::analysis_folder(path, {FolderPart::analyses, FolderPart::modes, FolderPart::bone_age});
}

// The first of this name, of a kind, or for a kind of case, where one is given.
Analysis analysis_named(const AnalysisFolder& folder, const std::string& name, const std::optional<std::string>& kind) {
    const std::vector<Analysis> listed = cephtool::listed_analyses(folder);
    for (const Analysis* found : cephtool::named(listed, name))
        if (!kind || *kind == cephtool::kind_name(*found) || *kind == cephtool::name_of(cephtool::case_kind(*found)))
            return *found;
    throw cephtool::unknown_analysis(listed, name);
}

Analysis analysis_in_file(const std::string& path, const std::string& kind, std::vector<std::string>& notes) {
    std::istringstream nothing;
    for (Analysis& analysis : cephtool::analyses_in_file(path, nothing, notes))
        if (cephtool::case_kind(analysis) == kind_named(kind)) return analysis;
    throw bad_argument(cephtool::in_quotes(path) + " can't be read as an analysis of " + kind + " cases");
}

CString in_code_page(const std::string& utf8) {
    CString text;
    if (utf8.find('\0') != std::string::npos || !CodePage932FromUtf8(utf8.c_str(), &text))
        throw bad_argument("the definition holds a character that code page 932 lacks",
                           "Names of landmarks and functions are written in Latin letters.");
    return text;
}

std::string utf8(const CString& text) {
    return cephtool::printable(Utf8FromCodePage932(text));
}

// Throws an Error for the first fault, whose line and column count from those given.
void check_definition(tool::Kind kind, const CString& text, const std::string& name, int lines_before,
                      int columns_before) {
    const CheckResult checked = DefinitionCheck::Text(CheckFamily::definition, static_cast<int>(kind), text,
                                                      static_cast<std::size_t>(text.GetLength()));
    for (const CheckFinding& finding : checked.findings) {
        if (finding.note) continue;
        cephtool::Error error = bad_argument(utf8(finding.message));
        error.file = name;
        error.line = std::max(0, finding.line - lines_before);
        error.column = std::max(1, finding.column - columns_before);
        throw error;
    }
}

Analysis analysis_of_text(const std::string& name, const std::string& text, const std::string& kind) {
    const auto engine_kind = static_cast<tool::Kind>(kind_named(kind));
    const CString definition = in_code_page(text);
    check_definition(engine_kind, definition, name, 0, 0);
    Analysis analysis = *Analysis::from_text(engine_kind, cephtool::path_from_utf8(name), definition.View());
    if (analysis.items().empty())
        throw bad_argument(name + " holds no item", "Below a line \"Calc:\", a line NAME=FORMULA is an item.");
    return analysis;
}

// An analysis of this one item.
Analysis formula(const std::string& text, const std::string& kind) {
    if (cephtool::has_control_character(text)) throw bad_argument("a formula is one line");
    const std::string before = "value=";
    const auto engine_kind = static_cast<tool::Kind>(kind_named(kind));
    const CString definition = in_code_page("Calc:\r\n" + before + text + "\r\n");
    check_definition(engine_kind, definition, "formula", 1, static_cast<int>(before.size()));
    Analysis analysis = *Analysis::from_text(engine_kind, "formula.txt", definition.View());
    if (analysis.items().size() != 1 || analysis.items()[0].formula.empty()) throw bad_argument("the formula is empty");
    return analysis;
}

// The definition of an analysis made of items of others: places of the analysis, and of its item.
std::string composed(const std::string& title, const std::vector<Analysis>& analyses,
                     const std::vector<std::pair<std::size_t, std::size_t>>& items) {
    std::vector<tool::ComposedItem> all;
    for (const auto& [analysis, item] : items) all.push_back({&analyses.at(analysis), item});
    const auto text = tool::compose(title, all);
    if (!text) throw bad_argument(text.reason());
    return Utf8FromCodePage932(CString(text->c_str()));
}

// Name and text; empty ones where the file does not say.
py::tuple population(const Analysis& analysis) {
    const std::optional<tool::Population>& whose = analysis.population();
    return whose ? py::make_tuple(cephtool::printable(whose->name), cephtool::printable(whose->text))
                 : py::make_tuple("", "");
}

py::list items(const Analysis& analysis) {
    py::list all;
    for (const tool::Item& item : analysis.items())
        all.append(py::make_tuple(cephtool::printable(item.name), item.unit, cephtool::printable(item.formula),
                                  item.heading, cephtool::printable(item.sign), cephtool::printable(item.japanese),
                                  cephtool::printable(item.unverified)));
    return all;
}

// A row for each item of each case, columns as cephtool.measure names them.
struct Rows {
    std::vector<std::int64_t> record, analysis, item;
    std::vector<double> value, mean, sd, deviation, error, deviation_error, share;
    std::vector<std::string> text, missing, reason, mostly, assumed, shown, error_text;
    struct Remark {
        std::size_t record;
        std::string analysis;  // "" of the case
        cephtool::Remark remark;
    };
    std::vector<Remark> remarks;

    void add(std::size_t of_record, std::size_t of_analysis, const cephtool::AnalysisResult& result) {
        for (const cephtool::Remark& remark : result.remarks())
            remarks.push_back({of_record, cephtool::short_name(*result.analysis), remark});
        for (std::size_t i = 0; i < result.items.size(); ++i) {
            const cephtool::Measurement& measured = result.items[i];
            if (measured.heading) continue;
            record.push_back(static_cast<std::int64_t>(of_record));
            analysis.push_back(static_cast<std::int64_t>(of_analysis));
            item.push_back(static_cast<std::int64_t>(i));
            value.push_back(measured.value.value_or(nan));
            mean.push_back(measured.mean.value_or(nan));
            sd.push_back(measured.sd.value_or(nan));
            deviation.push_back(measured.deviation.value_or(nan));
            text.push_back(measured.text);
            missing.push_back(cephtool::joined(measured.missing, " "));
            reason.push_back(cephtool::in_english(measured.reason));
            add_error(measured);
        }
    }

    void add_error(const cephtool::Measurement& measured) {
        const bool known = measured.error && measured.error->state == ErrorState::known;
        error.push_back(known ? measured.error->value : nan);
        deviation_error.push_back(known ? measured.error->deviation.value_or(nan) : nan);
        share.push_back(known && !measured.error->mostly.empty() ? measured.error->share : nan);
        mostly.push_back(known ? cephtool::printable(measured.error->mostly) : "");
        assumed.push_back(known ? cephtool::printable(cephtool::joined(measured.error->assumed, " ")) : "");
        shown.push_back(measured.value_with_error());
        std::vector<std::string> words;
        for (const cephtool::Remark& remark : measured.error_remarks()) words.push_back(cephtool::in_english(remark));
        error_text.push_back(cephtool::joined(words, "; "));
    }
};

// Read once. Throws an Error where it can't be.
const cephtool::OutlineTemplate& average_face(cephtool::Kind kind) {
    if (kind == cephtool::Kind::frontal) {
        static const cephtool::OutlineTemplate frontal = cephtool::shipped_template(kind);
        return frontal;
    }
    static const cephtool::OutlineTemplate lateral = cephtool::shipped_template(cephtool::Kind::lateral);
    return lateral;
}

// Measures cases one after the other, remarking on landmarks where nobody expects them.
class CaseMeasurer {
 public:
    CaseMeasurer(std::vector<cephtool::AnalysisFamily> families, std::optional<int> band,
                 const tool::LandmarkErrors* errors)
        : families_(std::move(families)), band_(band), errors_(errors) {}

    cephtool::CaseResult operator()(Case record) {
        if (record.kind != cephtool::Kind::model) remark_slips(record);  // of which there is no average face
        return cephtool::measured(std::move(record), families_, band_, false, errors_);
    }

 private:
    // Without the average face cases are measured all the same.
    void remark_slips(Case& record) {
        try {
            const cephtool::OutlineTemplate& face = average_face(record.kind);
            outliers_.try_emplace(record.kind, face, record.kind).first->second.remark(record);
        } catch (const cephtool::Error& error) {
            record.remarks.push_back({"", "landmarks are not looked at for slips: %1", {shown_text(error)}});
        }
    }

    const std::vector<cephtool::AnalysisFamily> families_;
    const std::optional<int> band_;
    const tool::LandmarkErrors* const errors_;
    std::map<cephtool::Kind, cephtool::LandmarkOutliers> outliers_;
};

// With `by_population` the analyses are those of a folder, and each case is measured by those for its population.
Rows rows_of(const std::vector<std::shared_ptr<Case>>& cases, const std::vector<Analysis>& analyses,
             std::optional<int> band, const tool::LandmarkErrors* errors, bool by_population) {
    std::vector<cephtool::AnalysisFamily> families;
    if (by_population)
        families = cephtool::families_of(analyses);
    else
        for (const Analysis& analysis : analyses) families.emplace_back(&analysis);
    CaseMeasurer measured(std::move(families), band, errors);
    Rows rows;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const std::size_t known_remarks = cases[i]->remarks.size();
        const cephtool::CaseResult result = measured(*cases[i]);
        for (const cephtool::AnalysisResult& each : result.analyses)
            rows.add(i, static_cast<std::size_t>(each.analysis - analyses.data()), each);
        for (std::size_t k = known_remarks; k < result.record.remarks.size(); ++k)
            rows.remarks.push_back({i, "", result.record.remarks[k]});
    }
    return rows;
}

py::tuple measure(const std::vector<std::shared_ptr<Case>>& cases, const std::vector<Analysis>& analyses,
                  std::optional<int> band, const tool::LandmarkErrors* errors, bool by_population) {
    Rows rows;
    {
        const py::gil_scoped_release others_run;
        rows = rows_of(cases, analyses, band, errors, by_population);
    }
    py::dict columns;
    const auto count = static_cast<py::ssize_t>(rows.value.size());
    columns["case"] = array_of(std::move(rows.record), {count});
    columns["analysis"] = array_of(std::move(rows.analysis), {count});
    columns["item"] = array_of(std::move(rows.item), {count});
    columns["value"] = array_of(std::move(rows.value), {count});
    columns["mean"] = array_of(std::move(rows.mean), {count});
    columns["sd"] = array_of(std::move(rows.sd), {count});
    columns["deviation"] = array_of(std::move(rows.deviation), {count});
    columns["text"] = rows.text;
    columns["missing"] = rows.missing;
    columns["reason"] = rows.reason;
    if (errors) {
        columns["error"] = array_of(std::move(rows.error), {count});
        columns["deviation_error"] = array_of(std::move(rows.deviation_error), {count});
        columns["mostly"] = rows.mostly;
        columns["share"] = array_of(std::move(rows.share), {count});
        columns["assumed"] = rows.assumed;
        columns["shown"] = rows.shown;
        columns["error_text"] = rows.error_text;
    }
    py::list remarks;
    for (const Rows::Remark& each : rows.remarks)
        remarks.append(py::make_tuple(each.record, each.analysis, each.remark.code, cephtool::in_english(each.remark)));
    return py::make_tuple(columns, remarks);
}

}  // namespace

void add_analyses(py::module_& module) {
    py::class_<Analysis>(module, "Analysis")
        .def_static("named", analysis_named, py::arg("folder"), py::arg("name"), py::arg("kind"))
        .def_static(
            "in_file",
            [](const py::object& path, const std::string& kind) {
                std::vector<std::string> notes;
                Analysis analysis = analysis_in_file(path_text(path), kind, notes);
                return py::make_tuple(std::move(analysis), notes);
            },
            py::arg("path"), py::arg("kind"))
        .def_static("of_text", analysis_of_text, py::arg("name"), py::arg("text"), py::arg("kind"))
        .def_static("composed", composed, py::arg("title"), py::arg("analyses"), py::arg("items"))
        .def_static("formula", formula, py::arg("text"), py::arg("kind"))
        .def_property_readonly("name", [](const Analysis& a) { return cephtool::short_name(a); })
        .def_property_readonly("title", [](const Analysis& a) { return cephtool::title_of(a); })
        .def_property_readonly("comment", [](const Analysis& a) { return cephtool::comment_of(a); })
        .def_property_readonly("file", [](const Analysis& a) { return cephtool::utf8_from_path(a.file()); })
        .def_property_readonly("kind", [](const Analysis& a) { return cephtool::kind_name(a); })
        .def_property_readonly("case_kind", [](const Analysis& a) { return cephtool::name_of(cephtool::case_kind(a)); })
        .def_property_readonly("population", population)
        .def_property_readonly("variant_of", [](const Analysis& a) { return cephtool::printable(a.variant_of()); })
        .def_property_readonly("landmarks", [](const Analysis& a) { return a.inputs().landmarks; })
        .def_property_readonly("items", items);
    py::class_<AnalysisFolder>(module, "Folder")
        .def(py::init(&folder_at), py::arg("path"))
        .def_property_readonly("path", [](const AnalysisFolder& f) { return cephtool::utf8_from_path(f.path()); })
        .def_property_readonly("problems",
                               [](const AnalysisFolder& folder) {
                                   std::vector<std::string> all;
                                   for (const FolderPart part : {FolderPart::analyses, FolderPart::modes})
                                       for (std::string& note : cephtool::problem_notes(folder, part))
                                           all.push_back(std::move(note));
                                   return all;
                               })
        .def_property_readonly("analyses", cephtool::listed_analyses)
        .def_property_readonly("landmark_errors", cephtool::landmark_errors_of)
        .def_property_readonly("modes", [](const AnalysisFolder& folder) {
            py::list all;
            for (const cephtool::KindOfMode& mode : cephtool::listed_modes(folder))
                all.append(py::make_tuple(cephtool::name_of(mode.kind), cephtool::short_name(*mode.mode),
                                          cephtool::title_of(*mode.mode)));
            return all;
        });
    module.def(
        "population_named", [](const std::string& text) { return tool::population_named(text).name; }, py::arg("text"));
    module.def("measure", measure, py::arg("cases"), py::arg("analyses"), py::arg("band"), py::arg("errors").none(true),
               py::arg("by_population"));
}

}  // namespace python
