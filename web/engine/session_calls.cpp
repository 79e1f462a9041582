#include "web/engine/calls.h"

#include <emscripten/bind.h>

#include <memory>

#include "report/patient_section.h"
#include "results/growth_findings.h"
#include "web/engine/answer.h"
#include "web/engine/arguments.h"
#include "web/engine/session.h"

namespace engine {
namespace {

using cephtool::Error;
using cephtool::ExitCode;
using emscripten::val;
using engine::json_of;

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

void add_session_calls() {
    using emscripten::function;
    function("newSession", &new_session);
    function("deleteSession", &delete_session);
    function("record", &record);
    function("setRecord", &set_record);
    function("place", &place);
    function("remove", &remove);
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
