"""The numbers of a take, and the scene from which its outputs are written."""

from __future__ import annotations

import threading
from typing import Any

import numpy as np
import numpy.typing as npt

from . import _core, _rotations

Array = npt.NDArray[np.float64]

NAMES = ("positions", "quaternions", "local_positions", "local_quaternions")
_WIDTHS = (3, 4, 3, 4)


def frozen(array: Any) -> Any:
    """Returns the array, read-only and C-contiguous."""
    array = np.ascontiguousarray(array)
    array.flags.writeable = False
    return array


def model_name(name: str, joints: list[str]) -> str:
    """Returns a name for the model of a scene that no joint has, because otherwise the joint would get another one."""
    while name in joints:
        name += "_"
    return name


class Motion:
    """The numbers of a take. `scene` is None if the arrays are all there is."""

    def __init__(self, scene: _core.Scene | None, options: dict[str, Any], threads: int = 0) -> None:
        self.scene = scene
        self.options = options
        self.threads = threads
        self.order: npt.NDArray[np.int64] | None = None  # for each joint, its index in the scene's table
        self.base: tuple[Motion, slice] | None = None
        self.start_time = 0.0
        self._table: _core.Table | None = None
        self._facts: dict[str, Any] | None = None
        self._arrays: dict[str, Array] | None = None
        self._lock = threading.RLock()

    # --- what the numbers are about ---

    def facts(self) -> dict[str, Any]:
        """names, source_names, parents, offsets, is_end, times, frame_numbers, fps, unit, height, up, notes."""
        if self._facts is None:
            with self._lock:
                if self._facts is None:
                    self._facts = self._sliced_facts() if self.base else self._table_facts()
        return self._facts

    def table(self) -> _core.Table:
        with self._lock:
            if self._table is None:
                assert self.scene is not None
                self._table = _core.Table(self.scene, self.options)
            return self._table

    def _table_facts(self) -> dict[str, Any]:
        facts = self.table().describe()
        if self.order is None:
            return facts
        index = {int(there): here for here, there in enumerate(self.order)}
        parents = [int(facts["parents"][there]) for there in self.order]
        facts["parents"] = frozen(np.array([-1 if parent < 0 else index[parent] for parent in parents], np.int32))
        for name in ("names", "source_names"):
            facts[name] = [facts[name][there] for there in self.order]
        for name in ("offsets", "is_end"):
            facts[name] = frozen(facts[name][self.order])
        return facts

    def _sliced_facts(self) -> dict[str, Any]:
        assert self.base is not None
        base, rows = self.base
        facts = dict(base.facts())
        times = facts["times"][rows]
        facts["times"] = frozen(times - times[0]) if len(times) else frozen(times)
        facts["frame_numbers"] = frozen(facts["frame_numbers"][rows])
        facts["fps"] = facts["fps"] / rows.step
        return facts

    # --- the arrays ---

    def arrays(self) -> dict[str, Array]:
        if self._arrays is None:
            with self._lock:
                if self._arrays is None:
                    self._arrays = self._sliced_arrays() if self.base else self._table_arrays()
        return self._arrays

    def _table_arrays(self) -> dict[str, Array]:
        arrays = dict(zip(NAMES, self.table().arrays(self.threads)))
        if self.order is not None:
            arrays = {name: frozen(array[:, self.order]) for name, array in arrays.items()}
        return arrays

    def _sliced_arrays(self) -> dict[str, Array]:
        assert self.base is not None
        base, rows = self.base
        arrays = {name: array[rows] for name, array in base.arrays().items()}
        for name in ("quaternions", "local_quaternions"):
            arrays[name] = _rotations.with_continuous_signs(arrays[name])
        return {name: frozen(array) for name, array in arrays.items()}

    def numbers(self, buffer: Array) -> None:
        """Writes the arrays one after the other into the buffer."""
        if self._arrays is None and self.scene is not None and self.order is None and self.base is None:
            self.table().fill(buffer, self.threads)
            return
        start = 0
        for array in self.arrays().values():
            buffer[start:start + array.size] = array.ravel()
            start += array.size

    # --- parts and scenes ---

    def part(self, rows: slice) -> Motion:
        """The rows of a slice with a step above zero, as a view."""
        part = Motion(None, {})
        part.base = (self, rows)
        times = self.facts()["times"][rows]
        part.start_time = self.start_time + (float(times[0]) if len(times) else 0.0)
        return part

    def for_output(self) -> tuple[_core.Scene, dict[str, Any]]:
        """A scene and the options with which an output of it has the numbers of this motion."""
        if self.scene is not None:
            return self.scene, self.options
        if self.base is not None:
            base, rows = self.base
            # A frame of the scene is a row as long as nothing between them is computed.
            if base.scene is not None and rows.step == 1 and not {"resample", "in_place"} & base.options.keys():
                numbers = self.facts()["frame_numbers"]
                if len(numbers) and self.facts()["fps"] > 0.0:
                    return base.scene, {**base.options, "frames": (int(numbers[0]), int(numbers[-1]))}
        return self.as_arrays()

    def order_in(self, scene: _core.Scene) -> npt.NDArray[np.int64] | None:
        """What `order` is for this scene, which for_output returned."""
        if self.scene is None and self.base is not None and self.base[0].scene is scene:
            return self.base[0].order
        if self.scene is scene:
            return self.order
        return None

    def as_arrays(self, name: str = "take") -> tuple[_core.Scene, dict[str, Any]]:
        """A scene that is built from the arrays, and its options."""
        facts, arrays = self.facts(), self.arrays()
        numbers = facts["frame_numbers"].astype(np.float64)
        if len(numbers) == 0:
            raise ValueError("the take has no frames")
        step = 1.0
        if len(numbers) > 1:
            step = (numbers[-1] - numbers[0]) / (len(numbers) - 1)
            if not np.array_equal(numbers, numbers[0] + step * np.arange(len(numbers))) or step <= 0.0:
                numbers, step = np.arange(1.0, len(numbers) + 1.0), 1.0
        rate = facts["fps"] * step
        scene = _core.build(model_name(name, facts["names"]), facts["names"], [int(parent) for parent in facts["parents"]],
                            [bool(is_end) for is_end in facts["is_end"]], facts["offsets"], list(numbers),
                            1.0 / rate if rate > 0.0 else 0.0, arrays["local_positions"], arrays["local_quaternions"])
        options = {"unit": facts["unit"], "known_up": facts["up"]}
        if rate > 0.0:
            options["fps"] = rate
        return scene, options

    # --- from one process to another ---

    def __getstate__(self) -> dict[str, Any]:
        return {"facts": self.facts(), "arrays": self.arrays(), "start_time": self.start_time}

    def __setstate__(self, state: dict[str, Any]) -> None:
        Motion.__init__(self, None, {})
        self.adopt(state["facts"], state["arrays"])
        self.start_time = state["start_time"]

    def adopt(self, facts: dict[str, Any], arrays: dict[str, Array]) -> None:
        """Takes what another motion has computed."""
        facts = {name: frozen(value) if isinstance(value, np.ndarray) else value for name, value in facts.items()}
        self._facts = facts
        self._arrays = {name: frozen(array) for name, array in arrays.items()}


def arrays_in(buffer: Array, frames: int, joints: int) -> dict[str, Array]:
    """The arrays that Motion.numbers wrote into the buffer. They are views of it."""
    arrays: dict[str, Array] = {}
    start = 0
    for name, width in zip(NAMES, _WIDTHS):
        size = frames * joints * width
        arrays[name] = buffer[start:start + size].reshape(frames, joints, width)
        start += size
    return arrays
