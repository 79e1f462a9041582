#include "host/tracing/film.h"

#include <filesystem>
#include <sstream>

#include "host/case/case_files.h"
#include "host/source.h"
#include "host/text_width.h"

namespace cephtool {

namespace {

constexpr const char* no_film = "The X-ray is a JPEG or PNG file of at most 1 GB.";
constexpr InputLimit film_limit{1'000'000'000, "1 GB", no_film, true};

}  // namespace

Film read_film(const std::string& path) {
    std::istringstream no_input;
    Source source = read_bytes(path, no_input, film_limit);
#ifdef TOOL_SURFACE_PICTURES
    tool::Background picture = tool::decode_background(source.text);
    if (!picture) throw source.error("the X-ray can't be read: " + picture.error, no_film);
    return {std::move(source.text), std::move(picture)};
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
