#include "report/agreement_plot.h"

#include <Tools.h>

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "report/style.h"
#include "tracing/font.h"

namespace cephtool {
namespace {

constexpr COLORREF limit_band = RGB(236, 238, 241), bias_band = RGB(208, 222, 240), bias_ink = RGB(20, 70, 160);
constexpr double left_mm = 11, right_mm = 13, foot_mm = 9.5, dot_mm = 0.55, tick_mm = 1.2;

void draw_dashes(const Canvas& canvas, Position from, Position to, COLORREF colour) {
    constexpr int up = 1;
    const CPoint a = on_surface(from), b = on_surface(to);
    CTools::Draw_Line(&canvas.dc, a.x, a.y, b.x, b.y, 2, colour, PS_DASH, up);
}

// As many decimals as tell numbers this far apart from each other.
std::string axis_text(double number, double step) {
    const int decimals = std::clamp(static_cast<int>(std::ceil(-std::log10(step) - 1e-9)), 0, 6);
    const std::string text = with_decimals(number, decimals);
    return text.find_first_of("123456789") == std::string::npos && text.starts_with("-") ? text.substr(1) : text;
}

std::string signed_number(double number) {
    const std::string text = axis_text(number, 0.01);
    return number > 0 && text.find_first_of("123456789") != std::string::npos ? "+" + text : text;
}

// A little more than the numbers take; of numbers that are all the same some room round them.
Interval widened(Interval range) {
    constexpr double edge = 0.06, least = 1e-6;
    const double width = range.high - range.low;
    const double more = width > least * (1 + std::abs(range.high)) ? edge * width : 0.5;
    return {range.low - more, range.high + more};
}

class Plot {
 public:
    Plot(const Canvas& canvas, const Box& box, const AgreementPlot& plot)
        : canvas_(canvas),
          plot_(plot),
          title_(box),
          area_{box.left + left_mm, box.top + 2.9 * note_mm, box.right - right_mm, box.bottom - foot_mm} {
        const double bias = plot.pair.bias;
        low_ = limit_interval(plot.pair, plot.films.size(), plot.pair.limits.low);
        high_ = limit_interval(plot.pair, plot.films.size(), plot.pair.limits.high);
        x_ = {plot.films.front().x, plot.films.front().x};
        y_ = {std::min({0.0, bias, low_.low}), std::max({0.0, bias, high_.high})};
        for (const Position& film : plot.films) {
            x_ = {std::min(x_.low, film.x), std::max(x_.high, film.x)};
            y_ = {std::min(y_.low, film.y), std::max(y_.high, film.y)};
        }
        x_ = widened(x_), y_ = widened(y_);
    }

    void paint() const {
        const PairAgreement& pair = plot_.pair;
        paint_band(low_, limit_band);
        paint_band(high_, limit_band);
        paint_band(pair.bias_interval, bias_band);
        paint_axes();
        draw_line(canvas_.dc, {area_.left, y(0)}, {area_.right, y(0)}, 1, quiet_ink);
        for (const double limit : {pair.limits.low, pair.limits.high})
            draw_dashes(canvas_, {area_.left, y(limit)}, {area_.right, y(limit)}, ink);
        draw_line(canvas_.dc, {area_.left, y(pair.bias)}, {area_.right, y(pair.bias)}, 3, bias_ink);
        for (const Position& film : plot_.films) draw_dot(canvas_.dc, {x(film.x), y(film.y)}, dot_mm, ink);
        paint_texts();
    }

 private:
    double x(double value) const { return area_.left + (value - x_.low) / (x_.high - x_.low) * area_.width(); }
    double y(double value) const { return area_.bottom - (value - y_.low) / (y_.high - y_.low) * area_.height(); }

    void paint_band(const Interval& band, COLORREF colour) const {
        fill_box(canvas_.dc, {area_.left, y(band.high), area_.right, y(band.low)}, colour);
        for (const double end : {band.low, band.high})
            draw_line(canvas_.dc, {area_.left, y(end)}, {area_.right, y(end)}, 1, rule_ink);
    }

    void paint_axes() const {
        draw_line(canvas_.dc, {area_.left, area_.top}, {area_.left, area_.bottom}, 2, quiet_ink);
        draw_line(canvas_.dc, {area_.left, area_.bottom}, {area_.right, area_.bottom}, 2, quiet_ink);
        const SelectedFont font(canvas_, note_mm);
        const auto step = [](const std::vector<double>& numbers) {
            return numbers.size() > 1 ? numbers[1] - numbers[0] : 1;
        };
        const std::vector<double> right = axis_numbers(x_, 6), upward = axis_numbers(y_, 6);
        for (const double number : right) {
            draw_line(canvas_.dc, {x(number), area_.bottom}, {x(number), area_.bottom + tick_mm}, 2, quiet_ink);
            const CString text = drawable(axis_text(number, step(right)));
            font.write({x(number) - font.extent(text).x / 2, area_.bottom + tick_mm}, text, quiet_ink);
        }
        for (const double number : upward) {
            draw_line(canvas_.dc, {area_.left - tick_mm, y(number)}, {area_.left, y(number)}, 2, quiet_ink);
            const CString text = drawable(axis_text(number, step(upward)));
            const Position size = font.extent(text);
            font.write({area_.left - tick_mm - 0.6 - size.x, y(number) - size.y / 2}, text, quiet_ink);
        }
    }

    void paint_texts() const {
        {
            const SelectedFont bold(canvas_, body_mm, true);
            bold.write({title_.left, title_.top}, bold.cut(plot_.title, title_.width()), ink);
        }
        const SelectedFont font(canvas_, note_mm);
        font.write({title_.left, title_.top + 1.35 * body_mm}, font.cut(plot_.across, title_.width()), quiet_ink);
        const CString over = font.cut(plot_.over, area_.width() + right_mm);
        font.write({area_.right - font.extent(over).x, area_.bottom + tick_mm + 1.15 * note_mm}, over, quiet_ink);
        // Beside their lines, and apart.
        const PairAgreement& pair = plot_.pair;
        const double apart = 1.1 * note_mm, middle = y(pair.bias);
        const auto write = [&](double value, double at, COLORREF colour) {
            font.write({area_.right + 1, at - note_mm / 2}, drawable(signed_number(value)), colour);
        };
        write(pair.limits.high, std::min(y(pair.limits.high), middle - apart), ink);
        write(pair.bias, middle, bias_ink);
        write(pair.limits.low, std::max(y(pair.limits.low), middle + apart), ink);
    }

    const Canvas& canvas_;
    const AgreementPlot& plot_;
    Box title_, area_;
    Interval low_, high_;  // of the limits
    Interval x_, y_;       // that the axes show
};

}  // namespace

std::vector<Position> means_and_differences(const Readings& readings, std::size_t other) {
    std::vector<Position> films;
    for (const auto& film : readings) films.push_back({(film[0] + film[other]) / 2, film[other] - film[0]});
    return films;
}

Interval limit_interval(const PairAgreement& pair, std::size_t films, double limit) {
    if (!(pair.sd > 0)) return {limit, limit};
    // The bias's interval has the same t.
    const double t = (pair.bias_interval.high - pair.bias) * std::sqrt(static_cast<double>(films)) / pair.sd;
    return {limit - t * pair.limit_error, limit + t * pair.limit_error};
}

std::vector<double> axis_numbers(const Interval& range, int most) {
    const double width = range.high - range.low;
    if (!(width > 0) || !std::isfinite(width)) return {};
    double step = std::pow(10, std::floor(std::log10(width / most)));
    for (const double times : {2.0, 2.5, 2.0, 2.0}) {
        if (std::floor(range.high / step) - std::ceil(range.low / step) + 1 <= most) break;
        step *= times;
    }
    std::vector<double> numbers;
    for (double i = std::ceil(range.low / step); i <= std::floor(range.high / step); ++i) numbers.push_back(i * step);
    return numbers;
}

void draw_agreement_plot(const Canvas& canvas, const Box& box, const AgreementPlot& plot) {
    if (!plot.films.empty()) Plot(canvas, box, plot).paint();
}

}  // namespace cephtool
