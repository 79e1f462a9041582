#include "report/patient_section.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/path.h"
#include "base/wording.h"
#include "report/deviation_chart.h"
#include "report/style.h"
#include "results/names.h"
#include "tracing/font.h"

namespace cephtool {
namespace {

constexpr double row_mm = body_mm * 1.3;

// Without its folder.
std::string file_name(const Case& record) {
    return printable(utf8_from_path(path_from_utf8(record.file).filename()));
}

struct Fact {
    std::string label, value;
};

// Pairs of label and value in columns beside each other, filled row by row.
void add_facts(Pages& pages, const std::vector<Fact>& facts, std::size_t columns, double label_mm) {
    for (std::size_t i = 0; i < facts.size(); i += columns) {
        const Box box = pages.take(row_mm);
        const std::vector<Fact> row(facts.begin() + static_cast<std::ptrdiff_t>(i),
                                    facts.begin() + static_cast<std::ptrdiff_t>(std::min(i + columns, facts.size())));
        pages.add([=](const Canvas& canvas) {
            const SelectedFont font(canvas, body_mm);
            const double width = box.width() / static_cast<double>(columns);
            double left = box.left;
            for (const Fact& fact : row) {
                font.write({left, box.top}, font.cut(fact.label, label_mm - 2), quiet_ink);
                font.write({left + label_mm, box.top}, font.cut(fact.value, width - label_mm - 3), ink);
                left += width;
            }
        });
    }
}

}  // namespace

void add_film_line(Pages& pages, std::size_t time, const Case& record) {
    const Texts& texts = pages.texts();
    const Box box = pages.take(row_mm);
    const std::string name = texts.film(time);
    const std::string date = texts.date(record.film), age = texts.age(record), file = file_name(record);
    pages.add([=](const Canvas& canvas) {
        draw_time_mark(canvas, {box.left + 1.2, box.top + body_mm / 2}, time);
        const SelectedFont font(canvas, body_mm);
        font.write({box.left + 4, box.top}, font.cut(name, 20), time_inks[time]);
        font.write({box.left + 26, box.top}, font.cut(date, 58), ink);
        font.write({box.left + 86, box.top}, font.cut(age, 26), ink);
        font.write({box.left + 114, box.top}, font.cut(file, box.width() - 114), quiet_ink);
    });
}

std::string finding_text(const Finding& finding, const Texts& texts) {
    if (finding.years) return texts("%1 years", with_decimals(*finding.years, 1));
    return finding.stage ? stage_of(finding, texts) : "-";
}

std::string patient_name(const Case& record) {
    return record.name.empty() ? file_name(record) : record.name;
}

void add_patient(Pages& pages, const std::vector<FilmResults>& films) {
    const Texts& texts = pages.texts();
    const Case& record = films.front().record();
    const bool several = films.size() > 1;
    add_paragraph(pages, texts(several ? "Comparison of cephalograms" : "Cephalometric report"), body_mm, quiet_ink);
    const Box box = pages.take(name_mm * 1.25);
    pages.add([box, name = patient_name(record)](const Canvas& canvas) {
        const SelectedFont font(canvas, name_mm, true);
        font.write({box.left, box.top}, font.cut(name, box.width()), ink);
        draw_line(canvas.dc, {box.left, box.bottom}, {box.right, box.bottom}, 4, ink);
    });
    pages.take(1.5);
    std::vector<Fact> facts{{texts("Born"), texts.date(record.birth)}, {texts("Sex"), texts.sex(record.sex)}};
    if (several) {
        facts.push_back({texts("Kind"), texts.kind(record.kind)});
        add_facts(pages, facts, 2, 28);
        pages.take(1);
        for (std::size_t i = 0; i < films.size(); ++i) add_film_line(pages, i, films[i].record());
    } else {
        facts.insert(facts.end(), {{texts("Film"), texts.date(record.film)},
                                   {texts("Kind"), texts.kind(record.kind)},
                                   {texts("Age at the film"), texts.age(record)}});
        if (!record.file.empty()) facts.push_back({texts("File"), file_name(record)});
        if (!record.population.empty())
            facts.push_back({texts("Population"),
                             texts.chosen(record.population, tool::population_named(record.population).japanese)});
        if (record.side) facts.push_back({texts("Side"), texts(name_of(*record.side))});
        add_facts(pages, facts, 2, 28);
    }
}

void add_growth(Pages& pages, const std::vector<FilmResults>& films) {
    const Texts& texts = pages.texts();
    std::vector<Fact> facts;
    for (const Finding& finding : films.front().growth) {
        std::vector<std::string> values;
        bool found = false;
        for (const FilmResults& film : films) {
            const auto same = std::ranges::find(film.growth, finding.what, &Finding::what);
            found = found || (same != film.growth.end() && same->has_result());
            values.push_back(same == film.growth.end() ? "-" : finding_text(*same, texts));
        }
        if (found) facts.push_back({texts(finding.what), joined(values, " / ")});
    }
    if (facts.empty()) return;
    pages.take(2.5);
    add_paragraph(pages, texts("Growth"), title_mm, ink, true);
    pages.take(0.5);
    add_facts(pages, facts, films.size() > 1 ? 1 : 2, 40);
}

}  // namespace cephtool
