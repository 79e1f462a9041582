"""Cases: films and casts with their landmarks."""

from __future__ import annotations

import functools
import html
import json
import os
from collections.abc import Mapping, Sequence
from datetime import date as Date
from types import MappingProxyType
from typing import TYPE_CHECKING, Any, Optional, Union

import numpy as np
import numpy.typing as npt

from cephtool import _engine
from cephtool._errors import warn
from cephtool._files import PathLike, write_file
from cephtool._shipped import shipped
from cephtool.tracings import Tracing

if TYPE_CHECKING:
    from cephtool.folders import Folder

Point = tuple[float, float]


def _options(sex: Optional[str] = None, mm_per_pixel: Optional[float] = None, mirror: bool = False,
             flip_y: bool = False, landmarks: Sequence[str] = (), image_height: Optional[float] = None,
             image: PathLike = "") -> _engine.CaseOptions:
    return _engine.CaseOptions(sex=sex, mm_per_pixel=mm_per_pixel, mirror=mirror, flip_y=flip_y,
                               landmarks=list(landmarks), image_height=image_height, image=os.fspath(image))


def landmark_names(kind: str = "lateral") -> list[str]:
    """Names of the landmarks of a kind of case: ``"lateral"`` (51), ``"frontal"`` (27) or ``"model"``, a cast."""
    return _engine.landmark_names(kind)


class Case:
    """A film or cast with its landmarks. Never changes; `replace` makes another one.

    Parameters
    ----------
    landmarks : mapping of str to (x, y)
        In pixels of the image, x to the right, y down; a lateral face looks right. Names are those of the kind's table
        (`landmark_names`), points of vertebrae (``"C3ua"``), or your own, of at most five characters. (0, 0) is not
        placed.
    kind : {"lateral", "frontal", "model"}
    mm_per_pixel : float, optional
        The width of a pixel. Without it that of the X-ray is taken.
    name : str, optional
        Of the patient or film.
    sex : {"male", "female"}, optional
    birth, film : datetime.date or str, optional
        Days of birth and of the film; texts as of `cephtool.date`.
    dental_stage : str, optional
        Hellman's: ``"I"``, ``"IIA"`` ... ``"VA"``.
    population : str, optional
        Whose norms count: ``"Japanese"``, ``"日本人"``.
    virtual : mapping of str to str, optional
        Landmarks made of others: ``{"SN mid": "mid([S],[N])"}``.
    **facts
        Other keys of the JSON format (docs/case_format.md): ``side``, ``image``, ``palate``, ``outlines``.

    Raises
    ------
    Error
        A name, coordinate or fact that a case can't have, or no scale.

    Warns
    -----
    Remark
        The landmarks show that the film is mirrored, or one lies at (0, 0).
    """

    _record: _engine.Case

    def __init__(self, landmarks: Mapping[str, Sequence[float]], *, kind: str = "lateral",
                 mm_per_pixel: Optional[float] = None, name: Optional[str] = None, sex: Optional[str] = None,
                 birth: Union[Date, str, None] = None, film: Union[Date, str, None] = None,
                 dental_stage: Optional[str] = None, population: Optional[str] = None,
                 virtual: Optional[Mapping[str, str]] = None, **facts: Any) -> None:
        table = set(landmark_names(kind))
        vertebrae = set(_engine.vertebra_point_names()) if kind == "lateral" else set()
        placed: dict[str, dict[str, list[float]]] = {"landmarks": {}, "vertebrae": {}, "user": {}}
        for key, (x, y) in landmarks.items():
            group = "landmarks" if key in table else "vertebrae" if key in vertebrae else "user"
            if x == x and y == y:
                placed[group][key] = [float(x), float(y)]
        given = {"name": name, "sex": sex, "birth": birth, "film": film, "dental_stage": dental_stage,
                 "population": population, "mm_per_pixel": mm_per_pixel, "virtual": virtual, **facts}
        content: dict[str, Any] = {"format": "cephtool-case", "version": 1, "kind": kind}
        content |= {key: value.isoformat() if isinstance(value, Date) else value for key, value in given.items()
                    if value is not None}
        content |= {key: points for key, points in placed.items() if points or key == "landmarks"}
        self._record = _engine.Case.from_text(name or "Case", json.dumps(content, default=dict, indent=1), _options())
        self._warn(3)

    @functools.cached_property
    def _facts(self) -> dict[str, Any]:
        facts: dict[str, Any] = json.loads(self._record.json())
        return facts

    @classmethod
    def _of(cls, record: _engine.Case) -> Case:
        case = cls.__new__(cls)
        case._record = record
        return case

    @classmethod
    def _from_text(cls, file: str, text: str) -> Case:
        return cls._of(_engine.Case.from_text(file, text, _options()))

    def __reduce__(self) -> tuple[Any, ...]:
        return Case._from_text, (self.file, self.json())

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Case) and self._facts == other._facts

    __hash__ = None  # type: ignore[assignment]

    def _warn(self, stacklevel: int) -> None:
        place = f"{self.file}: " if self.file else ""
        for code, text in self._record.remarks:
            warn(place + text, code, stacklevel + 1)
        for note in self._record.notes:
            warn(place + note, "", stacklevel + 1)

    @classmethod
    def read(cls, path: PathLike, **how: Any) -> Case:
        """The only case of a file, as `cephtool.read` reads it. An `Error` when it holds more."""
        cases = read(path, **how)
        if len(cases) != 1:
            raise ValueError(f"{os.fspath(path)} holds {len(cases)} cases; cephtool.read reads them all")
        return cases[0]

    @property
    def file(self) -> str:
        """Where it was read from."""
        return self._record.file

    @property
    def name(self) -> str:
        """Of the patient or film; empty when not given."""
        return str(self._facts.get("name", ""))

    @property
    def kind(self) -> str:
        """``"lateral"``, ``"frontal"`` or ``"model"``."""
        return self._record.kind

    @property
    def sex(self) -> Optional[str]:
        """``"male"``, ``"female"`` or None."""
        return self._facts.get("sex")

    @property
    def birth(self) -> Optional[Date]:
        """Day of birth."""
        return self._date("birth")

    @property
    def film(self) -> Optional[Date]:
        """Day of the film."""
        return self._date("film")

    def _date(self, key: str) -> Optional[Date]:
        return Date.fromisoformat(self._facts[key]) if key in self._facts else None

    @property
    def age(self) -> Optional[float]:
        """Completed months on the day of the film divided by 12: what stages and norms go by."""
        if self.birth is None or self.film is None:
            return None
        years: float = _engine.age(self.birth, self.film)[2]
        return years

    @property
    def dental_stage(self) -> Optional[str]:
        """Hellman's stage, ``"I"`` to ``"VA"``."""
        return self._facts.get("dental_stage")

    @property
    def population(self) -> Optional[str]:
        """Whose norms count, as the case says; None when it does not."""
        return self._facts.get("population")

    @property
    def mm_per_pixel(self) -> float:
        """The width of a pixel in mm."""
        return float(self._facts["mm_per_pixel"])

    @property
    def facts(self) -> Mapping[str, Any]:
        """All that the case holds, with the keys of the JSON format."""
        return MappingProxyType(self._facts)

    @property
    def remarks(self) -> list[tuple[str, str]]:
        """Code and words of what changes how its numbers are to be read."""
        return self._record.remarks

    @property
    def landmarks(self) -> Mapping[str, Point]:
        """Placed landmarks by name, in pixels: those of the table, points of vertebrae, your own."""
        return MappingProxyType({name: (x, y) for group in ("landmarks", "vertebrae", "user")
                                 for name, (x, y) in self._facts.get(group, {}).items()})

    def points(self, names: Optional[Sequence[str]] = None) -> npt.NDArray[np.float64]:
        """Landmarks as an array of the shape (n, 2), in pixels; NaN where one is not placed.

        Parameters
        ----------
        names : sequence of str, optional
            Which, in this order; virtual ones, too. Without it all of `landmarks`, in their order.
        """
        return self._record.points(list(self.landmarks if names is None else names))

    def replace(self, **changes: Any) -> Case:
        """The case with other arguments of `Case`; None leaves a fact away."""
        same = {key: value for key, value in self._facts.items()
                if key not in ("format", "version", "landmarks", "vertebrae", "user")}
        landmarks = changes.pop("landmarks", self.landmarks)
        return Case(landmarks, **{**same, **changes})

    def json(self) -> str:
        """The case in the program's own format (docs/case_format.md), which loses nothing."""
        return self._record.json()

    def write(self, path: PathLike, format: str = "") -> None:
        """Writes the case to a file.

        Parameters
        ----------
        path : path
            Its end names the format where `format` does not: ``.json``, ``.csv``, ``.tps``, ``.mrk.json``, ``.fcsv``.

        Warns
        -----
        Remark
            What the format has no place for.
        """
        text, lost = self._record.written(format or os.fspath(path))
        write_file(path, text.encode())
        for what in lost:
            warn(f"{os.fspath(path)} lacks {what}")

    def tracing(self, mode: str = "", *, outlines: str = "case", style: str = "paper", language: str = "en",
                measures: Sequence[str] = (), actual_size: bool = False, folder: Optional[Folder] = None) -> Tracing:
        """The tracing, drawn as the program draws it, without the X-ray.

        Parameters
        ----------
        mode : str
            A display mode by name or number; without one the first of the folder.
        outlines : {"case", "fitted", "none"}
            Those of the case where it has any, those of an average face, or none.
        style : {"paper", "film"}
            Dark on white, or bright on dark.
        language : {"en", "ja"}
            Of the texts below the tracing.
        measures : sequence of str
            Items to draw the measuring of: ``"SNA"``, ``"Steiner:SNA"``.
        actual_size : bool
            At true size on a sheet of A4 or A3.
        folder : Folder, optional
            Where display modes and analyses lie, in place of those that ship.
        """
        options = {"mode": mode, "outlines": outlines, "style": style, "language": language,
                   "measures": list(measures), "actual_size": actual_size}
        return Tracing(self._record, folder._folder if folder else shipped(), options)

    def __repr__(self) -> str:
        return f"<Case {self.name or self.file!r}, {self.kind}, {len(self.landmarks)} landmarks>"

    def _repr_html_(self) -> str:
        rows = {"name": self.name, "file": self.file, "kind": self.kind, "sex": self.sex, "age": self._age_text(),
                "dental stage": self.dental_stage, "mm a pixel": self.mm_per_pixel,
                "landmarks": f"{len(self.landmarks)}: " + ", ".join(self.landmarks)}
        rows |= {f"remark: {code}": text for code, text in self.remarks}
        cells = "".join(f"<tr><th>{html.escape(key)}</th><td>{html.escape(str(value))}</td></tr>"
                        for key, value in rows.items() if value)
        return f"<table>{cells}</table>{self.tracing()._repr_svg_()}"

    def _age_text(self) -> str:
        if self.birth is None or self.film is None:
            return ""
        years, months, _ = _engine.age(self.birth, self.film)
        return f"{years} years {months} months"


def read(path: PathLike, *, sex: Optional[str] = None, mm_per_pixel: Optional[float] = None, mirror: bool = False,
         flip_y: bool = False, landmarks: Sequence[str] = (), image_height: Optional[float] = None,
         image: PathLike = "", errors: str = "raise") -> list[Case]:
    """Cases of a file or folder, in their order.

    Parameters
    ----------
    path : path
        A file in any format of docs/case_format.md, a table with a case in each row or JSON lines (docs/batch.md), or a
        folder with such files.
    sex : {"male", "female"}, optional
    mm_per_pixel : float, optional
        The width of a pixel. Both go before what the cases say.
    mirror, flip_y : bool
        Turns x, or y, of films whose signs are seen to be reversed.
    landmarks : sequence of str
        Names of the points of a TPS file in their order; ``"-"`` passes one over.
    image_height : float, optional
        In pixels, for y that points up.
    image : path
        The X-ray, in place of the one that a case names; what the case lacks is taken from its header.
    errors : {"raise", "warn"}
        Whether a case that can't be read stops all, or is warned of and left out.

    Raises
    ------
    Error
        With file, line, column and the way out.

    Warns
    -----
    Remark
        What changes how numbers are to be read, and what was taken for granted.
    """
    if errors not in ("raise", "warn"):
        raise ValueError(f'errors is "raise" or "warn", not {errors!r}')
    options = _options(sex, mm_per_pixel, mirror, flip_y, landmarks, image_height, image)
    records, failures, notes = _engine.read(path, options, errors == "raise")
    for text in failures + notes:
        warn(text)
    cases = [Case._of(record) for record in records]
    for case in cases:
        case._warn(3)
    return cases
