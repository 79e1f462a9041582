// An error that the engine itself finds, by a key: the page has words for it in each language.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/error.h"

namespace engine {

class Fault : public cephtool::Error {
 public:
    // `names` are what the words name: landmarks, files.
    Fault(std::string fault, const std::string& message, std::string advice = {}, std::vector<std::string> named = {})
        : Error(cephtool::ExitCode::bad_input, message, std::move(advice)),
          key(std::move(fault)),
          names(std::move(named)) {}

    std::string key;
    std::vector<std::string> names;
};

}  // namespace engine
