#include "strength/failing_memory.h"

#include <cstdlib>
#include <new>

namespace strength {
namespace {

thread_local int left = 0;
thread_local bool refused = false, goes_on = false;

bool refuses() {
    if (left > 0 && --left == 0) return refused = true;
    return refused && goes_on;
}

}  // namespace

void refuse_memory(int n, Shortage shortage) {
    goes_on = shortage == Shortage::for_good;
    left = n;
}

bool enough_memory_again() {
    const bool was_refused = refused;
    refused = goes_on = false;
    left = 0;
    return was_refused;
}

}  // namespace strength

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return strength::refuses() ? nullptr : std::malloc(size > 0 ? size : 1);
}

void* operator new(std::size_t size) {
    void* const memory = operator new(size, std::nothrow);
    return memory ? memory : throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
