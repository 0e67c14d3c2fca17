"""Where the joints of a base pose are in the scene, by the record that zkhost writes of a scene (.json)."""

import numpy


def rotation(degrees):
    """The matrix that turns columns about x first, then y, then z."""
    (cx, cy, cz), (sx, sy, sz) = numpy.cos(numpy.radians(degrees)), numpy.sin(numpy.radians(degrees))
    about_x = numpy.array([[1, 0, 0], [0, cx, -sx], [0, sx, cx]])
    about_y = numpy.array([[cy, 0, sy], [0, 1, 0], [-sy, 0, cy]])
    about_z = numpy.array([[cz, -sz, 0], [sz, cz, 0], [0, 0, 1]])
    return about_z @ about_y @ about_x


def transform(local):
    matrix = numpy.eye(4)
    matrix[:3, :3] = rotation([local["rotx"], local["roty"], local["rotz"]])
    matrix[:3, 3] = [local["posx"], local["posy"], local["posz"]]
    return matrix


def global_transforms(scene):
    """The transform of each object by its full name. An object may come before its parent in the record."""
    items = {item["fullName"]: item for item in scene}
    transforms = {None: numpy.eye(4)}
    for name in items:
        missing = []
        while name not in transforms:
            missing.append(items[name])
            name = items[name]["parent"]
        for item in reversed(missing):
            transforms[item["fullName"]] = transforms[item["parent"]] @ transform(item["local"])
    return transforms


# What --up does to a column: the axis that it names becomes y.
TURNS = {"x": numpy.array([[0, -1, 0], [1, 0, 0], [0, 0, 1]]), "y": numpy.eye(3),
         "z": numpy.array([[1, 0, 0], [0, 0, 1], [0, -1, 0]])}


def rest_positions(scene, model, names, parents, offsets, up):
    """The offsets, which have the lengths of the output, in turn. The scene says how the joints are rotated."""
    transforms = global_transforms(scene)
    positions = numpy.array(offsets)
    for joint, parent in enumerate(parents):
        if parent >= 0:
            above = TURNS[up] @ transforms[f"{model}.{names[parent]}"][:3, :3]
            positions[joint] = positions[parent] + above @ offsets[joint]
    return positions
