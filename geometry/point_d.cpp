#include "PointD.h"

CPointD::CPointD() : x(0.0), y(0.0) {}
CPointD::CPointD(const double& px, const double& py) : x(px), y(py) {}
CPointD::CPointD(const CPoint& p) : x(p.x), y(p.y) {}

CPointD& CPointD::operator+=(const CPointD& o) {
    return *this = *this + o;
}
CPointD& CPointD::operator+=(const CPoint& o) {
    return *this = *this + o;
}
CPointD& CPointD::operator-=(const CPointD& o) {
    return *this = *this - o;
}
CPointD& CPointD::operator-=(const CPoint& o) {
    return *this = *this - o;
}
CPointD& CPointD::operator*=(const double& k) {
    return *this = *this * k;
}  // k may be this point's own x or y
CPointD& CPointD::operator/=(const double& k) {
    return *this = *this / k;
}

CPointD CPointD::operator+(const CPointD& o) const {
    return {x + o.x, y + o.y};
}
CPointD CPointD::operator+(const CPoint& o) const {
    return *this + CPointD(o);
}
CPointD CPointD::operator-(const CPointD& o) const {
    return {x - o.x, y - o.y};
}
CPointD CPointD::operator-(const CPoint& o) const {
    return *this - CPointD(o);
}
CPointD CPointD::operator*(const double& k) const {
    return {x * k, y * k};
}
CPointD CPointD::operator/(const double& k) const {
    return {x / k, y / k};
}

int CPointD::operator==(const CPointD& o) const {
    return x == o.x && y == o.y;
}
int CPointD::operator==(const CPoint& o) const {
    return *this == CPointD(o);
}
int CPointD::operator!=(const CPointD& o) const {
    return !(*this == o);
}
int CPointD::operator!=(const CPoint& o) const {
    return !(*this == o);
}

CPointD& CPointD::SetPointEmpty() {
    return *this = CPointD();
}
int CPointD::IsPointNull() const {
    return *this == CPointD();
}
tagDPOINT CPointD::ToDPOINT() const {
    return {x, y};
}
CPointD& CPointD::FromDPOINT(tagDPOINT p) {
    return *this = CPointD(p.x, p.y);
}
