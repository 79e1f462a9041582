// Writes the manual pages into a folder; the build runs it.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "host/manual/manual_page.h"

int main(int count, char** words) {
    if (count != 2) return std::cerr << "usage: cephtool_manual FOLDER\n", 2;
    const std::filesystem::path folder = words[1];
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "cephtool.1") << cephtool::manual_page();
    for (const cephtool::Command& command : cephtool::commands()) {
        if (std::string_view(command.name) == "help") continue;
        cephtool::describe(command, [&](const cephtool::CommandLine& line) {
            std::ofstream(folder / (std::string("cephtool-") + command.name + ".1")) << cephtool::manual_page(line);
        });
    }
    return 0;
}
