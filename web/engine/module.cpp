// What JavaScript calls. Everything but bytes and the numbers of a session goes as JSON; an answer that begins with "!"
// is an error. engine.js makes engine.d.ts's face of it.
#include <ComposedAnalysis.h>
#include <emscripten/bind.h>
#include <framework/system.h>

#include <memory>
#include <type_traits>

#include "base/date_reader.h"
#include "base/eras.h"
#include "base/numbers.h"
#include "cases/case_builder.h"
#include "cases/case_format.h"
#include "cases/mirror.h"
#include "report/patient_section.h"
#include "results/growth_findings.h"
#include "results/results.h"
#include "web/engine/drawings.h"
#include "web/engine/fault.h"
#include "web/engine/folders.h"
#include "web/engine/readings.h"
#include "web/engine/session.h"

namespace engine {
namespace {

using cephtool::Case;
using cephtool::Error;
using cephtool::ExitCode;
using emscripten::val;
using engine::json_of;

std::string error_text(const std::string& message, const Error* error) {
    Json json = {{"message", message}, {"file", ""}, {"line", 0}, {"column", 0}, {"excerpt", ""}, {"wayOut", ""}};
    if (error) {
        json["file"] = error->file;
        json["line"] = error->line;
        json["column"] = error->column;
        json["excerpt"] = error->excerpt;
        json["wayOut"] = error->way_out;
    }
    if (const auto* fault = dynamic_cast<const Fault*>(error)) {
        json["key"] = fault->key;
        json["names"] = fault->names;
    }
    return "!" + text_of(json);
}

template <class Work>
std::string answer(Work work) {
    try {
        if constexpr (std::is_void_v<decltype(work())>) {
            work();
            return "null";
        } else {
            return text_of(work());
        }
    } catch (const Error& error) {
        return error_text(error.what(), &error);
    } catch (const std::exception& error) {
        return error_text(error.what(), nullptr);
    }
}

Case case_of(const std::string& json) {
    return cephtool::read_json_case({"the case", json});
}

std::vector<Case> cases_of(const std::string& json) {
    std::vector<Case> cases;
    for (const Json& record : Json::parse(json)) cases.push_back(case_of(record.dump()));
    return cases;
}

Json json_of(const Case& record) {
    return Json::parse(cephtool::to_json(record));
}

Json json_of(const std::optional<cephtool::Position>& point) {
    return point ? json_of(*point) : Json();
}

cephtool::Kind kind_of(const std::string& name) {
    for (const cephtool::Kind kind : cephtool::all_kinds)
        if (name == cephtool::name_of(kind)) return kind;
    throw Error(ExitCode::bad_input, "there is no kind of case of this name: " + name);
}

std::vector<int> numbers_of(const std::string& json) {
    return Json::parse(json).get<std::vector<int>>();
}

std::vector<const cephtool::Analysis*> analyses_in(const std::string& json) {
    return analyses_numbered(numbers_of(json));
}

std::optional<cephtool::Film> film_of(const val& film) {
    if (film.isUndefined() || film.isNull()) return {};
    cephtool::Film picture;
    picture.picture.width = film["width"].as<int>();
    picture.picture.height = film["height"].as<int>();
    picture.file = film["bytes"].as<std::string>();
    return picture;
}

TracingWish wish_of(const std::string& json) {
    const Json given = Json::parse(json);
    TracingWish wish;
    wish.no_mode = given.contains("mode") && given["mode"].is_null();
    if (given.contains("mode") && !wish.no_mode) wish.mode = given["mode"].get<int>();
    if (given.contains("folder")) wish.folder = given["folder"].get<int>();
    const std::string outlines = given.value("outlines", "own");
    wish.outlines = outlines == "fitted" ? cephtool::OutlineSource::fitted
                    : outlines == "none" ? cephtool::OutlineSource::none
                                         : cephtool::OutlineSource::own_or_fitted;
    return wish;
}

// ---- Analyses and landmarks

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

// ---- Cases and dates

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
        const cephtool::Age age = cephtool::age_at(*record.film, *record.birth);
        return Json{{"years", age.years},
                    {"months", age.months},
                    {"exactYears", cephtool::years_at(*record.film, *record.birth)},
                    {"text", texts_in(language).age(record)}};
    });
}

std::string eras() {
    return answer([] {
        Json list = Json::array();
        for (const tool::Era& era : cephtool::required_eras().eras())
            list.push_back({{"code", era.code}, {"name", era.name}});
        return list;
    });
}

// ---- Documents

std::vector<FilmToReport> films_of(const val& films) {
    std::vector<FilmToReport> all;
    for (unsigned i = 0, count = films["length"].as<unsigned>(); i < count; ++i)
        all.push_back({case_of(films[i]["record"].as<std::string>()), film_of(films[i]["film"])});
    return all;
}

std::string report(const val& films, const std::string& analyses, const std::string& language) {
    return answer([&] { return report_drawings(films_of(films), analyses_in(analyses), texts_in(language)); });
}

std::string chart(const val& films, const std::string& analyses, const std::string& language) {
    return answer([&] { return chart_drawing(films_of(films), analyses_in(analyses), texts_in(language)); });
}

std::string results(const std::string& records, const std::string& analyses, const std::string& format,
                    const std::string& language) {
    return answer([&] {
        const cephtool::Texts texts = texts_in(language);
        const auto chosen = analyses_in(analyses);
        std::vector<cephtool::CaseResult> all;
        for (Case& record : cases_of(records)) {
            if (!record.mm_per_pixel)
                throw Fault("no_scale", "the case has no scale, so no length can be measured",
                            "Calibrate the film first.");
            record.file = record.name;
            all.push_back(cephtool::measured(cephtool::turned_right(std::move(record), {}), chosen, {}, false));
        }
        return Json(format == "csv" ? cephtool::results_csv(all, texts) : cephtool::results_json(all, texts));
    });
}

std::string compare_readings(const std::string& first, const std::string& second, const std::string& analyses) {
    return answer([&] { return comparison_of_readings(case_of(first), case_of(second), analyses_in(analyses)); });
}

std::string study(const std::string& films, const std::string& analyses, const std::string& format) {
    return answer([&] {
        std::vector<cephtool::StudyFilm> all;
        for (const Json& film : Json::parse(films)) {
            all.push_back({film["name"].get<std::string>(), cases_of(film["readings"].dump())});
        }
        return study_of(all, analyses_in(analyses), format);
    });
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

std::string population_named(const std::string& text) {
    return answer([&] {
        const tool::Population population = tool::population_named(text);
        return Json{{"name", population.name}, {"label", {{"en", population.name}, {"ja", population.japanese}}}};
    });
}

// ---- Sessions

std::vector<std::unique_ptr<Session>> sessions;

Session& session_at(int number) {
    const auto place = static_cast<std::size_t>(number);
    if (number < 0 || place >= sessions.size() || !sessions[place])
        throw Error(ExitCode::bad_input, "this session was deleted");
    return *sessions[place];
}

std::string new_session(const std::string& record) {
    return answer([&] {
        sessions.push_back(std::make_unique<Session>(case_of(record)));
        return Json(sessions.size() - 1);
    });
}

std::string delete_session(int session) {
    return answer([&] {
        session_at(session);
        sessions[static_cast<std::size_t>(session)].reset();
    });
}

std::string record(int session) {
    return answer([&] { return json_of(session_at(session).record()); });
}

std::string set_record(int session, const std::string& record) {
    return answer([&] { session_at(session).set_record(case_of(record)); });
}

std::string place(int session, const std::string& name, double x, double y) {
    return answer([&] { session_at(session).place(name, {x, y}); });
}

std::string remove(int session, const std::string& name) {
    return answer([&] { session_at(session).remove(name); });
}

// Below 0: none.
std::string set_scale(int session, double mm_per_pixel) {
    return answer(
        [&] { session_at(session).set_scale(mm_per_pixel < 0 ? std::nullopt : std::optional(mm_per_pixel)); });
}

std::string choose(int session, const std::string& analyses) {
    return answer([&] { session_at(session).choose(analyses_in(analyses)); });
}

// Where the numbers lie in the module's memory: value, mean, sd, deviation, state, and how many there are of each.
std::string measure(int session) {
    return answer([&] {
        const Numbers& numbers = session_at(session).measure();
        const auto address = [](const auto& column) { return reinterpret_cast<std::uintptr_t>(column.data()); };
        return Json{address(numbers.value),     address(numbers.mean),  address(numbers.sd),
                    address(numbers.deviation), address(numbers.state), numbers.state.size()};
    });
}

std::string texts(int session, const std::string& rows, const std::string& language) {
    return answer([&] { return session_at(session).texts(numbers_of(rows), texts_in(language)); });
}

std::string errors(int session, const std::string& rows, const std::string& language) {
    return answer([&] { return session_at(session).errors(numbers_of(rows), texts_in(language)); });
}

std::string outliers(int session, const std::string& language) {
    return answer([&] { return session_at(session).outliers(texts_in(language)); });
}

std::string remarks(int session, const std::string& language) {
    return answer([&] { return session_at(session).remarks(texts_in(language)); });
}

std::string norms(int session, const std::string& language) {
    return answer([&] { return session_at(session).norms(texts_in(language)); });
}

std::string shapes(int session, int row) {
    return answer([&] { return session_at(session).shapes(row); });
}

std::string construct(int session, const std::string& expression) {
    return answer([&] { return json_of(session_at(session).construct(expression)); });
}

std::string constructed(int session) {
    return answer([&] { return session_at(session).constructed(); });
}

std::string suggest(int session, const std::string& name) {
    return answer([&] { return json_of(session_at(session).suggest(name)); });
}

std::string tracing(int session, const std::string& wish) {
    return answer([&] { return tracing_points(session_at(session).record(), wish_of(wish)); });
}

std::string tracing_svg(int session, const std::string& wish, const val& film, bool dark) {
    return answer([&] { return tracing_drawing(session_at(session).record(), wish_of(wish), film_of(film), dark); });
}

std::string superimpose(int session, const std::string& earlier, int registration, const std::string& wish) {
    return answer([&] {
        return superimposed_points(session_at(session).record(), case_of(earlier),
                                   cephtool::registrations[registration], wish_of(wish));
    });
}

std::string growth(int session, const std::string& language) {
    return answer([&] {
        const cephtool::Texts texts = texts_in(language);
        Json list = Json::array();
        for (const cephtool::Finding& finding :
             cephtool::growth_findings(session_at(session).scaled_record(1), folder_numbered(shipped_folder))) {
            Json grounds = Json::array();
            for (const cephtool::Ground& ground : finding.grounds)
                grounds.push_back({{"name", ground.name}, {"text", ground.text}});
            list.push_back({{"what", texts(finding.what)},
                            {"result", finding.has_result() ? cephtool::finding_text(finding, texts) : ""},
                            {"years", json_of(finding.years)},
                            {"missing", finding.missing},
                            {"reason", finding.reason},
                            {"grounds", grounds}});
        }
        return list;
    });
}

}  // namespace

EMSCRIPTEN_BINDINGS(engine) {
    SetModuleFileNameA("/bin/engine");  // beside which what ships lies: CMakeLists.txt
    using emscripten::function;
    function("open", &open);
    function("close", &close);
    function("folder", &folder);
    function("landmarkTable", &landmark_table);
    function("face", &face);
    function("constants", &constants);
    function("read", &read);
    function("write", &write);
    function("readDate", &read_date);
    function("showDate", &show_date);
    function("age", &age);
    function("eras", &eras);
    function("report", &report);
    function("chart", &chart);
    function("results", &results);
    function("compareReadings", &compare_readings);
    function("study", &study);
    function("compose", &compose);
    function("populationNamed", &population_named);
    function("newSession", &new_session);
    function("deleteSession", &delete_session);
    function("record", &record);
    function("setRecord", &set_record);
    function("place", &place);
    function("remove", &remove);
    function("setScale", &set_scale);
    function("choose", &choose);
    function("measure", &measure);
    function("texts", &texts);
    function("errors", &errors);
    function("outliers", &outliers);
    function("remarks", &remarks);
    function("norms", &norms);
    function("shapes", &shapes);
    function("construct", &construct);
    function("constructed", &constructed);
    function("suggest", &suggest);
    function("tracing", &tracing);
    function("tracingSvg", &tracing_svg);
    function("superimpose", &superimpose);
    function("growth", &growth);
}

}  // namespace engine
