#include "framework/system.h"

#include <atomic>
#include <mutex>

#include "platform/framework/caller_buffer.h"
#include "platform/system.h"

namespace {

std::mutex screen_guard;
CRect screen(0, 0, 1920, 1080);
std::atomic<LocalClock> clock_set = nullptr;

tool::LocalTime time_of_clock() {
    const LocalClock clock = clock_set.load();
    if (!clock) return tool::system_time();
    const SYSTEMTIME now = clock();
    return {now.wYear, now.wMonth, now.wDay, now.wDayOfWeek, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

}  // namespace

DWORD GetModuleFileNameA(void*, LPSTR path, DWORD size) {
    const std::string name = tool::module_file_name();
    const auto copied = static_cast<DWORD>(tool::copy_cut(name, path, size));
    return copied < name.size() ? size : copied;
}

void SetModuleFileNameA(const char* path) {
    tool::set_module_file_name(path ? std::optional<std::string>(path) : std::nullopt);
}

int GetSystemMetrics(int index) {
    const std::lock_guard lock(screen_guard);
    switch (index) {
        case SM_XVIRTUALSCREEN:
            return screen.left;
        case SM_YVIRTUALSCREEN:
            return screen.top;
        case SM_CXVIRTUALSCREEN:
            return screen.Width();
        case SM_CYVIRTUALSCREEN:
            return screen.Height();
        default:
            return 0;
    }
}

void SetVirtualScreen(const RECT& rectangle) {
    const std::lock_guard lock(screen_guard);
    screen = rectangle;
}

DWORD GetLastError() {
    return tool::last_error();
}

void SetLastError(DWORD code) {
    tool::set_last_error(code);
}

CString GetErrorText(DWORD code) {
    return CString(std::string_view(tool::error_text(code)));
}

void GetLocalTime(SYSTEMTIME* now) {
    const tool::LocalTime time = tool::local_time();
    const auto word = [](int value) { return static_cast<WORD>(value); };
    *now = {word(time.year), word(time.month),  word(time.weekday), word(time.day),
            word(time.hour), word(time.minute), word(time.second),  word(time.millisecond)};
}

void SetLocalClock(LocalClock clock) {
    clock_set = clock;
    tool::set_local_clock(clock ? time_of_clock : nullptr);
}
