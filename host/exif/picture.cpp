#include "host/exif/picture.h"

#include <CodePage.h>
#include <Exif.h>

#include <charconv>
#include <cmath>
#include <filesystem>
#include <memory>

#include "base/numbers.h"
#include "base/path.h"
#include "base/source.h"
#include "base/system.h"
#include "base/utf8.h"
#include "base/wording.h"
#include "host/exif/exif_names.h"

namespace cephtool {
namespace {

namespace fs = std::filesystem;

constexpr double mm_per_inch = 25.4;

// Cameras write ASCII, editors UTF-8, old Japanese software code page 932. Control characters but the line feed and
// the tab become visible.
std::string text_of(const char* bytes) {
    std::string text = first_malformed(bytes) == std::string::npos ? bytes : Utf8FromCodePage932(bytes);
    text = text.substr(0, text.find_last_not_of(" \t\n") + 1);
    std::string safe;
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t end = std::min(rest.find_first_of("\n\t"), rest.size());
        safe += printable(rest.substr(0, end)) + std::string(rest.substr(end, 1));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return safe;
}

// A number as people write it: at most `decimals` digits behind the point, without zeros at the end.
std::string plain(double value, int decimals) {
    std::string text = with_decimals(value, decimals);
    if (text.find('.') == std::string::npos || text.find('e') != std::string::npos) return text;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text;
}

PictureFact text_fact(const char* key, const char* label, const std::string& text) {
    std::string shown = text;
    for (char& c : shown)
        if (c == '\n' || c == '\t') c = ' ';
    return {key, label, {}, text, shown};
}

// Nothing is told by a number that is 0 or not finite.
PictureFact number_fact(const char* key, const char* label, double number, const std::string& shown) {
    if (number == 0 || !std::isfinite(number)) return {key, label, {}, "", ""};
    // The record holds floats: what is meant is the shortest text of one, 5.6 and not 5.599999904632568.
    char digits[32];
    const char* const end = std::to_chars(digits, digits + sizeof digits, static_cast<float>(number)).ptr;
    return {key, label, number_from(std::string_view(digits, static_cast<std::size_t>(end - digits))), "", shown};
}

PictureFact measure_fact(const char* key, const char* label, double number, int decimals, const std::string& unit) {
    return number_fact(key, label, number, plain(number, decimals) + unit);
}

// Codes without a name are shown as they are; 0 is unknown.
PictureFact name_fact(const char* key, const char* label, int code, const std::string& name) {
    const std::string text = code == 0 ? "" : name.empty() ? "code " + std::to_string(code) : name;
    return {key, label, {}, text, text};
}

// "1/125 s"; from 0.3 s on cameras count in seconds.
std::string exposure_text(double seconds) {
    if (!(seconds > 0)) return {};
    return seconds < 0.3 ? "1/" + with_decimals(1 / seconds, 0) + " s" : plain(seconds, 1) + " s";
}

// "2024:02:29 13:45:07" with the day as everywhere in this program.
std::string day_and_time(const char* bytes) {
    std::string text = text_of(bytes);
    if (text.size() == 19 && text[4] == ':' && text[7] == ':') text[4] = text[7] = '-';
    return text.find_first_of("123456789") == std::string::npos ? "" : text;
}

std::string version_text(const char* digits) {
    const std::string text = text_of(digits);
    if (text.size() != 4 || text.find_first_not_of("0123456789") != std::string::npos) return text;
    return (text[0] == '0' ? text.substr(1, 1) : text.substr(0, 2)) + "." + text.substr(2);
}

std::string joined_with_comma(const std::string& first, const std::string& second) {
    return first + (first.empty() || second.empty() ? "" : ", ") + second;
}

std::string frame_text(const tag_ExifInfo& info) {
    if (info.Process == 0) return {};
    return std::to_string(info.Width) + " x " + std::to_string(info.Height) + " pixels, " +
           (info.IsColor ? "three colours, " : "") + process_name(info.Process);
}

std::string camera_text(const tag_ExifInfo& info) {
    const std::string make = text_of(info.Make), model = text_of(info.Model);
    return model.starts_with(make) ? model : joined_with_comma(make, model);
}

// As a lens on 35 mm film, whose frame is 36 mm wide, would show as much.
double focal_length_on_film(const tag_ExifInfo& info) {
    return info.CcdWidth > 0 ? info.FocalLength * 36 / (info.CcdWidth * mm_per_inch) : 0;
}

std::string focal_length_text(const tag_ExifInfo& info) {
    const double on_film = focal_length_on_film(info);
    return plain(info.FocalLength, 1) + " mm" +
           (on_film > 0 ? ", as " + plain(on_film, 0) + " mm on 35 mm film" : std::string());
}

// An infinite distance reads as -1.
PictureFact distance_fact(double metres) {
    if (metres < 0) return {"subject_distance_m", "Distance", {}, "infinite", "infinite"};
    return measure_fact("subject_distance_m", "Distance", metres, 2, " m");
}

// Without a unit resolutions count by the inch (EXIF 2.3, 4.6.4 A).
double dots_per_inch(float resolution, float unit) {
    return unit == 0 ? resolution : std::round(double{resolution} / unit * 100) / 100;
}

std::string resolution_text(double x, double y) {
    return plain(x, 0) + (y == 0 || x == y ? "" : " x " + plain(y, 0)) + " dots per inch";
}

std::vector<PictureFact> facts_of(const tag_ExifInfo& info) {
    const double x_dpi = dots_per_inch(info.XResolution, info.ResolutionUnit);
    const double y_dpi = dots_per_inch(info.YResolution, info.ResolutionUnit);
    std::vector<PictureFact> facts = {
        number_fact("width_px", "Picture", info.Width, frame_text(info)),
        number_fact("height_px", "", info.Height, ""),
        text_fact("process", "", process_name(info.Process)),
        text_fact("make", "Camera", text_of(info.Make)),
        text_fact("model", "", text_of(info.Model)),
        text_fact("taken", "Taken", day_and_time(info.DateTimeOriginal)),
        name_fact("orientation", "Orientation", info.Orientation, orientation_name(info.Orientation)),
        number_fact("exposure_s", "Exposure", info.ExposureTime, exposure_text(info.ExposureTime)),
        measure_fact("f_number", "Aperture", info.FNumber, 1, ""),
        measure_fact("iso", "ISO", info.IsoSpeed, 0, ""),
        measure_fact("exposure_bias_ev", "Correction", info.ExposureBias, 2, " EV"),
        name_fact("program", "Program", info.ExposureProgram, program_name(info.ExposureProgram)),
        name_fact("metering", "Metering", info.MeteringMode, metering_name(info.MeteringMode)),
        name_fact("light_source", "Light", info.LightSource, light_source_name(info.LightSource)),
        text_fact("flash", "Flash", info.FlashUsed ? "fired" : ""),
        number_fact("focal_length_mm", "Focal length", info.FocalLength, focal_length_text(info)),
        number_fact("focal_length_35mm_mm", "", focal_length_on_film(info), ""),
        measure_fact("sensor_width_mm", "Sensor", info.CcdWidth * mm_per_inch, 1, " mm wide"),
        distance_fact(info.SubjectDistance),
        measure_fact("brightness_ev", "Brightness", info.Brightness, 2, " EV"),
        number_fact("x_resolution_dpi", "Resolution", x_dpi, resolution_text(x_dpi, y_dpi)),
        number_fact("y_resolution_dpi", "", y_dpi, ""),
        measure_fact("compressed_bits_per_pixel", "Compression", info.CompressedBitsPerPixel, 0, " bits a pixel"),
        text_fact("comment", "Comment", text_of(info.Comments)),
        text_fact("exif_version", "EXIF", version_text(info.ExifVersion)),
        measure_fact("thumbnail_bytes", "Thumbnail", info.ThumbnailSize, 0, " bytes (--thumbnail FILE writes it)"),
    };
    for (PictureFact& fact : facts) {
        if (std::string_view(fact.key) == "make") fact.shown = camera_text(info);
        if (std::string_view(fact.key) == "f_number" && fact.is_told()) fact.shown = "f/" + fact.shown;
    }
    return facts;
}

struct Closed {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};

// The stream of a file in which a picture may stand.
std::unique_ptr<std::FILE, Closed> opened(const Source& source) {
    std::error_code failure;
    const auto status = fs::status(path_from_utf8(source.name), failure);
    if (!fs::exists(status)) throw source.error("there is no such file", "Check the name and the folder.");
    if (fs::is_directory(status)) throw source.error("this is a folder", "--recursive reads the pictures in it.");
    std::unique_ptr<std::FILE, Closed> stream(opened_to_read(path_from_utf8(source.name)));
    if (!stream) throw source.error("the file can't be opened", "Check that you may read it.");
    return stream;
}

bool decode(Source& source, std::istream& standard_input, CExif& reader) {
    if (source.name != "-") return reader.DecodeExif(opened(source).get());
    source = read_bytes("-", standard_input);
    return reader.DecodeExif(reinterpret_cast<const unsigned char*>(source.text.data()), source.text.size());
}

// The picture for which the block's second directory is there (EXIF 2.3, 4.5.4), where the reader has passed it over.
std::string lost_thumbnail(const CExif& reader, const tag_ExifSection& section) {
    constexpr std::size_t byte_order_mark_at = 8, first_directory = 8;
    if (section.Type != 0xE1 || section.Size <= static_cast<int>(byte_order_mark_at)) return {};
    const unsigned char* const block = section.Data + byte_order_mark_at;
    const std::size_t size = static_cast<std::size_t>(section.Size) - byte_order_mark_at;
    const auto u16 = [&](std::size_t at) {
        return at + 2 > size ? 0 : static_cast<std::size_t>(reader.Get16u(block + at));
    };
    const auto u32 = [&](std::size_t at) {
        return at + 4 > size ? 0 : static_cast<std::size_t>(reader.Get32u(block + at));
    };
    const std::size_t link = first_directory + 2 + 12 * u16(first_directory), directory = u32(link);
    if (directory == 0) return {};
    std::size_t offset = 0, bytes = 0;
    for (std::size_t i = 0, at = directory + 2; i < u16(directory) && at + 12 <= size; ++i, at += 12) {
        const std::size_t value = u16(at + 2) == 3 ? u16(at + 8) : u32(at + 8);
        if (u16(at) == 0x0201) offset = value;
        if (u16(at) == 0x0202) bytes = value;
    }
    if (offset == 0 || bytes == 0) return {};
    return "the thumbnail of " + std::to_string(bytes) + " bytes is not found: " +
           (offset + bytes > size
                ? "it ends behind the EXIF data"
                : "of the link to it only the first 16 bits are read, which are 0 in big-endian files");
}

std::string lost_thumbnail(const CExif& reader) {
    std::string why;
    for (int i = 0; i < reader.SectionsRead && !reader.Info->ThumbnailPointer && why.empty(); ++i)
        why = lost_thumbnail(reader, reader.Sections[i]);
    return why;
}

}  // namespace

Picture read_picture(const std::string& path, std::istream& standard_input) {
    Source source{path, {}};
    CExif reader;
    const bool decoded = decode(source, standard_input, reader);
    const std::string reason = reader.LastError;
    if (!decoded && reason.empty())
        throw source.error("this is no JPEG picture", "Only JPEG pictures have a header to read.");

    const tag_ExifInfo& info = *reader.Info;
    Picture picture{printable(source.name), info.IsExif, facts_of(info), {}, {}, lost_thumbnail(reader), {}};
    if (!decoded) {
        picture.damage = source.error("the picture is damaged: " + reason, "Copy it from the camera once more.");
        picture.note = "the picture is damaged, this stands before the damage: " + reason;
    } else if (!reason.empty()) {
        picture.note = "not all of the EXIF data could be read: " + reason;
    }
    if (!picture.lost_thumbnail.empty()) picture.note += (picture.note.empty() ? "" : "; ") + picture.lost_thumbnail;
    if (info.ThumbnailPointer) {
        picture.thumbnail.assign(reinterpret_cast<const char*>(info.ThumbnailPointer), info.ThumbnailSize);
    }
    return picture;
}

}  // namespace cephtool
