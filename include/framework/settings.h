// Settings ("ini") files. Section and key are found without regard to case; the first section of a name is the only one
// searched, and the first key in it wins. Blanks round key and value are dropped, then one pair of surrounding quotes.
// A file name without a folder stands beside the running program. On Windows the functions are the system's own, which
// look for such a file in the system's folder.
#pragma once

#include "framework/export.h"
#include "framework/scalars.h"

#if !defined(_WIN32)

// The value, or `defaultValue`, cut to size - 1 bytes and a NUL; returns the bytes copied without the NUL. A null key
// gives the section's keys, a null section the names of all sections: each ended by NUL, the list by one more; a list
// that does not fit ends in two NULs and gives size - 2.
TOOL_API DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR defaultValue, LPSTR buffer, DWORD size,
                                        LPCSTR file);

// The value's leading decimal number; a negative one comes back as its 32 bits. 0 when the value holds no number, the
// default when it is missing or empty.
TOOL_API UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, int defaultValue, LPCSTR file);

// A null value removes the key, a null key the section. Everything else in the file stays as it is, and a failure
// (result 0) leaves the file untouched.
TOOL_API BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR file);

#endif
