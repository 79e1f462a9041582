"""How surely landmarks are found: what the errors of values are reckoned from."""

from __future__ import annotations

import math
import os
from collections.abc import Mapping, Sequence
from types import MappingProxyType
from typing import Any, NamedTuple, Optional, Union

from cephtool import _engine
from cephtool._files import PathLike, write_file
from cephtool._shipped import shipped


class LandmarkError(NamedTuple):
    """The standard error of a landmark that is placed once, in mm."""

    along: float  #: on lateral films along Frankfort, on frontal ones across the film
    across: float  #: across Frankfort, or up the film
    readings: int = 0  #: that the figure was reckoned from; 0 when not told
    source: str = ""  #: who read what; empty when not told
    assumed: bool = False  #: nobody measured it


_Given = Mapping[str, Union[LandmarkError, Sequence[Any]]]


class LandmarkErrors:
    """Errors of landmarks (docs/errors.md). Never changes.

    Get those that ship from `Folder.landmark_errors`, your own from a file with `read`, from a study (`Study.errors`), or
    from figures.

    Parameters
    ----------
    lateral, frontal : mapping of str to LandmarkError
        Of landmarks by name; ``(along, across)`` in mm will do: ``LandmarkErrors({"S": (0.4, 0.5)})``. ``"*"`` is
        assumed for all that are not named.
    """

    _errors: _engine.LandmarkErrors

    def __init__(self, lateral: Optional[_Given] = None, frontal: Optional[_Given] = None) -> None:
        figures = []
        for is_frontal, given in ((False, lateral or {}), (True, frontal or {})):
            for name, figure in given.items():
                error = LandmarkError(*figure)
                for mm in error[:2]:
                    if not (math.isfinite(mm) and 0 <= mm <= 100):
                        raise ValueError(f"the error of {name} is 0 to 100 mm, not {mm!r}")
                figures.append((name, is_frontal, float(error.along), float(error.across), int(error.readings),
                                error.source, bool(error.assumed) or name == "*"))
        self._errors = _engine.LandmarkErrors(figures)

    @classmethod
    def _of(cls, errors: _engine.LandmarkErrors) -> LandmarkErrors:
        new = cls.__new__(cls)
        new._errors = errors
        return new

    @classmethod
    def read(cls, path: PathLike) -> LandmarkErrors:
        """Those of a file. An `Error` with line and column when one can't be read, or there is none."""
        return cls._of(_engine.LandmarkErrors.read(os.fspath(path)))

    def write(self, path: PathLike, heading: str = "") -> None:
        """Writes them as `read`, and ``cephtool analyze --error-file``, read them: mm with two decimals.

        Parameters
        ----------
        path : path
        heading : str
            First lines of the file, as comments.
        """
        write_file(path, self._errors.file_text(heading))

    def _by_name(self, frontal: bool) -> Mapping[str, LandmarkError]:
        return MappingProxyType({figure[0]: LandmarkError(*figure[2:]) for figure in self._errors.figures
                                 if figure[1] == frontal})

    @property
    def lateral(self) -> Mapping[str, LandmarkError]:
        """Of landmarks of lateral films, by name."""
        return self._by_name(False)

    @property
    def frontal(self) -> Mapping[str, LandmarkError]:
        """Of landmarks of frontal films, by name."""
        return self._by_name(True)

    def measured(self) -> LandmarkErrors:
        """Those that are not assumed: what rests on others then has no error."""
        return LandmarkErrors._of(self._errors.measured())

    def __reduce__(self) -> tuple[Any, ...]:
        return LandmarkErrors, (dict(self.lateral), dict(self.frontal))

    def __repr__(self) -> str:
        return f"<LandmarkErrors of {len(self.lateral)} lateral and {len(self.frontal)} frontal landmarks>"


Errors = Union[bool, LandmarkErrors]


def errors_wanted(error: Errors) -> Optional[_engine.LandmarkErrors]:
    if isinstance(error, LandmarkErrors):
        return error._errors
    return shipped().landmark_errors if error else None
