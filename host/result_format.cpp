#include "host/result_format.h"

#include "base/wording.h"

namespace cephtool {

const char* name_of(ResultFormat format) {
    switch (format) {
        case ResultFormat::table: return "table";
        case ResultFormat::text: return "text";
        case ResultFormat::csv: return "csv";
        case ResultFormat::json: return "json";
        case ResultFormat::json_lines: return "jsonl";
        case ResultFormat::png: return "png";
        case ResultFormat::pdf: return "pdf";
        case ResultFormat::svg: return "svg";
        case ResultFormat::html: return "html";
    }
    return "";
}

std::optional<FileEnd> end_of(const std::string& path) {
    constexpr FileEnd ends[] = {
        {".json", ResultFormat::json},         {".csv", ResultFormat::csv},   {".jsonl", ResultFormat::json_lines},
        {".ndjson", ResultFormat::json_lines}, {".png", ResultFormat::png},   {".pdf", ResultFormat::pdf},
        {".svg", ResultFormat::svg},           {".html", ResultFormat::html}, {".xlsx", {}},
    };
    const std::string name = lower_case(path);
    for (const FileEnd& end : ends)
        if (name.ends_with(end.end)) return end;
    return {};
}

}  // namespace cephtool
