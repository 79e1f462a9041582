#include <ArrayMeasurer.h>
#include <CalcTool.h>
#include <CodePage.h>
#include <MeasuredAnalysis.h>
#include <Tools.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

#include "base/wording.h"
#include "python/engine/engine.h"

namespace python {
namespace {

using cephtool::Error;
using cephtool::ExitCode;
using tool::Analysis;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// Numbers of one for each case, or one that holds for all.
class EachCase {
 public:
    EachCase(const Doubles& numbers, const char* what, py::ssize_t cases)
        : numbers_(numbers.unchecked<1>()), step_(numbers.shape(0) == 1 ? 0 : 1) {
        if (numbers.shape(0) != 1 && numbers.shape(0) != cases)
            throw bad_argument(std::string(what) + " has " + std::to_string(numbers.shape(0)) + " numbers for " +
                               std::to_string(cases) + " cases");
    }
    double operator[](py::ssize_t place) const { return numbers_(place * step_); }

 private:
    py::detail::unchecked_reference<double, 1> numbers_;
    py::ssize_t step_;
};

struct Patients {
    EachCase mm_per_pixel, sex, age, dental_stage;
};

// Tells who the cases are.
class People {
 public:
    People(const Analysis& analysis, const Patients& patients, bool norms)
        : analysis_(analysis), patients_(patients), norms_(norms) {}

    tool::ArrayCase operator[](py::ssize_t place) {
        tool::ArrayCase one{.mm_per_pixel = patients_.mm_per_pixel[place]};
        if (const auto sex = static_cast<int>(patients_.sex[place]); sex != 0) one.sex = static_cast<tool::Sex>(sex);
        if (!norms_) return one;
        const double age = patients_.age[place], stage = patients_.dental_stage[place];
        const tool::Subject next{.sex = one.sex,
                                 .age_years = std::isnan(age) ? std::nullopt : std::optional(age),
                                 .dental_stage = stage < 0 ? std::nullopt : std::optional(static_cast<int>(stage))};
        const auto traits = [](const tool::Subject& of) { return std::tuple(of.sex, of.age_years, of.dental_stage); };
        if (!band_ || traits(last_) != traits(next)) band_ = tool::norm_band(analysis_, next);
        last_ = next;
        one.band = *band_;
        return one;
    }

 private:
    const Analysis& analysis_;
    const Patients& patients_;
    const bool norms_;
    tool::Subject last_;
    std::optional<int> band_;  // of the last one
};

using Table = py::array_t<double>;

// (case, item), NaN where there is nothing; without a table: not wanted.
struct Numbers {
    std::optional<Table> value, mean, sd, deviation;

    // From a case on.
    tool::ArrayNumbers from(py::ssize_t place) {
        const auto row = [&](std::optional<Table>& table) {
            return table ? table->mutable_data() + place * table->shape(1) : nullptr;
        };
        return {row(value), row(mean), row(sd), row(deviation)};
    }
};

void measure_values(const Analysis& analysis, const std::vector<std::string>& names, const Doubles& points,
                    People& people, Numbers& numbers) {
    constexpr py::ssize_t at_once = 4096;
    tool::ArrayMeasurer measurer(analysis, names);
    std::vector<tool::ArrayCase> cases;
    for (py::ssize_t first = 0; first < points.shape(0); first += at_once) {
        cases.clear();
        for (py::ssize_t place = first; place < std::min(first + at_once, points.shape(0)); ++place)
            cases.push_back(people[place]);
        const tool::LandmarkArray array{reinterpret_cast<const std::byte*>(points.data()) + first * points.strides(0),
                                        points.strides(0), points.strides(1), points.strides(2)};
        if (const auto refused = measurer.measure(array, cases, numbers.from(first)))
            throw Error(
                ExitCode::bad_input,
                "case " + std::to_string(static_cast<std::size_t>(first) + refused->place) + ": " + refused->reason,
                "Points are pixels up to 1000000; what was not placed is NaN.");
    }
}

// As Numbers; of `mostly`, the place of the landmark, -1, of `assumed` 0.
struct Errors {
    std::vector<double> error, deviation, share;
    std::vector<std::int64_t> mostly;
    std::vector<std::uint8_t> assumed;
};

// The standard errors of the values.
Errors errors_of(const Analysis& analysis, const std::vector<std::string>& names, const Doubles& all_points,
                 People& people, const tool::LandmarkErrors& of_landmarks, Numbers& numbers) {
    const SheetSet set(analysis.sheet());
    SheetMeasurer measurer(set);
    measurer.SetErrors(of_landmarks);
    tool::Subject subject;
    for (const std::string& name : names) subject.landmarks.push_back({.name = name, .at = {}});
    const auto points = all_points.unchecked<3>();
    const auto count = static_cast<std::size_t>(numbers.value->size());
    Errors all{std::vector(count, nan), std::vector(count, nan), std::vector(count, nan),
               std::vector<std::int64_t>(count, -1), std::vector<std::uint8_t>(count)};
    std::vector<int> items;
    for (std::size_t i = 0; i < analysis.items().size(); ++i)
        if (!analysis.items()[i].heading) items.push_back(static_cast<int>(i));
    std::size_t at = 0;
    for (py::ssize_t place = 0; place < points.shape(0); ++place) {
        for (py::ssize_t i = 0; i < points.shape(1); ++i) {
            const double x = points(place, i, 0), y = points(place, i, 1);
            subject.landmarks[static_cast<std::size_t>(i)].at =
                std::isnan(x) || std::isnan(y) ? tool::FilmPoint{} : tool::FilmPoint{x, y};
        }
        const tool::ArrayCase person = people[place];
        subject.mm_per_pixel = person.mm_per_pixel;
        auto record = *tool::SubjectRecord::of(analysis.kind(), subject);  // the values were measured from the same
        measurer.Measure(record.subject(tool::Sex::male, 0));
        const tool::ArrayNumbers row = numbers.from(place);
        for (std::size_t i = 0; i < items.size(); ++i, ++at) {
            if (std::isnan(row.value[i])) continue;
            const SheetError found =
                measurer.Error(0, items[i], static_cast<int>(person.sex.value_or(tool::Sex::male)), person.band);
            if (found.state != ErrorState::known) continue;
            all.error[at] = found.value;
            all.assumed[at] = found.assumed.GetSize() > 0;
            if (row.deviation && !std::isnan(row.deviation[i])) all.deviation[at] = found.deviation;
            const auto mostly = std::ranges::find(names, std::string(Utf8FromCodePage932(found.mostly)));
            if (mostly == names.end()) continue;
            all.mostly[at] = mostly - names.begin();
            all.share[at] = found.share;
        }
    }
    return all;
}

py::tuple measure_points(const Analysis& analysis, const Doubles& points, const std::vector<std::string>& names,
                         const Doubles& mm_per_pixel, const Doubles& sex, const Doubles& age,
                         const Doubles& dental_stage, bool norms, const tool::LandmarkErrors* errors) {
    if (points.ndim() != 3 || points.shape(2) != 2 || points.shape(1) != static_cast<py::ssize_t>(names.size()))
        throw bad_argument("the points do not have the shape (n_cases, " + std::to_string(names.size()) + ", 2)",
                           "The landmarks are " + cephtool::joined(names, ", ") + ".");
    const py::ssize_t cases = points.shape(0);
    const auto items = std::ranges::count(analysis.items(), false, &tool::Item::heading);
    const Patients patients{{mm_per_pixel, "mm_per_pixel", cases},
                            {sex, "sex", cases},
                            {age, "age", cases},
                            {dental_stage, "dental_stage", cases}};
    Numbers numbers;
    for (std::optional<Table>* table : {&numbers.value, &numbers.mean, &numbers.sd, &numbers.deviation})
        if (norms || table == &numbers.value) table->emplace(std::vector<py::ssize_t>{cases, items});
    std::optional<Errors> found;
    {
        const py::gil_scoped_release others_run;
        People people(analysis, patients, norms);
        measure_values(analysis, names, points, people, numbers);
        if (errors) found = errors_of(analysis, names, points, people, *errors, numbers);
    }
    const auto table = [&](auto Errors::*column, bool wanted) -> py::object {
        if (!found || !wanted) return py::none();
        return array_of(std::move((*found).*column), {cases, items});
    };
    return py::make_tuple(numbers.value, numbers.mean, numbers.sd, numbers.deviation, table(&Errors::error, true),
                          table(&Errors::deviation, norms), table(&Errors::mostly, true), table(&Errors::share, true),
                          found ? table(&Errors::assumed, true).attr("view")("bool") : py::none());
}

// ---- Plane geometry, row by row: arrays of the shape (n, 2)

using Points = py::array_t<double, py::array::c_style | py::array::forcecast>;

template <std::size_t>
using PointsOf = const Points&;

// The function takes the points of a row and gives a number, or a point.
template <std::size_t count, class Function, std::size_t... places>
auto row_by_row(Function function, std::index_sequence<places...>) {
    return [function](PointsOf<places>... points) {
        const std::array<const Points*, count> all{&points...};
        for (const Points* each : all)
            if (each->ndim() != 2 || each->shape(1) != 2 || each->shape(0) != all[0]->shape(0))
                throw bad_argument("the points do not all have the shape (n, 2)");
        const auto rows = static_cast<std::size_t>(all[0]->shape(0));
        const std::array<const double*, count> data{points.data()...};
        using Value = decltype(function((static_cast<void>(places), CPointD())...));
        constexpr std::size_t width = std::is_same_v<Value, double> ? 1 : 2;
        std::vector<double> values(rows * width);
        {
            const py::gil_scoped_release others_run;
            for (std::size_t row = 0; row < rows; ++row) {
                const Value value = function(CPointD(data[places][2 * row], data[places][2 * row + 1])...);
                if constexpr (width == 1) {
                    values[row] = value;
                } else {
                    values[2 * row] = value.x;
                    values[2 * row + 1] = value.y;
                }
            }
        }
        const auto length = static_cast<py::ssize_t>(rows);
        return array_of(std::move(values), width == 1 ? std::vector{length} : std::vector{length, py::ssize_t{2}});
    };
}

template <std::size_t count, class Function>
void add_geometry(py::module_& module, const char* name, Function function) {
    module.def(name, row_by_row<count>(function, std::make_index_sequence<count>()));
}

CPointD nowhere() {
    return {nan, nan};
}

bool is_one_point(CPointD a, CPointD b) {
    return a.x == b.x && a.y == b.y;
}

double length(CPointD a, CPointD b) {
    return CCalcTool::Get_Lengthd(&a, &b, 1);
}

double angle(CPointD a, CPointD b, CPointD c) {
    return is_one_point(a, b) || is_one_point(c, b) ? nan : CCalcTool::Angle_Cald(&a, &b, &c);
}

double line_angle(CPointD a, CPointD b, CPointD c, CPointD d) {
    return is_one_point(a, b) || is_one_point(c, d) ? nan : CCalcTool::Get_Angled(&a, &b, &c, &d);
}

CPointD foot(CPointD a, CPointD b, CPointD p) {
    return is_one_point(a, b) ? nowhere() : CCalcTool::Get_Pointd(&a, &b, &p);
}

CPointD crossing(CPointD a, CPointD b, CPointD c, CPointD d) {
    CPointD at;
    return !is_one_point(a, b) && !is_one_point(c, d) && CCalcTool::Get_Cross_Pointd(&a, &b, &c, &d, &at) ? at
                                                                                                          : nowhere();
}

// ---- Line images

using Image = py::array_t<std::uint8_t, py::array::c_style>;

py::ssize_t checked_side(py::ssize_t side) {
    if (side > std::numeric_limits<int>::max() / 2) throw bad_argument("the image is too large");
    return side;
}

template <class Step>
void change(Image& image, Step step) {
    if (image.ndim() != 2) throw bad_argument("a line image has the shape (height, width)");
    const int height = static_cast<int>(checked_side(image.shape(0)));
    const int width = static_cast<int>(checked_side(image.shape(1)));
    std::uint8_t* const pixels = image.mutable_data();
    const py::gil_scoped_release others_run;
    step(pixels, width, height);
}

void widen(Image image, int steps, int connectivity) {
    change(image, [&](std::uint8_t* pixels, int width, int height) {
        for (int i = 0; i < steps; ++i) CTools::Dira(pixels, width, height, connectivity);
    });
}

void narrow(Image image, int steps, int connectivity) {
    change(image, [&](std::uint8_t* pixels, int width, int height) {
        for (int i = 0; i < steps; ++i) CTools::Eros(pixels, width, height, connectivity);
    });
}

void thin(Image image) {
    change(image, [](std::uint8_t* pixels, int width, int height) { CTools::Linear(nullptr, pixels, width, height); });
}

// `picture` is grey, or blue, green, red.
Image lines_of(const Image& picture, int threshold, bool bright) {
    const auto height = checked_side(picture.shape(0)), width = checked_side(picture.shape(1));
    const int bytes = picture.ndim() == 3 ? static_cast<int>(picture.shape(2)) : 1;
    Image lines({height, width});
    std::uint8_t* const pixels = lines.mutable_data();
    const std::uint8_t* const source = picture.data();
    const py::gil_scoped_release others_run;
    if (height > 0 && width > 0)
        CTools::MakeLineImg(source, bytes, static_cast<int>(width) * bytes, pixels, static_cast<int>(width),
                            static_cast<int>(height), threshold, bright);
    return lines;
}

}  // namespace

void add_arrays(py::module_& module) {
    module.def("measure_points", measure_points, py::arg("analysis"), py::arg("points"), py::arg("names"),
               py::arg("mm_per_pixel"), py::arg("sex"), py::arg("age"), py::arg("dental_stage"), py::arg("norms"),
               py::arg("errors").none(true));
    module.def(
        "dental_stage", [](const std::string& name) { return tool::dental_stage_named(name); }, py::arg("name"));
    add_geometry<2>(module, "length", length);
    add_geometry<3>(module, "angle", angle);
    add_geometry<4>(module, "line_angle", line_angle);
    add_geometry<3>(module, "foot", foot);
    add_geometry<4>(module, "crossing", crossing);
    module.def("widen", widen, py::arg("image").noconvert(), py::arg("steps"), py::arg("connectivity"));
    module.def("narrow", narrow, py::arg("image").noconvert(), py::arg("steps"), py::arg("connectivity"));
    module.def("thin", thin, py::arg("image").noconvert());
    module.def("lines_of", lines_of, py::arg("picture"), py::arg("threshold"), py::arg("bright"));
}

}  // namespace python
