"""Items of soft tissue, airway, neck and frontal analyses."""
import cmath
import math

from geometry import *

# The average face has no place for vertebrae that few films show.
OWN = {"lateral": {"C6p": (500, 2410), "C7p": (430, 2590)}}
OWN_JAW = "RGn TT LLi Li Si Gns R1".split()


def forward(x, of):
    """How far x lies in front of a point along the true horizontal."""
    return lambda f: left(f[x], f.TV1, f.TV2) - left(f[of], f.TV1, f.TV2)


def below(x, of):
    return lambda f: ahead(f[x], f[of], f.TV1, f.TV2)


def length(a, b):
    return lambda f: dist(f[a], f[b])


def corner(a, vertex, b):
    return lambda f: angle(f[a], f[vertex], f[b])


def lower_front(upper, lower, rear, front):
    """The angle in front of a line that runs down and below one that runs forward."""
    return lambda f: turn(f[upper], f[lower], f[rear], f[front])


def before(x, upper, lower):
    """In front of a line that runs down, or above one that runs forward."""
    return lambda f: left(f[x], f[upper], f[lower])


def horizontal(f):
    """The constructed horizontal: S-N turned 7 degrees down in front."""
    return cmath.exp(-1j * math.atan(0.12278)) * (f.N - f.S) / abs(f.N - f.S)


def along(direction, x, of):
    return ((x - of) * direction.conjugate()).real


def body(vertebra):
    corners = [vertebra + end for end in ("ua", "la", "up", "lp")]

    def measures(f):
        front_top, front_foot, rear_top, rear_foot = (f[name] for name in corners)
        front, rear = dist(front_top, front_foot), dist(rear_top, rear_foot)
        return front / rear, (front + rear) / (dist(front_top, rear_top) + dist(front_foot, rear_foot))

    return measures


def shape(vertebra):
    def words(f):
        taper, height = body(vertebra)(f)
        if taper < 0.9:
            return "trapezoid"
        return "rectangular, lying" if height < 0.95 else "rectangular, upright" if height > 1.05 else "squared"

    return words


def depth(vertebra):
    rear, front = ("C2r", "C2a") if vertebra == "C2" else (vertebra + "lp", vertebra + "la")
    return lambda f: left(f[vertebra + "m"], f[rear], f[front])


def maturation(f):
    concave = "".join("x" if depth(v)(f) >= 1 else "-" for v in ("C2", "C3", "C4"))
    early = {"---": "CS1", "x--": "CS2", "xx-": "CS3"}
    if concave != "xxx":
        return early.get(concave, "concave borders out of order")
    highest = max(body(v)(f)[1] for v in ("C3", "C4"))
    return "CS6" if highest > 1.05 else "CS5" if highest >= 0.95 else "CS4"


def neck(f):
    curve = before("Cvd", "C2s", "C7p")(f)
    if curve < 2:
        return "straight or reversed"
    return "straightened" if curve < 8 else "marked lordosis" if curve > 12 else "in the norm"


def heights(above, middle, under):
    def ratio(f):
        up = 1j * horizontal(f)
        return abs(along(up, f[above], f[middle]) / along(up, f[middle], f[under]))

    return ratio


def s_line(lip):
    return lambda f: left(f[lip], mid(f.TN, f.SN), f["Pog(s)"])


def orientation(f):
    """The middle of the soft face, to which the line from the tragus runs."""
    return mid(f["N(s)"], f["Pog(s)"])


VERTICAL = {"Glabella": "Gl", "Orbital rim": "ORs", "Cheek bone": "CBs", "Subpupil": "SPs", "Alar base": "ABs",
            "Nose tip": "TN", "Soft A": "As", "Upper lip": "TUL", "U1": "U1", "L1": "L1", "Lower lip": "TLL",
            "Soft B": "Si", "Soft chin": "Pog(s)"}

LATERAL = {
    "Upper pharynx": length("UPa", "UPp"),
    "Lower pharynx": length("LPa", "LPp"),
    "PNS-AD1": length("PNS", "AD1"),
    "PNS-AD2": length("PNS", "AD2"),
    "AD1-Ba": length("AD1", "Ba"),
    "AD2-Ho": length("AD2", "Ho"),
    "PNS-Ba": length("PNS", "Ba"),
    "PNS-Ho": length("PNS", "Ho"),
    "Soft palate PNS-P": length("PNS", "Uv"),
    "Posterior airway space": length("PAa", "PAp"),
    "Hyoid to Go-Me": lambda f: -left(f.Hy, f.Go, f.Me),
    "Tongue, Eb-TT": length("Eb", "TT"),
    "Tongue above Eb-TT": before("TD", "Eb", "TT"),
    "C3-RGn": length("C3la", "RGn"),
    "C3-H": length("C3la", "Hy"),
    "H-RGn": length("Hy", "RGn"),
    "H below C3-RGn": lambda f: -left(f.Hy, f.C3la, f.RGn),
    "AA-PNS": length("AA", "PNS"),
    "SN to OPT": lower_front("C2tg", "C2r", "S", "N"),
    "SN to CVT": lower_front("C2tg", "C4lp", "S", "N"),
    "Frankfort plane to OPT": lower_front("C2tg", "C2r", "Po", "Or"),
    "Palatal plane to OPT": lower_front("C2tg", "C2r", "PNS", "ANS"),
    "Mandibular plane to OPT": lower_front("C2tg", "C2r", "Go(L)", "Me"),
    "OPT to CVT": lower_front("C2tg", "C2r", "C2tg", "C4lp"),
    "CVT to EVT": lower_front("C2tg", "C4lp", "C4lp", "C6p"),
    "SN to the vertical": lower_front("TV1", "TV2", "S", "N"),
    "Frankfort plane to the vertical": lower_front("TV1", "TV2", "Po", "Or"),
    "Palatal plane to the vertical": lower_front("TV1", "TV2", "PNS", "ANS"),
    "OPT to the horizontal": lambda f: 90 + turn(f.TV1, f.TV2, f.C2tg, f.C2r),
    "CVT to the horizontal": lambda f: 90 + turn(f.TV1, f.TV2, f.C2tg, f.C4lp),
    # The rear lower sector: from the plane's rear half down to the tooth's lower half.
    "Craniocervical angle": lambda f: turn(f.PNS, f.Occ, f.Od, f.C2a),
    "C0-C1": length("Occ", "C1p"),
    "Cervical depth": before("Cvd", "C2s", "C7p"),
    "Cervical curve": neck,
    "Occlusal plane, upper, to the vertical": lambda f: 180 - turn(f.TV1, f.TV2, f.UMo, f.U1),
    "U1 to the upper occlusal plane": corner("U1R", "U1", "UMo"),
    "L1 to the lower occlusal plane": corner("L1R", "L1", "LMo"),
    "Overjet, true horizontal": forward("U1", "L1"),
    "Overbite, true vertical": below("U1", "L1"),
    "Upper lip thickness ULi-TUL": length("ULi", "TUL"),
    "Lower lip thickness LLi-TLL": length("LLi", "TLL"),
    "Chin thickness Pog-Pog(s)": length("Pog", "Pog(s)"),
    "Menton thickness Me-Me(s)": length("Me", "Me(s)"),
    "Nasolabial angle to Ls": corner("Cm", "SN", "Ls"),
    "Upper lip angle": lower_front("TV1", "TV2", "SN", "TUL"),
    "N(s)-Me(s), vertical": below("Me(s)", "N(s)"),
    "Upper lip SN-Sts, vertical": below("Sts", "SN"),
    "Interlabial gap, vertical": below("Sti", "Sts"),
    "Lower lip Sti-Me(s), vertical": below("Me(s)", "Sti"),
    "SN-Me(s), vertical": below("Me(s)", "SN"),
    "U1 exposure, vertical": below("U1", "Sts"),
    "SN-U1, vertical": below("U1", "SN"),
    "L1-Me(s), vertical": below("Me(s)", "L1"),
    **{f"{name} to true vertical": forward(point, "SN") for name, point in VERTICAL.items()},
    "Soft chin to L1": forward("Pog(s)", "L1"),
    "Lower lip to soft chin": forward("TLL", "Pog(s)"),
    "Soft chin to soft B": forward("Pog(s)", "Si"),
    "Throat, soft chin to NTP": forward("Pog(s)", "NTP"),
    "SN to soft chin": forward("SN", "Pog(s)"),
    "Soft A to soft B": forward("As", "Si"),
    "Upper lip to lower lip": forward("TUL", "TLL"),
    "Soft A to orbital rim": forward("As", "ORs"),
    "Soft chin to orbital rim": forward("Pog(s)", "ORs"),
    "Soft A to glabella": forward("As", "Gl"),
    "Soft chin to glabella": forward("Pog(s)", "Gl"),
    "Gl-SN-Pog(s), inner angle": corner("Gl", "SN", "Pog(s)"),
    "Nasofrontal angle Gl-N(s)-Dn": corner("Gl", "N(s)", "Dn"),
    "Nasofacial angle": lower_front("Gl", "Pog(s)", "N(s)", "Dn"),
    "Nasomental angle": corner("N(s)", "TN", "Pog(s)"),
    "Gl-Pog(s) to FH": lambda f: turn(f.Or, f.Po, f.Gl, f["Pog(s)"]),
    "Mentocervical angle": lambda f: 180 + turn(f.Gl, f["Pog(s)"], f["Me(s)"], f.Cp),
    "Me(s)-Cp": length("Me(s)", "Cp"),
    "Facial angle to the orientation plane": lambda f: angle(f.Tra, orientation(f), f["Pog(s)"]),
    "Maxillofacial angle": corner("Ls", "N(s)", "Pog(s)"),
    "Nasomaxillary angle": lambda f: turn(f.TN, f.Ls, f.Tra, orientation(f)),
    "Nasofrontal angle Gl-N(s)-TN": corner("Gl", "N(s)", "TN"),
    "Total convexity Gl-TN-Pog(s)": corner("Gl", "TN", "Pog(s)"),
    "Nose tip angle N(s)-TN-Cm": corner("N(s)", "TN", "Cm"),
    **{name: length(*name.split("-")) for name in ("N(s)-Gns", "N(s)-SN", "N(s)-TN", "SN-TN", "SN-Sts", "Ls-Sts",
                                                   "Sti-Li", "SN-Ls", "Li-Si")},
    "Goode ratio": lambda f: abs(ahead(f.TN, f.ABs, f.Po, f.Or)) / dist(f["N(s)"], f.TN),
    "Upper lip behind TN-Pog(s)": lambda f: -left(f.TUL, f.TN, f["Pog(s)"]),
    "Lower lip behind TN-Pog(s)": lambda f: -left(f.TLL, f.TN, f["Pog(s)"]),
    **{f"{v} concavity depth": depth(v) for v in ("C2", "C3", "C4")},
    **{f"{v} front to rear height": lambda f, v=v: body(v)(f)[0] for v in ("C3", "C4")},
    **{f"{v} height to width": lambda f, v=v: body(v)(f)[1] for v in ("C3", "C4")},
    **{f"{v} body": shape(v) for v in ("C3", "C4")},
    "CVM stage": maturation,
    # Legan and Burstone, Holdaway, lip lines: for their variants.
    "Facial convexity Gl-SN-Pog(s)": lambda f: turn(f.SN, f["Pog(s)"], f.Gl, f.SN),
    "Maxillary prognathism Gl-SN": lambda f: along(horizontal(f), f.SN, f.Gl),
    "Mandibular prognathism Gl-Pog": lambda f: along(horizontal(f), f["Pog(s)"], f.Gl),
    "Vertical height ratio": heights("Gl", "SN", "Me(s)"),
    "Lip to chin height ratio": heights("SN", "Sto", "Me(s)"),
    "Incisor exposure": lambda f: along(-1j * horizontal(f), f.U1, f.Sto),
    "Upper lip length SN-Sto": length("SN", "Sto"),
    "Interlabial gap Sts-Sti": length("Sts", "Sti"),
    "Mentolabial sulcus depth": lambda f: -left(f.Si, f.Li, f["Pog(s)"]),
    "Mentolabial angle": corner("Li", "Si", "Pog(s)"),
    "Lower face to throat angle": corner("SN", "Gns", "Cp"),
    "Lower face to throat ratio": lambda f: dist(f.SN, f.Gns) / dist(f.Gns, f.Cp),
    "Nasolabial angle": corner("Cm", "SN", "TUL"),
    "Nasolabial angle by the nose tip": corner("TN", "SN", "TUL"),
    "Soft tissue facial angle": lambda f: turn(f.Or, f.Po, f["N(s)"], f["Pog(s)"]),
    "H angle": lambda f: turn(f["Pog(s)"], f.TUL, f["Pog(s)"], f["N(s)"]),
    "SN behind the H line": lambda f: -left(f.SN, f.TUL, f["Pog(s)"]),
    "Lower lip to H line": before("TLL", "TUL", "Pog(s)"),
    "Nose prominence": lambda f: ahead(f.TN, f.TUL, f.Po, f.Or),
    "Soft tissue chin thickness": length("Pog", "Pog(s)"),
    **{f"{name} to {line}": before(lip, *ends) for name, lip in (("Upper lip", "TUL"), ("Lower lip", "TLL"))
       for line, ends in (("E line", ("TN", "TC")), ("SN-Pog(s)", ("SN", "Pog(s)")))},
    "Upper lip to S line": s_line("TUL"),
    "Lower lip to S line": s_line("TLL"),
}


def middle(pair):
    """Of a pair of landmarks, right and left."""
    return lambda f: mid(f[pair + "R"], f[pair + "L"])


def incisors(f):
    return mid(f.UMid, f.LMid)


def molars(f):
    return mid(f["6R"], f["6L"])


def bend(a, b, c, d):
    return lambda f: turn(a(f), b(f), c(f), d(f))


def off(x):
    """Toward the patient's left of the line from the middle of the orbits to the incisors."""
    return lambda f: left(x(f), middle("lo")(f), incisors(f))


def orbital_middle(f):
    return foot(f.tns, f.loR, f.loL)


def to_orbits(right, other):
    return lambda f: turn(f.loR, f.loL, f[right], f[other])


FRONTAL = {
    "Width Z-Z": length("ZR", "ZL"),
    "Facial width": length("ZAR", "ZAL"),
    "Nasal width": length("NCR", "NCL"),
    "Maxillary width": length("JR", "JL"),
    "Mandibular width": length("AGR", "AGL"),
    "AG-AG less J-J": lambda f: dist(f.AGR, f.AGL) - dist(f.JR, f.JL),
    "Upper midline at om": lambda f: turn(orbital_middle(f), f.ANS, orbital_middle(f), f.UMid),
    "Lower midline at om": lambda f: turn(orbital_middle(f), f.ANS, orbital_middle(f), f.LMid),
    "Middle of the jaw at om": lambda f: turn(0, -1j * (f.loL - f.loR), orbital_middle(f), f.mm),
    "Maxilla to lo-lo": to_orbits("mxR", "mxL"),
    "Bite to lo-lo": to_orbits("6R", "6L"),
    "Lower border to lo-lo": to_orbits("AGR", "AGL"),
    "Front midline, bend at the nose": bend(middle("lo"), middle("NC"), middle("NC"), incisors),
    "Middle to front midline": bend(middle("lo"), incisors, middle("ZA"), molars),
    "Rear to front midline": bend(middle("lo"), incisors, middle("cd"), middle("go")),
    "Rear to middle midline": bend(middle("ZA"), molars, middle("cd"), middle("go")),
    "Cheek arches off": off(middle("ZA")),
    "Molars off": off(molars),
    "Mastoids off": off(middle("ms")),
    "Angles of the jaw off": off(middle("go")),
}

ITEMS = {"lateral": LATERAL, "frontal": FRONTAL}
