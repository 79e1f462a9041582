// A JSON text as a tree in which every value knows its place, so that a complaint can point to it. Reading is
// bounded: depth, number of values, and no key twice in one object.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "base/source.h"

namespace cephtool {

struct JsonMember;
struct JsonValue;
using JsonArray = std::vector<JsonValue>;
using JsonObject = std::vector<JsonMember>;

struct JsonValue {
    std::size_t at = 0;   // byte of the source at which it begins
    std::size_t end = 0;  // the one behind it
    std::variant<std::nullptr_t, bool, double, std::string, JsonArray, JsonObject> value;
};

struct JsonMember {
    std::string key;
    std::size_t key_at = 0;
    JsonValue value;
};

// Throws an Error that points to the fault.
JsonValue read_json(const Source& source);

}  // namespace cephtool
