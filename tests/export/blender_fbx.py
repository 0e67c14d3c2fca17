"""blender -b --python-exit-code 1 --python blender_fbx.py -- FOLDER: imports every .fbx file that fbx_cases.py wrote
into Blender with default settings. Joints, their parents, their positions and rotations at the keys, the base pose,
the body, the unit, the rate and the names must be as NAME.json says, and the importer must not complain."""

import contextlib
import glob
import hashlib
import io
import json
import os
import sys
import traceback

import bpy
import numpy

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from blender_fbx_again import check_again, remove_all  # noqa: E402

ROTATION_BOUND = 1e-4  # radians
NORMAL_LINES = {"FBX version: 7500"}
# From FBX, where y is up, to Blender, where z is up.
TO_BLENDER = numpy.array([[1, 0, 0, 0], [0, 0, -1, 0], [0, 1, 0, 0], [0, 0, 0, 1]])
AGAIN = {"sample-bvh-nulls-plain", "sample-acclaim-bones-plain", "sample-bvh-nulls-resample", "odd-spins-nulls",
         "odd-lengthless-bones"}


class Wrong(Exception):
    """What a reader found is not what was written."""


def require(condition, message):
    if not condition:
        raise Wrong(message)


def load(path):
    remove_all()
    printed = io.StringIO()
    with contextlib.redirect_stdout(printed), contextlib.redirect_stderr(printed):
        bpy.ops.import_scene.fbx(filepath=path)
    complaints = [line for line in printed.getvalue().splitlines() if line.strip() and line not in NORMAL_LINES]
    require(not complaints, f"the importer said {complaints}")


def name_in_blender(name):
    """Blender keeps 63 bytes. Of a longer name its importer keeps the beginning, and adds a check sum."""
    data = name.encode("utf-8")
    if len(data) <= 63:
        return name
    for length in range(55, 0, -1):
        cut = data[:length].decode("utf-8", "replace") + "_" + hashlib.sha1(data).hexdigest()[:7]
        if len(cut.encode("utf-8")) <= 63:
            return cut
    raise Wrong(f"no short name for {name}")


def rig_of(model):
    rig = bpy.data.objects.get(name_in_blender(model["name"]))
    require(rig is not None and rig.type == "ARMATURE", f"no armature {model['name']}: {list(bpy.data.objects.keys())}")
    return rig


def check_bones(rig, model):
    names = [name_in_blender(name) for name in model["joints"]]
    bones = rig.data.bones
    require(sorted(names) == sorted(bones.keys()), f"the bones are {sorted(bones.keys())}")
    for name, parent in zip(names, model["parents"]):
        above = bones[name].parent.name if bones[name].parent else None
        require(above == (names[parent] if parent >= 0 else None), f"the parent of {name} is {above}")
    return names


def separate_bones(rig):
    """Blender connects a bone that begins at the end of its parent, and then does not let it move away."""
    bpy.context.view_layer.objects.active = rig
    bpy.ops.object.mode_set(mode="EDIT")
    for bone in rig.data.edit_bones:
        bone.use_connect = False
    bpy.ops.object.mode_set(mode="OBJECT")


def to_file(matrices, scale):
    """Transforms of Blender's scene as they are in the file."""
    back = TO_BLENDER.T @ numpy.array(matrices, dtype=float)
    back[:, :3] /= scale
    return back


def distances(matrices, positions):
    return numpy.linalg.norm(matrices[:, :3, 3] - numpy.array(positions), axis=1)


def check_rest(rig, names, model, scale):
    heads = to_file([rig.matrix_world @ rig.data.bones[name].matrix_local for name in names], scale)
    away = distances(heads, model["rest"])
    worst = int(away.argmax())
    require(away[worst] <= model["bound"],
            f"{names[worst]} rests at {heads[worst, :3, 3]}, not at {model['rest'][worst]}")


def rotations_of(quaternions):
    x, y, z, w = numpy.array(quaternions).T
    rows = [[1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w)],
            [2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w)],
            [2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y)]]
    return numpy.moveaxis(numpy.array(rows), 2, 0)


def show(frame):
    whole = int(numpy.floor(frame))
    bpy.context.scene.frame_set(whole, subframe=frame - whole)


def frame_at(seconds):
    """The importer puts keys at a whole number of frames a second, and the first one at frame 1."""
    return float(numpy.float32(1.0 + seconds * bpy.context.scene.render.fps))


def check_moment(rig, names, moment, model, scale):
    """The greatest distance of a joint, as a part of the bound."""
    if model["motion"]:
        show(frame_at(moment["time"]))
    matrices = to_file([rig.matrix_world @ rig.pose.bones[name].matrix for name in names], scale)
    away = distances(matrices, moment["positions"])
    worst = int(away.argmax())
    require(away[worst] <= model["bound"],
            f"{names[worst]} at {moment['time']} s is {away[worst] / model['size']} of the size away")
    turned = numpy.abs(matrices[:, :3, :3] - rotations_of(moment["quaternions"])).max(axis=(1, 2))
    worst = int(turned.argmax())
    require(turned[worst] <= ROTATION_BOUND, f"{names[worst]} at {moment['time']} s is turned by {turned[worst]}")
    return away.max() / model["bound"]


def check_action(rig, model):
    action = rig.animation_data.action if rig.animation_data else None
    if action is None:
        return
    require(action.name.startswith((rig.name + "|" + model["motion"])[:60]), f"the action is called {action.name}")
    fps = bpy.context.scene.render.fps
    for curve in action.fcurves:
        if len(curve.keyframe_points) <= min(2, model["keys"] - 1):
            continue  # a joint that does not move, but is not as in the base pose
        require(len(curve.keyframe_points) == model["keys"], f"{curve.data_path} has {len(curve.keyframe_points)} keys")
        first, last = curve.keyframe_points[0].co[0], curve.keyframe_points[-1].co[0]
        require(abs(first - 1.0) < 1e-6, f"the first key is in frame {first}")
        late = abs((last - 1.0) / fps - model["seconds"])
        require(late <= 1e-6 * (1.0 / fps + model["seconds"]), f"the last key is in frame {last}")


def check_body(rig, names, model, scale):
    """Each vertex moves with its one joint. The scene is at the last moment."""
    bodies = [item for item in bpy.data.objects if item.type == "MESH" and item.parent == rig]
    require(len(bodies) == 1, f"{len(bodies)} bodies")
    (body,) = bodies
    groups = {group.index: group.name for group in body.vertex_groups}
    require(set(groups.values()) <= set(names), f"the groups of vertices are {sorted(groups.values())}")
    evaluated = body.evaluated_get(bpy.context.evaluated_depsgraph_get())
    for vertex, moved in zip(body.data.vertices, evaluated.data.vertices):
        require(len(vertex.groups) == 1 and vertex.groups[0].weight == 1.0, "a vertex has several joints")
        name = groups[vertex.groups[0].group]
        in_rig = rig.matrix_world.inverted() @ body.matrix_world @ vertex.co
        in_bone = rig.data.bones[name].matrix_local.inverted() @ in_rig
        expected = rig.matrix_world @ rig.pose.bones[name].matrix @ in_bone
        away = (body.matrix_world @ moved.co - expected).length / scale
        require(away <= 2.0 * model["bound"], f"a vertex of {name} is {away / model['size']} of the size away")


def check_rate(fps):
    render = bpy.context.scene.render
    if fps > 0.0:
        require(abs(render.fps / render.fps_base / fps - 1.0) < 1e-6, f"the rate is {render.fps / render.fps_base}")


def check_model(model, expected):
    rig = rig_of(model)
    scale = expected["unit"] or 0.01  # FBX counts in centimetres if nothing is said, Blender in metres
    found = rig.matrix_world.to_scale()
    require(abs(numpy.array(found) / scale - 1.0).max() < 1e-6, f"the scale is {found}")
    names = check_bones(rig, model)
    separate_bones(rig)
    if model["rest"]:
        check_rest(rig, names, model, scale)
    if model["motion"]:
        check_action(rig, model)
    worst = max(check_moment(rig, names, moment, model, scale) for moment in model["moments"])
    if expected["mesh"]:
        check_body(rig, names, model, scale)
    return worst


def check_file(path):
    with open(path[: -len(".fbx")] + ".json", encoding="utf-8") as file:
        expected = json.load(file)
    load(path)
    check_rate(expected["fps"])
    worst = max([check_model(model, expected) for model in expected["models"]], default=0.0)
    if os.path.basename(path)[: -len(".fbx")] in AGAIN:
        check_again(path, require)
    return worst


def main():
    folder = sys.argv[sys.argv.index("--") + 1]
    paths = sorted(glob.glob(folder + "/*.fbx"))
    worst, failed = 0.0, 0 if paths else 1
    bpy.ops.wm.read_factory_settings(use_empty=True)
    for path in paths:
        try:
            worst = max(worst, check_file(path))
        except Wrong as problem:
            failed += 1
            print(f"{os.path.basename(path)}: {problem}")
        except Exception:  # pylint: disable=broad-except
            failed += 1
            print(f"{os.path.basename(path)}: {traceback.format_exc()}")
    print(f"{len(paths)} files, {failed} wrong; the greatest distance is {worst:.3f} of what is allowed")
    sys.exit(1 if failed else 0)


main()
