// Addition of this project: text between code page 932 and UTF-8, for hosts whose terminals, files and pictures speak
// UTF-8. The library itself converts only where it names files to the system.
#pragma once

#include <string>

#include "framework/export.h"
#include "framework/text.h"

// Undefined codes become U+30FB (the platform's own choice), a NUL ends the text. "" without the memory
// that it takes.
TOOL_API std::string Utf8FromCodePage932(const char* text);

// A character without a code of its own becomes the platform's nearest one ("e" for U+00E9). False when it has none
// either, the UTF-8 is broken, or memory lacks; *out is then "". It must not hold the text that is read.
TOOL_API bool CodePage932FromUtf8(const char* utf8, CString* out);
