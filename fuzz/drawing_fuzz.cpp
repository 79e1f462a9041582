// Any drawing with any arguments: the surface's state comes back, a dot covers something, a curve's samples stand
// apart, and what is drawn in XOR and drawn again is the same.
#include <cmath>
#include <cstdint>
#include <limits>
#include <tuple>
#include <vector>

#include "Tools.h"
#include "fuzz/subject.h"
#include "surface/recording_surface.h"

namespace {

using tool_fuzz::require;

// Arguments out of the input; zeros behind its end.
class Arguments {
 public:
    Arguments(const std::uint8_t* data, std::size_t size) : next_(data), end_(data + size) {}

    bool empty() const { return next_ == end_; }
    std::uint8_t byte() { return empty() ? std::uint8_t{0} : *next_++; }
    std::int16_t number() {
        const int low = byte();
        return static_cast<std::int16_t>(low | byte() << 8);
    }
    // Mostly within an image, now and then anywhere in 32 bits.
    int coordinate() {
        const int value = number();
        if (value != std::numeric_limits<std::int16_t>::min()) return value;
        const auto high = static_cast<std::uint32_t>(number());
        return static_cast<int>(high << 16 | (static_cast<std::uint32_t>(number()) & 0xFFFF));
    }
    double real() {
        constexpr double unusual[] = {
            0.0, -0.0, 1e-300, 1e300, HUGE_VAL, -HUGE_VAL, std::numeric_limits<double>::quiet_NaN()};
        const std::uint8_t kind = byte();
        return kind < std::size(unusual) ? unusual[kind] : number() / 256.0;
    }
    CPoint point() {
        const int x = coordinate();
        return {x, coordinate()};
    }
    CRect rect() {
        const CPoint corner = point(), other = point();
        return {corner.x, corner.y, other.x, other.y};
    }
    tagDPOINT fraction() {
        const double x = real();
        return {x, real()};
    }
    // A style of each kind, and codes that no pen has.
    int style() {
        const int code = byte() % 16;
        return code < 8 ? code : 93 + code;
    }
    std::vector<tagPOINT> outline() {
        std::vector<tagPOINT> points(byte() % 48);
        for (tagPOINT& p : points) {
            p.x = number();
            p.y = number();
        }
        return points;
    }
    std::string text() {
        std::string bytes(byte() % 32, '\0');
        for (char& c : bytes) c = static_cast<char>(byte());
        return bytes;
    }

 private:
    const std::uint8_t *next_, *end_;
};

class CheckedSurface : public tool::RecordingSurface {
 public:
    auto state() const {
        return std::tuple(GetCurrentPen(), GetCurrentBrush(), GetCurrentFont(), GetROP2(), GetBkMode(), GetTextColor(),
                          GetTextAlign());
    }
    int points_drawn() const { return points_drawn_; }

    BOOL Ellipse(int left, int top, int right, int bottom) override {
        last_ellipse_ = CRect(left, top, right, bottom);
        return RecordingSurface::Ellipse(left, top, right, bottom);
    }
    BOOL Polyline(const POINT* points, int count) override {
        require(points && count > 0);
        points_drawn_ = count;
        return RecordingSurface::Polyline(points, count);
    }
    CRect last_ellipse() const { return last_ellipse_; }

 private:
    CRect last_ellipse_;
    int points_drawn_ = 0;
};

void draw_lines(CheckedSurface& dc, Arguments& in, int which) {
    const CPoint a = in.point(), b = in.point(), offset = in.point();
    const double zoom = in.real();
    const int width = in.coordinate(), style = in.style(), flag = in.byte() % 4;
    const int pairs[][2] = {{0, 1}, {flag - 1, 3}};
    const tagPOINT corners[] = {a, b, offset};
    const tagDPOINT p = in.fraction(), q = in.fraction();
    switch (which % 10) {
        case 0: return CTools::Draw_Line(&dc, a.x, a.y, b.x, b.y, width, 0, style, flag);
        case 1: return CTools::Draw_Line_Image(&dc, a.x, a.y, b.x, b.y, width, 0, style, flag);
        case 2: return CTools::Line_Make2_Image(&dc, a, b, zoom, offset, width, 0, style, flag, in.coordinate());
        case 3: return CTools::DrawArrowLine(&dc, a, b, in.real(), flag, zoom, offset, width, 0, style);
        case 4: return CTools::P_Line(&dc, offset.x, offset.y, zoom, in.real(), a.x, a.y, b.x, b.y, width, 0, style);
        case 5: return CTools::Line_Pile(&dc, corners, 3, pairs, 2, zoom, offset, width, 0, style, flag);
        case 6: {
            tagDPOINT from = p, to = q;
            return CTools::Line_Maked(&dc, &from, &to, zoom, offset, width, 0, style);
        }
        case 7: {
            CPoint end;
            return CTools::Parallel_Line(&dc, a, &p, &q, in.rect(), offset.x, offset.y, 0, &end, width, zoom, 0, style);
        }
        case 8: {
            CPoint end;
            return CTools::Vartical_Line_Image(&dc, &p, b, &q, in.rect(), offset.x, offset.y, 0, &end, width, zoom, 0,
                                               style, flag);
        }
        default: {
            CTools::Line_Make2(&dc, a, b, zoom, offset, width, 0, style, 1);
            const std::string first = dc.text();
            dc.clear();
            CTools::Line_Make2(&dc, a, b, zoom, offset, width, 0, style, 1);
            require(dc.text() == first && first.starts_with("rop 7\n"));
        }
    }
}

void draw_shapes(CheckedSurface& dc, Arguments& in, int which) {
    const CRect r = in.rect();
    const CPoint offset = in.point(), a = in.point();
    const double zoom = in.real();
    const int width = in.coordinate(), style = in.style(), flag = in.byte() % 2;
    switch (which % 8) {
        case 0: return CTools::Rect_Make(&dc, r, zoom, offset, width, 0, style, flag);
        case 1: return CTools::Arc_MakeF(&dc, r, a, offset, zoom, offset, width, 0, style);
        case 2: return CTools::Draw_Circle(&dc, a, in.real(), zoom, offset, width, 0, style);
        case 3: return CTools::Rect_MakeEx(&dc, r, zoom, offset, width, 0, style, 1);
        case 4: return CTools::Area_MakeF(&dc, r, zoom, offset, 0);
        case 5: return CTools::Frame_Make(&dc, r, 0);
        case 6: return CTools::P_Area(&dc, a.x, a.y, zoom, in.real(), r.left, r.top, r.right, r.bottom, 0);
        default: {
            const short radius = in.number();
            if (flag)
                CTools::Spot(&dc, a, zoom, offset, radius, 0, 0);
            else
                CTools::Spot2(&dc, a, zoom, offset, radius, 0, 0);
            require(dc.last_ellipse().left != dc.last_ellipse().right);
            require(dc.last_ellipse().top != dc.last_ellipse().bottom);
        }
    }
}

void write_texts(CheckedSurface& dc, Arguments& in, int which) {
    const CRect r = in.rect();
    const unsigned height = static_cast<unsigned>(in.coordinate()), format = static_cast<unsigned>(in.coordinate());
    const std::string text = in.text(), face = in.text();
    switch (which % 4) {
        case 0: return CTools::TextMakeOut(&dc, r.left, r.top, text.c_str(), height, format, 0, 1, 0, in.byte() % 4);
        case 1:
            return CTools::TextMake(&dc, r.left, r.top, text.c_str(), height, format, in.byte() % 10, 0, 0, OPAQUE,
                                    in.byte() % 2, 1, 1);
        case 2: return CTools::Draw_Text(&dc, r.TopLeft(), in.real(), r.BottomRight(), text.c_str(), height, 0);
        default: require(CTools::Rect_Text(&dc, r, text.c_str(), face.c_str(), height, 400, 0, 0, format) >= 0);
    }
}

void draw_curves(CheckedSurface& dc, Arguments& in, int which) {
    const std::vector<tagPOINT> points = in.outline();
    const auto n = static_cast<short>(points.size());
    const CPoint offset = in.point();
    const double zoom = in.real();
    const auto width = static_cast<unsigned>(in.coordinate());
    const std::uint8_t closed = in.byte() & 1;
    const int style = in.style(), from = in.number(), to = in.byte() % 50;
    const auto draw = which & 1 ? CTools::Draw_SPLine : CTools::Draw_SPLine_Image;
    draw(&dc, offset, zoom, points.data(), n, 0, width, closed, style, which & 2);
    const double length = CTools::Get_SPLineLength(points.data(), n, 0, closed && n > 2 ? n : n - 1, closed, 1.0);
    require(length >= 0);
    // Thinned samples are ten pixels apart, but for the last step of a closed curve.
    require(n < 3 || (dc.points_drawn() - 1 - closed) * 10.0 <= length + 1e-6);
    require(CTools::Get_SPLineLength(points.data(), n, from, to, closed, 1.0) >= 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Arguments in(data, size);
    CheckedSurface dc;
    dc.m_bPrinting = in.byte() & 1;
    dc.set_map_mode(in.byte() % 9);
    const int resolution = in.coordinate();
    dc.set_size(resolution, resolution, in.coordinate(), in.coordinate());
    while (!in.empty()) {
        dc.clear();
        const auto before = dc.state();
        const int kind = in.byte() % 4, which = in.byte();
        constexpr decltype(&draw_lines) families[] = {draw_lines, draw_shapes, write_texts, draw_curves};
        families[kind](dc, in, which);
        require(dc.state() == before);
    }
    return 0;
}
