"""Folders of analyses and display modes."""

from __future__ import annotations

import functools
import os
from collections.abc import Iterator
from typing import Any, NamedTuple, Optional

from cephtool import _engine
from cephtool._errors import warn
from cephtool._files import PathLike
from cephtool._shipped import shipped
from cephtool.analyses import Analysis
from cephtool.landmark_errors import LandmarkErrors


class DisplayMode(NamedTuple):
    """What a tracing can show."""

    kind: str
    name: str
    title: str


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
        self._folder = _engine.Folder(self._path) if self._path else shipped()
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
        own = [analysis for analysis in self.analyses if not analysis.variant_of]
        wanted = _engine.population_named(name).lower() if name else ""
        if not wanted:
            return own
        of_it = [analysis for analysis in self.analyses if analysis._analysis.population[0].lower() == wanted]
        if not of_it:
            raise ValueError(f"no analysis has norms of the population {name!r}")
        variants = {(variant.variant_of.lower(), variant.kind): variant for variant in reversed(of_it)
                    if variant.variant_of}
        return [analysis if analysis in of_it
                else variants.get((os.path.basename(analysis._analysis.file).lower(), analysis.kind), analysis)
                for analysis in own]

    @property
    def landmark_errors(self) -> LandmarkErrors:
        """Those of its ``LandmarkError.txt``. An `Error` when it has none."""
        return LandmarkErrors._of(self._folder.landmark_errors)

    @property
    def modes(self) -> list[DisplayMode]:
        return [DisplayMode(*mode) for mode in self._folder.modes]

    def analysis(self, name: str, kind: Optional[str] = None) -> Analysis:
        """The analysis of this title or name, without regard to case; of several the first, unless `kind` (or
        `case_kind`) tells.

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
