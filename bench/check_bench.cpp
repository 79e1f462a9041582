// Checking a definition file: the argument is its number of items.
#include <benchmark/benchmark.h>

#include <string>

#include "DefinitionCheck.h"

namespace {

std::string definition(int items, bool faulty) {
    std::string text = "title:\r\nBench\r\nCalc:\r\n", mean = "Mean:\r\n", sd = "SD:\r\n";
    for (int i = 0; i < items; ++i) {
        const std::string name = "Measure " + std::to_string(i);
        static const char* const formulas[] = {"len([S],[N])*1", "angle1([Po],mid([U1],[L1]),[Or])-90",
                                               "len([S],[N])/(len([A],[B])+len([Go],[Me]))*100",
                                               "angle2([S],[N],[A],[B])"};
        text +=
            name + "=" + (i > 0 && i % 5 == 0 ? "case(\"Measure " + std::to_string(i - 1) + "\")+1" : formulas[i % 4]);
        text += faulty ? "-(len([X" + std::to_string(i) + "],[N]))\r\n" : ":1\r\n";
        mean += name + (faulty ? "x" : "") + "=82.0,83.5,84\r\n";
        sd += name + "=3.5\r\n";
    }
    return text + mean + sd;
}

void Check_Definition(benchmark::State& state, bool faulty) {
    const std::string text = definition(static_cast<int>(state.range(0)), faulty);
    std::size_t findings = 0;
    for (auto _ : state)
        findings = DefinitionCheck::Text(CheckFamily::definition, 0, text.data(), text.size()).findings.size();
    state.counters["findings"] = static_cast<double>(findings);
}
BENCHMARK_CAPTURE(Check_Definition, sound, false)->Range(10, 1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Check_Definition, faulty, true)->Range(10, 1000)->Unit(benchmark::kMillisecond);

void Check_ShippedFolder(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(DefinitionCheck::Path(TOOL_SOURCE_DIR "/anaitem").files);
}
BENCHMARK(Check_ShippedFolder)->Unit(benchmark::kMillisecond);

}  // namespace
