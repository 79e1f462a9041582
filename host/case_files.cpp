#include "host/case_files.h"

#include <ostream>

#include "host/text_width.h"

namespace cephtool {

ExitCode for_each_case(const std::vector<std::string>& paths, const CaseOptions& options, Streams& streams,
                       const std::function<void(const Source&, Case)>& use) {
    ExitCode code = ExitCode::done;
    for (const std::string& path : paths) {
        try {
            const Source source = checked_text(read_bytes(path, streams.in));
            Case record = read_case(source, options);
            for (const std::string& note : record.notes) streams.err << printable(path) << ": " << note << "\n";
            use(source, std::move(record));
        } catch (const Error& error) {
            streams.err << shown(error);
            code = error.code;
        }
    }
    return code;
}

}  // namespace cephtool
