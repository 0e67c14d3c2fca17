"""Quaternions and Euler angles. Quaternions are in the order x, y, z, w."""

from __future__ import annotations

from typing import Any

import numpy as np
import numpy.typing as npt

Array = npt.NDArray[np.float64]


def axes_of(order: Any) -> tuple[int, int, int]:
    """Returns the axes of an order such as "ZXY"."""
    if not isinstance(order, str):
        raise TypeError("order: three letters are expected, such as \"ZXY\"")
    axes = tuple("XYZ".find(letter) for letter in order.upper())
    if len(axes) != 3 or min(axes) < 0 or axes[0] == axes[1] or axes[1] == axes[2]:
        raise ValueError(f"order={order!r}: three of the letters X, Y and Z are expected, such as \"ZXY\", and no letter"
                         " twice in a row")
    return axes[0], axes[1], axes[2]


def product(a: Array, b: Array) -> Array:
    """The quaternions of R(a) @ R(b)."""
    ax, ay, az, aw = np.moveaxis(a, -1, 0)
    bx, by, bz, bw = np.moveaxis(b, -1, 0)
    return np.stack([aw * bx + ax * bw + ay * bz - az * by, aw * by - ax * bz + ay * bw + az * bx,
                     aw * bz + ax * by - ay * bx + az * bw, aw * bw - ax * bx - ay * by - az * bz], axis=-1)


def from_euler(degrees: Array, order: Any) -> Array:
    """The quaternions of R = R(first letter) @ R(second letter) @ R(third letter)."""
    half = np.radians(degrees) / 2.0
    result: Array | None = None
    for column, axis in enumerate(axes_of(order)):
        turn = np.zeros(degrees.shape[:-1] + (4,))
        turn[..., axis] = np.sin(half[..., column])
        turn[..., 3] = np.cos(half[..., column])
        result = turn if result is None else product(result, turn)
    assert result is not None
    return result


def to_euler(quaternions: Array, order: Any) -> Array:
    """The angles in degrees, from -180 to 180, of R = R(first letter) @ R(second letter) @ R(third letter).

    If the first and the third axis coincide, so that only their sum counts, the first angle is 0.
    """
    # The method of Bernardes and Viollet (2022), which is exact at every angle.
    i, j, k = reversed(axes_of(order))
    symmetric = i == k
    if symmetric:
        k = 3 - i - j
    sign = (i - j) * (j - k) * (k - i) // 2
    q = quaternions
    if symmetric:
        a, b, c, d = q[..., 3], q[..., i], q[..., j], q[..., k] * sign
    else:
        a, b = q[..., 3] - q[..., j], q[..., i] + q[..., k] * sign
        c, d = q[..., j] + q[..., 3], q[..., k] * sign - q[..., i]
    angles = np.empty(q.shape[:-1] + (3,))
    middle = 2.0 * np.arctan2(np.hypot(c, d), np.hypot(a, b))
    half_sum = np.arctan2(b, a)
    half_difference = np.arctan2(d, c)
    third = half_sum - half_difference
    first = half_sum + half_difference
    low = np.abs(middle) <= 1e-12
    high = np.abs(middle - np.pi) <= 1e-12
    first = np.where(low | high, 0.0, first)
    third = np.where(low, 2.0 * half_sum, np.where(high, -2.0 * half_difference, third))
    if not symmetric:
        first = first * sign
        middle = middle - np.pi / 2.0
    angles[..., 0], angles[..., 1], angles[..., 2] = first, middle, third
    np.degrees(angles, out=angles)
    angles -= 360.0 * np.rint(angles / 360.0)
    return angles


def with_continuous_signs(quaternions: Array) -> Array:
    """Returns quaternions with w >= 0 in the first frame, whose signs do not jump. Returns the same array if they are."""
    if len(quaternions) == 0:
        return quaternions
    first = np.where(quaternions[0, :, 3] < 0.0, -1.0, 1.0)
    jumps = np.einsum("fjk,fjk->fj", quaternions[1:], quaternions[:-1]) < 0.0
    if not jumps.any() and (first > 0.0).all():
        return quaternions
    signs = np.empty(quaternions.shape[:2])
    signs[0] = first
    signs[1:] = np.where(jumps, -1.0, 1.0)
    return quaternions * np.cumprod(signs, axis=0)[..., None]


def to_6d(quaternions: npt.ArrayLike) -> Array:
    """The first two columns of the rotation matrices, one after the other: (..., 4) to (..., 6).

    Unlike quaternions and angles, these six numbers are continuous in the rotation, which networks learn more easily.
    """
    q = np.asarray(quaternions, np.float64)
    if q.ndim == 0 or q.shape[-1] != 4:
        raise ValueError(f"quaternions: the shape (..., 4) is expected, not {q.shape}")
    x, y, z, w = np.moveaxis(q, -1, 0)
    return np.stack([1.0 - 2.0 * (y * y + z * z), 2.0 * (x * y + w * z), 2.0 * (x * z - w * y),
                     2.0 * (x * y - w * z), 1.0 - 2.0 * (x * x + z * z), 2.0 * (y * z + w * x)], axis=-1)


def from_6d(numbers: npt.ArrayLike) -> Array:
    """The quaternions (x, y, z, w) of two columns that need neither have unit length nor be perpendicular: (..., 6) to
    (..., 4). The second column is made perpendicular to the first one."""
    columns = np.asarray(numbers, np.float64)
    if columns.ndim == 0 or columns.shape[-1] != 6:
        raise ValueError(f"numbers: the shape (..., 6) is expected, not {columns.shape}")
    first, second = columns[..., :3], columns[..., 3:]
    with np.errstate(divide="ignore", invalid="ignore"):
        a = first / np.linalg.norm(first, axis=-1, keepdims=True)
        b = second - (a * second).sum(-1, keepdims=True) * a
        lengths = np.linalg.norm(b, axis=-1, keepdims=True)
        b = b / lengths
    c = np.cross(a, b)
    if not np.isfinite(c).all() or not (lengths > 1e-9 * np.linalg.norm(second, axis=-1, keepdims=True)).all():
        raise ValueError("numbers: two columns are zero or parallel")
    m = np.stack([a, b, c], axis=-1)
    # Each row is the quaternion times one of its own parts; the longest row is the most exact one.
    d = np.moveaxis(np.diagonal(m, axis1=-2, axis2=-1), -1, 0)
    s = m + np.swapaxes(m, -1, -2)
    x, y, z = m[..., 2, 1] - m[..., 1, 2], m[..., 0, 2] - m[..., 2, 0], m[..., 1, 0] - m[..., 0, 1]
    rows = np.stack([
        np.stack([1.0 + d[0] - d[1] - d[2], s[..., 0, 1], s[..., 0, 2], x], axis=-1),
        np.stack([s[..., 0, 1], 1.0 - d[0] + d[1] - d[2], s[..., 1, 2], y], axis=-1),
        np.stack([s[..., 0, 2], s[..., 1, 2], 1.0 - d[0] - d[1] + d[2], z], axis=-1),
        np.stack([x, y, z, 1.0 + d[0] + d[1] + d[2]], axis=-1)], axis=-2)
    longest = np.argmax(np.stack([d[0], d[1], d[2], d.sum(0)], axis=-1), axis=-1)[..., None, None]
    chosen = np.take_along_axis(rows, longest, axis=-2)[..., 0, :]
    result: Array = chosen / np.linalg.norm(chosen, axis=-1, keepdims=True)
    return result
