#include "analysis/check/definition.h"

#include "analysis/check/items.h"
#include "analysis/check/key.h"
#include "analysis/check/norms.h"
#include "analysis/check/parameters.h"
#include "analysis/check/stages.h"

namespace tool {
namespace {

// A line that is no key, in the section whose SectionCode is given.
void check_section_line(std::string_view line, int section, CheckedFile& file, ParameterCheck& parameters) {
    switch (section % second_set) {
        case items_section: return check_item(line, section, file);
        case mean_section:
        case mean_male_section:
        case mean_female_section: return check_norm(line, section, NormPart::mean, file);
        case sd_section:
        case sd_male_section:
        case sd_female_section: return check_norm(line, section, NormPart::sd, file);
        case parameter_section: return parameters.check(line);
        case title_section: return file.findings.note(line, "only one line is read as the title; this one is not");
        default: return;
    }
}

void check_lines(CheckedFile& file) {
    const std::string_view title = file.definition.title(), comment = file.definition.comment();
    ParameterCheck parameters(file);
    int section = content_line;
    bool in_front = true, below_comment = false;
    for_each_line(file.definition.text(), [&](std::string_view line, int code) {
        if (code != content_line) {
            section = code, in_front = false;
            if (below_comment)
                file.findings.fault(
                    line,
                    "Comment: has no line of its own, so this key is read as the comment; leave an empty line above it");
        } else if (!line.empty() && line.data() != title.data() && line.data() != comment.data() &&
                   !check_for_key(line, file.findings)) {
            if (in_front)
                file.findings.fault(line,
                                    "nothing in front of the first key is read; write Calc:, Mean: or another key "
                                    "above it, and remarks below the first line of Comment:");
            else
                check_section_line(line, section, file, parameters);
        }
        below_comment = code == comment_section;
        return false;
    });
    parameters.finish();
}

}  // namespace

void check_definition(const DefinitionFile& definition, int kind, bool ricketts, Findings& findings) {
    definition.build_index();
    CheckedFile file(definition, kind, findings);
    check_lines(file);
    check_circles(definition, file.references(), findings);
    check_stages(definition.text(), ricketts, findings);
    if (definition.title().empty())
        findings.note_of_file("no title; write one below title:, or the file's name is shown");
}

}  // namespace tool
