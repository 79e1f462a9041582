#include "surface/recorded_case.h"

#include <gtest/gtest.h>

#include "surface/picture_surface.h"

namespace {

TEST(RecordedRaster, IsDrawnPixelByPixel) {
    const std::vector<recorded::RecordedCase> cases = recorded::recorded_cases();
    ASSERT_EQ(cases.size(), 266u);
    for (const recorded::RecordedCase& c : cases) {
        const auto surface = tool::PictureSurface::create(c.width, c.height, tool::PictureSurface::Look::crisp);
        recorded::Player player(*surface, {c.width, c.height},
                                [&](COLORREF color) { surface->set_background_color(color); });
        for (const std::string& command : c.commands) player.play(command);
        EXPECT_EQ(rows_of(c, [&](int x, int y) { return surface->pixel(x, y); }), rows_of(c)) << c.name;
    }
}

}  // namespace
