"""Shared by the scripts that write the corpus: cases, expected findings, and changes of a text."""

import dataclasses
import math
import struct
import zlib


@dataclasses.dataclass
class Case:
    """One row of table.json; run_quirks.py says what each field means."""
    name: str
    files: list
    outcome: str
    findings: list = dataclasses.field(default_factory=list)
    motion: str = "walk"
    details: dict = dataclasses.field(default_factory=dict)

    def row(self):
        return {"name": self.name, "files": self.files, "outcome": self.outcome, "findings": self.findings,
                "motion": self.motion, **self.details}


class Corpus:
    """The files and the cases of one folder, which are collected before anything is written."""

    def __init__(self, folder):
        self.folder = folder
        self.files = {}
        self.cases = []

    def file(self, name, text):
        data = text if isinstance(text, bytes) else text.encode("utf-8")
        path = f"{self.folder}/{name}"
        assert self.files.get(path, data) == data, f"{path} is written twice"
        self.files[path] = data
        return path

    def case(self, name, files, outcome, findings=(), motion=None, **details):
        """Adds a case. `files` are names in the folder. A refused case has no motion."""
        assert all(case.name != name for case in self.cases), name
        motion = motion or ("none" if outcome == "refused" else "walk")
        paths = [f"{self.folder}/{file}" for file in files]
        self.cases.append(Case(name, paths, outcome, list(findings), motion, details))


def finding(code, severity, line=None, **more):
    """`line` is a number, a list of allowed numbers, or None if any line is right."""
    return {"code": code, "severity": severity, "line": line, **more}


def note(code, line=None, **more):
    return finding(code, "note", line, **more)


def warning(code, line=None, **more):
    return finding(code, "warning", line, **more)


def error(code, line=None, **more):
    return finding(code, "error", line, **more)


def maybe(expected):
    """Makes a finding optional: it may be reported or not."""
    return {**expected, "optional": True}


def edit(text, *pairs):
    """The text with each `old` replaced by its `new`. Each `old` must occur exactly once."""
    for old, new in pairs:
        assert text.count(old) == 1, f"{old!r} is there {text.count(old)} times"
        text = text.replace(old, new)
    return text


def line_of(text, mark, nth=1):
    """The number of the line, from 1, that holds the n-th occurrence of `mark`."""
    at = -1
    for _ in range(nth):
        at = text.index(mark, at + 1)
    return text.count("\n", 0, at) + 1


def gzip_data(text):
    """The text as gzip data, stored in one block, so that every version of zlib gives the same bytes."""
    data = text.encode("utf-8")
    head = b"\x1f\x8b\x08" + b"\0" * 6 + b"\xff"
    block = b"\x01" + struct.pack("<HH", len(data), len(data) ^ 0xFFFF) + data
    return head + block + struct.pack("<II", zlib.crc32(data), len(data))


def wave(frame, column, size):
    """A smooth made-up value that differs from column to column."""
    return size * math.sin(0.37 * frame + 1.3 * column + 0.2) + 0.2 * size * math.cos(0.9 * frame * (1 + column % 3))
