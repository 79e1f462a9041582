#include <AnalysisSheet.h>
#include <LandmarkTable.h>

#include <cstdio>
#include <tuple>

int main(int, char** arguments) {
    const AnalysisSheet steiner(0, arguments[1]);  // the path of anaitem/CalcForm/Steiner.txt
    tagPOINTLAT film{};
    film.Scale = 0.1;  // mm a pixel
    for (auto [name, x, y] : {std::tuple{"S", 850, 850}, {"N", 1564, 756}, {"A", 1559, 1322}, {"B", 1522, 1715}})
        *LandmarkTable::Point(0, &film, LandmarkTable::Find(0, name)) = CPoint(x, y);
    for (int item = 1; item < 4; ++item) {  // 0 is the heading above them
        const SheetRow row = steiner.Evaluate(item, {&film});
        std::printf("%s %.1f, norm %g +- %g\n", LPCSTR(steiner.GetItem(item).name), row.value, row.mean, row.sd);
    }
}
