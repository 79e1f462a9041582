// cephtool compose: an analysis of one's own, made of items of several.
#include <ComposedAnalysis.h>

#include <algorithm>
#include <ostream>

#include "base/suggestion.h"
#include "base/wording.h"
#include "host/command_line.h"
#include "host/output.h"
#include "host/selection.h"

namespace cephtool {
namespace {

struct Wish {
    std::string analysis, items;  // as given; no items: all
};

Wish wish_of(const std::string& word, std::span<const Analysis> listed) {
    // A title or a path may hold a colon: the longest name that is one counts.
    for (std::size_t colon = word.size(); colon != std::string::npos && colon > 0; colon = word.rfind(':', colon - 1))
        if (!named(listed, word.substr(0, colon)).empty())
            return {word.substr(0, colon), colon < word.size() ? word.substr(colon + 1) : ""};
    const std::size_t end = lower_case(word).rfind(".txt:");
    if (end != std::string::npos) return {word.substr(0, end + 4), word.substr(end + 5)};
    if (lower_case(word).ends_with(".txt")) return {word, ""};
    return {word.substr(0, word.find(':')), word.find(':') == std::string::npos ? "" : word.substr(word.find(':') + 1)};
}

// The items that a list names; names may hold commas themselves. Nothing with the rest that names none.
std::vector<std::size_t> items_in(const std::string& list, const Analysis& analysis, std::string& unknown) {
    std::vector<std::size_t> found;
    const auto items = analysis.items();
    const std::string wanted = lower_case(list);
    for (std::size_t from = 0; from <= wanted.size();) {
        std::optional<std::size_t> longest;
        std::size_t end = 0;
        for (std::size_t i = 0; i < items.size(); ++i) {
            const std::string name = lower_case(printable(items[i].name));
            if (items[i].heading || name.empty() || wanted.compare(from, name.size(), name) != 0) continue;
            if (from + name.size() < wanted.size() && wanted[from + name.size()] != ',') continue;
            if (longest && from + name.size() <= end) continue;
            longest = i;
            end = from + name.size();
        }
        if (!longest) {
            unknown = list.substr(from, list.find(',', from) - from);
            return {};
        }
        found.push_back(*longest);
        from = end + 1;
    }
    return found;
}

void add(std::vector<tool::ComposedItem>& all, const Wish& wish, std::span<const AnalysisFamily> families,
         const std::string& kind) {
    std::vector<std::string> known;
    std::string unknown;
    std::vector<std::pair<const Analysis*, std::vector<std::size_t>>> fitting;
    for (const AnalysisFamily& family : families) {
        const Analysis& analysis = *family.base;
        const bool of_kind = kind.empty() || kind == kind_name(analysis);
        const bool fits_others = all.empty() || case_kind(analysis) == case_kind(*all.front().analysis);
        if (!of_kind || (!fits_others && families.size() > 1)) continue;
        std::vector<std::size_t> items;
        if (wish.items.empty())
            for (std::size_t i = 0; i < analysis.items().size(); ++i) items.push_back(i);
        else
            items = items_in(wish.items, analysis, unknown);
        if (!items.empty()) fitting.emplace_back(&analysis, items);
        for (const tool::Item& item : analysis.items())
            if (!item.heading) known.push_back(printable(item.name));
    }
    if (fitting.empty()) {
        const std::string meant = did_you_mean(unknown, known);
        throw Error(ExitCode::bad_command_line, in_quotes(wish.analysis) + " has no item " + in_quotes(unknown),
                    (meant.empty() ? "" : meant + " ") + "\"cephtool analyses NAME\" lists the items of one.");
    }
    const auto is_other = [&](const auto& each) {
        return case_kind(*each.first) != case_kind(*fitting.front().first) ||
               each.first->file() != fitting.front().first->file();
    };
    if (kind.empty() && std::ranges::any_of(fitting, is_other) && fitting.front().first->place()) {
        throw Error(ExitCode::bad_command_line, "several analyses are named " + in_quotes(wish.analysis),
                    "Say with --kind which is meant, or name it by its title.");
    }
    for (const std::size_t item : fitting.front().second) all.push_back({fitting.front().first, item});
}

}  // namespace

ExitCode run_compose(const Command& command, const Arguments& arguments, Streams& streams) {
    std::vector<std::string> words;
    std::string title = "Own analysis (自作の分析)", kind, folder, output;
    CommandLine line(command, "cephtool compose Steiner:SNA,SNB,ANB Wits -o new.txt",
                     "cephtool compose --title Ours Tweed:FMA,IMPA Kim -o new.txt");
    line.add_argument("NAME:ITEMS", words, "an analysis and items of it; without\nitems, all of them").required();
    line.add_text("--title", "TEXT", title, "of the new analysis");
    line.add_choice("--kind", kind, {"lateral", "frontal", "model", "diagnosis", "surgery"},
                    "where analyses of several kinds have\nthe name");
    line.add_analysis_folder(folder);
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;

    const Selection listed(folder, {}, streams);
    std::vector<Wish> wishes;
    std::vector<Selection> selections;  // own what the items are of
    for (const std::string& word : words) {
        wishes.push_back(wish_of(word, listed.listed()));
        check_output(output, {wishes.back().analysis});
    }
    selections.reserve(wishes.size());
    std::vector<tool::ComposedItem> items;
    for (const Wish& wish : wishes) {
        const bool is_listed = !named(listed.listed(), wish.analysis).empty();
        std::vector<AnalysisFamily> families;
        if (is_listed) {
            for (const Analysis* analysis : named(listed.listed(), wish.analysis)) families.emplace_back(analysis);
        } else {
            const Selection& own = selections.emplace_back(folder, Arguments{wish.analysis}, streams);
            families.assign(own.chosen().begin(), own.chosen().end());
        }
        add(items, wish, families, kind);
    }
    const auto text = tool::compose(title, items);
    if (!text)
        throw Error(ExitCode::bad_command_line, text.reason(), "\"cephtool help compose\" shows how it is used.");
    write_result(*text, output, streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
