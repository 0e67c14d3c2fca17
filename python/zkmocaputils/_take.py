"""The class Take."""

from __future__ import annotations

import operator
import os
from typing import TYPE_CHECKING, Any, Callable, Sequence

import numpy as np
import numpy.typing as npt

from . import _building, _options, _rotations, _tables, _writing
from ._motion import Array, Motion, frozen
from ._records import Facts, Finding

if TYPE_CHECKING:
    import pandas


class Take:
    """A motion with its skeleton: F frames of J joints, end sites among them. read() and Take.from_arrays() make takes.

    Arrays are C-contiguous, of 64-bit floats and read-only; `take.positions.copy()` can be changed. They are computed in
    one pass when the first of them is needed, are kept, and stay valid after the take. Lengths are in the unit of the
    file (`unit` says how many metres that is), angles in degrees, times in seconds. Quaternions are in the order
    x, y, z, w, of unit length, with w >= 0 in the first frame and without jumps of the sign. Vectors are columns.

    A take never changes. `==` compares identity. Takes can be pickled.
    """

    _motion: Motion
    _facts: dict[str, Any]  # what is known besides the numbers: see _reading and _building
    _cache: dict[str, Any]

    def __init__(self) -> None:
        raise TypeError("read() and Take.from_arrays() make takes")

    @classmethod
    def _make(cls, motion: Motion, facts: dict[str, Any]) -> Take:
        take = object.__new__(cls)
        take._motion = motion
        take._facts = facts
        take._cache = {}
        return take

    @staticmethod
    def from_arrays(names: Sequence[str], parents: Any, offsets: Any, local_quaternions: Any = None, *,
                    root_positions: Any = None, local_positions: Any = None, euler: Any = None, order: str | None = None,
                    fps: float, unit: float | None = None, up: str | None = None, is_end: Any = None,
                    name: str = "take") -> Take:
        """Makes a take from arrays, such as the output of a model.

        Args:
            names: the names of the J joints, all different.
            parents: (J,) the index of each joint's parent, which comes before it; -1 for a root.
            offsets: (J, 3) the place of each joint as seen from its parent at rest.
            local_quaternions: (F, J, 4) the rotation of each joint as seen from its parent: x, y, z, w, of any length
                but zero. Or pass euler instead.
            root_positions: (F, 3) the place of the root in each frame; with several roots (F, roots, 3). If it is
                missing, roots stay at their offsets.
            local_positions: (F, J, 3) the place of every joint as seen from its parent, instead of root_positions.
            euler: (F, J, 3) angles in degrees, instead of local_quaternions; order says of which axes.
            order: the axes of euler, such as "ZXY": R = Rz @ Rx @ Ry.
            fps: frames per second.
            unit: how many metres one unit of length is, such as 0.01; None to guess it from the height of the figure.
            up: "x", "y" or "z", the axis that points up; None to guess it from the figure.
            is_end: (J,) whether a joint is an end site. By default it is, if it has no children and its name is that of
                its parent and "_End".
            name: the name of the model.

        Raises:
            ValueError, TypeError: an argument does not fit; the message begins with its name.
        """
        motion, facts = _building.from_arrays(
            names, parents, offsets, local_quaternions, root_positions=root_positions, local_positions=local_positions,
            euler=euler, order=order, fps=fps, unit=unit, up=up, is_end=is_end, name=name)
        return Take._make(motion, facts)

    # --- poses ---

    @property
    def positions(self) -> Array:
        """(F, J, 3) positions in the world."""
        return self._motion.arrays()["positions"]

    @property
    def quaternions(self) -> Array:
        """(F, J, 4) rotations in the world, x, y, z, w."""
        return self._motion.arrays()["quaternions"]

    @property
    def local_positions(self) -> Array:
        """(F, J, 3) positions as seen from the parent joint; of a root, in the world."""
        return self._motion.arrays()["local_positions"]

    @property
    def local_quaternions(self) -> Array:
        """(F, J, 4) rotations as seen from the parent joint, x, y, z, w; of a root, in the world."""
        return self._motion.arrays()["local_quaternions"]

    @property
    def quaternions_wxyz(self) -> Array:
        """(F, J, 4) rotations in the world, in the order w, x, y, z."""
        return self._cached("wxyz", lambda: frozen(self.quaternions[..., [3, 0, 1, 2]]))

    def euler(self, order: str) -> Array:
        """(F, J, 3) local rotations as angles in degrees, from -180 to 180, in the order of the letters.

        The angles are those of turned axes: for "ZXY", R = Rz @ Rx @ Ry, and the three numbers are those of z, x and y.
        Letters may be in any of the orders XYZ, XZY, YXZ, YZX, ZXY, ZYX, and also XYX and the like.
        """
        key = "".join("XYZ"[axis] for axis in _rotations.axes_of(order))
        return self._cached("euler " + key, lambda: frozen(_rotations.to_euler(self.local_quaternions, key)))

    # --- the skeleton ---

    @property
    def names(self) -> list[str]:
        """The names of the J joints and end sites, all different; a new list each time."""
        return list(self._motion.facts()["names"])

    @property
    def source_names(self) -> list[str]:
        """The names as the file has them; several joints may have the same one."""
        return list(self._motion.facts()["source_names"])

    @property
    def parents(self) -> npt.NDArray[np.int32]:
        """(J,) the index of each joint's parent, -1 for a root. A parent comes before its children."""
        return self._motion.facts()["parents"]  # type: ignore[no-any-return]

    @property
    def offsets(self) -> Array:
        """(J, 3) local_positions of the rest pose."""
        return self._motion.facts()["offsets"]  # type: ignore[no-any-return]

    @property
    def is_end(self) -> npt.NDArray[np.bool_]:
        """(J,) whether the joint is an end site."""
        return self._motion.facts()["is_end"]  # type: ignore[no-any-return]

    # --- time ---

    @property
    def fps(self) -> float:
        """Frames per second; 0 if there is only the rest pose."""
        return float(self._motion.facts()["fps"])

    @property
    def times(self) -> Array:
        """(F,) seconds from the first frame."""
        return self._motion.facts()["times"]  # type: ignore[no-any-return]

    @property
    def frame_numbers(self) -> npt.NDArray[np.int64]:
        """(F,) the numbers by which people know the frames: the first of a BVH file is 1."""
        return self._motion.facts()["frame_numbers"]  # type: ignore[no-any-return]

    @property
    def start_time(self) -> float:
        """Seconds from the first frame of the take that this one is a part of to the first frame of this one."""
        return self._motion.start_time

    def __len__(self) -> int:
        """The number of frames."""
        return len(self.times)

    # --- facts ---

    @property
    def name(self) -> str:
        """The name of the model; of the first, if there are several."""
        return str(self._facts["name"])

    @property
    def unit(self) -> float:
        """Metres per unit of length; 0 if it is not known. Unless the caller stated it, it is guessed from the figure."""
        return float(self._motion.facts()["unit"])

    @property
    def up(self) -> str:
        """The axis that points up: "x", "y" or "z"."""
        return str(self._motion.facts()["up"])

    @property
    def findings(self) -> list[Finding]:
        """What the survey of the files noticed, sorted by line; a new list each time."""
        return list(self._facts["findings"])

    @property
    def facts(self) -> Facts:
        """What the take holds.

        Members: name, models, format, files, joints, end_sites, frames, fps, seconds, height (in the unit of the take, 0
        if it is not known), unit (metres per unit), up, rate_origin ("file", "request", "preset" or "assumed"),
        stated_fps (the rate that the file states, or None), notes (what the numbers leave out).
        """
        numbers = self._motion.facts()
        ends = int(numbers["is_end"].sum())
        frames, fps = len(self), self.fps
        known = {name: self._facts[name] for name in ("name", "models", "format", "files", "rate_origin", "stated_fps")}
        return Facts(
            known, files=list(known["files"]), joints=len(numbers["names"]) - ends, end_sites=ends, frames=frames,
            fps=fps, seconds=frames / fps if fps > 0.0 else 0.0, height=numbers["height"], unit=self.unit, up=self.up,
            notes=list(numbers["notes"]))

    def __repr__(self) -> str:
        facts = self.facts
        parts = [f"{facts.frames} frame{'' if facts.frames == 1 else 's'}"]
        if facts.fps > 0.0:
            parts[0] += f" at {facts.fps:.6g} per second"
        parts.append(f"{facts.joints} joint{'' if facts.joints == 1 else 's'}")
        parts.append(f"{facts.end_sites} end site{'' if facts.end_sites == 1 else 's'}")
        if facts.height > 0.0:
            metres = f" ({facts.height * facts.unit:.2f} m)" if facts.unit > 0.0 else ""
            parts.append(f"{facts.height:.4g} tall{metres}")
        return f"<zkmocaputils.Take {self.name!r}: {', '.join(parts)}>"

    def _repr_svg_(self) -> str | None:
        """The contact sheet, which notebooks show."""
        return _writing.contact_sheet(self._motion, self._facts)

    # --- other takes ---

    def __getitem__(self, rows: slice) -> Take:
        """take[a:b:c]: these frames, as a take. Its arrays are views where they can be, its rate is fps / c."""
        if not isinstance(rows, slice):
            raise TypeError("a take has parts, such as take[5:6], but no single items; take.positions[5] is a pose")
        if rows.step is not None and operator.index(rows.step) <= 0:
            raise ValueError(f"the step {rows.step} has to be above 0, because time does not run backwards")
        start, stop, step = rows.indices(len(self))
        return Take._make(self._motion.part(slice(start, max(start, stop), step)), self._facts)

    def resample(self, fps: float) -> Take:
        """Returns the motion at another number of frames per second, from the first frame on.

        Places are interpolated along lines, rotations the short way. The last frame is there if it falls on a sample.
        """
        rate = _options.positive("fps", fps)
        if not self.fps > 0.0 or len(self) == 0:
            raise ValueError("the take has no motion that could be sampled")
        scene, options = self._motion.for_output()
        if "resample" in options:
            scene, options = self._motion.as_arrays(self.name)
        motion = Motion(scene, {**options, "resample": rate}, self._motion.threads)
        motion.start_time = self._motion.start_time
        motion.order = self._motion.order_in(scene)
        motion.facts()
        return Take._make(motion, self._facts)

    # --- outputs ---

    def write(self, path: str | os.PathLike[str], *, frames: Any = None, scale: float | None = None,
              up: str | None = None, fps: float | None = None, resample: float | None = None, in_place: bool | None = None,
              all_nodes: bool | None = None, mesh: bool | None = None, aim: bool | None = None,
              animations: str | None = None, digits: int | None = None, float32: bool | None = None,
              compress: bool | None = None, csv_names: str | os.PathLike[str] | None = None, provenance: bool = False,
              make_folders: bool = False, no_clobber: bool = False,
              progress: Callable[[float], object] | None = None) -> None:
        """Writes the take. The extension of the path is the format: .glb .gltf .fbx .bvh .csv .npz .svg .json and others that
        `zkhost import --help` lists.

        The options are those of `zkhost import`, applied to the take as it is: scale multiplies its lengths, up says
        which of its axes points up, frames are two of its frame_numbers, such as "10:20" or (10, 20), fps states its
        rate. A file is written whole or not at all.

        Raises:
            ValueError: no such format, an option that the format does not honour, or a take that it cannot hold.
            FileExistsError: with no_clobber, a file exists already.
            OSError: the file cannot be written.
            Whatever progress raises; it is called with the share that is done, and nothing is written then.
        """
        values = {"frames": frames, "scale": scale, "up": up, "fps": fps, "resample": resample, "in_place": in_place,
                  "all_nodes": all_nodes, "mesh": mesh, "aim": aim, "animations": animations, "digits": digits,
                  "float32": float32, "compress": compress}
        _writing.write(self._motion, self._facts, path, values, csv_names=csv_names, provenance=provenance,
                       make_folders=make_folders, no_clobber=no_clobber, progress=progress)

    def to_pandas(self) -> pandas.DataFrame:
        """Returns the table that a .csv holds: a row a frame, the frame number as index, seconds, and for each joint
        `<name>_px _py _pz _rx _ry _rz`, its position and its rotation in the world (R = Rz @ Ry @ Rx, degrees).

        Raises ImportError if pandas is not there.
        """
        return _tables.to_pandas(self.names, self.times, self.frame_numbers, self.positions, self.quaternions)

    # --- pickling ---

    def __reduce__(self) -> Any:
        return _unpickled, (self._motion, self._facts)

    def _cached(self, key: str, make: Callable[[], Any]) -> Array:
        if key not in self._cache:
            self._cache[key] = make()
        result: Array = self._cache[key]
        return result


def _unpickled(motion: Motion, facts: dict[str, Any]) -> Take:
    return Take._make(motion, facts)


Take.__module__ = "zkmocaputils"
