"""Items of casts, and the casts they are worked out on: teeth stood along arches of several shapes, then pushed about. Patients' right on the
left of the picture; measures of a cast are read off to a hundredth of a millimetre."""
import cmath
import math
import random

from geometry import ahead, dist, left, mid

RIGHT, LEFT = "654321", "123456"
UPPER = ["1" + t for t in RIGHT] + ["2" + t for t in LEFT]
LOWER = ["4" + t for t in RIGHT] + ["3" + t for t in LEFT]
WIDTHS = {"1": (8.6, 6.8, 7.8, 7.1, 6.8, 10.3), "4": (5.4, 5.9, 6.8, 7.1, 7.2, 11.0)}


# The casts.

def stand(teeth, widths, half_width, depth, middle, front, wild, push, space):
    """Centres of the teeth on half an ellipse, one crown and a space apart; each then pushed and turned at random."""
    def at(t):
        return complex(half_width * math.sin(t), depth * (1 - math.cos(t)))
    points = {}
    for side in (0, 1):
        t = 0.0
        way = -space / 2
        for tooth in teeth[5::-1] if side == 0 else teeth[6:]:
            width = widths[int(tooth[1]) - 1] * wild.uniform(0.95, 1.05)
            goal = way + space + width / 2
            way += space + width
            run = 0.0
            t = 0.0
            while run < goal:
                run += abs(at(t + 1e-3) - at(t))
                t += 1e-3
            along = (at(t + 1e-3) - at(t - 1e-3)) / 2e-3
            along *= cmath.rect(width / 2 / abs(along), wild.uniform(-push, push) / 4)
            centre = at(t) + complex(wild.uniform(-push, push), wild.uniform(-push, push)) * (tooth[1] < "4") + \
                complex(wild.uniform(-push, push), wild.uniform(-push, push)) / 3
            out = along * -1j / abs(along)
            places = {"m": centre - along, "d": centre + along}
            if tooth[1] in "36":
                places["c"] = centre + out * (1.2 if tooth[1] == "3" else 4) - along * (tooth[1] == "6") / 2
            if tooth[0] in "43" and tooth[1] in "12":
                depth_of_it = wild.uniform(2.6, 3.3)
                places |= {"f": centre + out * depth_of_it, "l": centre - out * depth_of_it}
            for mark, p in places.items():
                p = complex(-p.real if side == 0 else p.real, p.imag * front)
                points[tooth + mark] = middle + p
    return points


def cast(seed, scale, half_width=29, depth=36, push=0.3, space=0.0, turn=0, size=1.0):
    wild = random.Random(seed)
    points = {}
    for teeth, key, narrower, middle, front, name in ((UPPER, "1", 0, 62 + 25j, 1, "U"), (LOWER, "4", 3.5, 61 + 125j, -1, "L")):
        points |= stand(teeth, WIDTHS[key], half_width - narrower, depth - 1.5 * narrower, middle, front, wild, push, space)
        for curve, wide, back in (("C", 20.4, 36), ("B", 20.9, 32)):
            for mark, x, y in (("WR", -wide, 12), ("WL", wide, 12), ("F", 0, -1), ("RR", -26, back), ("RL", 26, back)):
                off = complex(wild.uniform(-2, 2), wild.uniform(-2, 2))
                points[name + curve + mark] = middle + complex(x * half_width / 29, y * front) + off
    about = 62 + 75j
    return scale, {n: (about + (p - about) * cmath.rect(size, math.radians(turn)) + 40 + 40j) / scale for n, p in points.items()}


CASTS = {
    "even": cast(41, 0.05),
    "crowded": cast(42, 0.05, push=1.6, space=-0.6),
    "spaced": cast(43, 0.08, push=0.4, space=0.9),
    "narrow": cast(44, 0.05, half_width=24, depth=41, push=0.8),
    "wide and short": cast(45, 0.1, half_width=33, depth=29, push=0.5),
    "turned picture": cast(46, 0.05, push=1.0, turn=31),
    "on its side": cast(47, 0.125, push=0.7, space=0.3, turn=-94),
    "child's size": cast(48, 0.05, push=0.6, size=0.88),
    "badly crowded, coarse": cast(49, 0.2, half_width=26, push=4.5, space=-1.2),
}


# What is measured. A point has the conjugate of its place on the picture, in mm.

def read(mm):
    return float(f"{mm:.2f}")


def width(f, *teeth):
    return read(sum(dist(f[t + "m"], f[t + "d"]) for t in teeth))


def ratio(f, teeth, others):
    """In percent."""
    return read(100 * sum(dist(f[t + "m"], f[t + "d"]) for t in teeth) / sum(dist(f[t + "m"], f[t + "d"]) for t in others))


def middle(f, tooth):
    return mid(f[tooth + "m"], f[tooth + "d"])


def arch(tooth):
    return UPPER if tooth in UPPER else LOWER


def facing(f, a, b):
    """Where tooth a looks at its neighbour b: with its mesial side when b stands nearer the middle line, and with that also
    across it."""
    row = arch(a)
    nearer = abs(row.index(b) - 5.5) <= abs(row.index(a) - 5.5)
    return f[a + ("m" if nearer else "d")]


def contact(f, a, b):
    return mid(facing(f, a, b), facing(f, b, a))


def displacement(f, a, b):
    return read(dist(facing(f, a, b), facing(f, b, a)))


def gap(f, a, b):
    return read(ahead(facing(f, b, a), facing(f, a, b), middle(f, a), middle(f, b)))


def way(points):
    return read(sum(dist(p, q) for p, q in zip(points, points[1:])))


def contacts_between_molars(f, row):
    return [f[row[0] + "m"], *(contact(f, a, b) for a, b in zip(row[1:], row[2:-1])), f[row[-1] + "m"]]


def wire(points):
    """Length of the natural cubic spline over chords: second derivatives by plain elimination, then two thousand straight bits
    a piece."""
    n = len(points)
    h = [dist(p, q) for p, q in zip(points, points[1:])]
    rows = [[0.0] * n for _ in range(n)]
    right = [0j] * n
    rows[0][0] = rows[-1][-1] = 1.0
    for i in range(1, n - 1):
        rows[i][i - 1:i + 2] = h[i - 1] / 6, (h[i - 1] + h[i]) / 3, h[i] / 6
        right[i] = (points[i + 1] - points[i]) / h[i] - (points[i] - points[i - 1]) / h[i - 1]
    for i in range(n):
        for k in range(i + 1, n):
            by = rows[k][i] / rows[i][i]
            right[k] -= by * right[i]
            rows[k] = [a - by * b for a, b in zip(rows[k], rows[i])]
    bend = [0j] * n
    for i in reversed(range(n)):
        bend[i] = (right[i] - sum(rows[i][k] * bend[k] for k in range(i + 1, n))) / rows[i][i]

    def at(i, t):
        s = 1 - t
        return s * points[i] + t * points[i + 1] + h[i] ** 2 / 6 * ((s ** 3 - s) * bend[i] + (t ** 3 - t) * bend[i + 1])
    bits = 2000
    return read(sum(dist(at(i, k / bits), at(i, (k + 1) / bits)) for i in range(n - 1) for k in range(bits)))


def lower4(f):
    return width(f, "42", "41", "31", "32")


def upper4(f):
    return width(f, "12", "11", "21", "22")


def divider(f, a, b):
    return read(dist(f[a], f[b]))


def four_lines(f, row):
    """From molar to the contact of canine and lateral incisor, to the middle, and so on."""
    return way([f[row[0] + "m"], contact(f, row[3], row[4]), contact(f, row[5], row[6]), contact(f, row[7], row[8]),
                f[row[11] + "m"]])


def carey(f, row):
    return wire(contacts_between_molars(f, row)) - width(f, *row[1:-1])


def carey_words(f, row):
    lack = -carey(f, row)
    return "first premolars" if lack > 5 else "second premolars" if lack > 2.5 else "strip" if lack > 0 else "enough"


def segment(f, row, i):
    a, b = row[i], row[i + 1]
    start = f[a + "d"] if i == 0 else contact(f, row[i - 1], a)
    end = f[b + "d"] if i == 10 else contact(f, b, row[i + 2])
    return read(dist(start, end)) - width(f, a, b)


def front(row):
    return list(zip(row[3:8], row[4:9]))


def irregularity(f):
    return read(sum(dist(facing(f, a, b), facing(f, b, a)) for a, b in front(LOWER)))


def irregularity_words(f):
    for limit, word in ((0.5, "perfect"), (3.5, "slight"), (6.5, "moderate"), (9.5, "severe")):
        if irregularity(f) < limit:
            return word
    return "very severe"


def par(f, row):
    return sum(sum(displacement(f, a, b) > limit for limit in (1, 2, 4, 8)) for a, b in front(row))


def premolars(f):
    return read(dist(middle(f, "14"), middle(f, "24")))


def molars(f):
    return read(dist(middle(f, "16"), middle(f, "26")))


def front_length(f, a, b, right, other):
    return read(abs(left(contact(f, a, b), middle(f, right), middle(f, other))))


def curve_width(f, curve):
    return divider(f, curve + "WR", curve + "WL")


def curve_length(f, curve):
    return read(abs(left(f[curve + "F"], f[curve + "RR"], f[curve + "RL"])))


def howes(f):
    return curve_width(f, "UB") / width(f, *UPPER) * 100


def malaysian(f):
    return width(f, "42", "41", "31", "32", "36", "46")


def syrian(f):
    return width(f, "31", "41", "16", "26")


ROOMS = {("Upper", "right"): ("12d", "16m"), ("Upper", "left"): ("22d", "26m"), ("Lower", "right"): ("42d", "46m"),
         ("Lower", "left"): ("32d", "36m")}
SIDES = {("Upper", "right"): ("13", "14", "15"), ("Upper", "left"): ("23", "24", "25"), ("Lower", "right"): ("43", "44", "45"),
         ("Lower", "left"): ("33", "34", "35")}
MOYERS = {"Upper": {95: (10.86, .549), 85: (10.33, .547), 75: (9.77, .557), 65: (9.69, .548), 50: (9.31, .549), 35: (8.77, .557),
                    25: (8.73, .547), 15: (8.17, .557), 5: (7.83, .547)},
          "Lower": {95: (9.4, .6), 85: (8.8, .6), 75: (8.4, .6), 65: (8.1, .6), 50: (7.7, .6), 35: (7.3, .6), 25: (7, .6),
                    15: (7.18, .576), 5: (6, .6)}}
TANAKA = {"Upper": 11, "Lower": 10.5}

items = {
    "Lower four incisors": lower4,
    "Upper four incisors": upper4,
    "Upper twelve": lambda f: width(f, *UPPER),
    "Lower twelve": lambda f: width(f, *LOWER),
    "Upper six": lambda f: width(f, *UPPER[3:9]),
    "Lower six": lambda f: width(f, *LOWER[3:9]),
    "Overall ratio": lambda f: ratio(f, LOWER, UPPER),
    "Anterior ratio": lambda f: ratio(f, LOWER[3:9], UPPER[3:9]),
    "Lower excess, twelve": lambda f: width(f, *LOWER) - 0.913 * width(f, *UPPER),
    "Lower excess, six": lambda f: width(f, *LOWER[3:9]) - 0.772 * width(f, *UPPER[3:9]),
    "Lower excess, twelve, by Japanese": lambda f: width(f, *LOWER) - 0.916 * width(f, *UPPER),
    "Lower excess, six, by Japanese": lambda f: width(f, *LOWER[3:9]) - 0.7839 * width(f, *UPPER[3:9]),
    "31, 41, 16 and 26": syrian,
    "Lower incisors and first molars": malaysian,
    "Upper 3-4-5, Spanish men": lambda f: 12.68 + 0.42 * lower4(f),
    "Upper 3-4-5, Spanish women": lambda f: 12.06 + 0.43 * lower4(f),
    "Lower 3-4-5, Spanish men": lambda f: 11.71 + 0.44 * lower4(f),
    "Lower 3-4-5, Spanish women": lambda f: 10.71 + 0.46 * lower4(f),
    "Upper arch room, Spanish men": lambda f: four_lines(f, UPPER) - upper4(f) - 2 * (12.68 + 0.42 * lower4(f)),
    "Upper arch room, Spanish women": lambda f: four_lines(f, UPPER) - upper4(f) - 2 * (12.06 + 0.43 * lower4(f)),
    "Lower arch room, Spanish men": lambda f: four_lines(f, LOWER) - lower4(f) - 2 * (11.71 + 0.44 * lower4(f)),
    "Lower arch room, Spanish women": lambda f: four_lines(f, LOWER) - lower4(f) - 2 * (10.71 + 0.46 * lower4(f)),
    "Upper 3-4-5, Syrian": lambda f: 6 + syrian(f) / 2,
    "Lower 3-4-5, Syrian": lambda f: 5.5 + syrian(f) / 2,
    "Upper arch room, Syrian": lambda f: four_lines(f, UPPER) - upper4(f) - 2 * (6 + syrian(f) / 2),
    "Lower arch room, Syrian": lambda f: four_lines(f, LOWER) - lower4(f) - 2 * (5.5 + syrian(f) / 2),
    "Upper 3-4-5 pairs, Malaysian": lambda f: 16.186 + 0.586 * malaysian(f),
    "Irregularity index": irregularity,
    "Irregularity": irregularity_words,
    "Upper front score, PAR": lambda f: par(f, UPPER),
    "Lower front score, PAR": lambda f: par(f, LOWER),
    "Front segments, PAR": lambda f: par(f, UPPER) + par(f, LOWER),
    "Premolar width": premolars,
    "Molar width": molars,
    "Premolar excess, Pont": lambda f: premolars(f) - upper4(f) / 0.8,
    "Molar excess, Pont": lambda f: molars(f) - upper4(f) / 0.64,
    "Premolar excess, Linder-Harth": lambda f: premolars(f) - upper4(f) / 0.85,
    "Molar excess, Linder-Harth": lambda f: molars(f) - upper4(f) / 0.65,
    "Upper front arch length": lambda f: front_length(f, "11", "21", "14", "24"),
    "Lower front arch length": lambda f: front_length(f, "41", "31", "44", "34"),
    "Upper front excess, Korkhaus": lambda f: front_length(f, "11", "21", "14", "24") - upper4(f) / 1.6,
    "Upper coronal arch width": lambda f: curve_width(f, "UC"),
    "Upper basal arch width": lambda f: curve_width(f, "UB"),
    "Upper basal arch length": lambda f: curve_length(f, "UB"),
    "Upper coronal arch length": lambda f: curve_length(f, "UC"),
    "Lower coronal arch width": lambda f: curve_width(f, "LC"),
    "Lower coronal arch length": lambda f: curve_length(f, "LC"),
    "Lower basal arch width": lambda f: curve_width(f, "LB"),
    "Lower basal arch length": lambda f: curve_length(f, "LB"),
    "Base wider than arch": lambda f: curve_width(f, "UB") - curve_width(f, "UC"),
    "Basal arch width, Howes": howes,
    "Arch width, Howes": lambda f: curve_width(f, "UC") / width(f, *UPPER) * 100,
    "Basal arch depth, Howes": lambda f: curve_length(f, "UB") / width(f, *UPPER) * 100,
    "Room at the base": lambda f: "room for all teeth" if howes(f) >= 44 else "too narrow for all teeth" if howes(f) <= 37
    else "borderline",
    "Upper intercanine width": lambda f: dist(f["13c"], f["23c"]),
    "Lower intercanine width": lambda f: dist(f["43c"], f["33c"]),
    "Upper intermolar width": lambda f: dist(f["16c"], f["26c"]),
    "Lower intermolar width": lambda f: dist(f["46c"], f["36c"]),
}
for t in UPPER + LOWER:
    items[f"Width of {t}"] = lambda f, t=t: width(f, t)
for row in (UPPER, LOWER):
    for a, b in zip(row, row[1:]):
        items[f"Gap {a}-{b}"] = lambda f, a=a, b=b: gap(f, a, b)
    for a, b in front(row):
        items[f"Displacement {a}-{b}"] = lambda f, a=a, b=b: displacement(f, a, b)
    for i in range(0, 12, 2):
        items[f"Room for {row[i]} and {row[i + 1]}"] = lambda f, row=row, i=i: segment(f, row, i)
for name, row in (("Upper", UPPER), ("Lower", LOWER)):
    items |= {
        f"{name} 3-4-5, Tanaka-Johnston": lambda f, name=name: TANAKA[name] + lower4(f) / 2,
        f"{name} arch room, Tanaka": lambda f, name=name, row=row:
            four_lines(f, row) - width(f, *row[4:8]) - 2 * (TANAKA[name] + lower4(f) / 2),
        f"{name} wire, molar to molar": lambda f, row=row: wire(contacts_between_molars(f, row)),
        f"{name} ten teeth": lambda f, row=row: width(f, *row[1:-1]),
        f"{name} discrepancy, Carey": lambda f, row=row: carey(f, row),
        f"{name} arch, Carey": lambda f, row=row: carey_words(f, row),
        f"{name} perimeter, Nance": lambda f, row=row: way(contacts_between_molars(f, row)),
        f"{name} room, Lundstrom": lambda f, row=row: sum(segment(f, row, i) for i in range(0, 12, 2)),
    }
    for percent, (a, b) in MOYERS[name].items():
        items[f"{name} 3-4-5, Moyers {percent} %"] = lambda f, a=a, b=b: a + b * lower4(f)
for (name, side), (a, b) in ROOMS.items():
    moyers, slope = MOYERS[name][75]
    items |= {
        f"{name} room {side}, Moyers": lambda f, a=a, b=b, m=moyers, s=slope: divider(f, a, b) - m - s * lower4(f),
        f"{name} room {side}, Tanaka": lambda f, a=a, b=b, k=TANAKA[name]: divider(f, a, b) - k - lower4(f) / 2,
        f"{name} leeway {side}": lambda f, teeth=SIDES[name, side], k=TANAKA[name]: width(f, *teeth) - k - lower4(f) / 2,
    }
for t in ("42", "41", "31", "32"):
    items[f"Peck ratio {t}"] = lambda f, t=t: width(f, t) / dist(f[t + "f"], f[t + "l"]) * 100

ITEMS = {"cast": items}
