// The one export macro: marks what a host may link. Everything else in the library is hidden.
#pragma once

#if defined(_WIN32)
#if defined(TOOL_BUILDING)
#define TOOL_API __declspec(dllexport)
#else
#define TOOL_API __declspec(dllimport)
#endif
#else
#define TOOL_API __attribute__((visibility("default")))
#endif
