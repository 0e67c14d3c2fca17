"""Takes from arrays, and back."""

import numpy as np
import pytest

import zkmocaputils as zm
from conftest import BVH, PAIR, SMALL, size_of

RANDOM = np.random.default_rng(5)


def rebuilt(take, **changes):
    arguments = {"names": take.names, "parents": take.parents, "offsets": take.offsets,
                 "local_quaternions": take.local_quaternions, "root_positions": take.local_positions[:, 0], "fps": take.fps,
                 "unit": take.unit or None}
    return zm.Take.from_arrays(**{**arguments, **changes})


@pytest.mark.parametrize("source", [(BVH,), PAIR, (SMALL.encode(),)], ids=["bvh", "pair", "small"])
def test_there_and_back(tmp_path, source):
    take = zm.read(*source)
    made = rebuilt(take)
    limit = 1e-9 * size_of(take)
    assert made.names == take.names and np.array_equal(made.parents, take.parents) and made.fps == take.fps
    assert np.array_equal(made.is_end, take.is_end) and np.array_equal(made.offsets, take.offsets)
    assert (made.unit, made.up) == (take.unit, take.up)
    assert np.abs(made.positions - take.positions).max() < limit
    assert np.abs(made.local_quaternions - take.local_quaternions).max() < 1e-12
    made.write(tmp_path / "made.bvh")
    again = zm.read(tmp_path / "made.bvh")
    assert again.names == take.names and np.abs(again.positions - take.positions).max() < limit
    made.write(tmp_path / "made.npz")
    with np.load(tmp_path / "made.npz") as arrays:
        assert np.array_equal(arrays["positions"], made.positions) and float(arrays["unit"]) == take.unit


@pytest.mark.parametrize("size", [1e-4, 1.0, 1e5])
def test_precision_does_not_depend_on_the_unit(tmp_path, walk, size):
    made = rebuilt(walk, offsets=walk.offsets * size, root_positions=walk.local_positions[:, 0] * size, unit=None)
    made.write(tmp_path / "made.bvh")
    assert np.abs(zm.read(tmp_path / "made.bvh").positions - made.positions).max() < 1e-9 * size_of(made)


@pytest.mark.parametrize("order", ["ZXY", "XYZ", "ZYX", "YXZ", "ZXZ"])
def test_euler(walk, order):
    made = rebuilt(walk, local_quaternions=None, euler=walk.euler(order), order=order)
    assert np.abs(made.positions - walk.positions).max() < 1e-9 * size_of(walk)


def test_six_numbers():
    q = RANDOM.normal(size=(500, 3, 4))
    q[0, 0], q[1, 0], q[2, 0], q[3, 0] = [1, 0, 0, 0], [0, 1, 0, 0], [0, 0, 1, 0], [0, 0, 0, 1]
    q /= np.linalg.norm(q, axis=-1, keepdims=True)
    six = zm.to_6d(q)
    assert six.shape == (500, 3, 6) and np.abs(np.linalg.norm(six[..., :3], axis=-1) - 1.0).max() < 1e-12
    assert np.abs(np.abs((zm.from_6d(six) * q).sum(-1)) - 1.0).max() < 1e-12
    bent = six * 3.0
    bent[..., 3:] += bent[..., :3]
    assert np.abs(np.abs((zm.from_6d(bent) * q).sum(-1)) - 1.0).max() < 1e-12
    for wrong in (np.zeros((2, 6)), np.ones((2, 6)), np.ones((2, 5)), 5.0):
        with pytest.raises(ValueError):
            zm.from_6d(wrong)
    with pytest.raises(ValueError):
        zm.to_6d(np.ones(3))


# The joints of a body model whose order goes over the body level by level.
LEVELS = ["pelvis", "left_hip", "right_hip", "spine", "left_knee", "right_knee", "neck", "left_foot", "right_foot"]
LEVEL_PARENTS = [-1, 0, 0, 0, 1, 2, 3, 4, 5]


def level_take(frames=7, **changes):
    arguments = {
        "offsets": RANDOM.normal(size=(9, 3)), "local_quaternions": RANDOM.normal(size=(frames, 9, 4)),
        "root_positions": RANDOM.normal(size=(frames, 3)), "fps": 30}
    return zm.Take.from_arrays(LEVELS, LEVEL_PARENTS, **{**arguments, **changes})


def test_the_order_of_the_joints_is_kept(tmp_path):
    take = level_take()
    assert take.names == LEVELS and take.parents.tolist() == LEVEL_PARENTS
    take.write(tmp_path / "take.bvh")
    again = zm.read(tmp_path / "take.bvh", warn=False)
    places = [again.names.index(name) for name in LEVELS]
    assert np.abs(again.positions[:, places] - take.positions).max() < 1e-8
    sampled = take.resample(60)
    assert sampled.names == LEVELS and np.abs(sampled.positions[::2] - take.positions).max() < 1e-12
    assert take[2:5].resample(60).names == LEVELS


def test_rotations_of_any_length():
    q = RANDOM.normal(size=(3, 9, 4))
    plain, long = (level_take(3, offsets=np.ones((9, 3)), root_positions=None, local_quaternions=scale * q)
                   for scale in (1.0, -1e6))
    assert np.abs(plain.positions - long.positions).max() < 1e-12
    assert (long.local_quaternions[0, :, 3] >= 0.0).all()


def test_places():
    take = level_take(root_positions=None)
    assert np.array_equal(take.local_positions, np.broadcast_to(take.offsets, (7, 9, 3)))
    places = RANDOM.normal(size=(7, 9, 3))
    take = level_take(root_positions=None, local_positions=places)
    assert np.abs(take.local_positions - places).max() < 1e-12


def test_several_roots(tmp_path):
    places = RANDOM.normal(size=(4, 2, 3))
    take = zm.Take.from_arrays(["a", "b", "b_End"], [-1, -1, 1], np.eye(3), np.tile([0, 0, 0, 1.0], (4, 3, 1)),
                               root_positions=places, fps=10)
    assert np.abs(take.positions[:, :2] - places).max() < 1e-12 and take.is_end.tolist() == [False, False, True]
    take.write(tmp_path / "take.bvh")


def test_names_and_facts():
    take = level_take(name="made", unit=0.01, up="z", is_end=[False] * 7 + [True] * 2)
    assert (take.name, take.unit, take.up, take.fps, take.facts.format) == ("made", 0.01, "z", 30.0, "arrays")
    assert take.frame_numbers.tolist() == [1, 2, 3, 4, 5, 6, 7] and take.is_end.sum() == 2 and take.findings == []
    names = ["take", "歩く", "a b", "take1", "take_", "a.b", "x.kine.local.posx", "\n", "Hand1", "Hand"]
    odd = zm.Take.from_arrays(names, range(-1, 9), np.ones((10, 3)), RANDOM.normal(size=(3, 10, 4)), fps=1)
    assert odd.names == odd.source_names == names and odd[::2].resample(2).names == names
    assert len(odd.positions) == 3 and np.isfinite(odd.positions).all()


NAMES, PARENTS = ["a", "b"], [-1, 0]
GOOD = {"names": NAMES, "parents": PARENTS, "offsets": np.zeros((2, 3)), "local_quaternions": np.ones((5, 2, 4)), "fps": 30}

WRONG = [
    ({"names": "ab"}, TypeError), ({"names": []}, ValueError), ({"names": ["a", "a"]}, ValueError),
    ({"names": ["a", ""]}, ValueError), ({"names": ["a", 5]}, TypeError), ({"names": ["a", "b\0"]}, ValueError),
    ({"names": ["a", "\ud800"]}, ValueError), ({"parents": [-1]}, ValueError), ({"parents": [0, -1]}, ValueError),
    ({"parents": [-1, 1]}, ValueError), ({"parents": [-1, 7]}, ValueError), ({"parents": [-2, 0]}, ValueError),
    ({"parents": [-1.0, 0.0]}, TypeError), ({"parents": None}, TypeError), ({"offsets": np.zeros((2, 4))}, ValueError),
    ({"offsets": [["x"] * 3] * 2}, TypeError), ({"offsets": np.full((2, 3), np.nan)}, ValueError),
    ({"offsets": [[1, 2, 3], [1]]}, TypeError), ({"offsets": None}, TypeError),
    ({"local_quaternions": np.ones((5, 3, 4))}, ValueError), ({"local_quaternions": np.ones((5, 2, 3))}, ValueError),
    ({"local_quaternions": np.zeros((5, 2, 4))}, ValueError), ({"local_quaternions": np.ones((0, 2, 4))}, ValueError),
    ({"local_quaternions": np.full((5, 2, 4), 1e300)}, ValueError), ({"local_quaternions": None}, TypeError),
    ({"euler": np.zeros((5, 2, 3))}, TypeError), ({"order": "XYZ"}, TypeError),
    ({"root_positions": np.zeros((4, 3))}, ValueError), ({"root_positions": np.zeros((5, 2))}, ValueError),
    ({"root_positions": np.full((5, 3), np.inf)}, ValueError), ({"local_positions": np.zeros((5, 3))}, ValueError),
    ({"fps": 0}, ValueError), ({"fps": "30"}, TypeError), ({"fps": None}, TypeError), ({"unit": -1}, ValueError),
    ({"up": "w"}, ValueError), ({"is_end": [True, False]}, ValueError), ({"is_end": [0, 1]}, TypeError),
    ({"is_end": [False]}, ValueError), ({"name": ""}, TypeError),
]


@pytest.mark.parametrize("changes, error", WRONG, ids=lambda each: str(each)[:30])
def test_wrong_arguments(changes, error):
    with pytest.raises(error) as caught:
        zm.Take.from_arrays(**{**GOOD, **changes})
    assert next(iter(changes)) in str(caught.value)


def test_wrong_angles():
    for changes, error in [({"order": None}, TypeError), ({"order": "XX"}, ValueError), ({"euler": np.zeros((5, 2, 4))}, ValueError)]:
        with pytest.raises(error, match=next(iter(changes))):
            zm.Take.from_arrays(**{**GOOD, "local_quaternions": None, "euler": np.zeros((5, 2, 3)), "order": "XYZ", **changes})
