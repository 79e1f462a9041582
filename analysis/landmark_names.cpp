#include "analysis/landmark_names.h"

#include <array>
#include <cstdint>

namespace tool {
namespace {

constexpr std::string_view lateral_names[] = {
    "S",   "N",      "SB",  "Or", "ANS",    "A",     "U1C",  "U1",    "U1R",    "L1",    "L1R",    "L1C", "B",
    "PM",  "Pog(R)", "Pog", "Gn", "Me",     "Go(L)", "Go",   "Go(P)", "Ar",     "DC",    "Cd",     "Po",  "Ba",
    "PT",  "Ptm",    "PNS", "Xi", "UMo(D)", "UMo",   "PMo",  "LMo",   "LMo(D)", "N(s)",  "TN",     "SN",  "TUL",
    "Sto", "TLL",    "TC",  "D",  "CdE",    "UMoR",  "LMoR", "PTV",   "Gl",     "Me(s)", "Pog(s)", "Vmi"};
static_assert(std::size(lateral_names) == 51);

constexpr std::string_view frontal_names[] = {"U3R", "U3L", "U6R", "U6L", "AGR", "AGL", "L3R",  "L3L",  "L6R",
                                              "L6L", "JR",  "JL",  "Me",  "NCR", "NCL", "ZR",   "ZL",   "ZAR",
                                              "ZAL", "ANS", "A",   "B",   "6R",  "6L",  "UMid", "LMid", "CG"};
static_assert(std::size(frontal_names) == 27);

constexpr std::size_t longest_name = 6;

// A name of up to eight bytes as one number: every formula looks up a handful of names, so this is a hot path.
constexpr std::uint64_t packed(std::string_view name) {
    std::uint64_t bits = 0;
    for (const char c : name) bits = bits << 8 | static_cast<unsigned char>(c);
    return bits;
}

template <std::size_t N>
constexpr std::array<std::uint64_t, N> packed_table(const std::string_view (&names)[N]) {
    std::array<std::uint64_t, N> table{};
    for (std::size_t i = 0; i < N; ++i) table[i] = packed(names[i]);
    return table;
}

constexpr auto lateral_table = packed_table(lateral_names);
constexpr auto frontal_table = packed_table(frontal_names);

}  // namespace

std::span<const std::string_view> landmark_names(int kind) {
    if (is_lateral(kind)) return lateral_names;
    if (is_frontal(kind)) return frontal_names;
    return {};
}

std::optional<int> landmark_slot(int kind, std::string_view name) {
    std::span<const std::uint64_t> table;
    if (is_lateral(kind)) table = lateral_table;
    if (is_frontal(kind)) table = frontal_table;
    if (name.empty() || name.size() > longest_name) return std::nullopt;
    const std::uint64_t wanted = packed(name);
    for (std::size_t slot = 0; slot < table.size(); ++slot)
        if (table[slot] == wanted) return static_cast<int>(slot);
    return std::nullopt;
}

}  // namespace tool
