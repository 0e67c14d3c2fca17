"""What the tests of the Python module share. The environment names the program and the samples: see CMakeLists.txt."""

import os
import pathlib
import subprocess

import numpy as np
import pytest

import zkmocaputils as zm

EXAMPLES = pathlib.Path(os.environ["ZKMOCAP_EXAMPLES"])
BVH = EXAMPLES / "walk.bvh"
PAIR = (EXAMPLES / "walk.asf", EXAMPLES / "walk.amc")
SLOW = "ZKMOCAP_SLOW_BUILD" in os.environ

SMALL = ("HIERARCHY\nROOT Hips\n{\nOFFSET 0 90 0\nCHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n"
         "JOINT Spine\n{\nOFFSET 0 40 0\nCHANNELS 3 Zrotation Xrotation Yrotation\nEnd Site\n{\nOFFSET 0 40 0\n}\n}\n}\n"
         "MOTION\nFrames: 4\nFrame Time: 0.25\n0 90 0 0 0 0 0 0 0\n1 90 0 10 20 30 5 0 0\n2 90 0 20 40 60 5 0 0\n"
         "3 90 0 30 60 90 5 0 0\n")


def large_bvh(frames):
    """The text of a BVH file with 24 joints."""
    lines = ["HIERARCHY", "ROOT J0", "{", "OFFSET 0 90 0",
             "CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation"]
    for joint in range(1, 24):
        lines += [f"JOINT J{joint}", "{", f"OFFSET 0 {joint}.5 0", "CHANNELS 3 Zrotation Xrotation Yrotation"]
    lines += ["End Site", "{", "OFFSET 0 5 0", "}"] + ["}"] * 24
    rows = [" ".join(f"{(frame * 7 + value * 13) % 360 - 180}.25" for value in range(75)) for frame in range(97)]
    lines += ["MOTION", f"Frames: {frames}", "Frame Time: 0.008333"] + [rows[frame % 97] for frame in range(frames)]
    return "\n".join(lines) + "\n"


def zkhost(*arguments):
    """Runs the program; returns what it printed."""
    return subprocess.run([os.environ["ZKHOST"], *map(str, arguments)], check=True, capture_output=True, text=True,
                          env={name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}).stdout


def size_of(take):
    return float(np.ptp(take.positions[0], axis=0).max())


@pytest.fixture
def small(tmp_path):
    path = tmp_path / "small.bvh"
    path.write_text(SMALL)
    return path


@pytest.fixture(scope="session")
def walk():
    return zm.read(BVH)


@pytest.fixture(scope="session")
def pair():
    return zm.read(*PAIR)
