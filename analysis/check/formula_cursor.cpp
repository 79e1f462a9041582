#include "analysis/check/formula_cursor.h"

#include "platform/text.h"

namespace tool {
namespace {

constexpr int deepest_nesting = 60;  // groups and constructions inside each other

}  // namespace

bool is_letter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

char FormulaCursor::next() {
    const std::size_t begin = at_;
    for (; at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t'); ++at_)
        if (text_[at_] == '\t') remember(tabs_, here());
    twin_ += text_.substr(begin, at_ - begin);
    return at_ < text_.size() ? text_[at_] : '\0';
}

std::string_view FormulaCursor::here() const {
    return text_.substr(at_, char_length(text_.substr(at_)));
}

void FormulaCursor::take(std::size_t count) {
    twin_ += text_.substr(at_, count);
    last_taken_ = at_;
    at_ += count;
}

std::string_view FormulaCursor::word() const {
    std::size_t end = at_;
    while (end < text_.size() && (is_letter(text_[end]) || is_digit(text_[end]))) ++end;
    return text_.substr(at_, end - at_);
}

std::string_view FormulaCursor::opening(std::string_view name) {
    if (next() != '(') {
        fail(name, "a \"(\" is missing behind " + quoted(name));
        return {};
    }
    return text_.substr(at_++, 1);
}

std::optional<std::string_view> FormulaCursor::bracketed() {
    const std::string_view open = here();
    const std::size_t length = find_char(text_.substr(at_ + 1), ']');
    const std::string_view name = text_.substr(at_ + 1, length);
    if (length == std::string_view::npos || find_char(name, '[') != std::string_view::npos) {
        fail(open, "this \"[\" is never closed; write \"]\" behind the name");
        return std::nullopt;
    }
    at_ += length + 2;
    return name;
}

bool FormulaCursor::enter(std::string_view place) {
    if (++depth_ <= deepest_nesting) return true;
    fail(place, "too many brackets inside each other; split the formula over several items");
    return false;
}

bool FormulaCursor::close_here(std::string_view open) {
    if (next() == ')') {
        ++at_;
        return true;
    }
    fail(open, "this \"(\" is never closed; write \")\" where its part ends");
    return false;
}

bool FormulaCursor::close(std::string_view open) {
    if (!sound_) return false;
    if (next() != ')' && at_ < text_.size()) {
        fail(here(), quoted(here()) + " does not belong here; an operator or \")\" is missing");
        return false;
    }
    if (!close_here(open)) return false;
    twin_ += ')';
    --depth_;
    return true;
}

void FormulaCursor::fail(std::string_view place, std::string message) {
    if (sound_) findings_.fault(place, std::move(message));
    sound_ = false;
}

void FormulaCursor::slip(std::string_view place, std::string message) {
    findings_.fault(place, std::move(message));
    has_faults_ = true;
}

}  // namespace tool
