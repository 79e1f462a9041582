#include "util/window_placement.h"

#include <algorithm>
#include <cstdint>

#include "framework/application.h"
#include "framework/system.h"
#include "framework/window.h"

namespace tool {
namespace {

constexpr const char* section = "ENV";

int stored(const std::string& key) {
    return static_cast<int>(AfxGetApp()->GetProfileInt(section, key.c_str(), 0));
}

void store(const std::string& key, std::int64_t value) {
    AfxGetApp()->WriteProfileInt(section, key.c_str(),
                                 static_cast<int>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX)));
}

RECT virtual_screen() {
    const int left = GetSystemMetrics(SM_XVIRTUALSCREEN), top = GetSystemMetrics(SM_YVIRTUALSCREEN);
    return {left, top, left + GetSystemMetrics(SM_CXVIRTUALSCREEN), top + GetSystemMetrics(SM_CYVIRTUALSCREEN)};
}

// One axis of the clamp. 64 bits: stored values may be anything.
std::int64_t clamped(std::int64_t start, std::int64_t size, std::int64_t screen_start, std::int64_t screen_size) {
    start = std::max(start, screen_start);
    return start + size > screen_size ? std::max<std::int64_t>(screen_size - size, 0) : start;
}

}  // namespace

RECT clamped_to_screen(const RECT& screen, int left, int top, int width, int height) {
    const std::int64_t x = clamped(left, width, screen.left, std::int64_t{screen.right} - screen.left);
    const std::int64_t y = clamped(top, height, screen.top, std::int64_t{screen.bottom} - screen.top);
    const auto edge = [](std::int64_t value) { return static_cast<LONG>(std::min<std::int64_t>(value, INT32_MAX)); };
    return {edge(x), edge(y), edge(x + width), edge(y + height)};
}

void restore_placement(CWnd& window, const std::string& prefix) {
    const int width = stored(prefix + "POS_CX"), height = stored(prefix + "POS_CY");
    const bool maximised = stored(prefix + "MAXWINDOW") != 0;
    if (width < 1 || height < 1) {
        if (maximised) window.ShowWindow(SW_SHOWMAXIMIZED);
        return;
    }
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    window.GetWindowPlacement(&placement);
    placement.rcNormalPosition =
        clamped_to_screen(virtual_screen(), stored(prefix + "POS_X"), stored(prefix + "POS_Y"), width, height);
    placement.showCmd = maximised ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    window.SetWindowPlacement(&placement);
}

void store_placement(const CWnd& window, const std::string& prefix) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    window.GetWindowPlacement(&placement);
    const RECT& normal = placement.rcNormalPosition;
    store(prefix + "MAXWINDOW", placement.showCmd == SW_SHOWMAXIMIZED ? 1 : 0);
    store(prefix + "POS_X", normal.left);
    store(prefix + "POS_Y", normal.top);
    store(prefix + "POS_CX", std::int64_t{normal.right} - normal.left);
    store(prefix + "POS_CY", std::int64_t{normal.bottom} - normal.top);
}

}  // namespace tool
