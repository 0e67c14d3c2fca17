#!/usr/bin/env python3
"""Imports real captures, as nulls and as bones, and compares every joint's position in every frame with a
walk of the file (format_walk.py).

usage: run_shared.py --zkhost PATH --data FOLDER
"""

import argparse
import pathlib
import sys
import tempfile

import format_walk
from compare_places import compare
from program_runs import Failure, Program, told

RELATIVE = {"benchmark.bvh"}  # its positions are added to the offsets
BVH_FILES = 19
PAIRS = [("08.asf", "08_04.amc"), ("11.asf", "11_01.amc"), ("14.asf", "14.amc"),
         ("135-martialArts.asf", "135_06-martialArts.amc"), ("08.asf", "zeros.amc")]
BOUNDS = {"nulls": 1e-9, "bones": 1e-6}
BONES_FOLDED = 1e-5
BONES_NEAR_GIMBAL = 3e-5


def bound_of(skeleton, codes):
    """The tolerance, which is larger for bones if positions that vary a little became offsets."""
    if skeleton == "bones" and "position-constant" in codes:
        return BONES_FOLDED
    return BOUNDS[skeleton]


def differences(program, files, folder):
    relative = files[0].name in RELATIVE
    walks = format_walk.walk_files(files, relative=relative)
    status, objects = program.check(files)
    codes = {finding["code"] for finding in told(objects)}
    print(f"{' '.join(file.name for file in files)}: {' '.join(sorted(codes)) or 'nothing to tell'}")
    if status != 0:
        yield f"check: exit status {status}"
    if relative != ("position-relative" in codes):
        yield "position-relative is told of the wrong file"
    for skeleton in ("nulls", "bones"):
        try:
            arrays, _ = program.imported(files, [f"--{skeleton}"], folder / skeleton)
            # With bones, a leaf without an end site has one more object. The import fills gaps of frames.
            for problem in compare(arrays, walks, bound_of(skeleton, codes), bones=skeleton == "bones"):
                yield f"{skeleton}: {problem}"
        except Failure as failure:
            yield f"{skeleton}: {failure}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--zkhost", required=True, type=pathlib.Path)
    parser.add_argument("--data", required=True, type=pathlib.Path)
    options = parser.parse_args()
    data = options.data.resolve()
    jobs = [[path] for path in sorted((data / "bvh").glob("*.bvh"))]
    if len(jobs) < BVH_FILES:
        print(f"{len(jobs)} BVH files in {data / 'bvh'}, where {BVH_FILES} are known")
        return 1
    jobs += [[data / "acclaim" / name for name in pair] for pair in PAIRS]
    failed = 0
    for files in jobs:
        with tempfile.TemporaryDirectory() as folder:
            try:
                found = list(differences(Program(options.zkhost.resolve(), data), files, pathlib.Path(folder)))
            except Failure as failure:
                found = [str(failure)]
        failed += bool(found)
        for problem in found:
            print(f"  {problem}")
    print(f"{len(jobs) - failed} of {len(jobs)} imports are where the walk has them")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
