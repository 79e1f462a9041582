// cephtool exif: what the headers of photographs say.
#include <filesystem>
#include <ostream>

#include "base/path.h"

#include "host/command_line.h"
#include "host/exif/picture_files.h"
#include "host/exif/picture_report.h"
#include "host/output.h"
#include "host/progress.h"

namespace cephtool {
namespace {

namespace fs = std::filesystem;

struct ExifOptions {
    std::vector<std::string> paths;
    std::string thumbnail, output;
    ResultFormat format{};
    bool recursive = false;
};

void check(const ExifOptions& options) {
    check_inputs(options.paths);
    if (options.thumbnail.empty()) return;
    if (options.paths.size() > 1 || options.recursive) {
        throw Error(ExitCode::bad_command_line, "--thumbnail takes one picture",
                    "Give the pictures one after the other.");
    }
    check_output(options.thumbnail, options.paths);
    check_output(options.output, {options.thumbnail});
}

// The files that are meant. What is wrong with a folder is told at once, and the others go on.
std::vector<std::string> files_of(const ExifOptions& options, Streams& streams, ExitCode& code) {
    std::vector<std::string> files;
    for (const std::string& path : options.paths) {
        std::error_code failure;
        if (!options.recursive || !fs::is_directory(path_from_utf8(path), failure)) {
            files.push_back(path);
            continue;
        }
        try {
            for (std::string& file : pictures_below(path)) files.push_back(std::move(file));
        } catch (const Error& error) {
            streams.err << shown(error);
            code = error.code;
        }
    }
    return files;
}

constexpr ResultForms<Picture> forms{picture_table, picture_json, picture_csv};

void write_thumbnail(const Picture& picture, const std::string& path, std::ostream& out) {
    if (picture.thumbnail.empty()) {
        const std::string& why = picture.lost_thumbnail;
        throw Error(ExitCode::bad_input,
                    picture.file + (why.empty() ? " has no thumbnail that could be found" : ": " + why),
                    why.empty() ? "Only pictures with EXIF data have one, and not all of them."
                                : "Another program can take it out.");
    }
    write_result(picture.thumbnail, path, out);
}

}  // namespace

ExitCode run_exif(const Command& command, const Arguments& arguments, Streams& streams) {
    ExifOptions given;
    CommandLine line(command, "cephtool exif photo.jpg", "cephtool exif --recursive --format csv .");
    line.add_argument("FILE", given.paths, "JPEG pictures; - is standard input").required();
    line.add_flag("-r,--recursive", given.recursive, "read the pictures in folders, too");
    line.add_format(given.format, given.output, {ResultFormat::table, ResultFormat::json, ResultFormat::csv});
    line.add_output(given.output);
    line.add_text("--thumbnail", "FILE", given.thumbnail,
                  "write the small picture inside to FILE;\n- is standard output, alone");
    if (!line.parse(arguments, streams)) return ExitCode::done;
    check(given);

    ExitCode code = ExitCode::done;
    const std::vector<std::string> files = files_of(given, streams, code);
    check_output(given.output, files);
    std::vector<Picture> pictures;
    Progress progress(streams.err, streams.progress, files.size(), "pictures");
    for (const std::string& file : files) {
        try {
            const Picture picture = read_picture(file, streams.in);
            if (!picture.damage || picture.tells_anything()) pictures.push_back(picture);
            if (!given.thumbnail.empty() && (!picture.damage || !picture.thumbnail.empty()))
                write_thumbnail(picture, given.thumbnail, streams.out);
            if (picture.damage) throw *picture.damage;
        } catch (const Error& error) {
            progress.clear();
            streams.err << shown(error);
            code = error.code;
        }
        progress.step();
    }
    progress.clear();
    const bool to_terminal = given.output.empty() && streams.colour;
    if (!pictures.empty() && given.thumbnail != "-") {
        write_result(forms.of(pictures, given.format, to_terminal), given.output, streams.out);
    }
    return code;
}

}  // namespace cephtool
