"""The type annotations: those of the package, and what a caller sees."""

import os
import pathlib
import subprocess
import sys

import pytest

PACKAGE = pathlib.Path(os.environ["ZKMOCAP_SOURCE"]) / "python" / "zkmocaputils"

CALLER = """
import numpy as np
import zkmocaputils as zm

take = zm.read("walk.bvh", scale=0.01, frames="10:20")
reveal_type(take.positions)
reveal_type(take[1:2])
reveal_type(zm.check("walk.bvh").findings[0].line)
reveal_type(zm.Take.from_arrays(["a"], [-1], np.zeros((1, 3)), np.ones((1, 1, 4)), fps=30))
for each in zm.read_many(zm.find("takes"), jobs=2, on_error="return"):
    reveal_type(each)
for one in zm.read_many(["walk.bvh"]):
    reveal_type(one)
take.write("walk.glb", mesh=False)
"""

REVEALED = ['numpy.ndarray[Any, numpy.dtype[numpy.floating[numpy._typing._64Bit]]]', "zkmocaputils._take.Take",
            "builtins.int", "zkmocaputils._take.Take", "Union[zkmocaputils._take.Take, builtins.Exception]", "zkmocaputils._take.Take"]

MISTAKES = ["zm.read('walk.bvh', scale='1')", "zm.read('walk.bvh', scales=1)", "take.write('x.glb', mesh=5)", "take['Hips']",
            "zm.read_many([], on_error='x')", "take.euler(5)", "take.fps = 5", "zm.Take.from_arrays(['a'], [-1], [0])"]


def mypy(tmp_path, *words):
    environment = {**os.environ, "MYPYPATH": str(PACKAGE.parent)}
    environment.pop("PYTHONPATH", None)  # where the package is found as an installed one
    return subprocess.run([sys.executable, "-m", "mypy", "--cache-dir", str(tmp_path / "cache"), *map(str, words)],
                          capture_output=True, text=True, env=environment)


@pytest.fixture(scope="module")
def folder(tmp_path_factory):
    return tmp_path_factory.mktemp("types")


def test_package(folder):
    run = mypy(folder, "--strict", "--ignore-missing-imports", "-p", "zkmocaputils")
    assert run.returncode == 0, run.stdout


def test_caller(folder):
    path = folder / "caller.py"
    path.write_text(CALLER + "\n".join(MISTAKES) + "\n")
    run = mypy(folder, "--ignore-missing-imports", path)
    lines = run.stdout.splitlines()
    revealed = [line.split('is "')[1].rstrip('"') for line in lines if "Revealed type" in line]
    assert revealed == REVEALED, run.stdout
    first = CALLER.count("\n") + 1
    errors = {int(line.split(":")[1]) for line in lines if ": error:" in line}
    assert errors == set(range(first, first + len(MISTAKES))), run.stdout


def test_the_module_has_what_its_stub_says():
    from zkmocaputils import _core
    stub = (PACKAGE / "_core.pyi").read_text()
    for name in dir(_core):
        if not name.startswith("__"):
            assert f"def {name}(" in stub or f"class {name}" in stub or f"{name}: " in stub, name
