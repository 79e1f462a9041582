// A line image in a file: a picture that is made one, or a PGM file that is one.
#pragma once

#include <string>
#include <vector>

namespace cephtool {

struct LineImage {
    int width = 0, height = 0;
    std::vector<unsigned char> pixels;  // as CTools takes them: 255 line, 0 paper
};

// Which pixels of a picture are lines: those darker than `threshold` (1 to 255), or, on a film, those that are not.
struct LineThreshold {
    int grey = 128;
    bool bright = false;
};

bool is_line_image_file(const std::string& path);  // by its end, .pgm
bool is_png_file(const std::string& path);         // .png

// Throw an Error when the file can't be read or written. A picture shows the lines as they were found: dark on white,
// or bright on black.
LineImage read_line_image(const std::string& path, LineThreshold threshold);
void write_line_image(const LineImage& image, const std::string& path, bool bright);

}  // namespace cephtool
