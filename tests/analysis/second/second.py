#!/usr/bin/env python3
"""Works out the items of the shipped analyses a second time, from their definitions in words, on made-up faces and casts.

Writes subjects.tsv and values.tsv beside itself or into the folder given; the tests measure the same subjects with the
shipped files and compare, and run this again to see that the kept tables are its own. Standard library only.

A module has ITEMS, for each kind the items it knows: {"lateral": {"SNA": lambda f: angle(f.S, f.N, f.A)}}. `f` holds the
points as geometry.py wants them, by attribute or f["Go(L)"]; an item's name means one measure in every file, and its value is a
number, or the text of a finding. Beside it OWN, places of own landmarks on the average face that it lacks (pixels, per kind), OWN_JAW and
OWN_UPPER, those that go with the jaws; CASTS, subjects of its own: {"crowded": (mm_per_pixel, {"11m": 1200+500j})}.
"""
import csv
import sys

sys.dont_write_bytecode = True  # beside the sources
from pathlib import Path

import casts
import faces
import frontal
import lateral_hard
import soft_and_airway

MODULES = (lateral_hard, soft_and_airway, frontal, casts)


class Points(dict):
    __getattr__ = dict.__getitem__


def merged(name, kind):
    result = {}
    for module in MODULES:
        for key, value in getattr(module, name, {}).get(kind, {}).items():
            if key in result:
                sys.exit(f"{module.__name__}: {kind} {key} stands in another module, too")
            result[key] = value
    return result


def names(name):
    return [n for module in MODULES for n in getattr(module, name, ())]


def main():
    folder = Path(sys.argv[1] if len(sys.argv) > 1 else __file__).resolve()
    folder = folder if folder.is_dir() else folder.parent
    subjects = {
        "lateral": faces.lateral(merged("OWN", "lateral"), names("OWN_JAW"), names("OWN_UPPER")),
        "frontal": faces.frontal(merged("OWN", "frontal")),
        "cast": {n: s for module in MODULES for n, s in getattr(module, "CASTS", {}).items()},
    }
    with open(folder / "subjects.tsv", "w", newline="", encoding="utf-8") as points, \
            open(folder / "values.tsv", "w", newline="", encoding="utf-8") as values:
        points, values = (csv.writer(f, delimiter="\t", lineterminator="\n") for f in (points, values))
        for kind, of_kind in subjects.items():
            of_kind = {name: faces.on_the_film(subject) for name, subject in of_kind.items()}
            for name, (scale, face) in of_kind.items():
                points.writerow([kind, name, scale])
                points.writerows([landmark, f"{p.real:.9g}", f"{p.imag:.9g}"] for landmark, p in face.items())
            measured = [Points(faces.in_mm(subject)) for subject in of_kind.values()]
            for item, measure in merged("ITEMS", kind).items():
                found = [measure(face) for face in measured]
                values.writerow([kind, item, *(v if isinstance(v, str) else f"{v:.9g}" for v in found)])


main()
