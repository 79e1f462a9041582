// The analyses that a command line names.
#pragma once

#include <deque>
#include <span>
#include <string>
#include <vector>

#include "host/command.h"
#include "results/catalogue.h"

namespace cephtool {

class Selection {
 public:
    // Titles, file names, and definition files of the person's own; none takes all that the folder lists. What is
    // listed but can't be read is noted. Throws an Error for a name that is nothing of that.
    Selection(const std::vector<std::string>& names, Streams& streams);

    // All that the folder lists.
    const std::vector<Analysis>& listed() const { return listed_; }
    // Valid as long as this object.
    std::span<const Analysis* const> chosen() const { return chosen_; }

 private:
    void choose(const std::string& name, Streams& streams);

    std::vector<Analysis> listed_;
    std::deque<std::vector<Analysis>> from_files_;
    std::vector<const Analysis*> chosen_;
};

}  // namespace cephtool
