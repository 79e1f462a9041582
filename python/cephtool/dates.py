"""Dates as people write them, Japanese eras and ages."""

from __future__ import annotations

from datetime import date as Date
from typing import NamedTuple, Optional, Union

from cephtool import _engine


class Era(NamedTuple):
    """A day in its Japanese era."""

    code: str  #: of the era: ``"R"``
    name: str  #: of the era: ``"令和"``
    year: int  #: from 1
    text: str  #: the day: ``"R6.3.5"``
    japanese: str  #: the day: ``"令和6年3月5日"``


class Age(NamedTuple):
    """Completed months as years and months, and as a fraction of years, by which stages and norms go."""

    years: int
    months: int
    fraction: float


def date(text: str) -> Date:
    """The day of ``"2024-03-05"``, ``"R6.3.5"``, ``"令和6年3月5日"`` and other forms of docs/case_format.md.

    An `Error` when there is no such day.
    """
    day: Date = _engine.date(text)
    return day


def era(day: Union[Date, str]) -> Optional[Era]:
    """The day in its era; None for a day of no era. An `Error` when the table of eras is missing."""
    found = _engine.era(day)
    return Era(*found) if found else None


def age(born: Union[Date, str], on: Union[Date, str]) -> Age:
    """The age on a day. An `Error` when it lies before birth."""
    return Age(*_engine.age(born, on))
