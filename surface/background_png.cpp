#include <cstring>

#include "surface/cairo_handles.h"
#include "surface/picture_format.h"

namespace tool {

namespace {

cairo_status_t take_bytes(void* rest, unsigned char* target, unsigned int count) {
    auto& bytes = *static_cast<std::string_view*>(rest);
    if (bytes.size() < count) return CAIRO_STATUS_READ_ERROR;
    std::memcpy(target, bytes.data(), count);
    bytes.remove_prefix(count);
    return CAIRO_STATUS_SUCCESS;
}

std::uint32_t big_endian(std::string_view four) {
    std::uint32_t value = 0;
    for (const char byte : four) value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

}  // namespace

Background decode_png(std::string_view bytes, std::size_t pixel_limit) {
    // Signature, length and name of the header chunk, width, height. Looked at before anything of that size is made.
    constexpr std::size_t size_at = 16;
    if (bytes.size() < size_at + 8 || bytes.substr(12, 4) != "IHDR")
        return without_picture("The PNG picture has no header.");
    const std::uint32_t width = big_endian(bytes.substr(size_at, 4)), height = big_endian(bytes.substr(size_at + 4, 4));
    if (!background_size_allowed(width, height, pixel_limit)) return without_picture(size_error(width, height));
    const CairoSurface surface(cairo_image_surface_create_from_png_stream(take_bytes, &bytes));
    const cairo_status_t status = cairo_surface_status(surface.get());
    if (status != CAIRO_STATUS_SUCCESS) return without_picture("The PNG picture is damaged or ends early.");
    const cairo_format_t format = cairo_image_surface_get_format(surface.get());
    if (format != CAIRO_FORMAT_ARGB32 && format != CAIRO_FORMAT_RGB24)
        return without_picture("The PNG picture's pixels are of a kind that can't be used.");
    Background picture;
    const std::uint32_t opaque = format == CAIRO_FORMAT_RGB24 ? 0xFF000000u : 0;
    const unsigned char* const data = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    picture.pixels.resize(std::size_t{width} * height);
    for (std::size_t y = 0; y < height; ++y) {
        std::uint32_t* const row = picture.pixels.data() + y * width;
        std::memcpy(row, data + y * static_cast<std::size_t>(stride), std::size_t{width} * 4);
        for (std::size_t x = 0; x < width; ++x) row[x] |= opaque;
    }
    picture.width = static_cast<int>(width), picture.height = static_cast<int>(height);
    return picture;
}

}  // namespace tool
