"""fbx_cases.py ZKHOST OUT_DIR EXAMPLES QUIRKS: writes NAME.fbx for each sample with each option and for each quirk that
can be imported, as nulls and as bones, and NAME.json with what a reader must find in it. The .npz of the same run
says where the joints are; the .json of the same run says what the models and motions are called."""

import concurrent.futures
import csv
import json
import os
import shutil
import subprocess
import sys

import fbx_odd_files
import numpy
from fbx_rest_pose import rest_positions

MOMENTS = 20
PART_OF_SIZE = 1e-5
PART_OF_REACH = 1e-6  # the readers keep coordinates in 32-bit numbers
KINDS = {"nulls": [], "bones": ["--bones"]}
# Of most samples only some frames are written, because Blender reads slowly.
SHORT = ["--frames", "20:60"]
OPTIONS = {
    "plain": [],
    "frames": SHORT,
    "one-frame": ["--frames", "7:7"],
    "up-z": ["--up", "z"],
    "up-x": ["--up", "x", *SHORT],
    "scale": ["--scale", "0.01", *SHORT],
    "odd-rate": ["--fps", "119.88", *SHORT],
    "slow": ["--fps", "0.3", *SHORT],
    "resample": ["--resample", "24"],
    "resample-odd": ["--up", "z", "--scale", "0.0254", "--resample", "29.97", *SHORT],
    "all-nodes": ["--all-nodes", *SHORT],
    "all-nodes-up-z": ["--all-nodes", "--up", "z", "--scale", "0.01", *SHORT],
    "in-place": ["--in-place", *SHORT],
    "no-mesh": ["--no-mesh", *SHORT],
    "no-compress": ["--no-compress", "--scale", "0.01"],
}
BONES_OPTIONS = {"apart": ["--bones", "--no-chain-from-parent"], "effector": ["--bones", "--effector-to-last-bone"]}


class Case:
    """`build` are options of the import, `changes` are those of outputs."""

    def __init__(self, name, files, build, changes=()):
        self.name = name
        self.files = files
        self.build = list(build)
        self.changes = list(changes)


def sample_cases(examples):
    samples = {"bvh": ["walk.bvh"], "acclaim": ["walk.asf", "walk.amc"], "skeleton": ["walk.asf"]}
    for sample, files in samples.items():
        paths = [os.path.join(examples, file) for file in files]
        for kind, build in KINDS.items():
            for name, options in OPTIONS.items():
                if sample != "skeleton" or name in ("plain", "up-z", "all-nodes"):
                    yield Case(f"sample-{sample}-{kind}-{name}", paths, build, options)
        for name, options in BONES_OPTIONS.items():
            yield Case(f"sample-{sample}-bones-{name}", paths, options, [] if sample == "skeleton" else SHORT)


def odd_cases(folder):
    for path in fbx_odd_files.write_files(folder):
        name = os.path.splitext(os.path.basename(path))[0]
        for kind, build in KINDS.items():
            yield Case(f"odd-{name}-{kind}", [path], build)
        yield Case(f"odd-{name}-up-z", [path], [], ["--up", "z", "--scale", "0.01"])


def quirk_cases(quirks):
    with open(os.path.join(quirks, "table.json"), encoding="utf-8") as file:
        rows = json.load(file)
    for row in rows:
        if row["outcome"] == "refused":
            continue
        files = [os.path.join(quirks, file) for file in row["files"]]
        format_name = row["files"][0].split("/")[0]
        for kind, build in KINDS.items():
            yield Case(f"quirk-{format_name}-{row['name']}-{kind}", files, row.get("options", []) + build)


def run_import(zkhost, case, outputs):
    """Whether the import wrote the outputs. A scene with numbers that are not finite has none (status 3)."""
    command = [zkhost, "import", *case.files, *case.build, *case.changes, "--quiet"]
    for output in outputs:
        command += ["-o", output]
    done = subprocess.run(command, capture_output=True, check=False, stdin=subprocess.DEVNULL)
    assert done.returncode in (0, 3, 5), (command, done)
    return done.returncode != 3


def key_numbers(case, model, frames_of_rows):
    """The numbers of the frames in which the motion of a model has keys."""
    items = [item for action in model["actions"][1:] for item in action["items"]]
    numbers = {int(time) for item in items for time in item.get("times", [])}
    if "--resample" in case.changes or not numbers:
        return frames_of_rows
    kept = [number for number in sorted(numbers) if frames_of_rows[0] <= number <= frames_of_rows[-1]]
    return kept or frames_of_rows


def moments_of(arrays, numbers, columns):
    """Up to twenty keys, with times in seconds from the first one."""
    rows = numpy.searchsorted(arrays["frame_numbers"], numbers)
    count = min(MOMENTS, len(rows))
    chosen = rows[numpy.linspace(0, len(rows) - 1, count).round().astype(int)]
    return [{"time": float(arrays["times"][row] - arrays["times"][rows[0]]),
             "positions": arrays["positions"][row, columns].tolist(),
             "quaternions": arrays["quaternions"][row, columns].tolist()} for row in chosen]


def size_of(rest, moments):
    """The diagonal of the box around the base pose and, so that it is not 0, a length that the motion has."""
    for positions in [rest] + [numpy.array(moment["positions"]) for moment in moments]:
        diagonal = float(numpy.linalg.norm(positions.max(axis=0) - positions.min(axis=0)))
        if diagonal > 0.0:
            return diagonal
    return 1.0


def expected_model(case, model, arrays, rows, columns, prefix, scene):
    names = [str(arrays["names"][column])[len(prefix):] for column in columns]
    parents = [max(int(arrays["parents"][column]) - columns[0], -1) for column in columns]
    up = case.changes[case.changes.index("--up") + 1] if "--up" in case.changes else "y"
    rest = rest_positions(scene, model["name"], names, parents, arrays["offsets"][columns], up)
    # A scene of bones numbers equal names in another order, so that a name does not lead to the object of its joint.
    sources = [str(arrays["source_names"][column]) for column in columns if not arrays["is_end"][column]]
    is_sure = "--bones" not in case.build or "--all-nodes" in case.changes or len(set(sources)) == len(sources)
    has_motion = len(model["actions"]) > 1 and float(arrays["fps"]) > 0.0
    numbers = key_numbers(case, model, rows) if has_motion else rows[:1]
    moments = moments_of(arrays, numbers, columns)
    size = size_of(rest, moments)
    reach = max(numpy.abs(moment["positions"]).max() for moment in moments)
    first, last = numpy.searchsorted(arrays["frame_numbers"], [numbers[0], numbers[-1]])
    bound = PART_OF_SIZE * size + PART_OF_REACH * float(reach)
    return {"name": model["name"], "motion": model["actions"][1]["name"] if has_motion else None, "joints": names,
            "parents": parents, "rest": rest.tolist() if is_sure else None, "size": size, "bound": bound,
            "keys": len(numbers), "seconds": float(arrays["times"][last] - arrays["times"][first]), "moments": moments}


def columns_by_model(models, names):
    """The model, the columns of its joints, and what the names of these joints begin with, for each model."""
    if len(models) == 1:
        return [(models[0], list(range(len(names))), "")]
    groups = {model["name"]: [] for model in models}
    owners = sorted(groups, key=len, reverse=True)
    for column, name in enumerate(names):
        groups[next(owner for owner in owners if str(name).startswith(owner + "."))].append(column)
    return [(model, groups[model["name"]], model["name"] + ".") for model in models]


def read_outputs(stem):
    with numpy.load(stem + ".npz", allow_pickle=False) as data:
        arrays = {name: data[name] for name in data.files}
    with open(stem + ".scene.json", encoding="utf-8") as file:
        scene = json.load(file)["scene"]
    with open(stem + ".csv", newline="", encoding="utf-8") as file:
        rows = [int(line[0]) for line in list(csv.reader(file))[1:]]
    return arrays, scene, rows


def content_of(case, expected):
    """What two files have in common if they only differ in the names of models, which are those of their sources."""
    models = [{**model, "name": "", "motion": model["motion"] and ""} for model in expected["models"]]
    return json.dumps([case.build, case.changes, {**expected, "models": models}], sort_keys=True)


def write_case(zkhost, folder, case):
    """What the file of the case contains, or None if there is no file."""
    work, stem = os.path.join(folder, "work", case.name), os.path.join(folder, case.name)
    if not run_import(zkhost, case, [stem + ".fbx", work + ".npz", work + ".csv", work + ".scene.json"]):
        return None
    arrays, scene, rows = read_outputs(work)
    models = [item for item in scene if item["type"] == "Model"]
    expected = {
        "fps": float(arrays["fps"]), "unit": float(arrays["unit"]), "mesh": "--no-mesh" not in case.changes,
        "models": [expected_model(case, model, arrays, rows, columns, prefix, scene)
                   for model, columns, prefix in columns_by_model(models, arrays["names"]) if columns]}
    with open(stem + ".json", "w", encoding="utf-8") as file:
        json.dump(expected, file)
    return content_of(case, expected)


def remove_copies(folder, cases, contents):
    """Removes the files whose content an earlier file has. Returns how many are left."""
    known = set()
    for case, content in zip(cases, contents):
        if content in known:
            for extension in (".fbx", ".json"):
                os.remove(os.path.join(folder, case.name + extension))
        elif content is not None:
            known.add(content)
    return len(known)


def main():
    zkhost, folder, examples, quirks, *wanted = sys.argv[1:]
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(os.path.join(folder, "work"))
    cases = [*sample_cases(examples), *odd_cases(os.path.join(folder, "work")), *quirk_cases(quirks)]
    cases = [case for case in cases if not wanted or any(part in case.name for part in wanted)]
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        contents = list(pool.map(lambda case: write_case(zkhost, folder, case), cases))
    shutil.rmtree(os.path.join(folder, "work"))
    missing = [case.name for case, content in zip(cases, contents) if content is None]
    print(f"{len(cases)} cases, {remove_copies(folder, cases, contents)} different files; no file: {missing}")
    return 0


sys.exit(main())
