"""The base class of the tests of "zkhost convert": it has a temporary folder for a data set.

usage of each test: test_THEME.py ZKHOST PLUGIN STAND_IN FULL_DISK COUNTED_CALLS [UNITTEST ARGUMENTS]
"""

import csv
import os
import pathlib
import re
import resource
import shlex
import subprocess
import sys
import tempfile
import time
import unittest

SAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples"
LIMIT = 120
TOOK = r"[0-9.]+ s, [0-9.]+ files a second"
HEADER = ["source", "output", "status", "joints", "frames", "fps", "seconds", "first error",
          "warnings", "findings"]

ASF = """:version 1.10
:name arm
:units
  mass 1.0
  length 1.0
  angle deg
:documentation
  an arm
:root
  order TX TY TZ RX RY RZ
  axis XYZ
  position 0 0 0
  orientation 0 0 0
:bonedata
  begin
    id 1
    name upper
    direction 1 0 0
    length 2
    axis 0 0 0 XYZ
    dof rx ry rz
  end
:hierarchy
  begin
    root upper
  end
"""


def bvh(frames=2, joints=3, seed=0):
    """Returns a BVH file with a chain of rotating joints. Each seed gives another motion."""
    lines = ["HIERARCHY"]
    for joint in range(joints):
        lines += [f"{'JOINT' if joint else 'ROOT'} J{joint}", "{", f"OFFSET 0 {joint and 1} 0",
                  "CHANNELS 3 Zrotation Xrotation Yrotation"]
    lines += ["End Site", "{", "OFFSET 0 1 0", "}"] + ["}"] * joints
    lines += ["MOTION", f"Frames: {frames}", "Frame Time: 0.05"]
    for frame in range(frames):
        lines.append(" ".join(str((seed * 7 + frame * 3 + channel) % 90) for channel in range(3 * joints)))
    return "\n".join(lines) + "\n"


def amc(frames=2):
    lines = [":FULLY-SPECIFIED", ":DEGREES"]
    for frame in range(1, frames + 1):
        lines += [str(frame), f"root 0 {frame} 0 0 0 0", f"upper {frame} 0 0"]
    return "\n".join(lines) + "\n"


def file_size_limit(size):
    """Returns a function for `prepare` that limits the size of files to `size` bytes."""
    return lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))


class DataSet(unittest.TestCase):
    zkhost = plugin = stand_in = full_disk = counted_calls = took = ""
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    # Functions about files. Names are paths below the temporary folder.

    def put(self, name, content):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        # An old time makes every output newer than its input, even where file times are coarse.
        os.utime(path, (1_600_000_000, 1_600_000_000))
        return path

    def put_samples(self, count, frames=2, joints=3, folder="takes"):
        for number in range(count):
            self.put(f"{folder}/{number % 3}/take{number:03}.bvh", bvh(frames, joints, number))

    def put_broken(self, name):
        self.put(name, "HIERARCHY\nROOT Hips\n{\nOFFSET 0 up 0\n}\n")

    def tree(self, name="out"):
        """Returns the name and the bytes of every file in the folder and below it, including hidden files."""
        root = self.folder / name
        return {str(path.relative_to(root)): path.read_bytes() for path in sorted(root.rglob("*"))
                if path.is_file()}

    def index(self, name="out"):
        with open(self.folder / name / "index.csv", newline="", encoding="utf-8") as file:
            rows = list(csv.reader(file))
        self.assertEqual(rows[0], HEADER)
        return [dict(zip(HEADER, row, strict=True)) for row in rows[1:]]

    def statuses(self, name="out"):
        return {row["source"]: row["status"] for row in self.index(name)}

    def errors(self, name="out"):
        return {row["source"]: row["first error"] for row in self.index(name) if row["first error"]}

    # Functions that run zkhost.

    def words(self, line, to="json", out="out", plugin=None):
        return [self.zkhost, "convert", *shlex.split(line), "--to", to, "--out-dir", out,
                "--plugin", plugin or self.plugin]

    def convert(self, line, status=0, prepare=None, env=None, **how):
        """Runs zkhost convert. Returns its stdout, without the line about the time (self.took), and its stderr."""
        run = subprocess.run(self.words(line, **how), cwd=self.folder, stdin=subprocess.DEVNULL, env=env,
                             capture_output=True, timeout=LIMIT, preexec_fn=prepare)
        out, err = (text.decode("utf-8", "surrogateescape") for text in (run.stdout, run.stderr))
        self.assertEqual(run.returncode, status, f"\nstdout: {out}\nstderr: {err}")
        self.took = "".join(re.findall(TOOK, out))
        return re.sub(f"{TOOK}\n", "", out), err

    def start(self, line, env=None, **how):
        return subprocess.Popen(self.words(line, **how), cwd=self.folder, stdin=subprocess.DEVNULL, env=env,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, start_new_session=True)

    def wait_for(self, condition, seconds=60):
        """Waits until `condition()` is true."""
        end = time.monotonic() + seconds
        while not condition():
            self.assertLess(time.monotonic(), end, "waited in vain")
            time.sleep(0.005)

    def outputs(self, name="out", pattern="*.json"):
        return len(list((self.folder / name).rglob(pattern)))

    def assert_no_leftovers(self, name="out"):
        # An import whose parent was killed may need a moment to receive its signal and remove its file.
        self.wait_for(lambda: not list((self.folder / name).rglob(".zkhost-*.tmp")), 20)


def main():
    DataSet.zkhost, DataSet.plugin, DataSet.stand_in, DataSet.full_disk, DataSet.counted_calls = sys.argv[1:6]
    del sys.argv[1:6]
    unittest.main(verbosity=2)
