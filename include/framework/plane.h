// Integer points, sizes and rectangles: image or device pixels, y pointing down.
#pragma once

#include "framework/scalars.h"

#if !defined(_WIN32)
struct tagPOINT {
    LONG x, y;
};
using POINT = tagPOINT;

struct tagSIZE {
    LONG cx, cy;
};
using SIZE = tagSIZE;

// Right and bottom are exclusive.
struct tagRECT {
    LONG left, top, right, bottom;
};
using RECT = tagRECT;
#endif

// Between any mix of the plain records and the classes below.
constexpr bool operator==(const tagPOINT& a, const tagPOINT& b) {
    return a.x == b.x && a.y == b.y;
}
constexpr bool operator==(const tagSIZE& a, const tagSIZE& b) {
    return a.cx == b.cx && a.cy == b.cy;
}
constexpr bool operator==(const tagRECT& a, const tagRECT& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

class CPoint : public tagPOINT {
 public:
    constexpr CPoint() : tagPOINT{0, 0} {}
    constexpr CPoint(int px, int py) : tagPOINT{px, py} {}
    constexpr CPoint(const tagPOINT& p) : tagPOINT(p) {}
    constexpr void SetPoint(int px, int py) { x = px, y = py; }
    constexpr void Offset(int dx, int dy) { x += dx, y += dy; }
    constexpr CPoint operator+(const tagPOINT& p) const { return {x + p.x, y + p.y}; }
    constexpr CPoint operator-(const tagPOINT& p) const { return {x - p.x, y - p.y}; }
};

class CSize : public tagSIZE {
 public:
    constexpr CSize() : tagSIZE{0, 0} {}
    constexpr CSize(int width, int height) : tagSIZE{width, height} {}
};

class CRect : public tagRECT {
 public:
    constexpr CRect() : tagRECT{0, 0, 0, 0} {}
    constexpr CRect(int l, int t, int r, int b) : tagRECT{l, t, r, b} {}
    constexpr CRect(const tagRECT& r) : tagRECT(r) {}
    constexpr int Width() const { return right - left; }
    constexpr int Height() const { return bottom - top; }
    constexpr CPoint TopLeft() const { return {left, top}; }
    constexpr CPoint BottomRight() const { return {right, bottom}; }
    constexpr BOOL IsRectEmpty() const { return right <= left || bottom <= top; }
    constexpr BOOL PtInRect(const tagPOINT& p) const {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    constexpr void SetRect(int l, int t, int r, int b) { left = l, top = t, right = r, bottom = b; }
};
