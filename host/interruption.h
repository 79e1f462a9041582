// Ctrl-C and the system's wish that the program end, as a request to stop in order.
#pragma once

#include <vector>

namespace cephtool {

// Whether such a signal came while an Interruption lives.
bool interruption_asked();

// While it lives, the first such signal is only taken down; a second one ends the program at once. Nor does a file that
// may not grow any more end it: that is an error of the write.
class Interruption {
 public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    // Ends the program as the signal would have, if one came.
    void obey();

 private:
    void restore();

    std::vector<void (*)(int)> before_;
};

}  // namespace cephtool
