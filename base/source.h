// The bytes of one input and the name under which messages speak of it.
#pragma once

#include <istream>
#include <string>

#include "base/error.h"

namespace cephtool {

// Inputs beyond this are no cases; they are refused before they are read.
inline constexpr std::size_t largest_input = std::size_t{64} << 20;

// What an input may hold; `shown` is the size in words, `way_out` says what a larger one may be.
struct InputLimit {
    std::size_t bytes;
    const char *shown, *way_out;
    bool plain_files_only = false;  // for what is asked to be there, not sent
};
inline constexpr InputLimit case_limit{
    largest_input, "64 MiB", "A case is a list of landmarks, not an image. Give the file that holds the coordinates."};

struct Source {
    std::string name;
    std::string text;

    // An error at byte `offset` of the text, which is turned into line and column.
    Error error_at(std::size_t offset, const std::string& message, std::string way_out = {}) const;
    // An error of the input as a whole.
    Error error(const std::string& message, std::string way_out = {}) const;
};

// An error of a stream that broke before its end.
Error not_read(const Source& source);

// The bytes of the file `path`, or of `standard_input` when it is "-". Throws an Error when they can't be read or are
// more than the limit.
Source read_bytes(const std::string& path, std::istream& standard_input, const InputLimit& limit = case_limit);

// Drops a byte order mark. Throws an Error when the text is empty, no UTF-8 or holds a NUL.
Source checked_text(Source source);

}  // namespace cephtool
