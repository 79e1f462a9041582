#include <openjpeg.h>
#ifdef __linux__
#include <sys/mman.h>
#endif

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <thread>

#include "film/dicom_pixels.h"

namespace tool {
namespace {

struct Bytes {
    std::string_view all;
    std::size_t at = 0;
};

constexpr OPJ_SIZE_T at_end = static_cast<OPJ_SIZE_T>(-1);

OPJ_SIZE_T take_bytes(void* target, OPJ_SIZE_T count, void* user_data) {
    Bytes& bytes = *static_cast<Bytes*>(user_data);
    const std::size_t taken = std::min<std::size_t>(count, bytes.all.size() - bytes.at);
    if (taken == 0) return at_end;
    std::memcpy(target, bytes.all.data() + bytes.at, taken);
    bytes.at += taken;
    return taken;
}

OPJ_OFF_T skip(OPJ_OFF_T count, void* user_data) {
    Bytes& bytes = *static_cast<Bytes*>(user_data);
    if (count < 0) return -1;
    const std::size_t skipped = std::min(static_cast<std::size_t>(count), bytes.all.size() - bytes.at);
    bytes.at += skipped;
    return static_cast<OPJ_OFF_T>(skipped);
}

OPJ_BOOL seek(OPJ_OFF_T to, void* user_data) {
    Bytes& bytes = *static_cast<Bytes*>(user_data);
    if (to < 0 || static_cast<std::size_t>(to) > bytes.all.size()) return OPJ_FALSE;
    bytes.at = static_cast<std::size_t>(to);
    return OPJ_TRUE;
}

template <auto close>
struct Close {
    void operator()(auto* opened) const { close(opened); }
};
using Stream = std::unique_ptr<opj_stream_t, Close<opj_stream_destroy>>;
using Codec = std::unique_ptr<opj_codec_t, Close<opj_destroy_codec>>;
using Image = std::unique_ptr<opj_image_t, Close<opj_image_destroy>>;

Stream stream_over(Bytes& bytes) {
    Stream stream(opj_stream_default_create(OPJ_TRUE));
    opj_stream_set_user_data(stream.get(), &bytes, nullptr);
    opj_stream_set_user_data_length(stream.get(), bytes.all.size());
    opj_stream_set_read_function(stream.get(), take_bytes);
    opj_stream_set_skip_function(stream.get(), skip);
    opj_stream_set_seek_function(stream.get(), seek);
    return stream;
}

// The first message, without its line end.
void note_message(const char* message, void* user_data) {
    std::string& text = *static_cast<std::string*>(user_data);
    if (!text.empty()) return;
    text = message;
    while (text.ends_with('\n') || text.ends_with('.')) text.pop_back();
}

bool is_as_described(const opj_image_t& image, const DicomPicture& picture) {
    if (image.numcomps < static_cast<OPJ_UINT32>(picture.samples)) return false;
    for (int i = 0; i < picture.samples; ++i) {
        const opj_image_comp_t& part = image.comps[i];
        if (part.dx != 1 || part.dy != 1 || part.w != static_cast<OPJ_UINT32>(picture.columns) ||
            part.h != static_cast<OPJ_UINT32>(picture.rows) || part.prec > static_cast<OPJ_UINT32>(picture.allocated))
            return false;
    }
    return true;
}

// The fragments of the first picture, one behind the other; put together in `room` where there are several.
std::string_view first_code_stream(const std::vector<std::string_view>& fragments, int frames, std::string& room) {
    if (frames > 1 || fragments.size() == 2) return fragments[1];
    for (std::size_t i = 1; i < fragments.size(); ++i) room += fragments[i];
    return room;
}

// OpenJPEG takes 0.6 s for a film of 7 million pixels on one core.
void share_work(opj_codec_t* codec, const DicomPicture& picture) {
    constexpr std::size_t worth_threads = 1'000'000;  // bytes
    const unsigned threads = std::min(4u, std::thread::hardware_concurrency());
    if (threads > 1 && picture.frame_bytes() > worth_threads) opj_codec_set_threads(codec, static_cast<int>(threads));
}

// Gives the pages that lie wholly within this memory back to the system; it holds nothing from then on, and is freed as
// before. Elsewhere than on Linux it does nothing.
void give_back([[maybe_unused]] std::uint8_t* from, [[maybe_unused]] std::size_t size) {
#ifdef __linux__
    constexpr std::size_t page = 65536;  // of any processor that Linux runs on
    const std::size_t skipped = (page - reinterpret_cast<std::uintptr_t>(from) % page) % page;
    if (size < skipped + page) return;
    madvise(from + skipped, (size - skipped) / page * page, MADV_DONTNEED);
#endif
}

// OpenJPEG unpacks to 32 bits. Packs them as `Sample` at the beginning of their own memory and gives the rest of it
// back, so that it does not lie beside the film that is made of it.
template <class Sample>
const std::uint8_t* packed(OPJ_INT32* samples, std::size_t count) {
    auto* const bytes = reinterpret_cast<std::uint8_t*>(samples);
    std::array<Sample, 4096> block;
    for (std::size_t at = 0; at < count; at += block.size()) {
        const std::size_t some = std::min(block.size(), count - at);
        for (std::size_t i = 0; i < some; ++i) block[i] = static_cast<Sample>(samples[at + i]);
        std::memcpy(bytes + at * sizeof(Sample), block.data(), some * sizeof(Sample));
    }
    give_back(bytes + count * sizeof(Sample), count * (sizeof(OPJ_INT32) - sizeof(Sample)));
    return bytes;
}

}  // namespace

std::string unpack_jpeg2000(const std::vector<std::string_view>& fragments, DicomPicture& picture,
                            const DicomRoom& room) {
    std::string joined;
    const std::string_view code_stream = first_code_stream(fragments, picture.frames, joined);
    Bytes bytes{code_stream};
    std::string message;
    const auto damaged = [&](const char* otherwise) { return message.empty() ? otherwise : message; };
    const bool in_boxes = code_stream.substr(0, 8).ends_with("jP  ");
    const Codec codec(opj_create_decompress(in_boxes ? OPJ_CODEC_JP2 : OPJ_CODEC_J2K));
    const Stream stream = stream_over(bytes);
    opj_set_error_handler(codec.get(), note_message, &message);
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    if (!opj_setup_decoder(codec.get(), &parameters)) return damaged("no decoder");
    opj_decoder_set_strict_mode(codec.get(), OPJ_TRUE);  // a code stream that ends early is no picture
    share_work(codec.get(), picture);
    opj_image_t* read = nullptr;
    if (!opj_read_header(stream.get(), codec.get(), &read)) return damaged("its header is damaged");
    const Image image(read);
    if (!is_as_described(*image, picture)) return "it is of another size or kind than the header says";
    if (!opj_decode(codec.get(), stream.get(), image.get())) return damaged("it is damaged or ends early");
    if (!is_as_described(*image, picture)) return "it is of another size or kind than the header says";
    const auto samples = static_cast<std::size_t>(picture.samples);
    const std::size_t pixels = static_cast<std::size_t>(picture.rows) * static_cast<std::size_t>(picture.columns);
    std::array<const std::uint8_t*, 3> parts{};
    for (std::size_t i = 0; i < samples; ++i) {
        OPJ_INT32* const from = image->comps[i].data;
        if (!from) return "a colour is missing";
        parts[i] = picture.allocated == 8 ? packed<std::uint8_t>(from, pixels) : packed<std::uint16_t>(from, pixels);
    }
    std::uint8_t* const to = room();
    if (samples == 1) {
        std::memcpy(to, parts[0], picture.frame_bytes());
    } else {  // of colours all have 8 bits
        for (std::size_t i = 0; i < pixels * samples; ++i) to[i] = parts[i % samples][i / samples];
    }
    if (picture.samples > 1) picture.planes = false, picture.photometric = "RGB";
    return {};
}

}  // namespace tool
