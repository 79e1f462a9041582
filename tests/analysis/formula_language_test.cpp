// The page for authors of analyses against the engine.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "analysis/functions.h"

namespace {

const std::filesystem::path docs = std::filesystem::path(TOOL_SOURCE_DIR) / "docs";

TEST(FormulaLanguage, ThePageHasEveryFunctionWithItsPictureAndNoOther) {
    std::ifstream page(docs / "formula_language.md");
    std::set<std::string> section, described, without_picture, shown, known, drawn;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with('#')) section.clear();
        for (std::size_t at = 0; line.starts_with("### ") && (at = line.find('(', at)) != std::string::npos; ++at)
            section.insert(line.substr(line.rfind(' ', at) + 1, at - line.rfind(' ', at) - 1));
        described.insert(section.begin(), section.end());
        if (line.starts_with('#')) without_picture.insert(section.begin(), section.end());
        const std::size_t picture = line.find("pictures/formula-");
        if (picture == std::string::npos) continue;
        shown.insert(line.substr(picture + 9, line.find('"', picture) - picture - 9));
        for (const std::string& name : section) without_picture.erase(name);
    }
    for (const auto& function : tool::value_functions) known.emplace(function.name);
    for (const auto& function : tool::point_functions) known.emplace(function.name);
    EXPECT_EQ(described, known);
    EXPECT_THAT(without_picture, testing::IsEmpty());
    for (const auto& entry : std::filesystem::directory_iterator(docs / "pictures"))
        if (const std::string name = entry.path().filename().string(); name.starts_with("formula-")) drawn.insert(name);
    EXPECT_EQ(shown, drawn);
}

}  // namespace
