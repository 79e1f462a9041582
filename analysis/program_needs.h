// Which landmarks the items and norms of a program need.
#pragma once

#include <span>

#include "analysis/program.h"

namespace tool {

// What an item or a norm's line names itself.
struct Needer {
    std::vector<std::size_t> names;  // places in the table of landmarks, or behind it those in the program's names
    std::vector<int> items, lines;   // places of those that it refers to
    bool never_met = false;          // needs what no record has
    std::size_t sure_names = 0, sure_items = 0;  // the first ones are needed whatever is selected
};

// Fills the bits of `needs` from what each item and each norm's line names, and what that leads to.
void collect_needs(std::span<const Needer> item_needs, std::span<const Needer> line_needs, Program& program);

}  // namespace tool
