// record_face CASE.csv FILE.pgm: the tracing of a case on a Cairo surface, as a line image.
#include <cstdio>
#include <vector>

#include "Tools.h"
#include "face_view.h"
#include "surface/picture_surface.h"

int main(int count, char** arguments) {
    tagPOINTLAT face{};
    if (count != 3 || !example::read_face(arguments[1], &face)) {
        return std::fprintf(stderr, "usage: record_face CASE.csv FILE.pgm\n"), 2;
    }
    const auto surface = tool::PictureSurface::create(face_width, face_height, tool::PictureSurface::Look::smooth);
    example::draw_face(*surface, face, face_view);
    std::vector<unsigned char> image(face_width * face_height);
    // Smoothed lines of one pixel spread over two.
    return !CTools::MakeLineImg(surface.get(), image.data(), face_width, face_height, 200, 0, arguments[2]);
}
