from __future__ import annotations

import os
from typing import Union

PathLike = Union[str, "os.PathLike[str]"]


def write_file(path: PathLike, content: bytes) -> None:
    """A new file is its owner's alone, since it may show a patient; one that is replaced keeps its rights."""
    with open(path, "wb", opener=lambda name, flags: os.open(name, flags, 0o600)) as file:
        file.write(content)
