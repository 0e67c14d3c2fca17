"""Runs of `zkhost check` for many cases at once, because starting a sanitized program takes longer than
a check. Where one run for all of them does not end as it should, each case runs it alone."""

import collections
import pathlib

from program_runs import Failure


class CheckRuns:
    """What check tells of each case, and the files that check --fix writes for it."""

    def __init__(self, program, rows, folder):
        self.program = program
        self.objects = {}  # by case: one object a file
        self.lines = {}  # by case: what check --strict prints, if its exit status is 0
        self.fixed_files = {}  # by case: what check --fix wrote
        self.fixed_objects = {}  # by case: what check tells of those
        self.twice = pathlib.Path(folder) / "twice"
        self.fixed = pathlib.Path(folder) / "fixed"
        # An .amc joins the .asf before it, so motions without a skeleton come first.
        rows = sorted(rows, key=lambda row: not row["files"][0].endswith(".amc"))
        rows = [row for row in rows if not row.get("options") and row["outcome"] != "refused"]
        # Fixed files share a folder, so a name that several cases have is left out.
        names = collections.Counter(base_name(file) for row in rows for file in row["files"])
        self.run({row["name"]: row["files"] for row in rows if all(names[base_name(file)] == 1 for file in row["files"])})

    def run(self, files):
        if not files:
            return
        try:
            self.check(files)
            self.check_strictly({name: files[name] for name, objects in self.objects.items() if only_notes(objects)})
            self.fix(files)
        except Failure:
            pass  # each case alone will tell

    def check(self, files):
        status, objects = self.program.check(flat(files))
        if status == 0:
            self.objects = split(objects, files)

    def check_strictly(self, files):
        status, lines = self.program.strict_lines(flat(files)) if files else (1, {})
        if status == 0:
            self.lines = {name: {file: lines[file] for file in each} for name, each in files.items()}

    def fix(self, files):
        self.fixed.mkdir()
        self.twice.mkdir()
        fixed = {name: [self.fixed / base_name(file) for file in each] for name, each in files.items()}
        status, _, err = self.program.run("check", *flat(files), "--fix", "--out-dir", self.fixed)
        if status != 0 or not all(path.is_file() for path in flat(fixed)):
            raise Failure(f"check --fix: exit status {status}: {err[-300:]}")
        self.fixed_objects = split(self.program.check(flat(fixed))[1], fixed)
        self.program.run("check", *flat(fixed), "--fix", "--out-dir", self.twice)
        self.fixed_files = fixed

    # For one case: what the run for all gave, or what its own run gives.

    def of(self, row):
        """The exit status of check --json, and an object for each file."""
        objects = self.objects.get(row["name"])
        return self.program.check(row["files"]) if objects is None else (0, objects)

    def strict_lines(self, row):
        """The exit status of check --strict, and the findings that it prints, by file."""
        lines = self.lines.get(row["name"])
        return self.program.strict_lines(row["files"]) if lines is None else (0, lines)

    def after_fix(self, row, folder):
        """The files that check --fix writes, check's objects for those, and the folder of what it makes of them."""
        if row["name"] in self.fixed_files:
            return self.fixed_files[row["name"]], self.fixed_objects[row["name"]], self.twice
        own = CheckRuns(self.program, [], folder)
        own.fix({row["name"]: row["files"]})
        return own.fixed_files[row["name"]], own.fixed_objects[row["name"]], own.twice


def base_name(file):
    return pathlib.Path(file).name


def only_notes(objects):
    return all(finding["severity"] == "note" for each in objects for finding in each["findings"])


def flat(files):
    return [file for each in files.values() for file in each]


def split(objects, files):
    """Each case's objects, which come in the order of the files."""
    rest = iter(objects)
    return {name: [next(rest) for _ in each] for name, each in files.items()}
