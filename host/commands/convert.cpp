// cephtool convert: a case of any format in any other.
#include <ostream>

#include "base/path.h"
#include "base/wording.h"
#include "cases/case_film.h"
#include "cases/case_format.h"
#include "host/case_files.h"
#include "host/case_option_flags.h"
#include "host/command_line.h"
#include "host/output.h"

namespace cephtool {
namespace {

std::vector<std::string> format_names() {
    std::vector<std::string> names;
    for (const CaseFormat& format : case_formats()) names.emplace_back(format.name);
    return names;
}

// The project's own where neither a name nor the end of the output's name says another.
const CaseFormat& format_for(const std::string& name, const std::string& output) {
    if (!name.empty()) return *format_by_name(name);
    if (const CaseFormat* const format = format_by_extension(output)) return *format;
    const std::filesystem::path end = path_from_utf8(output).extension();
    if (end.empty()) return own_format();
    throw Error(ExitCode::bad_command_line,
                in_quotes(output) + " ends in " + printable(utf8_from_path(end)) + ", as no format of cases does",
                "Say with --format which is meant: " + joined(format_names(), ", ") + "; or name the file otherwise.");
}

// The name under which the new file finds the X-ray: relative to its own folder, as the old one's is to the old one's.
std::string image_from(const std::string& output, const Case& record) {
    const std::filesystem::path image = path_from_utf8(record.image);
    if (image.empty() || image.has_root_path() || output.empty() || output == "-") return record.image;
    return image_seen_from(output, image_file(record));
}

}  // namespace

ExitCode run_convert(const Command& command, const Arguments& arguments, Streams& streams) {
    std::string path, output, name;
    CommandLine line(command, "cephtool convert lateral-average.csv -o new.json",
                     "cephtool convert --scale 0.12 --sex m lateral-average-19-points.txt");
    line.add_argument("CASE", path, "file with landmarks; - is standard input").required();
    CaseOptionFlags case_options(line);
    case_options.add_image("the X-ray of the case (JPEG, PNG, TIFF,\nDICOM): named in it, and asked for what it lacks");
    line.add_choice("--format", name, format_names(), joined(format_names(), ", ") + ";\nelse as FILE ends, or json");
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    check_output(output, {path});
    check_output(output, case_options.files());
    const CaseFormat& format = format_for(name, output);
    const CaseOptions options = case_options.options(0);
    const Source source = checked_text(read_bytes(path, streams.in));
    std::vector<Case> cases = read_cases(source, options);
    if (cases.size() > 1 && !format.holds_many) {
        throw source.error("it holds " + std::to_string(cases.size()) + " specimens, where one case is needed",
                           "Only a TPS file holds several: --format tps.");
    }
    std::string text;
    for (Case& record : cases) {
        check_output(output, {image_file(record)});
        record.image = image_from(output, record);
        text += format.write(record, options);
        if (const std::vector<std::string> lost = lost_in(format, record); !lost.empty())
            record.notes.push_back(std::string("a file of format ") + format.name +
                                   " has no place for: " + joined(lost, ", "));
        for (const std::string& note : record.notes) streams.err << printable(path) << ": " << note << "\n";
        say_remarks(record, streams);
    }
    write_result(text, output, streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
