// Names of the codes that EXIF 2.3 (CIPA DC-008) gives them; "" for what it does not know.
#pragma once

#include <string>

namespace cephtool {

// How a picture is brought upright, from its orientation 1 to 8.
std::string orientation_name(int code);
std::string program_name(int code);
std::string metering_name(int code);
std::string light_source_name(int code);
// Of a frame's marker, 0xC0 to 0xCF (ITU-T T.81, table B.1).
std::string process_name(int marker);

}  // namespace cephtool
