// What outputs call analyses, their items and findings, and whose norms they say they have, in a language. A program
// that reads outputs goes by the names of the files, which are the same in all languages.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "results/measurement.h"
#include "results/texts.h"

namespace cephtool {

std::string title_of(const Analysis& analysis, const Texts& texts);
std::string comment_of(const Analysis& analysis, const Texts& texts);
std::string title_of(const DisplayMode& mode, const Texts& texts);
std::string label_of(const Measurement& item, const Texts& texts);
std::string label_of(const tool::Item& item, const Texts& texts);
// The text of an item that has one in place of a value.
std::string verdict_of(const Measurement& item, const Texts& texts);
// "°" for "deg"; other units as they are.
std::string unit_sign(const std::string& unit);
// Of a finding: what it is about, and the stage that it found.
std::string what_of(const Finding& finding, const Texts& texts);
std::string stage_of(const Finding& finding, const Texts& texts);

// "Japanese adults"
std::string in_words(const tool::Population& population, const Texts& texts);
// Whose norms count, and of which stages: "Norms: Japanese adults; mixed dentition (age 9.5)". "" when nothing is
// known.
std::string norms_in_words(const NormBand& band, const Texts& texts);

// What positive values mean, each meaning with the items that it holds for, of those with a value: "+ in front of the
// line: U1 to NA distance, Pog to NB". Where it is all of a heading's items, or of the sheet's, and more than two, that
// is said instead of their names.
std::vector<std::string> signs_in_words(std::span<const Measurement> items, const Texts& texts);

// What stands behind a norm whose source nobody saw, and below the table why, likewise: "† textbook figure, not seen in
// print: SNA; SNB".
inline constexpr const char* unverified_mark = "†";
std::vector<std::string> unverified_in_words(std::span<const Measurement> items, const Texts& texts);

}  // namespace cephtool
