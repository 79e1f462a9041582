#include "web/engine/session.h"

#include <ResultList.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "base/wording.h"
#include "cases/case_builder.h"
#include "cases/case_record.h"
#include "cases/mirror.h"
#include "cases/vertebrae.h"
#include "report/result_table.h"
#include "tracing/landmark_finder.h"

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

bool same_bits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
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
            throw Error(ExitCode::bad_input, "the coordinate of " + cephtool::in_quotes(name) + " is out of range");
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
        throw Error(ExitCode::bad_input, cephtool::in_quotes(name) + " at (0, 0) counts as not placed",
                    "Place it a pixel beside.");
    if (std::vector<Landmark>* list = list_with(record_, name)) {
        std::ranges::find(*list, name, &Landmark::name)->position = at;
    } else {
        if (!checked.user.empty() && record_.user.size() >= USER_POINT_MAX)
            throw Error(ExitCode::bad_input, "there are 100 landmarks of your own already");
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
        throw Error(ExitCode::bad_input, "a pixel is 0.000001 to 1000000 mm wide");
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
    for (const Analysis* analysis : chosen_) bands_.push_back(cephtool::norm_band(*analysis, record_, {}).code);
}

// As the library's result list makes its rows.
void Session::measure_at(double mm_per_pixel, Numbers& numbers, std::vector<std::string>& words) {
    constexpr int male = 1, female = 2;
    for (auto* column : {&numbers.value, &numbers.mean, &numbers.sd, &numbers.deviation})
        column->assign(row_count(), nan);
    numbers.state.assign(row_count(), static_cast<std::uint8_t>(ResultState::no_formula));
    words.assign(row_count(), {});
    if (rows_.empty()) return;
    const auto own_scale = std::exchange(record_.mm_per_pixel, mm_per_pixel);
    tool::Subject subject = cephtool::subject_of(record_);
    record_.mm_per_pixel = own_scale;
    auto record = tool::SubjectRecord::of(static_cast<tool::Kind>(record_.kind), subject);
    if (!record) throw Error(ExitCode::bad_input, record.reason());
    const SheetSubject fields = record->subject(tool::Sex::male, 0);
    const int sex = record_.sex ? static_cast<int>(*record_.sex) : male;
    measurers_->his.Measure(fields);
    if (!record_.sex) measurers_->hers.Measure(fields);
    for (std::size_t row = 0; row < row_count(); ++row) {
        const auto [analysis, item] = rows_[row];
        const tool::Item& definition = chosen_[analysis]->items()[static_cast<std::size_t>(item)];
        if (definition.heading) numbers.state[row] = static_cast<std::uint8_t>(ResultState::heading);
        if (definition.formula.empty()) continue;
        const int sheet = static_cast<int>(analysis), band = bands_[analysis];
        ResultNumbers found = ResultList::Numbers(measurers_->his, sheet, item, sex, band);
        if (!record_.sex)
            found = ResultList::Common(found, ResultList::Numbers(measurers_->hers, sheet, item, female, band));
        numbers.state[row] = static_cast<std::uint8_t>(found.state);
        numbers.value[row] = found.value.value_or(nan);
        numbers.mean[row] = found.mean.value_or(nan);
        numbers.sd[row] = found.sd.value_or(nan);
        numbers.deviation[row] = found.deviation.value_or(nan);
        words[row] = found.text;
    }
}

const Numbers& Session::measure() {
    if (is_measured_) return numbers_;
    find_bands();
    is_measured_ = true;
    if (record_.mm_per_pixel) {
        measure_at(*record_.mm_per_pixel, numbers_, words_);
        return numbers_;
    }
    measure_at(tiny_scale, numbers_, words_);
    measure_at(huge_scale, at_other_scale_, words_at_other_scale_);
    Numbers& one = numbers_;
    const Numbers& other = at_other_scale_;
    for (std::size_t row = 0; row < row_count(); ++row) {
        for (const auto column : {&Numbers::mean, &Numbers::sd})
            if (!same_bits((one.*column)[row], (other.*column)[row])) (one.*column)[row] = one.deviation[row] = nan;
        if (one.state[row] == other.state[row] && same_bits(one.value[row], other.value[row]) &&
            words_[row] == words_at_other_scale_[row])
            continue;
        one.state[row] = no_scale;
        one.value[row] = one.deviation[row] = nan;
    }
    return numbers_;
}

Case Session::scaled_record(double mm_per_pixel) const {
    Case record = record_;
    if (!record.mm_per_pixel) record.mm_per_pixel = mm_per_pixel;
    return record;
}

const cephtool::CaseResult& Session::result() {
    if (!result_) result_ = cephtool::measured(scaled_record(tiny_scale), chosen_, {}, false);
    return *result_;
}

Json Session::texts(const std::vector<int>& wanted, const cephtool::Texts& texts) {
    const cephtool::CaseResult& all = result();
    const Numbers& numbers = measure();
    Json list = Json::array();
    const auto add = [&](std::size_t row) {
        const auto [analysis, place] = rows_[row];
        const cephtool::Measurement& item = all.analyses[analysis].items[static_cast<std::size_t>(place)];
        const bool lacks_scale = numbers.state[row] == no_scale;
        const bool has_deviation = !std::isnan(numbers.deviation[row]);
        const auto where = [](bool there, const std::string& text) { return there ? text : std::string(); };
        list.push_back({{"row", row},
                        {"value", where(!lacks_scale, item.value_text)},
                        {"mean", where(!std::isnan(numbers.mean[row]), item.mean_text)},
                        {"sd", where(!std::isnan(numbers.sd[row]), item.sd_text)},
                        {"deviation", where(has_deviation, item.deviation_text)},
                        {"stars", where(has_deviation, item.stars)},
                        {"missing", item.missing},
                        {"normMissing", item.norm_missing},
                        {"reason", lacks_scale                ? texts("no scale")
                                   : item.reason.text.empty() ? std::string()
                                                              : texts(item.reason)}});
    };
    if (wanted.empty())
        for (std::size_t row = 0; row < row_count(); ++row) add(row);
    for (const int row : wanted)
        if (row >= 0 && static_cast<std::size_t>(row) < row_count()) add(static_cast<std::size_t>(row));
    return list;
}

Json Session::remarks(const cephtool::Texts& texts) {
    Case record = record_;
    record.remarks.clear();
    std::vector<Remark> remarks = cephtool::turned_right(std::move(record), {}).remarks;
    if (!record_.mm_per_pixel) remarks.push_back(no_scale_remark());
    for (const Remark& remark : result().record.remarks)
        if (remark == cephtool::norms_by_sex()) remarks.push_back(remark);
    return json_of(remarks, texts);
}

Json Session::norms(const cephtool::Texts& texts) {
    Json list = Json::array();
    for (const Analysis* analysis : chosen_) {
        const cephtool::NormBand band = cephtool::norm_band(*analysis, record_, {});
        list.push_back({{"words", cephtool::norms_in_words(band, texts)}, {"remarks", json_of(band.remarks, texts)}});
    }
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
    static const cephtool::OutlineTemplate faces[] = {cephtool::shipped_template(cephtool::Kind::lateral),
                                                      cephtool::shipped_template(cephtool::Kind::frontal)};
    if (record_.kind == cephtool::Kind::model) return {};
    return cephtool::LandmarkSuggestion(faces[record_.kind == cephtool::Kind::frontal], record_.landmarks)(name);
}

}  // namespace engine
