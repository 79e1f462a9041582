// The first picture of a DICOM file, out of whatever it is packed in.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "film/dicom_data_set.h"

namespace tool {

// Who unpacks it.
enum class DicomPacking { none, rle, dcmtk, jpeg2000 };

struct TransferSyntax {
    const char* uid;
    const char* compression;  // "JPEG-LS lossless"
    DicomPacking packing = DicomPacking::none;
    DicomCoding coding = {};
    bool deflated = false;  // the data set as a whole
};

// Nothing for one that is not known.
const TransferSyntax* transfer_syntax(std::string_view uid);

struct DicomPicture {
    int rows = 0, columns = 0, samples = 1, frames = 1;
    int allocated = 8, stored = 8, high_bit = 7;  // bits of a sample
    bool is_signed = false;
    bool planes = false;      // of colours one behind the other
    std::string photometric;  // "MONOCHROME2"; unpacking may make RGB of others

    std::size_t frame_bytes() const {
        return static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns) * static_cast<std::size_t>(samples) *
               static_cast<std::size_t>(allocated / 8);
    }
};

// Takes the memory for the samples, of frame_bytes(), when it is called.
using DicomRoom = std::function<std::uint8_t*()>;

// Writes the first picture's samples to `to`, which has room for frame_bytes(), or to `room`, in the machine's byte
// order. Gives what is wrong, "" when nothing is. Each takes the fragments that stand in the file, two at least, the
// first of which is their table.
std::string unpack_rle(const std::vector<std::string_view>& fragments, DicomPicture& picture, std::uint8_t* to);
std::string unpack_by_dcmtk(const TransferSyntax& syntax, const std::vector<std::string_view>& fragments,
                            DicomPicture& picture, std::uint8_t* to);
std::string unpack_jpeg2000(const std::vector<std::string_view>& fragments, DicomPicture& picture,
                            const DicomRoom& room);

// A text of a DICOM header, whose character sets it names ("\\ISO 2022 IR 87"), in UTF-8. What has no place there, or
// all that is neither ASCII nor katakana in a build without iconv, becomes "?".
std::string utf8_of_dicom(const std::string& text, const std::string& character_sets);

}  // namespace tool
