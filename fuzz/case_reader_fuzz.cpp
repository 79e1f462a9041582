// Any bytes are either refused with an Error or read as a case that stays the same when it is written and read again,
// in the program's own format and in each other one that can hold it.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

#include "cases/case_format.h"
#include "cases/case_record.h"
#include "cases/vertebrae.h"

namespace {

constexpr std::size_t needed_vertebra_points = 11;

void check(bool holds, const char* what) {
    if (holds) return;
    std::cerr << what << "\n";
    std::abort();
}

const cephtool::CaseOptions options{.landmarks = {"S", "N", "-", "Or"}};

// Nothing when the bytes are no case.
std::optional<cephtool::Case> read(const std::string& name, const std::string& text) {
    try {
        return cephtool::read_case(cephtool::checked_text({name, text}), options);
    } catch (const cephtool::Error& error) {
        check(!cephtool::shown(error).empty(), "an error without words");
        return {};
    }
}

// A name that some format keeps for itself.
bool has_special_name(const cephtool::Case& record) {
    return std::ranges::any_of(record.user, [](const cephtool::Landmark& landmark) {
        const std::string& name = landmark.name;
        return name == "-" || name.starts_with("aux") || name.starts_with("C3") || name.starts_with("C4") ||
               name.find_first_of(" \t") != std::string::npos;
    });
}

void check_format(const cephtool::CaseFormat& format, const cephtool::Case& record) {
    std::string written, written_again;
    try {
        written = format.write(record, {});
        const auto again = cephtool::read_case({std::string("again") + format.extension, written}, {});
        written_again = format.write(again, {});
    } catch (const cephtool::Error&) {
        return;  // no landmark, or a scale that the format can't hold
    }
    check(written_again == written, format.name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto record = read("case", {reinterpret_cast<const char*>(data), size});
    if (!record) return 0;
    const std::string written = cephtool::to_json(*record);
    const auto again = read("again.json", written);
    check(again.has_value(), "a written case can't be read");
    check(cephtool::to_json(*again) == written, "a case changes when it is written and read");
    if (!has_special_name(*record))
        for (const cephtool::CaseFormat& format : cephtool::case_formats()) check_format(format, *record);
    const cephtool::CervicalPoints cervical = cephtool::cervical_points(*record);
    check(!cervical.missing.empty() || record->vertebrae.size() + cervical.made.size() >= needed_vertebra_points,
          "a bone age from too few points");
    const cephtool::CaseRecord fields(*record);  // every name and coordinate has its place in the engine's record
    return 0;
}
