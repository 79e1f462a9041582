#include "report/report_document.h"

#include <algorithm>

#include "base/wording.h"
#include "report/pages.h"
#include "report/patient_section.h"
#include "report/style.h"
#include "report/table_section.h"
#include "report/tracing_section.h"

namespace cephtool {
namespace {

constexpr double chart_pixels_a_mm = 200 / 25.4;

std::string running_head(const std::vector<FilmResults>& films, const Texts& texts) {
    std::vector<std::string> parts{patient_name(films.front().record())};
    for (const FilmResults& film : films)
        if (film.record().film) parts.push_back(texts.date(film.record().film));
    return joined(parts, ", ");
}

// In front of the tables, where it is read first and never stands on a page of its own.
void add_notes(Pages& pages, const std::vector<FilmResults>& films, const std::vector<std::string>& files) {
    const Texts& texts = pages.texts();
    std::vector<std::string> notes{
        texts("A star stands for each whole SD from the mean. In the chart the bands end at 1, 2 and 3 SD; a triangle "
              "points to a value beyond.")};
    if (films.size() > 1) {
        notes.push_back(texts("Change: the last film minus the first one. Norms are those of the last film."));
    }
    notes.push_back(texts("Made by cephtool %1 from the analyses %2.", CEPHTOOL_VERSION, joined(files, ", ")));
    for (const std::string& note : notes) add_paragraph(pages, note, note_mm, quiet_ink);
    pages.take(3);
}

void add_remarks(Pages& pages, const std::vector<FilmResults>& films) {
    pages.take(1);
    for (const std::string& remark : remarks_on(films, pages.texts()))
        add_paragraph(pages, remark, body_mm, remark_ink, true);
}

void add_left_out(Pages& pages, const std::vector<FilmResults>& films) {
    const std::vector<LeftOut> analyses = left_out_analyses(films);
    if (!analyses.empty()) pages.take(4);
    for (const LeftOut& analysis : analyses) add_paragraph(pages, analysis.in_words(pages.texts()), note_mm, quiet_ink);
}

void add_tables(Pages& pages, const std::vector<FilmResults>& films) {
    const auto analyses = fruitful_analyses(films);
    std::vector<std::string> files;
    for (const auto& times : analyses) {
        const std::string file = file_of(*times.front()->analysis);
        if (std::ranges::find(files, file) == files.end()) files.push_back(file);
    }
    const Texts& texts = pages.texts();
    if (files.empty()) {
        add_paragraph(pages, texts("None of the analyses can be made from the landmarks of this case."), body_mm, ink);
    } else {
        add_notes(pages, films, files);
    }
    for (const auto& times : analyses) add_table(pages, result_table(times, TableStyle::full, texts));
    add_left_out(pages, films);
}

Pages report_pages(const std::vector<FilmResults>& films, const Texts& texts) {
    Pages pages(texts, running_head(films, texts),
                "cephtool " CEPHTOOL_VERSION "  ·  " + texts("Calculated from landmarks, not a diagnosis."));
    add_patient(pages, films);
    add_remarks(pages, films);
    add_growth(pages, films);
    add_tracings(pages, films);
    if (films.size() > 1) add_superimpositions(pages, films);
    pages.new_page();
    add_tables(pages, films);
    return pages;
}

constexpr Sheet a4{a4_width_mm, a4_height_mm};

}  // namespace

std::string report_pdf(const std::vector<FilmResults>& films, const Texts& texts) {
    const Pages pages = report_pages(films, texts);
    return drawn_file(FileFormat::pdf, a4, pages.finished());
}

std::string report_html(const std::vector<FilmResults>& films, const Texts& texts) {
    const Pages pages = report_pages(films, texts);
    return html_file(a4, pages.finished(), running_head(films, texts), texts.language());
}

std::vector<std::string> report_svg(const std::vector<FilmResults>& films, const Texts& texts) {
    const Pages pages = report_pages(films, texts);
    std::vector<std::string> files;
    for (const DrawPage& page : pages.finished()) files.push_back(drawn_file(FileFormat::svg, a4, std::span(&page, 1)));
    return files;
}

std::string chart_file(FileFormat format, const std::vector<FilmResults>& films, const Texts& texts) {
    Pages pages = Pages::sheet_without_end(texts);
    add_paragraph(pages, running_head(films, texts), title_mm, ink, true);
    add_remarks(pages, films);
    const auto analyses = fruitful_analyses(films);
    for (const auto& times : analyses) add_table(pages, result_table(times, TableStyle::chart, texts));
    if (analyses.empty()) {
        add_paragraph(pages, texts("None of the analyses can be made from the landmarks of this case."), body_mm, ink);
    }
    add_left_out(pages, films);
    constexpr double margin = 10;
    return drawn_file(format, {a4_width_mm, pages.used_height() + margin, RGB(255, 255, 255), chart_pixels_a_mm},
                      pages.finished());
}

}  // namespace cephtool
