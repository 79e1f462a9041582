"""Unlike made-up faces and films, deformed from the project's own average ones. Pixels, x to the right, y down."""
import cmath
import json
import math
import random
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[3]

JAW = "B PM Pog(R) Pog Gn Me Go(L) Go Go(P) Xi D L1 L1R L1C LMo LMo(D) LMoR TLL TC Me(s) Pog(s) Vmi".split()
UPPER = "ANS A PNS U1 U1R U1C UMo UMo(D) UMoR PMo SN TUL".split()


def average(file, own):
    """With what the outlines' face has beside the sample's landmarks: own landmarks, vertebrae."""
    case = json.loads((PROJECT / "examples" / "samples" / file).read_text(encoding="utf-8"))
    face = json.loads((PROJECT / "outlines" / file.replace("-average", "")).read_text(encoding="utf-8"))
    return {name: complex(*at) for name, at in {**case["landmarks"], **face["landmarks"], **own}.items()}


def moved(face, names, shift=0, degrees=0, about=0, size=1):
    """Part of a face turned clockwise on the film and made larger about a point, then shifted."""
    by = cmath.rect(size, math.radians(degrees))
    return {n: about + (p - about) * by + shift if n in names else p for n, p in face.items()}


def shaken(face, seed, by):
    """Every point up to so many pixels off, so that nothing is level, upright or parallel by chance."""
    wild = random.Random(seed)
    return {n: p + complex(wild.uniform(-by, by), wild.uniform(-by, by)) for n, p in face.items()}


def lateral(own, own_jaw=(), own_upper=()):
    """`own` are places on the average face; those that go with the jaws are named apart."""
    face = average("lateral-average.json", own)
    jaw, upper, joint = {*JAW, *own_jaw}, {*UPPER, *own_upper}, face["Cd"]
    all_of_it = set(face)
    return {
        "shaken average": (0.1, shaken(face, 1, 9)),
        "class II": (0.1, shaken(moved(moved(face, jaw, -80 + 10j, 3, joint), {"U1", "TUL"}, 35), 2, 12)),
        "class III": (0.125, shaken(moved(moved(moved(face, {"C4m"}, 30j), jaw, 95 - 20j, -4, joint), upper, -40), 3, 12)),
        "open bite": (0.1, shaken(moved(moved(moved(face, {"C2m", "C3m", "C4m"}, 30j), jaw, 0, 9, joint), upper, 0, -5,
                                        face["PNS"]), 4, 10)),
        "deep bite": (0.08, shaken(moved(moved(face, jaw, 15, -7, joint), {"U1", "U1C"}, -70 + 20j), 5, 10)),
        "tilted film": (0.1, shaken(moved(moved(face, {"C3ua", "C3up", "C4ua", "C4up"}, 35j), all_of_it, 300 - 90j, 23,
                                          face["S"]), 6, 8)),
        "film on its side": (0.2, shaken(moved(face, all_of_it, 1500 + 300j, -97, face["S"], 0.6), 7, 5)),
        "child": (0.1, shaken(moved(moved(moved(face, {"C3m", "C4m"}, 35j), {*jaw, *upper}, -30 - 40j, 2, face["N"], 0.82),
                                    all_of_it, 200 + 250j, -6, 0, 0.86), 8, 8)),
        "coarse film": (0.5, shaken(moved(face, all_of_it, 40 + 20j, 4, 0, 0.22), 9, 3)),
    }


def frontal(own):
    """The midline of the average face stands upright near the middle of its film; sides differ in each of these."""
    face = average("frontal-average.json", own)
    everything, middle = set(face), face["ANS"]
    low = {n for n, p in face.items() if p.imag > middle.imag}
    right = {n for n, p in face.items() if p.real < middle.real}
    return {
        "shaken average": (0.1, shaken(face, 11, 9)),
        "chin to the left": (0.1, shaken(moved(face, low, 60), 12, 10)),
        "chin to the right": (0.125, shaken(moved(face, low, -75 + 15j, 4, middle), 13, 10)),
        "wide right side": (0.1, shaken(moved(face, right, -90 + 10j), 14, 8)),
        "narrow right side": (0.08, shaken(moved(face, right, 70 - 35j), 15, 8)),
        "tilted film": (0.1, shaken(moved(face, everything, 200 + 100j, 19, middle), 16, 8)),
        "film on its side": (0.2, shaken(moved(face, everything, 300 + 200j, 88, middle, 0.6), 17, 6)),
        "child": (0.1, shaken(moved(moved(face, low, 10 - 60j, -2, middle, 0.85), everything, 150, 3, 0, 0.84), 18, 8)),
    }


def on_the_film(subject):
    """Quarters of a pixel, which the engine keeps to the last bit."""
    scale, face = subject
    return scale, {n: complex(round(p.real * 4) / 4, round(p.imag * 4) / 4) for n, p in face.items()}


def in_mm(subject):
    scale, face = subject
    return {n: p.conjugate() * scale for n, p in face.items()}
