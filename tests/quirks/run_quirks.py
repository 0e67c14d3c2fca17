#!/usr/bin/env python3
"""Compares zkhost with table.json: what `check` reports about each file, and the motion that `import` gives.

usage: run_quirks.py --zkhost PATH [--folder bvh|acclaim] [--case NAME]

A row of the table:
  files     names, relative to this folder; an .asf with its .amc
  outcome   right (the plug-in gets the file itself), mended, right|mended (either), or refused
  findings  all that `check` must report, and nothing else: code, severity, line (a number, a list of allowed
            numbers, or null for any), and perhaps joint, count, file (an extension), words of the message;
            "optional" findings may be missing
  motion    what the import is compared with: walk (of the file itself), walk:relative (with positions added
            to offsets), as:NAME (the walk of another case's files) or none
  frames    the frames of that motion that the import must have, from 1
  names     new names of joints, by old name: one, a list of allowed ones, or null if only the position counts
  options   of `import`; `check` is not run then
  walk      arguments of format_walk.walk_files
  fps       the rate of the import, in frames per second
  tolerance for nulls and bones, as parts of the figure's size, if not 1e-9 and 1e-6
  smooth    joints whose angles must not jump
  bones_end offsets of end sites that must be added for bones, by joint
"""

import argparse
import filecmp
import json
import os
import pathlib
import re
import sys
import tempfile

import numpy

import format_walk
from check_runs import CheckRuns
from compare_places import compare, compare_end, jumps
from program_runs import Failure, Program, compare_findings, lines_that_do, same_findings, told

HERE = pathlib.Path(__file__).resolve().parent
BOUNDS = {"nulls": 1e-9, "bones": 1e-6}
# A build with sanitizers leaves out runs whose code other runs execute too; only their results are compared.
SLOW = "ZKMOCAP_SLOW_BUILD" in os.environ


def same_arrays(one, other):
    """Whether both have the same arrays, bit for bit."""
    return one.keys() == other.keys() and all(
        array.dtype == other[name].dtype and array.shape == other[name].shape and array.tobytes() == other[name].tobytes()
        for name, array in one.items())


class Case:
    def __init__(self, row, table, program, checks, folder):
        self.row = row
        self.table = table
        self.program = program
        self.checks = checks
        self.folder = pathlib.Path(folder)
        self.options = row.get("options", [])

    def walks(self):
        kind, _, name = self.row["motion"].partition(":")
        files = self.table[name]["files"] if kind == "as" else self.row["files"]
        return format_walk.walk_files([HERE / file for file in files], relative=name == "relative",
                                      **self.row.get("walk", {}))

    def run(self):
        """Yields a message for each difference."""
        checked = None
        if not self.options:
            checked = yield from self.check()
        if self.row["outcome"] == "refused":
            yield from self.refusal()
            return
        yield from self.motions(checked)
        if checked and any(finding["severity"] == "warning" for finding in checked):
            self.program.refused(self.row["files"], ["--strict"], self.folder / "strict")
        if self.row["outcome"] == "right" and not self.options and not SLOW and self.left_alone(checked):
            yield from self.as_is()
        if not self.options:
            yield from self.fixed(checked)

    def check(self):
        status, objects = self.checks.of(self.row)
        findings = told(objects)
        yield from compare_findings(self.row["findings"], findings)
        severities = {finding["severity"] for finding in findings}
        if status != (1 if "error" in severities else 0):
            yield f"check: exit status {status}"
        status, lines_of = self.checks.strict_lines(self.row)
        lines = sorted(line for each in lines_of.values() for line in each)
        if status != (1 if severities & {"error", "warning"} else 0):
            yield f"check --strict: exit status {status}"
        as_json = sorted((finding["line"] or 0, finding["severity"], finding["code"]) for finding in findings)
        if sorted(line[1:] for line in lines) != sorted(line[1:] for line in as_json) or not (
                {line for line in lines if line[0]} <= set(as_json)):
            yield f"check prints {lines}, and with --json {as_json}"
        mended = [finding["code"] for finding in findings if finding["mended"]]
        outcome = self.row["outcome"]
        if outcome == "right" and mended and not self.settings():
            yield f"nothing is to be mended, and yet {mended} say so"
        if outcome == "mended" and not mended and not self.settings():
            yield "no finding says that something was mended"
        return findings

    def settings(self):
        """Whether a unit or rate is corrected by an option of the plug-in, without a mended text."""
        return any(finding["code"] in ("preset-cmu", "length-unit", "rate-text") for finding in self.row["findings"])

    @staticmethod
    def left_alone(checked):
        return not any(finding["mended"] for finding in checked)

    def refusal(self):
        err = self.program.refused(self.row["files"], self.options, self.folder / "out")
        for expected in self.row["findings"]:
            if expected["severity"] != "error" or expected.get("optional"):
                continue
            lines = [line for line in err.splitlines() if f"[{expected['code']}]" in line]
            wanted = lines_that_do(expected)
            if not lines:
                yield f"import does not tell [{expected['code']}]: {err[-300:]!r}"
            elif wanted and not any(re.search(rf":{number}:\d+: error: ", lines[0]) for number in wanted):
                yield f"import tells another line than {wanted}: {lines[0]}"

    def motions(self, checked):
        walks = self.walks()
        for skeleton in ("nulls", "bones"):
            try:
                arrays, record = self.program.imported(self.row["files"], [f"--{skeleton}", *self.options],
                                                       self.folder / skeleton)
                for problem in self.places(arrays, walks, skeleton):
                    yield f"{skeleton}: {problem}"
            except Failure as failure:
                yield f"{skeleton}: {failure}"
                continue
            if skeleton == "nulls":
                yield from jumps(record, self.row.get("smooth", []))
                yield from self.recorded(record, checked)
            elif "bones_end" in self.row:
                for joint, offset in self.row["bones_end"].items():
                    yield from compare_end(record, joint, offset, walks[0].size())

    def recorded(self, record, checked):
        """Compares the findings in the import's record."""
        if checked is not None:
            yield from same_findings(checked, record["findings"])
        elif self.row["findings"]:
            yield from compare_findings(self.row["findings"], record["findings"])

    def places(self, arrays, walks, skeleton):
        bound = self.row.get("tolerance", {}).get(skeleton, BOUNDS[skeleton])
        yield from compare(arrays, walks, bound, self.row.get("names"), self.row.get("frames"), skeleton == "bones",
                           self.row["motion"].startswith("walk"))
        fps = self.row.get("fps")
        if fps and abs(float(arrays["fps"]) / fps - 1.0) > 2e-5:
            yield f"{float(arrays['fps'])} frames per second, not {fps}"

    def as_is(self):
        """If no text was mended, the import must be the same as with --as-is, bit for bit."""
        for skeleton in ("nulls", "bones"):
            plain, alone = self.folder / skeleton, self.folder / f"{skeleton}-as-is"
            if not pathlib.Path(f"{plain}.json").is_file():
                continue  # the import failed, which was reported before
            record = json.loads(pathlib.Path(f"{plain}.json").read_text(encoding="utf-8"))
            own_arrays, own = self.program.imported(self.row["files"], [f"--{skeleton}", "--as-is"], alone)
            with numpy.load(f"{plain}.npz", allow_pickle=False) as data:
                arrays = dict(data)
            if record.pop("findings", None) is None or "findings" in own:
                yield "findings belong into the record, and with --as-is they do not"
            arrays.pop("findings")
            own_arrays.pop("findings")
            if record != own or not same_arrays(arrays, own_arrays):
                yield f"{skeleton}: the result is not that of --as-is"

    def fixed(self, checked):
        """The text of check --fix must need no mending and have the same motion. If nothing is mended, it is a copy."""
        fixed, again, twice = self.checks.after_fix(self.row, self.folder)
        if self.left_alone(checked) and not all(filecmp.cmp(HERE / file, path, shallow=False)
                                                for file, path in zip(self.row["files"], fixed)):
            yield "check --fix changes a file with nothing to mend"
        mended = [finding["code"] for finding in told(again) if finding["mended"]]
        if mended and not self.settings():
            yield f"check --fix leaves {mended} to mend"
        if not all(filecmp.cmp(path, twice / path.name, shallow=False) for path in fixed if (twice / path.name).is_file()):
            yield "check --fix changes its own text"
        if self.left_alone(checked):
            return  # a copy, which was imported already
        try:
            arrays, _ = self.program.imported(fixed, [], self.folder / "fixed-import")
            for problem in self.places(arrays, self.walks(), "nulls"):
                yield f"check --fix: {problem}"
        except Failure as failure:
            yield f"check --fix: {failure}"


def differences(row, table, program, checks):
    with tempfile.TemporaryDirectory() as folder:
        try:
            yield from Case(row, table, program, checks, folder).run()
        except Failure as failure:
            yield str(failure)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--zkhost", required=True, type=pathlib.Path)
    parser.add_argument("--folder", choices=["bvh", "acclaim"])
    parser.add_argument("--case")
    options = parser.parse_args()
    program = Program(options.zkhost.resolve(), HERE)
    rows = json.loads((HERE / "table.json").read_text(encoding="utf-8"))
    tables = {folder: {row["name"]: row for row in rows if row["files"][0].startswith(folder + "/")}
              for folder in ("bvh", "acclaim")}
    ran = failed = 0
    for folder, table in tables.items():
        wanted = {name: row for name, row in table.items() if options.folder in (None, folder)
                  and options.case in (None, name, f"{folder}/{name}")}
        with tempfile.TemporaryDirectory() as fixed:
            checks = CheckRuns(program, wanted.values(), fixed)
            for name, row in wanted.items():
                found = list(differences(row, table, program, checks))
                ran += 1
                failed += bool(found)
                for problem in found:
                    print(f"{folder}/{name}: {' | '.join(problem.splitlines())}")
    print(f"{ran - failed} of {ran} cases are as the table says")
    return 1 if failed or not ran else 0


if __name__ == "__main__":
    sys.exit(main())
