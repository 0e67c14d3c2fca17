#!/usr/bin/python3
"""Compares the Python module with zkhost and with plain NumPy, side by side in one run.

usage: PYTHONPATH=build/release/python bench/python/compare.py --zkhost build/release/bin/zkhost [--repeats N]

It makes its own takes: one of 24 joints and 10,000 frames, and 200 of 24 joints and 2,000 frames. Figures are medians.
"""

import argparse
import os
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True

import numpy as np

import plain_numpy
import zkmocaputils as zm

WARM_UP = 8  # takes that are read before the time of read_many begins, so that the processes run


def take_of(frames, seed):
    """A take of 24 joints that turn smoothly."""
    random = np.random.default_rng(seed)
    parents = [-1] + [int(random.integers(max(0, joint - 3), joint)) for joint in range(1, 24)]
    seconds = np.arange(frames)[:, None, None] / 120.0
    phases, speeds = random.uniform(0.0, 6.3, (2, 1, 24, 3))
    angles = 30.0 * np.sin(phases + speeds * seconds)
    return zm.Take.from_arrays([f"J{joint}" for joint in range(24)], parents, random.normal(0.0, 5.0, (24, 3)), euler=angles,
                               order="ZXY", root_positions=np.cumsum(random.normal(0.0, 0.1, (frames, 3)), axis=0), fps=120)


def milliseconds(function):
    start = time.perf_counter()
    function()
    return 1000.0 * (time.perf_counter() - start)


def load_of(zkhost, path):
    printed = subprocess.run([zkhost, "import", path, "--quiet", "--timing"], check=True, capture_output=True, text=True)
    return float(re.search(r"load_ms=([0-9.]+)", printed.stdout)[1])


def with_arrays(path):
    take = zm.read(path)
    return take.positions, take.quaternions


def compare_one(zkhost, path, repeats):
    positions, quaternions = plain_numpy.read(path)
    ours = with_arrays(path)
    assert np.abs(positions - ours[0]).max() < 1e-6
    assert np.abs(np.abs((quaternions * ours[1]).sum(-1)) - 1.0).max() < 1e-9
    del positions, quaternions, ours
    times = {"zkhost load": [], "zm.read": [], "zm.read with arrays": [], "plain NumPy": []}
    for _ in range(repeats):
        times["zkhost load"].append(load_of(zkhost, path))
        times["zm.read"].append(milliseconds(lambda: zm.read(path)))
        times["zm.read with arrays"].append(milliseconds(lambda: with_arrays(path)))
        times["plain NumPy"].append(milliseconds(lambda: plain_numpy.read(path)))
    medians = {name: statistics.median(each) for name, each in times.items()}
    for name, median in medians.items():
        print(f"{name:22} {median:8.1f} ms   (best {min(times[name]):.1f})")
    print(f"zm.read is {medians['zm.read'] / medians['zkhost load']:.2f} times zkhost's load; with arrays it is"
          f" {medians['plain NumPy'] / medians['zm.read with arrays']:.2f} times as fast as plain NumPy")


def many(paths, jobs):
    start = 0.0
    for index, take in enumerate(zm.read_many(paths[:WARM_UP] + paths, jobs=jobs)):
        if index == WARM_UP - 1:
            start = time.perf_counter()
        assert take.positions.shape[0] == 2000 and take.quaternions.shape[0] == 2000
    return 1000.0 * (time.perf_counter() - start)


def compare_many(folder, repeats):
    paths = zm.find(folder)
    times = {1: [], 2: []}
    for _ in range(repeats):
        for jobs, each in times.items():
            each.append(many(paths, jobs))
    one, two = (statistics.median(each) for each in times.values())
    ratio = statistics.median(a / b for a, b in zip(times[1], times[2]))
    print(f"read_many of {len(paths)} takes: one process {one:.0f} ms, two {two:.0f} ms: {ratio:.2f} times as fast")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--zkhost", required=True, type=os.path.abspath)
    parser.add_argument("--repeats", type=int, default=9)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        one = folder / "one.bvh"
        take_of(10000, 1).write(one, digits=4)
        compare_one(options.zkhost, one, options.repeats)
        (folder / "many").mkdir()
        text = (take_of(2000, seed) for seed in range(8))
        for index, take in enumerate(text):
            take.write(folder / "many" / f"{index:03d}.bvh", digits=4)
        for index in range(8, 200):
            (folder / "many" / f"{index:03d}.bvh").write_bytes((folder / "many" / f"{index % 8:03d}.bvh").read_bytes())
        compare_many(folder / "many", max(3, options.repeats // 3))


main()
