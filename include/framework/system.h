// The running program, the screen, the calling thread's last error and the clock.
#pragma once

#include "framework/export.h"
#include "framework/plane.h"
#include "framework/scalars.h"
#include "framework/text.h"

// Addition, for interpreters and tests: the path to take for that of the running program; null goes back to its own.
TOOL_API void SetModuleFileNameA(const char* path);
// Addition: that path, or the running program's own, in code page 932, cut to size - 1 bytes and a NUL; returns the
// bytes copied (`size` when it had to be cut).
TOOL_API DWORD GetProgramFileNameA(LPSTR path, DWORD size);

// Addition: the system's text for an error code, in code page 932.
TOOL_API CString GetErrorText(DWORD code);

#if defined(_WIN32)

#include <concepts>
#include <cstddef>

// The running program's path as above; the system's function of this name still serves every other module.
template <std::same_as<std::nullptr_t> Program>
DWORD GetModuleFileNameA(Program, LPSTR path, DWORD size) {
    return GetProgramFileNameA(path, size);
}

#else

// `module` is null.
inline DWORD GetModuleFileNameA([[maybe_unused]] void* module, LPSTR path, DWORD size) {
    return GetProgramFileNameA(path, size);
}

enum { SM_XVIRTUALSCREEN = 76, SM_YVIRTUALSCREEN = 77, SM_CXVIRTUALSCREEN = 78, SM_CYVIRTUALSCREEN = 79 };

// One of the four above, in pixels; 0 for any other index.
TOOL_API int GetSystemMetrics(int index);
// Addition: the in-memory screen, 1920 x 1080 at (0, 0) until set.
TOOL_API void SetVirtualScreen(const RECT& screen);

TOOL_API DWORD GetLastError();
TOOL_API void SetLastError(DWORD code);

struct SYSTEMTIME {
    WORD wYear, wMonth, wDayOfWeek, wDay, wHour, wMinute, wSecond, wMilliseconds;
};

// By the clock set below.
TOOL_API void GetLocalTime(SYSTEMTIME* now);

#endif

// Addition: the clock that every date of today comes from, in any thread; null goes back to the system's.
using LocalClock = SYSTEMTIME (*)();
TOOL_API void SetLocalClock(LocalClock clock);
