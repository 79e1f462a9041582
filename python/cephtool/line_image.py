"""Line images: traced lines as pixels. An array of the shape (height, width), uint8: 255 is line, 0 is paper.

Docs: line_images.md. The outermost rows and columns never change.
"""

from __future__ import annotations

import numpy as np
import numpy.typing as npt

from cephtool import _engine

Image = npt.NDArray[np.uint8]


def lines_of(picture: npt.ArrayLike, threshold: int = 128, bright: bool = False) -> Image:
    """The lines of a picture, uint8, of the shape (height, width) for grey or (height, width, 3) for red, green, blue.

    What is darker than `threshold` (1 to 255) is line; with `bright` what is not, as on a film.
    """
    pixels = np.asarray(picture)
    if pixels.dtype != np.uint8 or not (pixels.ndim == 2 or pixels.ndim == 3 and pixels.shape[2] == 3):
        raise ValueError("a picture is uint8, of the shape (height, width) or (height, width, 3)")
    if not 1 <= threshold <= 255:
        raise ValueError("the threshold is 1 to 255")
    return _engine.lines_of(np.ascontiguousarray(pixels[..., ::-1] if pixels.ndim == 3 else pixels), threshold, bright)


def _changed(image: npt.ArrayLike) -> Image:
    pixels = np.asarray(image)
    if pixels.dtype != np.uint8 or pixels.ndim != 2:
        raise ValueError("a line image is uint8, of the shape (height, width)")
    return np.array(pixels, order="C")


def widened(image: npt.ArrayLike, steps: int = 1, connectivity: int = 8) -> Image:
    """Lines widened by a pixel so many times. With `connectivity` 4 slanting neighbours are not looked at."""
    return _stepped(_engine.widen, image, steps, connectivity)


def narrowed(image: npt.ArrayLike, steps: int = 1, connectivity: int = 8) -> Image:
    """Lines narrowed by a pixel so many times."""
    return _stepped(_engine.narrow, image, steps, connectivity)


def _stepped(change: object, image: npt.ArrayLike, steps: int, connectivity: int) -> Image:
    if steps < 0 or connectivity not in (4, 8):
        raise ValueError("steps are 0 or more, and the connectivity is 4 or 8")
    pixels = _changed(image)
    change(pixels, steps, connectivity)  # type: ignore[operator]
    return pixels


def thinned(image: npt.ArrayLike) -> Image:
    """Lines thinned to one pixel."""
    pixels = _changed(image)
    _engine.thin(pixels)
    return pixels
