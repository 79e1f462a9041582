// The evaluator against what its work cannot do without (opening and reading the same files) and against a general
// formula library on the same items.
#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "AnalysisSheet.h"
#include "CephCalc.h"
#include "Framework.h"
#include "LandmarkTable.h"
#include "ResultList.h"
#include "SheetMeasurer.h"
#ifdef BENCH_MUPARSER
#include <muParser.h>
#endif

namespace {

namespace fs = std::filesystem;

const char* const names[] = {"S", "N", "A", "B", "Po", "Or", "Go", "Me", "Ar", "Pog"};

// What item i measures, as text for either evaluator.
std::string formula_of_item(int i, const std::string& open, const std::string& close) {
    const auto point = [&](int k) { return open + names[k % 10] + close; };
    switch (i % 4) {
        case 0: return "len(" + point(i) + "," + point(i + 3) + ")*1";
        case 1: return "angle1(" + point(i) + "," + point(i + 2) + "," + point(i + 5) + ")*1";
        case 2: return "angle2(" + point(i) + "," + point(i + 1) + "," + point(i + 4) + "," + point(i + 7) + ")-90";
        default: return "len(" + point(i) + "," + point(i + 1) + ")/len(" + point(i + 2) + "," + point(i + 6) + ")*100";
    }
}

std::string definition(int items) {
    std::string text = "title:\r\nBench\r\nCalc:\r\n", mean = "Mean:\r\n", sd = "SD:\r\n";
    for (int i = 0; i < items; ++i) {
        const std::string name = "Measure " + std::to_string(i);
        text += name + "=" + formula_of_item(i, "[", "]") + ":1\r\n";
        mean += name + "=82.0,83.5\r\n";
        sd += name + "=3.5,3.6\r\n";
    }
    return text + mean + sd;
}

// A program's folder with its settings file and its analyses, as on a clinic's disk.
class Clinic {
 public:
    Clinic() : folder_(fs::temp_directory_path() / ("evaluator_bench" + std::to_string(getpid()))) {
        fs::create_directories(folder_ / "analyses/CalcForm");
        write("Korvane9.ini", "[DB_DIR]\r\nANAITEMPATH=" + (folder_ / "analyses").string() + "\r\n");
        write("analyses/CalcForm/list.txt", "Bench.txt\r\n");
        write("analyses/CalcForm/Bench.txt", definition(60));
        SetModuleFileNameA((folder_ / "host").c_str());
    }
    ~Clinic() { fs::remove_all(folder_); }

    std::vector<std::string> files() const {
        return {folder_ / "Korvane9.ini", folder_ / "analyses/CalcForm/list.txt",
                folder_ / "analyses/CalcForm/Bench.txt"};
    }

 private:
    void write(const char* name, const std::string& text) { std::ofstream(folder_ / name, std::ios::binary) << text; }
    fs::path folder_;
};

tagPOINTLAT face() {
    tagPOINTLAT record{};
    record.Scale = 0.1;
    for (int slot = 0; slot < LandmarkTable::Count(0); ++slot)
        record.Point[slot] = CPoint(400 + slot * 97 % 1300, 500 + slot * 61 % 1500);
    return record;
}

std::size_t read_whole(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status;
    fstat(file, &status);
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    const ssize_t got = read(file, text.data(), text.size());
    close(file);
    return static_cast<std::size_t>(got);
}

void OneItem_OpenAndReadAlone(benchmark::State& state) {
    const Clinic clinic;
    const auto files = clinic.files();
    for (auto _ : state)
        for (const std::string& file : files) benchmark::DoNotOptimize(read_whole(file));
}
BENCHMARK(OneItem_OpenAndReadAlone);

// The argument is the item's place in the file, the mode of the call behind it.
void OneItem_ExportedCall(benchmark::State& state) {
    const Clinic clinic;
    tagPOINTLAT record = face();
    const std::string name = "Measure " + std::to_string(state.range(0));
    double value = 0, sd = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(CCephCalc::Calc_1(static_cast<int>(state.range(1)), 0, 0, name.c_str(), &record,
                                                   nullptr, nullptr, nullptr, nullptr, 1, 0, 1.0, &value, &sd));
}
BENCHMARK(OneItem_ExportedCall)->Args({0, 0})->Args({30, 0})->Args({59, 0})->Args({30, 1});

void SixtyItems_Sheet(benchmark::State& state) {
    const std::string text = definition(60);
    const AnalysisSheet sheet(0, text.data(), text.size());
    tagPOINTLAT record = face();
    SheetSubject subject;
    subject.record = &record;
    for (auto _ : state)
        for (int i = 0; i < 60; ++i) benchmark::DoNotOptimize(sheet.Evaluate(i, subject));
}
BENCHMARK(SixtyItems_Sheet);

// The lateral analyses that ship, held in memory, on a film whose landmarks lie as on the average face.
class Shipped {
 public:
    Shipped() {
        const fs::path folder = fs::path(TOOL_SOURCE_DIR) / "anaitem/CalcForm";
        std::ifstream list(folder / "list.txt");
        for (std::string file; list >> file;) sheets_.emplace_back(0, (folder / file).c_str());
        subject.record = &record;
    }
    SheetSet set() const {
        std::vector<const AnalysisSheet*> all;
        for (const AnalysisSheet& sheet : sheets_) all.push_back(&sheet);
        return SheetSet(all);
    }
    // Calls visit(sheet, number of the sheet, item) for each item that has a formula.
    template <class Visit>
    int each_item(const Visit& visit) const {
        int count = 0;
        for (int sheet = 0; sheet < static_cast<int>(sheets_.size()); ++sheet)
            for (int item = 0; item < sheets_[sheet].GetCount(); ++item)
                if (!sheets_[sheet].GetItem(item).expression.IsEmpty()) visit(sheets_[sheet], sheet, item), ++count;
        return count;
    }

    tagPOINTLAT record = face();
    SheetSubject subject;

 private:
    std::vector<AnalysisSheet> sheets_;
};

void ShippedLateral_Text(benchmark::State& state) {
    Shipped shipped;
    std::vector<std::pair<const AnalysisSheet*, CString>> items;
    shipped.each_item(
        [&](const AnalysisSheet& sheet, int, int item) { items.emplace_back(&sheet, sheet.GetItem(item).name); });
    for (auto _ : state)
        for (const auto& [sheet, name] : items)
            benchmark::DoNotOptimize(sheet->Calc_1(0, name, shipped.subject, 1.0, nullptr, nullptr));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(items.size()));
}
BENCHMARK(ShippedLateral_Text);

// All values, after one landmark has moved by a pixel.
void ShippedLateral_Set(benchmark::State& state) {
    Shipped shipped;
    const SheetSet set = shipped.set();
    SheetMeasurer measurer(set);
    const int items = shipped.each_item([](const AnalysisSheet&, int, int) {});
    for (auto _ : state) {
        shipped.record.Point[0].x ^= 1;
        measurer.Measure(shipped.subject);
        benchmark::DoNotOptimize(measurer);
    }
    state.SetItemsProcessed(state.iterations() * items);
}
BENCHMARK(ShippedLateral_Set);

// Calls read(measurer, sheet, item) for each item after every change.
template <class Read>
void read_each_item(benchmark::State& state, const Read& read) {
    Shipped shipped;
    const SheetSet set = shipped.set();
    SheetMeasurer measurer(set);
    std::vector<std::pair<int, int>> items;
    shipped.each_item([&](const AnalysisSheet&, int sheet, int item) { items.emplace_back(sheet, item); });
    for (auto _ : state) {
        shipped.record.Point[0].x ^= 1;
        measurer.Measure(shipped.subject);
        for (const auto& [sheet, item] : items) read(measurer, sheet, item);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(items.size()));
}

// The same with all that a list of results shows: norms, deviations, and whether something is missing.
void ShippedLateral_SetNumbers(benchmark::State& state) {
    read_each_item(state, [](SheetMeasurer& measurer, int sheet, int item) {
        benchmark::DoNotOptimize(ResultList::Numbers(measurer, sheet, item, 1, 0));
    });
}
BENCHMARK(ShippedLateral_SetNumbers);

// The same as rows by themselves.
void ShippedLateral_SetRows(benchmark::State& state) {
    read_each_item(state, [](SheetMeasurer& measurer, int sheet, int item) {
        if (!measurer.Lacks(sheet, item, SheetPart::value, 1, 0))
            benchmark::DoNotOptimize(measurer.Evaluate(sheet, item, 1, 0));
    });
}
BENCHMARK(ShippedLateral_SetRows);

// The same with the standard error of each value, for as many landmarks as there are.
void ShippedLateral_SetErrors(benchmark::State& state) {
    std::vector<tool::LandmarkError> errors;
    for (int slot = 0; slot < LandmarkTable::Count(0); ++slot)
        errors.push_back({.name = LandmarkTable::Name(0, slot), .along_mm = 0.5, .across_mm = 0.7});
    const tool::LandmarkErrors of_landmarks(errors);
    const bool with_errors = state.range(0);
    bool told = false;
    read_each_item(state, [&](SheetMeasurer& measurer, int sheet, int item) {
        if (with_errors && !std::exchange(told, true)) measurer.SetErrors(of_landmarks);
        benchmark::DoNotOptimize(measurer.Evaluate(sheet, item, 1, 0));
        if (with_errors) benchmark::DoNotOptimize(measurer.Error(sheet, item, 1, 0));
    });
}
BENCHMARK(ShippedLateral_SetErrors)->Arg(0)->Arg(1);

#ifdef BENCH_MUPARSER
// Landmarks are variables that hold their slots; norms are numbers at hand, so this does a part of the work only.
const tagPOINTLAT measured = face();

CPoint at(double slot) {
    return measured.Point[static_cast<int>(slot)];
}

double length_px(double a, double b) {
    const CPoint p = at(a), q = at(b);
    return std::sqrt(double(p.x - q.x) * (p.x - q.x) + double(p.y - q.y) * (p.y - q.y));
}

double angle_between(CPoint u, CPoint v) {
    const double lengths = std::sqrt((double(u.x) * u.x + double(u.y) * u.y) * (double(v.x) * v.x + double(v.y) * v.y));
    return std::acos((double(u.x) * v.x + double(u.y) * v.y) / lengths) * 180.0 / 3.141592654;
}

void SixtyItems_MuParser(benchmark::State& state) {
    std::vector<double> slots;
    for (const char* name : names) slots.push_back(LandmarkTable::Find(0, name));
    mu::Parser parser;
    parser.DefineFun("len", [](double a, double b) { return length_px(a, b) * 0.1; });
    parser.DefineFun("angle1",
                     [](double a, double b, double c) { return 180.0 - angle_between(at(b) - at(a), at(c) - at(b)); });
    parser.DefineFun(
        "angle2", [](double a, double b, double c, double d) { return angle_between(at(b) - at(a), at(d) - at(c)); });
    for (std::size_t k = 0; k < slots.size(); ++k) parser.DefineVar(names[k], &slots[k]);
    std::vector<std::string> formulas;
    for (int i = 0; i < 60; ++i) formulas.push_back(formula_of_item(i, "", ""));
    for (auto _ : state)
        for (const std::string& formula : formulas) {
            parser.SetExpr(formula);
            benchmark::DoNotOptimize((parser.Eval() - 82.0) / 3.5);
        }
}
BENCHMARK(SixtyItems_MuParser);
#endif

}  // namespace
