from __future__ import annotations

import warnings


class Error(ValueError):
    """What is wrong with an input, where, and the way out, in the words of the program ``cephtool``.

    Attributes
    ----------
    message : str
        What is wrong.
    file : str
        Where; empty when no file is at fault.
    line, column : int
        The place in the file, from 1; line 0 is the file as a whole. Columns count characters.
    way_out : str
        What to do about it, or empty.
    """

    def __init__(self, shown: str, message: str, file: str, line: int, column: int, way_out: str) -> None:
        super().__init__(shown, message, file, line, column, way_out)
        self.shown = shown
        self.message = message
        self.file = file
        self.line = line
        self.column = column
        self.way_out = way_out

    def __str__(self) -> str:
        return self.shown


class Remark(UserWarning):
    """What changes how numbers are to be read, or what a reader took for granted.

    Attributes
    ----------
    code : str
        Short and stable, as docs/formats.md lists it: ``"mirrored"``. Empty for what only tells how a file was read.
    """

    def __init__(self, message: str, code: str = "") -> None:
        super().__init__(message, code)
        self.code = code

    def __str__(self) -> str:
        return str(self.args[0])


def warn(message: str, code: str = "", stacklevel: int = 3) -> None:
    warnings.warn(Remark(message, code), stacklevel=stacklevel)
