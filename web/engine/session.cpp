#include "web/engine/session.h"

#include <CodePage.h>
#include <NumberTexts.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "base/wording.h"
#include "cases/case_builder.h"
#include "cases/case_record.h"
#include "cases/mirror.h"
#include "cases/vertebrae.h"
#include "results/names.h"
#include "tracing/landmark_finder.h"
#include "web/engine/drawings.h"
#include "web/engine/fault.h"
#include "web/engine/folders.h"

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

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
// What does not change from one of these scales to the other is the same at any scale. Powers of two: angles and ratios
// keep their bits.
constexpr double tiny_scale = 0x1p-17, huge_scale = 0x1p17;

constexpr int male = 1, female = 2;

std::string shown(const CString& text) {
    return cephtool::printable(Utf8FromCodePage932(text));
}

// Of a row that was measured at two scales.
void keep_what_needs_no_scale(ResultNumbers& found, const ResultNumbers& at_other_scale) {
    for (const auto norm : {&ResultNumbers::mean, &ResultNumbers::sd})
        if (found.*norm != at_other_scale.*norm) found.*norm = found.deviation = std::nullopt;
    if (found.state == at_other_scale.state && found.value == at_other_scale.value && found.text == at_other_scale.text)
        return;
    found.state = no_scale;
    found.value = found.deviation = std::nullopt;
}

std::vector<Landmark>* list_with(Case& record, const std::string& name) {
    for (auto* list : {&record.landmarks, &record.vertebrae, &record.user})
        if (std::ranges::find(*list, name, &Landmark::name) != list->end()) return list;
    return nullptr;
}

bool holds(const std::vector<std::string>& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
}

// Places it in a case of its own, which has the checks.
Case checked_landmark(cephtool::Kind kind, const std::string& name, Position at) {
    const cephtool::Source source{name, {}};
    cephtool::CaseBuilder builder(source);
    builder.kind(kind);
    for (const double coordinate : {at.x, at.y})
        if (!(std::abs(coordinate) <= cephtool::largest_coordinate))
            throw Fault("out_of_range", "the coordinate of " + cephtool::in_quotes(name) + " is out of range", {},
                        {name});
    if (holds(cephtool::landmark_names(kind), name)) {
        builder.landmark(name, at, 0);
    } else if (kind == cephtool::Kind::lateral && holds(cephtool::vertebra_point_names(), name)) {
        builder.vertebra_point(name, at, 0);
    } else {
        builder.user_landmark(name, at, 0);
    }
    return builder.finished();
}

Remark no_scale_remark() {
    return {"no_scale", "Lengths are left out, since the film has no scale."};
}

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

Session::Session(Case record) : record_(std::move(record)) {}

void Session::set_record(Case record) {
    if (record.kind != record_.kind)
        throw Error(ExitCode::bad_input, std::string("this is a ") + cephtool::name_of(record.kind) +
                                             " case, and the session is for a " + cephtool::name_of(record_.kind) +
                                             " one");
    record_ = std::move(record);
    bands_.clear();
    changed();
}

void Session::place(const std::string& name, Position at) {
    Case checked = checked_landmark(record_.kind, name, at);
    if (checked.landmarks.empty() && checked.vertebrae.empty() && checked.user.empty())
        throw Fault("at_origin", cephtool::in_quotes(name) + " at (0, 0) counts as not placed",
                    "Place it a pixel beside.", {name});
    if (std::vector<Landmark>* list = list_with(record_, name)) {
        std::ranges::find(*list, name, &Landmark::name)->position = at;
    } else {
        if (!checked.user.empty() && record_.user.size() >= USER_POINT_MAX)
            throw Fault("too_many_own", "there are 100 landmarks of your own already");
        const auto append = [](std::vector<Landmark>& to, const std::vector<Landmark>& from) {
            to.insert(to.end(), from.begin(), from.end());
        };
        append(record_.landmarks, checked.landmarks);
        append(record_.vertebrae, checked.vertebrae);
        append(record_.user, checked.user);
    }
    changed();
}

void Session::remove(const std::string& name) {
    if (std::vector<Landmark>* list = list_with(record_, name)) {
        std::erase_if(*list, [&](const Landmark& landmark) { return landmark.name == name; });
        changed();
    }
}

void Session::set_scale(std::optional<double> mm_per_pixel) {
    if (mm_per_pixel && !cephtool::is_scale(*mm_per_pixel))
        throw Fault("scale_range", "a pixel is 0.000001 to 1000000 mm wide");
    record_.mm_per_pixel = mm_per_pixel;
    changed();
}

void Session::choose(std::vector<const Analysis*> analyses) {
    for (const Analysis* analysis : analyses)
        if (cephtool::case_kind(*analysis) != record_.kind)
            throw Error(ExitCode::bad_input, cephtool::in_quotes(cephtool::title_of(*analysis)) + " is for a " +
                                                 cephtool::kind_name(*analysis) + " case");
    chosen_ = std::move(analyses);
    rows_.clear();
    std::vector<const AnalysisSheet*> sheets;
    for (std::size_t i = 0; i < chosen_.size(); ++i) {
        sheets.push_back(&chosen_[i]->sheet());
        const int items = static_cast<int>(chosen_[i]->items().size());
        for (int item = 0; item < items; ++item) rows_.push_back({i, item});
    }
    measurers_.reset();
    sheets_.emplace(sheets);
    measurers_.emplace(*sheets_);
    bands_.clear();
    changed();
}

void Session::find_bands() {
    if (bands_.size() == chosen_.size()) return;
    for (const Analysis* analysis : chosen_) bands_.push_back(cephtool::norm_band(*analysis, record_, {}));
}

// As the library's result list makes its rows.
void Session::measure_at(double mm_per_pixel, std::vector<ResultNumbers>& found) {
    found.assign(row_count(), {});
    if (rows_.empty()) return;
    const auto own_scale = std::exchange(record_.mm_per_pixel, mm_per_pixel);
    const tool::Subject subject = cephtool::subject_of(record_);
    record_.mm_per_pixel = own_scale;
    auto record = tool::SubjectRecord::of(static_cast<tool::Kind>(record_.kind), subject);
    if (!record) throw Error(ExitCode::bad_input, record.reason());
    subject_ = *std::move(record);
    const SheetSubject fields = subject_->subject(tool::Sex::male, 0);
    const int sex = record_.sex ? static_cast<int>(*record_.sex) : male;
    measurers_->his.Measure(fields);
    if (!record_.sex) measurers_->hers.Measure(fields);
    for (std::size_t row = 0; row < row_count(); ++row) {
        const tool::Item& item = item_of(row);
        if (item.heading) found[row].state = ResultState::heading;
        if (item.formula.empty()) {
            if (!item.heading) found[row].state = ResultState::no_formula;
            continue;
        }
        const int sheet = static_cast<int>(rows_[row].analysis), band = bands_[rows_[row].analysis].code;
        found[row] = ResultList::Numbers(measurers_->his, sheet, rows_[row].item, sex, band);
        if (record_.sex) continue;
        const ResultNumbers hers = ResultList::Numbers(measurers_->hers, sheet, rows_[row].item, female, band);
        norms_differ_ = norms_differ_ || !found[row].HasSameNorms(hers);
        found[row] = ResultList::Common(found[row], hers);
    }
}

const Numbers& Session::measure() {
    if (is_measured_) return numbers_;
    find_bands();
    norms_differ_ = false;
    measure_at(record_.mm_per_pixel.value_or(tiny_scale), found_);
    if (!record_.mm_per_pixel) {
        measure_at(huge_scale, at_other_scale_);
        for (std::size_t row = 0; row < row_count(); ++row) keep_what_needs_no_scale(found_[row], at_other_scale_[row]);
    }
    const auto column = [&](std::vector<double>& numbers, std::optional<double> ResultNumbers::*which) {
        numbers.clear();
        for (const ResultNumbers& found : found_) numbers.push_back((found.*which).value_or(nan));
    };
    column(numbers_.value, &ResultNumbers::value);
    column(numbers_.mean, &ResultNumbers::mean);
    column(numbers_.sd, &ResultNumbers::sd);
    column(numbers_.deviation, &ResultNumbers::deviation);
    numbers_.state.clear();
    for (const ResultNumbers& found : found_) numbers_.state.push_back(static_cast<std::uint8_t>(found.state));
    is_measured_ = true;
    return numbers_;
}

Case Session::scaled_record(double mm_per_pixel) const {
    Case record = record_;
    if (!record.mm_per_pixel) record.mm_per_pixel = mm_per_pixel;
    return record;
}

std::vector<std::string> Session::missing(std::size_t row, SheetPart part) {
    const int sheet = static_cast<int>(rows_[row].analysis), item = rows_[row].item;
    const int band = bands_[rows_[row].analysis].code, sex = record_.sex ? static_cast<int>(*record_.sex) : male;
    CStringArray names = measurers_->his.Missing(sheet, item, part, sex, band);
    if (names.IsEmpty() && !record_.sex && part == SheetPart::value)
        names = measurers_->hers.Missing(sheet, item, part, female, band);
    std::vector<std::string> all;
    for (INT_PTR i = 0; i < names.GetSize(); ++i) all.push_back(shown(names.GetAt(i)));
    return all;
}

std::string Session::verdict(std::size_t row, const CString& text, const cephtool::Texts& texts) const {
    const std::string whole = shown(text);
    const std::string& japanese = chosen_[rows_[row].analysis]->japanese(whole);
    return texts.language() == cephtool::Language::english ? whole : texts.chosen(texts.part(whole), japanese);
}

Json Session::texts(const std::vector<int>& wanted, const cephtool::Texts& texts) {
    measure();
    Json list = Json::array();
    const auto add = [&](std::size_t row) {
        const tool::Item& item = item_of(row);
        const ResultNumbers& found = found_[row];
        tool::NumberTexts shown_texts = tool::number_texts(found, !item.unit.empty(), item.shows_norm);
        if (found.state == ResultState::text) shown_texts.value = verdict(row, found.text, texts);
        if (bands_[rows_[row].analysis].in_doubt)
            for (std::string* norm : {&shown_texts.mean, &shown_texts.sd})
                if (!norm->empty()) *norm = "(" + *norm + ")";
        if (!item.unverified.empty() && !shown_texts.mean.empty()) shown_texts.mean += cephtool::unverified_mark;
        std::vector<std::string> norm_missing;
        if (!item.formula.empty() && !found.norm_needs_band) {
            norm_missing = missing(row, SheetPart::mean);
            for (std::string& name : missing(row, SheetPart::sd))
                if (!holds(norm_missing, name)) norm_missing.push_back(std::move(name));
        }
        const std::string degenerate[] = {shown(found.degenerate[0]), shown(found.degenerate[1])};
        const Remark reason =
            found.state == no_scale ? Remark{"no_scale", "no scale"} : cephtool::reason_of(found.state, degenerate);
        list.push_back({{"row", row},
                        {"value", shown_texts.value},
                        {"mean", shown_texts.mean},
                        {"sd", shown_texts.sd},
                        {"deviation", shown_texts.deviation},
                        {"stars", shown_texts.stars},
                        {"missing", found.state == ResultState::missing ? missing(row, SheetPart::value)
                                                                        : std::vector<std::string>()},
                        {"normMissing", norm_missing},
                        {"reason", reason.text.empty() ? std::string() : texts(reason)}});
    };
    if (wanted.empty())
        for (std::size_t row = 0; row < row_count(); ++row) add(row);
    for (const int row : wanted)
        if (row >= 0 && static_cast<std::size_t>(row) < row_count()) add(static_cast<std::size_t>(row));
    return list;
}

Json Session::errors(const std::vector<int>& wanted, const cephtool::Texts& texts) const {
    Json told = {{"remarks", Json::array()}, {"rows", Json::array()}};
    if (!record_.mm_per_pixel || chosen_.empty()) return told;
    const tool::LandmarkErrors& of_landmarks = landmark_errors_of(*chosen_.front());
    Case record = record_;
    record.outlines.clear();
    record.remarks.clear();
    std::optional<cephtool::CaseResult> result;  // of the analysis that was asked for last
    std::size_t measured_analysis = 0;
    std::vector<Remark> remarks;
    const auto add = [&](std::size_t row) {
        const auto [analysis, item] = rows_[row];
        if (!result || measured_analysis != analysis) {
            const Analysis* const one[] = {chosen_[analysis]};
            result = cephtool::measured(record, one, {}, false, &of_landmarks);
            measured_analysis = analysis;
            for (const Remark& remark : result->record.remarks)
                if (remark.code.starts_with("errors") && std::ranges::find(remarks, remark) == remarks.end())
                    remarks.push_back(remark);
        }
        const cephtool::Measurement& found = result->analyses.front().items[static_cast<std::size_t>(item)];
        if (!found.error) return;
        const tool::ValueError& error = *found.error;
        Json words = Json::array();
        for (const Remark& remark : found.error_remarks()) words.push_back(texts(remark));
        const bool is_known = error.state == ErrorState::known;
        told["rows"].push_back({{"row", row},
                                {"error", is_known ? Json(error.value) : Json()},
                                {"text", error.text},
                                {"deviation", is_known ? json_of(error.deviation) : Json()},
                                {"mostly", error.mostly},
                                {"assumed", error.assumed},
                                {"isDoubtful", found.stars_with_error() != found.stars},
                                {"words", words}});
    };
    if (wanted.empty())
        for (std::size_t row = 0; row < row_count(); ++row) add(row);
    for (const int row : wanted)
        if (row >= 0 && static_cast<std::size_t>(row) < row_count()) add(static_cast<std::size_t>(row));
    for (const Remark& remark : remarks) told["remarks"].push_back(texts(remark));
    return told;
}

Json Session::outliers(const cephtool::Texts& texts) {
    Json list = Json::array();
    if (record_.kind == cephtool::Kind::model) return list;  // of which there is no average face
    if (!outliers_) outliers_.emplace(average_outlines(record_.kind), record_.kind);
    for (const cephtool::LandmarkOutlier& outlier : (*outliers_)(record_))
        list.push_back({{"name", outlier.name},
                        {"mm", outlier.mm},
                        {"others", outlier.others},
                        {"message", texts(cephtool::remark_of(outlier))}});
    return list;
}

Json Session::remarks(const cephtool::Texts& texts) {
    Case record = record_;
    record.remarks.clear();
    std::vector<Remark> remarks = cephtool::turned_right(std::move(record), {}).remarks;
    if (!record_.mm_per_pixel) remarks.push_back(no_scale_remark());
    measure();
    if (norms_differ_) remarks.push_back(cephtool::norms_by_sex());
    return json_of(remarks, texts);
}

Json Session::norms(const cephtool::Texts& texts) {
    find_bands();
    Json list = Json::array();
    for (const cephtool::NormBand& band : bands_)
        list.push_back({{"words", cephtool::norms_in_words(band, texts)}, {"remarks", json_of(band.remarks, texts)}});
    return list;
}

Json Session::shapes(int row) const {
    Json list = Json::array();
    if (row < 0 || static_cast<std::size_t>(row) >= row_count()) return list;
    const auto [analysis, item] = rows_[static_cast<std::size_t>(row)];
    const auto all = tool::measure_all(*chosen_[analysis], cephtool::subject_of(scaled_record(1)));
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
