"""Writes takes."""

from __future__ import annotations

import errno
import hashlib
import json
import math
import os
from typing import Any, Callable

import numpy as np

from . import _core, _options
from ._motion import Motion

Progress = Callable[[float], object]


def _format_of(path: str) -> str:
    extension = os.path.splitext(path)[1].lower()
    formats = _core.formats()
    if extension not in formats:
        raise ValueError(f"{path}: the extension chooses the format: {' '.join(formats)}")
    return extension


def _require_honoured(extension: str, values: dict[str, Any], provenance: bool) -> None:
    """Raises an error for an option that the format does not honour."""
    formats = _core.formats()
    for name in [*values, *(["provenance"] if provenance else [])]:
        if name in formats[extension]:
            continue
        honouring = [each for each, honoured in formats.items() if name in honoured]
        raise ValueError(f"{name}: {extension} does not honour it; {', '.join(honouring)} "
                         f"{'does' if len(honouring) == 1 else 'do'}")


def _digits(motion: Motion) -> int:
    """The decimals of a .bvh whose places are within a thousand-millionth of the figure's size."""
    offsets = np.abs(motion.facts()["offsets"]).max()
    size = max(float(offsets), float(np.ptp(motion.arrays()["positions"][0], axis=0).max()))
    return 12 if size <= 0.0 else min(15, max(10, math.ceil(11.0 - math.log10(size))))


def _chosen(motion: Motion, facts: dict[str, Any], extension: str,
            values: dict[str, Any]) -> tuple[_core.Scene, dict[str, Any]]:
    """Returns the scene to write, and all options for it."""
    if len(motion.facts()["times"]) == 0:
        raise ValueError("the take has no frames")
    scene, options = motion.for_output()
    own = {"scale", "up", "frames", "resample", "in_place"}
    if own & options.keys() and values.keys() & set(_options.MOTION):
        scene, options = motion.as_arrays(facts["name"])
    options = {**options, **values}
    if "animations" in options:
        options["animation_per_model"] = options.pop("animations") == "per-model"
    if extension == ".bvh" and facts.get("is_exact") and "digits" not in options:
        options["digits"] = _digits(motion)
    if scene is not facts.get("scene"):
        options["findings"] = [json.dumps(finding) for finding in facts["findings"]]
    return scene, options


def _sources(facts: dict[str, Any], provenance: bool) -> list[tuple[bytes, int | None, str]]:
    """Describes the files that the take is from."""
    described = []
    for path, size, in_memory in facts["sources"]:
        digest = ""
        if provenance and not in_memory:
            try:
                with open(path, "rb") as file:
                    digest = hashlib.file_digest(file, "sha256").hexdigest()
            except OSError:
                digest = ""
        described.append((path, size, digest))
    return described


def _require_writable(paths: list[bytes], make_folders: bool, no_clobber: bool) -> None:
    for path in paths:
        folder = os.path.dirname(path) or b"."
        if make_folders:
            os.makedirs(folder, exist_ok=True)
        if not os.path.isdir(folder):
            code = errno.ENOTDIR if os.path.exists(folder) else errno.ENOENT
            raise OSError(code, os.strerror(code), os.fsdecode(path))
        if os.path.isdir(path):
            raise IsADirectoryError(errno.EISDIR, os.strerror(errno.EISDIR), os.fsdecode(path))
        if no_clobber and os.path.lexists(path):
            raise FileExistsError(errno.EEXIST, os.strerror(errno.EEXIST), os.fsdecode(path))


def _named(error: OSError, path: bytes) -> OSError:
    """Gives an error of the library the class and the number that Python has for it."""
    message = str(error)
    for code in (errno.EACCES, errno.ENOSPC, errno.EROFS, errno.EDQUOT, errno.ENAMETOOLONG, errno.EPERM, errno.ENOENT,
                 errno.EIO, errno.EFBIG):
        if message.endswith(os.strerror(code)) or os.strerror(code) + ":" in message:
            return OSError(code, os.strerror(code), os.fsdecode(path))
    return error


def write(motion: Motion, facts: dict[str, Any], path: Any, values: dict[str, Any], *, csv_names: Any, provenance: bool,
          make_folders: bool, no_clobber: bool, progress: Progress | None) -> None:
    """See Take.write."""
    target = os.fsencode(path)
    extension = _format_of(os.fsdecode(target))
    if progress is not None and not callable(progress):
        raise TypeError("progress: a function is expected")
    checked = _options.checked(values, (*_options.MOTION, *_options.OUTPUT))
    _require_honoured(extension, checked, provenance)
    if csv_names is not None and extension != ".csv":
        raise ValueError(f"csv_names: {extension} does not honour it; .csv does")
    paths = _core.files_of(extension, target)
    names = None if csv_names is None else os.fsencode(csv_names)
    _require_writable(paths if names is None else [*paths, names], make_folders, no_clobber)
    scene, options = _chosen(motion, facts, extension, checked)
    try:
        _core.write(scene, options, _sources(facts, provenance), extension, target, progress)
        if names is not None:
            _core.write_names(scene, options, names)
    except OSError as error:
        if type(error) is not OSError or error.errno is not None:
            raise
        raise _named(error, target) from None


def contact_sheet(motion: Motion, facts: dict[str, Any]) -> str | None:
    """The picture of a take as the text of an .svg; None if there is nothing to draw."""
    try:
        scene, options = _chosen(motion, facts, ".svg", {})
        return _core.write_bytes(scene, options, ".svg").decode("utf-8")
    except ValueError:
        return None
