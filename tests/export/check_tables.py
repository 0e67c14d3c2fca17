"""check_tables.py FOLDER: reads every table in the folder with numpy and the csv module, and checks
that every joint is at the same position as in the host."""

import csv
import glob
import json
import re
import sys

import numpy

BOUND = 1e-6  # as a fraction of the skeleton's height; tables hold more digits than glTF


def expected_rows(models):
    """The positions of all models by row number, for the rows that are known of every model; and the
    number of rows."""
    tables = [{moment["row"]: moment["positions"] for moment in model["moments"]} for model in models]
    longest = max(model["frames"] for model in models)
    for table, model in zip(tables, models):
        for row in range(model["frames"], longest):  # after its end a motion keeps its last row
            table[row] = table[model["frames"] - 1]
    shared = set.intersection(*(set(table) for table in tables))
    return {row: numpy.array(sum((table[row] for table in tables), [])) for row in shared}, longest


def rotated(quaternions, vectors):
    """The vectors turned by unit quaternions with w last."""
    axis, w = quaternions[..., :3], quaternions[..., 3:]
    twice = 2.0 * numpy.cross(axis, vectors)
    return vectors + w * twice + numpy.cross(axis, twice)


def check_locals(data, positions, quaternions):
    """Composes the local poses and returns the greatest distance from the global ones."""
    local_positions, local_quaternions = data["local_positions"], data["local_quaternions"]
    worst = 0.0
    for joint, parent in enumerate(data["parents"]):
        if parent < 0:
            expected = local_positions[:, joint]
            turned = local_quaternions[:, joint]
        else:
            expected = positions[:, parent] + rotated(quaternions[:, parent], local_positions[:, joint])
            turned = product(quaternions[:, parent], local_quaternions[:, joint])
        worst = max(worst, numpy.abs(positions[:, joint] - expected).max())
        same = numpy.abs((turned * quaternions[:, joint]).sum(axis=1))
        assert (same > 1.0 - 1e-12).all()
    return worst


def product(a, b):
    """The quaternions of the rotations a times b for column vectors: b acts first."""
    (ax, ay, az, aw), (bx, by, bz, bw) = numpy.moveaxis(a, -1, 0), numpy.moveaxis(b, -1, 0)
    return numpy.stack([aw * bx + ax * bw + ay * bz - az * by, aw * by - ax * bz + ay * bw + az * bx,
                        aw * bz + ax * by - ay * bx + az * bw, aw * bw - ax * bx - ay * by - az * bz], -1)


def check_skeleton(data, models, joints):
    assert data["parents"].dtype == numpy.int32 and data["is_end"].dtype == bool
    assert len(set(data["names"])) == len(joints) == len(data["source_names"]) == len(data["is_end"])
    assert not any(data["is_end"][parent] for parent in data["parents"] if parent >= 0)
    assert data["unit"].shape == data["up"].shape == data["fps"].shape == ()
    assert str(data["up"]) in "xyz" and json.loads(str(data["findings"])) == []
    assert json.loads(str(data["provenance"]))["tool"] == "write_samples"
    assert data["frame_numbers"].dtype == numpy.int64
    assert (numpy.diff(data["frame_numbers"]) == 1).all()
    assert len(data["times"]) == len(data["frame_numbers"]) == len(data["positions"])
    if models[0]["secondsPerFrame"] > 0:
        assert numpy.allclose(numpy.diff(data["times"]), models[0]["secondsPerFrame"], rtol=1e-9)


def check_npz(path, models, height):
    data = dict(numpy.load(path, allow_pickle=False))
    positions, quaternions = data["positions"], data["quaternions"]
    offsets, parents, names, fps = data["offsets"], data["parents"], data["names"], data["fps"]
    rows, longest = expected_rows(models)
    joints = [name for model in models for name in model["joints"]]
    frames = longest if models[0]["secondsPerFrame"] > 0 else 1
    assert positions.dtype == quaternions.dtype == offsets.dtype == fps.dtype == numpy.float64
    assert positions.shape == (frames, len(joints), 3)
    assert quaternions.shape == (frames, len(joints), 4)
    assert offsets.shape == (len(joints), 3) and parents.shape == (len(joints),)
    assert [str(name).split(".", 1)[-1] if len(models) > 1 else str(name) for name in names] == joints
    seconds = models[0]["secondsPerFrame"]
    assert abs(fps * seconds - 1.0) < 1e-9 if seconds > 0 else fps == 0
    worst = max(numpy.abs(positions[row] - expected).max() for row, expected in rows.items())
    check_skeleton(data, models, joints)
    worst = max(worst, check_locals(data, positions, quaternions))
    assert (quaternions[0, :, 3] >= 0).all() and (data["local_quaternions"][0, :, 3] >= 0).all()
    # Parents come before their children.
    assert all(-1 <= parent < joint for joint, parent in enumerate(parents))
    assert numpy.allclose(numpy.linalg.norm(quaternions, axis=2), 1.0, atol=1e-12)
    assert ((quaternions[1:] * quaternions[:-1]).sum(axis=2) >= 0).all()
    if "walk" in path:  # no joint moves in its parent, so the offsets must give the positions
        children = numpy.flatnonzero(parents >= 0)
        above = parents[children]
        predicted = positions[:, above] + rotated(quaternions[:, above], offsets[children])
        worst = max(worst, numpy.abs(positions[:, children] - predicted).max())
    return worst / height


def check_csv(path, models, height):
    with open(path, newline="", encoding="utf-8") as file:
        header, *lines = list(csv.reader(file))
    rows, longest = expected_rows(models)
    joints = [name for model in models for name in model["joints"]]
    assert header[:2] == ["frame", "seconds"] and len(header) == 2 + 6 * len(joints)
    names = [column[: -len("_px")] for column in header[2::6]]
    assert len(set(names)) == len(joints) and all(column.endswith("_px") for column in header[2::6])
    assert not re.search("[^A-Za-z0-9_]", "".join(header[2:]))
    plain = [re.sub("[^A-Za-z0-9_]", "_", name) for name in joints]
    assert all(re.search(name + "(_[0-9]+)?$", column) for name, column in zip(plain, names))
    assert numpy.genfromtxt(path, delimiter=",", names=True).dtype.names == tuple(header)
    table = numpy.array(lines, dtype=float)
    assert len(table) == (longest if models[0]["secondsPerFrame"] > 0 else 1)
    times = {moment["row"]: moment["time"] for moment in models[0]["moments"]}
    assert all(abs(table[row, 1] - time) < 1e-8 for row, time in times.items())
    positions = table[:, 2:].reshape(len(table), len(joints), 6)[:, :, :3]
    return max(numpy.abs(positions[row] - expected).max() for row, expected in rows.items()) / height


def main():
    failed = False
    samples = sorted(glob.glob(sys.argv[1] + "/*.json"))
    if not samples:
        sys.exit(f"no file *.json in {sys.argv[1]}")
    for sample in samples:
        with open(sample, encoding="utf-8") as file:
            models = json.load(file)
        height = min(model["height"] for model in models)
        for extension, check in ((".npz", check_npz), (".csv", check_csv)):
            path = sample[: -len(".json")] + extension
            worst = check(path, models, height)
            print(f"{path.rsplit('/', 1)[-1]}: {worst:.2e} of the height")
            failed |= not worst <= BOUND
    return 1 if failed else 0


sys.exit(main())
