// The wrapper of the exported functions, which let no exception out.
#pragma once

#include <utility>

#include "framework/exceptions.h"

namespace tool {

// What `work` throws becomes `failed`, the value that the caller knows as "no result". The framework's own exceptions
// go on to the host.
template <class Result, class Work>
Result or_failed(Result failed, Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (CException*) {
        throw;
    } catch (...) {
        return failed;
    }
}

// The same for work that gives nothing: what it had not done yet stays undone.
template <class Work>
void as_far_as_possible(Work&& work) {
    or_failed(0, [&] { return std::forward<Work>(work)(), 0; });
}

}  // namespace tool
