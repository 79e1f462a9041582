// A stream in lines of bounded length.
#pragma once

#include <istream>
#include <string>
#include <string_view>

namespace cephtool {

class LineReader {
 public:
    // `name` is what an Error speaks of.
    LineReader(std::istream& in, std::string name) : in_(in), name_(std::move(name)) {}

    // The next line without its end (LF or CR LF); false at the end. `line` keeps its memory. Throws an Error for one
    // longer than any case.
    bool next(std::string& line);
    // What has not been read yet, appended. Throws an Error when it is more than any case.
    void rest(std::string& text);

    std::size_t bytes_read() const { return bytes_read_; }

 private:
    bool fill();
    void check_size(const std::string& text) const;

    std::istream& in_;
    std::string name_;
    std::string block_;
    std::string_view unread_;  // of the block
    std::size_t bytes_read_ = 0;
};

}  // namespace cephtool
