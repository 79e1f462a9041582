// Numbers of 64 cases side by side, for loops that become vector instructions: a lane for each case.
#pragma once

#include <cstddef>
#include <cstdint>

// In front of a function: it is compiled once more for wider vectors, and the processor that it meets chooses. Bits are
// the same: a vector's operations and roots round as single ones do, and nothing is fused (cmake/flags.cmake). The
// choice is made while the program is loaded, before sanitizers are ready.
#if defined(__has_feature)
#define TOOL_SANITIZED \
    (__has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer))
#elif defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define TOOL_SANITIZED 1
#else
#define TOOL_SANITIZED 0
#endif
#if defined(__x86_64__) && defined(__GLIBC__) && defined(__OPTIMIZE__) && !TOOL_SANITIZED
#define TOOL_WIDE __attribute__((target_clones("default", "avx2", "avx512f")))
#else
#define TOOL_WIDE
#endif

namespace tool {

inline constexpr std::size_t lane_count = 64;
using Lanes = std::uint64_t;  // some of them, a bit for each

struct alignas(64) LaneNumbers {
    double of[lane_count];

    double& operator[](std::size_t lane) { return of[lane]; }
    double operator[](std::size_t lane) const { return of[lane]; }
};

// Asks for the memory so many bytes behind, which need not be there.
inline void prefetch([[maybe_unused]] const void* address, [[maybe_unused]] std::ptrdiff_t behind) {
#ifdef __GNUC__
    __builtin_prefetch(
        reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(address) + static_cast<std::uintptr_t>(behind)));
#endif
}

}  // namespace tool
