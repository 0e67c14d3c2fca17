"""Tables for pandas."""

from __future__ import annotations

import re
from typing import TYPE_CHECKING, Any, Iterable

import numpy as np

from . import _rotations
from ._motion import Array

if TYPE_CHECKING:
    import pandas


def column_names(names: Iterable[str]) -> list[str]:
    """The names of joints as parts of the names of columns: letters of ASCII, digits and _; clashes are numbered."""
    used: set[str] = set()
    result = []
    for name in names:
        plain = re.sub("[^A-Za-z0-9_]", "_", name)
        unique, number = plain, 1
        while unique in used:
            number += 1
            unique = f"{plain}_{number}"
        used.add(unique)
        result.append(unique)
    return result


def to_pandas(names: list[str], times: Array, numbers: Any, positions: Array, quaternions: Array) -> pandas.DataFrame:
    """See Take.to_pandas."""
    import pandas

    angles = _rotations.to_euler(quaternions, "ZYX")[..., ::-1]
    values = np.concatenate([positions, angles], axis=2).reshape(len(times), -1)
    columns = [name + end for name in column_names(names) for end in ("_px", "_py", "_pz", "_rx", "_ry", "_rz")]
    table = pandas.DataFrame(values, columns=columns, index=pandas.Index(numbers, name="frame"))
    table.insert(0, "seconds", times)
    return table
