// cephtool lineimage: makes a line image of a picture, and widens, narrows and thins its lines.
#include <Tools.h>

#include <optional>

#include "base/wording.h"
#include "host/command_line.h"
#include "host/line_picture.h"
#include "host/output.h"

namespace cephtool {
namespace {

constexpr int most_steps = 1000;

struct LineImageOptions {
    std::string input, output, connectivity = "8";
    std::optional<int> threshold, dilate, erode;
    bool thin = false, bright = false;
};

void check_files(const LineImageOptions& given) {
    if (!is_png_file(given.output) && !is_line_image_file(given.output)) {
        throw Error(ExitCode::bad_command_line, in_quotes(given.output) + " does not end in .png or .pgm",
                    "The end of the name says what is written.");
    }
    if (is_line_image_file(given.input) && given.threshold) {
        throw Error(ExitCode::bad_command_line, "--threshold is for pictures",
                    "A .pgm file holds lines already; leave the option away.");
    }
}

void transform(LineImage& image, const LineImageOptions& given) {
    const int connectivity = given.connectivity == "8" ? 8 : 4;
    unsigned char* const pixels = image.pixels.data();
    for (int i = given.dilate.value_or(0); i > 0; --i) CTools::Dira(pixels, image.width, image.height, connectivity);
    for (int i = given.erode.value_or(0); i > 0; --i) CTools::Eros(pixels, image.width, image.height, connectivity);
    if (given.thin) CTools::Linear(nullptr, pixels, image.width, image.height);
}

}  // namespace

ExitCode run_lineimage(const Command& command, const Arguments& arguments, Streams& streams) {
    LineImageOptions given;
    CommandLine line(command, "cephtool lineimage --threshold 150 --thin photo.jpg -o lines.png",
                     "cephtool lineimage --bright --dilate 2 --erode 2 photo.jpg -o lines.pgm");
    line.add_argument("IN", given.input, "JPEG, PNG, TIFF, DICOM, or a line image\nFILE.pgm").required();
    line.add_text("-o,--output", "FILE", given.output, "FILE.png or FILE.pgm").required();
    line.add_number("--threshold", given.threshold, 1, 255,
                    "first, of a picture: what is darker than this grey\nis line (128)");
    line.add_flag("--bright", given.bright, "what is not darker is line, as on a film");
    line.add_number("--dilate", given.dilate, 0, most_steps, "second: widen lines by a pixel so many times");
    line.add_number("--erode", given.erode, 0, most_steps, "third: narrow lines by a pixel so many times");
    line.add_flag("--thin", given.thin, "last: thin lines to one pixel");
    line.add_choice("--connectivity", given.connectivity, {"4", "8"},
                    "8 (default): --dilate and --erode look at slanting\nneighbours, too; 4: they do not");
    if (!line.parse(arguments, streams)) return ExitCode::done;
    check_files(given);
    check_output(given.output, {given.input});
    const LineThreshold threshold{given.threshold.value_or(LineThreshold{}.grey), given.bright};
    LineImage image = read_line_image(given.input, threshold);
    transform(image, given);
    write_line_image(image, given.output, given.bright);
    return ExitCode::done;
}

}  // namespace cephtool
