#include "web/engine/answer.h"

#include "web/engine/fault.h"

namespace engine {

std::string error_text(const std::exception& thrown) {
    Json json = {{"message", thrown.what()}, {"file", ""}, {"line", 0}, {"column", 0}, {"excerpt", ""}, {"wayOut", ""}};
    if (const auto* error = dynamic_cast<const cephtool::Error*>(&thrown)) {
        json["file"] = error->file;
        json["line"] = error->line;
        json["column"] = error->column;
        json["excerpt"] = error->excerpt;
        json["wayOut"] = error->way_out;
    }
    if (const auto* fault = dynamic_cast<const Fault*>(&thrown)) {
        json["key"] = fault->key;
        json["names"] = fault->names;
    }
    return "!" + text_of(json);
}

}  // namespace engine
