#include "film/window.h"

#include <algorithm>
#include <cmath>

namespace tool {
namespace {

double device_value(const GreyRule& rule, std::size_t sample) {
    const double stored = static_cast<double>(sample) + rule.lowest;
    return rule.modality.entries.empty() ? stored * rule.slope + rule.intercept : rule.modality(stored);
}

// From 0 to 1. DICOM PS3.3 C.11.2.1.2.1, .3.2 and .3.1, in this order.
double brightness(const GreyWindow& window, double value) {
    switch (window.shape) {
        case GreyWindow::Shape::linear:
            if (window.width <= 1) return value <= window.centre - 0.5 ? 0 : 1;
            return (value - (window.centre - 0.5)) / (window.width - 1) + 0.5;
        case GreyWindow::Shape::linear_exact: return (value - window.centre) / window.width + 0.5;
        case GreyWindow::Shape::sigmoid: return 1 / (1 + std::exp(-4 * (value - window.centre) / window.width));
    }
    return 0;
}

// Black at `low`, white at `high`.
GreyWindow window_between(double low, double high) {
    const double width = std::max(high - low, 1e-9);
    return {low + width / 2, width, GreyWindow::Shape::linear_exact};
}

GreyWindow values_in(const Film& film) {
    if (film.grey.empty()) return {};
    const auto [low, high] = std::minmax_element(film.grey.begin(), film.grey.end());
    const double one = device_value(film.rule, *low), other = device_value(film.rule, *high);
    return window_between(std::min(one, other), std::max(one, other));
}

// All that as many bits can hold as the samples use, of 8 at least: scanners put 12 bits into 16.
GreyWindow depth_of(const Film& film) {
    const unsigned highest = film.grey.empty() ? 0 : *std::max_element(film.grey.begin(), film.grey.end());
    int bits = std::min(film.bits, 8);
    while (bits < film.bits && highest >> bits != 0) ++bits;
    return window_between(0, (1 << bits) - 1);
}

// Whether its values are a detector's, which begin and end anywhere, rather than a picture's.
bool is_measured(const Film& film) {
    return film.header.format == "DICOM" && film.bits > 8;
}

}  // namespace

std::optional<GreyWindow> window_of(const Film& film, const FilmView& view) {
    if (view.greys == FilmView::Greys::given) return view.window;
    if (view.greys == FilmView::Greys::full) return values_in(film);
    if (!film.rule.windows.empty()) return film.rule.windows.front();
    if (!film.rule.voi.entries.empty()) return {};
    return is_measured(film) || film.rule.lowest < 0 || !film.rule.modality.entries.empty() ? values_in(film)
                                                                                            : depth_of(film);
}

std::vector<std::uint8_t> shades(const Film& film, const FilmView& view) {
    const std::optional<GreyWindow> window = window_of(film, view);
    const GreyTable& table = film.rule.voi;
    const double table_white = static_cast<double>((1u << table.bits) - 1);
    std::vector<std::uint8_t> shades(std::size_t{1} << film.bits);
    for (std::size_t sample = 0; sample < shades.size(); ++sample) {
        const double value = device_value(film.rule, sample);
        const double bright = std::clamp(window ? brightness(*window, value) : table(value) / table_white, 0.0, 1.0);
        const bool inverted = film.rule.white_is_low != view.inverted;
        shades[sample] = static_cast<std::uint8_t>((inverted ? 1 - bright : bright) * 255 + 0.5);
    }
    return shades;
}

std::vector<std::uint32_t> shown_pixels(const Film& film, const FilmView& view) {
    std::vector<std::uint32_t> pixels(film.colour);
    if (!film.grey.empty()) {
        const std::vector<std::uint8_t> shade = shades(film, view);
        pixels.reserve(film.grey.size());
        for (const std::uint16_t sample : film.grey) pixels.push_back(0xFF000000u | shade[sample] * 0x010101u);
    } else if (view.inverted) {
        for (std::uint32_t& pixel : pixels) {  // a channel is at most alpha
            const std::uint32_t alpha = pixel >> 24;
            pixel = alpha << 24 | (alpha * 0x010101u - (pixel & 0xFFFFFF));
        }
    }
    return pixels;
}

}  // namespace tool
