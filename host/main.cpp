#include <iostream>

#include "host/command.h"
#include "host/terminal.h"

int main(int count, char** words) {
    cephtool::Streams streams{std::cin, std::cout, std::cerr, cephtool::shows_colours(),
                              cephtool::shows_progress()};
    const cephtool::ExitCode code = cephtool::run_program({words + (count > 0), words + count}, streams);
    std::cout.flush();
    if (!std::cout && code == cephtool::ExitCode::done) {
        std::cerr << "cephtool: the result could not be written\n";
        return static_cast<int>(cephtool::ExitCode::bad_input);
    }
    return static_cast<int>(code);
}
