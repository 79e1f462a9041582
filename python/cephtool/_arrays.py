from __future__ import annotations

from collections.abc import Callable, Iterable
from typing import Any, Optional

import numpy as np
import numpy.typing as npt

from cephtool import _engine

Floats = npt.NDArray[np.float64]


def one_for_each(values: Any, what: str, of: Callable[[Any], float] = float) -> Floats:
    """An array (n,) from a number or text for all cases, or one for each. None is what `of` makes of it."""
    if isinstance(values, np.ndarray) and values.dtype == np.float64 and values.ndim <= 1:
        return values.reshape(-1)
    several = not isinstance(values, str) and isinstance(values, Iterable)
    array = np.array([of(value) for value in values] if several else [of(values)], dtype=np.float64)
    if array.ndim != 1:
        raise ValueError(f"{what} is one for all cases, or one for each")
    return array


def sex_code(value: Optional[str]) -> float:
    names = {"male": 1.0, "m": 1.0, "female": 2.0, "f": 2.0, None: 0.0}
    if value is None or value != value:
        return 0.0
    if value not in names:
        raise ValueError(f'a sex is "male", "female" or None, not {value!r}')
    return names[value]


def stage_place(value: Optional[str]) -> float:
    if value is None or value != value:
        return -1.0
    place = _engine.dental_stage(value)
    if place is None:
        raise ValueError(f'{value!r} is no dental stage; they are "I", "IIA" to "VA"')
    return float(place)


def age_years(value: Optional[float]) -> float:
    return float("nan") if value is None else float(value)
