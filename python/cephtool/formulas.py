"""Formulas of your own."""

from __future__ import annotations

from collections.abc import Sequence
from typing import Any, Optional, Union

import numpy.typing as npt

from cephtool import _engine
from cephtool._arrays import Floats
from cephtool.analyses import Analysis


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
