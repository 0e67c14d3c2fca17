"""blender --python blender_bones.py -- FILE.glb FRAME OUT.png: imports the file into Blender as a user does, with the
importer's default settings, and takes a picture of the skeleton as Blender draws it.

It also prints how far each joint is from where its node should be, and the length of the longest bone. It needs a
display, because Blender draws bones only in a window; Xvfb is enough."""

import builtins
import json
import struct
import sys

import bpy
import mathutils
import numpy

# Blender 3.4 uses two things that Python 3.11 and NumPy 1.24 no longer have.
_open = builtins.open
builtins.open = lambda file, mode="r", *rest, **more: _open(file, mode.replace("U", ""), *rest, **more)
if not hasattr(numpy, "bool"):
    numpy.bool = bool


def load(path):
    bpy.ops.wm.read_factory_settings(use_empty=True)
    with bpy.context.temp_override(window=bpy.context.window_manager.windows[0]):
        bpy.ops.import_scene.gltf(filepath=path)
    return [item for item in bpy.data.objects if item.type == "ARMATURE"]


def bounds(armatures, frame):
    bpy.context.scene.frame_set(frame)
    points = [rig.matrix_world @ end for rig in armatures for bone in rig.pose.bones for end in (bone.head, bone.tail)]
    low = mathutils.Vector(min(point[axis] for point in points) for axis in range(3))
    high = mathutils.Vector(max(point[axis] for point in points) for axis in range(3))
    return low, high


def picture(armatures, frame, out):
    low, high = bounds(armatures, frame)
    middle, size = (low + high) / 2, max((high - low).length, 1e-3)
    camera = bpy.data.objects.new("Camera", bpy.data.cameras.new("Camera"))
    bpy.context.collection.objects.link(camera)
    camera.data.type, camera.data.ortho_scale = "ORTHO", 1.05 * size
    camera.data.clip_end = 10 * size
    camera.location = middle + mathutils.Vector((0.7, -1.0, 0.25)) * 3 * size
    camera.rotation_euler = (middle - camera.location).to_track_quat("-Z", "Y").to_euler()
    scene = bpy.context.scene
    scene.camera = camera
    scene.render.resolution_x = scene.render.resolution_y = 700
    scene.render.filepath = out
    for rig in armatures:
        rig.show_in_front = True
        rig.data.display_type = "OCTAHEDRAL"
    for item in bpy.data.objects:
        item.hide_set(item.type == "MESH")
    for area in bpy.context.window_manager.windows[0].screen.areas:
        if area.type == "VIEW_3D":
            area.spaces[0].region_3d.view_perspective = "CAMERA"
            area.spaces[0].overlay.show_floor = True
            with bpy.context.temp_override(window=bpy.context.window_manager.windows[0], area=area):
                bpy.ops.render.opengl(write_still=True, view_context=True)


def report(armatures):
    longest = max((bone.length * rig.matrix_world.median_scale, bone.name) for rig in armatures for bone in rig.data.bones)
    missed = []
    for rig in armatures:
        for bone in rig.data.bones:
            distances = [(child.head_local - bone.tail_local).length for child in bone.children]
            if distances:
                missed.append((min(distances), bone.name))
    print(json.dumps({"longest_bone": longest, "worst_tail": max(missed, default=None)}))


def main():
    path, frame, out = sys.argv[sys.argv.index("--") + 1:]
    try:
        armatures = load(path)
        report(armatures)
        picture(armatures, int(frame), out)
    finally:
        bpy.ops.wm.quit_blender()


bpy.app.timers.register(main, first_interval=0.5)
