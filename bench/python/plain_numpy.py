"""How one reads a BVH file with NumPy alone, well written: the motion by one call, a joint at a time for all frames."""

import re

import numpy as np


def product(a, b):
    """The product of quaternions x, y, z, w."""
    ax, ay, az, aw = a[:, 0], a[:, 1], a[:, 2], a[:, 3]
    bx, by, bz, bw = b[:, 0], b[:, 1], b[:, 2], b[:, 3]
    return np.stack([aw * bx + ax * bw + ay * bz - az * by, aw * by - ax * bz + ay * bw + az * bx,
                     aw * bz + ax * by - ay * bx + az * bw, aw * bw - ax * bx - ay * by - az * bz], axis=1)


def rotated(q, v):
    twice = 2.0 * np.cross(q[:, :3], v)
    return v + q[:, 3:] * twice + np.cross(q[:, :3], twice)


def skeleton_of(text):
    """Returns the parents, the offsets and the channels of the joints and end sites."""
    parents, offsets, channels, stack = [], [], [], []
    for line in text.splitlines():
        words = line.split()
        if not words:
            continue
        if words[0] in ("ROOT", "JOINT", "End"):
            parents.append(stack[-1] if stack else -1)
            channels.append([])
        elif words[0] == "{":
            stack.append(len(parents) - 1)
        elif words[0] == "}":
            stack.pop()
        elif words[0] == "OFFSET":
            offsets.append([float(word) for word in words[1:4]])
        elif words[0] == "CHANNELS":
            channels[stack[-1]] = words[2:]
    return parents, np.array(offsets), channels


def read(path):
    """Returns positions (F, J, 3) and quaternions (F, J, 4) in the world."""
    with open(path, encoding="utf-8") as file:
        head, motion = file.read().split("MOTION", 1)
    parents, offsets, channels = skeleton_of(head)
    start = re.search(r"Frame Time:.*\n", motion).end()
    rows = np.fromstring(motion[start:], sep=" ").reshape(-1, sum(map(len, channels)))
    frames = len(rows)
    positions = np.empty((frames, len(parents), 3))
    quaternions = np.empty((frames, len(parents), 4))
    column = 0
    for joint, parent in enumerate(parents):
        place = np.broadcast_to(offsets[joint], (frames, 3)).copy()
        local = np.tile([0.0, 0.0, 0.0, 1.0], (frames, 1))
        for channel in channels[joint]:
            axis = "XYZ".index(channel[0])
            values = rows[:, column]
            column += 1
            if channel.endswith("position"):
                place[:, axis] = values
                continue
            turn = np.zeros((frames, 4))
            half = np.radians(values) / 2.0
            turn[:, axis], turn[:, 3] = np.sin(half), np.cos(half)
            local = product(local, turn)
        if parent < 0:
            positions[:, joint], quaternions[:, joint] = place, local
        else:
            above = quaternions[:, parent]
            positions[:, joint] = positions[:, parent] + rotated(above, place)
            quaternions[:, joint] = product(above, local)
    return positions, quaternions
