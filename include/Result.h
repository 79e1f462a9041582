// Addition of this project: what may fail gives a value or the reason why there is none.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace tool {

// A sentence in UTF-8 without its full stop: "Permission denied".
struct Failure {
    std::string reason;
};

template <class T>
class [[nodiscard]] Result {
 public:
    Result(T value) : content_(std::in_place_index<0>, std::move(value)) {}
    Result(Failure failure) : content_(std::in_place_index<1>, std::move(failure)) {}

    explicit operator bool() const { return content_.index() == 0; }
    // The value; std::bad_variant_access without one.
    T& operator*() & { return std::get<0>(content_); }
    const T& operator*() const& { return std::get<0>(content_); }
    T&& operator*() && { return std::get<0>(std::move(content_)); }
    T* operator->() { return &std::get<0>(content_); }
    const T* operator->() const { return &std::get<0>(content_); }
    // "" with a value.
    std::string reason() const { return *this ? std::string() : std::get<1>(content_).reason; }

 private:
    std::variant<T, Failure> content_;
};

}  // namespace tool
