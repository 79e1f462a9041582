#include "results/case_heading.h"

#include <Analysis.h>

#include "base/columns.h"
#include "base/numbers.h"
#include "base/paint.h"
#include "base/wording.h"
#include "cases/case_facts.h"

namespace cephtool {

std::string case_heading(const Case& record, bool colour, const Texts& texts) {
    if (texts.language() == Language::english) return case_heading(record, colour);
    std::vector<std::string> facts;
    if (!record.name.empty()) facts.push_back(fitted(printable(record.name), page_width));
    facts.push_back(record.sex ? texts.sex(record.sex) : texts("sex not given"));
    if (record.birth && record.film) facts.push_back(texts.age(record));
    facts.push_back(texts.kind(record.kind));
    if (record.side) facts.push_back(texts("Side") + texts(name_of(*record.side)));
    if (!record.population.empty())
        facts.push_back(texts("Norms: %1", printable(tool::population_named(record.population).japanese)));
    facts.push_back(texts("%1 mm a pixel", readable(record.mm_per_pixel.value())));
    std::string text = wrapped(printable(record.file) + ": " + joined(facts, "、"), page_width, "  ") + "\n";
    std::vector<std::string> dates;
    if (record.birth) dates.push_back(texts("Born") + " " + texts.date(record.birth));
    if (record.film) dates.push_back(texts("Film") + " " + texts.date(record.film));
    if (!dates.empty()) text += "  " + wrapped(joined(dates, "、"), page_width - 2, "  ") + "\n";
    for (const Remark& remark : record.remarks) text += remark_line(remark, colour, texts);
    return text;
}

std::string remark_line(const Remark& remark, bool colour, const Texts& texts) {
    return "  " + painted(wrapped(texts(remark), page_width - 2, "  "), amber, colour) + "\n";
}

}  // namespace cephtool
