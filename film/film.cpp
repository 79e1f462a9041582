#include "film/film.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <new>

#include "film/decoders.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

[[maybe_unused]] Film not_built(const char* format, const char* library) {
    return without_film(std::string("This is a ") + format + " picture, and this build does without " + library + ".");
}

std::string format_of(std::string_view bytes) {
    const auto begins = [&](std::string_view with) { return bytes.starts_with(with); };
    using namespace std::string_view_literals;
    if (begins("\xFF\xD8\xFF")) return "JPEG";
    if (begins("\x89PNG\r\n\x1A\n")) return "PNG";
    if (begins("II*\0"sv) || begins("MM\0*"sv) || begins("II+\0"sv) || begins("MM\0+"sv)) return "TIFF";
    return begins_as_dicom(bytes) ? "DICOM" : "";
}

Film decoded(std::string_view bytes, [[maybe_unused]] std::size_t pixel_limit) {
    const std::string format = format_of(bytes);
    if (format == "JPEG") {
#ifdef TOOL_FILM_JPEG
        return decode_jpeg(bytes, pixel_limit);
#else
        return not_built("JPEG", "libjpeg");
#endif
    }
    if (format == "PNG") {
#ifdef TOOL_FILM_PNG
        return decode_png(bytes, pixel_limit);
#else
        return not_built("PNG", "libpng");
#endif
    }
    if (format == "TIFF") {
#ifdef TOOL_FILM_TIFF
        return decode_tiff(bytes, pixel_limit);
#else
        return not_built("TIFF", "libtiff");
#endif
    }
    if (format == "DICOM") return decode_dicom(bytes, pixel_limit);
    return without_film("This is none of: " + film_formats() + ".");
}

struct FileBytes {
    std::string bytes, error;
};

// The file, or no more than `most` bytes of it.
FileBytes file_bytes(const std::string& path, std::size_t most = film_file_limit) {
    const fs::path file(std::u8string(path.begin(), path.end()));
    std::error_code failure;
    const auto size = fs::file_size(file, failure);
    if (failure) return {{}, path + " can't be read."};
    if (size > film_file_limit) return {{}, path + " is too large."};
    std::string bytes(std::min(static_cast<std::size_t>(size), most), '\0');
    std::ifstream in(file, std::ios::binary);
    if (!in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) return {{}, path + " can't be read."};
    return {std::move(bytes), {}};
}

}  // namespace

double GreyTable::operator()(double value) const {
    const double last = static_cast<double>(entries.size()) - 1;
    return entries[static_cast<std::size_t>(std::clamp(value - first, 0.0, last))];
}

Film decode_film(std::string_view bytes, std::size_t pixel_limit) try {
    return decoded(bytes, pixel_limit);
} catch (const std::bad_alloc&) {
    return without_film("There is not enough memory for the picture.");
}

Film read_film(const std::string& path) try {
    const FileBytes file = file_bytes(path);
    return file.error.empty() ? decode_film(file.bytes) : without_film(file.error);
} catch (const std::bad_alloc&) {
    return without_film("There is not enough memory for " + path + ".");
}

ReadHeader read_film_header(const std::string& path) try {
    constexpr std::size_t usual_header = 1 << 16;  // longer ones are found in the whole file
    FileBytes file = file_bytes(path, usual_header);
    const bool is_dicom = begins_as_dicom(file.bytes);
    const auto dicom_header = [&] { return decode_dicom(file.bytes, film_pixel_limit, DicomPart::header); };
    Film film;
    if (is_dicom) film = dicom_header();
    if (!film) {
        file = file_bytes(path);
        if (!file.error.empty()) return {.error = file.error};
        film = is_dicom ? dicom_header() : decode_film(file.bytes);
    }
    return {std::move(film.header), film.width, film.height, std::move(film.error)};
} catch (const std::bad_alloc&) {
    return {.error = "There is not enough memory for " + path + "."};
}

std::string film_format(const std::string& path) {
    const fs::path file(std::u8string(path.begin(), path.end()));
    std::error_code failure;
    if (!fs::is_regular_file(file, failure)) return {};  // opening a pipe waits for who writes to it
    std::string begin(512, '\0');
    std::ifstream in(file, std::ios::binary);
    in.read(begin.data(), static_cast<std::streamsize>(begin.size()));
    begin.resize(static_cast<std::size_t>(in.gcount()));
    return format_of(begin);
}

std::string film_formats() {
    std::string formats;
#ifdef TOOL_FILM_JPEG
    formats += "JPEG, ";
#endif
#ifdef TOOL_FILM_PNG
    formats += "PNG, ";
#endif
#ifdef TOOL_FILM_TIFF
    formats += "TIFF, ";
#endif
    return formats + "DICOM";
}

bool film_size_allowed(std::uint64_t width, std::uint64_t height, std::size_t pixel_limit) {
    return width > 0 && height > 0 && width <= film_side_limit && height <= film_side_limit &&
           width * height <= pixel_limit;
}

std::string film_size_error(std::uint64_t width, std::uint64_t height) {
    return "A picture of " + std::to_string(width) + " x " + std::to_string(height) + " pixels can't be used.";
}

}  // namespace tool
