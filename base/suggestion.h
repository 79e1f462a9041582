// "Did you mean": the word that somebody probably wanted to type.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace cephtool {

// `Did you mean "WORD"?` with the candidate closest to `word`, "" when none is close. One slip (a wrong, missing,
// additional or exchanged letter) is allowed for every three letters; upper and lower case count as equal.
std::string did_you_mean(std::string_view word, std::span<const std::string> candidates);

}  // namespace cephtool
