// The running program, the screen, the calling thread's last error and the clock.
#pragma once

#include "framework/export.h"
#include "framework/plane.h"
#include "framework/scalars.h"
#include "framework/text.h"

// Full path of the running program in code page 932, cut to size - 1 bytes and a NUL; returns the bytes copied (`size`
// when it had to be cut). `module` is null.
TOOL_API DWORD GetModuleFileNameA(void* module, LPSTR path, DWORD size);
// Addition, for interpreters and tests: the path to give instead; null goes back to the program's own.
TOOL_API void SetModuleFileNameA(const char* path);

enum { SM_XVIRTUALSCREEN = 76, SM_YVIRTUALSCREEN = 77, SM_CXVIRTUALSCREEN = 78, SM_CYVIRTUALSCREEN = 79 };

// One of the four above, in pixels; 0 for any other index.
TOOL_API int GetSystemMetrics(int index);
// Addition: the in-memory screen, 1920 x 1080 at (0, 0) until set.
TOOL_API void SetVirtualScreen(const RECT& screen);

TOOL_API DWORD GetLastError();
TOOL_API void SetLastError(DWORD code);
// Addition: the system's text for an error code, in code page 932.
TOOL_API CString GetErrorText(DWORD code);

struct SYSTEMTIME {
    WORD wYear, wMonth, wDayOfWeek, wDay, wHour, wMinute, wSecond, wMilliseconds;
};

TOOL_API void GetLocalTime(SYSTEMTIME* now);
// Addition: the clock that GetLocalTime asks, and with it every date of today; null goes back to the system's.
using LocalClock = SYSTEMTIME (*)();
TOOL_API void SetLocalClock(LocalClock clock);
