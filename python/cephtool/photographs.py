"""What the header of a photograph says."""

from __future__ import annotations

from collections.abc import Mapping
from typing import NamedTuple, Union

from cephtool import _engine
from cephtool._errors import warn
from cephtool._files import PathLike


class Photograph(NamedTuple):
    """The EXIF header of a JPEG picture."""

    facts: Mapping[str, Union[float, str]]  #: camera, exposure, date, place; a key names its unit (docs/formats.md)
    thumbnail: bytes  #: the small JPEG picture inside; empty without one


def photograph(path: PathLike) -> Photograph:
    """What a JPEG picture says of camera, exposure and date.

    Raises
    ------
    Error
        It can't be read, or is no JPEG picture.

    Warns
    -----
    Remark
        Its header is damaged; the facts are those before the damage.
    """
    facts, thumbnail, notes = _engine.photograph(path)
    for note in notes:
        warn(note)
    return Photograph(facts, thumbnail)
