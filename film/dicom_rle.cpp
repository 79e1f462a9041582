// Run-length encoding as DICOM PS3.5 annex G has it. DCMTK's decoder (3.6.7) reads beyond damaged films.
#include "film/dicom_pixels.h"

#include <algorithm>
#include <bit>

namespace tool {
namespace {

// Unpacks a segment into every `step`-th byte from `to`, `count` of them. Whether it held as many.
bool unpack_segment(std::string_view packed, std::uint8_t* to, std::size_t step, std::size_t count) {
    while (count > 0 && !packed.empty()) {
        const int code = static_cast<signed char>(packed.front());
        packed.remove_prefix(1);
        if (code == -128) continue;
        const bool repeated = code < 0;
        const std::size_t length = static_cast<std::size_t>(repeated ? 1 - code : code + 1);
        if (packed.size() < (repeated ? 1 : length)) return false;
        const std::size_t taken = std::min(length, count);  // the last run may be padded
        for (std::size_t i = 0; i < taken; ++i, to += step)
            *to = static_cast<std::uint8_t>(repeated ? packed.front() : packed[i]);
        packed.remove_prefix(repeated ? 1 : length);
        count -= taken;
    }
    return count == 0;
}

}  // namespace

std::string unpack_rle(const std::vector<std::string_view>& fragments, DicomPicture& picture, std::uint8_t* to) {
    constexpr std::size_t header = 64, most_segments = 15;
    constexpr DicomCoding little{};
    const std::string_view frame = fragments[1];  // one a picture
    const std::size_t bytes = static_cast<std::size_t>(picture.allocated) / 8;
    const std::size_t samples = static_cast<std::size_t>(picture.samples), segments = samples * bytes;
    if (frame.size() < header || little.u32(frame.data()) != segments || segments > most_segments)
        return "it has not a segment for each of the " + std::to_string(segments) + " bytes of a pixel";
    const std::size_t pixels = static_cast<std::size_t>(picture.rows) * static_cast<std::size_t>(picture.columns);
    for (std::size_t segment = 0; segment < segments; ++segment) {
        const auto offset = [&](std::size_t i) { return std::size_t{little.u32(frame.data() + 4 + 4 * i)}; };
        const std::size_t from = offset(segment), end = segment + 1 < segments ? offset(segment + 1) : frame.size();
        if (from < header || from > end || end > frame.size())
            return "segment " + std::to_string(segment) + " lies outside its " + std::to_string(frame.size()) +
                   " bytes";
        // A sample's high byte comes first.
        const std::size_t sample = segment / bytes, low = bytes - 1 - segment % bytes;
        const std::size_t byte = std::endian::native == std::endian::little ? low : segment % bytes;
        if (!unpack_segment(frame.substr(from, end - from), to + sample * bytes + byte, segments, pixels))
            return "segment " + std::to_string(segment) + " ends early";
    }
    picture.planes = false;
    return {};
}

}  // namespace tool
