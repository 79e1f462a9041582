#include "analysis/check/findings.h"

#include <algorithm>

#include "platform/number_text.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr std::size_t longest_shown = 60;
constexpr std::size_t shortest_with_slip = 4;

// Whether the names differ in the case of letters and in blanks only.
bool same_letters(std::string_view a, std::string_view b) {
    std::size_t i = 0, k = 0;
    for (;; ++i, ++k) {
        while (i < a.size() && is_space(a[i])) ++i;
        while (k < b.size() && is_space(b[k])) ++k;
        if (i == a.size() || k == b.size()) return i == a.size() && k == b.size();
        if (ascii_lower(a[i]) != ascii_lower(b[k])) return false;
    }
}

// One byte more, one less, or another one.
bool one_slip_apart(std::string_view a, std::string_view b) {
    if (a.size() > b.size()) std::swap(a, b);
    if (b.size() - a.size() > 1 || b.size() < shortest_with_slip) return false;
    const std::size_t same = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
    return a.size() == b.size() ? a.substr(std::min(same + 1, a.size())) == b.substr(std::min(same + 1, b.size()))
                                : a.substr(same) == b.substr(same + 1);
}

int characters(std::string_view text) {
    int count = 0;
    for (; !text.empty(); text.remove_prefix(char_length(text))) ++count;
    return count;
}

}  // namespace

void Findings::add(std::string_view place, bool note, std::string message) {
    found_.push_back({static_cast<std::size_t>(place.data() - text_.data()), note, std::move(message)});
}

void Findings::append_to(std::vector<CheckFinding>& all, std::string_view path) {
    // What concerns the whole file comes first: npos + 1 is 0.
    std::ranges::sort(found_, {},
                      [](const Found& found) { return std::pair(found.at + 1, std::string_view(found.message)); });
    const auto behind_last = std::unique(found_.begin(), found_.end());
    std::size_t line_begin = 0;
    int line = 1;
    for (auto found = found_.begin(); found != behind_last; ++found) {
        CheckFinding& made = all.emplace_back();
        made.path = CString(path);
        made.note = found->note;
        made.message = CString(found->message);
        if (found->at == whole_file) continue;
        for (std::size_t end; (end = text_.find('\n', line_begin)) < found->at; line_begin = end + 1) ++line;
        made.line = line;
        made.column = characters(text_.substr(line_begin, found->at - line_begin)) + 1;
    }
}

std::string quoted(std::string_view name) {
    std::string shown = "\"";
    while (!name.empty() && shown.size() < longest_shown) {
        const std::size_t length = char_length(name);
        const bool is_half = length == 1 && is_lead_byte(static_cast<unsigned char>(name[0]));
        shown += is_half ? "?" : name.substr(0, length);  // half a character would swallow the quote behind it
        name.remove_prefix(length);
    }
    return shown + (name.empty() ? "\"" : "...\"");
}

std::string counted(int count, std::string_view thing) {
    return print_int(count) + " " + std::string(thing) + (count == 1 ? "" : "s");
}

std::string_view meant_name(std::string_view name, std::span<const std::string_view> candidates) {
    for (const auto close : {same_letters, one_slip_apart})
        for (const std::string_view candidate : candidates)
            if (candidate != name && close(name, candidate)) return candidate;
    return {};
}

std::string suggestion(std::string_view meant) {
    return meant.empty() ? std::string() : " (did you mean " + quoted(meant) + "?)";
}

}  // namespace tool
