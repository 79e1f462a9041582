// What Windows has of its own: the screen, the last error, the local time.
#include <mutex>

#include "framework/system.h"
#include "platform/system.h"

namespace {

std::mutex screen_guard;
CRect screen(0, 0, 1920, 1080);

}  // namespace

int GetSystemMetrics(int index) {
    const std::lock_guard lock(screen_guard);
    switch (index) {
        case SM_XVIRTUALSCREEN: return screen.left;
        case SM_YVIRTUALSCREEN: return screen.top;
        case SM_CXVIRTUALSCREEN: return screen.Width();
        case SM_CYVIRTUALSCREEN: return screen.Height();
        default: return 0;
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

void GetLocalTime(SYSTEMTIME* now) {
    const tool::LocalTime time = tool::local_time();
    const auto word = [](int value) { return static_cast<WORD>(value); };
    *now = {word(time.year), word(time.month),  word(time.weekday), word(time.day),
            word(time.hour), word(time.minute), word(time.second),  word(time.millisecond)};
}
