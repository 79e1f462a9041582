#include "report/study_document.h"

#include "base/numbers.h"
#include "report/agreement_plot.h"
#include "report/drawn_file.h"
#include "report/landmark_scatter.h"
#include "report/style.h"
#include "report/table_section.h"
#include "results/names.h"

namespace cephtool {
namespace {

constexpr double plot_height_mm = 61, plot_gap_mm = 5;
constexpr std::size_t plots_in_a_row = 2;

std::string title_of(const StudyItem& item, const Texts& texts) {
    return item.of ? title_of(*item.of, texts) : item.analysis;
}

std::string label_of(const StudyItem& item, const Texts& texts) {
    return item.of ? label_of(item.of->items()[item.index], texts) : item.name;
}

class StudyPages {
 public:
    StudyPages(Pages& pages, const Study& study) : pages_(pages), texts_(pages.texts()), study_(study) {}

    void add(std::span<const StudyItem* const> items, const OutlineTemplate& face) {
        add_paragraph(pages_, texts_("Reliability of landmarks and values"), name_mm, ink, true);
        pages_.take(1);
        add_paragraph(
            pages_,
            texts_("%1 films, %2 readings of each", std::to_string(study_.films), std::to_string(study_.readings)),
            title_mm, ink);
        pages_.take(1);
        for (
            const char* note :
            {"TEM: technical error of measurement of a single reading. ICC(2,1): agreement of single readings, ICC(3,1): "
             "their consistency, with 95 % intervals (Shrout & Fleiss 1979).",
             "Of a reading against the first: Dahlberg's error; bias, with p of the paired t-test; 95 % limits of agreement, "
             "bias -/+ 1.96 SD (Bland & Altman 1986)."})
            add_paragraph(pages_, texts_(note), note_mm, quiet_ink);
        add_items();
        add_landmarks();
        add_landmark_scatter(pages_, study_, face);
        add_plots(items);
    }

 private:
    ResultTable table(const std::string& title) const {
        ResultTable table;
        table.title = title;
        table.columns = {{texts_("Films"), 10},      {"TEM", 11},      {"Dahlberg", 15},
                         {"ICC(2,1)", 31},           {"ICC(3,1)", 31}, {texts_("Bias, p"), 26},
                         {texts_("95 % limits"), 24}};
        return table;
    }

    void add_rows(ResultTable& table, const std::string& name, const Agreement& of) const {
        const std::string to = texts_(" to ");
        for (std::size_t i = 0; i < of.pairs.size(); ++i) {
            const PairAgreement& pair = of.pairs[i];
            TableRow row;
            row.cells = {"", "", "", "", ""};
            row.cells[2] = with_decimals(pair.dahlberg, 2);
            if (i == 0) {
                row.name = name;
                row.cells[0] = std::to_string(of.films);
                row.cells[1] = with_decimals(of.technical_error, 2);
                row.cells[3] = icc_text(of.icc21, to);
                row.cells[4] = icc_text(of.icc31, to);
            } else {
                row.name = "   " + texts_("reading %1", std::to_string(i + 2));
            }
            row.cells.insert(row.cells.end(), {bias_text(pair), interval_text(pair.limits, to)});
            if (of.observers && i + 1 == of.pairs.size())
                row.remark = texts_("SD of an observer's readings %1, of observers %2",
                                    with_decimals(of.observers->within, 2), with_decimals(of.observers->between, 2));
            table.rows.push_back(std::move(row));
        }
    }

    void add_items() {
        for (auto item = study_.items.begin(); item != study_.items.end();) {
            const std::string analysis = item->analysis;
            ResultTable all = table(title_of(*item, texts_));
            for (; item != study_.items.end() && item->analysis == analysis; ++item)
                add_rows(all, label_of(*item, texts_) + ", " + unit_sign(item->unit), item->agreement);
            add_table(pages_, all);
        }
    }

    void add_landmarks() {
        if (study_.landmarks.empty()) return;
        ResultTable all = table(texts_("Landmarks, mm along Frankfort and across it"));
        for (const StudyLandmark& landmark : study_.landmarks) {
            add_rows(all, texts_("%1 along", landmark.name), landmark.along);
            add_rows(all, texts_("%1 across", landmark.name), landmark.across);
        }
        add_table(pages_, all);
    }

    void add_plots(std::span<const StudyItem* const> items) {
        std::vector<AgreementPlot> plots;
        for (const StudyItem* item : items)
            for (std::size_t i = 0; i < item->agreement.pairs.size(); ++i) plots.push_back(plot(*item, i));
        if (plots.empty()) return;
        pages_.new_page();
        add_paragraph(pages_, texts_("Plots of agreement"), title_mm, ink, true);
        add_paragraph(
            pages_,
            texts_(
                "After Bland and Altman: blue the bias, dashed the limits of agreement, shaded their 95 % confidence "
                "intervals; a dot is a film."),
            note_mm, quiet_ink);
        pages_.take(3);
        for (std::size_t i = 0; i < plots.size(); i += plots_in_a_row) {
            const Box row = pages_.take(plot_height_mm);
            const double width = (row.width() + plot_gap_mm) / plots_in_a_row;
            for (std::size_t k = 0; k < plots_in_a_row && i + k < plots.size(); ++k) {
                const double left = row.left + static_cast<double>(k) * width;
                const Box box{left, row.top, left + width - plot_gap_mm, row.bottom - plot_gap_mm};
                pages_.add([box, plot = std::move(plots[i + k])](const Canvas& canvas) {
                    draw_agreement_plot(canvas, box, plot);
                });
            }
        }
    }

    AgreementPlot plot(const StudyItem& item, std::size_t pair) const {
        const std::string unit = unit_sign(item.unit);
        const std::string other = std::to_string(pair + 2);
        return {.title = label_of(item, texts_) + "  ·  " + title_of(item, texts_),
                .over = texts_("mean of both readings, %1", unit),
                .across = texts_("reading %1 less reading 1, %2", other, unit),
                .films = means_and_differences(item.values, pair + 1),
                .pair = item.agreement.pairs[pair]};
    }

    Pages& pages_;
    const Texts& texts_;
    const Study& study_;
};

}  // namespace

std::string study_file(StudyFile form, const Study& study, std::span<const StudyItem* const> items,
                       const Texts& texts) {
    const OutlineTemplate face = shipped_template(study.kind);
    const std::string title = texts("Reliability of landmarks and values");
    Pages pages =
        form == StudyFile::svg ? Pages::sheet_without_end(texts) : Pages(texts, title, "cephtool " CEPHTOOL_VERSION);
    StudyPages(pages, study).add(items, face);
    const std::vector<DrawPage> drawn = pages.finished();
    constexpr Sheet a4{a4_width_mm, a4_height_mm};
    constexpr double margin = 10;
    if (form == StudyFile::pdf) return drawn_file(FileFormat::pdf, a4, drawn);
    if (form == StudyFile::svg) return drawn_file(FileFormat::svg, {a4_width_mm, pages.used_height() + margin}, drawn);
    return html_file(a4, drawn, title, texts.language());
}

}  // namespace cephtool
