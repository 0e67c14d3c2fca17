"""Computes the joints' positions in every frame of a capture file by the rules of its format alone.

This is an independent forward kinematics (a "walk") for the tests. It reads files that follow the format,
and some with harmless deviations, and shares no code with the program under test.

Conventions: column vectors, right-handed rotations, global(child) = global(parent) * T(offset) * R.
  BVH  R is the product of the listed rotations from left to right. A position channel replaces its
       component of the OFFSET.
  ASF  A bone's local rotation is C * M * C^-1. C comes from its axis line and M from its values; in
       both the rotation that is listed first acts first. A joint is at the end of its parent's bone.
"""

import dataclasses
import re

import numpy

AXES = {"x": 0, "y": 1, "z": 2}
ARCHIVE_UNIT = 0.45        # the length factor that the files of a well-known archive state
ARCHIVE_FACTOR = 0.056444  # metres in one of its lengths: an inch divided by 0.45
ARCHIVE_RATE = 120.0


@dataclasses.dataclass
class Walk:
    """One figure: `positions` is (frames, joints, 3) in the figure's own unit."""
    names: list
    parents: list
    is_end: list
    positions: numpy.ndarray
    rest: numpy.ndarray             # of the rest pose: (joints, 3)
    frame_numbers: numpy.ndarray    # whole numbers, as in the file
    seconds: float                  # between two frame numbers; 0 if not stated
    loose: set = dataclasses.field(default_factory=set)  # names of bones that the hierarchy does not attach

    def size(self):
        """The diagonal of the box around the rest pose; if that is 0, of the box around the first frame; else 1."""
        for pose in [self.rest, *self.positions[:1]]:
            diagonal = float(numpy.linalg.norm(pose.max(axis=0) - pose.min(axis=0)))
            if diagonal > 1e-9:
                return diagonal
        return 1.0


def turn(axis, degrees):
    """Rotation matrices, (n, 3, 3), for n angles in degrees about axis 0, 1 or 2."""
    radians = numpy.radians(numpy.asarray(degrees, dtype=float))
    cos, sin = numpy.cos(radians), numpy.sin(radians)
    result = numpy.zeros((len(radians), 3, 3))
    b, c = (axis + 1) % 3, (axis + 2) % 3
    result[:, axis, axis] = 1.0
    result[:, b, b], result[:, c, c] = cos, cos
    result[:, c, b], result[:, b, c] = sin, -sin
    return result


def text_of(path):
    with open(path, "rb") as file:
        return file.read().decode("utf-8", "replace")


# ---- BVH


@dataclasses.dataclass
class BvhJoint:
    name: str
    parent: int
    is_end: bool
    offset: list = dataclasses.field(default_factory=lambda: [0.0, 0.0, 0.0])
    channels: list = dataclasses.field(default_factory=list)  # ("position" | "rotation", axis, column)


def bvh_hierarchy(lines, start):
    """Reads joints from lines[start] on. Returns them and the index of the line with MOTION."""
    joints, open_joints, column = [], [], 0
    for index in range(start, len(lines)):
        words = lines[index].split()
        key = words[0].lower() if words else ""
        if key == "motion":
            return joints, index
        if key in ("root", "joint", "end"):
            parent = open_joints[-1] if open_joints else -1
            end = key == "end"
            name = joints[parent].name + "_End" if end else lines[index].strip()[len(key):].strip()
            joints.append(BvhJoint(name, parent, end))
        elif key == "{":
            open_joints.append(len(joints) - 1)
        elif key == "}":
            open_joints.pop()
        elif key == "offset":
            joints[-1].offset = [float(word) for word in words[1:4]]
        elif key == "channels":
            for word in words[2:]:
                kind = word.lower()[1:]
                assert kind in ("position", "rotation") and word[0].lower() in AXES, word
                joints[-1].channels.append((kind, AXES[word[0].lower()], column))
                column += 1
        elif key and not key.startswith(("#", "//")):
            raise ValueError(f"line {index + 1}: {lines[index]!r}")
    return joints, len(lines)


def bvh_pose(joints, rows, relative=False, at_rest=False):
    """The positions, (frames, joints, 3), for an array of rows. `relative` adds positions to offsets."""
    frames = len(rows)
    places, turns = [], []
    for joint in joints:
        local = numpy.tile(numpy.array(joint.offset), (frames, 1))
        rotation = numpy.tile(numpy.eye(3), (frames, 1, 1))
        for kind, axis, column in ([] if at_rest else joint.channels):
            if kind == "position":
                local[:, axis] = rows[:, column] + (joint.offset[axis] if relative else 0.0)
            else:
                rotation = rotation @ turn(axis, rows[:, column])
        if joint.parent >= 0:
            above = turns[joint.parent]
            local = places[joint.parent] + numpy.einsum("fij,fj->fi", above, local)
            rotation = above @ rotation
        places.append(local)
        turns.append(rotation)
    return numpy.stack(places, axis=1)


def walk_bvh(path, relative=False):
    """A list of walks, one for each section of the file."""
    lines = re.split("\r\n|\r|\n", text_of(path))
    walks, index = [], 0
    while True:
        while index < len(lines) and lines[index].strip().upper() != "HIERARCHY":
            index += 1
        if index == len(lines):
            return walks
        joints, index = bvh_hierarchy(lines, index + 1)
        columns = sum(len(joint.channels) for joint in joints)
        seconds, values = 0.0, []
        for index in range(index + 1, len(lines) + 1):
            words = lines[index].split() if index < len(lines) else ["HIERARCHY"]
            if words and words[0].upper() == "HIERARCHY":
                break
            if words[:2] == ["Frame", "Time:"]:
                seconds = float(words[2])
            elif words and words[0] != "Frames:":
                values += [float(word) for word in words]
        rows = numpy.array(values).reshape(-1, columns) if columns else numpy.zeros((0, 0))
        walks.append(Walk([joint.name for joint in joints], [joint.parent for joint in joints],
                          [joint.is_end for joint in joints], bvh_pose(joints, rows, relative),
                          bvh_pose(joints, numpy.zeros((1, columns)), at_rest=True)[0],
                          numpy.arange(1, len(rows) + 1), seconds))


# ---- ASF and AMC


@dataclasses.dataclass
class Bone:
    name: str = "root"
    direction: list = dataclasses.field(default_factory=lambda: [0.0, 0.0, 0.0])
    length: float = 0.0
    axis: list = dataclasses.field(default_factory=lambda: [0.0, 0.0, 0.0])
    order: str = "XYZ"
    dof: list = dataclasses.field(default_factory=list)
    parent: str = ""


def numbers(words):
    return [float(word) for word in words]


def asf_lines(text):
    for line in re.split("\r\n|\r|\n", text):
        words = re.sub("[(),]", " ", line).split()
        cut = next((at for at, word in enumerate(words) if word.startswith("#")), len(words))
        yield words[:cut]


def read_asf(path):
    """Returns the bones by lower-case name, the root first; the length factor; whether angles are in degrees; and the
    root's position."""
    root, bone, section = Bone(), None, ""
    bones, unit, degrees, place, pairs = {"root": root}, 1.0, True, [0.0, 0.0, 0.0], []
    for words in asf_lines(text_of(path)):
        if not words:
            continue
        key = words[0].lower()
        if key.startswith(":"):
            section = key
        elif section == ":units" and key == "length":
            unit = float(words[1])
        elif section == ":units" and key == "angle":
            degrees = words[1].lower() == "deg"
        elif section == ":root" and key == "order":
            root.dof = [word.lower() for word in words[1:]]
        elif section == ":root" and key == "axis":
            root.order = words[1].upper()
        elif section == ":root" and key == "position":
            place = numbers(words[1:4])
        elif section == ":root" and key == "orientation":
            root.axis = numbers(words[1:4])
        elif section == ":bonedata":
            bone = bone_line(bones, bone, key, words)
        elif section == ":hierarchy" and key not in ("begin", "end"):
            pairs += [(key, child.lower()) for child in words[1:]]
    for parent, child in pairs:
        bones[child].parent = parent
    return bones, unit, degrees, place


def bone_line(bones, bone, key, words):
    """Applies one line of :bonedata to `bone`. Returns the bone that the next line is about."""
    if key == "begin":
        return Bone()
    if key == "name":
        bone.name = words[1]
        bones[words[1].lower()] = bone
    elif key == "direction":
        bone.direction = numbers(words[1:4])
    elif key == "length":
        bone.length = float(words[1])
    elif key == "axis":
        bone.axis, bone.order = numbers(words[1:4]), words[4].upper()
    elif key == "dof":
        bone.dof = [word.lower() for word in words[1:]]
    return bone


def read_amc(path):
    """Returns the frame numbers; for each frame, the values by lower-case bone name; the rate, or 0; and whether
    angles are in degrees, or None if that is not stated."""
    moments, frames, rate, degrees = [], [], 0.0, None
    for words in asf_lines(text_of(path)):
        if not words:
            continue
        key = words[0].lower()
        if key.startswith(":samples-per-second"):
            rate = float(words[1])
        elif key in (":degrees", ":radians"):
            degrees = key == ":degrees"
        elif not key.startswith(":") and len(words) == 1 and re.fullmatch(r"[-+]?\d+", key):
            moments.append(int(key))
            frames.append({})
        elif not key.startswith(":"):
            frames[-1][key] = numbers(words[1:])
    return moments, frames, rate, degrees


def bone_axes(bone, degrees):
    scale = 1.0 if degrees else 180.0 / numpy.pi
    result = numpy.eye(3)
    for letter, angle in zip(bone.order.lower(), bone.axis):
        result = turn(AXES[letter], [angle * scale])[0] @ result
    return result


def bone_motion(bone, frames, degrees, factor):
    """Returns translations (or None), rotations about the bone's own axes, and lengths (or None)."""
    scale = 1.0 if degrees else 180.0 / numpy.pi
    count = len(frames)
    moved, turns, lengths = None, numpy.tile(numpy.eye(3), (count, 1, 1)), None
    rows = [frame.get(bone.name.lower()) for frame in frames]
    if not frames or all(row is None for row in rows):
        return moved, turns, lengths
    table = numpy.array([row[: len(bone.dof)] for row in rows]).reshape(count, len(bone.dof))
    for column, letter in enumerate(bone.dof):
        values = table[:, column]
        if letter.startswith("r"):
            turns = turn(AXES[letter[1]], values * scale) @ turns
        elif letter.startswith("t"):
            moved = numpy.full((count, 3), numpy.nan) if moved is None else moved
            moved[:, AXES[letter[1]]] = values * factor
        else:
            lengths = values * factor
    return moved, turns, lengths


def skeleton_order(bones):
    """Returns the lower-case names with every parent before its children, and the names that no line attaches."""
    order = ["root"]
    for name in order:
        order += [child for child, bone in bones.items() if bone.parent == name]
    return order, [name for name in bones if name not in order]


def pose_asf(bones, order, frames, degrees, unit, place):
    """Returns (names, parents, is_end, positions) of the bones in `order`. `degrees` is for the motion's angles; `unit`
    is (whether the axes are in degrees, length factor); `place` is the root's position at rest."""
    axes_degrees, factor = unit
    count = max(len(frames), 1)
    names, parents, ends, places = [], [], [], []
    joints, turns, tips = {}, {}, {}
    for name in order:
        bone = bones[name]
        moved, motion, lengths = bone_motion(bone, frames, degrees, factor)
        motion = motion if frames else numpy.tile(numpy.eye(3), (1, 1, 1))
        axes = bone_axes(bone, axes_degrees)
        local = axes @ motion @ axes.T
        if bone.parent:
            joint, above = tips[bone.parent], turns[bone.parent]
        else:
            joint, above = numpy.tile(numpy.array(place), (count, 1)), numpy.eye(3)
            joint = numpy.where(numpy.isnan(moved), joint, moved) if moved is not None and name == "root" else joint
        turns[name] = above @ local
        length = numpy.full(count, bone.length * factor) if lengths is None else lengths
        vector = length[:, None] * numpy.array(bone.direction)
        tips[name] = joint + numpy.einsum("fij,fj->fi", turns[name], vector)
        joints[name] = len(names)
        names.append(bone.name)
        parents.append(joints.get(bone.parent, -1))
        ends.append(False)
        places.append(joint)
    used = {bone.parent for bone in bones.values()}
    for name in order:
        if name not in used and bones[name].length > 0:
            names.append(bones[name].name + "_End")
            parents.append(joints[name])
            ends.append(True)
            places.append(tips[name])
    return names, parents, ends, numpy.stack(places, axis=1)


def length_factor(unit, preset, length):
    if length is not None:
        return length
    return ARCHIVE_FACTOR if preset and abs(unit - ARCHIVE_UNIT) < 1e-12 else unit


def walk_acclaim(asf, amc=None, preset=True, length=None):
    """A list of one walk. With `preset`, a file with the archive's length factor is read as the archive's. `length`
    replaces any length factor."""
    bones, unit, axes_degrees, place = read_asf(asf)
    factor = length_factor(unit, preset, length)
    moments, frames, rate, degrees = read_amc(amc) if amc else ([], [], 0.0, None)
    order, loose = skeleton_order(bones)
    degrees = axes_degrees if degrees is None else degrees
    names, parents, ends, rest = pose_asf(bones, order, [], degrees, (axes_degrees, factor), place)
    positions = numpy.zeros((0, len(names), 3))
    if frames:
        positions = pose_asf(bones, order, frames, degrees, (axes_degrees, factor), place)[3]
    if not rate and preset and abs(unit - ARCHIVE_UNIT) < 1e-12:
        rate = ARCHIVE_RATE
    return [Walk(names, parents, ends, positions, rest[0], numpy.array(moments, dtype=int),
                 1.0 / rate if rate else 1.0 / 30.0, {bones[name].name for name in loose})]


def walk_files(files, relative=False, preset=True, length=None):
    """The walks of a .bvh, or the walk of an .asf with at most one .amc."""
    if str(files[0]).lower().endswith(".bvh"):
        return walk_bvh(files[0], relative)
    return walk_acclaim(files[0], files[1] if len(files) > 1 else None, preset, length)
