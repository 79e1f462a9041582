// rows ANALYSIS.txt: what is wrong with an analysis, and its rows for four landmarks as a list shows them.
#include <DefinitionCheck.h>
#include <LandmarkTable.h>
#include <ResultList.h>

#include <cstdio>
#include <tuple>

int main(int count, char** arguments) {
    if (count != 2) return std::fprintf(stderr, "usage: rows ANALYSIS.txt\n"), 2;
    for (const CheckFinding& fault : DefinitionCheck::Path(arguments[1]).findings)
        if (!fault.note) std::printf("%d:%d: %s\n", fault.line, fault.column, LPCSTR(fault.message));

    tagPOINTLAT film{};  // (0, 0) everywhere: no landmark is placed
    film.Scale = 0.1;    // mm a pixel
    for (auto [name, x, y] : {std::tuple{"S", 850, 850}, {"N", 1564, 756}, {"A", 1567, 1322}, {"B", 1480, 1709}})
        *LandmarkTable::Point(0, &film, LandmarkTable::Find(0, name)) = CPoint(x, y);

    const AnalysisSheet sheet(0, arguments[1]);
    const bool sex_known = false;
    for (const ResultRow& row : ResultList(sheet, {&film}, sex_known))
        if (row.HasResult())
            std::printf("%s %s %s %s\n", LPCSTR(row.title), LPCSTR(row.valueText), LPCSTR(row.unit), LPCSTR(row.stars));
}
