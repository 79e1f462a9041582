// Pages for man(1), from the commands and options as the program itself has them.
#pragma once

#include <string>

#include "host/command_line.h"

namespace cephtool {

std::string manual_page();                         // cephtool(1)
std::string manual_page(const CommandLine& line);  // cephtool-COMMAND(1)

}  // namespace cephtool
