// What the program's tests share: a program run in memory, and a folder that goes away.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

#include "cases/case.h"
#include "host/command.h"

namespace host_test {

struct Outcome {
    cephtool::ExitCode code;
    std::string out, err;
};

inline Outcome run(const cephtool::Arguments& arguments, const std::string& input = {}) {
    std::istringstream in(input);
    std::ostringstream out, err;
    cephtool::Streams streams{in, out, err};
    const cephtool::ExitCode code = cephtool::run_program(arguments, streams);
    return {code, out.str(), err.str()};
}

inline cephtool::Case read(const std::string& name, const std::string& text) {
    return cephtool::read_case(cephtool::checked_text({name, text}));
}

inline std::string bytes_of(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// A new folder, the working directory until the end of the scope.
class Folder {
 public:
    Folder() {
        path = std::filesystem::temp_directory_path() / ("cephtool." + std::to_string(std::random_device()()));
        std::filesystem::create_directory(path);
        std::filesystem::current_path(path);
    }
    ~Folder() {
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(path);
    }
    void add(const std::string& name, const std::string& text) const {
        const std::filesystem::path file = path / std::u8string(name.begin(), name.end());
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }

    std::filesystem::path path;

 private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

}  // namespace host_test
