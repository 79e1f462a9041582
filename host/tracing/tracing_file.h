// A tracing as the bytes of a picture, a drawing or a page.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/tracing/film.h"
#include "host/tracing/page.h"
#include "host/tracing/tracing_style.h"

namespace cephtool {

enum class TracingFormat { png, svg, pdf };

// By the extension of the file's name; nothing for any other.
std::optional<TracingFormat> tracing_format(std::string_view path);

struct TracingPaper {
    Page page;
    const TracingStyle& style;
    const Film* film = nullptr;
    double pixels_a_mm = 0;  // of PNG pictures
    bool with_ruler = false;
};

// Labels that found no room are noted in `notes`. Throws an Error when memory runs out or the program was built without
// what the format needs.
std::string tracing_file(TracingFormat format, const Tracing& tracing, const TracingPaper& paper,
                         std::vector<std::string>& notes);

}  // namespace cephtool
