#include "tracing/japanese_legend.h"

#include "base/wording.h"
#include "results/texts.h"

namespace cephtool {

void put_legend_into_japanese(Tracing& tracing, const Case& record) {
    const Texts texts(Language::japanese);
    tracing.remarks.clear();
    for (const Remark& remark : record.remarks) tracing.remarks.push_back(texts(remark));
    std::vector<std::string> facts{texts.kind(record.kind)};
    if (record.sex) facts.push_back(texts.sex(record.sex));
    if (record.birth && record.film) facts.push_back(texts.age(record));
    if (record.film) facts.push_back(texts.date(record.film));
    tracing.facts = joined(facts, "、");
    tracing.mode = texts.part(tracing.mode);
    tracing.origin = texts(tracing.origin);
    for (TracingValue& value : tracing.values) value.text = texts.chosen(value.text, value.japanese);
}

}  // namespace cephtool
