#include "report/film.h"

#include <film/window.h>
#ifdef TOOL_SURFACE_PICTURES
#include <surface/png_file.h>
#endif

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

#endif

Source film_source(const std::string& path) {
    std::istringstream no_input;
    return read_bytes(path, no_input, {tool::film_file_limit, "1 GB", no_film().c_str(), true});
}

tool::Film decoded(const Source& source) {
    tool::Film film = tool::decode_film(source.text);
    if (!film) throw source.error("the X-ray can't be read: " + film.error, no_film());
    return film;
}

}  // namespace

tool::Film stored_film(const std::string& path) {
    return decoded(film_source(path));
}

std::string film_png([[maybe_unused]] std::span<const std::uint32_t> pixels, [[maybe_unused]] const tool::Film& film,
                     [[maybe_unused]] double dpi) {
#ifdef TOOL_SURFACE_PICTURES
    std::string bytes;
    if (film.grey.empty()) {
        bytes = tool::png_file(pixels.data(), film.width, film.height, film.width, dpi);
    } else {
        const std::vector<std::uint8_t> greys(pixels.begin(), pixels.end());
        bytes = tool::grey_png_file(greys.data(), film.width, film.height, dpi);
    }
    if (bytes.empty()) throw std::bad_alloc();
    return bytes;
#else
    throw Error(ExitCode::bad_command_line, "this program was built without writing PNG");
#endif
}

Film read_film(const std::string& path) {
    Source source = film_source(path);
#ifdef TOOL_SURFACE_PICTURES
    tool::Film film = decoded(source);
    constexpr double screen_dpi = 96;
    Film shown;
    shown.doubts = std::move(film.header.doubts);
    shown.picture = {film.width, film.height, tool::shown_pixels(film), std::move(film.jpeg)};
    shown.file = shows_itself(film) ? std::move(source.text) : film_png(shown.picture.pixels, film, screen_dpi);
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
