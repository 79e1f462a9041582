// A drawing as the bytes of a picture, an editable drawing or a document.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "results/texts.h"
#include "tracing/canvas.h"

namespace cephtool {

enum class FileFormat { png, svg, pdf };

// By the extension of the file's name; nothing for any other.
std::optional<FileFormat> file_format(std::string_view path);

struct Sheet {
    double width_mm, height_mm;
    COLORREF paper = RGB(255, 255, 255);
    double pixels_a_mm = 0;  // of PNG pictures
};

using DrawPage = std::function<void(const Canvas&)>;

// Only a PDF has room for more than one page. Throws an Error when memory runs out or the program was built without
// what the format needs.
std::string drawn_file(FileFormat format, const Sheet& sheet, std::span<const DrawPage> pages);

// Pages as drawings in a document of HTML: below each other on a screen, one a sheet on paper. Needs no Cairo.
std::string html_file(const Sheet& sheet, std::span<const DrawPage> pages, const std::string& title, Language language);

// Tells how wide texts are before there is a sheet to draw on.
std::unique_ptr<CDC> text_measure();

}  // namespace cephtool
