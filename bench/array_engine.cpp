// array_engine FILE SHEET CASES: measures all items of a sheet for the cases of FILE, in a loop that does nothing else,
// on records that stand ready: what bench/python_bench holds the package for Python against. FILE has whole coordinates
// as doubles, x and y of each landmark that its first line names. Prints the processor's time in microseconds a case,
// without and with norms.
#include <Analysis.h>
#include <LandmarkTable.h>
#include <ResultList.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

int main(int count, char** arguments) {
    if (count < 4) return std::fprintf(stderr, "usage: array_engine FILE SHEET CASES\n"), 2;
    const AnalysisSheet sheet(0, arguments[2]);
    std::vector<tagPOINTLAT> films(static_cast<std::size_t>(std::atoi(arguments[3])));
    std::ifstream file(arguments[1], std::ios::binary);
    std::string line;
    std::getline(file, line);
    std::istringstream names(line);
    std::vector<int> slots;
    for (std::string name; names >> name;) slots.push_back(LandmarkTable::Find(0, name.c_str()));
    std::vector<double> points(2 * slots.size());
    for (tagPOINTLAT& film : films) {
        if (!file.read(reinterpret_cast<char*>(points.data()), static_cast<std::streamsize>(8 * points.size())))
            return std::fprintf(stderr, "array_engine: %s is too short\n", arguments[1]), 1;
        film.Scale = 0.1;
        for (std::size_t i = 0; i < slots.size(); ++i)
            *LandmarkTable::Point(0, &film, slots[i]) =
                CPoint(static_cast<int>(points[2 * i]), static_cast<int>(points[2 * i + 1]));
    }
    std::vector<int> items;
    for (int item = 0; item < sheet.GetCount(); ++item)
        if (!sheet.GetItem(item).heading) items.push_back(item);
    const SheetSet set(sheet);
    SheetMeasurer measurer(set);
    std::vector<double> values(films.size() * items.size());
    for (const bool norms : {false, true}) {
        const std::clock_t begin = std::clock();
        auto value = values.begin();
        for (tagPOINTLAT& film : films) {
            measurer.Measure({&film});
            for (const int item : items)
                *value++ = ResultList::Numbers(measurer, 0, item, 1, 0, norms).value.value_or(0);
        }
        std::printf("%.4f ", 1e6 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC /
                                 static_cast<double>(films.size()));
    }
    std::printf("%.17g\n", values.back());
}
