"""How well readings of the same films agree."""

from __future__ import annotations

from typing import NamedTuple, Optional

import numpy as np
import numpy.typing as npt

from cephtool import _engine

Interval = tuple[float, float]


class Correlation(NamedTuple):
    """An intraclass correlation of single readings."""

    value: float
    interval: Interval  #: of 95 %


class PairAgreement(NamedTuple):
    """A further reading against the first, in the unit of the readings."""

    bias: float  #: mean of its values less those of the first
    bias_interval: Interval  #: of 95 %
    sd: float  #: of the differences
    t: Optional[float]  #: of the paired t test; None when all differences are the same
    p: Optional[float]  #: two-sided
    dahlberg: float  #: Dahlberg's error
    limits: Interval  #: of agreement: bias -/+ 1.96 SD (Bland and Altman, Lancet 1986;1:307-310)
    limit_error: float  #: standard error of either limit


class Agreement(NamedTuple):
    """Error of the method, in the unit of the readings."""

    mean: float
    technical_error: float  #: of measurement; of two readings it is Dahlberg's error
    icc21: Optional[Correlation]  #: agreement of readers who stand for others (Shrout and Fleiss, Psychol Bull 1979)
    icc31: Optional[Correlation]  #: consistency of these readers; None where all values are the same
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
    return Agreement(mean, technical_error, Correlation(*icc21) if icc21 else None,
                     Correlation(*icc31) if icc31 else None, [PairAgreement(*pair) for pair in pairs])
