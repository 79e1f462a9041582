// array_engine FILE SHEET CASES: measures all items of a sheet for the cases of FILE, in a loop that does nothing else:
// what bench/python_bench holds the package for Python against. FILE has coordinates as doubles, x and y of each
// landmark that its first line names. Prints the processor's time in microseconds a case: of one record after the
// other, which stand ready; of the array without and with norms; and the last value.
#include <ArrayMeasurer.h>
#include <LandmarkTable.h>
#include <ResultList.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

template <class Work>
void print_time(std::size_t cases, const Work& work) {
    const std::clock_t begin = std::clock();
    work();
    std::printf("%.4f ", 1e6 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC / static_cast<double>(cases));
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 4) return std::fprintf(stderr, "usage: array_engine FILE SHEET CASES\n"), 2;
    const auto analysis = tool::Analysis::read(tool::Kind::lateral, arguments[2]);
    if (!analysis) return std::fprintf(stderr, "array_engine: %s: %s\n", arguments[2], analysis.reason().c_str()), 1;
    const auto cases = static_cast<std::size_t>(std::atoi(arguments[3]));
    std::ifstream file(arguments[1], std::ios::binary);
    std::string line;
    std::getline(file, line);
    std::istringstream in(line);
    std::vector<std::string> names;
    for (std::string name; in >> name;) names.push_back(name);
    const std::size_t coordinates = 2 * names.size();
    std::vector<double> points(coordinates * cases);
    if (!file.read(reinterpret_cast<char*>(points.data()),
                   static_cast<std::streamsize>(sizeof(double) * points.size())))
        return std::fprintf(stderr, "array_engine: %s is too short\n", arguments[1]), 1;
    std::vector<tagPOINTLAT> films(cases);
    for (std::size_t place = 0; place < cases; ++place) {
        films[place].Scale = 0.1;
        for (std::size_t i = 0; i < names.size(); ++i) {
            const double* const at = &points[place * coordinates + 2 * i];
            *LandmarkTable::Point(0, &films[place], LandmarkTable::Find(0, names[i].c_str())) =
                CPoint(static_cast<int>(at[0]), static_cast<int>(at[1]));
        }
    }
    const SheetSet set(analysis->sheet());
    SheetMeasurer measurer(set);
    tool::ArrayMeasurer array(*analysis, names);
    const std::size_t numbers = cases * array.item_count();
    std::vector<double> one_by_one(numbers), value(numbers), mean(numbers), sd(numbers), deviation(numbers);
    std::vector<int> items;
    for (std::size_t item = 0; item < analysis->items().size(); ++item)
        if (!analysis->items()[item].heading) items.push_back(static_cast<int>(item));
    print_time(cases, [&] {
        auto found = one_by_one.begin();
        for (tagPOINTLAT& film : films) {
            measurer.Measure({&film});
            for (const int item : items)
                *found++ = ResultList::Numbers(measurer, 0, item, 1, 0, false).value.value_or(0);
        }
    });
    const auto bytes = static_cast<std::ptrdiff_t>(sizeof(double));
    const tool::LandmarkArray landmarks{points.data(), static_cast<std::ptrdiff_t>(coordinates) * bytes, 2 * bytes,
                                        bytes};
    const std::vector<tool::ArrayCase> people(cases, {.mm_per_pixel = 0.1, .sex = tool::Sex::male, .band = 0});
    print_time(cases, [&] { array.measure(landmarks, people, {.value = value.data()}); });
    print_time(cases, [&] {
        array.measure(landmarks, people, {value.data(), mean.data(), sd.data(), deviation.data()});
    });
    if (value != one_by_one) return std::fprintf(stderr, "array_engine: the array has other values\n"), 1;
    std::printf("%.17g\n", value.back());
}
