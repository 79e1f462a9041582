// Line images: files are read whole or not at all, and what is written is read back; all operations equal their plain
// form. The input is a file; when it is none, its first byte is the width of an image that the others fill.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "Tools.h"
#include "tests/util/plain_line_image.h"
#include "util/line_image_file.h"

namespace {

using plain::Pixels;

void require(bool holds) {
    if (!holds) std::abort();
}

void transform(Pixels image, int width, int height) {
    const Pixels before = image;
    const auto compare = [&](auto fast, auto plainly) {
        Pixels expected = image = before;
        fast(image.data());
        plainly(plain::Image(expected, width, height));
        require(image == expected);
    };
    for (const int neighbours : {4, 8}) {
        compare([&](auto pixels) { CTools::Dira(pixels, width, height, neighbours); },
                [&](auto form) { form.step(0, 255, neighbours); });
        compare([&](auto pixels) { CTools::Eros(pixels, width, height, neighbours); },
                [&](auto form) { form.step(255, 0, neighbours); });
    }
    compare([&](auto pixels) { CTools::Linear(nullptr, pixels, width, height); }, [](auto form) { form.thin(); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (const auto file = tool::line_image_file(bytes)) {
        Pixels image(file->pixels.begin(), file->pixels.end());
        const std::string written = tool::file_of({image.data(), file->width, file->height});
        const auto again = tool::line_image_file(written);
        require(again && again->width == file->width && again->height == file->height);
        require(std::ranges::equal(again->pixels, file->pixels));
        require(!tool::line_image_file(written + '\0') &&
                !tool::line_image_file(written.substr(0, written.size() - 1)));
        transform(image, file->width, file->height);
    } else if (size > 1) {
        const int width = std::max(1, static_cast<int>(data[0])), height = static_cast<int>((size - 1) / width);
        transform(Pixels(data + 1, data + 1 + std::size_t{1} * width * height), width, height);
    }
    return 0;
}
