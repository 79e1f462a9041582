#include "film/dicom_data_set.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "platform/char_conversion.h"

namespace tool {
namespace {

constexpr DicomTag item = 0xFFFEE000, item_end = 0xFFFEE00D, sequence_end = 0xFFFEE0DD, pixels = 0x7FE00010;
constexpr std::uint32_t no_length = 0xFFFFFFFF;

struct Header {
    DicomTag tag;
    std::string_view type;  // "US"; empty where none is named
    std::uint32_t length;
    std::size_t at, size;  // of the header itself
};

bool has_long_length(std::string_view type) {
    for (const std::string_view one : {"OB", "OD", "OF", "OL", "OV", "OW", "SQ", "SV", "UC", "UN", "UR", "UT", "UV"})
        if (type == one) return true;
    return false;
}

// Goes from element to element of bytes that may be anything.
class Walk {
 public:
    Walk(std::string_view bytes, std::size_t from, DicomCoding coding, bool with_pixels = true)
        : bytes_(bytes), coding_(coding), at_(from), with_pixels_(with_pixels) {}

    // The next header, whose value is not stepped over yet; nothing at the end or when there is an error.
    std::optional<Header> header() {
        if (!error_.empty() || at_ == bytes_.size()) return {};
        const std::string_view rest = bytes_.substr(at_);
        if (rest.size() < 8) return failed("the file ends within the header of an element");
        Header found{.tag = static_cast<DicomTag>(coding_.u16(rest.data()) << 16 | coding_.u16(rest.data() + 2)),
                     .type = {},
                     .length = 0,
                     .at = at_,
                     .size = 8};
        if (!coding_.explicit_types || found.tag >> 16 == item >> 16) {
            found.length = coding_.u32(rest.data() + 4);
        } else {
            found.type = rest.substr(4, 2);
            if (!has_long_length(found.type)) {
                found.length = coding_.u16(rest.data() + 6);
            } else {
                if (rest.size() < 12) return failed("the file ends within the header of " + text_of(found.tag));
                found.length = coding_.u32(rest.data() + 8);
                found.size = 12;
            }
        }
        if (found.tag == pixels && !with_pixels_) found.length = 0;
        if (found.length != no_length && found.length > rest.size() - found.size)
            return failed(text_of(found.tag) + " is to have " + std::to_string(found.length) +
                          " bytes, and there are " + std::to_string(rest.size() - found.size));
        at_ += found.size;
        return found;
    }

    // The value behind a header, and past it.
    std::string_view value(const Header& header) {
        const std::size_t from = at_;
        if (header.length == no_length) {
            const std::size_t end = past_delimiter(header);
            return bytes_.substr(from, end - from);
        }
        at_ += header.length;
        return bytes_.substr(from, header.length);
    }

    DicomCoding coding_behind(const Header& header) const {
        // A sequence of unknown type is written without types wherever it stands.
        return header.type == "UN" && header.length == no_length ? DicomCoding{false, false} : coding_;
    }

    const std::string& error() const { return error_; }

 private:
    std::nullopt_t failed(const std::string& what) {
        if (error_.empty()) error_ = what + ", at byte " + std::to_string(at_);
        return std::nullopt;
    }

    // Steps over all that is open, counting instead of descending: files can nest as deep as they are long. Gives where
    // the value ended.
    std::size_t past_delimiter(const Header& opened) {
        const DicomCoding outer = coding_;
        coding_ = coding_behind(opened);
        std::size_t depth = 1, without_types = opened.type == "UN" ? 1 : 0;
        while (const auto found = header()) {
            if (found->tag == item_end || found->tag == sequence_end) {
                if (depth == without_types) {
                    coding_ = outer;
                    without_types = 0;
                }
                if (--depth == 0) {
                    coding_ = outer;
                    return found->at;
                }
            } else if (found->length != no_length) {
                at_ += found->length;
            } else {
                ++depth;
                if (found->type == "UN" && without_types == 0) {
                    coding_ = coding_behind(*found);
                    without_types = depth;
                }
            }
        }
        failed(text_of(opened.tag) + " of byte " + std::to_string(opened.at) + " has no end");
        coding_ = outer;
        return at_;
    }

    std::string_view bytes_;
    DicomCoding coding_;
    std::size_t at_;
    bool with_pixels_;
    std::string error_;
};

}  // namespace

std::string text_of(DicomTag tag) {
    char text[12];
    std::snprintf(text, sizeof text, "(%04X,%04X)", tag >> 16, tag & 0xFFFF);
    return text;
}

std::uint16_t DicomCoding::u16(const char* at) const {
    const auto byte = [&](int i) { return static_cast<unsigned char>(at[i]); };
    return static_cast<std::uint16_t>(big_endian ? byte(0) << 8 | byte(1) : byte(1) << 8 | byte(0));
}

std::uint32_t DicomCoding::u32(const char* at) const {
    const std::uint32_t first = u16(at), second = u16(at + 2);
    return big_endian ? first << 16 | second : second << 16 | first;
}

DicomDataSet::DicomDataSet(std::string_view bytes, std::size_t from, DicomCoding coding, bool (*is_wanted)(DicomTag),
                           bool with_pixels) {
    Walk walk(bytes, from, coding, with_pixels);
    while (const auto header = walk.header()) {
        const DicomCoding inner = walk.coding_behind(*header);
        const std::string_view value = walk.value(*header);
        if (is_wanted(header->tag))
            elements_.try_emplace(header->tag,
                                  DicomElement{header->tag, header->at, value, header->length == no_length, inner});
        if (header->tag == pixels) break;
    }
    error_ = walk.error();
}

const DicomElement* DicomDataSet::find(DicomTag tag) const {
    const auto found = elements_.find(tag);
    return found == elements_.end() ? nullptr : &found->second;
}

std::string DicomDataSet::text(DicomTag tag) const {
    const DicomElement* const element = find(tag);
    if (!element) return {};
    constexpr std::string_view padding(" \0\t", 3);
    std::string_view value = element->value;
    value = value.substr(0, value.find_last_not_of(padding) + 1);
    const std::size_t from = value.find_first_not_of(padding);
    return from == std::string_view::npos ? std::string() : std::string(value.substr(from));
}

std::optional<std::uint16_t> DicomDataSet::number(DicomTag tag) const {
    const DicomElement* const element = find(tag);
    if (!element || element->value.size() < 2) return {};
    return element->coding.u16(element->value.data());
}

std::vector<double> DicomDataSet::decimals(DicomTag tag) const {
    const std::string values = text(tag);
    std::vector<double> numbers;
    for (std::string_view rest = values; !rest.empty();) {
        std::string_view one = rest.substr(0, rest.find('\\'));
        rest.remove_prefix(std::min(one.size() + 1, rest.size()));
        while (one.starts_with(' ') || one.starts_with('+')) one.remove_prefix(1);
        while (one.ends_with(' ')) one.remove_suffix(1);
        double number = 0;
        const auto [end, failure] = from_chars(one.data(), one.data() + one.size(), number);
        if (failure != std::errc() || end != one.data() + one.size() || !std::isfinite(number)) return {};
        numbers.push_back(number);
    }
    return numbers;
}

std::optional<double> DicomDataSet::decimal(DicomTag tag) const {
    const std::vector<double> numbers = decimals(tag);
    return numbers.empty() ? std::nullopt : std::optional(numbers.front());
}

std::vector<std::string_view> dicom_items(const DicomElement& element, std::string* error) {
    std::vector<std::string_view> items;
    Walk walk(element.value, 0, element.coding);
    while (const auto header = walk.header()) {
        const std::string_view value = walk.value(*header);
        if (header->tag == item) items.push_back(value);
    }
    if (error) *error = walk.error();
    return items;
}

std::optional<DicomDataSet> DicomDataSet::first_item(DicomTag sequence, bool (*is_wanted)(DicomTag)) const {
    const DicomElement* const element = find(sequence);
    if (!element) return {};
    const std::vector<std::string_view> items = dicom_items(*element, nullptr);
    if (items.empty()) return {};
    return DicomDataSet(items.front(), 0, element->coding, is_wanted);
}

}  // namespace tool
