#include "host/standard_input.h"

#include <ios>

#include "base/system.h"
#include "host/interruption.h"

namespace cephtool {

StandardInput::StandardInput() : block_(std::size_t{1} << 16) {}

StandardInput::int_type StandardInput::underflow() {
    const std::ptrdiff_t got = read_standard_input(block_.data(), block_.size(), interruption_asked);
    if (got < 0) throw std::ios_base::failure("standard input");
    setg(block_.data(), block_.data(), block_.data() + got);
    return got == 0 ? traits_type::eof() : traits_type::to_int_type(block_[0]);
}

}  // namespace cephtool
