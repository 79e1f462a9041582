"""How well readings of the same films agree."""

from __future__ import annotations

import functools
import io
from collections.abc import Iterable, Mapping, Sequence
from typing import TYPE_CHECKING, Any, NamedTuple, Optional, Union

import numpy as np
import numpy.typing as npt

from cephtool import _engine
from cephtool._arrays import Floats
from cephtool._errors import warn
from cephtool.analyses import Analysis
from cephtool.cases import Case
from cephtool.folders import shipped_folder
from cephtool.landmark_errors import LandmarkErrors

if TYPE_CHECKING:
    import pandas
    from matplotlib.axes import Axes

Interval = tuple[float, float]


class IntraclassCorrelation(NamedTuple):
    """Of single readings."""

    value: float
    interval: Interval  #: of 95 %


class PairAgreement(NamedTuple):
    """A further reading against the first, in the unit of the readings."""

    bias: float  #: mean of its values less those of the first
    bias_interval: Interval  #: of 95 %
    sd_of_differences: float
    t: Optional[float]  #: of the paired t test; None when all differences are the same
    p: Optional[float]  #: two-sided
    dahlberg: float  #: Dahlberg's error
    limits: Interval  #: of agreement: bias -/+ 1.96 SD (Bland and Altman, Lancet 1986;1:307-310)
    limit_error: float  #: standard error of either limit


class Agreement(NamedTuple):
    """Error of the method, in the unit of the readings."""

    mean: float
    technical_error: float  #: of measurement; of two readings it is Dahlberg's error
    icc21: Optional[IntraclassCorrelation]  #: agreement of readers who stand for others (Shrout and Fleiss, Psychol Bull 1979)
    icc31: Optional[IntraclassCorrelation]  #: consistency of these readers; None where all values are the same
    pairs: list[PairAgreement]  #: of each reading behind the first


def agreement(readings: npt.ArrayLike) -> Agreement:
    """How well readings of the same films agree.

    Parameters
    ----------
    readings : array (n_films, n_readings)
        Of each film the value of each reading: two by one observer, or one each by several.

    Raises
    ------
    Error
        Fewer than three films or two readings, or a value that is missing.
    """
    mean, technical_error, icc21, icc31, pairs = _engine.agreement(np.asarray(readings, dtype=np.float64))
    return Agreement(mean, technical_error, IntraclassCorrelation(*icc21) if icc21 else None,
                     IntraclassCorrelation(*icc31) if icc31 else None, [PairAgreement(*pair) for pair in pairs])


class Study:
    """How well readings of the same films agree, for every landmark and item. Get one from `reliability`.

    Attributes
    ----------
    films, readings : int
        How many films all readings have, and how many readings there are.
    table, csv, json : str
        What ``cephtool reliability`` prints.
    """

    def __init__(self, study: _engine.Study) -> None:
        self._study = study
        self.films = study.films
        self.readings = study.readings
        self.table = study.table
        self.csv = study.csv
        self.json = study.json

    @functools.cached_property
    def _frame(self) -> Any:
        import pandas
        frame = pandas.read_csv(io.StringIO(self.csv), float_precision="round_trip", keep_default_na=False,
                                na_values={name: [""] for name in self.csv.split("\r\n")[0].split(",")})
        texts = ["analysis", "name", "unit"]
        frame[texts] = frame[texts].fillna("")
        return frame

    @property
    def items(self) -> pandas.DataFrame:
        """A row for each item and reading behind the first; docs/reliability.md tells the columns.

        ``analysis``, ``name``, ``unit``, ``films``, ``reading`` (2, 3, ...), of all readings ``mean``, ``technical_error``,
        ``icc21``, ``icc31`` with ``_low`` and ``_high`` of their 95 % intervals, of this one against the first ``dahlberg``,
        ``bias``, ``t``, ``p``, ``sd_of_differences``, ``limit_low``, ``limit_high``, ``limit_error``, and ``films_needed``.
        """
        frame = self._frame
        return frame[frame.group == "item"].drop(columns="group").reset_index(drop=True)

    @property
    def landmarks(self) -> pandas.DataFrame:
        """As `items`, with ``landmark`` and ``axis``, ``"along"`` or ``"across"`` Frankfort; in mm."""
        frame = self._frame[self._frame.group == "landmark"].drop(columns=["group", "analysis"]).reset_index(drop=True)
        names = frame.pop("name").str.rsplit(" ", n=1)
        frame.insert(0, "landmark", names.str[0])
        frame.insert(1, "axis", names.str[1])
        return frame

    def values(self, item: str, analysis: str = "") -> Floats:
        """What was read of an item, (n_films, n_readings), of the films that have it in all readings.

        Parameters
        ----------
        item : str
        analysis : str
            Its title, where several have the item.
        """
        for title, name, values in self._study.values:
            if name == item and analysis in ("", title):
                return values
        raise KeyError(f"{analysis}:{item}" if analysis else item)

    def places(self, landmark: str) -> Floats:
        """Where readings put a landmark, (n_films, n_readings, 2): mm along and across Frankfort from the film's mean."""
        return dict(self._study.places)[landmark]

    @property
    def errors(self) -> LandmarkErrors:
        """The technical errors of the landmarks, for ``error=`` of `measure` and for a file."""
        return LandmarkErrors._of(self._study.errors(f"{self.films} films, {self.readings} readings"))

    def plot_agreement(self, item: str, analysis: str = "", reading: int = 2, axes: Optional[Axes] = None) -> Axes:
        """Draws the differences of a reading from the first over their means (Bland and Altman, Lancet 1986;1:307-310).

        Parameters
        ----------
        item, analysis : str
            As of `values`.
        reading : int
            Which is held against the first: 2, 3, ...
        axes : matplotlib.axes.Axes, optional
            Where to draw; without it in a new figure.
        """
        values = self.values(item, analysis)[:, [0, reading - 1]]
        rows = self.items
        row = rows[(rows.name == item) & (rows.reading == reading) & ((rows.analysis == analysis) | (analysis == ""))].iloc[0]
        drawn = _axes(axes)
        drawn.scatter(values.mean(axis=1), values[:, 1] - values[:, 0], color="black", s=12)
        drawn.axhline(row.bias, color="0.3")
        for limit in (row.limit_low, row.limit_high):
            drawn.axhline(limit, color="0.3", linestyle="--")
            drawn.axhspan(limit - 1.96 * row.limit_error, limit + 1.96 * row.limit_error, color="0.9", zorder=0)
        unit = {"deg": "degrees"}.get(row.unit, row.unit)
        drawn.set(xlabel=f"{item} ({unit}), mean of both" if unit else f"{item}, mean of both",
                  ylabel=f"reading {reading} less the first", title=f"{item}: bias and 95 % limits of agreement")
        return drawn

    def plot_places(self, landmark: str, axes: Optional[Axes] = None) -> Axes:
        """Draws where readings put a landmark, in mm from the film's mean, and the ellipse in which 95 % of single readings
        lie, when they are normally distributed around where the landmark is."""
        places = self.places(landmark).reshape(-1, 2)
        # Around the mean of their own film they lie closer than around where the landmark is.
        lengths, directions = np.linalg.eigh(places.T @ places * self.readings / (self.readings - 1) / len(places))
        turn = np.linspace(0, 2 * np.pi, 100)
        of_95_percent = np.sqrt(-2 * np.log(0.05))
        ellipse = of_95_percent * (np.stack([np.cos(turn), np.sin(turn)], axis=1) * np.sqrt(lengths.clip(0))) @ directions.T
        drawn = _axes(axes)
        drawn.scatter(*places.T, color="black", s=12)
        drawn.plot(*ellipse.T, color="0.3")
        drawn.set(aspect="equal", xlabel="mm along Frankfort", ylabel="mm across it", title=landmark)
        return drawn

    def __repr__(self) -> str:
        return f"<Study of {self.films} films, {self.readings} readings of each>"

    def _repr_html_(self) -> str:
        columns = ["analysis", "name", "unit", "films", "reading", "technical_error", "icc21", "bias", "p", "limit_low",
                   "limit_high"]
        return str(self.items[columns].round(3).to_html(index=False))


def _axes(axes: Optional[Axes]) -> Axes:
    if axes is not None:
        return axes
    import matplotlib.pyplot
    return matplotlib.pyplot.subplots()[1]


Reading = Union[Sequence[Case], Mapping[str, Case]]


def reliability(readings: Iterable[Reading], analyses: Optional[Iterable[Analysis]] = None, *, repeats: int = 1) -> Study:
    """How well readings of the same films agree, for every landmark and item, as ``cephtool reliability`` tells it.

    Parameters
    ----------
    readings : iterable of readings
        Of each reading its cases: a list as `cephtool.read` gives it, in which films go by the names of their files
        without folder and end, those of a file with several by their number; or a mapping of the films' names to cases.
        All readings of a film lie on the same picture with the same scale.
    analyses : iterable of Analysis, optional
        Whose items are looked at; without it all that ship.
    repeats : int
        How many readings of each observer follow each other: with two observers and two repeats at least, the spread
        of one observer is told apart from that between them.

    Raises
    ------
    Error
        Fewer than two readings, fewer than three films that all of them have, another scale or kind.

    Warns
    -----
    Remark
        Films that not all readings have, and which are left out.
    """
    given = [[(film, case._record) for film, case in
              (reading.items() if isinstance(reading, Mapping) else [("", case) for case in reading])]
             for reading in readings]
    wanted = shipped_folder().for_population() if analyses is None else analyses
    found = _engine.Study(given, [analysis._analysis for analysis in wanted], repeats)
    if found.left_out:
        films = "1 film is" if found.left_out == 1 else f"{found.left_out} films are"
        warn(f"{films} left out, which not all readings have")
    return Study(found)
