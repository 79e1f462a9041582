// cephtool convert: a case of any format in the program's own.
#include <ostream>

#include "host/command_line.h"
#include "host/output.h"
#include "host/text_width.h"

namespace cephtool {

ExitCode run_convert(const Command& command, const Arguments& arguments, Streams& streams) {
    std::string path, output;
    CommandLine line(command, "cephtool convert lateral-average.csv -o new.json",
                     "cephtool convert --scale 0.12 --sex m lateral-average-19-points.txt");
    line.options().add_option("CASE", path, "file with landmarks; - is standard input")->required()->type_name("");
    const CaseOptionFlags case_options(line);
    line.options().add_option("-o,--output", output, "write to FILE, not to standard output")->type_name("FILE");
    if (!line.parse(arguments, streams)) return ExitCode::done;
    const Case record = read_case(checked_text(read_bytes(path, streams.in)), case_options.options());
    for (const std::string& note : record.notes) streams.err << printable(path) << ": " << note << "\n";
    write_result(to_json(record), output, streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
