#include <iostream>

#include "base/path.h"
#include "base/system.h"
#include "host/command.h"
#include "host/standard_input.h"
#include "host/terminal.h"

#ifdef _WIN32
int wmain(int count, wchar_t** words) {  // the only way to words outside the system's own code page
#else
int main(int count, char** words) {
#endif
    cephtool::prepare_standard_streams();
    cephtool::Arguments arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(cephtool::utf8_from_path(words[i]));
    cephtool::StandardInput bytes;
    std::istream input(&bytes);
    cephtool::Streams streams{input, std::cout, std::cerr, cephtool::shows_colours(), cephtool::shows_progress()};
    const cephtool::ExitCode code = cephtool::run_program(arguments, streams);
    std::cout.flush();
    if (!std::cout && code == cephtool::ExitCode::done) {
        std::cerr << "cephtool: the result could not be written\n";
        return static_cast<int>(cephtool::ExitCode::bad_input);
    }
    return static_cast<int>(code);
}
