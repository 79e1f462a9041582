#include "film/dicom_pixels.h"

namespace tool {

const TransferSyntax* transfer_syntax(std::string_view uid) {
    using enum DicomPacking;
    static constexpr TransferSyntax known[] = {
        {"1.2.840.10008.1.2", "uncompressed", none, {.explicit_types = false}},
        {"1.2.840.10008.1.2.1", "uncompressed"},
        {"1.2.840.10008.1.2.1.99", "deflate", none, {}, true},
        {"1.2.840.10008.1.2.2", "uncompressed", none, {.big_endian = true}},
        {"1.2.840.10008.1.2.4.50", "JPEG baseline", dcmtk},
        {"1.2.840.10008.1.2.4.51", "JPEG extended", dcmtk},
        {"1.2.840.10008.1.2.4.57", "JPEG lossless", dcmtk},
        {"1.2.840.10008.1.2.4.70", "JPEG lossless", dcmtk},
        {"1.2.840.10008.1.2.4.80", "JPEG-LS lossless", dcmtk},
        {"1.2.840.10008.1.2.4.81", "JPEG-LS", dcmtk},
        {"1.2.840.10008.1.2.4.90", "JPEG 2000 lossless", jpeg2000},
        {"1.2.840.10008.1.2.4.91", "JPEG 2000", jpeg2000},
        {"1.2.840.10008.1.2.5", "RLE", rle},
    };
    for (const TransferSyntax& syntax : known)
        if (uid == syntax.uid) return &syntax;
    return nullptr;
}

}  // namespace tool
