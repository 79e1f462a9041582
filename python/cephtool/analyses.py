"""Analyses, folders of them, and formulas."""

from __future__ import annotations

import functools
import html
import os
from collections.abc import Iterable, Iterator, Sequence
from typing import TYPE_CHECKING, Any, NamedTuple, Optional, Union

import numpy as np
import numpy.typing as npt

from cephtool import _engine
from cephtool._errors import warn
from cephtool.cases import Case, PathLike, _write, landmark_names
from cephtool.errors import LandmarkErrors

if TYPE_CHECKING:
    import pandas

Floats = npt.NDArray[np.float64]
Errors = Union[bool, LandmarkErrors]
_OF_ERRORS = ("error", "deviation_error", "mostly", "share", "assumed", "shown", "error_text")


class Item(NamedTuple):
    """What an analysis measures."""

    name: str
    unit: str  #: ``"deg"``, ``"mm"``, ``"%"``, ``"SD"`` or empty
    formula: str  #: docs/formula_language.md
    sign: str  #: what a positive value means; empty when the file does not say
    japanese: str  #: its Japanese name, likewise
    unverified: str  #: why its norm is to be doubted; empty for one whose source was seen


class DisplayMode(NamedTuple):
    """What a tracing can show."""

    kind: str
    name: str
    title: str


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


def _each(values: Any, what: str, of: Any = float) -> Floats:
    """An array (n,) from a number or text for all cases, or one for each. None is what `of` makes of it."""
    if isinstance(values, np.ndarray) and values.dtype == np.float64 and values.ndim <= 1:
        return values.reshape(-1)
    several = not isinstance(values, str) and isinstance(values, Iterable)
    array = np.array([of(value) for value in values] if several else [of(values)], dtype=np.float64)
    if array.ndim != 1:
        raise ValueError(f"{what} is one for all cases, or one for each")
    return array


def _sex(value: Optional[str]) -> float:
    names = {"male": 1.0, "m": 1.0, "female": 2.0, "f": 2.0, None: 0.0}
    if value is None or value != value:
        return 0.0
    if value not in names:
        raise ValueError(f'a sex is "male", "female" or None, not {value!r}')
    return names[value]


def _stage(value: Optional[str]) -> float:
    if value is None or value != value:
        return -1.0
    place = _engine.dental_stage(value)
    if place is None:
        raise ValueError(f'{value!r} is no dental stage; they are "I", "IIA" to "VA"')
    return float(place)


def _number(value: Optional[float]) -> float:
    return float("nan") if value is None else float(value)


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
        """Of the cases that it is for: ``"lateral"``, ``"frontal"`` or ``"model"``."""
        return self._analysis.kind

    @property
    def family(self) -> str:
        """Its kind, or ``"diagnosis"`` or ``"surgery"``: sheets with findings, for lateral cases."""
        return self._analysis.family

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
        return list(dict.fromkeys(landmark_names("model") + named)) if self.kind == "model" else named

    @functools.cached_property
    def items(self) -> list[Item]:
        """What it measures, in the order of the file, without headings."""
        return [Item(name, unit, text, *words) for name, unit, text, heading, *words in self._analysis.items
                if not heading]

    def measure(self, cases: Union[Case, Iterable[Case]], *, error: Errors = False, form: str = "long",
                band: Optional[int] = None, language: str = "en") -> pandas.DataFrame:
        """What the analysis says about cases, as `cephtool.measure`."""
        return _measured(cases, [self], error, form, band, language)

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
        found = _engine.measure_points(self._analysis, array, names, _each(mm_per_pixel, "mm_per_pixel"),
                                       _each(sex, "sex", _sex), _each(age, "age", _number),
                                       _each(dental_stage, "dental_stage", _stage), norms, _landmark_errors(error))
        return Values(tuple(item.name for item in self.items), *found)

    def __repr__(self) -> str:
        return f"<Analysis {self.name!r}, {self.kind}, {len(self.items)} items>"

    def _repr_html_(self) -> str:
        rows = "".join("<tr>" + "".join(f"<td>{html.escape(text)}</td>" for text in item[:5]) + "</tr>"
                       for item in self.items)
        return (f"<b>{html.escape(self.title)}</b><p>{html.escape(self.comment)}</p>"
                f"<table><tr><th>Item</th><th>Unit</th><th>Formula</th><th>Positive</th><th>Japanese</th></tr>{rows}</table>")


class Folder:
    """A folder of analyses and display modes (docs/formula_language.md), each file read once.

    Parameters
    ----------
    path : path, optional
        Without it the folder that ships.

    Raises
    ------
    Error
        It is no folder, or a file of it can't be read.
    """

    def __init__(self, path: PathLike = "") -> None:
        self._path = os.fspath(path)
        self._folder = _engine.Folder(self._path)
        for problem in self._folder.problems:
            warn(problem)

    def __reduce__(self) -> tuple[Any, ...]:
        return Folder, (self._path,)

    @property
    def path(self) -> str:
        return self._folder.path

    @functools.cached_property
    def analyses(self) -> list[Analysis]:
        """All, kind by kind, in the order of the lists."""
        return [Analysis._of(each, _listed, self._path, place) for place, each in enumerate(self._folder.analyses)]

    def for_population(self, name: str = "") -> list[Analysis]:
        """All analyses once: with norms of the population (``"Japanese"``, ``"日本人"``) where the folder has them.

        Of the others `Analysis.population` tells whose norms they have.
        """
        wanted = _engine.population_named(name) if name else None
        if wanted and all(analysis._analysis.population[0].lower() != wanted.lower() for analysis in self.analyses):
            raise ValueError(f"no analysis has norms of the population {name!r}")
        variants = {(variant.variant_of.lower(), variant.family): variant for variant in reversed(self.analyses)
                    if variant.variant_of and wanted and variant._analysis.population[0].lower() == wanted.lower()}
        own = [analysis for analysis in self.analyses if not analysis.variant_of]
        return [analysis if wanted and analysis._analysis.population[0].lower() == wanted.lower()
                else variants.get((os.path.basename(analysis._analysis.file).lower(), analysis.family), analysis)
                for analysis in own]

    @property
    def landmark_errors(self) -> LandmarkErrors:
        """Those of its ``LandmarkError.txt``. An `Error` when it has none."""
        return LandmarkErrors._of(self._folder.landmark_errors)

    @property
    def modes(self) -> list[DisplayMode]:
        return [DisplayMode(*mode) for mode in self._folder.modes]

    def analysis(self, name: str, kind: Optional[str] = None) -> Analysis:
        """The analysis of this title or name, without regard to case; of several the first, unless `kind` tells.

        An `Error` with the closest name when there is none.
        """
        return Analysis._of(_engine.Analysis.named(self._folder, name, kind), _named, self._path, name, kind)

    __getitem__ = analysis

    def __iter__(self) -> Iterator[Analysis]:
        return iter(self.analyses)

    def __len__(self) -> int:
        return len(self.analyses)

    def __repr__(self) -> str:
        return f"<Folder {self.path!r}, {len(self)} analyses>"


def _listed(path: str, place: int) -> Analysis:
    return (Folder(path) if path else shipped_folder()).analyses[place]


def _named(path: str, name: str, kind: Optional[str]) -> Analysis:
    return (Folder(path) if path else shipped_folder()).analysis(name, kind)


@functools.lru_cache(maxsize=1)
def shipped_folder() -> Folder:
    """The folder that ships, read once."""
    return Folder()


def analysis(name: str, kind: Optional[str] = None) -> Analysis:
    """An analysis of the folder that ships, as `Folder.analysis`: ``analysis("Ricketts", kind="frontal")``."""
    return shipped_folder().analysis(name, kind)


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
        _write(path, text.encode("cp932"))
    return Analysis.from_text(text, analyses[0].kind, title)


def measure(cases: Union[Case, Iterable[Case]], analyses: Optional[Iterable[Analysis]] = None, *,
            error: Errors = False, form: str = "long", band: Optional[int] = None,
            language: str = "en") -> pandas.DataFrame:
    """What analyses say about cases. The numbers are those of ``cephtool analyze`` and ``cephtool batch``.

    Parameters
    ----------
    cases : Case or iterable of Case
        Each is measured by the analyses for its kind.
    analyses : iterable of Analysis, optional
        Without it all that ship, with norms of each case's population (`Case.population`) where there are any.
    error : bool or LandmarkErrors
        Whether values have standard errors: from those of the landmarks that ship, or from these.
    form : {"long", "wide"}
        A row for each item of a case, or one for each case.
    band : int, optional
        Code of the norms' columns, in place of the one that age, sex and dental stage lead to.
    language : {"en", "ja"}
        Of ``label``.

    Returns
    -------
    pandas.DataFrame
        Long: ``case`` (place, from 0), ``name``, ``analysis``, ``item``, ``label`` (its name to be shown), ``unit``,
        ``value``, ``text`` (of an item that has one in place of a value), ``mean``, ``sd``, ``deviation`` (in SD),
        ``missing`` (landmarks that the value lacks, blanks between), ``reason`` (why there is no value although none is
        missing), ``remarks`` (codes, "; " between). With errors also ``error`` (standard error of the value, in its
        unit), ``deviation_error`` (in SD), ``mostly`` (the landmark that contributes most), ``share`` (of the variance
        that it makes up), ``assumed`` (landmarks whose error nobody measured), ``shown`` (``"82.8 ± 1.2"``, in
        parentheses where it rests on assumed ones), ``error_text`` (what the program says of the error, or why
        there is none).
        Wide: ``name``, ``kind``, ``sex``, ``age``, ``remarks``, and a column ``"ANALYSIS:ITEM"`` with the values of each
        item, ``"FAMILY:ANALYSIS:ITEM"`` of others than lateral ones. With errors also ``"ANALYSIS:ITEM:error"``,
        ``":mostly"`` and ``":assumed"``. A sheet with norms of a population has columns of its own.

    Warns
    -----
    Remark
        How norms fit the patients, and landmarks that lie improbably far from where the others expect them: of each
        code the first.
    """
    return _measured(cases, None if analyses is None else list(analyses), error, form, band, language)


def _landmark_errors(error: Errors) -> Optional[_engine.LandmarkErrors]:
    if isinstance(error, LandmarkErrors):
        return error._errors
    return shipped_folder().landmark_errors._errors if error else None


def _measured(cases: Union[Case, Iterable[Case]], wanted: Optional[list[Analysis]], error: Errors, form: str,
              band: Optional[int], language: str) -> pandas.DataFrame:
    import pandas
    if language not in ("en", "ja"):
        raise ValueError(f'the language is "en" or "ja", not {language!r}')
    if form not in ("long", "wide"):
        raise ValueError(f'the form is "long" or "wide", not {form!r}')
    all_cases = [cases] if isinstance(cases, Case) else list(cases)
    analyses = shipped_folder().analyses if wanted is None else wanted
    columns, remarks = _engine.measure([case._record for case in all_cases],
                                       [analysis._analysis for analysis in analyses], band, _landmark_errors(error),
                                       wanted is None)
    codes = _remarked(all_cases, analyses, remarks)
    if form == "wide":
        return _wide(pandas, all_cases, analyses, columns, codes, wanted is not None)
    items = [[(item[0], item[1], item[5] or item[0]) for item in analysis._analysis.items] for analysis in analyses]
    whose_items = list(zip(columns["analysis"].tolist(), columns["item"].tolist()))
    return pandas.DataFrame({
        "case": columns["case"],
        "name": [all_cases[place].name for place in columns["case"].tolist()],
        "analysis": [analyses[analysis].name for analysis, _ in whose_items],
        "item": [items[analysis][item][0] for analysis, item in whose_items],
        "label": [items[analysis][item][2 if language == "ja" else 0] for analysis, item in whose_items],
        "unit": [items[analysis][item][1] for analysis, item in whose_items],
        **{name: columns[name]
           for name in ("value", "text", "mean", "sd", "deviation", "missing", "reason", *_OF_ERRORS)
           if name in columns},
        "remarks": ["; ".join(codes[case].get("", []) + codes[case].get(analyses[analysis].name, []))
                    for case, (analysis, _) in zip(columns["case"].tolist(), whose_items)],
    })


def _remarked(cases: list[Case], analyses: list[Analysis],
              remarks: list[tuple[int, str, str, str]]) -> list[dict[str, list[str]]]:
    """Warns of what came up while measuring, once a code. Gives the codes of each case: of analyses, and of "", all."""
    codes: list[dict[str, list[str]]] = [{"": [code for code, _ in case.remarks]} for case in cases]
    first: dict[str, str] = {}
    count: dict[str, int] = {}
    for place, of_analysis, code, text in remarks:
        if code:
            codes[place].setdefault(of_analysis, []).append(code)
        whose = cases[place].name or cases[place].file or f"case {place}"
        first.setdefault(code, ": ".join(part for part in (whose, of_analysis, text) if part))
        count[code] = count.get(code, 0) + 1
    for code, text in first.items():
        if code != "errors":  # says only what was asked for
            warn(text + (f" ({count[code] - 1} more of this kind)" if count[code] > 1 else ""), code, 5)
    return codes


def _of_cases(count: int, columns: dict[str, Any], name: str, rows: npt.NDArray[np.intp]) -> Any:
    """The rows of a column at the places of their cases; NaN, or "", for others."""
    numbers = isinstance(columns[name], np.ndarray)
    values: Any = np.full(count, np.nan) if numbers else np.full(count, "", dtype=object)
    values[columns["case"][rows]] = columns[name][rows] if numbers else [columns[name][row] for row in rows]
    return values


def _wide(pandas: Any, cases: list[Case], analyses: list[Analysis], columns: dict[str, Any],
          codes: list[dict[str, list[str]]], with_variants: bool) -> Any:
    table: dict[str, Any] = {"name": [case.name for case in cases], "kind": [case.kind for case in cases],
                             "sex": [case.sex for case in cases], "age": [_number(case.age) for case in cases],
                             "remarks": ["; ".join(f"{whose}:{code}" if whose else code
                                                   for whose, all_codes in of_case.items() for code in all_codes)
                                         for of_case in codes]}
    for number, analysis in enumerate(analyses):
        prefix = ("" if analysis.family == "lateral" else analysis.family + ":") + analysis.name
        of_analysis = columns["analysis"] == number
        if analysis.variant_of and not with_variants and not of_analysis.any():
            continue
        for item, (name, _, _, heading, *_) in enumerate(analysis._analysis.items):
            if heading:
                continue
            rows = np.flatnonzero(of_analysis & (columns["item"] == item))
            column, copy = f"{prefix}:{name}", 2
            while column in table:
                column, copy = f"{prefix}:{name} ({copy})", copy + 1
            table[column] = _of_cases(len(cases), columns, "text" if any(columns["text"][row] for row in rows)
                                      else "value", rows)
            for part in ("error", "mostly", "assumed"):
                if part in columns:
                    table[f"{column}:{part}"] = _of_cases(len(cases), columns, part, rows)
    return pandas.DataFrame(table)


class Formula:
    """A formula of your own (docs/formula_language.md), measured on arrays of landmarks. Get one from `formula`."""

    def __init__(self, text: str, kind: str = "lateral") -> None:
        self.text = text
        self.kind = kind
        self._analysis = Analysis._of(_engine.Analysis.formula(text, kind), Formula, text, kind)

    def __reduce__(self) -> tuple[Any, ...]:
        return Formula, (self.text, self.kind)

    @property
    def landmarks(self) -> list[str]:
        """Landmarks that it names, in the order met; of casts all."""
        return self._analysis.landmarks

    @property
    def unit(self) -> str:
        """``"deg"``, ``"mm"``, ``"%"`` or empty, read off the formula; lengths are pixels as long as no scale is given."""
        return self._analysis.items[0].unit

    def __call__(self, points: npt.ArrayLike, *, landmarks: Optional[Sequence[str]] = None,
                 mm_per_pixel: Union[float, npt.ArrayLike] = 1.0) -> Floats:
        """The formula's value for each case.

        Parameters
        ----------
        points : array (n_cases, n_landmarks, 2)
            As of `Analysis.measure_points`.
        landmarks : sequence of str, optional
            Names of the points, in their order; those of `landmarks` without it.
        mm_per_pixel : float or array (n_cases,)

        Returns
        -------
        array (n_cases,)
            NaN where a landmark is missing, or there is no finite value.
        """
        value: Floats = self._analysis.measure_points(points, mm_per_pixel=mm_per_pixel, landmarks=landmarks,
                                                      norms=False).value[:, 0]
        return value

    def __repr__(self) -> str:
        return f"<Formula {self.text!r} of {', '.join(self.landmarks)}>"


def formula(text: str, kind: str = "lateral") -> Formula:
    """A formula of your own: ``formula("angle1([S],[N],[A])")(points)``.

    An `Error` with the column when ``cephtool check`` would find a fault in it.
    """
    return Formula(text, kind)
