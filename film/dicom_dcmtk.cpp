// What DCMTK does for us: JPEG and JPEG-LS. The structure of files is not read by it: it
// descends into sequences by recursion, and a file of some megabytes that nests deep enough ends the program.
#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcdatset.h>
#include <dcmtk/dcmdata/dcdeftag.h>
#include <dcmtk/dcmdata/dcpixel.h>
#include <dcmtk/dcmdata/dcpixseq.h>
#include <dcmtk/dcmdata/dcpxitem.h>
#include <dcmtk/dcmjpeg/djdecode.h>
#include <dcmtk/dcmjpls/djdecode.h>
#include <dcmtk/oflog/oflog.h>

#include <algorithm>
#include <memory>
#include <mutex>

#include "film/dicom_pixels.h"

namespace tool {
namespace {

// DCMTK's own table of decoders is one for the whole process, and so is its log, which would go to standard error.
void prepare_dcmtk() {
    static std::once_flag once;
    std::call_once(once, [] {
        OFLog::configure(OFLogger::OFF_LOG_LEVEL);
        DJDecoderRegistration::registerCodecs(EDC_photometricInterpretation, EUC_default, EPC_colorByPixel);
        DJLSDecoderRegistration::registerCodecs();
    });
}

OFCondition insert_fragments(DcmPixelSequence& sequence, const std::vector<std::string_view>& fragments) {
    for (const std::string_view fragment : fragments) {
        auto item = std::make_unique<DcmPixelItem>(DcmTag(DCM_Item, EVR_OB));
        const auto* const bytes = reinterpret_cast<const Uint8*>(fragment.data());
        OFCondition done =
            item->putUint8Array(fragment.empty() ? nullptr : bytes, static_cast<unsigned long>(fragment.size()));
        if (done.good()) done = sequence.insert(item.get());
        if (done.bad()) return done;
        item.release();
    }
    return EC_Normal;
}

// A data set of nothing but what describes the pixels, all of it checked before.
void describe(DcmDataset& data_set, const DicomPicture& picture) {
    const auto put = [&](const DcmTagKey& key, int value) {
        data_set.putAndInsertUint16(key, static_cast<Uint16>(value));
    };
    put(DCM_SamplesPerPixel, picture.samples);
    data_set.putAndInsertString(DCM_PhotometricInterpretation, picture.photometric.c_str());
    if (picture.samples > 1) put(DCM_PlanarConfiguration, picture.planes ? 1 : 0);
    data_set.putAndInsertString(DCM_NumberOfFrames, std::to_string(picture.frames).c_str());
    put(DCM_Rows, picture.rows);
    put(DCM_Columns, picture.columns);
    put(DCM_BitsAllocated, picture.allocated);
    put(DCM_BitsStored, picture.stored);
    put(DCM_HighBit, picture.high_bit);
    put(DCM_PixelRepresentation, picture.is_signed ? 1 : 0);
}

// What is wrong with a JPEG stream before its frame header (ITU-T T.81, B.1.1.2 and B.2), "" when nothing is. DCMTK
// looks for that header, too, and stays for ever at the marker FF01, which has no length. Where bytes stand that only
// fill, `without_fill` becomes the stream without them: DCMTK would take them for markers, and look at other places
// than this.
std::string fault_before_frame_header(std::string_view jpeg, std::string& without_fill) {
    if (!jpeg.starts_with("\xFF\xD8")) return "it does not begin as a JPEG stream does";
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(jpeg[at]); };
    std::string header(jpeg.substr(0, 2));
    for (std::size_t at = 2; at + 4 <= jpeg.size();) {
        const unsigned marker = byte(at + 1);
        if (byte(at) == 0xFF && marker == 0xFF) {
            ++at;
            continue;
        }
        const bool is_table = marker == 0xC4 || marker == 0xCC || marker == 0xFE || (marker >= 0xDB && marker <= 0xEF);
        const bool is_frame = (marker & 0xF0) == 0xC0 && !is_table && marker != 0xC8;
        const std::size_t length = byte(at + 2) * std::size_t{256} + byte(at + 3);
        if (byte(at) != 0xFF || (!is_table && !is_frame) || length < 2)
            return "its JPEG stream has no segment at byte " + std::to_string(at);
        if (is_frame) {
            if (header.size() < at) without_fill = header.append(jpeg.substr(at));
            return {};
        }
        header.append(jpeg.substr(at, 2 + length));
        at += 2 + length;
    }
    return "its JPEG stream has no frame header";
}

}  // namespace

std::string unpack_by_dcmtk(const TransferSyntax& syntax, const std::vector<std::string_view>& fragments,
                            DicomPicture& picture, std::uint8_t* to) {
    const bool is_jpeg = std::string_view(syntax.compression).starts_with("JPEG ");  // and not JPEG-LS
    std::vector<std::string_view> streams = fragments;
    std::string without_fill;
    if (is_jpeg) {
        const std::string fault = fault_before_frame_header(fragments[1], without_fill);
        if (!fault.empty()) return fault;
        if (!without_fill.empty()) streams[1] = without_fill;
    }
    prepare_dcmtk();
    DcmDataset data_set;
    describe(data_set, picture);
    auto sequence = std::make_unique<DcmPixelSequence>(DcmTag(DCM_PixelData, EVR_OB));
    OFCondition done = insert_fragments(*sequence, streams);
    if (done.bad()) return done.text();
    auto pixels = std::make_unique<DcmPixelData>(DCM_PixelData);
    DcmPixelData* const data = pixels.get();
    data->putOriginalRepresentation(DcmXfer(syntax.uid).getXfer(), nullptr, sequence.release());
    done = data_set.insert(pixels.get());
    if (done.bad()) return done.text();
    pixels.release();

    Uint32 fragment = 0;
    OFString colours;
    const std::size_t size = picture.frame_bytes();
    // DCMTK wants an even number of bytes; the caller's room is that of whole pixels.
    std::vector<std::uint8_t> padded(size % 2 == 0 ? 0 : size + 1);
    Uint8* const target = padded.empty() ? to : padded.data();
    done = data->getUncompressedFrame(&data_set, 0, fragment, target, static_cast<Uint32>(size + size % 2), colours);
    if (done.bad()) return done.text();
    std::copy_n(padded.begin(), padded.empty() ? 0 : size, to);
    picture.photometric.assign(colours.c_str(), colours.size());
    if (is_jpeg) picture.planes = false;
    return {};
}

}  // namespace tool
