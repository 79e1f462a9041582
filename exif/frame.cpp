#include "exif/frame.h"

#include "exif/byte_order.h"

namespace tool {

void read_frame(const tag_ExifSection& frame, tag_ExifInfo& info) {
    constexpr int height_at = 3, width_at = 5, components_at = 7;
    if (frame.Size <= components_at) return;
    info.Height = static_cast<std::int32_t>(jpeg_u16(frame.Data + height_at));
    info.Width = static_cast<std::int32_t>(jpeg_u16(frame.Data + width_at));
    info.IsColor = frame.Data[components_at] == 3;
    info.Process = frame.Type;
}

}  // namespace tool
