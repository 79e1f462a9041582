#include "analysis/landmark_use.h"

#include <algorithm>

#include "analysis/catalogue.h"
#include "analysis/definition_file.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr std::size_t name_buffer = 10;

// Kept: a bracket name lies in ten bytes, the tenth overwritten by each later one, so a longer name matches none.
bool names_landmark(std::string_view expression, std::string_view name) {
    while (!expression.empty()) {
        const std::size_t open = find_char(expression, '[');
        if (open == std::string_view::npos) return false;
        expression.remove_prefix(open + 1);
        const std::size_t close = find_char(expression, ']');
        if (close == std::string_view::npos) return false;
        if (close <= name_buffer && expression.substr(0, close) == name) return true;
        expression.remove_prefix(close + 1);
    }
    return false;
}

bool file_uses(std::string text, std::string_view name) {
    const DefinitionFile file(std::move(text));
    for (const NamedLine& item : file.items())
        if (!item.second_set() && names_landmark(item.rest, name)) return true;
    return false;
}

}  // namespace

bool uses_landmark(int kind, std::string_view name) {
    return std::ranges::any_of(form_files(kind),
                               [name](const std::string& path) { return file_uses(file_text(path), name); });
}

}  // namespace tool
