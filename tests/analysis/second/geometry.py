"""Plane geometry for the second computation. A point is a complex number in mm, x forward and y up, so that a positive
angle turns counterclockwise as seen on the film. Written from school geometry, not from the engine's formulas."""
import cmath
import math


def dist(a, b):
    return abs(b - a)


def mid(a, b):
    return (a + b) / 2


def angle(a, vertex, b):
    """Between two arms, 0 to 180 degrees."""
    return abs(math.degrees(cmath.phase((a - vertex) / (b - vertex))))


def turn(a, b, c, d):
    """How far the direction a-b is turned to become c-d, -180 to 180 degrees, counterclockwise positive."""
    return math.degrees(cmath.phase((d - c) / (b - a)))


def ahead(x, of, p, q):
    """How far x lies ahead of a point along the direction from p to q, in mm."""
    way = (q - p) / abs(q - p)
    return ((x - of) * way.conjugate()).real


def left(x, p, q):
    """How far x lies to the left of who goes from p to q, in mm: in front of a line that runs down, above one that runs
    forward."""
    way = (q - p) / abs(q - p)
    return ((x - p) * way.conjugate()).imag


def foot(x, p, q):
    """Of the perpendicular from x on the line through p and q."""
    return p + (q - p) / abs(q - p) * ahead(x, p, p, q)


def cross(a, b, c, d):
    """Where the line through a and b meets that through c and d."""
    u, v = b - a, d - c
    t = ((c - a) * v.conjugate()).imag / (u * v.conjugate()).imag
    return a + t * u
