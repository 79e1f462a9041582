// What a check has found in one text, and how messages speak of it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "DefinitionCheck.h"

namespace tool {

class Findings {
 public:
    // `text` outlives the findings; the places are views into it.
    explicit Findings(std::string_view text) : text_(text) {}

    void fault(std::string_view place, std::string message) { add(place, false, std::move(message)); }
    void note(std::string_view place, std::string message) { add(place, true, std::move(message)); }
    void fault_of_file(std::string message) { found_.push_back({whole_file, false, std::move(message)}); }
    void note_of_file(std::string message) { found_.push_back({whole_file, true, std::move(message)}); }

    // Adds those of a text that has the same places, such as a copy.
    void take(const Findings& other) { found_.insert(found_.end(), other.found_.begin(), other.found_.end()); }

    // Appends them in the order of the text, each once.
    void append_to(std::vector<CheckFinding>& all, std::string_view path);

 private:
    static constexpr std::size_t whole_file = std::string_view::npos;
    struct Found {
        std::size_t at;
        bool note;
        std::string message;
        bool operator==(const Found&) const = default;
    };
    void add(std::string_view place, bool note, std::string message);

    std::string_view text_;
    std::vector<Found> found_;
};

// In double quotes, cut to a readable length.
std::string quoted(std::string_view name);

// "1 point", "2 points".
std::string counted(int count, std::string_view thing);

// The candidate that somebody probably meant: one that differs in the case of letters or in blanks only or, in names
// of at least four bytes, in one byte. "" when there is none.
std::string_view meant_name(std::string_view name, std::span<const std::string_view> candidates);

// ` (did you mean "..."?)`, or "".
std::string suggestion(std::string_view meant);

}  // namespace tool
