#include "analysis/program_order.h"

#include <algorithm>

#include "analysis/graph_walk.h"

namespace tool {

void arrange_steps(Program& program) {
    const std::size_t count = program.steps.size();
    std::vector<bool> text_only(count);
    program.by_norm.resize(count);
    const auto as_text = [&](int norm) {
        if (norm < 0) return false;
        return std::ranges::any_of(program.norms[static_cast<std::size_t>(norm)], [&](int line) {
            if (line < 0) return false;
            const Program::NormLine& written = program.norm_lines[static_cast<std::size_t>(line)];
            return written.as_text || std::ranges::any_of(written.fields, [&](const Program::NormField& field) {
                       return field.formula != no_step && text_only[field.formula];
                   });
        });
    };
    const auto enter = [&](std::size_t id, const auto& reach) {
        program.each_source(program.steps[id], [&](StepId source) {
            if (reach(source)) text_only[id] = true;
        });
    };
    std::vector<StepId> order;
    const auto leave = [&](std::size_t id) {
        const Step& step = program.steps[id];
        const bool norm = step.kind == Step::Kind::norm;
        program.by_norm[id] = norm;
        if (norm && as_text(static_cast<int>(step.in[0]))) text_only[id] = true;
        if (step.kind == Step::Kind::item && program.items[step.in[0]].as_text) text_only[id] = true;
        program.each_source(step, [&](StepId source) {
            if (text_only[source]) text_only[id] = true;
            if (program.by_norm[source]) program.by_norm[id] = true;
        });
        order.push_back(static_cast<StepId>(id));
    };
    std::vector<StepId> roots;
    for (const Program::Item& item : program.items) roots.push_back(item.value);
    for (const Program::NormLine& line : program.norm_lines)
        for (const Program::NormField& field : line.fields)
            if (field.formula != no_step) roots.push_back(field.formula);
    walk(count, roots, enter, leave);
    for (Program::Item& item : program.items)
        item.as_text = item.as_text || text_only[item.value] || as_text(item.mean) || as_text(item.sd);
    for (const StepId id : order)
        if (!text_only[id] && !program.by_norm[id]) program.order.push_back(id);
}

}  // namespace tool
