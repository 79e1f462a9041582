#include "report/film.h"

#include <film/window.h>
#ifdef TOOL_SURFACE_PICTURES
#include <surface/png_file.h>
#endif

#include <filesystem>
#include <new>
#include <sstream>

#include "base/source.h"
#include "base/wording.h"

namespace cephtool {

namespace {

const std::string& no_film() {
    static const std::string text =
        "An X-ray is a file of at most 1 GB of one of these formats: " + tool::film_formats() + ".";
    return text;
}

#ifdef TOOL_SURFACE_PICTURES
// Whether drawings may hold the file itself: what shows it would show the same.
bool shows_itself(const tool::Film& film) {
    return film.header.format == "JPEG" || (film.header.format == "PNG" && film.bits == 8);
}

std::string png_of(const tool::Background& picture, bool grey) {
    constexpr double screen_dpi = 96;
    const int width = picture.width, height = picture.height;
    std::string bytes;
    if (grey) {
        const std::vector<std::uint8_t> greys(picture.pixels.begin(), picture.pixels.end());
        bytes = tool::grey_png_file(greys.data(), width, height, screen_dpi);
    } else {
        bytes = tool::png_file(picture.pixels.data(), width, height, width, screen_dpi);
    }
    if (bytes.empty()) throw std::bad_alloc();
    return bytes;
}
#endif

}  // namespace

Film read_film(const std::string& path) {
    std::istringstream no_input;
    Source source = read_bytes(path, no_input, {tool::film_file_limit, "1 GB", no_film().c_str(), true});
#ifdef TOOL_SURFACE_PICTURES
    tool::Film film = tool::decode_film(source.text);
    if (!film) throw source.error("the X-ray can't be read: " + film.error, no_film());
    Film shown;
    shown.picture = {film.width, film.height, tool::shown_pixels(film), std::move(film.jpeg)};
    shown.file = shows_itself(film) ? std::move(source.text) : png_of(shown.picture, !film.grey.empty());
    shown.header = std::move(film.header);
    return shown;
#else
    throw source.error("this program was built without reading pictures");
#endif
}

std::optional<Film> named_film(const Case& record) {
    if (record.image.empty()) return {};
    try {
        return read_film(image_file(record));
    } catch (Error& error) {
        if (!error.way_out.empty()) error.way_out += " ";
        error.way_out += "The case " + printable(record.file) + " names it; draw without it: --no-image.";
        throw;
    }
}

}  // namespace cephtool
