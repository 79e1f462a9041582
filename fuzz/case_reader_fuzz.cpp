// Any bytes are either refused with an Error or read as a case that stays the same when it is written and read again.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

#include "host/case.h"
#include "host/case_record.h"
#include "host/vertebrae.h"

namespace {

constexpr std::size_t needed_vertebra_points = 11;

void check(bool holds, const char* what) {
    if (holds) return;
    std::cerr << what << "\n";
    std::abort();
}

// Nothing when the bytes are no case.
std::optional<cephtool::Case> read(const std::string& name, const std::string& text) {
    try {
        return cephtool::read_case(cephtool::checked_text({name, text}));
    } catch (const cephtool::Error& error) {
        check(!cephtool::shown(error).empty(), "an error without words");
        return {};
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto record = read("case", {reinterpret_cast<const char*>(data), size});
    if (!record) return 0;
    const std::string written = cephtool::to_json(*record);
    const auto again = read("again.json", written);
    check(again.has_value(), "a written case can't be read");
    check(cephtool::to_json(*again) == written, "a case changes when it is written and read");
    const cephtool::CervicalPoints cervical = cephtool::cervical_points(*record);
    check(!cervical.missing.empty() || record->vertebrae.size() + cervical.made.size() >= needed_vertebra_points,
          "a bone age from too few points");
    const cephtool::CaseRecord fields(*record);  // every name and coordinate has its place in the engine's record
    return 0;
}
