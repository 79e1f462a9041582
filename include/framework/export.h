// The one export macro: marks what a host may link. Everything else in the library is hidden.
#pragma once

#if defined(_WIN32)
#if defined(TOOL_BUILDING)
#define TOOL_API __declspec(dllexport)
#elif defined(TOOL_WITHOUT_DLL)  // linked with the library's own objects, as its tests are
#define TOOL_API
#else
#define TOOL_API __declspec(dllimport)
#endif
#else
#define TOOL_API __attribute__((visibility("default")))
#endif
