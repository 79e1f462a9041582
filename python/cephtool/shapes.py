"""Shapes of landmarks, with numpy and scipy: superimposition, mean shapes, Procrustes.

Shapes are arrays (n_landmarks, 2), many of them (n_cases, n_landmarks, 2), in any unit. Landmarks with NaN in any of
them must be left out before.
"""

from __future__ import annotations

from typing import NamedTuple

import numpy as np
import numpy.typing as npt

from cephtool._arrays import Floats


class Similarity(NamedTuple):
    """A point p goes to ``scale * p @ rotation + shift``."""

    rotation: Floats  #: (2, 2)
    scale: float
    shift: Floats  #: (2,)

    def __call__(self, points: npt.ArrayLike) -> Floats:
        """The points, of the shape (..., 2), where the map takes them."""
        moved: Floats = self.scale * np.asarray(points, dtype=np.float64) @ self.rotation + self.shift
        return moved


def _checked(points: npt.ArrayLike, ndim: int) -> Floats:
    array = np.asarray(points, dtype=np.float64)
    if array.ndim != ndim or array.shape[-1] != 2 or 0 in array.shape:
        raise ValueError("shapes are " + ("(n_landmarks, 2)" if ndim == 2 else "(n_cases, n_landmarks, 2)"))
    if not np.isfinite(array).all():
        raise ValueError("a landmark is missing in some shape; leave it out of all of them")
    return array


def superimpose(points: npt.ArrayLike, onto: npt.ArrayLike, *, scale: bool = False) -> Similarity:
    """The turn and shift, with `scale` also the change of size, of least squares that takes points onto others.

    Parameters
    ----------
    points, onto : array (n_landmarks, 2)
        Those that hardly change: of the cranial base, say. With two, the line coincides, and the middles.
    scale : bool
        For films of one scale, or points in mm, leave it away: growth is a change of size.

    Returns
    -------
    Similarity
        Call it with any points. It never mirrors.
    """
    from scipy.linalg import orthogonal_procrustes
    source, target = _checked(points, 2), _checked(onto, 2)
    if source.shape != target.shape:
        raise ValueError(f"{len(source)} landmarks can't go onto {len(target)}")
    centre, goal = source.mean(axis=0), target.mean(axis=0)
    rotation, _ = orthogonal_procrustes(source - centre, target - goal)
    if np.linalg.det(rotation) < 0:
        left, _, right = np.linalg.svd((source - centre).T @ (target - goal))
        rotation = left @ np.diag([1.0, -1.0]) @ right
    fit, spread = np.sum(((source - centre) @ rotation) * (target - goal)), np.sum((source - centre) ** 2)
    size = float(fit / spread) if scale and spread > 0 else 1.0
    return Similarity(rotation, size, goal - size * centre @ rotation)


class Procrustes(NamedTuple):
    """Shapes laid over each other."""

    aligned: Floats  #: (n_cases, n_landmarks, 2), centred on 0
    mean: Floats  #: (n_landmarks, 2)
    centroid_size: Floats  #: (n_cases,), as they were: root of the summed squares of the distances from the centroid


def procrustes(points: npt.ArrayLike, *, scale: bool = True, tolerance: float = 1e-10) -> Procrustes:
    """Generalised Procrustes superimposition: shapes and their mean, each laid over the other in turn.

    Parameters
    ----------
    points : array (n_cases, n_landmarks, 2)
    scale : bool
        Whether all are brought to centroid size 1; without it sizes stay.
    tolerance : float
        When the mean moves by less, relative to its size, it is done.

    References
    ----------
    Gower JC: Generalized Procrustes analysis. Psychometrika 1975;40:33-51.
    """
    shapes = _checked(points, 3)
    shapes = shapes - shapes.mean(axis=1, keepdims=True)
    sizes = np.sqrt(np.sum(shapes**2, axis=(1, 2)))
    if not (sizes > 0).all():
        raise ValueError("all landmarks of a shape lie at one place")
    if scale:
        shapes = shapes / sizes[:, None, None]
    mean = shapes[0]
    for _ in range(100):
        shapes = np.array([superimpose(shape, mean)(shape) for shape in shapes])
        new = shapes.mean(axis=0)
        if scale:
            new = new / np.sqrt(np.sum(new**2))
        moved, mean = np.sqrt(np.sum((new - mean) ** 2)), new
        if moved <= tolerance * np.sqrt(np.sum(mean**2)):
            break
    return Procrustes(shapes, mean, sizes)


def mean_shape(points: npt.ArrayLike, *, scale: bool = False) -> Floats:
    """The mean of shapes (n_cases, n_landmarks, 2) laid over each other, centred on 0; sizes stay unless `scale`."""
    return procrustes(points, scale=scale).mean
