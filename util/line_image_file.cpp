#include "util/line_image_file.h"

#include <limits>

namespace tool {
namespace {

constexpr std::string_view magic = "P5";
constexpr int brightest = 255;

bool is_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// Takes blanks and comments, at least one of either. A comment begins with "#" and ends with its line.
bool take_gap(std::string_view& rest) {
    const std::size_t size = rest.size();
    while (!rest.empty() && (is_space(rest[0]) || rest[0] == '#')) {
        const std::size_t end = rest[0] == '#' ? rest.find_first_of("\r\n") : 0;
        if (end == std::string_view::npos) return false;
        rest.remove_prefix(end + 1);
    }
    return rest.size() < size;
}

// Takes a whole number of 1 or more; 0 when there is none.
int take_number(std::string_view& rest) {
    std::int64_t number = 0;
    while (!rest.empty() && is_digit(rest[0])) {
        number = number * 10 + (rest[0] - '0');
        if (number > std::numeric_limits<int>::max()) return 0;
        rest.remove_prefix(1);
    }
    return static_cast<int>(number);
}

}  // namespace

std::optional<LineImageFile> line_image_file(std::string_view bytes) {
    if (!bytes.starts_with(magic)) return {};
    bytes.remove_prefix(magic.size());
    int header[3];
    for (int& number : header) {
        if (!take_gap(bytes)) return {};
        number = take_number(bytes);
        if (number == 0) return {};
    }
    const auto [width, height, maximum] = header;
    if (maximum != brightest || bytes.empty() || !is_space(bytes[0])) return {};
    bytes.remove_prefix(1);
    if (bytes.size() != static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height)) return {};
    return LineImageFile{width, height, {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}};
}

std::string file_of(LineImage image) {
    std::string bytes = std::string(magic) + "\n" + std::to_string(image.width) + " " + std::to_string(image.height) +
                        "\n" + std::to_string(brightest) + "\n";
    const std::size_t count = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    bytes.reserve(bytes.size() + count);
    return bytes.append(reinterpret_cast<const char*>(image.pixels), count);
}

}  // namespace tool
