// Calls to the system that go wrong when a test wants it.
#pragma once

namespace strength {

enum class Harm { error, signal, kill };

// The n-th call from now on (from 1) fails as on a broken or full disk, or the user stops the program in it, or the
// power does.
void harm_call(int n, Harm harm);
// No call from now on. Whether one was harmed.
bool harmless_again();

}  // namespace strength
