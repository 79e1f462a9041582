#include "host/line_picture.h"

#include <Tools.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <new>

#include "base/error.h"
#include "base/library_name.h"
#include "base/path.h"
#include "base/wording.h"
#include "host/output.h"
#ifdef TOOL_SURFACE_PICTURES
#include <film/window.h>
#include <surface/png_file.h>
#endif

namespace cephtool {
namespace {

constexpr unsigned char line = 255, paper = 0;

Error error_in(const std::string& path, const std::string& message, const std::string& way_out) {
    Error error(ExitCode::bad_input, message, way_out);
    error.file = printable(path);
    return error;
}

void check_input(const std::string& path) {
    std::error_code failure;
    const auto status = std::filesystem::status(path_from_utf8(path), failure);
    if (!std::filesystem::exists(status))
        throw error_in(path, "there is no such file", "Check the name and the folder.");
    if (std::filesystem::is_directory(status)) throw error_in(path, "this is a folder", "Give a picture in it.");
    if (!std::filesystem::is_regular_file(status))
        throw error_in(path, "this is a device or a pipe", "Give a picture that is a file.");
}

CString name_of_file(const std::string& path) {
    const std::optional<CString> name = library_name(path);
    if (!name) {
        throw error_in(path, "the name is outside code page 932",
                       "Use a path that is in plain or Japanese letters throughout.");
    }
    return *name;
}

LineImage read_pgm(const std::string& path) {
    const CString name = name_of_file(path);
    const auto fail = [&] {
        throw error_in(path, "this is no line image, or a part of it is missing",
                       "Give a binary PGM file with 255 as its maximum; docs/line_images.md has the format.");
    };
    LineImage image;
    // A large file of another kind is not read whole to find that out.
    std::ifstream file(path_from_utf8(path), std::ios::binary);
    if (file.get() != 'P' || file.get() != '5') fail();
    if (!CTools::SetBuff(name, nullptr, 0, &image.width, &image.height)) fail();
    image.pixels.resize(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
    if (!CTools::SetBuff(name, image.pixels.data(), static_cast<unsigned long>(image.pixels.size()), &image.width,
                         &image.height))
        fail();
    const auto other =
        std::ranges::find_if(image.pixels, [](unsigned char pixel) { return pixel != line && pixel != paper; });
    if (other != image.pixels.end()) {
        const auto at = static_cast<std::size_t>(other - image.pixels.begin()), width = std::size_t(image.width);
        throw error_in(path,
                       "the pixel at x " + std::to_string(at % width) + ", y " + std::to_string(at / width) + " is " +
                           std::to_string(*other) + "; a line image holds only 0 (paper) and 255 (line)",
                       "Save a grey picture as PNG: then --threshold says what is a line.");
    }
    return image;
}

// As CTools::WriteBuff has it, under names that code page 932 can't write as well.
std::string pgm_of(const LineImage& image) {
    return "P5\n" + std::to_string(image.width) + " " + std::to_string(image.height) + "\n255\n" +
           std::string(image.pixels.begin(), image.pixels.end());
}

#ifdef TOOL_SURFACE_PICTURES

LineImage read_picture(const std::string& path, LineThreshold threshold) {
    const tool::Film picture = tool::read_film(path);
    if (!picture) {
        throw error_in(path, "the picture can't be read: " + printable(picture.error),
                       "Give a picture (" + tool::film_formats() + "), or a line image that ends in .pgm.");
    }
    const std::vector<std::uint32_t> pixels = tool::shown_pixels(picture);
    // What is transparent counts as paper, whichever that is.
    constexpr int bytes_a_pixel = 3;
    std::vector<unsigned char> blue_green_red;
    blue_green_red.reserve(pixels.size() * bytes_a_pixel);
    for (const std::uint32_t pixel : pixels) {
        const std::uint32_t behind = threshold.bright ? 0 : 255 - (pixel >> 24);
        for (const int shift : {0, 8, 16})
            blue_green_red.push_back(static_cast<unsigned char>(std::min(255u, (pixel >> shift & 255) + behind)));
    }
    LineImage image{picture.width, picture.height, std::vector<unsigned char>(pixels.size())};
    CTools::MakeLineImg(blue_green_red.data(), bytes_a_pixel, picture.width * bytes_a_pixel, image.pixels.data(),
                        image.width, image.height, threshold.grey, threshold.bright);
    return image;
}

std::string png_of(const LineImage& image, bool bright) {
    constexpr std::uint32_t white = 0xFFFFFF, black = 0;
    constexpr double screen_dpi = 96;
    std::vector<std::uint32_t> pixels(image.pixels.size());
    std::ranges::transform(image.pixels, pixels.begin(),
                           [&](unsigned char pixel) { return (pixel == line) == bright ? white : black; });
    std::string bytes = tool::png_file(pixels.data(), image.width, image.height, image.width, screen_dpi);
    if (bytes.empty()) throw std::bad_alloc();
    return bytes;
}

#else

constexpr const char* no_pictures = "this program was built without pictures";
constexpr const char* pgm_instead = "Use a line image that ends in .pgm.";

LineImage read_picture(const std::string& path, LineThreshold) {
    throw error_in(path, no_pictures, pgm_instead);
}

std::string png_of(const LineImage&, bool) {
    throw Error(ExitCode::bad_input, no_pictures, pgm_instead);
}

#endif

}  // namespace

bool is_line_image_file(const std::string& path) {
    return lower_case(path).ends_with(".pgm");
}

bool is_png_file(const std::string& path) {
    return lower_case(path).ends_with(".png");
}

LineImage read_line_image(const std::string& path, LineThreshold threshold) {
    check_input(path);
    return is_line_image_file(path) ? read_pgm(path) : read_picture(path, threshold);
}

void write_line_image(const LineImage& image, const std::string& path, bool bright) {
    write_result(is_png_file(path) ? png_of(image, bright) : pgm_of(image), path, std::cout);
}

}  // namespace cephtool
