"""Takes: arrays, parts, angles, samples, pickling, tables."""

import gc
import pickle
import sys
import weakref

import numpy as np
import pandas
import pytest

import zkmocaputils as zm
from conftest import BVH, SMALL, zkhost

POSES = ("positions", "quaternions", "local_positions", "local_quaternions")
OTHERS = ("quaternions_wxyz", "offsets", "parents", "is_end", "times", "frame_numbers")


def rotated(q, v):
    twice = 2.0 * np.cross(q[..., :3], v)
    return v + q[..., 3:] * twice + np.cross(q[..., :3], twice)


@pytest.mark.parametrize("name", POSES + OTHERS)
def test_arrays(walk, name):
    array = getattr(walk, name)
    assert array.flags.c_contiguous and not array.flags.writeable and array is getattr(walk, name)
    with pytest.raises(ValueError):
        array[0] = 0
    copy = array.copy()
    copy[0] = 0
    with pytest.raises(AttributeError):
        setattr(walk, name, copy)


def test_conventions(walk, pair):
    for take in (walk, pair):
        for name in ("quaternions", "local_quaternions"):
            q = getattr(take, name)
            assert np.abs(np.linalg.norm(q, axis=-1) - 1.0).max() < 1e-12
            assert (q[0, :, 3] >= 0.0).all() and ((q[1:] * q[:-1]).sum(-1) >= 0.0).all()
        world = np.empty_like(take.positions)
        for joint, parent in enumerate(take.parents):
            local = take.local_positions[:, joint]
            world[:, joint] = local if parent < 0 else world[:, parent] + rotated(take.quaternions[:, parent], local)
        assert np.abs(world - take.positions).max() < 1e-9
        assert np.array_equal(take.quaternions_wxyz[..., 0], take.quaternions[..., 3])
        assert np.array_equal(take.quaternions_wxyz[..., 1:], take.quaternions[..., :3])


def test_arrays_outlive_the_take():
    take = zm.read(BVH)
    expected = take.positions.copy()
    positions, part = take.positions, take[3:9].quaternions
    alive = weakref.ref(take)
    del take
    gc.collect()
    assert alive() is None and np.array_equal(positions, expected) and len(part) == 6


def turn(axis, degrees):
    c, s = np.cos(np.radians(degrees)), np.sin(np.radians(degrees))
    result = np.zeros(degrees.shape + (3, 3))
    a, b = [(1, 2), (2, 0), (0, 1)][axis]
    result[..., axis, axis] = 1.0
    result[..., a, a] = result[..., b, b] = c
    result[..., a, b], result[..., b, a] = -s, s
    return result


def matrices(q):
    return np.stack([rotated(q, np.broadcast_to(axis, q.shape[:-1] + (3,))) for axis in np.eye(3)], axis=-1)


@pytest.mark.parametrize("order", ["XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX", "zxy", "XYX", "XZX", "YXY", "YZY", "ZXZ", "ZYZ"])
def test_euler(walk, order):
    angles = walk.euler(order)
    assert angles is walk.euler(order.upper()) and not angles.flags.writeable and np.abs(angles).max() <= 180.0
    product = np.eye(3)
    for column, letter in enumerate(order.upper()):
        product = product @ turn("XYZ".index(letter), angles[..., column])
    assert np.abs(product - matrices(walk.local_quaternions)).max() < 1e-12


@pytest.mark.parametrize("order", ["XYZ", "ZXY", "ZXZ"])
@pytest.mark.parametrize("middle", [-90.0, 90.0, 0.0, 180.0, 90.0 - 1e-7, 1e-9])
def test_euler_at_gimbal_lock(order, middle):
    angles = np.array([[[20.0, middle, 70.0]], [[-110.0, middle, 30.0]]])
    take = zm.Take.from_arrays(["a"], [-1], [[0, 0, 0]], euler=angles, order=order, fps=1)
    product, expected = np.eye(3), np.eye(3)
    for column, letter in enumerate(order):
        product = product @ turn("XYZ".index(letter), take.euler(order)[..., column])
        expected = expected @ turn("XYZ".index(letter), angles[..., column])
    assert np.abs(product - expected).max() < 1e-12


@pytest.mark.parametrize("order, error", [("XY", ValueError), ("XXY", ValueError), ("ABC", ValueError), (5, TypeError)])
def test_wrong_orders(walk, order, error):
    with pytest.raises(error, match="order"):
        walk.euler(order)


@pytest.mark.parametrize("rows", [slice(100, 200), slice(None), slice(0, 1), slice(-10, None), slice(5, 250, 3),
                                  slice(None, None, 2), slice(10, 10), slice(200, 100), slice(300, 400)], ids=str)
def test_parts(walk, rows):
    part = walk[rows]
    start, stop, step = rows.indices(len(walk))
    assert len(part) == len(range(start, stop, step)) and part.fps == walk.fps / step
    assert np.array_equal(part.positions, walk.positions[rows])
    assert np.array_equal(np.abs((part.quaternions * walk.quaternions[rows]).sum(-1)).round(12), np.ones(part.quaternions.shape[:2]))
    for name in POSES + OTHERS:
        assert getattr(part, name).flags.c_contiguous and not getattr(part, name).flags.writeable
    assert np.array_equal(part.frame_numbers, walk.frame_numbers[rows]) and part.names == walk.names
    if len(part):
        assert part.times[0] == 0.0 and part.start_time == walk.times[start]
        assert np.abs(part.times - np.arange(len(part)) / part.fps).max() < 1e-9
        for name in ("quaternions", "local_quaternions"):
            q = getattr(part, name)
            assert (q[0, :, 3] >= 0.0).all() and ((q[1:] * q[:-1]).sum(-1) >= 0.0).all()
    if step == 1 and len(part):
        assert np.shares_memory(part.positions, walk.positions)


def test_parts_of_parts(walk):
    part = walk[100:200][10:50:2]
    assert np.array_equal(part.positions, walk.positions[110:150:2])
    assert part.start_time == pytest.approx(walk.times[110]) and part.fps == walk.fps / 2
    assert part.facts.frames == 20 and "20 frames" in repr(part)


@pytest.mark.parametrize("item, error", [(5, TypeError), ("Hips", TypeError), (slice(None, None, -1), ValueError),
                                         (slice(None, None, 0), ValueError), (slice(1.5, 3), TypeError), ((1, 2), TypeError)])
def test_wrong_parts(walk, item, error):
    with pytest.raises(error):
        walk[item]


def test_resample(tmp_path, walk):
    for take, words in [(walk, ()), (walk[19:99], ("--frames", "20:99"))]:
        zkhost("import", BVH, "--quiet", *words, "--resample", "24", "-o", tmp_path / "take.npz")
        sampled = take.resample(24)
        with np.load(tmp_path / "take.npz") as expected:
            for name in POSES + ("times", "frame_numbers", "fps"):
                assert np.array_equal(expected[name], getattr(sampled, name)), name
    assert walk[19:99].resample(24).start_time == walk.times[19]
    twice = walk.resample(30).resample(60)
    assert twice.fps == 60.0 and np.abs(twice.positions[::2] - walk.resample(30).positions).max() < 1e-9
    assert walk[::2].resample(15).fps == 15.0
    for wrong, error in [(0, ValueError), (-5, ValueError), ("24", TypeError), (float("nan"), ValueError), (1e12, ValueError)]:
        with pytest.raises(error):
            walk.resample(wrong)
    for pose in (zm.read(BVH.with_suffix(".asf")), walk[5:5]):
        with pytest.raises(ValueError, match="no motion"):
            pose.resample(10)


def test_identity(walk):
    other = zm.read(BVH)
    assert walk == walk and walk != other and len({walk, other}) == 2
    with pytest.raises(TypeError):
        zm.Take()
    assert walk.names is not walk.names and isinstance(walk.names, list)


@pytest.mark.parametrize("protocol", range(2, pickle.HIGHEST_PROTOCOL + 1))
def test_pickle(walk, tmp_path, protocol):
    for take in (walk, walk[10:50:3], walk.resample(20)):
        again = pickle.loads(pickle.dumps(take, protocol))
        for name in POSES + OTHERS:
            assert np.array_equal(getattr(again, name), getattr(take, name)), name
            assert not getattr(again, name).flags.writeable
        assert (again.names, again.fps, again.start_time, again.facts, again.findings) == (
            take.names, take.fps, take.start_time, take.facts, take.findings)
        again.write(tmp_path / "again.bvh")
        assert np.abs(zm.read(tmp_path / "again.bvh").positions - take.positions).max() < 1e-4
        assert again[2:5].resample(10).fps == 10


def test_pandas(walk, tmp_path, monkeypatch):
    walk.write(tmp_path / "walk.csv")
    expected = pandas.read_csv(tmp_path / "walk.csv", index_col="frame")
    table = walk.to_pandas()
    assert list(table.columns) == list(expected.columns) and table.index.equals(expected.index)
    angles = [name for name in table.columns if name[-3:-1] == "_r"]
    others = [name for name in table.columns if name not in angles]
    assert np.abs(table[others].to_numpy() - expected[others].to_numpy()).max() < 1e-4
    difference = table[angles].to_numpy() - expected[angles].to_numpy()
    assert np.abs(difference - 360.0 * np.rint(difference / 360.0)).max() < 1e-3
    monkeypatch.setitem(sys.modules, "pandas", None)
    with pytest.raises(ImportError):
        walk.to_pandas()


def test_pandas_numbers_clashes():
    text = SMALL.replace("Hips", "a.b").replace("Spine", "a:b")
    columns = list(zm.read(text.encode()).to_pandas().columns)
    assert columns[1] == "a_b_px" and columns[7] == "a_b_2_px"


def test_contact_sheet(walk):
    assert walk._repr_svg_().startswith("<svg") and walk[5:5]._repr_svg_() is None
