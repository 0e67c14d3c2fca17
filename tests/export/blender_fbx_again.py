"""Exports the scene that Blender imported with Blender's own FBX exporter, imports that file, and compares both."""

import contextlib
import io
import os
import tempfile

import bpy
import numpy

BOUND = 1e-4  # of the figure's size
MOMENTS = 12


def remove_all():
    """Empties the scene. To load an empty one would take longer."""
    data = bpy.data
    kinds = (data.objects, data.armatures, data.meshes, data.actions, data.materials)
    data.batch_remove([item for kind in kinds for item in kind])


def rigs():
    return {item.name: item for item in bpy.data.objects if item.type == "ARMATURE"}


def positions(rig, frames):
    """Where the bones begin in the scene: frame, bone, coordinate."""
    names = sorted(rig.data.bones.keys())
    found = []
    for frame in frames:
        bpy.context.scene.frame_set(frame)
        found.append([(rig.matrix_world @ rig.pose.bones[name].matrix).translation[:] for name in names])
    return numpy.array(found)


def last_frame():
    return max([int(round(action.frame_range[1])) for action in bpy.data.actions], default=1)


def export(path):
    scene = bpy.context.scene
    scene.frame_start, scene.frame_end = 1, max(last_frame(), 2)
    with contextlib.redirect_stdout(io.StringIO()):
        bpy.ops.export_scene.fbx(filepath=path, add_leaf_bones=False, bake_anim=True, bake_anim_use_nla_strips=False,
                                 bake_anim_use_all_actions=False, bake_anim_step=1.0, bake_anim_simplify_factor=0.0)


def check_again(path, require):
    last = last_frame()
    frames = sorted({int(frame) for frame in numpy.linspace(1, last, min(MOMENTS, last))})
    before = {name: positions(rig, frames) for name, rig in rigs().items()}
    require(before, "there is no armature to export")
    with tempfile.TemporaryDirectory() as folder:
        copy = os.path.join(folder, os.path.basename(path))
        export(copy)
        remove_all()
        with contextlib.redirect_stdout(io.StringIO()):
            # The exporter gives frame 1 the time 1 / rate, not 0.
            bpy.ops.import_scene.fbx(filepath=copy, anim_offset=0.0)
    require(sorted(rigs()) == sorted(before), f"after Blender's own export the armatures are {sorted(rigs())}")
    for name, rig in rigs().items():
        expected, found = before[name], positions(rig, frames)
        require(expected.shape == found.shape, f"after Blender's own export {name} has {found.shape[1]} bones")
        size = numpy.linalg.norm(expected[0].max(axis=0) - expected[0].min(axis=0))
        away = numpy.abs(expected - found).max()
        require(away <= BOUND * size, f"after Blender's own export a bone of {name} is {away / size} of the size away")
