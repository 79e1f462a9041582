// cephtool trace: draws the tracing of a case.
#include <algorithm>
#include <cmath>
#include <ostream>

#include "base/numbers.h"
#include "base/wording.h"
#include "host/case_files.h"
#include "host/case_option_flags.h"
#include "host/command_line.h"
#include "host/landmark_slips.h"
#include "host/output.h"
#include "report/tracing_file.h"
#include "results/analysis_folder.h"
#include "results/texts.h"
#include "tracing/japanese_legend.h"
#include "tracing/measures.h"

namespace cephtool {
namespace {

constexpr double longest_side_px = 1600;  // of a PNG picture, unless asked for otherwise
constexpr int smallest_side_px = 16, largest_side_px = 32767;
constexpr double least_zoom = 0.001, most_zoom = 100;

struct PixelSize {
    int width, height;
};

struct TraceOptions {
    std::string input, output, mode, zoom, size, style, outlines = "case", mirrored = "right", folder;
    std::vector<std::string> measures;
    Language language = Language::english;
    bool no_image = false, actual_size = false;
};

Error bad_option(const std::string& message, const std::string& way_out) {
    return {ExitCode::bad_command_line, message, way_out};
}

FileFormat format_of(const TraceOptions& options) {
    const auto format = file_format(options.output);
    if (!format) {
        throw bad_option(in_quotes(options.output) + " does not end in .png, .svg or .pdf",
                         "The end of the name says what is written.");
    }
    if (*format != FileFormat::png && !(options.zoom.empty() && options.size.empty())) {
        throw bad_option("--zoom and --size are for PNG pictures", "SVG and PDF have their size in millimetres.");
    }
    return *format;
}

std::optional<PixelSize> size_from(const std::string& text) {
    const std::size_t cross = text.find('x');
    if (cross == std::string::npos) return {};
    const auto side = [](const std::string& digits) -> int {
        const auto number = number_from(digits);
        const bool fits =
            number && *number >= smallest_side_px && *number <= largest_side_px && *number == std::floor(*number);
        return fits ? static_cast<int>(*number) : 0;
    };
    const PixelSize size{side(text.substr(0, cross)), side(text.substr(cross + 1))};
    return size.width > 0 && size.height > 0 ? std::optional(size) : std::nullopt;
}

double pixels_a_mm(const TraceOptions& options, const Page& page) {
    const double longest = std::max(page.width_mm, page.height_mm);
    constexpr double print_px_a_mm = 300 / 25.4;
    double pixels = options.actual_size ? print_px_a_mm : longest_side_px / longest;
    if (const auto size = size_from(options.size)) {
        pixels = std::min(size->width / page.width_mm, size->height / page.height_mm);
    } else if (const auto zoom = number_from(options.zoom)) {
        pixels = *zoom / page.scale;
    }
    if (longest * pixels > largest_side_px) {
        throw bad_option("the picture would have more than " + std::to_string(largest_side_px) + " pixels a side",
                         "Ask for a smaller --zoom.");
    }
    if (std::lround(std::min(page.width_mm, page.height_mm) * pixels) < smallest_side_px) {
        throw bad_option("the picture would have less than " + std::to_string(smallest_side_px) + " pixels a side",
                         "Ask for a larger --zoom or --size.");
    }
    return pixels;
}

// What the command line names, else what the case names.
std::optional<Film> film_of(const TraceOptions& options, const std::string& image, const Case& record) {
    if (options.no_image) return {};
    if (record.off_its_picture && !image.empty()) {
        throw bad_option("a case that is turned round does not fit on its X-ray",
                         "Leave --image away, or --mirror; with --image-height, --flip-y keeps it on the X-ray.");
    }
    if (!image.empty()) return read_film(image);
    return named_film(record);
}

std::size_t landmarks_outside(const Case& record, const tool::Background& picture) {
    return static_cast<std::size_t>(std::ranges::count_if(record.landmarks, [&](const Landmark& landmark) {
        const Position p = landmark.position;
        return p.x < 0 || p.y < 0 || p.x > picture.width || p.y > picture.height;
    }));
}

void trace(const TraceOptions& options, const CaseOptions& case_options, Streams& streams) {
    const FileFormat format = format_of(options);
    const AnalysisFolder folder = analysis_folder(options.folder, {FolderPart::modes, FolderPart::analyses});
    Case record = read_case(checked_text(read_bytes(options.input, streams.in)), case_options);
    LandmarkSlips(streams).remark(record);
    check_output(options.output, {image_file(record)});
    std::vector<std::string> notes = record.notes;
    const DisplayMode mode = chosen_mode(folder, record.kind, options.mode);
    const std::optional<Film> film = film_of(options, case_options.image, record);
    std::optional<FilmSize> film_size;
    if (film) {
        notes.insert(notes.end(), film->doubts.begin(), film->doubts.end());
        film_size = {film->picture.width, film->picture.height};
        if (const std::size_t outside = landmarks_outside(record, film->picture)) {
            notes.push_back(std::to_string(outside) + " landmarks lie outside the X-ray; is it the right one?");
        }
    }
    const OutlineSource source = options.outlines == "case"     ? OutlineSource::own_or_fitted
                                 : options.outlines == "fitted" ? OutlineSource::fitted
                                                                : OutlineSource::none;
    const Half mirrored = options.mirrored == "right"  ? Half::right
                          : options.mirrored == "left" ? Half::left
                                                       : Half::none;
    const OutlineTemplate face = source == OutlineSource::none ? OutlineTemplate{} : shipped_template(record.kind);
    const std::vector<Analysis> analyses = listed_analyses(folder);
    Tracing tracing = tracing_of(record, mode, analyses, face, source, mirrored);
    for (const std::string& name : options.measures) add_measure(tracing, record, analyses, name);
    notes.insert(notes.end(), tracing.notes.begin(), tracing.notes.end());
    const bool japanese = options.language == Language::japanese;
    if (japanese) put_legend_into_japanese(tracing, record);

    std::optional<Page> sheet;
    if (options.actual_size) {
        sheet = sheet_for(tracing, film_size);
        if (!sheet) {
            throw Error(ExitCode::bad_input, "at true size the tracing is larger than a sheet of A3",
                        "Check the scale of the case, or leave --actual-size away.");
        }
    }
    const Page page = sheet ? *sheet : page_for(tracing, film_size);
    const bool dark = options.style.empty() ? film.has_value() : options.style == "film";
    Ruler ruler = options.actual_size ? long_ruler() : short_ruler();
    if (japanese) ruler.text = Texts(Language::japanese)(ruler.text);
    const TracingPaper paper{page, dark ? film_style() : paper_style(), film ? &*film : nullptr,
                             pixels_a_mm(options, page), ruler};
    const std::string bytes = tracing_file(format, tracing, paper, notes);
    write_result(bytes, options.output, streams.out);
    say_remarks(record, streams);
    for (const std::string& note : notes) streams.err << printable(options.input) << ": " << note << "\n";
}

}  // namespace

ExitCode run_trace(const Command& command, const Arguments& arguments, Streams& streams) {
    TraceOptions given;
    CommandLine line(command, "cephtool trace --actual-size lateral-class2.json -o tracing.pdf",
                     "cephtool trace --mode steiner --style film lateral-average.json -o new.png");
    line.add_argument("CASE", given.input, "file with landmarks; - is standard input").required();
    line.add_text("-o,--output", "FILE", given.output, "FILE.png, FILE.svg or FILE.pdf").required();
    line.add_text("--mode", "MODE", given.mode, "display mode by name or number, see\n\"cephtool modes\"");
    line.add_texts("--measure", "ITEM", given.measures,
                   "draw what an item measures: \"SNA\", or\n\"Steiner:SNA\"; again for more");
    line.add_choice("--outlines", given.outlines, {"case", "fitted", "none"},
                    "case: its own, where it has any;\nfitted: those of an average face; none");
    line.add_choice("--mirrored-half", given.mirrored, {"left", "none", "right"},
                    "of a frontal tracing: dotted over the other\nhalf, to compare the sides");
    line.add_choice("--style", given.style, {"film", "paper"}, "film: bright on dark; paper: dark on white");
    line.add_language(given.language, "en or ja: of the texts below the tracing");
    line.add_text("--size", "WxH", given.size, "PNG: the largest that fits in it", [](const std::string& text) {
        return size_from(text) ? "" : in_quotes(text) + " is no size from 16x16 to 32767x32767, such as 1200x1500";
    });
    line.add_text("--zoom", "Z", given.zoom, "PNG: pixels for each pixel of the X-ray", [](const std::string& text) {
        const auto number = number_from(text);
        return number && *number >= least_zoom && *number <= most_zoom
                   ? ""
                   : in_quotes(text) + " is no zoom from 0.001 to 100, such as 0.5";
    });
    line.add_flag("--actual-size", given.actual_size, "for paper: true size with a ruler, on A4\nor A3");
    line.add_analysis_folder(given.folder);
    CaseOptionFlags case_options(line);
    const Option image = case_options.add_image("draw over this X-ray (JPEG, PNG,\nTIFF, DICOM)");
    line.add_flag("--no-image", given.no_image, "not over the X-ray that the case names").excludes(image);
    if (!line.parse(arguments, streams)) return ExitCode::done;
    check_output(given.output, {given.input});
    check_output(given.output, case_options.files());
    trace(given, case_options.options(0), streams);
    return ExitCode::done;
}

}  // namespace cephtool
