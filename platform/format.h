// printf's conversions into a text of any length.
#pragma once

#include <cstdarg>
#include <string>

namespace tool {

// d i u x X o c s p e E f F g G with flags, width, precision and "*"; sizes h, hh, l (32 bits, as LONG), ll, I64, I32,
// z, I. Doubles are exact with ties to even and "." in every locale. A null text prints "(null)". An unknown conversion
// prints its letter and takes no argument; an unfinished one at the end prints nothing. %n writes nothing.
std::string formatted(const char* format, std::va_list arguments);

}  // namespace tool
