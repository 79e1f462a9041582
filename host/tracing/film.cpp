#include "host/tracing/film.h"

#include <filesystem>
#include <sstream>

#include "host/path.h"
#include "host/source.h"

namespace cephtool {

Film read_film(const std::string& path) {
    std::istringstream no_input;
    Source source = read_bytes(path, no_input);
    constexpr const char* way_out =
        "The X-ray is a JPEG or PNG file. Name another with --image FILE, or draw without it: --no-image.";
#ifdef TOOL_SURFACE_PICTURES
    tool::Background picture = tool::decode_background(source.text);
    if (!picture) throw source.error("the X-ray can't be read: " + picture.error, way_out);
    return {std::move(source.text), std::move(picture)};
#else
    throw source.error("this program was built without reading pictures", way_out);
#endif
}

std::optional<Film> named_film(const Case& record) {
    if (record.image.empty()) return {};
    return read_film(utf8_from_path(path_from_utf8(record.file).parent_path() / path_from_utf8(record.image)));
}

}  // namespace cephtool
