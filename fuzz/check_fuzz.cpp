// Any file of any family: it is checked within its limits, each finding has a place in it and a message, and what
// passes as a definition refers to no item that is missing.
#include <algorithm>
#include <cstdint>
#include <string_view>

#include "DefinitionCheck.h"
#include "analysis/definition_file.h"
#include "analysis/formula_names.h"
#include "analysis/item_text.h"
#include "fuzz/subject.h"

namespace {

struct NamesThatAreThere : tool::FormulaNames {
    explicit NamesThatAreThere(const tool::DefinitionFile& its_file) : file(its_file) {}
    void reference(tool::Ask, std::string_view item) override { tool_fuzz::require(file.find_item(item).has_value()); }
    const tool::DefinitionFile& file;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tool_fuzz::require;
    if (size == 0) return 0;
    constexpr int kinds[] = {0, 1, 2, 10, 20, -1};
    const CheckFamily family{data[0] % 8 < 6 ? data[0] % 8 : 0};  // definitions more often
    const char* const text = reinterpret_cast<const char*>(data + 1);
    const std::string_view content(text, size - 1);
    const CheckResult result = DefinitionCheck::Text(family, kinds[data[0] / 8 % 6], text, content.size());
    const auto lines = std::ranges::count(content, '\n') + 1;
    int line = 0;
    bool sound = true;
    for (const CheckFinding& finding : result.findings) {
        require(finding.line >= line && finding.line <= lines && finding.column >= (finding.line > 0));
        require(!finding.message.IsEmpty());
        line = finding.line;
        sound &= finding.note;
    }
    if (family != CheckFamily::definition || !sound) return 0;
    const tool::DefinitionFile file{std::string(content)};
    NamesThatAreThere names(file);
    for (const tool::NamedLine& item : file.items()) {
        const auto expression = tool::split_type(item.rest).expression;
        if (file.find_item(item.name)->name.data() == item.name.data())
            tool::visit_names(expression.substr(0, expression.find(';')), names);
    }
    return 0;
}
