"""The options of reading and writing: which there are, and which values they take."""

from __future__ import annotations

import codecs
import math
import numbers
import operator
from typing import Any

# The options that decide what the numbers of a take are. Reading and writing have them.
MOTION = ("scale", "up", "fps", "frames", "resample", "in_place", "all_nodes")
_IMPORT_FLAGS = ("bones", "nulls", "chain_from_parent", "effector_to_last_bone", "group", "clip", "limits", "as_is", "strict")
IMPORT = (*_IMPORT_FLAGS, "length", "preset", "encoding")
_OUTPUT_FLAGS = ("mesh", "aim", "float32", "compress")
OUTPUT = (*_OUTPUT_FLAGS, "animations", "digits")


def number(name: str, value: Any) -> float:
    """Returns a finite number."""
    if isinstance(value, (bool, str, bytes)) or not isinstance(value, numbers.Real):
        try:
            value = value.__float__() if not isinstance(value, (bool, str, bytes)) else None
        except (AttributeError, TypeError, ValueError):
            value = None
        if value is None:
            raise TypeError(f"{name}: a number is expected")
    if not math.isfinite(value):
        raise ValueError(f"{name}={value!r}: a finite number is expected")
    return float(value)


def positive(name: str, value: Any) -> float:
    """Returns a finite number above zero."""
    result = number(name, value)
    if not result > 0.0:
        raise ValueError(f"{name}={value!r}: a number above zero is expected")
    return result


def choice(name: str, value: Any, allowed: tuple[str, ...]) -> str:
    """Returns one of the words, in any letter case."""
    if not isinstance(value, str):
        raise TypeError(f"{name}: one of {', '.join(map(repr, allowed))} is expected")
    if value.lower() not in allowed:
        raise ValueError(f"{name}={value!r}: one of {', '.join(map(repr, allowed))} is expected")
    return value.lower()


def flag(name: str, value: Any) -> bool:
    """Returns a truth value."""
    if value is True or value is False or type(value).__name__ in ("bool_", "bool"):
        return bool(value)
    raise TypeError(f"{name}: True or False is expected")


_LEAST, _MOST = -2**63, 2**63 - 1


def _frame(value: Any, missing: int) -> int:
    if value is None or value == "":
        return missing
    if isinstance(value, str):
        return int(value)
    return operator.index(value)


def frames(name: str, value: Any) -> tuple[int, int]:
    """Returns the first and the last frame of "10:20" or (10, 20); an end may be missing."""
    parts = value.split(":") if isinstance(value, str) else value
    try:
        first, last = parts
        result = (_frame(first, _LEAST), _frame(last, _MOST))
    except (TypeError, ValueError):
        raise ValueError(f"{name}={value!r}: two frame numbers are expected, such as \"10:20\" or (10, 20)") from None
    if not _LEAST <= result[0] <= _MOST or not _LEAST <= result[1] <= _MOST:
        raise ValueError(f"{name}={value!r}: the numbers are too large")
    if result[0] > result[1]:
        raise ValueError(f"{name}={value!r}: the first frame comes after the last one")
    return result


def encoding(name: str, value: Any) -> str:
    """Returns the name of an encoding."""
    if not isinstance(value, str):
        raise TypeError(f"{name}: the name of an encoding is expected")
    try:
        return codecs.lookup(value).name
    except LookupError:
        raise ValueError(f"{name}={value!r}: no encoding has this name") from None


def _digits(name: str, value: Any) -> int:
    if isinstance(value, bool):
        raise TypeError(f"{name}: a whole number is expected")
    try:
        digits = operator.index(value)
    except TypeError:
        raise TypeError(f"{name}: a whole number is expected") from None
    if not 0 <= digits <= 15:
        raise ValueError(f"{name}={value!r}: 0 to 15 is expected")
    return digits


def _value(name: str, value: Any) -> Any:
    if name in ("scale", "fps", "resample"):
        return positive(name, value)
    if name == "length":
        return number(name, value)
    if name == "up":
        return choice(name, value, ("x", "y", "z"))
    if name == "frames":
        return frames(name, value)
    if name == "preset":
        return choice(name, value, ("auto", "cmu", "none"))
    if name == "encoding":
        return encoding(name, value)
    if name == "animations":
        return choice(name, value, ("merged", "per-model"))
    if name == "digits":
        return _digits(name, value)
    return flag(name, value)


def checked(values: dict[str, Any], allowed: tuple[str, ...]) -> dict[str, Any]:
    """Returns the options that are not None, with values that the library takes. Raises TypeError and ValueError."""
    result: dict[str, Any] = {}
    for name, value in values.items():
        if name not in allowed:
            raise TypeError(f"there is no option {name!r}; the options are {', '.join(allowed)}")
        if value is not None:
            result[name] = _value(name, value)
    return result


def import_options(values: dict[str, Any], acclaim: bool) -> dict[str, Any]:
    """Returns the options of an import. Raises an error if they contradict each other."""
    result = {name: value for name, value in values.items() if name in IMPORT}
    if "nulls" in result:
        nulls = result.pop("nulls")
        if result.setdefault("bones", not nulls) == nulls:
            raise ValueError("nulls and bones: only one of them can be built")
    for name in ("limits", "length", "preset"):
        if name in result and not acclaim and result[name] not in (False, "auto"):
            raise ValueError(f"{name}: is for Acclaim files")
    if result.get("as_is") and (result.get("strict") or "encoding" in result):
        raise ValueError("strict and encoding need the survey, which as_is skips")
    if "fps" in values:
        result["fps"] = values["fps"]
    return result
