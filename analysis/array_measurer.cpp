#include "ArrayMeasurer.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <utility>

#include "LandmarkTable.h"
#include "MeasuredAnalysis.h"
#include "ResultList.h"
#include "SheetMeasurer.h"
#include "analysis/evaluation.h"
#include "analysis/film_steps.h"
#include "analysis/landmarks.h"
#include "analysis/program_block.h"
#include "analysis/program_step.h"
#include "analysis/sheet_body.h"

namespace tool {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t nowhere = ~std::size_t{0};

// An item's norm for a sex and band.
struct PlainNorm {
    bool is_plain = true;  // the record has no part in it
    std::optional<double> mean = {}, sd = {};
    bool operator==(const PlainNorm&) const = default;
};

// Whether the record has a part in a norm's line: in what it names, or, since a text may read landmarks where it names
// none (`len"[A][B]`), in what its formulas take.
bool rests_on_record(const Program& program, int line) {
    const std::uint64_t* const needs = program.needs_of_line(line);
    if (std::any_of(needs, needs + program.words, [](std::uint64_t bits) { return bits != 0; })) return true;
    const Program::NormLine& norm = program.norm_lines[static_cast<std::size_t>(line)];
    if (norm.as_text) return true;
    std::vector<StepId> wanted;
    for (const Program::NormField& field : norm.fields)
        if (field.formula != no_step) wanted.push_back(field.formula);
    std::vector<bool> met(program.steps.size());
    while (!wanted.empty()) {
        const StepId id = wanted.back();
        wanted.pop_back();
        if (met[id]) continue;
        met[id] = true;
        const Step& step = program.steps[id];
        if (is_landmark(step) || step.kind == Step::Kind::cast_measure) return true;
        if (step.kind == Step::Kind::item && program.items[step.in[0]].as_text) return true;
        const auto is_text = [&](int of) {
            return of >= 0 && program.norm_lines[static_cast<std::size_t>(of)].as_text;
        };
        if (step.kind == Step::Kind::norm && std::ranges::any_of(program.norms[step.in[0]], is_text)) return true;
        program.each_source(step, [&](StepId source) { wanted.push_back(source); });
    }
    return false;
}

double coordinate(const std::byte* at) {
    double value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

}  // namespace

struct ArrayMeasurer::Body {
    Body(const Analysis& its_analysis, std::span<const std::string> names);

    std::optional<Refusal> measure(const LandmarkArray& array, std::span<const ArrayCase> cases, std::size_t first,
                                   const ArrayNumbers& numbers);
    bool take(const LandmarkArray& array, std::span<const ArrayCase> cases);
    Result<SubjectRecord> record(const LandmarkArray& array, const ArrayCase& person, std::size_t lane);
    ResultNumbers numbers_of(int item, const ArrayCase& person, bool norms);
    PlainNorm plain_norm(std::size_t column, int sex, int band);
    const std::vector<PlainNorm>& norms_for(const ArrayCase& person);
    void put_plain(std::size_t column, std::span<const ArrayCase> cases, Lanes open, const ArrayNumbers& numbers);

    Analysis analysis;
    const Program& program;
    SheetSet set;
    SheetMeasurer measurer;
    ProgramBlock block;
    Subject subject;                            // its landmarks are those of the array
    std::optional<SubjectRecord> empty;         // of no landmark; nothing: names are such that no record takes them
    std::vector<LanePoints> unused;             // those of the array's landmarks that no item needs
    std::vector<LanePoints*> columns;           // where each of the array's landmarks is read to
    std::vector<int> items, places_in_program;  // of each column
    std::vector<bool> has_formula;
    std::map<std::pair<std::optional<Sex>, int>, std::vector<PlainNorm>> known_norms;
    std::array<const std::vector<PlainNorm>*, lane_count> norms{};  // of each lane
};

ArrayMeasurer::Body::Body(const Analysis& its_analysis, std::span<const std::string> names)
    : analysis(its_analysis),
      program(body_of(analysis.sheet())->program()),
      set(analysis.sheet()),
      measurer(set),
      block(program),
      unused(names.size()) {
    for (LanePoints& points : unused) columns.push_back(&points);
    for (std::size_t i = 0; i < analysis.items().size(); ++i) {
        if (analysis.items()[i].heading) continue;
        items.push_back(static_cast<int>(i));
        places_in_program.push_back(program.files.front()[i]);
        has_formula.push_back(!analysis.items()[i].formula.empty());
    }
    subject.mm_per_pixel = 1;
    const int kind = static_cast<int>(measured_on(analysis.kind()));
    for (const std::string& name : names) {
        PlacedLandmark& landmark = subject.landmarks.emplace_back();
        landmark.slot = LandmarkTable::Find(kind, name.c_str());
        if (landmark.slot < 0) landmark.name = name;
    }
    auto made = SubjectRecord::of(analysis.kind(), subject);
    if (!made) return;
    empty = *std::move(made);
    // Landmarks are found by name as in any record. Own ones stand there in the array's order; of a fixed one that the
    // array has twice the last one counts.
    const SheetSubject fields = empty->subject(Sex::male, 0);
    const Landmarks all(program.kind, fields.record, fields.kCount, fields.kPoints, fields.uCount);
    const auto bits = block.landmarks();
    for (std::size_t place = 0; place < bits.size(); ++place) {
        const bool is_fixed = bits[place] < program.slots;
        const Landmarks::Found found = is_fixed
                                           ? Landmarks::Found{Landmarks::Source::fixed, static_cast<int>(bits[place])}
                                           : all.find(program.names[bits[place] - program.slots]);
        std::size_t named = nowhere;
        int own = 0;
        for (std::size_t i = 0; i < names.size(); ++i) {
            const int slot = subject.landmarks[i].slot;
            if (found.source == Landmarks::Source::fixed && slot == found.slot) named = i;
            if (slot < 0 && found.source == Landmarks::Source::user && own++ == found.slot) named = i;
        }
        if (named != nowhere) columns[named] = &block.landmark(place);
    }
}

Result<SubjectRecord> ArrayMeasurer::Body::record(const LandmarkArray& array, const ArrayCase& person,
                                                  std::size_t lane) {
    const auto* const of_case =
        static_cast<const std::byte*>(array.first) + static_cast<std::ptrdiff_t>(lane) * array.to_next_case;
    for (std::size_t i = 0; i < subject.landmarks.size(); ++i) {
        const std::byte* const at = of_case + static_cast<std::ptrdiff_t>(i) * array.to_next_landmark;
        const FilmPoint point{coordinate(at), coordinate(at + array.to_y)};
        subject.landmarks[i].at = std::isnan(point.x) || std::isnan(point.y) ? FilmPoint{} : point;
    }
    subject.mm_per_pixel = person.mm_per_pixel;
    return SubjectRecord::of(analysis.kind(), subject);
}

// The coordinates of up to 64 cases; false when not all can be measured.
bool ArrayMeasurer::Body::take(const LandmarkArray& array, std::span<const ArrayCase> cases) {
    LaneNumbers within, whole;
    std::ranges::fill(within.of, 1);
    std::ranges::fill(whole.of, 1);
    // Whole lines of the processor's cache are written, while those that are read stay there, whatever the array's
    // order. An array of many cases is larger than the cache: it is asked for ahead.
    constexpr std::size_t lanes_a_line = 64 / sizeof(double), points_a_line = 4;
    const std::ptrdiff_t ahead = 2 * static_cast<std::ptrdiff_t>(lanes_a_line) * array.to_next_case;
    const auto* const begin = static_cast<const std::byte*>(array.first);
    for (std::size_t first = 0; first < cases.size(); first += lanes_a_line) {
        const std::size_t end = std::min(first + lanes_a_line, cases.size());
        for (std::size_t i = 0; i < columns.size(); ++i) {
            LanePoints& points = *columns[i];
            const std::byte* at = begin + static_cast<std::ptrdiff_t>(first) * array.to_next_case +
                                  static_cast<std::ptrdiff_t>(i) * array.to_next_landmark;
            for (std::size_t lane = first; lane < end; ++lane, at += array.to_next_case) {
                if (i % points_a_line == 0) prefetch(at, ahead);
                points.x[lane] = coordinate(at);
                points.y[lane] = coordinate(at + array.to_y);
            }
        }
    }
    for (LanePoints* const points : columns) take_placed(*points, farthest_px, within, whole);
    bool all_good = empty.has_value();
    for (std::size_t lane = 0; lane < cases.size(); ++lane) {
        const double steps = whole[lane] == 1 ? 1 : fine_steps, mm = cases[lane].mm_per_pixel;
        all_good = all_good && mm > 0 && std::isfinite(mm) && within[lane] == 1;
        block.pixel[lane] = steps;
        block.scale[lane] = mm / steps;
    }
    for (std::size_t place = 0; place < block.landmarks().size(); ++place) to_steps(block.landmark(place), block.pixel);
    return all_good;
}

// As ResultList::Numbers has it.
PlainNorm ArrayMeasurer::Body::plain_norm(std::size_t column, int sex, int band) {
    const Program::Item& item = program.items[static_cast<std::size_t>(places_in_program[column])];
    PlainNorm norm;
    for (const int part : {item.mean, item.sd}) {
        const int line = part < 0 ? -1 : program.line(part, sex);
        if (line >= 0 && rests_on_record(program, line)) return {.is_plain = false};
    }
    const SheetRow row = measurer.Evaluate(0, items[column], sex, band);
    if (row.norm_needs_band) return norm;
    if (row.has_mean && std::isfinite(row.mean)) norm.mean = row.mean;
    if (row.has_sd && std::isfinite(row.sd)) norm.sd = row.sd;
    return norm;
}

const std::vector<PlainNorm>& ArrayMeasurer::Body::norms_for(const ArrayCase& person) {
    const auto [known, is_new] = known_norms.try_emplace({person.sex, person.band});
    if (!is_new) return known->second;
    constexpr int male = 1, female = 2;
    measurer.Measure(empty->subject(Sex::male, 0));
    for (std::size_t column = 0; column < items.size(); ++column) {
        PlainNorm norm = plain_norm(column, person.sex ? static_cast<int>(*person.sex) : male, person.band);
        if (!person.sex) {
            const PlainNorm hers = plain_norm(column, female, person.band);
            if (norm != hers) norm = {.is_plain = norm.is_plain && hers.is_plain};
        }
        known->second.push_back(norm);
    }
    return known->second;
}

// What ProgramRun answers for is measured behind this.
void ArrayMeasurer::Body::put_plain(std::size_t column, std::span<const ArrayCase> cases, Lanes open,
                                    const ArrayNumbers& numbers) {
    const int place = places_in_program[column];
    const LaneNumbers& values = block.values(place);
    const Lanes none = open | block.lacking(place) | block.texts(place) | lanes_not_finite(values);
    for (std::size_t lane = 0; lane < cases.size(); ++lane)
        numbers.value[lane * items.size() + column] = none >> lane & 1 ? nan : values[lane];
    if (!numbers.mean) return;
    for (std::size_t lane = 0; lane < cases.size(); ++lane) {
        const PlainNorm& norm = (*norms[lane])[column];
        const std::size_t at = lane * items.size() + column;
        numbers.mean[at] = norm.mean.value_or(nan);
        numbers.sd[at] = norm.sd.value_or(nan);
        const bool has_deviation = norm.mean && norm.sd && *norm.sd != 0 && !(none >> lane & 1);
        const double found = has_deviation ? deviation(values[lane], *norm.mean, *norm.sd) : nan;
        numbers.deviation[at] = std::isfinite(found) ? found : nan;
    }
}

ResultNumbers ArrayMeasurer::Body::numbers_of(int item, const ArrayCase& person, bool with_norms) {
    constexpr int male = 1, female = 2;
    const auto of_sex = [&](int sex) { return ResultList::Numbers(measurer, 0, item, sex, person.band, with_norms); };
    if (person.sex) return of_sex(static_cast<int>(*person.sex));
    return ResultList::Common(of_sex(male), of_sex(female));
}

// Up to 64 cases; `first` is the place of the first one.
std::optional<ArrayMeasurer::Refusal> ArrayMeasurer::Body::measure(const LandmarkArray& array,
                                                                   std::span<const ArrayCase> cases, std::size_t first,
                                                                   const ArrayNumbers& numbers) {
    if (!take(array, cases))
        for (std::size_t lane = 0; lane < cases.size(); ++lane)
            if (const auto refused = record(array, cases[lane], lane); !refused)
                return Refusal{first + lane, refused.reason()};
    block.run(cases.size());
    if (numbers.mean)
        for (std::size_t lane = 0; lane < cases.size(); ++lane) norms[lane] = &norms_for(cases[lane]);
    const Lanes all = cases.size() < lane_count ? (Lanes{1} << cases.size()) - 1 : ~Lanes{0};
    Lanes any_open = 0;
    std::vector<Lanes> open(items.size());
    for (std::size_t column = 0; column < items.size(); ++column) {
        const int place = places_in_program[column];
        Lanes& lanes = open[column];
        if (!has_formula[column]) {
            for (double* const of : {numbers.value, numbers.mean, numbers.sd, numbers.deviation})
                for (std::size_t lane = 0; of && lane < cases.size(); ++lane) of[lane * items.size() + column] = nan;
            continue;
        }
        lanes = block.serves(place) ? block.open(place) & all : all;
        if (numbers.mean)
            for (std::size_t lane = 0; lane < cases.size(); ++lane)
                if (!(*norms[lane])[column].is_plain) lanes |= Lanes{1} << lane;
        if (lanes != all) put_plain(column, cases, lanes, numbers);
        any_open |= lanes;
    }
    for (std::size_t lane = 0; lane < cases.size(); ++lane) {
        if (!(any_open >> lane & 1)) continue;
        auto fields = record(array, cases[lane], lane);
        if (!fields) return Refusal{first + lane, fields.reason()};
        measurer.Measure(fields->subject(Sex::male, 0));
        for (std::size_t column = 0; column < items.size(); ++column) {
            if (!(open[column] >> lane & 1)) continue;
            const ResultNumbers found = numbers_of(items[column], cases[lane], numbers.mean != nullptr);
            const std::size_t at = lane * items.size() + column;
            numbers.value[at] = found.value.value_or(nan);
            if (!numbers.mean) continue;
            numbers.mean[at] = found.mean.value_or(nan);
            numbers.sd[at] = found.sd.value_or(nan);
            numbers.deviation[at] = found.deviation.value_or(nan);
        }
    }
    return std::nullopt;
}

ArrayMeasurer::ArrayMeasurer(const Analysis& analysis, std::span<const std::string> landmarks)
    : body_(std::make_unique<Body>(analysis, landmarks)) {}
ArrayMeasurer::ArrayMeasurer(ArrayMeasurer&&) noexcept = default;
ArrayMeasurer& ArrayMeasurer::operator=(ArrayMeasurer&&) noexcept = default;
ArrayMeasurer::~ArrayMeasurer() = default;

std::size_t ArrayMeasurer::item_count() const {
    return body_->items.size();
}

std::optional<ArrayMeasurer::Refusal> ArrayMeasurer::measure(const LandmarkArray& landmarks,
                                                             std::span<const ArrayCase> cases,
                                                             const ArrayNumbers& numbers) {
    for (std::size_t first = 0; first < cases.size(); first += lane_count) {
        const auto behind = [&](double* column) { return column ? column + first * item_count() : nullptr; };
        LandmarkArray array = landmarks;
        array.first =
            static_cast<const std::byte*>(landmarks.first) + static_cast<std::ptrdiff_t>(first) * array.to_next_case;
        const auto some = cases.subspan(first, std::min(lane_count, cases.size() - first));
        if (auto refusal = body_->measure(
                array, some, first,
                {behind(numbers.value), behind(numbers.mean), behind(numbers.sd), behind(numbers.deviation)}))
            return refusal;
    }
    return std::nullopt;
}

}  // namespace tool
