// Memory that is short when a test wants it.
#pragma once

namespace strength {

enum class Shortage { once, for_good };

// This thread's n-th request for memory from now on (from 1) is refused, and perhaps every later one.
void refuse_memory(int n, Shortage shortage);
// No request from now on. Whether one was refused.
bool enough_memory_again();

}  // namespace strength
