"""Checks the arguments of Take.from_arrays, and makes a scene from them."""

from __future__ import annotations

from typing import Any, Sequence

import numpy as np
import numpy.typing as npt

from . import _core, _options, _rotations
from ._motion import Array, Motion, frozen, model_name


def _numbers(name: str, value: Any, shape: tuple[int | None, ...], meaning: str) -> Array:
    """Returns finite numbers in an array of this shape, in which None stands for any size."""
    try:
        array = np.asarray(value)
        if array.dtype.kind not in "fiu":
            raise TypeError
        array = np.ascontiguousarray(array, np.float64)
    except (TypeError, ValueError):
        raise TypeError(f"{name}: an array of numbers is expected") from None
    fits = array.ndim == len(shape) and all(
        wanted in (None, there) for wanted, there in zip(shape, array.shape))
    if not fits:
        raise ValueError(f"{name}: the shape {meaning} is expected, not {array.shape}")
    if not np.isfinite(array).all():
        raise ValueError(f"{name}: not all numbers are finite")
    return array


def _checked_names(names: Any) -> list[str]:
    if isinstance(names, (str, bytes)) or not hasattr(names, "__iter__"):
        raise TypeError("names: a list of texts is expected")
    result = []
    for name in names:
        if not isinstance(name, str):
            raise TypeError("names: a list of texts is expected")
        if not name:
            raise ValueError("names: a name is empty")
        if "\0" in name or any(0xD800 <= ord(letter) < 0xE000 for letter in name):
            raise ValueError(f"names: {name!r} has a character that names cannot have")
        result.append(str(name))
    if not result:
        raise ValueError("names: there are no joints")
    if len(set(result)) < len(result):
        twice = next(name for name in result if result.count(name) > 1)
        raise ValueError(f"names: {twice!r} is there twice")
    return result


def _checked_parents(parents: Any, joints: int) -> list[int]:
    array = np.asarray(parents)
    if array.dtype.kind not in "iu":
        raise TypeError("parents: whole numbers are expected, -1 for a root")
    if array.shape != (joints,):
        raise ValueError(f"parents: the shape (joints,) = ({joints},) is expected, not {array.shape}")
    result = [int(parent) for parent in array]
    for joint, parent in enumerate(result):
        if not -1 <= parent < joints:
            raise ValueError(f"parents: {parent} is no index of a joint; -1 stands for a root")
        if parent >= joint:
            raise ValueError(f"parents: joint {joint} comes before its parent {parent}")
    return result


def _checked_ends(is_end: Any, names: list[str], parents: list[int]) -> list[bool]:
    leaves = [joint not in parents for joint in range(len(names))]
    if is_end is None:
        return [leaf and parent >= 0 and name == names[parent] + "_End"
                for name, parent, leaf in zip(names, parents, leaves)]
    array = np.asarray(is_end)
    if array.dtype.kind != "b":
        raise TypeError("is_end: truth values are expected")
    if array.shape != (len(names),):
        raise ValueError(f"is_end: the shape (joints,) = ({len(names)},) is expected, not {array.shape}")
    for joint, end in enumerate(array):
        if end and (not leaves[joint] or parents[joint] < 0):
            raise ValueError(f"is_end: {names[joint]!r} has children or no parent, so it is no end site")
    return [bool(end) for end in array]


def _checked_rotations(quaternions: Any, euler: Any, order: str | None, joints: int) -> Array:
    if (quaternions is None) == (euler is None):
        raise TypeError("local_quaternions, euler: exactly one of them is expected")
    if quaternions is None:
        if order is None:
            raise TypeError("order: is expected with euler, such as \"ZXY\"")
        _rotations.axes_of(order)
        return _rotations.from_euler(_numbers("euler", euler, (None, joints, 3), f"(frames, {joints}, 3)"), order)
    if order is not None:
        raise TypeError("order: belongs to euler, not to local_quaternions")
    result = _numbers("local_quaternions", quaternions, (None, joints, 4), f"(frames, {joints}, 4)")
    with np.errstate(over="ignore", under="ignore"):
        lengths = np.sqrt(np.einsum("fjk,fjk->fj", result, result))
    if not (lengths > 1e-100).all() or not np.isfinite(lengths).all():
        raise ValueError("local_quaternions: a quaternion has the length zero or is too large")
    unit: Array = result / lengths[..., None]
    return unit


def _checked_positions(root_positions: Any, local_positions: Any, offsets: Array, parents: list[int],
                       frames: int) -> Array:
    joints = len(parents)
    if local_positions is not None:
        if root_positions is not None:
            raise TypeError("root_positions, local_positions: at most one of them is expected")
        return _numbers("local_positions", local_positions, (frames, joints, 3), f"({frames}, {joints}, 3)")
    positions = np.empty((frames, joints, 3))
    positions[:] = offsets
    if root_positions is not None:
        roots = [joint for joint, parent in enumerate(parents) if parent < 0]
        if len(roots) == 1 and np.ndim(root_positions) == 2:
            positions[:, roots[0]] = _numbers("root_positions", root_positions, (frames, 3), f"({frames}, 3)")
        else:
            meaning = f"({frames}, 3)" if len(roots) == 1 else f"({frames}, {len(roots)}, 3)"
            positions[:, roots] = _numbers("root_positions", root_positions, (frames, len(roots), 3), meaning)
    return positions


def _depth_first(parents: list[int]) -> npt.NDArray[np.int64]:
    """Returns for each joint its index in depth-first order, in which scenes list joints."""
    children: list[list[int]] = [[] for _ in parents]
    pending: list[int] = []
    for joint in reversed(range(len(parents))):
        (pending if parents[joint] < 0 else children[parents[joint]]).append(joint)
    result = np.empty(len(parents), np.int64)
    count = 0
    while pending:
        joint = pending.pop()
        result[joint] = count
        count += 1
        pending += children[joint]
    return result


def from_arrays(names: Sequence[str], parents: Any, offsets: Any, local_quaternions: Any, *, root_positions: Any,
                local_positions: Any, euler: Any, order: str | None, fps: Any, unit: Any, up: Any, is_end: Any,
                name: Any) -> tuple[Motion, dict[str, Any]]:
    """See Take.from_arrays."""
    checked_names = _checked_names(names)
    joints = len(checked_names)
    checked_parents = _checked_parents(parents, joints)
    checked_ends = _checked_ends(is_end, checked_names, checked_parents)
    checked_offsets = _numbers("offsets", offsets, (joints, 3), f"({joints}, 3)")
    rotations = _checked_rotations(local_quaternions, euler, order, joints)
    frames = len(rotations)
    if frames == 0:
        raise ValueError(f"{'euler' if local_quaternions is None else 'local_quaternions'}: there are no frames")
    positions = _checked_positions(root_positions, local_positions, checked_offsets, checked_parents, frames)
    rate = _options.positive("fps", fps) if frames > 1 or fps != 0 else 0.0
    options: dict[str, Any] = {"fps": rate} if rate else {}
    if unit is not None:
        options["unit"] = _options.positive("unit", unit) if unit != 0 else 0.0
    if up is not None:
        options["known_up"] = _options.choice("up", up, ("x", "y", "z"))
    if not isinstance(name, str) or not name or "\0" in name:
        raise TypeError("name: a text is expected")
    scene = _core.build(model_name(name, checked_names), checked_names, checked_parents, checked_ends, checked_offsets,
                        [float(frame) for frame in range(1, frames + 1)], 1.0 / rate if rate else 0.0, positions,
                        frozen(rotations))
    motion = Motion(scene, options)
    order_in_scene = _depth_first(checked_parents)
    if not np.array_equal(order_in_scene, np.arange(joints)):
        motion.order = order_in_scene
    facts = {"name": name, "models": [name], "format": "arrays", "files": [], "sources": [], "findings": [],
             "rate_origin": "request", "stated_fps": None, "is_exact": True}
    return motion, facts
