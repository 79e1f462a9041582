// The words of outputs in the languages that they can be printed in.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/remark.h"
#include "cases/case.h"

namespace cephtool {

enum class Language { english, japanese };

class Texts {
 public:
    explicit Texts(Language language) : language_(language) {}

    Language language() const { return language_; }

    // The text whose English form is given; that itself when the table lacks it.
    std::string operator()(std::string_view english) const;
    // The text with "%1" and "%2" replaced.
    std::string operator()(std::string_view english, const std::string& first, const std::string& second = {}) const;

    std::string operator()(const Remark& remark) const;
    // The Japanese text in Japanese, where there is one.
    std::string chosen(const std::string& english, const std::string& japanese) const;
    // Of a text "English (Japanese)" the part of the language; one in a single language whole.
    std::string part(const std::string& both) const;

    std::string sex(const std::optional<Sex>& sex) const;
    // With the era, where the day has one; a dash without a day.
    std::string date(const std::optional<Date>& date) const;
    // At the film, in completed years and months; a dash when a date is missing.
    std::string age(const Case& record) const;
    // The name of one of several films, counted from 0: "Film 1".
    std::string film(std::size_t index) const;
    std::string kind(Kind kind) const;
    // What is remarked on films of one patient, each once, behind the names of its films where it is not of all.
    std::vector<std::string> remarks(const std::vector<std::span<const Remark>>& films) const;

 private:
    // "name, sex", each word in the language.
    std::string list_of(std::string_view words) const;

    Language language_;
};

}  // namespace cephtool
