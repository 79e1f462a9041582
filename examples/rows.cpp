// rows ANALYSIS.txt: what is wrong with an analysis, and its rows for four landmarks as a list shows them.
#include <DefinitionCheck.h>
#include <MeasuredAnalysis.h>

#include <cstdio>

int main(int count, char** arguments) {
    if (count != 2) return std::fprintf(stderr, "usage: rows ANALYSIS.txt\n"), 2;
    for (const CheckFinding& fault : DefinitionCheck::Path(arguments[1]).findings)
        if (!fault.note) std::printf("%d:%d: %s\n", fault.line, fault.column, LPCSTR(fault.message));

    const auto analysis = tool::Analysis::read(tool::Kind::lateral, arguments[1]);
    if (!analysis) return std::fprintf(stderr, "%s\n", analysis.reason().c_str()), 1;
    const tool::Subject film{
        .landmarks = {{"S", {850, 850}}, {"N", {1564, 756}}, {"A", {1567, 1322}}, {"B", {1480, 1709}}},
        .mm_per_pixel = 0.1};  // neither sex nor age is known: norms that depend on them are left out
    const auto measured = tool::measure_all(*analysis, film);
    if (!measured) return std::fprintf(stderr, "%s\n", measured.reason().c_str()), 1;
    for (const tool::MeasuredItem& row : measured->items)
        if (row.has_result())
            std::printf("%s %s %s %s\n", row.item->name.c_str(), row.value_text.c_str(), row.item->unit.c_str(),
                        row.stars.c_str());
}
