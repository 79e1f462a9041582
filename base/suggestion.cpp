#include "base/suggestion.h"

#include <algorithm>
#include <vector>

#include "base/wording.h"

namespace cephtool {
namespace {

// Words longer than this are no slips of the finger; it also bounds the work on untrusted text.
constexpr std::size_t longest_word = 100;

// Optimal string alignment distance: Damerau's four slips (Commun ACM 1964;7:171), no part edited twice.
std::size_t slips(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before_last(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        before_last.swap(last);
        last.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t changed = last[j - 1] + (a[i - 1] != b[j - 1]);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, changed});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], before_last[j - 2] + 1);
            }
        }
    }
    return row[b.size()];
}

}  // namespace

std::string did_you_mean(std::string_view word, std::span<const std::string> candidates) {
    if (word.empty() || word.size() > longest_word) return {};
    const std::string* closest = nullptr;
    std::size_t fewest = word.size() / 3 + 1;
    for (const std::string& candidate : candidates) {
        if (candidate.size() > longest_word) continue;
        const std::size_t count = slips(lower_case(word), lower_case(candidate));
        if (count < fewest) {
            fewest = count;
            closest = &candidate;
        }
    }
    return closest ? "Did you mean \"" + *closest + "\"?" : std::string();
}

}  // namespace cephtool
