#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "Tools.h"
#include "face_view.h"
#include "win32/memory_bitmap.h"

namespace {

using LineImage = std::vector<unsigned char>;

// Pixels of line that have none of the other image's beside them.
int strayed(const LineImage& image, const LineImage& other) {
    int count = 0;
    for (int y = 1; y + 1 < face_height; ++y)
        for (int x = 1; x + 1 < face_width; ++x) {
            bool near_line = false;
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx)
                    near_line |= other[static_cast<std::size_t>((y + dy) * face_width + x + dx)] == 255;
            count += image[static_cast<std::size_t>(y * face_width + x)] == 255 && !near_line;
        }
    return count;
}

// data/face.pgm is the tracing on a Cairo surface (scripts/record-tracing).
TEST(Tracing, LiesOverTheOneOfTheOtherSurface) {
    tagPOINTLAT face{};
    ASSERT_TRUE(example::read_face(TOOL_SOURCE_DIR "/examples/samples/lateral-average.csv", &face));
    const MemoryBitmap bitmap(face_width, face_height);
    CDC dc;
    dc.Attach(bitmap.dc());
    example::draw_face(dc, face, face_view);

    LineImage drawn(face_width * face_height), recorded(drawn.size());
    ASSERT_EQ(CTools::MakeLineImg(&dc, drawn.data(), face_width, face_height, 200), 1);
    int width = 0, height = 0;
    ASSERT_EQ(CTools::SetBuff(TOOL_TEST_DATA "/face.pgm", recorded.data(), static_cast<unsigned long>(recorded.size()),
                              &width, &height),
              1);
    ASSERT_EQ(width, face_width);
    EXPECT_GT(std::ranges::count(drawn, 255), 1500);
    EXPECT_EQ(strayed(drawn, recorded), 0);
    EXPECT_EQ(strayed(recorded, drawn), 0);
}

}  // namespace
