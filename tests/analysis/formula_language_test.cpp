// The page for authors of analyses against the engine.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include "analysis/formula.h"

namespace {

const std::filesystem::path docs = std::filesystem::path(TOOL_SOURCE_DIR) / "docs";

TEST(FormulaLanguage, ThePageHasEveryFunctionWithItsPictureAndNoOther) {
    std::ifstream page(docs / "formula_language.md");
    const std::regex call(R"((\w+)\()"), picture(R"(pictures/(formula-\w+\.svg))");
    std::set<std::string> section, described, without_picture, shown, drawn;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with('#')) section.clear();
        for (std::sregex_iterator name(line.begin(), line.end(), call), end; name != end && line.starts_with("### ");
             ++name)
            section.insert(name->str(1)), described.insert(name->str(1)), without_picture.insert(name->str(1));
        for (std::sregex_iterator file(line.begin(), line.end(), picture), end; file != end; ++file) {
            shown.insert(file->str(1));
            for (const std::string& name : section) without_picture.erase(name);
        }
    }
    std::set<std::string> known;
    for (const auto& names : {tool::Formula::function_names(), tool::PointReader::construction_names()})
        known.insert(names.begin(), names.end());
    EXPECT_EQ(described, known);
    EXPECT_THAT(without_picture, testing::IsEmpty());
    for (const auto& entry : std::filesystem::directory_iterator(docs / "pictures"))
        if (const std::string name = entry.path().filename().string(); name.starts_with("formula-")) drawn.insert(name);
    EXPECT_EQ(shown, drawn);
}

}  // namespace
