// The windows that live, by handle.
#pragma once

#include "framework/window.h"
#include "platform/framework/living_handles.h"

namespace tool {

LivingHandles<HWND, CWnd>& living_windows();

}  // namespace tool
