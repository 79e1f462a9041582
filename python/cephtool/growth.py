"""How far a patient has grown."""

from __future__ import annotations

from collections.abc import Mapping
from typing import NamedTuple, Optional, Union

from cephtool import _engine
from cephtool._shipped import shipped
from cephtool.cases import Case
from cephtool.folders import Folder


class GrowthFinding(NamedTuple):
    """One thing that was found out about growth, or why it was not."""

    what: str  #: ``"Bone age"``
    name: str  #: of the stage, or empty
    stage: Optional[int]  #: its place, from 0
    years: Optional[float]  #: an age, in years
    grounds: Mapping[str, Union[float, str]]  #: what it rests on
    missing: list[str]  #: what the case lacks: a fact, or a point of a vertebra
    reason: str  #: why there is no result although nothing is missing


def growth(case: Case, folder: Optional[Folder] = None) -> list[GrowthFinding]:
    """Age and dental stage; of lateral films also the Ricketts stage, and the bone age with its lead on the age.

    Parameters
    ----------
    case : Case
    folder : Folder, optional
        Whose stages and coefficients are taken, in place of those that ship.
    """
    return [GrowthFinding(*found) for found in _engine.growth(case._record, folder._folder if folder else shipped())]
