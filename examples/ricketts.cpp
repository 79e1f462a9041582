// ricketts FOLDER CASE.csv m|f AGE OUT.svg: all of Ricketts with the norms of the patient's age, and what was measured.
#include <AnalysisFolder.h>
#include <MeasuredAnalysis.h>
#include <Tools.h>
#include <surface/svg_surface.h>
#include <surface/whole_file.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

int main(int count, char** arguments) {
    if (count != 6) return std::fprintf(stderr, "usage: ricketts FOLDER CASE.csv m|f AGE OUT.svg\n"), 2;
    const tool::AnalysisFolder folder(arguments[1]);
    const tool::Analysis* const ricketts = folder.ricketts();
    if (!ricketts) return std::fprintf(stderr, "%s holds no CalcForm/Ricketts.txt\n", arguments[1]), 1;

    tool::Subject patient;
    patient.sex = *arguments[3] == 'm' ? tool::Sex::male : tool::Sex::female;
    patient.age_years = std::atof(arguments[4]);
    std::ifstream csv(arguments[2]);
    for (std::string line; std::getline(csv, line);) {
        char name[32];
        double x, y;
        std::sscanf(line.c_str(), "# scale_mm_per_px=%lf", &patient.mm_per_pixel);
        if (std::sscanf(line.c_str(), "%31[^,#],%lf,%lf", name, &x, &y) == 3)
            patient.landmarks.push_back({name, {x, y}});
    }
    const auto measured = tool::measure_all(*ricketts, patient);
    if (!measured) return std::fprintf(stderr, "%s\n", measured.reason().c_str()), 1;

    tool::SvgSurface drawing(2400, 2400);
    const auto pixel = [](tool::FilmPoint p) { return CPoint(static_cast<int>(p.x), static_cast<int>(p.y)); };
    for (const tool::MeasuredItem& item : measured->items) {
        if (!item.has_result()) continue;
        std::printf("%s %s %s (%s) %s\n", item.item->name.c_str(), item.value_text.c_str(), item.item->unit.c_str(),
                    item.mean_text.c_str(), item.stars.c_str());
        drawing.begin_layer(item.item->name);
        for (const tool::MeasuredShape& shape : item.shapes)
            for (const auto& [from, to] : tool::segments_of(shape))
                CTools::Line_Make2(&drawing, pixel(from), pixel(to), 1.0, CPoint(0, 0), 2, RGB(0, 90, 160), PS_SOLID,
                                   0);
        drawing.end_layer();
    }
    const std::string error = tool::write_whole_file(arguments[5], drawing.svg());
    if (!error.empty()) return std::fprintf(stderr, "%s\n", error.c_str()), 1;
}
