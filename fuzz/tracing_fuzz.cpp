// Any case, with whatever landmarks and outlines of its own, becomes a drawing with finite coordinates or is refused
// with an Error: once with its own outlines, once with those of the average face fitted to its landmarks.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

#include "report/tracing_file.h"

namespace {

using namespace cephtool;

const OutlineTemplate& average_face(Kind kind) {
    static const auto face = [](const char* name) {
        return read_template(read_bytes(std::string(TOOL_SOURCE_DIR "/outlines/") + name, std::cin));
    };
    static const OutlineTemplate lateral = face("lateral.json"), frontal = face("frontal.json"), none;
    return kind == Kind::lateral ? lateral : kind == Kind::frontal ? frontal : none;
}

void draw(const Case& record, OutlineSource outlines) {
    const Tracing tracing = tracing_of(record, {}, {}, average_face(record.kind), outlines);
    std::vector<std::string> notes;
    const Page page = page_for(tracing, {});
    const std::string svg =
        tracing_file(FileFormat::svg, tracing, {page, paper_style(), nullptr, 10, long_ruler()}, notes);
    for (const char* wrong : {"=\"nan", "=\"-nan", "=\"inf", "=\"-inf", " nan", " -nan", " inf", " -inf"}) {
        const std::size_t at = svg.find(wrong);
        if (at == std::string::npos || svg.rfind('<', at) < svg.rfind('>', at)) continue;  // a text may say anything
        std::cerr << "not a number in " << svg.substr(svg.rfind('<', at), 200) << "\n";
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) try {
    const Case record = read_case(checked_text({"case", {reinterpret_cast<const char*>(data), size}}));
    if (!record.mm_per_pixel) return 0;
    draw(record, OutlineSource::own_or_fitted);
    draw(record, OutlineSource::fitted);
    return 0;
} catch (const Error&) {
    return 0;
}
