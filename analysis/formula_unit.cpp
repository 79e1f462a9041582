#include "analysis/formula_unit.h"

#include <algorithm>
#include <map>

#include "analysis/formula.h"
#include "analysis/formula_names.h"
#include "analysis/item_text.h"
#include "platform/number_text.h"
#include "platform/text.h"

namespace tool {
namespace {

constexpr int deepest = 40;  // brackets and references; deeper ones have no unit

std::string_view name_of(Unit unit) {
    switch (unit) {
        case Unit::millimetres: return "mm";
        case Unit::degrees: return "deg";
        case Unit::percent: return "%";
        case Unit::deviations: return "SD";
        default: return "";
    }
}

// The units of a file's items, each worked out once. One that is met again on its own way has none.
using KnownUnits = std::map<const char*, Unit>;

// Reads sums of products over functions, numbers and groups, with the groups as an author means them.
class UnitReader {
 public:
    UnitReader(const DefinitionFile& file, KnownUnits& known, std::string_view text, int depth)
        : file_(file), known_(known), text_(text), depth_(depth) {}

    static Unit unit_of(const DefinitionFile& file, KnownUnits& known, std::string_view name, int depth) {
        const auto line = file.find_item(name);
        if (!line || depth > deepest) return Unit::unknown;
        const auto [entry, first_met] = known.emplace(line->name.data(), Unit::unknown);
        if (!first_met) return entry->second;
        std::string_view text = split_type(line->rest).expression;
        const std::size_t semicolon = text.find(';');
        entry->second = semicolon == std::string_view::npos
                            ? UnitReader(file, known, text, depth).comparison()
                            : of_alternatives(file, known, text.substr(semicolon + 1), depth);
        return entry->second;
    }

 private:
    // The unit that all of them have; texts have none.
    static Unit of_alternatives(const DefinitionFile& file, KnownUnits& known, std::string_view list, int depth) {
        if (list.find('"') != std::string_view::npos) return Unit::unknown;
        std::size_t end = list.find(';');
        const Unit unit = UnitReader(file, known, list.substr(0, end), depth).comparison();
        while (end != std::string_view::npos) {
            list.remove_prefix(end + 1);
            end = list.find(';');
            if (UnitReader(file, known, list.substr(0, end), depth).comparison() != unit) return Unit::unknown;
        }
        return unit;
    }

    Unit comparison() {
        Unit unit = sum();
        while (peek('<') || peek('>') || peek('=')) {
            ++at_;
            if (peek('=')) ++at_;
            sum();
            unit = Unit::number;
        }
        return unit;
    }

    Unit sum() {
        Unit unit = product();
        while (peek('+') || peek('-')) {
            ++at_;
            const Unit other = product();
            if (unit == Unit::number) unit = other;
            if (other != unit && other != Unit::number) unit = Unit::unknown;
        }
        return unit;
    }

    Unit product() {
        Unit unit = factor();
        for (char operation; (operation = next()) == '*' || operation == '/';) {
            ++at_;
            const Unit other = factor();
            if (operation == '/')
                unit = other == Unit::number ? unit : other == unit ? Unit::ratio : Unit::unknown;
            else if (other == Unit::number)
                unit = unit == Unit::ratio && last_number_ == 100 ? Unit::percent : unit;
            else
                unit = unit == Unit::number ? other : Unit::unknown;
        }
        return unit;
    }

    Unit factor() {
        if (depth_ >= deepest) return give_up();
        ++depth_;
        const Unit unit = function_or_number();
        --depth_;
        return unit;
    }

    Unit function_or_number() {
        const char first = next();
        if (first == '(') {
            ++at_;
            const Unit unit = comparison();
            if (peek(')')) ++at_;
            return unit;
        }
        if (is_digit(first) || first == '.') {
            std::size_t used = 0;
            last_number_ = read_double(text_.substr(at_), &used);
            at_ += std::max<std::size_t>(used, 1);
            return Unit::number;
        }
        const std::string_view rest = text_.substr(at_);
        for (const ValueFunction& function : value_functions) {
            if (!rest.starts_with(function.name)) continue;
            if (function.unit == Unit::of_item) return reference();
            at_ += function.name.size();
            pass_over_arguments();
            const std::size_t token = cast_measure_at(rest);
            return token ? unit_of_cast_measure(rest.substr(token)) : function.unit;
        }
        return give_up();
    }

    static Unit unit_of_cast_measure(std::string_view token) {
        if (token.starts_with("[ATR]") || token.starts_with("[TTR]")) return Unit::percent;
        return token.starts_with("[PLT") ? Unit::number : Unit::millimetres;
    }

    // The function at hand gives what belongs to an item, in its unit.
    Unit reference() {
        const auto name = quoted_name(text_.substr(at_));
        if (!name) return give_up();
        at_ += name->end;
        return unit_of(file_, known_, name->name, depth_ + 1);
    }

    Unit give_up() {
        at_ = text_.size();
        return Unit::unknown;
    }

    // "(...)" with its groups, names and quotes.
    void pass_over_arguments() {
        if (next() != '(') return;
        int open = 0;
        do {
            const char c = text_[at_];
            if (c == '(') ++open;
            if (c == ')') --open;
            if (c == '[' || c == '"') {
                const std::size_t close = text_.find(c == '[' ? ']' : '"', at_ + 1);
                at_ = std::min(close, text_.size() - 1);
            }
            at_ += char_length(text_.substr(at_));
        } while (open > 0 && at_ < text_.size());
    }

    char next() {
        while (at_ < text_.size() && text_[at_] == ' ') ++at_;
        return at_ < text_.size() ? text_[at_] : '\0';
    }
    bool peek(char c) { return next() == c; }

    const DefinitionFile& file_;
    KnownUnits& known_;
    std::string_view text_;
    std::size_t at_ = 0;
    int depth_;
    double last_number_ = 0;
};

}  // namespace

std::string_view unit_of_item(const DefinitionFile& file, std::string_view name) {
    KnownUnits known;
    return name_of(UnitReader::unit_of(file, known, name, 0));
}

}  // namespace tool
