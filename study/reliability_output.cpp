#include <nlohmann/json.hpp>

#include "base/columns.h"
#include "base/csv.h"
#include "base/numbers.h"
#include "study/reliability.h"

namespace cephtool {
namespace {

using Json = nlohmann::ordered_json;

constexpr double icc_width = 0.1;  // of the interval that the sizes of samples are for
constexpr int shown_decimals = 2;

// Calls row(group, analysis, name, unit, agreement) for all that a study has.
template <class Row>
void each(const Study& study, const Row& row) {
    for (const StudyLandmark& landmark : study.landmarks) {
        row("landmark", "", landmark.name + " along", "mm", landmark.along);
        row("landmark", "", landmark.name + " across", "mm", landmark.across);
    }
    for (const StudyItem& item : study.items) row("item", item.analysis, item.name, item.unit, item.agreement);
}

std::string signed_text(double value) {
    const std::string text = with_decimals(value, shown_decimals);
    return value > 0 && text.find_first_of("123456789") != std::string::npos ? "+" + text : text;
}

// What all readings together say of a landmark or value has a line, and each reading behind the first another one.
class Table {
 public:
    std::string text;

    void head(const std::string& title) {
        text += "\n" + title + "\n" + line("", "Films", "TEM", "ICC(2,1)", "ICC(3,1)") +
                line("", "", "Dahlberg", "Bias, p", "95 % limits");
    }
    void add(const std::string& name, const Agreement& of) {
        text += line(name, std::to_string(of.films), with_decimals(of.technical_error, 2), icc_text(of.icc21, to),
                     icc_text(of.icc31, to));
        for (std::size_t i = 0; i < of.pairs.size(); ++i) {
            const PairAgreement& pair = of.pairs[i];
            text += line("  reading " + std::to_string(i + 2), "", with_decimals(pair.dahlberg, 2), bias_text(pair),
                         interval_text(pair.limits, to));
        }
        if (of.observers) {
            text += line("  observers", "", "",
                         "within " + with_decimals(of.observers->within, 2) + ", between " +
                             with_decimals(of.observers->between, 2) + ", together " +
                             with_decimals(of.observers->together, 2),
                         "");
        }
    }

 private:
    static constexpr const char* to = " to ";

    static std::string line(const std::string& name, const std::string& films, const std::string& error,
                            const std::string& left, const std::string& right) {
        const std::string text = left_aligned(fitted(name, 18), 18) + right_aligned(films, 6) +
                                 right_aligned(error, 9) + "  " + left_aligned(left, 23) + right;
        return text.substr(0, text.find_last_not_of(' ') + 1) + "\n";
    }
};

Json json_of(const Interval& interval) {
    return {interval.low, interval.high};
}

Json json_of(const std::optional<IntraclassCorrelation>& icc) {
    return icc ? Json{{"value", icc->value}, {"interval", json_of(icc->interval)}} : Json(nullptr);
}

Json json_of(const std::optional<ObserverSpread>& spread) {
    if (!spread) return nullptr;
    return {{"within", spread->within}, {"between", spread->between}, {"together", spread->together}};
}

Json json_of(const std::optional<double>& value) {
    return value ? Json(*value) : Json(nullptr);
}

std::string field(const std::optional<double>& value) {
    return value ? shortest(*value) : "";
}

}  // namespace

std::string icc_text(const std::optional<IntraclassCorrelation>& icc, const std::string& to) {
    if (!icc) return "–";
    const auto text = [](double value) { return with_decimals(value, shown_decimals); };
    return text(icc->value) + " (" + text(icc->interval.low) + to + text(icc->interval.high) + ")";
}

std::string bias_text(const PairAgreement& pair) {
    const std::string bias = signed_text(pair.bias);
    if (!pair.p) return bias;
    return bias + (*pair.p < 0.001 ? ", p < 0.001" : ", p = " + with_decimals(*pair.p, 3));
}

std::string interval_text(const Interval& interval, const std::string& to) {
    return signed_text(interval.low) + to + signed_text(interval.high);
}

std::string study_table(const Study& study) {
    Table table;
    table.text = std::to_string(study.films) + " films, " + std::to_string(study.readings) + " readings of each\n";
    table.head("Landmarks, mm along and across Frankfort");
    for (const StudyLandmark& landmark : study.landmarks) {
        table.add(landmark.name + " along", landmark.along);
        table.add(landmark.name + " across", landmark.across);
    }
    std::string analysis;
    for (const StudyItem& item : study.items) {
        if (item.analysis != analysis) table.head(analysis = item.analysis);
        table.add(item.name, item.agreement);
    }
    table.text +=
        "\n" +
        wrapped(
            "TEM: technical error of measurement of a single reading. ICC(2,1): agreement of single readings, ICC(3,1): "
            "their consistency, with 95 % intervals. Below, of a reading against the first: Dahlberg's error, bias "
            "with p of the paired t-test, limits of agreement, bias -/+ 1.96 SD." +
                std::string(study.repeats > 1 ? " Observers: SD of one observer's readings, of observers, and of a "
                                                "single reading by any of them."
                                              : ""),
            page_width, "  ") +
        "\n";
    double worst = 1;
    std::string of;
    for (const StudyItem& item : study.items) {
        if (!item.agreement.icc21 || item.agreement.icc21->value >= worst) continue;
        worst = item.agreement.icc21->value;
        of = item.name;
    }
    if (of.empty()) return table.text;
    return table.text +
           wrapped("Size of the sample: for an ICC that is known to 0.05 to each side " +
                       std::to_string(films_for_icc(std::max(worst, 0.0), study.readings, icc_width)) +
                       " films must be read, by the lowest found here, " + with_decimals(worst, 2) + " of " + of +
                       " (Bonett 2002); for limits of agreement known to a third of the SD " +
                       std::to_string(films_for_limits(1.0 / 3)) + " (Bland & Altman 1986).",
                   page_width, "  ") +
           "\n";
}

std::string study_csv(const Study& study) {
    std::string text =
        "group,analysis,name,unit,films,readings,reading,mean,technical_error,dahlberg,icc21,icc21_low,icc21_high,icc31,"
        "icc31_low,icc31_high,bias,bias_low,bias_high,t,p,sd_of_differences,limit_low,limit_high,limit_error,films_needed,"
        "within_observer,between_observers,any_observer\r\n";
    each(study, [&](const char* group, const std::string& analysis, const std::string& name, const std::string& unit,
                    const Agreement& of) {
        const auto icc = [](const std::optional<IntraclassCorrelation>& found) {
            return found ? shortest(found->value) + "," + shortest(found->interval.low) + "," +
                               shortest(found->interval.high)
                         : std::string(",,");
        };
        for (std::size_t i = 0; i < of.pairs.size(); ++i) {
            const PairAgreement& pair = of.pairs[i];
            text += std::string(group) + "," + csv_field(analysis) + "," + csv_field(name) + "," + unit + "," +
                    std::to_string(of.films) + "," + std::to_string(of.readings) + "," + std::to_string(i + 2) + "," +
                    shortest(of.mean) + "," + shortest(of.technical_error) + "," + shortest(pair.dahlberg) + "," +
                    icc(of.icc21) + "," + icc(of.icc31);
            for (const std::optional<double>& number :
                 {std::optional(pair.bias), std::optional(pair.bias_interval.low),
                  std::optional(pair.bias_interval.high), pair.t, pair.p, std::optional(pair.sd),
                  std::optional(pair.limits.low), std::optional(pair.limits.high), std::optional(pair.limit_error)})
                text += "," + field(number);
            text +=
                "," + (of.icc21 ? std::to_string(films_for_icc(std::max(of.icc21->value, 0.0), of.readings, icc_width))
                                : std::string());
            const auto& observers = of.observers;
            text += observers ? "," + shortest(observers->within) + "," + shortest(observers->between) + "," +
                                    shortest(observers->together) + "\r\n"
                              : std::string(",,,\r\n");
        }
    });
    return text;
}

std::string study_json(const Study& study) {
    Json rows = Json::array();
    each(study, [&](const char* group, const std::string& analysis, const std::string& name, const std::string& unit,
                    const Agreement& of) {
        Json pairs = Json::array();
        for (const PairAgreement& pair : of.pairs)
            pairs.push_back({{"bias", pair.bias},
                             {"bias_interval", json_of(pair.bias_interval)},
                             {"t", json_of(pair.t)},
                             {"p", json_of(pair.p)},
                             {"sd_of_differences", pair.sd},
                             {"dahlberg", pair.dahlberg},
                             {"limits", json_of(pair.limits)},
                             {"limit_error", pair.limit_error}});
        rows.push_back({{"group", group},
                        {"analysis", analysis},
                        {"name", name},
                        {"unit", unit},
                        {"films", of.films},
                        {"mean", of.mean},
                        {"technical_error", of.technical_error},
                        {"icc21", json_of(of.icc21)},
                        {"icc31", json_of(of.icc31)},
                        {"mean_squares", {of.between_films, of.between_readings, of.error}},
                        {"observers", json_of(of.observers)},
                        {"against_first", pairs}});
    });
    const Json document = {{"format", "cephtool-reliability"},
                           {"version", 1},
                           {"films", study.films},
                           {"readings", study.readings},
                           {"readings_of_an_observer", study.repeats},
                           {"rows", rows}};
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace cephtool
