#include "report/tracing_section.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "base/wording.h"
#include "report/patient_section.h"
#include "report/style.h"
#include "report/superimposition.h"
#include "tracing/font.h"
#include "tracing/tracing_drawing.h"

namespace cephtool {
namespace {

constexpr double least_tracing_mm = 110, legend_mm = 17, caption_mm = line_height(9);

std::string scale_text(const Texts& texts, double enlargement) {
    if (enlargement == 1) return texts("True size (scale 1:1)");
    return texts("Scale %1 % of true size", std::to_string(std::lround(enlargement * 100)));
}

std::optional<FilmSize> size_of(const std::optional<Film>& film) {
    if (!film) return {};
    return FilmSize{film->picture.width, film->picture.height};
}

Ruler report_ruler(const Texts& texts, double enlargement, double width) {
    const bool at_true_size = enlargement == 1;
    const bool fits_beside = 100 * enlargement < width / 2;
    return {fits_beside ? 100 : 50,
            !fits_beside ? "50 mm" : texts(at_true_size ? "100 mm: check with a ruler" : "100 mm of the patient"),
            fits_beside, false};
}

// The legend stands beside the film, on paper.
const TracingStyle& film_on_page_style() {
    static const TracingStyle style = [] {
        TracingStyle on_film = film_style();
        on_film.text = paper_style().text;
        on_film.quiet_text = paper_style().quiet_text;
        return on_film;
    }();
    return style;
}

// Room for write_caption above a drawing.
Box caption_of(const Box& room) {
    return {room.left, room.top, room.right, room.top + caption_mm * 2.6};
}

void write_caption(const Canvas& canvas, const Box& caption, const std::string& title, const std::string& note) {
    {
        const SelectedFont font(canvas, caption_mm, true);
        font.write({caption.left, caption.top}, font.cut(title, caption.width()), ink);
    }
    const SelectedFont font(canvas, note_mm);
    font.write({caption.left, caption.top + caption_mm * 1.2}, font.cut(note, caption.width()), quiet_ink);
}

// The film's name and scale stand above it where it has a `time`: beside the ruler there is no room for both then.
void add_tracing(Pages& pages, const FilmResults& film, Box room, std::optional<std::size_t> time) {
    const Texts& texts = pages.texts();
    Tracing tracing = film.tracing;
    const Box caption = caption_of(room);
    if (time) room.top = caption.bottom;
    const Page page = page_within(room, legend_mm, tracing, size_of(film.film));
    tracing.patient.clear();
    tracing.remarks.clear();  // they stand below the patient
    tracing.facts = scale_text(texts, page.enlargement);
    if (time) {
        pages.add([caption, title = texts.film(*time), note = std::exchange(tracing.facts, {})](const Canvas& canvas) {
            write_caption(canvas, caption, title, note);
        });
    }
    if (!tracing.origin.empty()) tracing.origin = texts(tracing.origin);
    const Ruler ruler = report_ruler(texts, page.enlargement, room.width());
    pages.add([=, &film](const Canvas& canvas) {
        std::vector<std::string> unlabelled;
        draw_tracing(tracing, page, film.film ? film_on_page_style() : paper_style(), film.film ? &*film.film : nullptr,
                     ruler, canvas, unlabelled);
    });
}

// A copy of the paper's style in which every line has the film's colour.
TracingStyle style_of_time(std::size_t time) {
    TracingStyle style = paper_style();
    for (OutlinePen* pen : {&style.main, &style.fine, &style.soft, &style.fine_soft, &style.tooth}) {
        pen->colour = time_inks[time];
        pen->tenths_mm = std::min(pen->tenths_mm, 3);
    }
    return style;
}

struct Overlay {
    std::vector<Tracing> tracings;  // each in pixels of the first
    Position at, toward;            // of the line that they share
};

Overlay overlay(const Registration& registration, const std::vector<FilmResults>& films) {
    Overlay all;
    for (const FilmResults& film : films) {
        Tracing tracing;
        tracing.outlines = film.tracing.outlines;
        const auto map = superimposed(registration, films.front().record(), film.record());
        all.tracings.push_back(moved(std::move(tracing), map.value_or(AffineMap{})));
    }
    for (const Landmark& landmark : films.front().record().landmarks) {
        if (landmark.name == registration.at) all.at = landmark.position;
        if (landmark.name == registration.toward) all.toward = landmark.position;
    }
    all.tracings.front().mm_per_pixel = films.front().tracing.mm_per_pixel;
    return all;
}

void add_superimposition(Pages& pages, const Registration& registration, const std::vector<FilmResults>& films,
                         const Box& room) {
    const Texts& texts = pages.texts();
    std::vector<std::string> missing;
    for (const FilmResults& film : films) {
        for (const std::string& name : missing_for(registration, film.record()))
            if (std::ranges::find(missing, name) == missing.end()) missing.push_back(name);
    }
    const Box caption = caption_of(room);
    const Box below{room.left, caption.bottom, room.right, room.bottom};
    const std::string title = texts(registration.title);
    std::string note = texts("Not possible: %1 missing", joined(missing, ", "));
    const auto all = std::make_shared<Overlay>(overlay(registration, films));
    Page page{};
    if (missing.empty()) {
        Tracing whole = all->tracings.front();
        for (const Tracing& tracing : all->tracings) {
            whole.outlines.insert(whole.outlines.end(), tracing.outlines.begin(), tracing.outlines.end());
        }
        page = page_within(below, 0, whole, {});
        note = scale_text(texts, page.enlargement);
    }
    pages.add([=, drawn = missing.empty()](const Canvas& canvas) {
        write_caption(canvas, caption, title, note);
        if (!drawn) return;
        for (std::size_t time = all->tracings.size(); time-- > 0;) {
            draw_outlines(all->tracings[time], page, style_of_time(time), canvas);
        }
        draw_line(canvas.dc, page(all->at), page(all->toward), 2, quiet_ink);
        draw_dot(canvas.dc, page(all->at), 1, quiet_ink);
    });
}

}  // namespace

void add_tracings(Pages& pages, const std::vector<FilmResults>& films) {
    constexpr double gap = 4;
    pages.take(gap);
    if (pages.height_left() < least_tracing_mm) pages.new_page();
    const Box room = pages.take(pages.height_left());
    const double width = (room.width() + gap) / static_cast<double>(films.size());
    for (std::size_t i = 0; i < films.size(); ++i) {
        const double left = room.left + static_cast<double>(i) * width;
        add_tracing(pages, films[i], {left, room.top, left + width - gap, room.bottom},
                    films.size() > 1 ? std::optional(i) : std::nullopt);
    }
}

void add_superimpositions(Pages& pages, const std::vector<FilmResults>& films) {
    const bool possible = std::ranges::all_of(films, [](const FilmResults& film) {
        return film.record().kind == Kind::lateral && !film.tracing.outlines.empty();
    });
    if (!possible) return;
    pages.new_page();
    for (std::size_t i = 0; i < films.size(); ++i) add_film_line(pages, i, films[i].record());
    pages.take(3);
    constexpr double gap = 6, share_of_first = 0.56;
    const Box room = pages.take(pages.height_left());
    const double between = room.top + room.height() * share_of_first, middle = (room.left + room.right) / 2;
    add_superimposition(pages, registrations[0], films, {room.left, room.top, room.right, between - gap});
    add_superimposition(pages, registrations[1], films, {room.left, between, middle - gap / 2, room.bottom});
    add_superimposition(pages, registrations[2], films, {middle + gap / 2, between, room.right, room.bottom});
}

}  // namespace cephtool
