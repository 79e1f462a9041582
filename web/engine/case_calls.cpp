#include "web/engine/calls.h"

#include <emscripten/bind.h>

#include "base/date_reader.h"
#include "cases/case_format.h"
#include "web/engine/answer.h"
#include "web/engine/arguments.h"
#include "web/engine/fault.h"

namespace engine {
namespace {

using cephtool::Case;
using cephtool::Error;
using cephtool::ExitCode;
using engine::json_of;

std::string constants() {
    return answer([] {
        Json formats = Json::array();
        for (const cephtool::CaseFormat& format : cephtool::case_formats())
            formats.push_back({{"name", format.name}, {"extension", format.extension}});
        return Json{{"version", CEPHTOOL_VERSION}, {"dentalStages", cephtool::dental_stages}, {"caseFormats", formats}};
    });
}

std::string read(const std::string& name, const std::string& bytes, const std::string& how) {
    return answer([&] {
        const Json given = Json::parse(how);
        cephtool::CaseOptions options;
        options.scale_may_lack = true;
        if (given.contains("landmarks")) options.landmarks = given["landmarks"].get<std::vector<std::string>>();
        if (given.contains("imageHeight")) options.image_height = given["imageHeight"].get<double>();
        if (given.contains("mmPerPixel")) options.mm_per_pixel = given["mmPerPixel"].get<double>();
        if (given.contains("sex")) options.sex = given["sex"] == "male" ? cephtool::Sex::male : cephtool::Sex::female;
        options.population = tool::population_named(given.value("population", "")).name;
        options.mirror = given.value("mirror", false);
        options.flip_y = given.value("flipY", false);
        if (bytes.size() > cephtool::largest_input)
            throw Fault("too_large", "it is larger than 64 MiB", cephtool::case_limit.way_out);
        const cephtool::Texts texts = texts_in(given.value("language", "en"));
        Json list = Json::array();
        for (const Case& record : cephtool::read_cases(cephtool::checked_text({name, bytes}), options))
            list.push_back(
                {{"record", json_of(record)}, {"remarks", json_of(record.remarks, texts)}, {"notes", record.notes}});
        return list;
    });
}

std::string write(const std::string& record, const std::string& name) {
    return answer([&] {
        const cephtool::CaseFormat* format = cephtool::format_by_name(name);
        if (!format) throw Error(ExitCode::bad_input, "there is no case format " + name);
        const Case given = case_of(record);
        return Json{{"text", format->write(given, {})}, {"lost", cephtool::lost_in(*format, given)}};
    });
}

std::string read_date(const std::string& text) {
    return answer([&] { return Json(cephtool::text_of(cephtool::read_date(text))); });
}

std::string show_date(const std::string& date, const std::string& language) {
    return answer([&] { return Json(texts_in(language).date(cephtool::read_date(date))); });
}

std::string age(const std::string& birth, const std::string& film, const std::string& language) {
    return answer([&] {
        Case record;
        record.birth = cephtool::read_date(birth);
        record.film = cephtool::read_date(film);
        if (*record.film < *record.birth)
            throw Fault("film_before_birth",
                        "the film of " + cephtool::text_of(*record.film) + " was taken before birth (" +
                            cephtool::text_of(*record.birth) + ")",
                        "Check both dates.");
        return Json(texts_in(language).age(record));
    });
}

}  // namespace

void add_case_calls() {
    using emscripten::function;
    function("constants", &constants);
    function("read", &read);
    function("write", &write);
    function("readDate", &read_date);
    function("showDate", &show_date);
    function("age", &age);
}

}  // namespace engine
