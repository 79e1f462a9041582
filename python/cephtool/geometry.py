"""Plane geometry on landmarks, with the bits of the program's formulas.

Points are arrays of the shape (..., 2), in pixels, x to the right, y down; shapes are broadcast against each other, so
that one point serves many. NaN stands for a missing point and for what there is none of: an angle whose side has no
length, the crossing of parallel lines.
"""

from __future__ import annotations

from collections.abc import Callable
from typing import Any

import numpy as np
import numpy.typing as npt

from cephtool import _engine
from cephtool._arrays import Floats


def _over(function: Callable[..., Floats], *points: npt.ArrayLike) -> Any:
    arrays = [np.asarray(each, dtype=np.float64) for each in points]
    if any(each.shape[-1:] != (2,) for each in arrays):
        raise ValueError("points have the shape (..., 2)")
    arrays = list(np.broadcast_arrays(*arrays))
    shape = arrays[0].shape[:-1]
    found = function(*(each.reshape(-1, 2) for each in arrays))
    return found.reshape(*shape, 2) if found.ndim == 2 else found.reshape(shape)[()]


def length(a: npt.ArrayLike, b: npt.ArrayLike, mm_per_pixel: npt.ArrayLike = 1.0) -> Any:
    """The distance from a to b, in mm (in pixels without `mm_per_pixel`)."""
    return _over(_engine.length, a, b) * np.asarray(mm_per_pixel)


def angle(a: npt.ArrayLike, b: npt.ArrayLike, c: npt.ArrayLike) -> Any:
    """The angle abc at b, 0 to 180 degrees."""
    return _over(_engine.angle, a, b, c)


def line_angle(a: npt.ArrayLike, b: npt.ArrayLike, c: npt.ArrayLike, d: npt.ArrayLike) -> Any:
    """The angle from the line ab to the line cd, -180 to 180 degrees; from (1, 0) to (0, 1) it is -90."""
    return _over(_engine.line_angle, a, b, c, d)


def foot(a: npt.ArrayLike, b: npt.ArrayLike, p: npt.ArrayLike) -> Floats:
    """The foot of the perpendicular from p on the line ab, in pixels."""
    found: Floats = _over(_engine.foot, a, b, p)
    return found


def crossing(a: npt.ArrayLike, b: npt.ArrayLike, c: npt.ArrayLike, d: npt.ArrayLike) -> Floats:
    """Where the lines ab and cd meet, in pixels."""
    found: Floats = _over(_engine.crossing, a, b, c, d)
    return found
