"""Analyses: what they measure, and their norms."""

from __future__ import annotations

import functools
import html
import os
from collections.abc import Iterable, Sequence
from typing import TYPE_CHECKING, Any, NamedTuple, Optional, Union

import numpy as np
import numpy.typing as npt

from cephtool import _engine
from cephtool._arrays import Floats, age_years, one_for_each, sex_code, stage_place
from cephtool._errors import warn
from cephtool._files import PathLike, write_file
from cephtool._frames import measured
from cephtool.cases import Case, landmark_names
from cephtool.landmark_errors import Errors, errors_wanted

if TYPE_CHECKING:
    import pandas


class Item(NamedTuple):
    """What an analysis measures."""

    name: str
    unit: str  #: ``"deg"``, ``"mm"``, ``"%"``, ``"SD"`` or empty
    formula: str  #: docs/formula_language.md
    sign: str  #: what a positive value means; empty when the file does not say
    japanese: str  #: its Japanese name, likewise
    unverified: str  #: why its norm is to be doubted; empty for one whose source was seen


class Values(NamedTuple):
    """What an analysis says about an array of landmarks: arrays (n_cases, n_items), NaN where there is nothing.

    An item whose result is a text has no value. Norms and errors are None where they were not wanted.
    """

    items: tuple[str, ...]
    value: Floats  #: degrees, mm, percent, SD or ratios, as `Analysis.items` says
    mean: Optional[Floats]  #: of the norm that is the patient's
    sd: Optional[Floats]
    deviation: Optional[Floats]  #: of the value from the mean, in SD
    error: Optional[Floats] = None  #: standard error of the value, in its unit
    deviation_error: Optional[Floats] = None  #: of the deviation, in SD
    mostly: Optional[npt.NDArray[np.int64]] = None  #: place of the landmark that contributes most to it; -1: none
    share: Optional[Floats] = None  #: of the variance that this landmark makes up, 0 to 1
    assumed: Optional[npt.NDArray[np.bool_]] = None  #: whether it rests on errors of landmarks that nobody measured


class Analysis:
    """An analysis: items, how they are measured, their norms. Never changes; threads may share it; it can be pickled.

    Get one from `cephtool.analysis`, from a `Folder`, or of your own with `read` and `from_text`.
    """

    _analysis: _engine.Analysis
    _origin: tuple[Any, ...]

    @classmethod
    def _of(cls, analysis: _engine.Analysis, *origin: Any) -> Analysis:
        new = cls.__new__(cls)
        new._analysis = analysis
        new._origin = origin
        return new

    @classmethod
    def read(cls, path: PathLike, kind: str = "lateral") -> Analysis:
        """An analysis from a definition file (docs/formula_language.md), for cases of a kind. Raises `Error`."""
        analysis, notes = _engine.Analysis.in_file(path, kind)
        for note in notes:
            warn(note)
        return cls._of(analysis, Analysis.read, os.fspath(path), kind)

    @classmethod
    def from_text(cls, text: str, kind: str = "lateral", name: str = "analysis") -> Analysis:
        """An analysis from a definition. The first fault that ``cephtool check`` finds raises an `Error`."""
        return cls._of(_engine.Analysis.of_text(name, text, kind), Analysis.from_text, text, kind, name)

    def __reduce__(self) -> tuple[Any, ...]:
        return self._origin[0], self._origin[1:]

    @property
    def name(self) -> str:
        """Of its file, without extension: ``"Steiner"``."""
        return self._analysis.name

    @property
    def title(self) -> str:
        return self._analysis.title

    @property
    def kind(self) -> str:
        """``"lateral"``, ``"frontal"``, ``"model"`` (of casts), or ``"diagnosis"``, ``"surgery"``: sheets with findings."""
        return self._analysis.kind

    @property
    def case_kind(self) -> str:
        """Of the cases that it is for: ``"lateral"``, also for sheets with findings, ``"frontal"`` or ``"model"``."""
        return self._analysis.case_kind

    @property
    def population(self) -> str:
        """Whose norms these are, in the file's words: ``"Japanese adults (日本人成人)"``; empty when it does not say."""
        return self._analysis.population[1]

    @property
    def variant_of(self) -> str:
        """The file that this one has norms of another population for; empty for an analysis of its own."""
        return self._analysis.variant_of

    @property
    def comment(self) -> str:
        """Where the norms come from."""
        return self._analysis.comment

    @property
    def landmarks(self) -> list[str]:
        """Landmarks that the items need, in the order met; of casts all. Arrays of points have this order."""
        named = self._analysis.landmarks
        return list(dict.fromkeys(landmark_names("model") + named)) if self.case_kind == "model" else named

    @functools.cached_property
    def items(self) -> list[Item]:
        """What it measures, in the order of the file, without headings."""
        return [Item(name, unit, text, *words) for name, unit, text, heading, *words in self._analysis.items
                if not heading]

    def measure(self, cases: Union[Case, Iterable[Case]], *, error: Errors = False, form: str = "long",
                band: Optional[int] = None, language: str = "en") -> pandas.DataFrame:
        """What the analysis says about cases, as `cephtool.measure`."""
        return measured(cases, [self], error, form, band, language)

    def measure_points(self, points: npt.ArrayLike, *, mm_per_pixel: Union[float, npt.ArrayLike],
                       landmarks: Optional[Sequence[str]] = None,
                       sex: Union[str, None, Sequence[Optional[str]]] = None,
                       age: Union[float, None, npt.ArrayLike] = None,
                       dental_stage: Union[str, None, Sequence[Optional[str]]] = None, norms: bool = True,
                       error: Errors = False) -> Values:
        """What the analysis says about an array of landmarks.

        Other threads run meanwhile: for all cores, measure slices of the array in a ThreadPoolExecutor.

        Parameters
        ----------
        points : array (n_cases, n_landmarks, 2)
            In pixels, x to the right, y down; a lateral face looks right. NaN, and (0, 0), is not placed. An array of
            float64 is not copied, whatever its strides. When a coordinate of a case has a fraction, all of its
            coordinates are taken to 1/64 pixel (docs/case_format.md).
        mm_per_pixel : float or array (n_cases,)
        landmarks : sequence of str, optional
            Names of the points, in their order; those of `Analysis.landmarks` without it. Others than the kind's are
            your own, of at most five characters.
        sex : str, None, or one for each case
            ``"male"`` or ``"female"``; None is not known. Then norms that differ are NaN.
        age : float, None or array (n_cases,)
            In years, as `Case.age`; None and NaN are not known.
        dental_stage : str, None, or one for each case
            ``"I"`` to ``"VA"``.
        norms : bool
            Whether means, SDs and deviations are wanted.
        error : bool or LandmarkErrors
            Whether standard errors are: from those of the landmarks that ship, or from these. Lateral ones lie along
            Frankfort: where ``landmarks`` lack ``"Po"`` or ``"Or"`` it is taken as S-N less 7 degrees, without these as
            the film's width.

        Returns
        -------
        Values
            Arrays (n_cases, n_items).

        Raises
        ------
        Error
            For arrays of another shape, coordinates beyond 1000000, a name that no landmark can have.
        """
        names = self.landmarks if landmarks is None else list(landmarks)
        if len(set(names)) != len(names):
            raise ValueError("a landmark is named twice")
        array = np.asarray(points, dtype=np.float64)
        found = _engine.measure_points(self._analysis, array, names, one_for_each(mm_per_pixel, "mm_per_pixel"),
                                       one_for_each(sex, "sex", sex_code), one_for_each(age, "age", age_years),
                                       one_for_each(dental_stage, "dental_stage", stage_place), norms,
                                       errors_wanted(error))
        return Values(tuple(item.name for item in self.items), *found)

    def __repr__(self) -> str:
        return f"<Analysis {self.name!r}, {self.kind}, {len(self.items)} items>"

    def _repr_html_(self) -> str:
        rows = "".join("<tr>" + "".join(f"<td>{html.escape(text)}</td>" for text in item[:5]) + "</tr>"
                       for item in self.items)
        return (f"<b>{html.escape(self.title)}</b><p>{html.escape(self.comment)}</p>"
                f"<table><tr><th>Item</th><th>Unit</th><th>Formula</th><th>Positive</th><th>Japanese</th></tr>{rows}</table>")


def compose(title: str, *parts: Union[Analysis, tuple[Analysis, Union[str, Iterable[str]]]],
            path: Optional[PathLike] = None) -> Analysis:
    """An analysis made of items of others: ``compose("Ours", (analysis("Steiner"), ["SNA", "SNB"]), analysis("Wits"))``.

    Each item has the value, norms and deviation that its own analysis gives; what formulas refer to comes along.

    Parameters
    ----------
    title : str
    *parts : Analysis, or Analysis and names of its items
        In the order in which they are to stand; without names all items.
    path : path, optional
        Where to write the definition, too, as ``cephtool compose`` does.

    Raises
    ------
    Error
        The items are of unlike kinds of cases, or their norms have no common stages.
    KeyError
        An analysis has no such item.
    """
    analyses: list[Analysis] = []
    items: list[tuple[int, int]] = []
    for part in parts:
        whose, wanted = part if isinstance(part, tuple) else (part, None)
        if whose not in analyses:
            analyses.append(whose)
        places = {item[0]: place for place, item in enumerate(whose._analysis.items) if not item[3]}
        names = [wanted] if isinstance(wanted, str) else wanted
        items += [(analyses.index(whose), place) for place in
                  (range(len(whose._analysis.items)) if names is None else [places[name] for name in names])]
    text = _engine.Analysis.composed(title, [analysis._analysis for analysis in analyses], items)
    if path is not None:
        write_file(path, text.encode("cp932"))
    return Analysis.from_text(text, analyses[0].case_kind, title)
