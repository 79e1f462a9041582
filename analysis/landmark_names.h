// The named landmark slots of the records.
#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace tool {

inline bool is_lateral(int kind) {
    return kind == 0 || kind == 10 || kind == 20;
}
inline bool is_frontal(int kind) {
    return kind == 1 || kind == 11;
}
// Whether formulas of the one kind mean on a record what they mean as the other kind.
inline bool same_record(int kind, int other) {
    return kind == other || (is_lateral(kind) && is_lateral(other)) || (is_frontal(kind) && is_frontal(other));
}
// The only kind of casts whose measures formulas find.
inline bool is_cast(int kind) {
    return kind == 2;
}

// Names in record order: 51 of a lateral record, 27 of a frontal one, none for a cast.
std::span<const std::string_view> landmark_names(int kind);

// Slot of a name (case-sensitive) in the kind's table.
std::optional<int> landmark_slot(int kind, std::string_view name);

}  // namespace tool
