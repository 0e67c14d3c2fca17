"""Runs zkhost for the quirks, and compares what `check` reports and `import` writes with what is expected."""

import json
import os
import re
import subprocess

import numpy

LIMIT = 300
CHECK_ONLY = {"figure-size", "limits-exceeded"}  # need every pose, which an import does not compute


# file:line:column: severity: message [code]. A finding about the whole file has no line and column.
FINDING = re.compile(r"(?P<file>.+?):(?:(?P<line>\d+):\d+:)? (?P<severity>error|warning|note): .+ \[(?P<code>[a-z0-9-]+)\]$")


class Failure(Exception):
    """A run that did not do what was expected. The message says how."""


class Program:
    def __init__(self, path, folder):
        self.path = str(path)
        self.folder = folder  # file names are relative to it

    def run(self, *arguments):
        done = subprocess.run([self.path, *map(str, arguments)], cwd=self.folder, capture_output=True,
                              stdin=subprocess.DEVNULL, timeout=LIMIT, check=False)
        if done.returncode < 0:
            raise Failure(f"{' '.join(map(str, arguments))}: ended by signal {-done.returncode}")
        return done.returncode, done.stdout.decode("utf-8", "replace"), done.stderr.decode("utf-8", "replace")

    def check(self, files):
        """Runs check --json. Returns the exit status and the object of each file."""
        status, out, err = self.run("check", "--json", *files)
        try:
            objects = [json.loads(line) for line in out.splitlines() if line.strip()]
        except ValueError as problem:
            raise Failure(f"check --json: {problem}: {out[:300]!r}; stderr: {err[:300]!r}") from problem
        if status not in (0, 1) or len(objects) != len(files):
            raise Failure(f"check --json: exit status {status}, {len(objects)} objects; stderr: {err[:300]!r}")
        return status, objects

    def strict_lines(self, files):
        """Runs check --strict. Returns the exit status and, by file, (line, severity, code) of each printed finding."""
        status, out, _ = self.run("check", "--strict", *files)
        lines = {file: [] for file in files}
        for match in filter(None, map(FINDING.match, out.splitlines())):
            lines.setdefault(match["file"], []).append((int(match["line"] or 0), match["severity"], match["code"]))
        return status, lines

    def imported(self, files, options, out):
        """Imports to out.npz and out.json and returns their content. Raises Failure if the import fails."""
        status, _, err = self.run("import", *files, *options, "-o", f"{out}.npz", "-o", f"{out}.json")
        if status != 0:
            raise Failure(f"import {' '.join(options)}: exit status {status}: {err[-600:]}")
        with numpy.load(f"{out}.npz", allow_pickle=False) as data:
            arrays = {name: data[name] for name in data.files}
        with open(f"{out}.json", encoding="utf-8") as file:
            return arrays, json.load(file)

    def refused(self, files, options, out):
        """Runs an import that must be refused and write nothing. Returns its stderr. `out` must be a new name."""
        status, _, err = self.run("import", *files, *options, "-o", f"{out}.npz", "-o", f"{out}.glb")
        if status != 1:
            raise Failure(f"import {' '.join(options)}: exit status {status} where 1 was expected: {err[-600:]}")
        left = [name for name in (f"{out}.npz", f"{out}.glb") if os.path.exists(name)]
        if left:
            raise Failure(f"import: refused, and yet it wrote {left}")
        return err


def told(objects):
    """All findings. Each gets the extension of its file as "file"."""
    return [{**finding, "file": os.path.splitext(entry["file"])[1][1:].lower()}
            for entry in objects for finding in entry["findings"]]


def lines_that_do(expected):
    line = expected.get("line")
    return None if line is None else line if isinstance(line, list) else [line]


def differs(expected, actual):
    """Says why a finding is not the expected one; None if it is."""
    for key in ("severity", "joint", "count", "file"):
        if key in expected and actual.get(key) != expected[key]:
            return f"{key} is {actual.get(key)!r}, not {expected[key]!r}"
    lines = lines_that_do(expected)
    if lines is not None and actual["line"] not in lines:
        return f"line is {actual['line']}, not {lines[0] if len(lines) == 1 else lines}"
    for word in expected.get("words", []):
        if word.lower() not in actual["message"].lower():
            return f"the message does not say {word!r}: {actual['message']!r}"
    return None


def compare_findings(expected_list, actual_list):
    """Yields a message for each difference."""
    rest = list(actual_list)
    for expected in expected_list:
        same = [actual for actual in rest if actual["code"] == expected["code"]
                and ("file" not in expected or expected["file"] == actual.get("file"))]
        right = [actual for actual in same if differs(expected, actual) is None]
        if right:
            rest.remove(right[0])
        elif same:
            rest.remove(same[0])
            yield f"[{expected['code']}]: {differs(expected, same[0])}"
        elif not expected.get("optional"):
            yield f"[{expected['code']}] was not told"
    for actual in rest:
        yield f"[{actual['code']}] was told ({actual['severity']}, line {actual['line']}: {actual['message']})"


def same_findings(checked, imported):
    """Yields a message if import does not report what check reports, except the codes that only check reports."""
    def key(entry):
        return entry["code"], entry["severity"], entry["line"], entry["count"], entry["joint"] or ""
    left = sorted(key(entry) for entry in checked if entry["code"] not in CHECK_ONLY)
    right = sorted(key(entry) for entry in imported)
    if left != right:
        yield f"check tells {left}, import {right}"
