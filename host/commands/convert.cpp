// cephtool convert: a case of any format in any other.
#include <ostream>

#include "base/path.h"
#include "base/wording.h"
#include "cases/case_film.h"
#include "cases/case_format.h"
#include "cases/case_names.h"
#include "host/case_files.h"
#include "host/command_line.h"
#include "host/output.h"

namespace cephtool {
namespace {

const CaseFormat& format_for(const std::string& name, const std::string& output) {
    const CaseFormat* format = name.empty() ? format_by_extension(output) : format_by_name(name);
    return format ? *format : *format_by_name("json");
}

// Own landmarks under whose names the format's reader understands something else.
std::vector<std::string> names_not_kept(const Case& record, std::string_view format) {
    std::vector<std::string> names;
    for (const Landmark& landmark : record.user) {
        const bool passed_over = format == "tps" && landmark.name == "-";
        if (passed_over || is_reserved(landmark.name, record.kind)) names.push_back(in_quotes(landmark.name));
    }
    return names;
}

// The name under which the new file finds the X-ray: relative to its own folder, as the old one's is to the old one's.
std::string image_from(const std::string& output, const Case& record) {
    const std::filesystem::path image = path_from_utf8(record.image);
    if (image.empty() || image.has_root_path() || output.empty() || output == "-") return record.image;
    return image_seen_from(output, image_file(record));
}

std::vector<ForeignKey> foreign_keys(const Case& record) {
    std::vector<ForeignKey> keys = record.foreign;
    for (const Outline& outline : record.outlines)
        keys.insert(keys.end(), outline.foreign.begin(), outline.foreign.end());
    return keys;
}

// A format that lost something says so.
void note_losses(const Case& record, const CaseFormat& format, std::vector<std::string>& notes) {
    const std::string name = format.name;
    std::vector<std::string> lost = record.passed_over;
    const auto tell = [&] {
        if (!lost.empty()) notes.push_back("a file of format " + name + " has no place for: " + joined(lost, ", "));
    };
    if (name == "json") return tell();
    for (const ForeignKey& key : foreign_keys(record)) lost.push_back("the key " + in_quotes(key.key));
    if (!record.virtuals.empty()) lost.emplace_back("virtual landmarks");
    if (!record.outlines.empty()) lost.emplace_back(name == "tps" ? "names and anchors of outlines" : "outlines");
    if (!record.image.empty() && name != "tps") lost.emplace_back("the name of the X-ray");
    const std::vector<std::string> names = names_not_kept(record, name);
    if (!names.empty()) lost.push_back("landmarks of your own named " + joined(names, ", "));
    if (record.palate) lost.emplace_back("the category of the palate");
    if (name == "challenge") lost.emplace_back("all but nineteen landmarks, and everything beside them");
    tell();
}

}  // namespace

ExitCode run_convert(const Command& command, const Arguments& arguments, Streams& streams) {
    std::string path, output, name, image;
    CommandLine line(command, "cephtool convert lateral-average.csv -o new.json",
                     "cephtool convert --scale 0.12 --sex m lateral-average-19-points.txt");
    line.add_argument("CASE", path, "file with landmarks; - is standard input").required();
    line.add_text("--image", "FILE", image,
                  "the X-ray of the case (JPEG, PNG, TIFF,\nDICOM): named in it, and asked for what it lacks");
    const CaseOptionFlags case_options(line);
    std::vector<std::string> names;
    for (const CaseFormat& format : case_formats()) names.emplace_back(format.name);
    line.add_choice("--format", name, names, joined(names, ", ") + ";\nelse as FILE ends, or json");
    line.add_output(output);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    check_output(output, {path, image, case_options.file()});
    const CaseFormat& format = format_for(name, output);
    CaseOptions options = case_options.options();
    options.image = image;
    const Source source = checked_text(read_bytes(path, streams.in));
    std::vector<Case> cases = read_cases(source, options);
    const bool holds_many = std::string_view(format.name) == "tps";
    if (cases.size() > 1 && !holds_many) {
        throw source.error("it holds " + std::to_string(cases.size()) + " specimens, where one case is needed",
                           "Only a TPS file holds several: --format tps.");
    }
    std::string text;
    for (Case& record : cases) {
        check_output(output, {image_file(record)});
        record.image = image_from(output, record);
        text += format.write(record, options);
        note_losses(record, format, record.notes);
        for (const std::string& note : record.notes) streams.err << printable(path) << ": " << note << "\n";
        say_remarks(record, streams);
    }
    write_result(text, output, streams.out);
    return ExitCode::done;
}

}  // namespace cephtool
