#include "framework/window.h"
#include "platform/framework/living_windows.h"

CWnd* CWnd::FromHandle(HWND wnd) {
    return tool::living_windows().find(wnd);
}
