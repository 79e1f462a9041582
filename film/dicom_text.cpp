// Character sets where DCMTK is not there to convert them.
#include "film/dicom_pixels.h"

namespace tool {

std::string utf8_of_dicom(const std::string& text, const std::string& character_sets) {
    if (character_sets == "ISO_IR 192") return text;
    std::string ascii = text;
    for (char& byte : ascii)
        if (static_cast<unsigned char>(byte) < ' ' || static_cast<unsigned char>(byte) > '~') byte = '?';
    return ascii;
}

}  // namespace tool
