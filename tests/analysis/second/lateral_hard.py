"""Items of the hard tissue of lateral films, each from its definition in words (anaitem/SOURCES.md)."""
from geometry import *

# The plumb line hangs in front of the average face; OLr and OLf are the first film's occlusal line, carried over, so they lie near
# the teeth but not on them.
OWN = {"lateral": {"TV1": (1836, 300), "TV2": (1830, 2100), "OLr": (1258, 1491), "OLf": (1612, 1549)}}
OWN_JAW = "Gs CA RCJ Agn Id R2 R4".split()
OWN_UPPER = "Mp Pr".split()


def tangent_gonion(f):
    """Where the tangents of the rear border and of the lower border of the lower jaw meet."""
    return cross(f.Ar, f["Go(P)"], f["Go(L)"], f.Me)


def downs_plane(f):
    """From the middle of the first molars' cusps to the middle of the incisal edges."""
    return mid(f.UMo, f.LMo), mid(f.U1, f.L1)


def functional_plane(f):
    """From the middle of the first molars' cusps to the premolars."""
    return mid(f.UMo, f.LMo), f.PMo


def fall(a, b, c, d):
    """How many degrees c-d must be lowered in front to become a-b, both running forward."""
    return -turn(c, d, a, b)


def face_forward(f):
    """Along Po-Or."""
    return f.Po, f.Or


def crown_ahead(root, edge, above, below):
    """Tooth axis to a line that runs down, positive when the crown stands farther in front than the root."""
    return turn(above, below, root, edge)


def inner(a, b, c, d):
    """The angle between two directions without a side, 0 to 180 degrees."""
    return angle(b - a, 0j, d - c)


def table(x, xs, ys):
    """The straight line between the points of a table, level outside of it."""
    if x <= xs[0]:
        return ys[0]
    for x0, x1, y0, y1 in zip(xs, xs[1:], ys, ys[1:]):
        if x <= x1:
            return y0 + (y1 - y0) * (x - x0) / (x1 - x0)
    return ys[-1]


MIDFACES = 85, 87, 89, 91, 92, 94, 97, 100  # Cd-A as printed, of films enlarged by 8 %


def jaw_that_fits(f):
    return table(1.08 * dist(f.Cd, f.A), MIDFACES, (106.5, 109, 112, 115, 118.5, 122.5, 128.5, 131.5)) / 1.08


def height_that_fits(f):
    return table(1.08 * dist(f.Cd, f.A), MIDFACES, (61, 62, 64, 65, 66, 66.5, 69.5, 72)) / 1.08


def maxilla(f):
    """PNS to the foot of A on the palatal plane."""
    return abs(ahead(f.A, f.PNS, f.PNS, f.ANS))


def bases(f):
    """Di Paolo's four corners: feet of Ptm and A on the palatal plane, of J and B on Go-Me."""
    return foot(f.Ptm, f.PNS, f.ANS), foot(f.A, f.PNS, f.ANS), foot(f.RCJ, f.Go, f.Me), foot(f.B, f.Go, f.Me)


def fmia(f):
    return inner(f.Or, f.Po, f.L1, f.L1R)


def wished_fmia(f):
    """Tweed's rule by the FMA; at 20 degrees and less the incisor stands at 92 degrees to Go-Me."""
    fma = fall(f.Go, f.Me, f.Po, f.Or)
    return 180 - 92 - fma if fma <= 20 else 68 if fma < 30 else 65


def on_ol(f, x):
    """In front of OLp, the perpendicular through S of the first film's occlusal line."""
    return ahead(x, f.S, f.OLr, f.OLf)


def bisector(f):
    """Direction half way between the palatal plane and Go-Me."""
    palatal, lower = f.ANS - f.PNS, f.Me - f.Go
    return 0j, palatal / abs(palatal) + lower / abs(lower)


def beta(f):
    return angle(f.B, f.A, foot(f.A, f.CA, f.B))


def plane_angle(f):
    """S-N to Go-Me."""
    return fall(f.Go, f.Me, f.S, f.N)


def growth_type(f):
    ratio = 100 * dist(f.S, tangent_gonion(f)) / dist(f.N, f.Me)
    return ("clockwise, vertical (時計回り)" if ratio < 59 else
            "counterclockwise, horizontal (反時計回り)" if ratio > 63 else "neutral (中間)")


def sna(f):
    return angle(f.S, f.N, f.A)


def anb(f):
    return sna(f) - angle(f.S, f.N, f.B)


def forward_of_nb(f, x):
    return left(x, f.N, f.B)


def h_angle(f):
    """N-B to the line from the soft chin to the upper lip, positive when the lip stands in front."""
    return -turn(f.B, f.N, f["Pog(s)"], f.TUL)


def ml(f):
    """S-N to the lower border's tangent."""
    return fall(f["Go(L)"], f.Me, f.S, f.N)


def steiner_plane(f):
    return fall(*downs_plane(f), f.S, f.N)


def wits_of_downs(f):
    return ahead(f.A, f.B, *downs_plane(f))


def cf(f):
    """Ricketts' centre: foot of the pterygoid vertical on Po-Or."""
    return foot(f.PTV, f.Po, f.Or)


def ricketts_gnathion(f, *lower_border):
    return cross(f.N, f.Pog, *lower_border)


ITEMS = {"lateral": {
    "SNA": sna,
    "SNB": lambda f: angle(f.S, f.N, f.B),
    "ANB": anb,
    "S-N-Pog": lambda f: angle(f.S, f.N, f.Pog),
    "N-S-Gn": lambda f: angle(f.N, f.S, f.Gn),
    "N-S-Ba": lambda f: angle(f.N, f.S, f.Ba),
    "Saddle angle": lambda f: angle(f.N, f.S, f.Ar),
    "Articular angle": lambda f: angle(f.S, f.Ar, tangent_gonion(f)),
    "Gonial angle": lambda f: angle(f.Ar, tangent_gonion(f), f.Me),
    "Sum of the three angles": lambda f: angle(f.N, f.S, f.Ar) + angle(f.S, f.Ar, tangent_gonion(f)) +
                               angle(f.Ar, tangent_gonion(f), f.Me),
    "Upper gonial angle": lambda f: angle(f.Ar, tangent_gonion(f), f.N),
    "Lower gonial angle": lambda f: angle(f.N, tangent_gonion(f), f.Me),
    "Gonial angle to Gn": lambda f: angle(f.Ar, f.Go, f.Gn),
    "SN to palatal plane": lambda f: fall(f.PNS, f.ANS, f.S, f.N),
    "SN to Go-Gn": lambda f: fall(f.Go, f.Gn, f.S, f.N),
    "SN to Go-Me": plane_angle,
    "SN to mandibular plane": ml,
    "SN to FH": lambda f: fall(f.Po, f.Or, f.S, f.N),
    "FH to Go-Me": lambda f: fall(f.Go, f.Me, f.Po, f.Or),
    "Palatal plane": lambda f: fall(f.PNS, f.ANS, f.Po, f.Or),
    "Palatal plane to Go-Me": lambda f: fall(f.Go, f.Me, f.PNS, f.ANS),
    "Palatal plane to Go-Gn": lambda f: fall(f.Go, f.Gn, f.PNS, f.ANS),
    "Inclination angle to S-N": lambda f: 90 - fall(f.PNS, f.ANS, f.S, f.N),
    "Facial angle": lambda f: inner(f.Or, f.Po, f.N, f.Pog),
    "Facial taper": lambda f: inner(f.Pog, f.N, f.Me, f["Go(L)"]),
    "Facial axis": lambda f: inner(f.N, f.Ba, f.PT, ricketts_gnathion(f, f["Go(L)"], f.Me)),
    "Facial axis less 90": lambda f: inner(f.N, f.Ba, f.PT, ricketts_gnathion(f, f.Go, f.Me)) - 90,
    "Angle of convexity": lambda f: -turn(f.N, f.A, f.A, f.Pog),
    "A-B plane angle": lambda f: turn(f.N, f.Pog, f.A, f.B),
    "Y axis": lambda f: fall(f.S, f.Gn, f.Po, f.Or),
    "Cant of occlusal plane": lambda f: fall(*downs_plane(f), f.Po, f.Or),
    "Functional occlusal plane to FH": lambda f: fall(*functional_plane(f), f.Po, f.Or),
    "Occlusal plane to SN": steiner_plane,
    "Occlusal plane to Go-Me": lambda f: fall(f.Go, f.Me, *downs_plane(f)),
    "Occlusal plane to Xi-PM": lambda f: fall(f.Xi, f.PM, *functional_plane(f)),
    "Interincisal angle": lambda f: (inner(f.U1, f.U1R, f.L1, f.L1R) if left(f.L1R - f.L1 + f.U1, f.U1R, f.U1) < 0
                                     else 360 - inner(f.U1, f.U1R, f.L1, f.L1R)),
    "Intermolar angle": lambda f: (inner(f.UMo, f.UMoR, f.LMo, f.LMoR)
                                   if left(f.LMoR - f.LMo + f.UMo, f.UMoR, f.UMo) < 0
                                   else 360 - inner(f.UMo, f.UMoR, f.LMo, f.LMoR)),
    "U1 to SN": lambda f: inner(f.N, f.S, f.U1R, f.U1),
    "U1 to palatal plane": lambda f: inner(f.ANS, f.PNS, f.U1R, f.U1),
    "U1 to palatal plane, front": lambda f: inner(f.PNS, f.ANS, f.U1R, f.U1),
    "L1 to Go-Me": lambda f: inner(f.Me, f.Go, f.L1R, f.L1),
    "L1 to occlusal plane": lambda f: 90 - inner(*downs_plane(f), f.L1R, f.L1),
    "U1 to NA angle": lambda f: crown_ahead(f.U1R, f.U1, f.N, f.A),
    "L1 to NB angle": lambda f: -crown_ahead(f.L1, f.L1R, f.N, f.B),
    "U1 to NA distance": lambda f: left(f.U1, f.N, f.A),
    "L1 to NB distance": lambda f: forward_of_nb(f, f.L1),
    "Pog to NB": lambda f: forward_of_nb(f, f.Pog),
    "L1 to NB less Pog to NB": lambda f: forward_of_nb(f, f.L1) - forward_of_nb(f, f.Pog),
    "Holdaway ratio": lambda f: forward_of_nb(f, f.L1) / forward_of_nb(f, f.Pog),
    "U1 to A-Pog": lambda f: left(f.U1, f.A, f.Pog),
    "L1 to A-Pog": lambda f: left(f.L1, f.A, f.Pog),
    "U1 to N-Pog": lambda f: left(f.U1, f.N, f.Pog),
    "Convexity": lambda f: left(f.A, f.N, f.Pog),
    "A to N-perpendicular": lambda f: ahead(f.A, f.N, *face_forward(f)),
    "Pog to N-perpendicular": lambda f: ahead(f.Pog, f.N, *face_forward(f)),
    "U1 to A vertical": lambda f: ahead(f.U1, f.A, *face_forward(f)),
    "FMA": lambda f: fall(f.Go, f.Me, f.Po, f.Or),
    "FMIA": fmia,
    "IMPA": lambda f: inner(f.Me, f.Go, f.L1R, f.L1),
    "FMIA wished": wished_fmia,
    "FMIA less what is wished": lambda f: fmia(f) - wished_fmia(f),
    "Z angle": lambda f: min(inner(f.Po, f.Or, f["Pog(s)"], lip) for lip in (f.TUL, f.TLL)),
    "ODI": lambda f: inner(f.A, f.B, f.Go, f.Me) + fall(f.PNS, f.ANS, f.Po, f.Or),
    "APDI": lambda f: inner(f.PNS, f.ANS, f.B, f.A),
    "Combination factor": lambda f: inner(f.A, f.B, f.Go, f.Me) + fall(f.PNS, f.ANS, f.Po, f.Or) +
                          inner(f.PNS, f.ANS, f.B, f.A),
    "A-B to Go-Me": lambda f: inner(f.A, f.B, f.Go, f.Me),

    "Ar-tGo": lambda f: dist(f.Ar, tangent_gonion(f)),
    "tGo-Me": lambda f: dist(f.Me, tangent_gonion(f)),
    "S-tGo": lambda f: dist(f.S, tangent_gonion(f)),
    "Face height ratio": lambda f: 100 * dist(f.S, tangent_gonion(f)) / dist(f.N, f.Me),
    "S-Go in % of N-Me": lambda f: 100 * dist(f.S, f.Go) / dist(f.N, f.Me),
    "ANS-Me in % of N-Me": lambda f: 100 * dist(f.ANS, f.Me) / dist(f.N, f.Me),
    "Go-Gn in % of S-N": lambda f: 100 * dist(f.Go, f.Gn) / dist(f.S, f.N),
    "S-Ar in % of Ar-tGo": lambda f: 100 * dist(f.S, f.Ar) / dist(f.Ar, tangent_gonion(f)),
    "Height index": lambda f: 100 * abs(left(f.N, f.PNS, f.ANS) / left(f.Gn, f.PNS, f.ANS)),
    "ANS to Sto": lambda f: dist(f.ANS, f.Sto),
    "Me to palatal plane": lambda f: -left(f.Me, f.PNS, f.ANS),
    "Face height index": lambda f: dist(f.Ar, f.Go) / -left(f.Me, f.PNS, f.ANS),
    "Antegonial notch depth": lambda f: abs(left(f.Agn, f["Go(L)"], f.Me)),

    "Cd-Gn less Cd-A": lambda f: dist(f.Cd, f.Gn) - dist(f.Cd, f.A),
    "Cd-Gn that fits Cd-A": jaw_that_fits,
    "ANS-Me that fits Cd-A": height_that_fits,
    "Cd-Gn less what fits": lambda f: dist(f.Cd, f.Gn) - jaw_that_fits(f),
    "ANS-Me less what fits": lambda f: dist(f.ANS, f.Me) - height_that_fits(f),

    "F angle Se-N-A": lambda f: angle(f.Se, f.N, f.A),
    "J angle to Se-N": lambda f: 90 - fall(f.PNS, f.ANS, f.Se, f.N),
    "Go-Gn less Se-N": lambda f: dist(f.Go, f.Gn) - dist(f.Se, f.N),
    "Maxilla A-PNS": maxilla,
    "Maxilla in % of Se-N": lambda f: 100 * maxilla(f) / dist(f.Se, f.N),
    "Maxilla less 2/3 of Go-Gn": lambda f: maxilla(f) - dist(f.Go, f.Gn) / 3 * 2,
    "Ramus less 5/7 of Go-Gn": lambda f: dist(f.Ar, f.Go) - dist(f.Go, f.Gn) / 7 * 5,

    "CdE-S on FH": lambda f: ahead(f.S, f.CdE, *face_forward(f)),
    "S-Ptm on FH": lambda f: ahead(f.Ptm, f.S, *face_forward(f)),
    "Ptm-ANS on FH": lambda f: ahead(f.ANS, f.Ptm, *face_forward(f)),
    "Ptm-U6 on FH": lambda f: ahead(mid(f.UMo, f["UMo(D)"]), f.Ptm, *face_forward(f)),
    "CdE-Pog on Go-Me": lambda f: ahead(f.Pog, f.CdE, f.Go, f.Me),
    "Upper sum less lower jaw": lambda f: ahead(f.ANS, f.CdE, *face_forward(f)) +
                                ahead(mid(f.UMo, f["UMo(D)"]), f.Ptm, *face_forward(f)) - ahead(f.Pog, f.CdE, f.Go, f.Me),

    "Maxillary base": lambda f: dist(bases(f)[0], bases(f)[1]),
    "Mandibular base": lambda f: dist(bases(f)[2], bases(f)[3]),
    "Front lower face height, A to B": lambda f: dist(bases(f)[1], bases(f)[3]),
    "Rear lower face height, Ptm to J": lambda f: dist(bases(f)[0], bases(f)[2]),
    "Maxillary less mandibular base": lambda f: dist(bases(f)[0], bases(f)[1]) - dist(bases(f)[2], bases(f)[3]),
    "Lower face heights less maxillary base": lambda f: (dist(bases(f)[1], bases(f)[3]) + dist(bases(f)[0], bases(f)[2]))
                                              / 2 - dist(bases(f)[0], bases(f)[1]),

    "Overjet on OL": lambda f: ahead(f.U1, f.L1, f.OLr, f.OLf),
    "Molar relation on OL": lambda f: ahead(f.UMo, f.LMo, f.OLr, f.OLf),
    "U1 in the upper jaw": lambda f: ahead(f.U1, f.A, f.OLr, f.OLf),
    "L1 in the lower jaw": lambda f: ahead(f.L1, f.Pog, f.OLr, f.OLf),
    "UMo in the upper jaw": lambda f: ahead(f.UMo, f.A, f.OLr, f.OLf),
    "LMo in the lower jaw": lambda f: ahead(f.LMo, f.Pog, f.OLr, f.OLf),

    "Beta angle": beta,
    "Beta angle expected": lambda f: 0.44 * sna(f) + 0.275 * plane_angle(f) - 13.7,
    "Beta angle less expected": lambda f: beta(f) + 13.7 - 0.44 * sna(f) - 0.275 * plane_angle(f),
    "A-B on the bisector plane": lambda f: ahead(f.A, f.B, *bisector(f)),
    "A-B on the bisector expected, mm": lambda f: 30.7 - 0.318 * sna(f) - 0.225 * plane_angle(f),
    "A-B on the bisector less expected, mm": lambda f: ahead(f.A, f.B, *bisector(f)) - 30.7 + 0.318 * sna(f) +
                                         0.225 * plane_angle(f),
    "YEN angle": lambda f: angle(f.S, f.Mp, f.Gs),
    "W angle": lambda f: angle(foot(f.Mp, f.S, f.Gs), f.Mp, f.Gs),
    "SAR angle": lambda f: angle(foot(f.Mp, f.Wk, f.Gs), f.Mp, f.Gs),
    "HBN angle": lambda f: angle(foot(f.Mp, f.CA, f.Gs), f.Mp, f.Gs),
    "Tau angle": lambda f: angle(f.Tse, f.Gs, f.Mp),
    "Pi angle": lambda f: turn(f.Mp, f.Gs, f.TV1, f.TV2),
    "Pi linear": lambda f: left(f.Mp, f.TV1, f.TV2) - left(f.Gs, f.TV1, f.TV2),
    "R angle": lambda f: angle(f.N, f.CA, f.Me),
    "AO-BO": lambda f: ahead(f.A, f.B, *functional_plane(f)),
    "A-B on FH": lambda f: ahead(f.A, f.B, *face_forward(f)),
    "A-B on palatal plane": lambda f: ahead(f.A, f.B, f.PNS, f.ANS),
    "A-B on occlusal plane": wits_of_downs,
    "FH to A-B": lambda f: inner(f.Or, f.Po, f.A, f.B),
    "AXB angle": lambda f: angle(f.A, foot(f.A, f.Po, f.Or), f.B),
    "AXD angle": lambda f: angle(f.A, foot(f.A, f.S, f.N), f.D),
    "ANB corrected for SNA": lambda f: anb(f) - (sna(f) - 81) / 2,
    "ANB corrected for the palatal plane": lambda f: anb(f) - (fall(f.PNS, f.ANS, f.S, f.N) - 8) / 2,
    "L1 to Go-Me and planes together": lambda f: inner(f.Me, f.Go, f.L1R, f.L1) + fall(f.Go, f.Me, f.PNS, f.ANS),
    "Growth type": growth_type,

    "Maxillary height": lambda f: angle(f.N, cf(f), f.A),
    "Porion to PTV": lambda f: ahead(f.Po, f.PTV, *face_forward(f)),
    "Rear face height, Go to CF": lambda f: dist(f.Go, cf(f)),
    "Xi below the occlusal plane": lambda f: -left(f.Xi, *functional_plane(f)),
    "Sto above the occlusal plane": lambda f: left(f.Sto, *functional_plane(f)),
    "Pog to the plumb line through N": lambda f: left(f.Pog, f.TV1, f.TV2) - left(f.N, f.TV1, f.TV2),
    "N-Pog to the horizon": lambda f: 90 + turn(f.TV1, f.TV2, f.N, f.Pog),
    "Factor 1, N-A to the vertical": lambda f: inner(f.Or, f.Po, f.N, f.A) - 90,
    "Factor 2, A-B to the vertical": lambda f: 90 - inner(f.Or, f.Po, f.A, f.B),
    "B-Pog to S-N": lambda f: inner(f.S, f.N, f.Pog, f.B),
    "H angle to NB": h_angle,
    "ANB less expected": lambda f: anb(f) - (-45.359 + 0.493 * sna(f) + 0.251 * ml(f)),
    "A-B on occlusal plane less expected, mm": lambda f: wits_of_downs(f) - (57.510 + 1.526 * anb(f) - 0.634 * sna(f) -
                                                                       0.666 * steiner_plane(f)),
    "H angle to NB less expected, degrees": lambda f: h_angle(f) - (anb(f) - 1.3 * forward_of_nb(f, f.Pog) + 10.5),
    "L1 to NB less expected, mm": lambda f: forward_of_nb(f, f.L1) - (0.5 * anb(f) - 0.35 * forward_of_nb(f, f.Pog) + 3.9),
}}

# Burstone's horizontal falls by 12.278 mm on 100 from S-N, 7 degrees.
def horizontal(f):
    return f.S, f.S + (f.N - f.S) * complex(1, -0.12278)


def on_hp(x, of):
    return lambda f: ahead(f[x], f[of], *horizontal(f))


def below(x, of):
    """How far x lies below a point, square to the horizontal."""
    return lambda f: abs(left(f[x], *horizontal(f)) - left(f[of], *horizontal(f)))


def arcs_centre(f):
    """Sassouni's O: where the palatal plane meets the tangent of the lower border."""
    return cross(f.PNS, f.ANS, f["Go(L)"], f.Me)


def arc(x, y):
    return lambda f: dist(arcs_centre(f), f[x]) - dist(arcs_centre(f), f[y])


ITEMS["lateral"] |= {
    "SND": lambda f: angle(f.S, f.N, f.D),
    "S-L": lambda f: ahead(f.Pog, f.S, f.S, f.N),
    "S-E": lambda f: ahead(f.S, f.CdE, f.S, f.N),
    "Mandibular plane angle": lambda f: fall(f["Go(L)"], f.Me, f.Po, f.Or),
    "Mandibular plane": lambda f: fall(f["Go(L)"], f.Me, f.Po, f.Or),
    "Palatal to mandibular plane": lambda f: fall(f["Go(L)"], f.Me, f.PNS, f.ANS),
    "L1 to mandibular plane": lambda f: inner(f.Me, f["Go(L)"], f.L1R, f.L1),
    "L1 to mandibular plane less 90": lambda f: inner(f.Me, f["Go(L)"], f.L1R, f.L1) - 90,
    "L1 to Go-Gn": lambda f: inner(f.Gn, f.Go, f.L1R, f.L1),
    "Gonial angle, tGo to Gn": lambda f: angle(f.Ar, tangent_gonion(f), f.Gn),
    "CdE-ANS": lambda f: dist(f.CdE, f.ANS),
    "CdE-Gn": lambda f: dist(f.CdE, f.Gn),
    "Unit difference": lambda f: dist(f.CdE, f.Gn) - dist(f.CdE, f.ANS),
    "Upper face share": lambda f: 100 / (1 + dist(f.ANS, f.Me) / dist(f.N, f.ANS)),
    "Body to cranial base": lambda f: dist(tangent_gonion(f), f.Me) / dist(f.S, f.N),

    "Facial depth": lambda f: inner(f.Or, f.Po, f.N, f.Pog),
    "Lower facial height": lambda f: angle(f.ANS, f.Xi, f.PM),
    "Total facial height": lambda f: fall(f.Xi, f.PM, f.Ba, f.N),
    "Mandibular arc": lambda f: 180 - angle(f.DC, f.Xi, f.PM),
    "Maxillary depth": lambda f: inner(f.Or, f.Po, f.N, f.A),
    "Cranial deflection": lambda f: fall(f.Po, f.Or, f.Ba, f.N),
    "Anterior cranial base": lambda f: dist(f.N, cross(f.Ba, f.N, f.PT, ricketts_gnathion(f, f["Go(L)"], f.Me))),
    "Ramus position": lambda f: angle(f.Po, cf(f), f.Xi),
    "Corpus, Xi to PM": lambda f: dist(f.Xi, f.PM),
    "Molar relation": lambda f: ahead(f["UMo(D)"], f["LMo(D)"], *functional_plane(f)),
    "Overjet": lambda f: ahead(f.U1, f.L1, *functional_plane(f)),
    "Overbite": lambda f: left(f.L1, *functional_plane(f)) - left(f.U1, *functional_plane(f)),
    "L1 extrusion": lambda f: left(f.L1, *functional_plane(f)),
    "L1 to A-Pog, distance": lambda f: left(f.L1, f.A, f.Pog),
    "L1 to A-Pog, angle": lambda f: -crown_ahead(f.L1, f.L1R, f.A, f.Pog),
    "U1 to A-Pog, distance": lambda f: left(f.U1, f.A, f.Pog),
    "U1 to A-Pog, angle": lambda f: crown_ahead(f.U1R, f.U1, f.A, f.Pog),
    "U6 to PTV": lambda f: ahead(f["UMo(D)"], f.PTV, *face_forward(f)),

    "Arc, ANS less Pog": arc("ANS", "Pog"),
    "Arc, A less B": arc("A", "B"),
    "Arc, U1 less ANS": arc("U1", "ANS"),
    "Palatal to occlusal plane": lambda f: fall(*downs_plane(f), f.PNS, f.ANS),
    "Occlusal to mandibular plane": lambda f: fall(f["Go(L)"], f.Me, *downs_plane(f)),
    "Upper less lower face height": lambda f: dist(f.N, f.ANS) - dist(f.ANS, f.Me),

    "Ar-Ptm on HP": on_hp("Ptm", "Ar"),
    "Ptm-N on HP": on_hp("N", "Ptm"),
    "N-A horizontal": on_hp("A", "N"),
    "N-B horizontal": on_hp("B", "N"),
    "N-Pog horizontal": on_hp("Pog", "N"),
    "PNS-ANS on HP": on_hp("ANS", "PNS"),
    "N-ANS vertical": below("ANS", "N"),
    "ANS-Gn vertical": below("Gn", "ANS"),
    "PNS-N vertical": below("PNS", "N"),
    "Go-Gn to HP": lambda f: fall(f.Go, f.Gn, f.S, f.N) - 7,
    "Occlusal plane to HP": lambda f: steiner_plane(f) - 7,
    "B-Pog on Go-Gn": lambda f: ahead(f.Pog, f.B, f.Go, f.Gn),
    "U1 to palatal plane, height": lambda f: abs(left(f.U1, f.PNS, f.ANS)),
    "U6 to palatal plane, height": lambda f: abs(left(f.UMo, f.PNS, f.ANS)),
    "L1 to Go-Gn, height": lambda f: abs(left(f.L1, f.Go, f.Gn)),
    "L6 to Go-Gn, height": lambda f: abs(left(f.LMo, f.Go, f.Gn)),
}

# Straight distances, named by their ends.
for a, b in (pair.split("-") for pair in """S-N Ba-N S-Ba S-Ar PNS-ANS PNS-A S-ANS S-PNS Ba-ANS Cd-A Cd-Gn Cd-Pog Cd-Go
        Go-Pog Ar-Go Ar-Gn Ar-Pog Ar-Me N-ANS ANS-Me N-Me S-Go S-Me S-Pog Go-Gn Se-N N-Go S-Gn""".split()):
    ITEMS["lateral"][f"{a}-{b}"] = lambda f, a=a, b=b: dist(f[a], f[b])
for x in "A Pog Ar U1 L1 UMo LMo".split():
    ITEMS["lateral"][f"OLp to {x}"] = lambda f, x=x: on_ol(f, f[x])
# Coben: along the Frankfort plane, alone and in percent of Ba-N along it.
for a, b in (pair.split("-") for pair in "Ba-S Ptm-A Ba-A Ar-Go S-Ptm Ba-N".split()):
    ITEMS["lateral"][f"{a}-{b} on FH"] = lambda f, a=a, b=b: ahead(f[b], f[a], *face_forward(f))
    if b != "N":
        ITEMS["lateral"][f"{a}-{b} in % of Ba-N"] = lambda f, a=a, b=b: (100 * ahead(f[b], f[a], *face_forward(f)) /
                                                                       ahead(f.N, f.Ba, *face_forward(f)))
