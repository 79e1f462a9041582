// The elements of a DICOM file. Only its own level is read: what lies in sequences is stepped over, however deep it
// goes, and read when it is asked for.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// Group, then element: 0x00280010.
using DicomTag = std::uint32_t;

std::string text_of(DicomTag tag);  // "(0028,0010)"

// How a data set is written.
struct DicomCoding {
    bool explicit_types = true;  // each element names the type of its value
    bool big_endian = false;

    std::uint16_t u16(const char* at) const;
    std::uint32_t u32(const char* at) const;
};

struct DicomElement {
    DicomTag tag = 0;
    std::size_t at = 0;      // of its header in the bytes
    std::string_view value;  // of one without a length: all up to its delimiter
    bool no_length = false;  // a sequence, or pixels in fragments
    DicomCoding coding;      // of the value
};

class DicomDataSet {
 public:
    // Reads from `from` up to the pixels, or to the end. Of elements that come twice the first counts. Only elements
    // that `is_wanted` are kept, so that a file can't make millions of them. Without pixels these have no value, and
    // whether all of them are there is not looked at.
    DicomDataSet(std::string_view bytes, std::size_t from, DicomCoding coding, bool (*is_wanted)(DicomTag),
                 bool with_pixels = true);

    const std::string& error() const { return error_; }  // with the place; "" when all could be read
    const DicomElement* find(DicomTag tag) const;

    // Values without the spaces and NULs round them; nothing where the element is missing or of another kind.
    std::string text(DicomTag tag) const;
    std::optional<std::uint16_t> number(DicomTag tag) const;  // US
    std::vector<double> decimals(DicomTag tag) const;         // DS, IS: all, none when one is no number
    std::optional<double> decimal(DicomTag tag) const;        // the first of them
    // Nothing when the sequence is missing or has no item.
    std::optional<DicomDataSet> first_item(DicomTag sequence, bool (*is_wanted)(DicomTag)) const;

 private:
    std::map<DicomTag, DicomElement> elements_;
    std::string error_;
};

// The parts that an element without a length holds, in their order: items of a sequence, fragments of pixels.
std::vector<std::string_view> dicom_items(const DicomElement& element, std::string* error);

}  // namespace tool
