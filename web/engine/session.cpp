#include "web/engine/session.h"

#include <array>

#include "base/wording.h"
#include "cases/case_builder.h"
#include "cases/case_record.h"
#include "cases/mirror.h"
#include "results/names.h"
#include "tracing/landmark_finder.h"
#include "web/engine/drawings.h"
#include "web/engine/placing.h"
#include "web/engine/row_errors.h"

namespace engine {
namespace {

using cephtool::Analysis;
using cephtool::Case;
using cephtool::Error;
using cephtool::ExitCode;
using cephtool::Landmark;
using cephtool::Position;
using cephtool::Remark;
using engine::json_of;

Json json_of(const tool::MeasuredShape& shape) {
    static constexpr std::array names = {"length", "length_right", "length_down", "angle",     "line_angle", "middle",
                                         "foot",   "crossing",     "bisector",    "extension", "effective_a"};
    const auto point = [](tool::FilmPoint p) { return json_of(Position{p.x, p.y}); };
    Json points = Json::array(), segments = Json::array();
    for (const tool::FilmPoint p : shape.points) points.push_back(point(p));
    for (const tool::Segment& segment : tool::segments_of(shape))
        segments.push_back({{"from", point(segment.from)}, {"to", point(segment.to)}});
    return {{"kind", names[static_cast<std::size_t>(shape.kind)]}, {"points", points}, {"segments", segments}};
}

}  // namespace

Session::Session(Case record) : record_(std::move(record)) {
    choose({});
}

void Session::set_record(Case record) {
    if (record.kind != record_.kind)
        throw Error(ExitCode::bad_input, std::string("this is a ") + cephtool::name_of(record.kind) +
                                             " case, and the session is for a " + cephtool::name_of(record_.kind) +
                                             " one");
    record_ = std::move(record);
    rows_->changed_patient();
}

void Session::place(const std::string& name, Position at) {
    place_landmark(record_, name, at);
    rows_->changed();
}

void Session::remove(const std::string& name) {
    remove_landmark(record_, name);
    rows_->changed();
}

void Session::choose(std::vector<const Analysis*> analyses) {
    for (const Analysis* analysis : analyses)
        if (cephtool::case_kind(*analysis) != record_.kind)
            throw Error(ExitCode::bad_input, cephtool::in_quotes(cephtool::title_of(*analysis)) + " is for a " +
                                                 cephtool::kind_name(*analysis) + " case");
    rows_ = std::make_unique<MeasuredRows>(ChosenRows(std::move(analyses)));
}

const Numbers& Session::measure() {
    return rows_->measure(record_);
}

Json Session::texts(const std::vector<int>& rows, const cephtool::Texts& texts) {
    return rows_->texts(record_, rows, texts);
}

Json Session::errors(const std::vector<int>& rows, const cephtool::Texts& texts) const {
    return row_errors(record_, rows_->rows(), rows, texts);
}

Case Session::scaled_record(double mm_per_pixel) const {
    Case record = record_;
    if (!record.mm_per_pixel) record.mm_per_pixel = mm_per_pixel;
    return record;
}

Json Session::outliers(const cephtool::Texts& texts) {
    Json list = Json::array();
    if (record_.kind == cephtool::Kind::model) return list;  // of which there is no average face
    if (!outliers_) outliers_.emplace(average_outlines(record_.kind), record_.kind);
    for (const cephtool::LandmarkOutlier& outlier : (*outliers_)(record_))
        list.push_back({{"name", outlier.name},
                        {"mm", outlier.mm},
                        {"others", outlier.others},
                        {"text", texts(cephtool::remark_of(outlier))}});
    return list;
}

Json Session::remarks(const cephtool::Texts& texts) {
    Case record = record_;
    record.remarks.clear();
    std::vector<Remark> remarks = cephtool::turned_right(std::move(record), {}).remarks;
    if (!record_.mm_per_pixel) remarks.push_back({"no_scale", "Lengths are left out, since the film has no scale."});
    if (rows_->norms_differ_by_sex(record_)) remarks.push_back(cephtool::norms_by_sex());
    return json_of(remarks, texts);
}

Json Session::norms(const cephtool::Texts& texts) {
    Json list = Json::array();
    for (const cephtool::NormBand& band : rows_->bands(record_))
        list.push_back({{"words", cephtool::norms_in_words(band, texts)}, {"remarks", json_of(band.remarks, texts)}});
    return list;
}

Json Session::shapes(int row) const {
    Json list = Json::array();
    if (!rows_->rows().has(row)) return list;
    const auto [analysis, item] = rows_->rows()[static_cast<std::size_t>(row)];
    const auto all = tool::measure_all(*rows_->rows().analyses()[analysis], cephtool::subject_of(scaled_record(1)));
    if (!all) throw Error(ExitCode::bad_input, all.reason());
    for (const tool::MeasuredShape& shape : (*all).items[static_cast<std::size_t>(item)].shapes)
        list.push_back(json_of(shape));
    return list;
}

std::optional<Position> Session::construct(const std::string& expression) const {
    Case record = scaled_record(1);
    const cephtool::Source source{expression, {}};
    cephtool::CaseBuilder builder(source);
    builder.kind(record.kind);
    const std::string name = "constructed here";
    builder.virtual_landmark(name, expression, 0);
    record.virtuals.push_back({name, expression});
    return cephtool::LandmarkFinder(record)(name);
}

Json Session::constructed() const {
    const Case record = scaled_record(1);
    cephtool::LandmarkFinder find(record);
    Json list = Json::array();
    for (const cephtool::VirtualLandmark& landmark : record.virtuals)
        if (const auto at = find(landmark.name)) list.push_back(engine::json_of(landmark.name, *at));
    return list;
}

std::optional<Position> Session::suggest(const std::string& name) const {
    if (record_.kind == cephtool::Kind::model) return {};
    std::vector<Landmark> placed = record_.landmarks;
    for (const auto* others : {&record_.user, &record_.vertebrae})
        placed.insert(placed.end(), others->begin(), others->end());
    return cephtool::LandmarkSuggestion(average_outlines(record_.kind), placed)(name);
}

}  // namespace engine
