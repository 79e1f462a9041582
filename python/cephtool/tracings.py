"""Tracings that were drawn."""

from __future__ import annotations

from pathlib import Path
from typing import Any

from cephtool import _engine
from cephtool._files import PathLike, write_file


class Tracing:
    """A drawn tracing, of `Case.tracing`. A notebook shows it.

    Attributes
    ----------
    svg : str
    notes : list of str
        What was left out, and why.
    """

    def __init__(self, record: _engine.Case, folder: _engine.Folder, options: dict[str, Any]) -> None:
        self._given = record, folder, options
        svg, self.notes = self._drawn("svg")
        self.svg = svg.decode()

    def _drawn(self, format: str) -> tuple[bytes, list[str]]:
        record, folder, options = self._given
        return _engine.tracing(record, folder, _engine.TracingOptions(format=format, **options))

    def save(self, path: PathLike) -> None:
        """Writes the tracing to a file ``.svg``, ``.pdf`` or ``.png`` (1600 pixels the longer side)."""
        format = Path(path).suffix[1:].lower()
        write_file(path, self.svg.encode() if format == "svg" else self._drawn(format)[0])

    def _repr_svg_(self) -> str:
        return self.svg[self.svg.index("<svg"):]
