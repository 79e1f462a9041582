// Standard input in large blocks, which a request to stop does not find waiting for the next one.
#pragma once

#include <streambuf>
#include <vector>

namespace cephtool {

class StandardInput : public std::streambuf {
 public:
    StandardInput();

 protected:
    int_type underflow() override;  // throws when reading fails, which sets a stream bad

 private:
    std::vector<char> block_;
};

}  // namespace cephtool
