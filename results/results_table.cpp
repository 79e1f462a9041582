#include <algorithm>
#include <cmath>

#include "base/columns.h"
#include "base/paint.h"
#include "base/wording.h"
#include "cases/case_facts.h"
#include "results/case_heading.h"
#include "results/names.h"
#include "results/results.h"

namespace cephtool {
namespace {

constexpr int plain_value_width = 9, value_and_error_width = 14, unit_width = 4, mean_width = 9, sd_width = 7,
              deviation_width = 7, stars_width = 6;
constexpr int columns_behind_name =
    1 + 1 + unit_width + 1 + mean_width + 1 + sd_width + 1 + deviation_width + 1 + stars_width;
constexpr int columns = page_width - columns_behind_name;  // of name and value

constexpr const char* none = "–";

const char* paint_of(double deviation) {
    const double size = std::abs(deviation);
    return size <= 1 ? green : size <= 2 ? amber : red;
}

std::string or_dash(const std::string& text) {
    return text.empty() ? none : text;
}

class AnalysisTable {
 public:
    AnalysisTable(const AnalysisResult& result, int name_width, int value_width, bool colour, const Texts& texts)
        : result_(result), name_width_(name_width), value_width_(value_width), colour_(colour), texts_(texts) {}

    std::string text() const {
        std::string lines = painted(fitted(title_of(*result_.analysis, texts_), page_width), bold, colour_) + "\n";
        const std::string comment = comment_of(*result_.analysis, texts_);
        if (!comment.empty()) lines += "  " + indented(comment);
        lines += norms();
        for (const Remark& remark : result_.remarks()) lines += remark_line(remark, colour_, texts_);
        lines += row(texts_("Item"), texts_("Value"), texts_("Unit"), texts_("Mean"), "SD") +
                 right_aligned(texts_("in SD"), deviation_width) + "\n";
        for (const Measurement& item : result_.items) lines += line(item);
        for (const std::string& sign : signs_in_words(result_.items, texts_)) lines += "  " + indented(sign);
        for (const std::string& mark : unverified_in_words(result_.items, texts_)) lines += "  " + indented(mark);
        return lines;
    }

 private:
    // English tells the column, too.
    std::string norms() const {
        const NormBand& band = result_.band;
        if (texts_.language() != Language::english) {
            const std::string words = norms_in_words(band, texts_);
            return words.empty() ? "" : "  " + indented(words);
        }
        const std::string population =
            band.population ? "  " + indented(texts_("Norms: %1", in_words(*band.population, texts_))) : "";
        return population + (band.words.empty() ? "" : wrapped(band.words, page_width, "  ") + "\n");
    }

    static std::string indented(const std::string& text) { return wrapped(text, page_width - 2, "  ") + "\n"; }

    std::string row(const std::string& name, const std::string& value, const std::string& unit, const std::string& mean,
                    const std::string& sd) const {
        return name_cell(name) + " " + right_aligned(value, value_width_) + " " + left_aligned(unit, unit_width) + " " +
               right_aligned(mean, mean_width) + " " + right_aligned(sd, sd_width) + " ";
    }

    std::string name_cell(const std::string& name) const {
        return left_aligned(fitted(name, name_width_), name_width_);
    }

    std::string line(const Measurement& item) const {
        if (item.heading) return painted(fitted(label_of(item, texts_), page_width), bold, colour_) + "\n";
        if (!item.missing.empty()) return no_value(item, texts_("missing: %1", joined(item.missing, ", ")));
        if (!item.text.empty()) return words(item) + remarks_below(item);
        if (!item.value) return no_value(item, texts_(item.reason)) + remarks_below(item);
        std::string text = row(label_of(item, texts_), item.value_with_error(), item.unit, or_dash(item.mean_text),
                               or_dash(item.sd_text)) +
                           deviation_cell(item) + "\n";
        if (!item.norm_missing.empty()) text += below(texts_("norm missing: %1", joined(item.norm_missing, ", ")));
        return text + remarks_below(item);
    }

    std::string remarks_below(const Measurement& item) const {
        std::string lines;
        for (const Remark& remark : item.remarks) lines += below(texts_(remark));
        std::vector<std::string> of_error;
        for (const Remark& remark : item.error_remarks()) of_error.push_back(texts_(remark));
        if (!of_error.empty()) lines += below(joined(of_error, "; "));
        return lines;
    }

    std::string deviation_cell(const Measurement& item) const {
        if (item.deviation_text.empty()) return right_aligned(none, deviation_width);
        return painted(right_aligned(item.deviation_text, deviation_width) +
                           (item.stars.empty() ? "" : " " + item.stars_with_error()),
                       paint_of(*item.deviation), colour_);
    }

    // A dash in place of the value, and behind it why.
    std::string no_value(const Measurement& item, const std::string& why) const {
        return behind(name_cell(label_of(item, texts_)) + " " + right_aligned(none, value_width_) + " ", why);
    }

    std::string below(const std::string& why) const {
        return behind(left_aligned("", name_width_ + 1 + value_width_ + 1), why);
    }

    std::string words(const Measurement& item) const {
        return behind(name_cell(label_of(item, texts_)) + "  ", verdict_of(item, texts_));
    }

    // `text` behind `start`, its further lines below its first.
    static std::string behind(const std::string& start, const std::string& text) {
        const int indent = display_width(start);
        return start + wrapped(text, page_width - indent, left_aligned("", indent)) + "\n";
    }

    const AnalysisResult& result_;
    int name_width_, value_width_;
    bool colour_;
    const Texts& texts_;
};

// The same for all analyses of a case, so that their columns stand below each other.
int name_width(const CaseResult& result, int value_width, const Texts& texts) {
    int width = display_width(texts("Item"));
    for (const AnalysisResult& analysis : result.analyses)
        for (const Measurement& item : analysis.items) width = std::max(width, display_width(label_of(item, texts)));
    return std::min(width, columns - value_width);
}

}  // namespace

std::string results_table(const CaseResult& result, bool colour, const Texts& texts) {
    const int value_width = has_errors(result) ? value_and_error_width : plain_value_width;
    const int width = name_width(result, value_width, texts);
    std::string text = case_heading(result.record, colour, texts);
    for (const AnalysisResult& analysis : result.analyses)
        text += "\n" + AnalysisTable(analysis, width, value_width, colour, texts).text();
    if (result.analyses.empty()) text += "\n" + texts("The case has the landmarks of no item of any analysis.") + "\n";
    if (!result.left_out.empty()) text += "\n";
    for (const LeftOut& analysis : result.left_out) text += wrapped(analysis.in_words(texts), page_width, "  ") + "\n";
    return text;
}

}  // namespace cephtool
