// X-rays and photographs as their files store them: JPEG, PNG, TIFF and DICOM, told apart by their content and read
// from bytes that may be anything.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "film/film_header.h"

namespace tool {

// Which greys a person is to see: those within `width` of values round `centre`, from black to white.
struct GreyWindow {
    enum class Shape { linear, linear_exact, sigmoid };  // as DICOM defines them, PS3.3 C.11.2.1.2 and 3

    double centre = 0, width = 1;
    Shape shape = Shape::linear;
};

// A table of DICOM: what a value becomes. Values below the first and above the last become what those become.
struct GreyTable {
    int first = 0;                       // the value of the first entry
    int bits = 16;                       // of an entry
    std::vector<std::uint16_t> entries;  // none: there is no such table

    double operator()(double value) const;
};

// What grey samples mean. A sample becomes a stored value, that a value of the device (through `modality`, else slope
// and intercept), and that a brightness (through a window or `voi`).
struct GreyRule {
    bool white_is_low = false;        // the lowest brightness is white: MONOCHROME1, MinIsWhite
    int lowest = 0;                   // the stored value of sample 0; below 0 where the file's samples are signed
    double slope = 1, intercept = 0;  // values of the device
    GreyTable modality, voi;
    std::vector<GreyWindow> windows;  // that the file proposes
};

// Fails until it holds pixels. They come as the file stores them, rows from the top: an orientation noted in the file
// is not applied, as landmarks are counted in stored pixels.
struct Film {
    int width = 0, height = 0;
    int bits = 8;                       // of a sample, 1 to 16; samples of colour are brought to 8
    std::vector<std::uint16_t> grey;    // below 2^bits; either these or `colour` are there
    std::vector<std::uint32_t> colour;  // 0xAARRGGBB, colours multiplied by alpha
    GreyRule rule;
    FilmHeader header;
    std::string jpeg;   // the file itself where it is a JPEG picture that a page may take as it is
    std::string error;  // one sentence, and where in the file, when there is no film

    explicit operator bool() const { return width > 0; }
};

inline constexpr std::size_t film_pixel_limit = 100'000'000;  // a radiograph has 5 to 30 million
inline constexpr int film_side_limit = 32'767;                // of the surfaces it is shown on
inline constexpr std::size_t film_file_limit = 1'000'000'000;

// Never throws. A file that ends early is refused: half a radiograph must not be measured on. No memory is taken for
// more pixels than the limit, whatever the file says.
Film decode_film(std::string_view bytes, std::size_t pixel_limit = film_pixel_limit);
Film read_film(const std::string& path);  // the path in UTF-8

// The header alone, else what is wrong with the file. The pixels of DICOM films are neither read nor unpacked, so that
// it can come of films that can't be; then they may have no size.
struct ReadHeader {
    FilmHeader header = {};
    int width = 0, height = 0;
    std::string error = {};
};
ReadHeader read_film_header(const std::string& path);

// What a file begins as, "JPEG", "PNG", "TIFF" or "DICOM", whether or not this build reads it; "" when it is none of
// them or can't be read.
std::string film_format(const std::string& path);

// The formats that this build reads, "JPEG, PNG, TIFF, DICOM".
std::string film_formats();

}  // namespace tool
