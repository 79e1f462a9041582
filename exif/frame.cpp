#include "exif/frame.h"

#include "exif/byte_order.h"

namespace tool {

void read_frame(const unsigned char* frame, int marker, tag_ExifInfo& info) {
    constexpr int height_at = 3, width_at = 5, components_at = frame_bytes_read - 1;
    info.Height = static_cast<std::int32_t>(jpeg_u16(frame + height_at));
    info.Width = static_cast<std::int32_t>(jpeg_u16(frame + width_at));
    info.IsColor = frame[components_at] == 3;
    info.Process = marker;
}

}  // namespace tool
