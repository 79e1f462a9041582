// The options that say of cases what their files lack.
#pragma once

#include <string>
#include <vector>

#include "cases/case.h"
#include "host/command_line.h"

namespace cephtool {

// "--sex", "--scale" and the like.
class CaseOptionFlags {
 public:
    explicit CaseOptionFlags(CommandLine& line);
    // "--image", the X-ray of the only case, and the same for commands that take several, an X-ray for each case.
    Option add_image(const std::string& help);
    Option add_images(const std::string& help);

    // "--population", as tool::population_named has it; "" when not given.
    std::string population() const;
    // Those for all cases, and with the X-ray for that at this place of the command line. Both throw an Error when a
    // file that an option names can't be read.
    CaseOptions options() const;
    CaseOptions options(std::size_t place) const;
    // Those files.
    std::vector<std::string> files() const;
    // Throws an Error when there are more X-rays than cases.
    void check_images(std::size_t cases) const;

 private:
    void tell_scale(CaseOptions& options) const;

    CommandLine& line_;
    std::string image_;
    std::vector<std::string> images_;
    std::string sex_, population_, scale_, ruler_, magnification_, landmarks_, image_height_;
    bool mirror_ = false, flip_y_ = false;
};

}  // namespace cephtool
