// What the library of emscripten 3.1 lacks of C++20 and the rooms use, in front of every file of a web build:
// algorithms on ranges with projections, and bit_cast. To go with the first emscripten that has them.
#pragma once

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>
#include <version>

#ifndef __cpp_lib_bit_cast
namespace std {
template <class To, class From>
constexpr To bit_cast(const From& from) noexcept {
    return __builtin_bit_cast(To, from);
}
}  // namespace std
#endif

#ifndef __cpp_lib_ranges
namespace std::ranges {

constexpr auto find_if(auto&& range, auto wanted, auto projection) {
    auto at = std::begin(range);
    for (const auto last = std::end(range); at != last; ++at)
        if (std::invoke(wanted, std::invoke(projection, *at))) break;
    return at;
}
constexpr auto find_if(auto&& range, auto wanted) {
    return ranges::find_if(range, std::move(wanted), std::identity());
}
constexpr auto find(auto&& range, const auto& value, auto projection) {
    return ranges::find_if(
        range, [&](const auto& each) { return each == value; }, std::move(projection));
}
constexpr auto find(auto&& range, const auto& value) {
    return ranges::find(range, value, std::identity());
}
template <class Projection = std::identity>
constexpr bool any_of(auto&& range, auto wanted, Projection projection = {}) {
    return ranges::find_if(range, std::move(wanted), std::move(projection)) != std::end(range);
}
template <class Projection = std::identity>
constexpr bool none_of(auto&& range, auto wanted, Projection projection = {}) {
    return !ranges::any_of(range, std::move(wanted), std::move(projection));
}
template <class Projection = std::identity>
constexpr bool all_of(auto&& range, auto wanted, Projection projection = {}) {
    return ranges::none_of(range, std::not_fn(std::move(wanted)), std::move(projection));
}
template <class Projection = std::identity>
constexpr auto count_if(auto&& range, auto wanted, Projection projection = {}) {
    return std::count_if(std::begin(range), std::end(range), [&](const auto& each) {
        return static_cast<bool>(std::invoke(wanted, std::invoke(projection, each)));
    });
}
template <class Projection = std::identity>
constexpr auto count(auto&& range, const auto& value, Projection projection = {}) {
    return ranges::count_if(
        range, [&](const auto& each) { return each == value; }, std::move(projection));
}
template <class Less = std::less<>, class Projection = std::identity>
constexpr void sort(auto&& range, Less less = {}, Projection projection = {}) {
    std::sort(std::begin(range), std::end(range), [&](const auto& a, const auto& b) {
        return std::invoke(less, std::invoke(projection, a), std::invoke(projection, b));
    });
}
template <class Less = std::less<>, class Projection = std::identity>
void stable_sort(auto&& range, Less less = {}, Projection projection = {}) {
    std::stable_sort(std::begin(range), std::end(range), [&](const auto& a, const auto& b) {
        return std::invoke(less, std::invoke(projection, a), std::invoke(projection, b));
    });
}
template <class Less = std::less<>, class Projection = std::identity>
constexpr auto upper_bound(auto&& range, const auto& value, Less less = {}, Projection projection = {}) {
    return std::upper_bound(std::begin(range), std::end(range), value, [&](const auto& v, const auto& each) {
        return std::invoke(less, v, std::invoke(projection, each));
    });
}
template <class Less = std::less<>>
constexpr bool binary_search(auto&& range, const auto& value, Less less = {}) {
    return std::binary_search(std::begin(range), std::end(range), value, less);
}
template <class Equal = std::equal_to<>, class Projection = std::identity>
constexpr auto adjacent_find(auto&& range, Equal equal = {}, Projection projection = {}) {
    return std::adjacent_find(std::begin(range), std::end(range), [&](const auto& a, const auto& b) {
        return std::invoke(equal, std::invoke(projection, a), std::invoke(projection, b));
    });
}
template <class Equal = std::equal_to<>>
constexpr bool equal(auto&& a, auto&& b, Equal equal = {}) {
    return std::equal(std::begin(a), std::end(a), std::begin(b), std::end(b), equal);
}
constexpr auto move(auto&& range, auto to) {
    return std::move(std::begin(range), std::end(range), to);
}
constexpr auto copy(auto&& range, auto to) {
    return std::copy(std::begin(range), std::end(range), to);
}
constexpr auto copy_if(auto&& range, auto to, auto wanted) {
    return std::copy_if(std::begin(range), std::end(range), to, wanted);
}
constexpr auto transform(auto&& range, auto to, auto work) {
    return std::transform(std::begin(range), std::end(range), to, work);
}
constexpr void replace(auto&& range, const auto& old_value, const auto& new_value) {
    std::replace(std::begin(range), std::end(range), old_value, new_value);
}
constexpr void fill(auto&& range, const auto& value) {
    std::fill(std::begin(range), std::end(range), value);
}
constexpr void reverse(auto&& range) {
    std::reverse(std::begin(range), std::end(range));
}
constexpr auto mismatch(auto&& a, auto&& b) {
    const auto at = std::mismatch(std::begin(a), std::end(a), std::begin(b), std::end(b));
    struct {
        decltype(at.first) in1;
        decltype(at.second) in2;
    } const result{at.first, at.second};
    return result;
}
template <class Value>
struct minmax_result {
    Value min, max;
};
template <class Value>
constexpr minmax_result<Value> minmax(std::initializer_list<Value> values) {
    const auto [least, most] = std::minmax(values);
    return {least, most};
}
template <class Projection = std::identity>
constexpr auto minmax(auto&& range, std::less<> = {}, Projection projection = {}) {
    const auto [least, most] = std::minmax_element(
        std::begin(range), std::end(range),
        [&](const auto& a, const auto& b) { return std::invoke(projection, a) < std::invoke(projection, b); });
    return minmax_result<std::remove_cvref_t<decltype(*least)>>{*least, *most};
}

}  // namespace std::ranges
#endif
