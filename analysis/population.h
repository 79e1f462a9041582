// Whose norms a definition file has: what its line "Population=NAME[, who in more words] (Japanese)" says, and by which
// words a population is asked for.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// Texts are UTF-8.
struct PopulationName {
    std::string name;      // "Japanese", what it is chosen by; "" for an empty line
    std::string japanese;  // the same in Japanese; `name` where there is none
};

// Of a whole line, or of what somebody asks for: names of the stock in any letter case and in Japanese, with whatever
// words follow ("Japanese adults (...)" is "Japanese"). Others are taken up to the first comma or bracket, as they are.
PopulationName population_name(std::string_view text);

}  // namespace tool
