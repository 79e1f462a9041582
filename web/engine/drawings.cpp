#include "web/engine/drawings.h"

#include <algorithm>
#include <cstdlib>

#include "base/wording.h"
#include "report/report_document.h"
#include "report/style.h"
#include "report/tracing_file.h"
#include "results/growth_findings.h"
#include "web/engine/fault.h"
#include "web/engine/folders.h"

namespace engine {
namespace {

using cephtool::Case;
using cephtool::Error;
using cephtool::ExitCode;
using cephtool::Tracing;
using engine::json_of;

Fault no_scale_for(const char* what) {
    return {"no_scale", std::string(what) + " is in millimetres, and the case has no scale",
            "Calibrate the film first."};
}

const cephtool::OutlineTemplate& face_for(const Case& record, const TracingWish& wish) {
    static const cephtool::OutlineTemplate none;
    const bool has_face = wish.outlines != cephtool::OutlineSource::none && record.kind != cephtool::Kind::model;
    return has_face ? average_outlines(record.kind) : none;
}

cephtool::DisplayMode mode_for(const Case& record, const TracingWish& wish) {
    if (wish.no_mode) return {};
    return wish.mode ? mode_numbered(*wish.mode) : cephtool::chosen_mode(folder_numbered(wish.folder), record.kind, "");
}

Tracing tracing_of(Case record, const TracingWish& wish) {
    const cephtool::DisplayMode mode = mode_for(record, wish);
    const bool has_scale = record.mm_per_pixel.has_value();
    if (!has_scale) record.mm_per_pixel = 1;
    Tracing tracing =
        cephtool::tracing_of(record, mode, analyses_of(wish.folder), face_for(record, wish), wish.outlines);
    if (!has_scale) tracing.values.clear();
    return tracing;
}

Json json_of(const std::vector<cephtool::Landmark>& landmarks) {
    Json list = Json::array();
    for (const cephtool::Landmark& landmark : landmarks)
        list.push_back(engine::json_of(landmark.name, landmark.position));
    return list;
}

Json json_of(const cephtool::Outline& outline, const cephtool::OutlineStyle& style) {
    static constexpr const char* tissues[] = {"hard", "soft", "tooth"};
    Json points = Json::array();
    for (const cephtool::Position& point : outline.points) points.push_back(engine::json_of(point));
    return {{"name", outline.name},
            {"tissue", tissues[static_cast<std::size_t>(style.tissue)]},
            {"fine", style.fine},
            {"dotted", style.dotted},
            {"closed", outline.closed},
            {"points", points}};
}

Json json_of(const Tracing& tracing) {
    Json outlines = Json::array(), lines = Json::array(), values = Json::array();
    for (const cephtool::FittedCurve& curve : tracing.outlines) outlines.push_back(json_of(curve.outline, curve.style));
    for (const cephtool::TracingLine& line : tracing.lines)
        lines.push_back({{"name", line.name},
                         {"from", engine::json_of(line.from)},
                         {"to", engine::json_of(line.to)},
                         {"colour", line.colour},
                         {"bold", line.bold}});
    for (const cephtool::TracingValue& value : tracing.values)
        values.push_back({{"text", value.text},
                          {"at", engine::json_of(value.corner)},
                          {"colour", value.colour},
                          {"sizePt", value.size_pt}});
    return {{"outlines", outlines},
            {"lines", lines},
            {"landmarks", json_of(tracing.landmarks)},
            {"values", values},
            {"notes", tracing.notes}};
}

// The drawing's first width and height are its own, in mm.
double length_mm(const std::string& svg, std::string_view attribute) {
    const std::size_t at = svg.find(attribute);
    return at == std::string::npos ? 0 : std::atof(svg.c_str() + at + attribute.size());
}

Json drawing(const std::string& svg) {
    return {{"svg", svg}, {"widthMm", length_mm(svg, " width=\"")}, {"heightMm", length_mm(svg, " height=\"")}};
}

std::vector<cephtool::FilmResults> measured_films(std::vector<FilmToReport> films,
                                                  const std::vector<const cephtool::Analysis*>& analyses) {
    if (films.empty() || films.size() > cephtool::most_times)
        throw Error(ExitCode::bad_input, "a report is of one to three films");
    std::vector<cephtool::FilmResults> results;
    for (FilmToReport& film : films) {
        if (!film.record.mm_per_pixel) throw no_scale_for("a report");
        if (film.record.kind != films.front().record.kind)
            throw Fault("kinds", "the films are not of one kind", "Compare cases of one kind.");
        cephtool::FilmResults& result = results.emplace_back();
        result.result = cephtool::measured(std::move(film.record), analyses, {}, false);
        result.growth = cephtool::growth_findings(result.record(), folder_numbered(shipped_folder));
        result.tracing = tracing_of(result.record(), {});
        result.film = std::move(film.film);
    }
    if (std::ranges::all_of(results, [](const auto& film) { return film.record().film.has_value(); }))
        std::stable_sort(results.begin(), results.end(),
                         [](const auto& a, const auto& b) { return *a.record().film < *b.record().film; });
    return results;
}

}  // namespace

Json tracing_points(const Case& record, const TracingWish& wish) {
    return json_of(tracing_of(record, wish));
}

Json superimposed_points(const Case& record, const Case& earlier, const cephtool::Registration& registration,
                         const TracingWish& wish) {
    if (!record.mm_per_pixel || !earlier.mm_per_pixel) throw no_scale_for("a superimposition");
    for (const Case* each : {&record, &earlier}) {
        const std::vector<std::string> missing = cephtool::missing_for(registration, *each);
        if (missing.empty()) continue;
        const std::string both = cephtool::joined(missing, " and ");
        throw each == &record ? Fault("lacks", "this film lacks " + both, {}, missing)
                              : Fault("earlier_lacks", "the earlier film lacks " + both, {}, missing);
    }
    const auto map = cephtool::superimposed(registration, record, earlier);
    if (!map) throw Fault("line_has_no_length", "the line to register on has no length");
    return json_of(cephtool::moved(tracing_of(earlier, wish), *map));
}

Json tracing_drawing(const Case& record, const TracingWish& wish, const std::optional<cephtool::Film>& film,
                     bool dark) {
    if (!record.mm_per_pixel) throw no_scale_for("a drawn tracing");
    const Tracing tracing = tracing_of(record, wish);
    std::optional<cephtool::FilmSize> size;
    if (film) size = {film->picture.width, film->picture.height};
    const cephtool::Page page = cephtool::page_for(tracing, size);
    const cephtool::TracingPaper paper{page, dark ? cephtool::film_style() : cephtool::paper_style(),
                                       film ? &*film : nullptr};
    std::vector<std::string> notes;
    return drawing(cephtool::tracing_file(cephtool::FileFormat::svg, tracing, paper, notes));
}

Json report_drawings(std::vector<FilmToReport> films, const std::vector<const cephtool::Analysis*>& analyses,
                     const cephtool::Texts& texts) {
    Json pages = Json::array();
    for (const std::string& page : cephtool::report_svg(measured_films(std::move(films), analyses), texts))
        pages.push_back(drawing(page));
    return pages;
}

Json chart_drawing(std::vector<FilmToReport> films, const std::vector<const cephtool::Analysis*>& analyses,
                   const cephtool::Texts& texts) {
    return drawing(cephtool::chart_file(cephtool::FileFormat::svg, measured_films(std::move(films), analyses), texts));
}

const cephtool::OutlineTemplate& average_outlines(cephtool::Kind kind) {
    static const cephtool::OutlineTemplate faces[] = {cephtool::shipped_template(cephtool::Kind::lateral),
                                                      cephtool::shipped_template(cephtool::Kind::frontal)};
    return faces[kind == cephtool::Kind::frontal];
}

Json average_face(cephtool::Kind kind) {
    if (kind == cephtool::Kind::model) return nullptr;
    const cephtool::OutlineTemplate& face = average_outlines(kind);
    Json outlines = Json::array();
    for (const cephtool::TemplateCurve& curve : face.curves) outlines.push_back(json_of(curve.outline, curve.style));
    return {{"mmPerPixel", face.mm_per_pixel}, {"landmarks", json_of(face.landmarks)}, {"outlines", outlines}};
}

}  // namespace engine
