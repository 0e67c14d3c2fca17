"""BVH files with names, sizes and shapes that readers of FBX may stumble over."""

import os

# Joints with names that have a meaning in FBX files, in the readers, or in both, and long ones.
CYRILLIC = "\u0414\u043b\u0438\u043d\u043d\u043e\u0435\u0418\u043c\u044f" * 4
NAMES = ["two words", "pelvis.R", "Bip01[0]", "Model::Arm", "Arm::Model", "say\"so\"", "it's", "a|b", "a/b\\c",
         "mixamorig:Hips", "\u8170", CYRILLIC, "L" * 63, "L" * 64, "L" * 62 + "\u00e9", "x.001", "x", "Lcl Rotation",
         "d|X", "T", "\U0001f9b4", "caf\u00e9", "cafe\u0301", "a&b<c>", "100%", "#", "..", "position", "Body",
         "Armature", "RootNode", "names", "names_Body"]

ROOT = "CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation"
TURN = "CHANNELS 3 Zrotation Xrotation Yrotation"


def joint(kind, name, offset, channels, *inner):
    return f"{kind} {name}\n{{\nOFFSET {offset}\n{channels}\n{''.join(inner)}}}\n"


def end(offset):
    return f"End Site\n{{\nOFFSET {offset}\n}}\n"


def motion(rows, seconds="0.0333333"):
    lines = "".join(" ".join(map(str, row)) + "\n" for row in rows)
    return f"MOTION\nFrames: {len(rows)}\nFrame Time: {seconds}\n{lines}"


def names():
    arms = "".join(joint("JOINT", name, f"{5 + index} {index % 7} 1", TURN, end("1 2 3"))
                   for index, name in enumerate(NAMES))
    rows = [[frame, 90 + frame, 0, 10 * frame, 3, -2 * frame]
            + [(frame + 1) * (7 + index) % 140 - 70 for index in range(3 * len(NAMES))] for frame in range(4)]
    return "HIERARCHY\n" + joint("ROOT", "Hips", "0 90 0", ROOT, arms) + motion(rows)


def one_joint(rows, seconds="0.0333333"):
    return "HIERARCHY\n" + joint("ROOT", "Hips", "1 2 3", ROOT) + motion(rows, seconds)


def lengthless():
    """Joints and end sites at the position of their parents, and joints straight above them."""
    inner = joint("JOINT", "Same", "0 0 0", TURN, joint("JOINT", "Above", "0 40 0", TURN, end("0 0 0")),
                  joint("JOINT", "Beside", "30 0 0", TURN, end("0 1e-9 0")))
    rows = [[0, 90, 0] + [frame * 11] * 12 for frame in range(5)]
    return "HIERARCHY\n" + joint("ROOT", "Hips", "0 0 0", ROOT, inner) + motion(rows)


def sliding():
    """A joint that moves in its parent, straight above it at rest, and one that only slides along one axis."""
    slides = "CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation"
    inner = joint("JOINT", "Spine", "0 20 0", slides, joint("JOINT", "Head", "0 30 0", slides, end("0 10 0")))
    rows = [[0, 90, 0, 0, frame, 0] + [frame, 20 + frame, 0, 5 * frame, 0, 0] + [0, 30, frame, 0, 9 * frame, 0]
            for frame in range(6)]
    return "HIERARCHY\n" + joint("ROOT", "Hips", "0 0 0", ROOT, inner) + motion(rows)


def nearly_at_rest():
    """Joints that do not move, but are a little away from the base pose; programs may take them for being there."""
    slides = "CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation"
    turn = "CHANNELS 3 Xrotation Yrotation Zrotation"
    inner = joint("JOINT", "Spine", "0 0.2 0", turn, joint("JOINT", "Head", "0 0.3 0", slides, end("0 0.1 0")))
    rows = [[0, 0.9, 0.1 * frame, 0, frame, 0] + [0.000001, 0.000002, 0.000005] + [0, 0.3005, 0, 0, 0, 0.0003]
            for frame in range(4)]
    return "HIERARCHY\n" + joint("ROOT", "Hips", "0 0 0", ROOT, inner) + motion(rows)


def spins():
    """Turns of more than half a circle from frame to frame, and angles of many turns."""
    inner = joint("JOINT", "Spine", "0 20 0", TURN, joint("JOINT", "Head", "3 30 1", TURN, end("0 10 0")))
    rows = [[0, 90, 0, 200 * frame, 10, 0, -170 * frame, 90, 30, 3600 * frame, 0, 179 * frame] for frame in range(6)]
    return "HIERARCHY\n" + joint("ROOT", "Hips", "0 0 0", ROOT, inner) + motion(rows)


def far_away():
    """A figure that is far from the origin in its motion and in its rest pose."""
    inner = joint("JOINT", "Spine", "0 20 0", TURN, end("0 50 0"))
    rows = [[9000 + frame, 90, -7000, 10 * frame, 0, 0, 0, frame, 5] for frame in range(4)]
    return "HIERARCHY\n" + joint("ROOT", "Hips", "9000 90 -7000", ROOT, inner) + motion(rows)


def crowd(count, clash):
    """Several models whose joints have the same names, and motions of different lengths and starts."""
    text = ""
    for index in range(count):
        root = "Hips" if clash else f"Hips{index}"
        inner = "".join(joint("JOINT", name, offset, TURN, end("0 -40 0"))
                        for name, offset in (("leg.L", f"{1 + index} -40 0"), ("legL", "-9 -40 0")))
        rows = [[100 * index, 80, frame, 0, 20 * frame, 0] + [frame * (index + 3) % 50] * 6
                for frame in range(3 + 2 * index)]
        text += "HIERARCHY\n" + joint("ROOT", root, "0 80 0", ROOT, inner) + motion(rows, "0.01")
    return text


def files():
    still = [[1, 2, 3, 10, 20, 30]]
    return {
        "names": names(), "one-joint": one_joint([[frame, 2, 3, 10 * frame, 20, 30] for frame in range(4)]),
        "one-frame": one_joint(still), "pose": one_joint(still, "0"), "nothing-moves": one_joint(still * 5),
        "lengthless": lengthless(), "nearly-at-rest": nearly_at_rest(), "sliding": sliding(), "spins": spins(),
        "far-away": far_away(),
        "crowd": crowd(3, True), "two": crowd(2, False), "skeleton name [1].0": one_joint(still * 2),
    }


def write_files(folder):
    """Writes the files and returns their paths."""
    paths = []
    for name, text in files().items():
        paths.append(os.path.join(folder, name + ".bvh"))
        with open(paths[-1], "w", encoding="utf-8") as file:
            file.write(text)
    return paths
