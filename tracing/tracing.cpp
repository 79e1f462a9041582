#include "tracing/tracing.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/wording.h"
#include "results/measurement.h"
#include "results/names.h"
#include "tracing/canvas.h"
#include "tracing/cast_outlines.h"
#include "tracing/landmark_finder.h"

namespace cephtool {
namespace {

constexpr std::size_t most_outline_points = 32767;  // that the library draws as one curve

std::vector<Landmark> shown_landmarks(const DisplayMode& mode, LandmarkFinder& find) {
    std::vector<Landmark> shown = find.all();
    if (mode.every_landmark) return shown;
    std::erase_if(shown, [&](const Landmark& landmark) {
        return std::ranges::find(mode.landmarks, landmark.name) == mode.landmarks.end();
    });
    return shown;
}

std::vector<TracingLine> shown_lines(const DisplayMode& mode, LandmarkFinder& find) {
    std::vector<TracingLine> lines;
    for (const tool::ModeLine& line : mode.lines) {
        const auto from = find(line.from), to = find(line.to);
        if (from && to)
            lines.push_back({printable(line.from + "-" + line.to), *from, *to, hex(line.colour), line.bold});
    }
    return lines;
}

std::string rounded_text(double value, tool::ModeDecimals decimals) {
    switch (decimals) {
        case tool::ModeDecimals::none: return with_decimals(value, 0);
        case tool::ModeDecimals::one: return with_decimals(value, 1);
        case tool::ModeDecimals::halves: return with_decimals(std::round(value * 2) / 2, 1);
        default: return with_decimals(value, 2);
    }
}

std::string item_text(const Measurement& item, tool::ModeDecimals decimals, Language language) {
    const Texts texts(language);
    return label_of(item, texts) + " " + (item.value ? rounded_text(*item.value, decimals) : verdict_of(item, texts));
}

std::optional<Position> corner_at(const std::optional<tool::ModePlace>& place, double mm_per_pixel,
                                  LandmarkFinder& find) {
    constexpr double farthest_mm = 1000;  // or it would be on no page
    if (!place || std::abs(place->right_mm) > farthest_mm || std::abs(place->down_mm) > farthest_mm) return {};
    const auto landmark = find(place->landmark);
    if (!landmark) return {};
    return Position{landmark->x + place->right_mm / mm_per_pixel, landmark->y + place->down_mm / mm_per_pixel};
}

std::vector<TracingValue> shown_values(const Case& record, const DisplayMode& mode,
                                       const std::vector<Analysis>& analyses, LandmarkFinder& find) {
    if (mode.values.empty()) return {};
    const CaseResult result = measured(record, families_of(analyses), {}, true);
    const auto item_named = [&](const std::string& name) -> const Measurement* {
        for (const AnalysisResult& analysis : result.analyses)
            for (const Measurement& item : analysis.items)
                if (item.name == name) return &item;
        return nullptr;
    };
    std::vector<TracingValue> values;
    for (const tool::ModeValue& value : mode.values) {
        const Measurement* item = item_named(printable(value.item));
        const auto corner = corner_at(value.place, *record.mm_per_pixel, find);
        if (!item || !item->has_result() || !corner || value.size <= 0) continue;
        values.push_back({item_text(*item, value.decimals, Language::english), *corner, hex(value.colour),
                          static_cast<double>(value.size), item_text(*item, value.decimals, Language::japanese)});
    }
    return values;
}

std::string facts_of(const Case& record) {
    std::vector<std::string> parts{std::string(name_of(record.kind)) +
                                   (record.kind == Kind::model ? " cast" : " film")};
    if (record.sex) parts.emplace_back(name_of(*record.sex));
    if (record.birth && record.film) {
        const Age age = age_at(*record.film, *record.birth);
        parts.push_back(std::to_string(age.years) + " y " + std::to_string(age.months) + " m");
    }
    if (record.film) parts.push_back(text_of(*record.film));
    std::string text;
    for (const std::string& part : parts) text += (text.empty() ? "" : ", ") + part;
    return text;
}

// Crowns and arches of a cast; a width stands beside each crown, in 0.1 mm.
void add_cast(Tracing& tracing, const Case& record) {
    constexpr double size_pt = 7;
    CastPicture cast = cast_picture(record.landmarks, record.user, tracing.mm_per_pixel);
    tracing.outlines = std::move(cast.curves);
    for (const ToothWidth& width : cast.widths) {
        const std::string text = with_decimals(width.width * tracing.mm_per_pixel, 1);
        const double height = size_pt * mm_a_point / tracing.mm_per_pixel;
        const Position corner{width.beside.x - static_cast<double>(text.size()) * height / 4,
                              width.beside.y - height / 2};
        tracing.values.push_back({text, corner, "#003c96", size_pt});
    }
    if (!tracing.outlines.empty()) tracing.origin = "Crowns: usual shapes; dotted: even arch";
}

void add_mirrored_half(Tracing& tracing, const Case& record, Half half) {
    if (record.kind != Kind::frontal || half == Half::none || tracing.outlines.empty()) return;
    const auto midline = midline_of(record.landmarks);
    if (!midline) {
        tracing.notes.emplace_back("no half is mirrored: the midline needs CG and ANS, or ZR and ZL");
        return;
    }
    std::vector<FittedCurve> made = mirrored_half(tracing.outlines, *midline, half);
    tracing.outlines.insert(tracing.outlines.end(), made.begin(), made.end());
    const bool right = half == Half::right;
    if (tracing.origin.empty()) {
        tracing.origin = right ? "Dotted: the right half, mirrored" : "Dotted: the left half, mirrored";
    } else {
        tracing.origin =
            right ? "Outlines: average, fitted; dotted: right half" : "Outlines: average, fitted; dotted: left half";
    }
}

}  // namespace

Tracing tracing_of(const Case& record, const DisplayMode& mode, const std::vector<Analysis>& analyses,
                   const OutlineTemplate& face, OutlineSource outlines, Half mirrored) {
    LandmarkFinder find(record);
    Tracing tracing;
    tracing.patient = record.name.empty() ? printable(record.file) : record.name;
    tracing.facts = facts_of(record);
    tracing.mode = title_of(mode);
    for (const Remark& remark : record.remarks) tracing.remarks.push_back(in_english(remark));
    tracing.mm_per_pixel = record.mm_per_pixel.value();
    tracing.lines = shown_lines(mode, find);
    tracing.landmarks = shown_landmarks(mode, find);
    tracing.values = shown_values(record, mode, analyses, find);
    if (outlines == OutlineSource::none) return tracing;
    if (outlines == OutlineSource::own_or_fitted && !record.outlines.empty()) {
        for (const Outline& outline : record.outlines) {
            if (outline.points.size() <= most_outline_points) {
                tracing.outlines.push_back({outline, face.style_of(outline.name)});
            } else {
                tracing.notes.push_back("outline " + in_quotes(outline.name) + " is not drawn: it has more than " +
                                        std::to_string(most_outline_points) + " points");
            }
        }
        add_mirrored_half(tracing, record, mirrored);
        return tracing;
    }
    if (record.kind == Kind::model) {
        add_cast(tracing, record);
        return tracing;
    }
    OutlineFit fit = fitted_outlines(face, record.landmarks);
    tracing.outlines = std::move(fit.curves);
    tracing.notes = std::move(fit.notes);
    if (!tracing.outlines.empty()) tracing.origin = "Outlines: an average face, fitted to the landmarks";
    add_mirrored_half(tracing, record, mirrored);
    return tracing;
}

}  // namespace cephtool
