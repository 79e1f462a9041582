// draw FILE.png: a soft-tissue profile and the E-line, on a picture.
#include <Tools.h>
#include <surface/picture_surface.h>
#include <surface/whole_file.h>

#include <cstdio>

int main(int count, char** arguments) {
    if (count != 2) return std::fprintf(stderr, "usage: draw FILE.png\n"), 2;
    const auto picture = tool::PictureSurface::create(640, 800, tool::PictureSurface::Look::smooth);
    tagPOINT profile[] = {{400, 40},  {440, 140}, {430, 200}, {520, 330}, {450, 370}, {470, 420},
                          {440, 455}, {460, 500}, {430, 545}, {455, 620}, {400, 690}, {330, 700}};
    CTools::Draw_SPLine(picture.get(), CPoint(0, 0), 1.0, profile, 12, RGB(0, 0, 0), 3, 0, PS_SOLID, 0);
    CTools::Line_Make2(picture.get(), CPoint(525, 330), CPoint(453, 640), 1.0, CPoint(0, 0), 1, RGB(200, 0, 0), PS_DASH,
                       0);
    const std::string error = tool::write_whole_file(arguments[1], picture->png());
    if (!error.empty()) return std::fprintf(stderr, "%s\n", error.c_str()), 1;
}
