// draw_constructions SAMPLES FOLDER: draws the pictures of docs/formula_language.md into the folder. What they mark is
// computed by the engine, over the landmarks that are drawn or over the sample cases.
#include <surface/svg_surface.h>
#include <surface/whole_file.h>

#include <cstdio>
#include <exception>

#include "panel.h"
#include "pictures.h"

int main(int count, char** arguments) {
    using constructions::Panel;
    if (count != 3) return std::fprintf(stderr, "usage: draw_constructions SAMPLES FOLDER\n"), 2;
    try {
        for (const constructions::Picture& picture : constructions::pictures()) {
            const int width = picture.panels * Panel::width * Panel::device_pixels;
            const int height = (Panel::height + Panel::caption_height) * Panel::device_pixels;
            tool::SvgSurface surface(width, height, 96.0 * Panel::device_pixels);
            CBrush paper(RGB(255, 255, 255));
            const RECT all = {0, 0, width + 1, height + 1};
            surface.FillRect(&all, &paper);
            picture.draw(surface, {arguments[1]});
            const std::string path = std::string(arguments[2]) + "/formula-" + picture.name + ".svg";
            const std::string error = tool::write_whole_file(path, surface.svg());
            if (!error.empty()) return std::fprintf(stderr, "%s\n", error.c_str()), 1;
        }
    } catch (const std::exception& problem) {
        return std::fprintf(stderr, "%s\n", problem.what()), 1;
    }
}
