#include "web/engine/calls.h"

#include <ComposedAnalysis.h>
#include <emscripten/bind.h>

#include "cases/case_builder.h"
#include "web/engine/answer.h"
#include "web/engine/arguments.h"
#include "web/engine/drawings.h"

namespace engine {
namespace {

using cephtool::Error;
using cephtool::ExitCode;
using emscripten::val;

std::string open(const val& files) {
    return answer([&] {
        std::vector<NamedBytes> named;
        for (unsigned i = 0, count = files["length"].as<unsigned>(); i < count; ++i)
            named.push_back({files[i]["name"].as<std::string>(), files[i]["bytes"].as<std::string>()});
        return Json(open_folder(named));
    });
}

std::string close(int folder) {
    return answer([&] { close_folder(folder); });
}

std::string folder(int folder) {
    return answer([&] { return description_of(folder); });
}

std::string landmark_table(const std::string& kind) {
    return answer([&] { return Json(cephtool::landmark_names(kind_of(kind))); });
}

std::string face(const std::string& kind) {
    return answer([&] { return average_face(kind_of(kind)); });
}

// The bytes of a definition file; `items` are pairs of an analysis and the place of an item in it.
std::string compose(const std::string& title, const std::string& items) {
    return answer([&] {
        std::vector<tool::ComposedItem> wanted;
        for (const Json& each : Json::parse(items))
            wanted.push_back({&analysis_numbered(each[0].get<int>()), each[1].get<std::size_t>()});
        const auto text = tool::compose(title, wanted);
        if (!text) throw Error(ExitCode::bad_input, text.reason());
        return Json(std::vector<unsigned char>(text->begin(), text->end()));
    });
}

}  // namespace

void add_folder_calls() {
    using emscripten::function;
    function("open", &open);
    function("close", &close);
    function("folder", &folder);
    function("landmarkTable", &landmark_table);
    function("face", &face);
    function("compose", &compose);
}

}  // namespace engine
