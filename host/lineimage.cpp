// cephtool lineimage: makes a line image of a picture, and widens, narrows and thins its lines.
#include <Tools.h>

#include <cmath>

#include "host/command_line.h"
#include "host/line_image.h"
#include "host/numbers.h"
#include "host/text_width.h"

namespace cephtool {
namespace {

constexpr int most_steps = 1000;

struct LineImageOptions {
    std::string input, output, threshold, dilate = "0", erode = "0", connectivity = "8";
    bool thin = false, bright = false;
};

// A text option that takes a whole number.
CLI::Option* add_number(CLI::App& options, const std::string& name, std::string& value, int least, int most,
                        const std::string& help) {
    const CLI::Validator whole(
        [least, most](std::string& given) {
            const std::optional<double> number = number_from(given);
            if (number && *number >= least && *number <= most && *number == std::floor(*number)) return std::string();
            return in_quotes(given) + " is no whole number from " + std::to_string(least) + " to " +
                   std::to_string(most);
        },
        "");
    return options.add_option(name, value, help)->check(whole)->type_name("N");
}

int whole(const std::string& checked) {
    return static_cast<int>(number_from(checked).value());
}

void check_files(const LineImageOptions& given) {
    if (!is_png_file(given.output) && !is_line_image_file(given.output)) {
        throw Error(ExitCode::bad_command_line, in_quotes(given.output) + " does not end in .png or .pgm",
                    "The end of the name says what is written.");
    }
    if (is_line_image_file(given.input) && !given.threshold.empty()) {
        throw Error(ExitCode::bad_command_line, "--threshold is for pictures",
                    "A .pgm file holds lines already; leave the option away.");
    }
}

void transform(LineImage& image, const LineImageOptions& given) {
    const int connectivity = whole(given.connectivity);
    unsigned char* const pixels = image.pixels.data();
    for (int i = whole(given.dilate); i > 0; --i) CTools::Dira(pixels, image.width, image.height, connectivity);
    for (int i = whole(given.erode); i > 0; --i) CTools::Eros(pixels, image.width, image.height, connectivity);
    if (given.thin) CTools::Linear(nullptr, pixels, image.width, image.height);
}

}  // namespace

ExitCode run_lineimage(const Command& command, const Arguments& arguments, Streams& streams) {
    LineImageOptions given;
    CommandLine line(command, "cephtool lineimage --threshold 150 --thin photo.jpg -o lines.png",
                     "cephtool lineimage --bright --dilate 2 --erode 2 photo.jpg -o lines.pgm");
    CLI::App& options = line.options();
    options.add_option("IN", given.input, "JPEG, PNG, or a line image FILE.pgm")->required()->type_name("");
    options.add_option("-o,--output", given.output, "FILE.png or FILE.pgm")->required()->type_name("FILE");
    add_number(options, "--threshold", given.threshold, 1, 255,
               "first, of a picture: what is darker than this grey\nis line (128)");
    options.add_flag("--bright", given.bright, "what is not darker is line, as on a film");
    add_number(options, "--dilate", given.dilate, 0, most_steps, "second: widen lines by a pixel so many times");
    add_number(options, "--erode", given.erode, 0, most_steps, "third: narrow lines by a pixel so many times");
    options.add_flag("--thin", given.thin, "last: thin lines to one pixel");
    line.add_choice("--connectivity", given.connectivity, {"4", "8"},
                    "8 (default): --dilate and --erode look at slanting\nneighbours, too; 4: they do not");
    if (!line.parse(arguments, streams)) return ExitCode::done;
    check_files(given);
    const LineThreshold threshold{given.threshold.empty() ? LineThreshold{}.grey : whole(given.threshold),
                                  given.bright};
    LineImage image = read_line_image(given.input, threshold);
    transform(image, given);
    write_line_image(image, given.output, given.bright);
    return ExitCode::done;
}

}  // namespace cephtool
