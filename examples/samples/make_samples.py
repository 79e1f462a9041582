#!/usr/bin/env python3
"""Makes sample cases from lateral-average.json: two faces out of the norm, a CSV and a challenge text; a cast; an X-ray.

Coordinates are pixels, x to the right, y down; the face looks right. Run it after a change to the average face; the
files it writes are kept beside it.
"""
import json
import math
import random
import struct
from pathlib import Path

FOLDER = Path(__file__).parent
FILM_ROWS = 2400
MM_PER_PIXEL = 0.1

CHALLENGE_POINTS = ["S", "N", "Or", "Po", "A", "B", "Pog", "Me", "Gn", "Go", "L1", "U1", "TUL", "TLL", "SN", "Pog(s)",
                    "PNS", "ANS", "Ar"]

# Which part of the face a landmark or an outline belongs to; what is not named here stays where it is.
PART_OF_LANDMARK = {
    "maxilla": ["ANS", "A", "PNS"],
    "mandible": ["B", "PM", "Pog(R)", "Pog", "Gn", "Me", "Go(L)", "Go", "Go(P)", "DC", "Cd", "Xi", "D", "CdE"],
    "upper incisor": ["U1", "U1C", "U1R"],
    "lower incisor": ["L1", "L1C", "L1R"],
    "upper molar": ["UMo", "UMo(D)", "UMoR"],
    "lower molar": ["LMo", "LMo(D)", "LMoR"],
}
PART_OF_OUTLINE = {
    "maxilla": ["Maxilla", "Palate"],
    "mandible": ["Mandible", "Symphysis, inner"],
    "upper incisor": ["Upper incisor, crown", "Upper incisor, root"],
    "lower incisor": ["Lower incisor, crown", "Lower incisor, root"],
    "upper molar": ["Upper molar, crown", "Upper molar, roots"],
    "lower molar": ["Lower molar, crown", "Lower molar, roots"],
    "skin": ["Soft tissue profile"],
    "C3": ["Vertebra C3"],
    "C4": ["Vertebra C4"],
}

# Own landmarks that stand on bone which moves; those of the ramus bend with it.
PART_OF_OWN = {
    "maxilla": ["Mp"],
    "mandible": ["RGn", "Gs", "CA", "RCJ", "Agn", "R1", "R2", "R3", "R4"],
    "C3": ["C3m"],
    "C4": ["C4m"],
}

# How much of the way of hard tissue a point of the skin, the tongue or the hyoid goes along.
OWN_FOLLOWS = {
    "Cm": {"A": 0.4},
    "As": {"A": 0.6},
    "Ls": {"U1": 0.6},
    "ULi": {"U1": 0.6},
    "Sts": {"U1": 0.5},
    "Sti": {"L1": 0.4, "U1": 0.3},
    "LLi": {"L1": 0.6},
    "Li": {"L1": 0.5, "B": 0.3},
    "Si": {"B": 0.9},
    "Gns": {"Pog": 0.6, "Me": 0.4},
    "Cp": {"Me": 0.5},
    "NTP": {"Me": 0.5},
    "TT": {"L1": 0.8},
    "TD": {"B": 0.2},
    "PAa": {"B": 0.3},
    "LPa": {"Go": 1.0},
    "Eb": {"Me": 0.3},
    "Hy": {"Me": 0.5},
}
SKIN_FOLLOWS = {
    "SN": {"A": 0.6},
    "TUL": {"U1": 0.6},
    "Sto": {"U1": 0.45, "L1": 0.35},
    "TLL": {"L1": 0.55, "U1": 0.25},
    "Vmi": {"L1": 0.4, "B": 0.45},
    "Pog(s)": {"Pog": 1.0},
    "TC": {"Pog": 1.0},
    "Me(s)": {"Me": 1.0},
}

# The ramus bends between these heights: above it rests in the joint, below it goes with the body of the jaw.
RAMUS_TOP, RAMUS_BOTTOM = 1160, 1600


def motion(pivot, degrees=0.0, scale=1.0, shift=(0.0, 0.0)):
    """Turns (clockwise on the film), scales and then shifts a point about a pivot."""
    c, s = (scale * f(math.radians(degrees)) for f in (math.cos, math.sin))

    def move(p):
        x, y = p[0] - pivot[0], p[1] - pivot[1]
        return (pivot[0] + x * c - y * s + shift[0], pivot[1] + x * s + y * c + shift[1])

    return move


def still(p):
    return tuple(p)


def mandible(body):
    """The jaw whose body moves by `body` while its condyle stays in the joint."""

    def move(p):
        t = min(1.0, max(0.0, (p[1] - RAMUS_TOP) / (RAMUS_BOTTOM - RAMUS_TOP)))
        weight = t * t * (3 - 2 * t)
        return tuple(a + weight * (b - a) for a, b in zip(p, body(p)))

    return move


def tooth(landmarks, tip, root, bone, degrees, shift):
    """A tooth keeps its shape: it is carried by its bone, turned about its middle, and shifted."""
    middle = tuple((a + b) / 2 for a, b in zip(landmarks[tip], landmarks[root]))
    carried = tuple(b - a for a, b in zip(middle, bone(middle)))
    return motion(middle, degrees, 1.0, tuple(a + b for a, b in zip(carried, shift)))


def young_vertebra(points, vertebra, front, rear):
    """Before growth ends the body is lower, most in front: heights over the lower border times `front` and `rear`."""
    left, right = points[vertebra + "lp"], points[vertebra + "la"]

    def move(p):
        t = (p[0] - left[0]) / (right[0] - left[0])
        base = left[1] + t * (right[1] - left[1])
        return (p[0], base + (p[1] - base) * (rear + t * (front - rear)))

    return move


def skin(landmarks, moved, points):
    """Moves a skin outline: between its landmarks, the way along the curve decides; its ends stay."""
    names = {tuple(landmarks[name]): name for name in landmarks}
    way = [0.0]
    for p, q in zip(points, points[1:]):
        way.append(way[-1] + math.dist(p, q))
    knots = [(way[0], (0, 0))]
    for at, p in zip(way, points):
        if tuple(p) in names:
            name = names[tuple(p)]
            knots.append((at, tuple(b - a for a, b in zip(p, moved[name]))))
    knots.append((way[-1], (0, 0)))

    def offset(at):
        for (left, a), (right, b) in zip(knots, knots[1:]):
            if left <= at <= right:
                t = (at - left) / (right - left) if right > left else 0
                return tuple(u + t * (v - u) for u, v in zip(a, b))
        raise ValueError(at)

    return [tuple(a + b for a, b in zip(p, offset(at))) for at, p in zip(way, points)]


def derived(average, name, sex, birth, film, dental_stage, upper, body, teeth, neck=None):
    """A face whose upper jaw moves by `upper` and lower jaw by `body`; teeth: part -> (degrees, shift); neck: factors of
    the vertebrae's heights in front and behind, which leave the points of the depth to be made from the corners."""
    old = average["landmarks"]
    moves = {"maxilla": upper, "mandible": mandible(body)}
    for part, tip, root, bone in (("upper incisor", "U1", "U1R", upper), ("lower incisor", "L1", "L1R", body),
                                  ("upper molar", "UMo", "UMoR", upper), ("lower molar", "LMo", "LMoR", body)):
        moves[part] = tooth(old, tip, root, bone, *teeth[part])
    neck_points = dict(average["vertebrae"])
    if neck:
        moves.update((vertebra, young_vertebra(neck_points, vertebra, *neck)) for vertebra in ("C3", "C4"))
        neck_points = {mark: whole(moves[mark[:2]](p)) for mark, p in neck_points.items() if mark[2] != "d"}
    new = {mark: still(p) for mark, p in old.items()}
    for part, marks in PART_OF_LANDMARK.items():
        new.update((mark, moves[part](old[mark])) for mark in marks)
    # The premolars meet half way between where the upper and the lower ones go.
    new["PMo"] = tuple((a + b) / 2 for a, b in zip(moves["upper molar"](old["PMo"]), moves["lower molar"](old["PMo"])))

    def follow(p, shares):
        return tuple(p[i] + sum(share * (new[leader][i] - old[leader][i]) for leader, share in shares.items())
                     for i in (0, 1))

    for mark, shares in SKIN_FOLLOWS.items():
        new[mark] = follow(old[mark], shares)
    own = {mark: still(p) for mark, p in average["user"].items()}
    for part, marks in PART_OF_OWN.items():
        own.update((mark, moves[part](own[mark])) for mark in marks if part in moves)
    for mark, shares in OWN_FOLLOWS.items():
        own[mark] = follow(own[mark], shares)
    new, own = ({mark: whole(p) for mark, p in each.items()} for each in (new, own))

    part_of = {outline: part for part, outlines in PART_OF_OUTLINE.items() for outline in outlines}
    outlines = []
    for outline in average["outlines"]:
        part = part_of.get(outline["name"])
        if part == "skin":
            points = skin(old, new, outline["points"])
        else:
            points = [moves.get(part, still)(p) for p in outline["points"]]
        anchors = {tuple(old[mark]): new[mark] for mark in outline["anchors"]}
        points = [anchors.get(tuple(before), whole(after)) for before, after in zip(outline["points"], points)]
        outlines.append({**outline, "points": points})
    return {**average, "name": name, "sex": sex, "birth": birth, "film": film, "dental_stage": dental_stage,
            "landmarks": new, "vertebrae": neck_points, "user": own, "outlines": outlines}


# Mesio-distal crown widths in mm from the first incisor to the first molar. Their sums fit Bolton's ratios.
CROWN_WIDTHS = {"upper": [8.5, 7.0, 7.7, 7.1, 6.8, 10.2], "lower": [5.3, 5.9, 6.7, 7.1, 7.0, 10.8]}
# How far the facial and lingual ends of lower incisors, and the cusp tips of canines and first molars, lie off the crown's middle, mm.
CROWN_MARKS = {1: {"f": 2.6, "l": -3.3}, 2: {"f": 2.8, "l": -3.4}, 3: {"c": 1.2}, 6: {"c": 3.6}}


def cast():
    """Two even dental arches seen on the chewing surface, mm from the middle of the front teeth, the patient's right on
    the left; the contacts of the teeth lie on a parabola."""
    landmarks, own = {}, {}
    for arch, quadrants, steep, middle, sign in (("upper", (1, 2), 0.05, (60, 25), 1), ("lower", (4, 3), 0.054, (60, 125), -1)):
        for quadrant, side in zip(quadrants, (-1, 1)):
            x = 0.0
            for tooth, width in enumerate(CROWN_WIDTHS[arch], 1):
                mesial = (x, steep * x * x)
                low, high = x, x + width
                while high - low > 1e-9:  # the contact behind is a crown's width away
                    x = (low + high) / 2
                    low, high = (x, high) if math.dist(mesial, (x, steep * x * x)) < width else (low, x)
                for face, (u, v) in (("m", mesial), ("d", (x, steep * x * x))):
                    landmarks[f"{quadrant}{tooth}{face}"] = whole((20 * (middle[0] + side * u), 20 * (middle[1] + sign * v)))
                along = x - mesial[0], steep * x * x - mesial[1]
                for mark, off in CROWN_MARKS.get(tooth, {}).items():  # from the crown's middle to cheek or lip
                    if tooth > 2 or arch == "lower":
                        u, v = ((a + b / 2) for a, b in zip(mesial, along))
                        u, v = u + off * along[1] / width, v - off * along[0] / width
                        own[f"{quadrant}{tooth}{mark}"] = whole((20 * (middle[0] + side * u), 20 * (middle[1] + sign * v)))
        curves = {"C": (20.4, 17.5, -1, 26.5, 36), "B": (20.9, 18.5, 1, 25, 33)} if arch == "upper" else \
                 {"C": (17.5, 13.5, -1, 24, 32.5), "B": (19.5, 14, 1, 25, 31)}
        for curve, (half_width, at, front, half_rear, rear) in curves.items():
            name = arch[0].upper() + curve
            for mark, (u, v) in {"WR": (-half_width, at), "WL": (half_width, at), "F": (0, front),
                                 "RR": (-half_rear, rear), "RL": (half_rear, rear)}.items():
                landmarks[name + mark] = whole((20 * (middle[0] + u), 20 * (middle[1] + sign * v)))
    return {"format": "cephtool-case", "version": 1, "name": "Mihon Hanako (見本 花子), even arches", "kind": "model",
            "sex": "female", "birth": "2001-05-14", "film": "2025-06-02", "mm_per_pixel": 0.05, "landmarks": landmarks, "user": own}


def whole(p):
    return [round(p[0]), round(p[1])]


def write_case(path, case):
    """One landmark, one outline a line, so that a change to a file can be read."""
    def rows(entries):
        return ",\n    ".join(entries)

    def text(value):
        return json.dumps(value, ensure_ascii=False)

    parts = []
    for key, value in case.items():
        if key in ("landmarks", "vertebrae", "user", "virtual"):
            value = "{\n    " + rows(f"{text(k)}: {text(v)}" for k, v in value.items()) + "\n  }"
        elif key == "outlines":
            value = "[\n    " + rows(text(outline) for outline in value) + "\n  ]"
        else:
            value = text(value)
        parts.append(f"  {text(key)}: {value}")
    Path(path).write_text("{\n" + ",\n".join(parts) + "\n}\n", encoding="utf-8", newline="\n")


# The X-ray of a face: its outlines, bright on dark.
def film_rows(outlines):
    width, height = 2000, FILM_ROWS
    rows = [bytearray([24] * width) for _ in range(height)]
    for outline in outlines:
        points = outline["points"] + (outline["points"][:1] if outline.get("closed") else [])
        for (x1, y1), (x2, y2) in zip(points, points[1:]):
            steps = max(abs(x2 - x1), abs(y2 - y1), 1)
            for i in range(steps + 1):
                x, y = x1 + (x2 - x1) * i // steps, y1 + (y2 - y1) * i // steps
                for row in rows[y - 2:y + 3]:
                    row[x - 2:x + 3] = bytes([205] * 5)
    for x in range(1890, 1911):  # a ruler of 100 mm in the median plane
        for y in range(400, 1401):
            if (y - 400) % 100 < 3 or x < 1893:
                rows[y][x] = 235
    return rows


# PackBits, as DICOM's RLE has it (PS3.5 annex G): each row by itself.
def packed(row):
    out, at = bytearray(), 0
    while at < len(row):
        run = 1
        while run < 128 and at + run < len(row) and row[at + run] == row[at]:
            run += 1
        if run > 1:
            out += bytes([257 - run, row[at]])
            at += run
            continue
        end = at
        while end < len(row) and end - at < 128 and not (end + 1 < len(row) and row[end] == row[end + 1]):
            end += 1
        out += bytes([end - at - 1]) + row[at:end]
        at = end
    return bytes(out)


# As a clinic's device writes it: the width of a pixel at the detector, and the distances that enlarge the face.
def dicom(rows):
    def element(tag, kind, value):
        value = value.encode("ascii") if isinstance(value, str) else value
        value += (b"\0" if kind in ("OB", "UI") else b" ") * (len(value) % 2)
        head = struct.pack("<HH2s", tag >> 16, tag & 0xFFFF, kind.encode())
        return head + (struct.pack("<HI", 0, len(value)) if kind == "OB" else struct.pack("<H", len(value))) + value

    def number(value):
        return struct.pack("<H", value)

    meta = element(0x00020001, "OB", b"\0\1") + element(0x00020010, "UI", "1.2.840.10008.1.2.5")
    name = b"Mihon^Taro=" + b"^".join(part.encode("iso2022_jp") for part in ("見本", "太郎"))
    header = b"".join(element(*row) for row in (
        (0x00080005, "CS", "\\ISO 2022 IR 87"), (0x00080022, "DA", "20250421"), (0x00080060, "CS", "DX"),
        (0x00080070, "LO", "Example X-ray"), (0x00100010, "PN", name), (0x00100020, "LO", "0017"),
        (0x00100030, "DA", "20110920"), (0x00100040, "CS", "M"), (0x00181110, "DS", "1650"),
        (0x00181111, "DS", "1500"), (0x00181164, "DS", "0.11\\0.11"), (0x00200062, "CS", "L"),
        (0x00280002, "US", number(1)), (0x00280004, "CS", "MONOCHROME2"), (0x00280010, "US", number(len(rows))),
        (0x00280011, "US", number(len(rows[0]))), (0x00280100, "US", number(8)), (0x00280101, "US", number(8)),
        (0x00280102, "US", number(7)), (0x00280103, "US", number(0)), (0x00280301, "CS", "NO")))
    segment = b"".join(packed(row) for row in rows)
    frame = struct.pack("<16I", 1, 64, *[0] * 14) + segment + b"\0" * (len(segment) % 2)
    pixels = struct.pack("<HH2sHI", 0x7FE0, 0x0010, b"OB", 0, 0xFFFFFFFF)
    for item in (b"", frame):
        pixels += struct.pack("<HHI", 0xFFFE, 0xE000, len(item)) + item
    pixels += struct.pack("<HHI", 0xFFFE, 0xE0DD, 0)
    meta = element(0x00020000, "UL", struct.pack("<I", len(meta))) + meta
    return b"\0" * 128 + b"DICM" + meta + header + pixels


def main():
    average = json.loads((FOLDER / "lateral-average.json").read_text(encoding="utf-8"))
    marks = average["landmarks"]

    # A boy whose growth has not ended. Class II, division 1: a short lower jaw, turned a little downward; upper incisors lean forward, lower ones have
    # grown up past the upper ones' edges.
    write_case(FOLDER / "lateral-class2.json", derived(
        average, "Mihon Taro (見本 太郎), Class II", "male", "2011-09-20", "2025-04-21", "IVA",
        upper=motion(marks["PNS"], 0, 1.0, (8, 0)),
        body=motion(marks["Ar"], 2.5, 0.93),
        teeth={"upper incisor": (-6, (0, 8)), "lower incisor": (7, (6, -42)),
               "upper molar": (0, (0, 0)), "lower molar": (0, (0, -1))},
        neck=(0.65, 0.7)))

    # Open bite: a short ramus and a lower jaw that turns downward behind the chin, palate tipped up in front; the
    # molars have grown together, the incisors do not reach each other.
    write_case(FOLDER / "lateral-openbite.json", derived(
        average, "Mihon Yuki (見本 由紀), open bite", "female", "2003-02-27", "2025-09-12", "VA",
        upper=motion(marks["PNS"], -2),
        body=motion((1080, 1560), 9),
        teeth={"upper incisor": (-2, (0, 10)), "lower incisor": (3, (4, -17)),
               "upper molar": (2, (0, 30)), "lower molar": (-6, (0, -22))}))

    write_case(FOLDER / "model-average.json", cast())

    lines = ["# scale_mm_per_px=0.1", "# kind=lateral", "# sex=female", "name,x,y"]
    lines += [f"{mark},{x},{y}" for mark, (x, y) in marks.items()]
    (FOLDER / "lateral-average.csv").write_text("\n".join(lines) + "\n", encoding="utf-8", newline="\n")

    lines = ["{},{}".format(*marks[mark]) for mark in CHALLENGE_POINTS]
    (FOLDER / "lateral-average-19-points.txt").write_text("\n".join(lines) + "\n", encoding="utf-8", newline="\n")

    # The same face as other programs have it: TPS with y up from the lower edge of a film of 2400 rows, and Slicer's
    # millimetres with x to the patient's left and y to the back.
    facts = ["kind=lateral", "sex=female"]
    lines = [f"LM={len(marks)}"] + [f"{x} {FILM_ROWS - y}" for x, y in marks.values()]
    lines += ["ID=lateral-average", "COMMENT=landmarks=" + ",".join(marks), f"COMMENT=flip={FILM_ROWS}"]
    lines += [f"COMMENT={fact}" for fact in facts] + [f"SCALE={MM_PER_PIXEL}"]
    (FOLDER / "lateral-average.tps").write_text("\n".join(lines) + "\n", encoding="utf-8", newline="\n")

    lines = ["# Markups fiducial file version = 4.11", "# CoordinateSystem = LPS",
             "# columns = id,x,y,z,ow,ox,oy,oz,vis,sel,lock,label,desc,associatedNodeID,positionStatus",
             f"# scale_mm_per_px={MM_PER_PIXEL}"] + [f"# {fact}" for fact in facts]
    lines += [f"{i},{x / 10:g},{y / 10:g},0,0,0,0,1,1,1,0,{mark},,,2" for i, (mark, (x, y)) in enumerate(marks.items(), 1)]
    (FOLDER / "lateral-average.fcsv").write_text("\n".join(lines) + "\n", encoding="utf-8", newline="\n")

    points = [{"id": str(i), "label": mark, "position": [x / 10, y / 10, 0], "positionStatus": "defined"}
              for i, (mark, (x, y)) in enumerate(marks.items(), 1)]
    markups = {"x-cephtool": {"scale_mm_per_px": str(MM_PER_PIXEL), **dict(fact.split("=") for fact in facts)},
               "markups": [{"type": "Fiducial", "coordinateSystem": "LPS", "coordinateUnits": "mm",
                            "controlPoints": points}]}
    (FOLDER / "lateral-average.mrk.json").write_text(json.dumps(markups, indent=1) + "\n", encoding="utf-8", newline="\n")

    (FOLDER / "film.dcm").write_bytes(dicom(film_rows(json.loads(
        (FOLDER / "lateral-class2.json").read_text(encoding="utf-8"))["outlines"])))

    # Several faces as rows of one table.
    rows = ["# scale_mm_per_px=0.1", "name,sex,birth,film," + ",".join(f"{mark}_x,{mark}_y" for mark in marks)]
    for name in ("average", "class2", "openbite"):
        case = json.loads((FOLDER / f"lateral-{name}.json").read_text(encoding="utf-8"))
        places = ",".join(f"{x},{y}" for x, y in (case["landmarks"][mark] for mark in marks))
        rows.append(f"{name},{case['sex']},{case.get('birth', '')},{case.get('film', '')},{places}")
    (FOLDER / "cases-flat.csv").write_text("\n".join(rows) + "\n", encoding="utf-8", newline="\n")

    # Ten faces, each read twice: the average face with jaws and teeth moved, and what a reader errs by.
    marks = {mark: marks[mark] for mark in "S,N,Or,Po,A,B,Pog,Me,Gn,Go,Ar,ANS,PNS,U1,U1R,L1,L1R".split(",")}
    faces = random.Random(1906)
    moved = [{mark: (x + faces.gauss(0, 25), y + faces.gauss(0, 25)) for mark, (x, y) in marks.items()}
             for _ in range(10)]
    for name, slip in (("first", 0), ("second", 3)):
        lines = []
        for number, face in enumerate(moved, 1):
            lines.append(f"LM={len(face)}")
            lines += [f"{round(x + faces.gauss(slip, 6))} {round(2400 - y + faces.gauss(0, 8))}"
                      for x, y in face.values()]
            lines += [f"ID=film{number}", "COMMENT=landmarks=" + ",".join(face), "COMMENT=flip=2400",
                      f"SCALE={MM_PER_PIXEL}"]
        (FOLDER / f"readings-{name}.tps").write_text("\n".join(lines) + "\n", encoding="utf-8", newline="\n")


if __name__ == "__main__":
    main()
