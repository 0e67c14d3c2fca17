#!/usr/bin/env python3
"""Runs the BVH files of the corpus through other readers and writes the table of docs/findings.md.

usage: compare_readers.py --page PAGE --assimp PROGRAM --three SCRIPT

For each file: does the reader load it, and are its joints in every frame where the file's author
meant them? Exit status 2, and no change of the page, where a reader is missing.
"""

import argparse
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

import numpy

HERE = pathlib.Path(__file__).resolve().parent
CORPUS = HERE.parent
sys.path.insert(0, str(CORPUS))

from compare_places import expected_places  # noqa: E402
from run_quirks import Case  # noqa: E402

BEGIN, END = "<!-- begin: scripts/compare-readers -->", "<!-- end: scripts/compare-readers -->"
BOUND = 1e-4  # of the figure's size; all three keep 32-bit numbers
LIMIT = 60    # seconds a file; the files are small


class Reader:
    def __init__(self, title, package, command):
        self.title = title
        self.package = package
        self.command = command

    def missing(self):
        return not all(shutil.which(part) or os.path.exists(part) for part in self.command if not part.startswith("-"))

    def answer(self, argument):
        """What the reader's program says, as a dictionary with "error" where it failed."""
        try:
            done = subprocess.run([*self.command, str(argument)], capture_output=True, timeout=LIMIT, check=False,
                                  stdin=subprocess.DEVNULL)
        except subprocess.TimeoutExpired:
            return {"error": "hangs"}
        for line in done.stdout.decode("utf-8", "replace").splitlines():
            if line.startswith("ANSWER "):
                return json.loads(line[len("ANSWER "):])
        return {"error": "crashes"}

    def version(self):
        return self.answer("--version")["version"]


def meant(row, table):
    """(walk, positions) of the motion that the file's author meant, or None where there is none."""
    if row["motion"] == "none":
        return None
    walk = Case(row, table, None, ".").walks()[0]
    frames = row.get("frames")
    if frames == []:
        return walk, numpy.zeros((0, len(walk.names), 3))
    return walk, expected_places(walk, frames)[0]


def counted(frames):
    return "1 frame" if frames == 1 else f"{frames} frames"


def verdict(answer, expected):
    if "error" in answer:
        return answer["error"] if answer["error"] in ("hangs", "crashes") else "refuses"
    if expected is None:
        return "reads it"
    walk, positions = expected
    frames = len(answer["frames"])
    if len(positions) == 0:
        return "right" if frames == 0 else f"{counted(frames)} for 0"
    if frames == 0:
        return "no motion"
    if frames != len(positions):
        return f"{counted(frames)} for {len(positions)}"
    found = numpy.array(answer["frames"], dtype=float)  # null becomes NaN
    worst = 0.0
    for joint, name in enumerate(walk.names):
        if walk.is_end[joint]:
            continue
        # Names may be written in other ways; then a joint that is in the right place will do.
        nodes = [node for node, other in enumerate(answer["joints"]) if other == name] or range(found.shape[1])
        distances = numpy.abs(found[:, list(nodes)] - positions[:, joint:joint + 1]).max(axis=(0, 2))
        if numpy.isnan(distances).all():
            return "not a number"
        worst = max(worst, float(numpy.nanmin(distances)) / walk.size())
    return "right" if worst <= BOUND else f"off by {worst:.2g}"


def table_lines(readers, rows, table):
    yield "| file | codes | import | " + " | ".join(f"{reader.title} {reader.version()}" for reader in readers) + " |"
    yield "|---|---|---|" + "---|" * len(readers)
    counts = [0] * len(readers)
    meaning = 0
    for row in rows:
        path = CORPUS / row["files"][0]
        expected = meant(row, table)
        cells = [verdict(reader.answer(path), expected) for reader in readers]
        if expected is not None and len(expected[1]):
            meaning += 1
            counts = [count + (cell == "right") for count, cell in zip(counts, cells)]
        sure = [finding for finding in row["findings"] if not finding.get("optional")] or row["findings"]
        codes = dict.fromkeys(f"`{finding['code']}`" for finding in sure)
        outcome = row["outcome"].replace("right|mended", "read").replace("right", "read")
        yield f"| `{path.name}` | {' '.join(codes)} | {outcome} | " + " | ".join(cells) + " |"
        print(f"{path.name}: {', '.join(cells)}", file=sys.stderr)
    yield ""
    told = ", ".join(f"{reader.title} {count}" for reader, count in zip(readers, counts))
    yield f"Of the {meaning} files here whose motion has a meaning, each reader plays as meant: {told}."


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--page", required=True, type=pathlib.Path)
    parser.add_argument("--assimp", required=True)
    parser.add_argument("--three", required=True)
    options = parser.parse_args()
    readers = [
        Reader("Blender", "Debian: blender", ["blender", "--background", "--factory-startup", "--python",
                                              str(HERE / "blender_places.py"), "--"]),
        Reader("Assimp", "Debian: libassimp-dev", [options.assimp]),
        Reader("three.js", "npm: three, and Debian: nodejs", ["node", options.three]),
    ]
    missing = [reader for reader in readers if reader.missing() or "error" in reader.answer("--version")]
    for reader in missing:
        print(f"{reader.title} is missing ({reader.package}); the page stays as it is", file=sys.stderr)
    if missing:
        return 2

    rows = json.loads((CORPUS / "table.json").read_text(encoding="utf-8"))
    table = {row["name"]: row for row in rows if row["files"][0].startswith("bvh/")}
    chosen = [row for row in table.values() if row["findings"] and "options" not in row
              and (CORPUS / row["files"][0]).is_file()]
    before, rest = options.page.read_text(encoding="utf-8").split(BEGIN)
    after = rest.split(END)[1]
    text = "\n".join([BEGIN, *table_lines(readers, chosen, table), END])
    with tempfile.NamedTemporaryFile("w", encoding="utf-8", dir=options.page.parent, delete=False) as file:
        file.write(before + text + after)
    os.chmod(file.name, 0o644)
    os.replace(file.name, options.page)
    return 0


if __name__ == "__main__":
    sys.exit(main())
