// DICOM films.
#include "fuzz/film.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tool_fuzz::check_film(data, size);
    return 0;
}
