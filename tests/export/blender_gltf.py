"""blender -b --python-exit-code 1 --python blender_gltf.py -- FOLDER: imports every .glb of the folder into Blender with
default settings. Every joint must be where the host has it, and no bone may be longer than the longest limb."""

import builtins
import contextlib
import glob
import io
import json
import os
import sys

import bpy
import numpy

BOUND = 1e-5  # as a fraction of the figure's size

# Blender 3.4 uses two things that Python 3.11 and NumPy 1.24 no longer have.
_open = builtins.open
builtins.open = lambda file, mode="r", *rest, **more: _open(file, mode.replace("U", ""), *rest, **more)
if not hasattr(numpy, "bool"):
    numpy.bool = bool


def load(path):
    bpy.ops.wm.read_factory_settings(use_empty=True)
    with contextlib.redirect_stdout(io.StringIO()):
        bpy.ops.import_scene.gltf(filepath=path)
    return {item.name: item for item in bpy.data.objects if item.type == "ARMATURE"}


def positions(rig, names):
    """The positions of the joints, with the y axis up as in glTF."""
    heads = [rig.matrix_world @ rig.pose.bones[name].head for name in names]
    return numpy.array([(head.x, head.z, -head.y) for head in heads])


def worst_distance(rig, model):
    scene = bpy.context.scene
    worst = 0.0
    for moment in model["moments"]:
        frame = moment["time"] * scene.render.fps / scene.render.fps_base if model["secondsPerFrame"] > 0 else 0.0
        scene.frame_set(int(frame), subframe=frame - int(frame))
        away = numpy.linalg.norm(positions(rig, model["joints"]) - numpy.array(moment["positions"]), axis=1)
        worst = max(worst, away.max())
    return worst


def longest_limb(model):
    """The greatest distance between two joints that follow each other; no bone needs to be longer."""
    rest = numpy.array(model["moments"][0]["positions"])
    return max(numpy.linalg.norm(rest[1:] - rest[:-1], axis=1).max(), 1e-9)


def main():
    folder = sys.argv[sys.argv.index("--") + 1]
    samples = sorted(glob.glob(folder + "/*.glb"))
    assert samples, f"no .glb in {folder}"
    failed = False
    for path in samples:
        with open(path[: -len(".glb")] + ".json", encoding="utf-8") as file:
            models = json.load(file)
        rigs = list(load(path).values())
        if len(models) > 1 or len(rigs) != 1:
            continue  # Blender may rename what several models have in common
        (model,), (rig,) = models, rigs
        worst = worst_distance(rig, model) / model["height"]
        longest = max(bone.length for bone in rig.data.bones) * rig.matrix_world.median_scale
        bad = not worst <= BOUND or longest > 1.001 * longest_limb(model)
        print(f"{os.path.basename(path)}: {worst:.1e} of the height; longest bone {longest:.4g}{' BAD' if bad else ''}")
        failed |= bad
    sys.exit(1 if failed else 0)


main()
