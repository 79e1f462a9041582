#include "base/json_tree.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

#include "base/columns.h"
#include "base/wording.h"

namespace cephtool {
namespace {

using nlohmann::json;

constexpr std::size_t deepest = 16;
constexpr std::size_t most_values = 1'000'000;
constexpr int longest_reason = 200;  // the parser quotes the token it was reading, however long that is

// Reads the text for the parser and tells how far it has come, which the parser itself does not.
class Tape {
 public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    Tape(const char* at, const char** reached) : at_(at), reached_(reached) {}
    reference operator*() const { return *at_; }
    Tape& operator++() {
        *reached_ = ++at_;
        return *this;
    }
    Tape operator++(int) {
        const Tape before = *this;
        ++*this;
        return before;
    }
    bool operator==(const Tape& other) const { return at_ == other.at_; }

 private:
    const char* at_;
    const char** reached_;
};

// Takes the parser's events and grows the tree. Throws an Error at the first fault.
class TreeBuilder {
 public:
    explicit TreeBuilder(const Source& source) : source_(source), reached_(source.text.data()) {}

    JsonValue build() {
        const char* const end = source_.text.data() + source_.text.size();
        json::sax_parse(Tape(source_.text.data(), &reached_), Tape(end, &reached_), this);
        return std::move(root_);
    }

    bool null() { return add(number_or_word(), nullptr); }
    bool boolean(bool value) { return add(number_or_word(), value); }
    bool number_integer(json::number_integer_t value) { return add(number_or_word(), static_cast<double>(value)); }
    bool number_unsigned(json::number_unsigned_t value) { return add(number_or_word(), static_cast<double>(value)); }
    bool number_float(json::number_float_t value, const json::string_t&) { return add(number_or_word(), value); }
    bool string(json::string_t& value) { return add({string_at(), reached()}, std::move(value)); }
    bool binary(json::binary_t&) { return false; }
    bool start_object(std::size_t) { return open(JsonObject()); }
    bool start_array(std::size_t) { return open(JsonArray()); }

    bool key(json::string_t& key) {
        auto& members = std::get<JsonObject>(open_.back()->value);
        members.push_back({std::move(key), string_at(), {}});
        return true;
    }

    bool end_object() {
        refuse_double_keys(std::get<JsonObject>(open_.back()->value));
        return end_array();
    }

    bool end_array() {
        open_.back()->end = reached();
        open_.pop_back();
        return true;
    }

    bool parse_error(std::size_t position, const std::string&, const json::exception& fault) {
        // "[json.exception…] parse error at line 1, column 5: syntax error while …": the place is told our way.
        const std::string_view text = fault.what();
        const std::size_t colon = text.find(": ");
        const std::string_view reason = colon == std::string_view::npos ? text : text.substr(colon + 2);
        throw source_.error_at(
            std::min(position > 0 ? position - 1 : 0, source_.text.size()),
            "this is no JSON: " + fitted(printable(reason.substr(0, 4 * longest_reason)), longest_reason),
            "docs/case_format.md shows how a case is written.");
    }

 private:
    struct Extent {
        std::size_t at, end;
    };

    std::size_t reached() const { return static_cast<std::size_t>(reached_ - source_.text.data()); }

    // The parser has read the closing quote; the opening one is the last in front of it without a backslash.
    std::size_t string_at() const {
        const std::string_view text = source_.text;
        std::size_t quote = reached() - 1;
        do {
            quote = text.rfind('"', quote - 1);
            const std::size_t last_other = text.find_last_not_of('\\', quote - 1);
            if ((quote - 1 - last_other) % 2 == 0) break;  // an even number of backslashes escapes nothing
        } while (quote > 0);
        return quote;
    }

    // The parser has read the token, and one character more behind a number.
    Extent number_or_word() const {
        constexpr std::string_view within = "+-.0123456789Eaeflnrstu";
        const std::string_view text = source_.text;
        const std::size_t last = text.find_last_of(within, reached() - 1);
        return {text.find_last_not_of(within, last) + 1, last + 1};  // npos + 1 is 0
    }

    template <class Value>
    bool add(Extent extent, Value&& value) {
        JsonValue& made = place(extent.at);
        made.end = extent.end;
        made.value = std::forward<Value>(value);
        return true;
    }

    template <class Container>
    bool open(Container container) {
        const std::size_t at = reached() - 1;
        if (open_.size() == deepest)
            throw source_.error_at(at, "brackets nested too deeply", "A case needs five levels.");
        JsonValue& value = place(at);
        value.value = std::move(container);
        open_.push_back(&value);
        return true;
    }

    JsonValue& place(std::size_t at) {
        if (++values_ > most_values) {
            throw source_.error_at(at, "more than " + std::to_string(most_values) + " values",
                                   "This is larger than any case; check what the file holds.");
        }
        JsonValue* value = &root_;
        if (!open_.empty()) {
            if (auto* array = std::get_if<JsonArray>(&open_.back()->value)) {
                value = &array->emplace_back();
            } else {
                value = &std::get<JsonObject>(open_.back()->value).back().value;
            }
        }
        value->at = at;
        return *value;
    }

    void refuse_double_keys(const JsonObject& members) const {
        std::vector<const JsonMember*> sorted;
        for (const JsonMember& member : members) sorted.push_back(&member);
        std::ranges::stable_sort(sorted, {}, &JsonMember::key);
        const auto twice = std::ranges::adjacent_find(sorted, {}, &JsonMember::key);
        if (twice == sorted.end()) return;
        const JsonMember &first = **twice, &second = **std::next(twice);
        throw source_.error_at(
            second.key_at, "the key " + in_quotes(second.key) + " stands here a second time",
            "The first is in line " + std::to_string(source_.error_at(first.key_at, "").line) + ". Keep one of them.");
    }

    const Source& source_;
    const char* reached_;
    JsonValue root_;
    std::vector<JsonValue*> open_;  // from the root to the innermost; parents don't grow while a child is open
    std::size_t values_ = 0;
};

}  // namespace

JsonValue read_json(const Source& source) {
    return TreeBuilder(source).build();
}

}  // namespace cephtool
