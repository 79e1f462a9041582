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

// A hash table: a name stands at its place, or behind it at the first that was free.
class SlotTable {
 public:
    constexpr explicit SlotTable(std::span<const std::string_view> names) {
        for (std::size_t slot = 0; slot < names.size(); ++slot) {
            std::size_t place = place_of(packed(names[slot]));
            while (entries_[place].name != 0) place = (place + 1) % size;
            entries_[place] = {packed(names[slot]), static_cast<int>(slot)};
        }
    }
    constexpr std::optional<int> find(std::uint64_t name) const {
        for (std::size_t place = place_of(name);; place = (place + 1) % size) {
            if (entries_[place].name == name) return entries_[place].slot;
            if (entries_[place].name == 0) return std::nullopt;
        }
    }

 private:
    static constexpr std::size_t size = 256;  // few names share a place
    static constexpr std::size_t place_of(std::uint64_t name) { return name * 0x9E3779B97F4A7C15 >> 56; }

    struct Entry {
        std::uint64_t name = 0;
        int slot = 0;
    };
    std::array<Entry, size> entries_{};
};

constexpr SlotTable lateral_slots(lateral_names), frontal_slots(frontal_names);

}  // namespace

std::span<const std::string_view> landmark_names(int kind) {
    if (is_lateral(kind)) return lateral_names;
    if (is_frontal(kind)) return frontal_names;
    return {};
}

std::optional<int> landmark_slot(int kind, std::string_view name) {
    if (name.empty() || name.size() > longest_name) return std::nullopt;
    const std::uint64_t wanted = packed(name);
    if (wanted == 0) return std::nullopt;
    if (is_lateral(kind)) return lateral_slots.find(wanted);
    return is_frontal(kind) ? frontal_slots.find(wanted) : std::nullopt;
}

}  // namespace tool
