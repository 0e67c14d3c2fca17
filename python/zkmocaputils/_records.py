"""Records whose members are items of a dictionary and attributes at once."""

from __future__ import annotations

import json
from typing import Any, Iterable


class Record(dict[str, Any]):
    """A dictionary whose items are attributes too: record["joints"] is record.joints."""

    def __getattr__(self, name: str) -> Any:
        try:
            return self[name]
        except KeyError:
            raise AttributeError(f"there is no {name!r} among {', '.join(self)}") from None

    def __dir__(self) -> Iterable[str]:
        return [*super().__dir__(), *self]

    def __reduce__(self) -> Any:
        return type(self), (dict(self),)


class Finding(Record):
    """Something that the survey of a file noticed.

    Members: code (docs/findings.md explains each), severity ("note", "warning" or "error"), line and column (counted
    from 1; 0 if it is about the whole file), count (how often the file has it), joint, message, mended (whether the file
    was read as if it were right), and for a pair of files: file.
    """

    code: str
    severity: str
    line: int
    column: int
    count: int
    joint: str
    message: str
    mended: bool


class Facts(Record):
    """What a take or a file holds; the members depend on which of the two it is."""


class CheckResult(Record):
    """What check() found out.

    Members: file (the path), findings (a list of Finding), facts (a Facts), ok (whether there is no error).
    """

    file: str
    findings: list[Finding]
    facts: Facts
    ok: bool


for _each in (Record, Finding, Facts, CheckResult):
    _each.__module__ = "zkmocaputils"


def findings_of(texts: Iterable[bytes]) -> list[Finding]:
    """Turns findings as JSON into records."""
    return [Finding(json.loads(text.decode("utf-8", "replace"))) for text in texts]
