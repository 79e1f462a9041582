#include "analysis/program_needs.h"

#include <algorithm>

#include "analysis/graph_walk.h"

namespace tool {
namespace {

constexpr std::size_t most_names = 256;  // what needs more is told from the text; no analysis comes near

}  // namespace

void collect_needs(std::span<const Needer> item_needs, std::span<const Needer> line_needs, Program& program) {
    const std::size_t items = item_needs.size(), names = std::min(program.names.size(), most_names);
    const std::size_t never_met = program.never_met = program.slots + names;
    program.words = never_met / 64 + 1;
    program.needs.resize((items + line_needs.size()) * 2 * program.words);
    const auto needer = [&](std::size_t node) -> const Needer& {
        return node < items ? item_needs[node] : line_needs[node - items];
    };
    const auto needs = [&](std::size_t node, bool sure) {
        return &program.needs[(2 * node + (sure ? 1 : 0)) * program.words];
    };
    const auto need = [&](std::size_t node, bool sure, std::size_t bit) {
        needs(node, sure)[bit / 64] |= std::uint64_t{1} << bit % 64;
    };
    const auto need_all = [&](std::size_t node, bool sure, std::size_t other) {
        for (std::size_t word = 0; word < program.words; ++word) needs(node, sure)[word] |= needs(other, sure)[word];
    };
    const auto each_other = [&](std::size_t node, const auto& visit) {
        for (const int item : needer(node).items) visit(static_cast<std::size_t>(item));
        for (const int line : needer(node).lines) visit(items + static_cast<std::size_t>(line));
    };
    const auto enter = [&](std::size_t node, const auto& reach) {
        const Needer& own = needer(node);
        for (std::size_t i = 0; i < own.names.size(); ++i) {
            need(node, false, std::min(own.names[i], never_met));
            if (i < own.sure_names && own.names[i] < never_met) need(node, true, own.names[i]);
        }
        if (own.never_met) need(node, false, never_met);
        each_other(node, [&](std::size_t other) {
            if (reach(other)) need(node, false, never_met);  // circles are told from the text
        });
    };
    const auto leave = [&](std::size_t node) {
        each_other(node, [&](std::size_t other) { need_all(node, false, other); });
        for (std::size_t i = 0; i < needer(node).sure_items; ++i)
            need_all(node, true, static_cast<std::size_t>(needer(node).items[i]));
    };
    walk_all(items + line_needs.size(), enter, leave);
}

}  // namespace tool
