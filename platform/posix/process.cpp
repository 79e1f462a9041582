#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <ctime>

#include "platform/code_page.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/names.h"
#include "platform/system.h"

namespace tool {
namespace {

thread_local std::uint32_t last_error_of_thread = 0;

// The two forms of strerror_r: one returns the text, the other a result and fills the buffer.
[[maybe_unused]] const char* text_of(const char* text, const char*) {
    return text;
}
[[maybe_unused]] const char* text_of(int result, const char* buffer) {
    return result == 0 ? buffer : "";
}

// With "?" for what code page 932 can't write.
std::string nearest_code_page_text(std::string_view utf8) {
    const auto is_inside = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    std::string text;
    while (!utf8.empty()) {
        const auto next = std::find_if_not(utf8.begin() + 1, utf8.end(), is_inside);
        const auto length = static_cast<std::size_t>(next - utf8.begin());
        text += code_page_from_utf8(utf8.substr(0, length)).value_or("?");
        utf8.remove_prefix(length);
    }
    return text;
}

}  // namespace

std::string program_path() {
    std::array<char, PATH_MAX> path;
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    if (length <= 0) return {};
    return posix::code_page_name({path.data(), static_cast<std::size_t>(length)}).value_or("");
}

std::uint32_t last_error() {
    return last_error_of_thread;
}

void set_last_error(std::uint32_t code) {
    last_error_of_thread = code;
}

bool tells_absence(std::uint32_t code) {
    return code == ENOENT || code == ENOTDIR || code == ENAMETOOLONG;
}

std::string error_text(std::uint32_t code) {
    std::array<char, 256> buffer{};
    const char* const text = text_of(strerror_r(static_cast<int>(code), buffer.data(), buffer.size()), buffer.data());
    return nearest_code_page_text(text);
}

LocalTime system_time() {
    std::timespec now{};
    std::timespec_get(&now, TIME_UTC);
    std::tm local{};
    localtime_r(&now.tv_sec, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_wday,
            local.tm_hour,        local.tm_min,     local.tm_sec,  static_cast<int>(now.tv_nsec / 1'000'000)};
}

void write_to_standard_error(std::string_view utf8_line) {
    const std::string line = std::string(utf8_line) + '\n';
    posix::write_all(STDERR_FILENO, line.data(), line.size());
}

}  // namespace tool
