"""The code of docs/python.md and the example, as a reader runs them."""

import os
import pathlib
import re
import shutil
import subprocess
import sys

import numpy as np

import zkmocaputils as zm
from conftest import BVH, EXAMPLES, PAIR

SOURCE = pathlib.Path(os.environ["ZKMOCAP_SOURCE"])


def test_page(tmp_path, monkeypatch, capsys):
    for path in (BVH, *PAIR):
        shutil.copy(path, tmp_path)
    monkeypatch.chdir(tmp_path)
    blocks = re.findall(r"```python\n(.*?)```", (SOURCE / "docs" / "python.md").read_text("utf-8"), re.DOTALL)
    assert len(blocks) > 8
    names = {}
    for number, block in enumerate(blocks, 1):
        exec(compile(block, f"python.md, block {number}", "exec"), names)
    assert capsys.readouterr().out.startswith(f"{zm.read(BVH)!r}\n(257, 27, 3)\n")
    assert {"walk.glb", "step.bvh", "walk.npz", "walk.csv", "names.csv", "changed.bvh"} <= set(os.listdir(tmp_path))


def test_the_page_names_what_there_is():
    page = (SOURCE / "docs" / "python.md").read_text("utf-8")
    for name in zm.__all__:
        assert name in ("__version__", "Facts", "Finding", "CheckResult") or re.search(rf"\bzm\.{name}\b", page), name
    for name in vars(zm.Take):
        assert name.startswith("_") or f"`{name}" in page or f".{name}" in page, name
        assert name.startswith("_") or getattr(zm.Take, name).__doc__, name


def test_training_array(tmp_path):
    folder = tmp_path / "takes"
    folder.mkdir()
    walk = zm.read(BVH)
    for index in range(3):
        walk[index * 10:].write(folder / f"{index}.bvh")
    subprocess.run([sys.executable, EXAMPLES / "training_array.py", folder, tmp_path / "a.npy", tmp_path / "made.bvh"],
                   check=True)
    array = np.load(tmp_path / "a.npy")
    assert array.shape[1:] == (60, 27 * 6 + 3) and array.dtype == np.float32
    made = zm.read(tmp_path / "made.bvh")
    assert np.abs(made.positions - walk.resample(30).positions[:60]).max() < 1e-3
