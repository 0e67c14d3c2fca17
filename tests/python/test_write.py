"""Writing: formats, options, errors."""

import hashlib
import json
import os

import numpy as np
import pytest

import zkmocaputils as zm
from conftest import BVH, PAIR, large_bvh, zkhost
from zkmocaputils import _core

FORMATS = list(_core.formats())


@pytest.mark.parametrize("extension", FORMATS)
@pytest.mark.parametrize("source", [(BVH,), PAIR], ids=["bvh", "pair"])
def test_writes_what_the_program_writes(tmp_path, source, extension):
    (tmp_path / "program").mkdir()
    (tmp_path / "python").mkdir()
    zkhost("import", *source, "--quiet", "-o", tmp_path / "program" / f"walk{extension}")
    zm.read(*source).write(tmp_path / "python" / f"walk{extension}")
    written = sorted(os.listdir(tmp_path / "python"))
    assert written == sorted(os.listdir(tmp_path / "program"))
    for name in written:
        program, python = ((tmp_path / folder / name).read_bytes() for folder in ("program", "python"))
        if extension == ".npz":
            with np.load(tmp_path / "program" / name) as a, np.load(tmp_path / "python" / name) as b:
                assert a.files == b.files
                assert all(np.array_equal(a[each], b[each]) for each in a.files if each != "provenance")
        elif b"zkhost" not in program:
            assert python == program, name
        else:  # it names the program
            assert b"zkmocaputils 0." in python and abs(len(python) - len(program)) < 64


@pytest.mark.parametrize("extension", FORMATS)
def test_writes_parts_samples_and_made_takes(tmp_path, walk, extension):
    made = zm.Take.from_arrays(walk.names, walk.parents, walk.offsets, walk.local_quaternions, fps=60)
    for name, take in [("part", walk[10:60]), ("step", walk[10:60:5]), ("sampled", walk.resample(10)), ("made", made),
                       ("pose", zm.read(PAIR[0]))]:
        path = tmp_path / (name + extension)
        take.write(path)
        assert path.stat().st_size > 0


def test_parts_hold_their_frames(tmp_path, walk):
    for part in (walk[10:60], walk[10:60:5], walk[20:90][::3]):
        part.write(tmp_path / "part.npz")
        with np.load(tmp_path / "part.npz") as arrays:
            assert np.abs(arrays["positions"] - part.positions).max() < 1e-9
            assert np.array_equal(arrays["frame_numbers"], part.frame_numbers)
            assert float(arrays["fps"]) == pytest.approx(part.fps) and float(arrays["unit"]) == part.unit
    with pytest.raises(ValueError, match="no frames"):
        walk[5:5].write(tmp_path / "none.bvh")


@pytest.mark.parametrize("options, words", [
    ({"scale": 0.01, "up": "z"}, ("--scale", "0.01", "--up", "z")),
    ({"frames": (20, 40)}, ("--frames", "20:40")), ({"frames": ":40"}, ("--frames", ":40")),
    ({"resample": 24, "in_place": True}, ("--resample", "24", "--in-place")), ({"fps": 30}, ("--fps", "30")),
    ({"float32": True, "compress": True}, ("--float32", "--compress")),
])
def test_options(tmp_path, walk, options, words):
    zkhost("import", BVH, "--quiet", *words, "-o", tmp_path / "program.npz")
    walk.write(tmp_path / "python.npz", **options)
    with np.load(tmp_path / "program.npz") as a, np.load(tmp_path / "python.npz") as b:
        for name in a.files:
            assert name == "provenance" or np.array_equal(a[name], b[name]), name


def test_options_add_to_those_of_reading(tmp_path):
    take = zm.read(BVH, scale=0.01, frames=(11, 60))
    take.write(tmp_path / "take.npz", scale=10, frames=(21, 30))
    with np.load(tmp_path / "take.npz") as arrays:
        assert np.abs(arrays["positions"] - 10.0 * take.positions[10:20]).max() < 1e-9
        assert arrays["frame_numbers"].tolist() == list(range(21, 31))


def test_names_of_columns(tmp_path, walk):
    walk.write(tmp_path / "walk.csv", csv_names=tmp_path / "names.csv")
    assert (tmp_path / "names.csv").read_text().startswith("joint,column,parent,end_site\n")


def test_provenance(tmp_path):
    zm.read(BVH).write(tmp_path / "walk.npz", provenance=True)
    with np.load(tmp_path / "walk.npz") as arrays:
        text = str(arrays["provenance"])
    assert hashlib.sha256(BVH.read_bytes()).hexdigest() in text and "walk.bvh" in text
    assert "zkmocaputils" in json.dumps(json.loads(text))


@pytest.mark.parametrize("name, options, error", [
    ("walk.xyz", {}, ValueError), ("walk", {}, ValueError), ("walk.csv", {"mesh": False}, ValueError),
    ("walk.glb", {"float32": True}, ValueError), ("walk.json", {"scale": 2}, ValueError),
    ("walk.glb", {"csv_names": "x.csv"}, ValueError), ("walk.svg", {"provenance": True}, ValueError),
    ("walk.bvh", {"digits": 16}, ValueError), ("walk.bvh", {"digits": 2.5}, TypeError), ("walk.bvh", {"scale": 0}, ValueError),
    ("walk.bvh", {"frames": "900:"}, ValueError), ("walk.glb", {"animations": "x"}, ValueError),
    ("walk.bvh", {"progress": 5}, TypeError), ("walk.bvh", {"resample": 1e12}, ValueError),
    ("missing/walk.bvh", {}, FileNotFoundError), ("folder.bvh", {}, IsADirectoryError),
    ("file/walk.bvh", {}, NotADirectoryError), ("there.bvh", {"no_clobber": True}, FileExistsError),
])
def test_wrong(tmp_path, walk, name, options, error):
    (tmp_path / "folder.bvh").mkdir()
    (tmp_path / "file").write_text("")
    (tmp_path / "there.bvh").write_text("kept")
    before = sorted(os.listdir(tmp_path))
    with pytest.raises(error):
        walk.write(tmp_path / name, **options)
    assert sorted(os.listdir(tmp_path)) == before and (tmp_path / "there.bvh").read_text() == "kept"


def test_folders(tmp_path, walk):
    walk[:5].write(tmp_path / "a" / "b" / "walk.bvh", make_folders=True)
    assert (tmp_path / "a" / "b" / "walk.bvh").exists()
    with pytest.raises(OSError) as caught:
        walk.write("/proc/walk.bvh")
    assert caught.value.errno and caught.value.filename == "/proc/walk.bvh"


def test_progress(tmp_path):
    take = zm.read(large_bvh(5000).encode())
    shares = []
    take.write(tmp_path / "take.glb", progress=shares.append)
    assert shares == sorted(shares) and 0.0 <= shares[0] and shares[-1] <= 1.0

    def stop(share):
        raise KeyError("stop")

    with pytest.raises(KeyError):
        take.write(tmp_path / "stopped.glb", progress=stop)
    assert not (tmp_path / "stopped.glb").exists() and len(os.listdir(tmp_path)) == 1
    # While a take is written, others can be read.
    take.write(tmp_path / "take.glb", progress=lambda share: zm.read(BVH))
