"""Cephalometric analyses of head films, of casts and of arrays of landmarks.

Cases go in, numbers come out::

    import cephtool

    cases = cephtool.read("films")                    # a folder, a table, a file
    steiner = cephtool.analysis("Steiner")
    steiner.measure(cases)                            # a pandas DataFrame
    steiner.measure_points(points, mm_per_pixel=0.1)  # arrays, from an array (n_cases, n_landmarks, 2)
    cephtool.formula("angle1([S],[N],[A])")(points)   # a formula of your own

The numbers are those of the program ``cephtool``, to the last bit. Coordinates are pixels of the image, x to the right,
y down; a lateral face looks right. Lengths are mm, angles degrees.

What is wrong with an input raises `Error`, which names file, line, column and the way out. What changes how numbers
are to be read, such as a mirrored film, is warned of with `Remark`. All objects but arrays are immutable, and may be
shared by threads; measuring and reading let other threads run.
"""

from cephtool import _setup as _setup
from cephtool import geometry, line_image, shapes
from cephtool._engine import version as __version__
from cephtool._errors import Error, Remark
from cephtool.analyses import Analysis, Item, Values, compose
from cephtool.cases import Case, landmark_names, read
from cephtool.dates import Age, Era, age, date, era
from cephtool.folders import DisplayMode, Folder, analysis
from cephtool.formulas import Formula, formula
from cephtool.growth import GrowthFinding, growth
from cephtool.landmark_errors import LandmarkError, LandmarkErrors
from cephtool.measuring import measure
from cephtool.photographs import Photograph, photograph
from cephtool.study import Agreement, Study, agreement, reliability
from cephtool.tracings import Tracing

__all__ = [
    "Age", "Agreement", "Analysis", "Case", "DisplayMode", "Era", "Error", "Folder", "Formula", "GrowthFinding",
    "Item", "LandmarkError", "LandmarkErrors", "Photograph", "Remark", "Study", "Tracing", "Values", "__version__",
    "age", "agreement", "analysis", "compose", "date", "era", "formula", "geometry", "growth", "landmark_names", "line_image",
    "measure", "photograph", "read", "reliability", "shapes",
]
