// cephtool film: what the files of X-rays are, and one of them as PNG.
#include <film/film_scale.h>
#include <film/window.h>

#include <ostream>

#include "base/numbers.h"
#include "base/wording.h"
#include "host/command_line.h"
#include "host/film_report.h"
#include "host/output.h"
#include "report/film.h"

namespace cephtool {
namespace {

struct FilmOptions {
    std::vector<std::string> paths;
    std::string output, window;
    ResultFormat format{};
    bool inverted = false, anonymous = false;
};

// "full", or the middle and the width of what is seen: "2048,4096".
std::optional<tool::FilmView> view_of(const std::string& window) {
    tool::FilmView view;
    if (window.empty()) return view;
    view.greys = tool::FilmView::Greys::full;
    if (window == "full") return view;
    const std::size_t comma = window.find(',');
    if (comma == std::string::npos) return {};
    const auto centre = number_from(window.substr(0, comma)), width = number_from(window.substr(comma + 1));
    if (!centre || !width || !(*width >= 1)) return {};
    return tool::FilmView{tool::FilmView::Greys::given, {*centre, *width}};
}

void check(const FilmOptions& options) {
    const bool picture = options.format == ResultFormat::png;
    if (picture && options.paths.size() > 1)
        throw Error(ExitCode::bad_command_line, "a PNG file takes one film", "Give the films one after the other.");
    if (!picture && (!options.window.empty() || options.inverted))
        throw Error(ExitCode::bad_command_line, "--window and --invert are for PNG pictures",
                    "Say where it is to go: -o film.png");
    check_output(options.output, options.paths);
}

std::string picture_of(const tool::Film& film, const FilmOptions& options) {
    tool::FilmView view = view_of(options.window).value();
    view.inverted = options.inverted;
    constexpr double mm_per_inch = 25.4, screen_dpi = 96;
    const auto mm = scale_of_header(film.header).mm_per_pixel;
    return film_png(shown_pixels(film, view), film, mm ? mm_per_inch / *mm : screen_dpi);
}

constexpr ResultForms<FilmReport> forms{film_table, film_json, film_csv};

}  // namespace

ExitCode run_film(const Command& command, const Arguments& arguments, Streams& streams) {
    FilmOptions given;
    CommandLine line(command, "cephtool film film.dcm", "cephtool film film.dcm --window 2048,4096 -o film.png");
    line.add_argument("FILE", given.paths, "X-rays: JPEG, PNG, TIFF, DICOM").required();
    line.add_format(given.format, given.output,
                    {ResultFormat::table, ResultFormat::json, ResultFormat::csv, ResultFormat::png});
    line.add_output(given.output);
    line.add_text("--window", "GREYS", given.window,
                  "PNG: MIDDLE,WIDTH of the values seen, or\nfull; else as the file says", [](const std::string& text) {
                      return view_of(text) ? "" : in_quotes(text) + " is no window such as 2048,4096, nor \"full\"";
                  });
    line.add_flag("--invert", given.inverted, "PNG: black for white");
    line.add_flag("--anonymous", given.anonymous, "leave out all that is known of the patient");
    if (!line.parse(arguments, streams)) return ExitCode::done;
    check(given);

    ExitCode code = ExitCode::done;
    std::vector<FilmReport> films;
    std::string picture;
    for (std::size_t i = 0; i < given.paths.size(); ++i) {
        try {
            const tool::Film film = stored_film(given.paths[i]);
            FilmReport told = film_report(given.paths[i], film);
            if (given.format == ResultFormat::png) {
                picture = picture_of(film, given);
                for (const std::string& doubt : told.doubts)
                    streams.err << printable(given.paths[i]) << ": " << doubt << "\n";
            }
            films.push_back(given.anonymous ? anonymous(std::move(told), i + 1) : std::move(told));
        } catch (const Error& error) {
            streams.err << shown(error);
            code = error.code;
        }
    }
    if (films.empty()) return code;
    const bool to_terminal = given.output.empty() && streams.colour;
    write_result(given.format == ResultFormat::png ? picture : forms.of(films, given.format, to_terminal), given.output,
                 streams.out);
    return code;
}

}  // namespace cephtool
