#include "host/case_files.h"

#include <ostream>

#include "base/wording.h"

namespace cephtool {

ExitCode for_each_case(const std::vector<std::string>& paths, const CaseOptionFlags& options, Streams& streams,
                       const std::function<void(const Source&, Case)>& use) {
    options.check_images(paths.size());
    ExitCode code = ExitCode::done;
    const auto guarded = [&](const std::function<void()>& work) {
        try {
            work();
        } catch (const Error& error) {
            streams.err << shown(error);
            code = error.code;
        }
    };
    for (std::size_t place = 0; place < paths.size(); ++place) {
        guarded([&] {
            const std::string& path = paths[place];
            const Source source = checked_text(read_bytes(path, streams.in));
            for (Case& record : read_cases(source, options.options(place))) {
                for (const std::string& note : record.notes) streams.err << printable(path) << ": " << note << "\n";
                guarded([&] { use(source, std::move(record)); });
            }
        });
    }
    return code;
}

void say_remarks(const Case& record, Streams& streams) {
    for (const Remark& remark : record.remarks)
        streams.err << printable(record.file) << ": " << in_english(remark) << "\n";
}

}  // namespace cephtool
