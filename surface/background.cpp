#include "surface/background.h"

#include <new>

#include "surface/picture_format.h"
#include "surface/whole_file.h"

namespace tool {

Background decode_background(std::string_view bytes, std::size_t pixel_limit) try {
    switch (picture_format(bytes)) {
        case PictureFormat::jpeg: return decode_jpeg(bytes, pixel_limit);
        case PictureFormat::png: return decode_png(bytes, pixel_limit);
        default: return without_picture("This is neither a JPEG nor a PNG picture.");
    }
} catch (const std::bad_alloc&) {
    return without_picture("There is not enough memory for the picture.");
}

Background read_background(const std::string& path) {
    constexpr std::size_t largest_file = 1'000'000'000;
    std::string bytes;
    const std::string error = read_whole_file(path, largest_file, &bytes);
    return error.empty() ? decode_background(bytes) : without_picture(error);
}

bool background_size_allowed(std::uint64_t width, std::uint64_t height, std::size_t pixel_limit) {
    return width > 0 && height > 0 && width <= background_side_limit && height <= background_side_limit &&
           width * height <= pixel_limit;
}

std::string size_error(std::uint64_t width, std::uint64_t height) {
    return "A picture of " + std::to_string(width) + " x " + std::to_string(height) + " pixels can't be used.";
}

}  // namespace tool
