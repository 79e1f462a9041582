// Any list of landmark errors: figures lie within their limits, each landmark has one, what is written is read again as
// the same, and the checker names every line that is passed over.
#include <cmath>
#include <cstdint>

#include "LandmarkErrors.h"
#include "fuzz/subject.h"

namespace {

bool same_figures(const tool::LandmarkError& a, const tool::LandmarkError& b) {
    // Written with two decimals.
    return a.name == b.name && a.frontal == b.frontal && std::abs(a.along_mm - b.along_mm) < 0.0051 &&
           std::abs(a.across_mm - b.across_mm) < 0.0051 && a.readings == b.readings;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tool_fuzz::require;
    const char* const text = reinterpret_cast<const char*>(data);
    const auto errors = tool::LandmarkErrors::from_text({text, size});
    for (const tool::LandmarkError& error : errors.all()) {
        require(error.along_mm >= 0 && error.across_mm >= 0 && std::isfinite(error.along_mm + error.across_mm));
        require(!error.name.empty() && error.readings >= 0);
        require(errors.find(error.name, error.frontal) == &error);
    }
    const auto written = errors.to_text("made\nof these");
    require(written.has_value() || !errors.all().empty());
    if (!written) return 0;
    const auto again = tool::LandmarkErrors::from_text(*written);
    require(again.all().size() == errors.all().size());
    for (const tool::LandmarkError& error : errors.all()) {
        const auto* const kept = again.find(error.name, error.frontal);
        require(kept != nullptr && same_figures(*kept, error));
    }
    return 0;
}
