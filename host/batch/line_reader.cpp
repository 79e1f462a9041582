#include "host/batch/line_reader.h"

#include <algorithm>

#include "base/source.h"

namespace cephtool {

bool LineReader::fill() {
    constexpr std::size_t block_size = std::size_t{1} << 16;
    block_.resize(block_size);
    // What is there at once, so that a slow pipe is read line by line; else one byte is waited for.
    in_.peek();
    auto count = in_.eof() ? 0 : in_.readsome(block_.data(), static_cast<std::streamsize>(block_size));
    if (count == 0 && in_.get(block_[0])) count = 1;
    if (in_.bad()) throw not_read({name_, {}});
    unread_ = std::string_view(block_).substr(0, static_cast<std::size_t>(std::max<std::streamsize>(count, 0)));
    bytes_read_ += unread_.size();
    return !unread_.empty();
}

void LineReader::check_size(const std::string& text) const {
    if (text.size() > largest_input) {
        throw Source{name_, {}}.error("a case larger than " + std::to_string(largest_input >> 20) + " MiB",
                                      "A case is a list of landmarks, not an image.");
    }
}

bool LineReader::next(std::string& line) {
    line.clear();
    bool any = false, whole = false;
    while (!whole && (!unread_.empty() || fill())) {
        any = true;
        const std::size_t end = unread_.find('\n');
        whole = end != std::string_view::npos;
        line += unread_.substr(0, end);
        unread_.remove_prefix(whole ? end + 1 : unread_.size());
        check_size(line);
    }
    if (line.ends_with('\r')) line.pop_back();
    return any;
}

void LineReader::rest(std::string& text) {
    do {
        text += unread_;
        check_size(text);
    } while (fill());
}

}  // namespace cephtool
