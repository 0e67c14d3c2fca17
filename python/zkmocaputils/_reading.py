"""Reads and checks files."""

from __future__ import annotations

import re
import warnings
from typing import Any, Callable

from . import _core, _options, _sources
from ._errors import ReadError, ReadWarning
from ._motion import Motion
from ._records import CheckResult, Facts, Finding, findings_of
from ._take import Take

_ALLOWED = (*_options.IMPORT, *_options.MOTION)
# About how many bytes of an .amc one value takes, to tell how far its import is.
_BYTES_PER_VALUE = 8


def _shown(finding: Finding, path: str) -> str:
    line = f":{finding.line}" if finding.line else ""
    return f"{path}{line}: {finding.message} [{finding.code}]"


def _error_of(imported: dict[str, Any], findings: list[Finding], files: _sources.Files) -> Exception:
    """Returns the exception for an import that failed."""
    paths = [file.shown for file in files.all()]
    if imported["problem"]:
        return OSError(imported["problem"].decode("utf-8", "replace"))
    if imported["refused"]:
        for severity in ("error", "warning"):
            for finding in findings:
                if finding.severity == severity:
                    path = str(finding.get("file", paths[0]))
                    return ReadError(_shown(finding, path), path, finding.line, finding.code)
    message = imported["error"].decode("utf-8", "replace") or "nothing could be read"
    line = re.search(r"\bline (\d+)", message, re.IGNORECASE)
    path = paths[-1] if "AMC" in message else paths[0]
    return ReadError(f"{path}: {message}", path, int(line[1]) if line else 0)


def warn_of(take_facts: dict[str, Any], stacklevel: int) -> None:
    """Turns the warnings of the survey into warnings of Python, one for each code and file."""
    told = set()
    for finding in take_facts["findings"]:
        path = str(finding.get("file", take_facts["files"][0]))
        if finding.severity != "warning" or (finding.code, path) in told:
            continue
        told.add((finding.code, path))
        warnings.warn(ReadWarning(_shown(finding, path), path, finding.line, finding.code), stacklevel=stacklevel)
    if take_facts["partial"]:
        path = take_facts["files"][0]
        warnings.warn(ReadWarning(f"{path}: read in part: {take_facts['partial']}", path), stacklevel=stacklevel)


def checked_options(options: dict[str, Any]) -> dict[str, Any]:
    """Returns the options of read() that are not None. Raises TypeError and ValueError."""
    return _options.checked(options, _ALLOWED)


def load(files: _sources.Files, values: dict[str, Any], progress: Callable[[float], object] | None = None,
         threads: int = 0) -> Take:
    """Imports the files. `values` are what checked_options returned."""
    acclaim = files.first.kind != "bvh"
    first, motion = files.first, files.motion
    imported = _core.read(first.for_core(), motion and motion.for_core(), acclaim,
                          _options.import_options(values, acclaim), progress,
                          motion.size // _BYTES_PER_VALUE if motion else 0)
    findings = findings_of(imported["findings"])
    if imported["status"] not in ("imported", "part"):
        raise _error_of(imported, findings, files)
    options = {name: values[name] for name in _options.MOTION if name in values and name != "fps"}
    facts = {
        "name": imported["models"][0] if imported["models"] else "",
        "models": imported["models"],
        "format": {"bvh": "Biovision BVH", "asf": "Acclaim ASF/AMC"}[first.kind],
        "files": [file.shown for file in files.all()],
        "sources": [(file.path, file.size, bool(file.name)) for file in files.all()],
        "findings": findings,
        "rate_origin": imported["rate_origin"],
        "stated_fps": imported["stated_fps"],
        "partial": imported["error"].decode("utf-8", "replace") if imported["status"] == "part" else "",
    }
    taken = Motion(imported["scene"], options, threads)
    if options:
        taken.facts()  # so that options that do not fit the take are errors here
    return Take._make(taken, facts)


def read(*source: Any, name: str | None = None, warn: bool = True, progress: Callable[[float], object] | None = None,
         fps: float | None = None, scale: float | None = None, up: str | None = None, frames: Any = None,
         resample: float | None = None, in_place: bool | None = None, all_nodes: bool | None = None,
         bones: bool | None = None, nulls: bool | None = None, chain_from_parent: bool | None = None,
         effector_to_last_bone: bool | None = None, group: bool | None = None, clip: bool | None = None,
         limits: bool | None = None, length: float | None = None, preset: str | None = None, as_is: bool | None = None,
         strict: bool | None = None, encoding: str | None = None) -> Take:
    """Reads a take: read("walk.bvh"), read("07.asf", "07_01.amc"), or read(pair) with what find() returned.

    Args:
        source: one file, or a skeleton and a motion. A file is a path, bytes with its contents, or a file object. It may
            be packed (.gz). The skeleton of an .amc alone is looked for in its folder.
        name: what to call contents that have no path; its extension says what they are.
        warn: whether warnings of the survey are reported through `warnings`, as ReadWarning.
        progress: a function that is called on this thread with the share that is done, from 0 to 1. An exception that it
            raises cancels the import and comes through.
        fps: the rate of the take, instead of the one that the file has.
        scale, up, frames, resample, in_place, all_nodes: as in Take.write; they change the numbers of the take.
        bones, nulls, chain_from_parent, effector_to_last_bone, group, clip, limits, length, preset, as_is, strict,
            encoding: the options of `zkhost import` with these names.

    Raises:
        FileNotFoundError and other OSError: a file cannot be opened.
        ReadError: what a file holds cannot be read; it has the path, the line and the code of the finding.
        ValueError, TypeError: an option has a wrong value.
    """
    values = checked_options({
        "fps": fps, "scale": scale, "up": up, "frames": frames, "resample": resample, "in_place": in_place,
        "all_nodes": all_nodes, "bones": bones, "nulls": nulls, "chain_from_parent": chain_from_parent,
        "effector_to_last_bone": effector_to_last_bone, "group": group, "clip": clip, "limits": limits, "length": length,
        "preset": preset, "as_is": as_is, "strict": strict, "encoding": encoding})
    if progress is not None and not callable(progress):
        raise TypeError("progress: a function is expected")
    if name is not None and not isinstance(name, str):
        raise TypeError("name: a text is expected")
    take = load(_sources.files_of(source, name), values, progress)
    if warn:
        warn_of(take._facts, 3)
    return take


def check_files(files: _sources.Files, encoding: str = "") -> list[CheckResult]:
    """Surveys the files of a take; returns one result for each file."""
    first, motion = files.first, files.motion
    checked = _core.check(first.for_core(), motion and motion.for_core(), first.kind != "bvh", first.kind == "amc",
                          encoding)
    results = []
    for file, each in zip(files.all(), checked):
        findings = findings_of(each["findings"])
        results.append(CheckResult(file=file.shown, findings=findings, facts=Facts(each["facts"]),
                                   ok=all(finding.severity != "error" for finding in findings)))
    return results


def check(*source: Any, name: str | None = None, encoding: str | None = None) -> CheckResult:
    """Examines a file, or a skeleton with its motion, without importing it.

    Args: as those of read(). An .amc may be examined alone.

    Returns:
        A CheckResult with file, findings, facts and ok. What a file holds raises no exception: errors are findings too.
        facts has joints, end_sites, channels, frames, fps, seconds, height (in the file's unit), unit (a word), up and
        orders (of rotations); what is not known is None. Of a pair, frames and what follows from them are those of the
        motion, and each finding has a member file.
    """
    files = _sources.files_of(source, name, alone=True)
    results = check_files(files, _options.encoding("encoding", encoding) if encoding is not None else "")
    if len(results) == 1:
        return results[0]
    skeleton, motion = results
    findings = [Finding({"file": result.file, **finding}) for result in results for finding in result.findings]
    facts = Facts(skeleton.facts)
    facts.update({key: value for key, value in motion.facts.items() if key in ("channels", "frames", "fps", "seconds")})
    return CheckResult(file=motion.file, findings=findings, facts=facts, ok=skeleton.ok and motion.ok)
