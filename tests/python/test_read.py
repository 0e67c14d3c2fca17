"""Reading: what can be read, options, errors, warnings, progress."""

import gzip
import io
import json
import os
import pickle
import subprocess
import sys
import threading
import warnings

import numpy as np
import pytest

import zkmocaputils as zm
from conftest import BVH, EXAMPLES, PAIR, SMALL, large_bvh, zkhost

ARRAYS = ("positions", "quaternions", "local_positions", "local_quaternions", "offsets", "parents", "is_end", "times",
          "frame_numbers", "fps", "unit", "up")

OPTIONS = [
    ((), {}),
    (("--bones",), {"bones": True}),
    (("--bones", "--all-nodes"), {"bones": True, "all_nodes": True}),
    (("--scale", "0.01", "--up", "z"), {"scale": 0.01, "up": "z"}),
    (("--frames", "10:50"), {"frames": "10:50"}),
    (("--resample", "25"), {"resample": 25}),
    (("--fps", "30", "--in-place"), {"fps": 30, "in_place": True}),
    (("--as-is",), {"as_is": True}),
]


@pytest.mark.parametrize("files", [(BVH,), PAIR], ids=["bvh", "pair"])
@pytest.mark.parametrize("words, options", OPTIONS, ids=lambda each: " ".join(each) if isinstance(each, tuple) else "")
def test_equals_npz(tmp_path, files, words, options):
    output = tmp_path / "take.npz"
    zkhost("import", *files, "--quiet", *words, "-o", output)
    take = zm.read(*files, **options)
    with np.load(output) as arrays:
        for name in ARRAYS:
            assert np.array_equal(arrays[name], getattr(take, name)), name
        for name in ("names", "source_names"):
            assert list(arrays[name]) == getattr(take, name)
        assert json.loads(str(arrays["findings"])) == take.findings
        for name in ARRAYS[:9]:
            assert getattr(take, name).dtype == arrays[name].dtype


def contents(path):
    return path.read_bytes()


@pytest.mark.parametrize("give", [
    str, os.fspath, lambda path: path, lambda path: path.read_bytes(), lambda path: bytearray(path.read_bytes()),
    lambda path: memoryview(path.read_bytes()), lambda path: path.open("rb"), lambda path: path.open(),
    lambda path: io.BytesIO(path.read_bytes()), lambda path: io.StringIO(path.read_text()),
    lambda path: gzip.compress(path.read_bytes()), lambda path: io.BytesIO(gzip.compress(path.read_bytes())),
    lambda path: b"\xef\xbb\xbf" + path.read_bytes(),
], ids=["str", "fspath", "path", "bytes", "bytearray", "memoryview", "file", "text file", "BytesIO", "StringIO", "packed",
        "packed file", "mark"])
def test_files_may_be_given_in_many_ways(small, give):
    take = zm.read(give(small))
    assert len(take) == 4 and take.names == ["Hips", "Spine", "Spine_End"]


def test_pairs(pair):
    asf, amc = PAIR
    for source in [(amc, asf), ((asf, amc),), (amc,), (asf.read_bytes(), amc.read_bytes()), (asf.open("rb"), amc)]:
        assert np.array_equal(zm.read(*source).positions, pair.positions)
    skeleton = zm.read(asf)
    assert len(skeleton) == 1 and skeleton.fps == 0.0 and skeleton.frame_numbers[0] == 0


def test_name_of_contents():
    assert zm.read(SMALL.encode(), name="jump.bvh").name == "jump"
    assert zm.read(SMALL.encode()).name == "take"


def test_facts(walk):
    facts = walk.facts
    assert (facts.name, facts.joints, facts.end_sites, facts.frames) == ("walk", 22, 5, 257)
    assert facts["fps"] == facts.fps == walk.fps and facts.format == "Biovision BVH"
    assert facts.files == [str(BVH)] and facts.rate_origin == "file"
    assert repr(walk) == ("<zkmocaputils.Take 'walk': 257 frames at 60 per second, 22 joints, 5 end sites, 173.9 tall"
                          " (1.74 m)>")
    assert pickle.loads(pickle.dumps(facts)) == facts


BROKEN = SMALL.replace("0 90 0 0 0 0 0 0 0\n", "0 90 0 0 0 0 0 0 0 7\n", 1)
WARNED = SMALL.replace("Frames: 4", "Frames: 5")


@pytest.mark.parametrize("make, error", [
    (lambda folder: folder / "missing.bvh", FileNotFoundError),
    (lambda folder: folder, IsADirectoryError),
    (lambda folder: folder / "small.txt", zm.ReadError),
    (lambda folder: b"", zm.ReadError),
    (lambda folder: b"\0\1\2", zm.ReadError),
    (lambda folder: gzip.compress(b"x")[:-9], zm.ReadError),
    (lambda folder: 7, TypeError),
    (lambda folder: None, TypeError),
    (lambda folder: (), TypeError),
    (lambda folder: ("a", "b", "c"), TypeError),
    (lambda folder: (BVH, BVH), zm.ReadError),
    (lambda folder: (folder / "alone.amc"), zm.ReadError),
    (lambda folder: PAIR[1].read_bytes(), zm.ReadError),
])
def test_what_cannot_be_read(tmp_path, make, error):
    (tmp_path / "small.txt").write_text(SMALL)
    (tmp_path / "alone.amc").write_bytes(PAIR[1].read_bytes())
    with pytest.raises(error):
        zm.read(make(tmp_path))


def test_unreadable_file(small):
    small.chmod(0)
    if os.access(small, os.R_OK):
        pytest.skip("this user may read everything")
    with pytest.raises(PermissionError):
        zm.read(small)


def test_read_error(tmp_path):
    path = tmp_path / "broken.bvh"
    path.write_text(BROKEN)
    with pytest.raises(zm.ReadError) as caught:
        zm.read(path)
    error = caught.value
    assert isinstance(error, ValueError) and error.path == str(path) and error.code
    assert str(error).startswith(f"{path}:") and error.code in str(error)
    again = pickle.loads(pickle.dumps(error))
    assert (again.path, again.line, again.code, str(again)) == (error.path, error.line, error.code, str(error))
    assert error.line == 19
    path.write_text(SMALL[:200])
    with pytest.raises(zm.ReadError) as caught:
        zm.read(path, as_is=True)
    assert caught.value.code == "" and caught.value.line == 12


def test_warnings(tmp_path):
    path = tmp_path / "warned.bvh"
    path.write_text(WARNED)
    codes = {finding.code for finding in zm.read(path, warn=False).findings if finding.severity == "warning"}
    assert codes
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        take = zm.read(path)
    assert {each.message.code for each in caught} == codes and len(caught) == len(codes)
    assert all(each.category is zm.ReadWarning and each.filename == __file__ for each in caught)
    assert caught[0].message.path == str(path) and len(take) == 4
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        zm.read(path, warn=False)
        with pytest.raises(zm.ReadWarning):
            zm.read(path)
    with pytest.raises(zm.ReadError):
        zm.read(path, strict=True)


@pytest.mark.parametrize("options, error", [
    ({"scale": 0}, ValueError), ({"scale": -1}, ValueError), ({"scale": "1"}, TypeError), ({"scale": True}, TypeError),
    ({"scale": float("nan")}, ValueError), ({"up": "w"}, ValueError), ({"up": 1}, TypeError), ({"fps": 0}, ValueError),
    ({"frames": "5"}, ValueError), ({"frames": (3, 1)}, ValueError), ({"frames": (1.5, 2)}, ValueError),
    ({"frames": "900:901"}, ValueError), ({"frames": (10**30, None)}, ValueError), ({"resample": float("inf")}, ValueError),
    ({"resample": 1e12}, ValueError), ({"bones": 1}, TypeError), ({"bones": True, "nulls": True}, ValueError),
    ({"preset": "cmu"}, ValueError), ({"preset": "x"}, ValueError), ({"limits": True}, ValueError),
    ({"encoding": "klingon"}, ValueError), ({"as_is": True, "strict": True}, ValueError), ({"progress": 5}, TypeError),
    ({"name": 5}, TypeError), ({"unknown": 5}, TypeError),
])
def test_wrong_options(small, options, error):
    with pytest.raises(error) as caught:
        zm.read(small, **options)
    assert next(iter(options)) in str(caught.value) or "frame" in str(caught.value)


def test_progress(tmp_path):
    path = tmp_path / "large.bvh"
    path.write_text(large_bvh(20000))
    shares = []
    zm.read(path, progress=lambda share: shares.append((share, threading.get_ident())))
    assert [share for share, _ in shares] == sorted(share for share, _ in shares)
    assert {thread for _, thread in shares} == {threading.get_ident()} and 0.0 <= shares[0][0] <= shares[-1][0] <= 1.0

    class Stop(Exception):
        pass

    def stop(share):
        raise Stop(share)

    def again(share):
        zm.read(SMALL.encode())

    with pytest.raises(Stop):
        zm.read(path, progress=stop)
    with pytest.raises(RuntimeError, match="is being read on this thread"):
        zm.read(path, progress=again)
    assert len(zm.read(SMALL.encode())) == 4


def test_check(tmp_path):
    result = zm.check(BVH)
    assert result.ok and result.file == str(BVH) and result.facts.orders == ["ZXY"] and result.facts.joints == 22
    expected = json.loads(zkhost("check", "--json", BVH))
    assert expected["findings"] == result.findings
    assert {"end_sites" if key == "endSites" else key: value for key, value in expected["facts"].items()} == result.facts
    both = zm.check(*PAIR)
    assert both.ok and both.facts.frames == 257 and both.facts.joints == 25
    assert all(finding.file in map(str, PAIR) for finding in both.findings)
    assert zm.check(PAIR[1]).facts.frames == 257
    broken = zm.check(BROKEN.encode(), name="broken.bvh")
    assert not broken.ok and broken.findings[-1].severity == "error" and broken.findings[-1].line == 19
    with pytest.raises(FileNotFoundError):
        zm.check(tmp_path / "missing.bvh")


def test_check_command(tmp_path):
    (tmp_path / "broken.bvh").write_text(BROKEN)
    rows = [([BVH], 0, "257 frames"), ([BVH, "--json"], 0, '"ok": true'), ([tmp_path / "broken.bvh"], 1, "error: "),
            ([BVH, tmp_path / "missing.bvh"], 2, "257 frames")]
    for words, status, text in rows:
        run = subprocess.run([sys.executable, "-m", "zkmocaputils", "check", *map(str, words)], capture_output=True,
                             text=True)
        assert run.returncode == status and text in run.stdout, run


def test_find(tmp_path):
    for name in ["b.bvh", "a/07.asf", "a/07_02.amc", "a/07_01.amc.gz", "a/08_01.amc", "c/lonely.asf", ".hidden/x.bvh",
                 "notes.txt", "d/one.asf", "d/other.amc", "e/p.asf", "e/q.asf", "e/z.amc"]:
        path = tmp_path / name
        path.parent.mkdir(exist_ok=True)
        path.write_text("")
    (tmp_path / "c" / "loop").symlink_to(tmp_path)

    def inside(*names):
        found = tuple(str(tmp_path / name) for name in names)
        return found if len(found) > 1 else found[0]

    expected = [inside("a/07.asf", "a/07_01.amc.gz"), inside("a/07.asf", "a/07_02.amc"),
                inside("a/07.asf", "a/08_01.amc"), inside("b.bvh"), inside("c/lonely.asf"),
                inside("d/one.asf", "d/other.amc"), inside("e/p.asf"), inside("e/q.asf"), inside("e/z.amc")]
    assert zm.find(tmp_path) == expected and zm.find(os.fspath(tmp_path)) == expected
    assert zm.find(tmp_path / "b.bvh", tmp_path / "d") == [inside("b.bvh"), inside("d/one.asf", "d/other.amc")]
    with pytest.raises(FileNotFoundError):
        zm.find(tmp_path / "missing")
    with pytest.raises(ValueError):
        zm.find(tmp_path / "notes.txt")
    assert zm.find(EXAMPLES)[0] == tuple(map(str, PAIR))
