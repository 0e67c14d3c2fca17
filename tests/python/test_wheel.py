"""The wheel of this build works from any folder, without the build."""

import os
import pathlib
import shutil
import subprocess
import sys
import zipfile

SOURCE = pathlib.Path(os.environ["ZKMOCAP_SOURCE"])
BINARY = pathlib.Path(os.environ["ZKMOCAP_BINARY"])

PROGRAM = """
import sys
import zkmocaputils as zm
assert zm.__file__.startswith(sys.argv[2]), zm.__file__
take = zm.read(sys.argv[1])
take.write("walk.glb")
print(len(take), [len(each) for each in zm.read_many([sys.argv[1]])], take.positions.shape)
with open("/proc/self/maps") as maps:
    libraries = {line.split()[-1] for line in maps if "libz" in line and "libz.so" not in line}
print(*sorted(library.removeprefix(sys.argv[2]) for library in libraries if "lib/x86" not in library))
"""


def copied_source(tmp_path):
    """A copy of what the wheel is made from, because tools leave files beside the sources."""
    copy = tmp_path / "source"
    for name in ("setup.py", "pyproject.toml", "CMakeLists.txt", "README.md", "docs", "python"):
        if (SOURCE / name).is_dir():
            shutil.copytree(SOURCE / name, copy / name, ignore=shutil.ignore_patterns("__pycache__"))
        else:
            copy.mkdir(exist_ok=True)
            shutil.copy(SOURCE / name, copy / name)
    return copy


def test_wheel(tmp_path):
    environment = {name: value for name, value in os.environ.items() if name != "PYTHONPATH"}
    subprocess.run([sys.executable, "-m", "pip", "wheel", ".", "--no-build-isolation", "--no-deps", "--quiet",
                    "--wheel-dir", tmp_path], cwd=copied_source(tmp_path), check=True,
                   env={**environment, "ZKMOCAP_BUILD_DIR": str(BINARY)})
    wheel, = tmp_path.glob("zkmocaputils-*-linux_*.whl")
    installed = tmp_path / "anywhere"
    with zipfile.ZipFile(wheel) as archive:
        names = {name for name in archive.namelist() if "dist-info" not in name}
        archive.extractall(installed)
    assert all(name.startswith("zkmocaputils/") for name in names), names
    assert {"zkmocaputils/libzkmocap.so.0", "zkmocaputils/libzelkhost.so.0", "zkmocaputils/libzkmocaputils.so",
            "zkmocaputils/py.typed", "zkmocaputils/_core.pyi", "zkmocaputils/__main__.py"} <= names
    run = subprocess.run([sys.executable, "-c", PROGRAM, str(SOURCE / "examples" / "walk.bvh"), str(installed)],
                         cwd=tmp_path, env={**environment, "PYTHONPATH": str(installed)}, capture_output=True, text=True)
    assert run.stdout.splitlines() == [
        "257 [257] (257, 27, 3)",
        "/zkmocaputils/libzelkhost.so.0 /zkmocaputils/libzkmocap.so.0 /zkmocaputils/libzkmocaputils.so"], run.stderr
    assert (tmp_path / "walk.glb").stat().st_size > 1000
