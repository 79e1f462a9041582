// A place in the text of a formula that is checked, which moves on as it is read.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "analysis/check/findings.h"

namespace tool {

class FormulaCursor {
 protected:
    FormulaCursor(std::string_view text, Findings& findings) : text_(text), findings_(findings) {}

    // What stands behind blanks, which are passed over; NUL at the end.
    char next();
    std::string_view here() const;  // the character
    void take(std::size_t count);   // into the twin, too
    std::string_view word() const;
    // The "(" behind a function's name, which is passed over; "" without one.
    std::string_view opening(std::string_view name);
    // The name in the brackets that open here.
    std::optional<std::string_view> bracketed();
    // Goes into what `place` opens, and out of it at its ")".
    bool enter(std::string_view place);
    bool close_here(std::string_view open);
    bool close(std::string_view open);

    // A fault behind which nothing is read; only the first one counts.
    void fail(std::string_view place, std::string message);
    // A fault behind which reading goes on.
    void slip(std::string_view place, std::string message);
    static void remember(std::string_view& first, std::string_view place) {
        if (first.empty()) first = place;
    }

    std::string_view text_;
    Findings& findings_;
    std::size_t at_ = 0, last_taken_ = 0;
    std::string twin_;  // the formula over made-up landmarks and items
    int depth_ = 0;
    bool sound_ = true, has_faults_ = false;
    std::string_view tabs_;  // the first one that is no blank to the evaluator
};

bool is_letter(char c);  // of a function's name

}  // namespace tool
