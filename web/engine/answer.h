// What JavaScript is answered: JSON, or "!" and an error.
#pragma once

#include <exception>
#include <string>
#include <type_traits>

#include "web/engine/json.h"

namespace engine {

std::string error_text(const std::exception& error);

// What `work` gives; null where that is nothing. What it throws becomes the answer's error.
template <class Work>
std::string answer(Work work) {
    try {
        if constexpr (std::is_void_v<decltype(work())>) {
            work();
            return "null";
        } else {
            return text_of(work());
        }
    } catch (const std::exception& error) {
        return error_text(error);
    }
}

}  // namespace engine
