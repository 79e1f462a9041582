// Ctrl-C as a request to stop in order.
#pragma once

namespace cephtool {

// While it lives, the first Ctrl-C is only taken down; a second one ends the program at once.
class Interruption {
 public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    bool asked() const;

 private:
    void (*before_)(int);
};

}  // namespace cephtool
