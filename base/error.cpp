#include "base/error.h"

namespace cephtool {

std::string shown(const Error& error) {
    std::string text = "cephtool: ";
    if (!error.file.empty()) {
        text += error.file + ":";
        if (error.line > 0) text += std::to_string(error.line) + ":" + std::to_string(error.column) + ":";
        text += " ";
    }
    text += error.what();
    text += "\n";
    if (!error.excerpt.empty()) {
        text.append(4, ' ').append(error.excerpt).append("\n");
        text.append(4 + static_cast<std::size_t>(error.caret), ' ').append("^\n");
    }
    if (!error.way_out.empty()) text += "  " + error.way_out + "\n";
    return text;
}

}  // namespace cephtool
