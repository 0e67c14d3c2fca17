"""Runs of zkhost for the quirks: what check tells, and what import writes."""

import json
import os
import re
import subprocess

import numpy

LIMIT = 300
CHECK_ONLY = {"figure-size", "limits-exceeded"}  # they need every pose, which an import does not work out


# file:line:column: severity: words [code]; a file that cannot be read has no lines.
FINDING = re.compile(r".+?:(?:(?P<line>\d+):\d+:)? (?P<severity>error|warning|note): .+ \[(?P<code>[a-z0-9-]+)\]$")


class Failure(Exception):
    """What differed, in words."""


class Program:
    def __init__(self, path, folder):
        self.path = str(path)
        self.folder = folder  # file names are seen from here

    def run(self, *arguments):
        done = subprocess.run([self.path, *map(str, arguments)], cwd=self.folder, capture_output=True,
                              stdin=subprocess.DEVNULL, timeout=LIMIT, check=False)
        if done.returncode < 0:
            raise Failure(f"{' '.join(map(str, arguments))}: ended by signal {-done.returncode}")
        return done.returncode, done.stdout.decode("utf-8", "replace"), done.stderr.decode("utf-8", "replace")

    def check(self, files):
        """The exit status, and each file's object."""
        status, out, err = self.run("check", "--json", *files)
        try:
            objects = [json.loads(line) for line in out.splitlines() if line.strip()]
        except ValueError as problem:
            raise Failure(f"check --json: {problem}: {out[:300]!r}; stderr: {err[:300]!r}") from problem
        if status not in (0, 1) or len(objects) != len(files):
            raise Failure(f"check --json: exit status {status}, {len(objects)} objects; stderr: {err[:300]!r}")
        return status, objects

    def strict_lines(self, files):
        """The exit status of check --strict, and (line, severity, code) of each finding it prints."""
        status, out, _ = self.run("check", "--strict", *files)
        found = [FINDING.match(line) for line in out.splitlines()]
        return status, sorted((int(match["line"] or 0), match["severity"], match["code"]) for match in found if match)

    def imported(self, files, options, out):
        """Imports to out.npz and out.json: (arrays, record). Raises where that fails."""
        status, _, err = self.run("import", *files, *options, "-o", f"{out}.npz", "-o", f"{out}.json")
        if status != 0:
            raise Failure(f"import {' '.join(options)}: exit status {status}: {err[-600:]}")
        with numpy.load(f"{out}.npz", allow_pickle=False) as data:
            arrays = {name: data[name] for name in data.files}
        with open(f"{out}.json", encoding="utf-8") as file:
            return arrays, json.load(file)

    def refused(self, files, options, out):
        """Stderr of an import that must be refused, with nothing written. `out`: a name that is new."""
        status, _, err = self.run("import", *files, *options, "-o", f"{out}.npz", "-o", f"{out}.glb")
        if status != 1:
            raise Failure(f"import {' '.join(options)}: exit status {status} where 1 was expected: {err[-600:]}")
        left = [name for name in (f"{out}.npz", f"{out}.glb") if os.path.exists(name)]
        if left:
            raise Failure(f"import: refused, and yet it wrote {left}")
        return err


def told(objects):
    """All findings, each with the extension of the file that it is about."""
    return [{**finding, "file": os.path.splitext(entry["file"])[1][1:].lower()}
            for entry in objects for finding in entry["findings"]]


def lines_that_do(expected):
    line = expected.get("line")
    return None if line is None else line if isinstance(line, list) else [line]


def differs(expected, actual):
    """Why a finding is not the expected one, or None."""
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
    """Each difference, in words."""
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
    """Import tells what check tells, but for what only check works out."""
    def key(entry):
        return entry["code"], entry["severity"], entry["line"], entry["count"], entry["joint"] or ""
    left = sorted(key(entry) for entry in checked if entry["code"] not in CHECK_ONLY)
    right = sorted(key(entry) for entry in imported)
    if left != right:
        yield f"check tells {left}, import {right}"
