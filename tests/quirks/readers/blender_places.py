"""Where Blender has the joints of a BVH file, as one line of JSON.

usage: blender --background --factory-startup --python blender_places.py -- FILE
       blender --background --factory-startup --python blender_places.py -- --version

Debian's Blender 3.4 opens BVH files with mode "rU", which its own Python no longer knows, so it could
import none at all. The letter is left out here, for this process alone.
"""

import builtins
import json
import sys

import bpy

plain_open = builtins.open


def open_without_letter(file, mode="r", *more, **named):
    return plain_open(file, mode.replace("U", "") or "r", *more, **named)


def places(path):
    for item in list(bpy.data.objects):
        bpy.data.objects.remove(item)
    # These axes leave the file's own coordinates as they are.
    bpy.ops.import_anim.bvh(filepath=path, axis_forward="Y", axis_up="Z", rotate_mode="NATIVE", frame_start=1)
    figure = next(item for item in bpy.data.objects if item.type == "ARMATURE")
    action = figure.animation_data.action if figure.animation_data else None
    last = int(action.frame_range[1]) if action and action.fcurves else 0
    bones = list(figure.pose.bones)
    frames = []
    for frame in range(1, last + 1):
        bpy.context.scene.frame_set(frame)
        world = figure.matrix_world
        frames.append([list(world @ bone.head) for bone in bones])
    return {"joints": [bone.name for bone in bones], "frames": frames}


def main():
    argument = sys.argv[sys.argv.index("--") + 1]
    builtins.open = open_without_letter
    if argument == "--version":
        answer = {"version": bpy.app.version_string}
    else:
        try:
            answer = places(argument)
        except Exception as problem:  # Blender would go on, and exit with 0
            answer = {"error": str(problem).strip().splitlines()[-1] if str(problem).strip() else repr(problem)}
    print("\nANSWER " + json.dumps(answer), flush=True)


main()
