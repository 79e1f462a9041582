#include "framework/scalars.h"
#include "platform/code_page.h"
#include "platform/system.h"
#include "platform/win32/handle.h"
#include "platform/win32/names.h"

namespace tool {

std::string program_path() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) return {};
        if (length < path.size()) return win32::code_page_name({path.data(), length}).value_or("");
        path.resize(2 * path.size());
    }
}

std::uint32_t last_error() {
    return GetLastError();
}

void set_last_error(std::uint32_t code) {
    SetLastError(code);
}

bool tells_absence(std::uint32_t code) {
    return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND || code == ERROR_INVALID_NAME;
}

std::string error_text(std::uint32_t code) {
    wchar_t text[1024];
    constexpr DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    std::wstring_view line(text, FormatMessageW(flags, nullptr, code, 0, text, 1024, nullptr));
    while (!line.empty() && (line.back() == L'\n' || line.back() == L'\r')) line.remove_suffix(1);
    return win32::nearest_code_page_text(line);
}

LocalTime system_time() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wDayOfWeek, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

void write_to_standard_error(std::string_view utf8_line) {
    const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    const std::string line = std::string(utf8_line) + "\r\n";
    DWORD mode = 0, written = 0;
    if (GetConsoleMode(error, &mode)) {
        const std::wstring shown = win32::wide_from_utf8(line);
        WriteConsoleW(error, shown.data(), static_cast<DWORD>(shown.size()), &written, nullptr);
    } else {
        win32::write_all(error, line.data(), line.size());
    }
}

}  // namespace tool
