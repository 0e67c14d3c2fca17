"""The made-up figure of the BVH corpus: five joints, 1.75 metres tall, ten frames of rich motion."""

from corpus import wave

ROOT = "Xposition Yposition Zposition Zrotation Xrotation Yrotation"
JOINT = "Zrotation Xrotation Yrotation"
FRAMES = 10

# name, parent, offset, end site
FIGURE = [("Hips", None, "0 0 0", None),
          ("Spine", "Hips", "0 0.3 0.02", None),
          ("Head", "Spine", "0.01 0.35 0", "0 0.2 0.03"),
          ("LeftArm", "Spine", "0.2 0.25 -0.02", "0.55 0 0.04"),
          ("LeftLeg", "Hips", "0.1 -0.08 0", "0.02 -0.82 0.05")]
COLUMNS = 6 + 3 * 4


def channel_line(names):
    return f"CHANNELS {len(names.split())} {names}"


def hierarchy(channels=None, offsets=None):
    """The text from HIERARCHY up to MOTION. `channels` and `offsets` replace those of the plain figure, by joint."""
    channels, offsets = channels or {}, offsets or {}
    lines = ["HIERARCHY"]

    def joint(name, depth):
        _, parent, offset, end = next(row for row in FIGURE if row[0] == name)
        tabs = "\t" * depth
        listed = channels.get(name, JOINT if parent else ROOT)
        lines.extend([f"{tabs}{'JOINT' if parent else 'ROOT'} {name}", f"{tabs}{{",
                      f"{tabs}\tOFFSET {offsets.get(name, offset)}", f"{tabs}\t{channel_line(listed)}"])
        for child, above, _, _ in FIGURE:
            if above == name:
                joint(child, depth + 1)
        if end:
            lines.extend([f"{tabs}\tEnd Site", f"{tabs}\t{{", f"{tabs}\t\tOFFSET {end}", f"{tabs}\t}}"])
        lines.append(f"{tabs}}}")

    joint("Hips", 0)
    return "\n".join(lines) + "\n"


def value(frame, column, kind="r"):
    """A value of the plain motion: a position of the root if `kind` is "p", otherwise an angle."""
    if kind == "p":
        return [0.08 * frame, 0.95 + wave(frame, 1, 0.03), wave(frame, 2, 0.1)][column]
    return wave(frame, column, 12.0 + 9.0 * (column % 4))


def plain_rows(frames=FRAMES):
    return [[value(frame, column, "p" if column < 3 else "r") for column in range(COLUMNS)]
            for frame in range(frames)]


def row_text(row):
    return " ".join(f"{number:.4f}" for number in row)


def motion(rows, count=None, frame_time="0.0333333"):
    lines = [row if isinstance(row, str) else row_text(row) for row in rows]
    count = len(lines) if count is None else count
    return "\n".join(["MOTION", f"Frames: {count}", f"Frame Time: {frame_time}", *lines]) + "\n"


def plain(rows=None, **more):
    return hierarchy(**more) + motion(plain_rows() if rows is None else rows)


# Two joints, for takes with many rows.
SMALL = """HIERARCHY
ROOT Base
{
\tOFFSET 0 0 0
\tCHANNELS 4 Yposition Zrotation Yrotation Xrotation
\tJOINT Tip
\t{
\t\tOFFSET 0 0.8 0
\t\tCHANNELS 1 Zrotation
\t\tEnd Site
\t\t{
\t\t\tOFFSET 0.1 0.6 0
\t\t}
\t}
}
"""


def small_rows(frames):
    return [[wave(frame, 0, 0.1)] + [wave(frame, column, 30.0) for column in range(1, 5)]
            for frame in range(frames)]
