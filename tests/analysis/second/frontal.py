"""Items of frontal films: symmetry about the midline, widths and cants. The patient's right lies on the left of the film."""
from geometry import *


def outward(f, name):
    """Of a point with a side: its distance from the line CG-ANS."""
    return abs(left(f[name], f.CG, f.ANS))


def to_the_left(f, name):
    """How far a middle point lies toward the patient's left of CG-ANS, which runs down."""
    return left(f[name], f.CG, f.ANS)


def right_less_left(measure):
    return lambda f: measure(f, "R") - measure(f, "L")


def along_z(f, x, of):
    """Toward the patient's left along the line of the zygomaticofrontal points."""
    return ahead(x, of, f.ZR, f.ZL)


def cant(right, leftmost):
    """To that line; positive when lower on the patient's right."""
    return lambda f: turn(f.ZR, f.ZL, f[right], f[leftmost])


def share(a, b, c, d):
    return lambda f: 100 * dist(f[a], f[b]) / dist(f[c], f[d])


ITEMS = {"frontal": {
    **{f"{p}, right less left": right_less_left(lambda f, side, p=p: outward(f, p + side)) for p in "Z ZA NC J AG".split()},
    "Z-AG, right less left": right_less_left(lambda f, side: dist(f["Z" + side], f["AG" + side])),
    "AG-Me, right less left": right_less_left(lambda f, side: dist(f["AG" + side], f.Me)),
    "Me off CG-ANS": lambda f: to_the_left(f, "Me"),
    "Upper midline off CG-ANS": lambda f: to_the_left(f, "UMid"),
    "Lower midline off CG-ANS": lambda f: to_the_left(f, "LMid"),
    "ZA plane to Z plane": cant("ZAR", "ZAL"),
    "J plane to Z plane": cant("JR", "JL"),
    "AG plane to Z plane": cant("AGR", "AGL"),
    "Bite to Z plane": cant("6R", "6L"),
    "Cant of the bite": cant("6R", "6L"),
    "Upper facial ratio": share("CG", "ANS", "CG", "Me"),
    "Lower facial ratio": share("ANS", "Me", "CG", "Me"),
    "Maxillary ratio": share("ANS", "A", "ANS", "Me"),
    "Mandibular ratio": share("B", "Me", "ANS", "Me"),
    "Maxilla over mandible": share("ANS", "A", "B", "Me"),
    "ANS off the middle": lambda f: along_z(f, f.ANS, mid(f.ZR, f.ZL)),
    "Me off the middle": lambda f: along_z(f, f.Me, mid(f.ZR, f.ZL)),
    "Dental midlines": lambda f: along_z(f, f.LMid, f.UMid),
    "Lower intermolar width": lambda f: dist(f.L6R, f.L6L),
    "Lower intercanine width": lambda f: dist(f.L3R, f.L3L),
    "Maxillary relation, right": lambda f: left(f.JR, f.ZR, f.AGR),
    "Maxillary relation, left": lambda f: -left(f.JL, f.ZL, f.AGL),
    "Lower molar to J-AG, right": lambda f: left(f.L6R, f.JR, f.AGR),
    "Lower molar to J-AG, left": lambda f: -left(f.L6L, f.JL, f.AGL),
    "Molar relation, right": lambda f: -along_z(f, f.U6R, f.L6R),
    "Molar relation, left": lambda f: along_z(f, f.U6L, f.L6L),
}}
