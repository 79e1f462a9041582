#include "host/batch/batch_work.h"

#include <algorithm>
#include <map>
#include <memory>

#include "base/wording.h"
#include "host/batch/ordered_pool.h"
#include "tracing/landmark_outliers.h"

namespace cephtool {
namespace {

// What a thread works on at a time: enough to make the handing over cheap, little enough to be held many times, and its
// lines to be written from the processor's cache.
constexpr std::size_t most_cases_a_portion = 128, fewest_cases_a_portion = 8;
constexpr std::size_t columns_a_portion = 40'000;  // some 10 bytes each
constexpr std::size_t bytes_a_portion = std::size_t{1} << 20;
constexpr std::size_t portions_a_thread = 4;

struct Portion {
    std::vector<CaseText> cases;
    std::size_t count = 0;
    std::string lines, failed;
    std::size_t failures = 0;
};

std::string place_of(const Error& error) {
    if (error.line == 0) return error.file;
    return error.file + ":" + std::to_string(error.line) + ":" + std::to_string(error.column);
}

class Worker {
 public:
    explicit Worker(const BatchWork& work)
        : work_(work), reader_(work.options), measurer_(work.columns, work.band, work.errors) {
        if (!work.slips) return;
        for (const Kind kind : {Kind::lateral, Kind::frontal})
            outliers_.emplace(std::piecewise_construct, std::forward_as_tuple(kind),
                              std::forward_as_tuple(shipped_template(kind), kind));
    }

    void measure(Portion& portion) {
        portion.lines.clear();
        portion.failed.clear();
        portion.failures = 0;
        for (std::size_t i = 0; i < portion.count; ++i) measure(portion.cases[i], portion);
    }

 private:
    void measure(const CaseText& text, Portion& portion) {
        const auto fail = [&](const std::string& place, const char* message, const std::string& advice) {
            portion.failed += failure_row(text.number, place, message, advice);
            ++portion.failures;
        };
        try {
            const Case& record = reader_.read(text);
            if (std::ranges::none_of(work_.columns.analyses,
                                     [&](const BatchAnalysis& analysis) { return analysis.sheet(record.kind); })) {
                throw text.source.error(std::string("this is a ") + name_of(record.kind) +
                                            " case, and none of the analyses is for its kind",
                                        "\"cephtool analyses\" lists the analyses by kind.");
            }
            const auto outliers = outliers_.find(record.kind);
            if (outliers != outliers_.end() && !outliers->second(record).empty()) {
                Case doubted = record;
                outliers->second.remark(doubted);
                work_.format.append(portion.lines, text.number, doubted, measurer_.measure(doubted));
            } else {
                work_.format.append(portion.lines, text.number, record, measurer_.measure(record));
            }
        } catch (const Error& error) {
            fail(place_of(error), error.what(), error.way_out);
        } catch (const std::exception& failure) {
            fail(printable(text.source.name), failure.what(), "");
        }
    }

    const BatchWork& work_;
    CaseReader reader_;
    CaseMeasurer measurer_;
    std::map<Kind, LandmarkOutliers> outliers_;  // none of kinds without an average face
};

// The case of the last line that an earlier run wrote must give that line again.
void check_last_line(const BatchWork& work, CaseStream& stream, const BatchOutput& output,
                     const std::function<bool()>& stop) {
    Portion portion;
    portion.cases.resize(1);
    while (portion.cases[0].number < output.last_number()) {
        if (!stream.next(portion.cases[0])) break;
    }
    if (stop()) return;
    portion.count = 1;
    Worker(work).measure(portion);
    if (portion.lines != output.last_line()) {
        throw Error(
            ExitCode::bad_command_line,
            "case " + std::to_string(output.last_number()) + " no longer gives the line that was written for it",
            "Resume with the cases, the analyses and the options of the first run, or begin anew.");
    }
}

bool fill(Portion& portion, std::size_t most_cases, CaseStream& stream) {
    portion.count = 0;
    std::size_t bytes = 0;
    while (portion.count < most_cases && bytes < bytes_a_portion) {
        if (portion.count == portion.cases.size()) portion.cases.emplace_back();
        CaseText& text = portion.cases[portion.count];
        if (!stream.next(text)) break;
        bytes += text.source.text.size();
        ++portion.count;
    }
    return portion.count > 0;
}

}  // namespace

bool measure_batch(const BatchWork& work, CaseStream& stream, BatchOutput& output, const std::function<bool()>& stop,
                   const std::function<void(std::size_t cases)>& progress) {
    if (output.last_number() > 0) check_last_line(work, stream, output, stop);
    OrderedPool<Portion> pool(work.threads, work.threads * portions_a_thread, [&work] {
        const auto worker = std::make_shared<Worker>(work);
        return [worker](Portion& portion) { worker->measure(portion); };
    });
    const std::size_t columns = std::max<std::size_t>(work.columns.names.size(), 1);
    const std::size_t cases = std::clamp(columns_a_portion / columns, fewest_cases_a_portion, most_cases_a_portion);
    bool more = true, stopped = false;
    while (more || !pool.is_empty()) {
        stopped = stopped || stop();
        if (more && !stopped && !pool.is_full()) {
            more = fill(pool.free_item(), cases, stream);
            // What is read while one asks to stop ends anywhere: standard input is no longer waited for.
            stopped = stop();
            if (more && !stopped) pool.hand_in();
            more = more || stopped;
            continue;
        }
        if (pool.is_empty()) break;
        const Portion& portion = pool.oldest();
        output.write(portion.lines, portion.failed, portion.failures);
        progress(portion.count);
        pool.take_back();
    }
    return !more;
}

}  // namespace cephtool
