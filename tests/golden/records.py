#!/usr/bin/env python3
"""Imports the samples of this folder and compares every field with the records in the same folder.

usage: records.py ZKHOST            compares; the exit status is 1 if a record differs
       records.py ZKHOST --rewrite  writes the records anew; read the difference before you commit it
"""
import json
import pathlib
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent

# For each import: the record, the files, the options and the exit status.
CASES = [
    ("fork_nulls", ["fork.bvh"], ["--progress", "on", "--clip"], 0),
    ("fork_bones", ["fork.bvh"], ["--bones", "--progress", "on"], 0),
    ("fork_bones_own_joint", ["fork.bvh"],
     ["--bones", "--no-chain-from-parent", "--effector-to-last-bone", "--no-group"], 0),
    ("two_sections", ["two_sections.bvh"], ["--clip"], 0),
    ("bad_second_section", ["bad_second_section.bvh"], ["--progress", "on"], 5),
    ("arm_nulls", ["arm.asf", "arm.amc"], ["--progress", "on", "--limits"], 0),
    ("arm_bones", ["arm.asf", "arm.amc"], ["--bones", "--clip", "--length", "2"], 0),
    ("arm_skeleton", ["arm.asf"], ["--clip"], 0),
]


def imported(zkhost, files, options, expected):
    """Returns the record of an import, with paths relative to this folder."""
    with tempfile.TemporaryDirectory() as folder:
        out = pathlib.Path(folder) / "scene.json"
        run = subprocess.run([zkhost, "import", *files, *options, "--as-is", "-o", out, "--quiet"],
                             cwd=HERE, capture_output=True, text=True, check=False)
        if run.returncode != expected:
            raise SystemExit(f"{files}: exit status {run.returncode}, not {expected}\n{run.stderr}")
        text = out.read_text(encoding="utf-8")
    return json.loads(text.replace(str(HERE) + "/", ""))


def close(a, b):
    """Angles depend on the sines of the C library, whose last digits differ between its versions."""
    return a == b or abs(a - b) <= 1e-9 * max(1.0, abs(a), abs(b))


def differences(path, expected, actual):
    number = (int, float)
    if isinstance(expected, number) and isinstance(actual, number) \
            and not isinstance(expected, bool) and not isinstance(actual, bool):
        if not close(expected, actual):
            yield f"{path}: {expected} became {actual}"
    elif type(expected) is not type(actual):
        yield f"{path}: {expected!r} became {actual!r}"
    elif isinstance(expected, dict):
        if list(expected) != list(actual):
            yield f"{path}: fields {list(expected)} became {list(actual)}"
        for key in expected.keys() & actual.keys():
            yield from differences(f"{path}.{key}", expected[key], actual[key])
    elif isinstance(expected, list):
        if len(expected) != len(actual):
            yield f"{path}: {len(expected)} entries became {len(actual)}"
        for index, (a, b) in enumerate(zip(expected, actual)):
            yield from differences(f"{path}[{index}]", a, b)
    elif expected != actual:
        yield f"{path}: {expected!r} became {actual!r}"


def main():
    zkhost = str(pathlib.Path(sys.argv[1]).resolve())
    rewrite = "--rewrite" in sys.argv[2:]
    failed = 0
    for name, files, options, status in CASES:
        record = imported(zkhost, files, options, status)
        path = HERE / f"{name}.json"
        if rewrite:
            path.write_text(json.dumps(record, indent=1, ensure_ascii=False) + "\n", encoding="utf-8")
            continue
        found = list(differences(name, json.loads(path.read_text(encoding="utf-8")), record))
        failed += bool(found)
        print("\n".join(found[:20]) if found else f"{name}: as recorded")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
