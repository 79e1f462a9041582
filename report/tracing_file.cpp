#include "report/tracing_file.h"

#include "base/wording.h"

namespace cephtool {

std::string tracing_file(FileFormat format, const Tracing& tracing, const TracingPaper& paper,
                         std::vector<std::string>& notes) {
    std::vector<std::string> unlabelled;
    const DrawPage page = [&](const Canvas& canvas) {
        draw_tracing(tracing, paper.page, paper.style, paper.film, paper.ruler, canvas, unlabelled);
    };
    const Sheet sheet{paper.page.width_mm, paper.page.height_mm, paper.style.paper, paper.pixels_a_mm};
    std::string bytes = drawn_file(format, sheet, std::span(&page, 1));
    if (!unlabelled.empty()) notes.push_back("no room for the names of " + joined(unlabelled, " "));
    return bytes;
}

}  // namespace cephtool
