"""Steiner's analysis as somebody would write it in numpy by hand: what python_bench holds the package against."""
import numpy as np

LANDMARKS = "S N A B D Pog CdE Go Gn UMo LMo U1 L1 U1R L1R TN SN Pog(s) TUL TLL".split()


def steiner(points, mm_per_pixel):
    """The 16 items (n_cases, 16) of points (n_cases, 20, 2) in the order of LANDMARKS."""
    # A landmark is two rows, x and y, each of which lies together in memory.
    of = dict(zip(LANDMARKS, np.ascontiguousarray(points.transpose(1, 2, 0))))

    def cross(u, v):
        return u[0] * v[1] - u[1] * v[0]

    def dot(u, v):
        return u[0] * v[0] + u[1] * v[1]

    def length(u):
        return np.sqrt(dot(u, u))

    def angle(a, b, c):
        u, v = a - b, c - b
        return np.degrees(np.arccos(np.clip(dot(u, v) / (length(u) * length(v)), -1, 1)))

    def between(a, b, c, d):
        u, v = b - a, d - c
        return np.degrees(np.arctan2(-cross(u, v), dot(u, v)))

    def in_front(p, a, b):
        u = b - a
        return -cross(u, p - a) / length(u) * mm_per_pixel

    def along(p, a, b):
        u = b - a
        return dot(p - b, u) / length(u) * mm_per_pixel

    s, n, a, b = of["S"], of["N"], of["A"], of["B"]
    sna, snb = angle(s, n, a), angle(s, n, b)
    nose = (of["TN"] + of["SN"]) / 2
    occlusal = (of["UMo"] + of["LMo"]) / 2, (of["U1"] + of["L1"]) / 2
    return np.stack([
        sna, snb, sna - snb, angle(s, n, of["D"]),
        -along(of["Pog"], n, s), along(of["CdE"], n, s),
        between(of["Go"], of["Gn"], s, n), between(*occlusal, s, n),
        between(n, a, of["U1R"], of["U1"]), in_front(of["U1"], n, a),
        between(of["L1"], of["L1R"], n, b), in_front(of["L1"], n, b), in_front(of["Pog"], n, b),
        180 + between(of["U1R"], of["U1"], of["L1"], of["L1R"]),
        in_front(of["TUL"], nose, of["Pog(s)"]), in_front(of["TLL"], nose, of["Pog(s)"])], axis=1)


def steiner_in_blocks(points, mm_per_pixel, at_once=4096):
    """The same by whoever knows that intermediate results had better stay in the processor's cache."""
    items = np.empty((len(points), 16))
    for first in range(0, len(points), at_once):
        items[first:first + at_once] = steiner(points[first:first + at_once], mm_per_pixel)
    return items
