"""The made-up figure of the Acclaim corpus: six bones, 1.7 metres tall, ten frames of rich motion."""

from corpus import wave

FRAMES = 10

# name, parent, direction, length, axis, dof
BONES = [("spine", "root", "0 1 0", "0.5", "0 0 20 XYZ", "rx ry rz"),
         ("head", "spine", "0 0.96 0.28", "0.3", "10 20 30 XYZ", "rx rz"),
         ("arm", "spine", "0.96 0 0.28", "0.4", "0 -40 15 XYZ", "rx ry rz"),
         ("hand", "arm", "1 0 0", "0.15", "90 0 0 XYZ", "ry"),
         ("hip", "root", "0.6 -0.8 0", "0.1", "0 0 0 XYZ", ""),
         ("leg", "hip", "0 -1 0", "0.8", "0 0 -20 XYZ", "rx rz")]
MOVED = ["root", "spine", "head", "arm", "hand", "leg"]
WIDTHS = {"root": 6, **{name: len(dof.split()) for name, _, _, _, _, dof in BONES}}
ROOT_ORDER = "TX TY TZ RX RY RZ"
LIMITS = "(-170 170)"


def bone_block(number, bone, changes=None):
    name, _, direction, length, axis, dof = bone
    lines = {"id": f"id {number}", "name": f"name {name}", "direction": f"direction {direction}",
             "length": f"length {length}", "axis": f"axis {axis}"}
    if dof:
        lines["dof"] = f"dof {dof}"
        lines["limits"] = "limits " + "\n           ".join([LIMITS] * len(dof.split()))
    lines.update(changes or {})
    return "  begin\n" + "".join(f"    {line}\n" for line in lines.values() if line is not None) + "  end\n"


def asf(unit="1.0", angle="deg", bones=None, changes=None, extra="", hierarchy=None, order=ROOT_ORDER,
        axis="XYZ", orientation="0 0 0"):
    """`changes` maps a bone to its changed lines by keyword; None leaves a line out."""
    bones = bones or BONES
    blocks = "".join(bone_block(number + 1, bone, (changes or {}).get(bone[0])) for number, bone in enumerate(bones))
    parents = dict.fromkeys(parent for _, parent, _, _, _, _ in bones)
    pairs = hierarchy or [f"{parent} " + " ".join(bone[0] for bone in bones if bone[1] == parent) for parent in parents]
    return ("# a made-up figure\n:version 1.10\n:name figure\n:units\n  mass 1.0\n"
            f"  length {unit}\n  angle {angle}\n:documentation\n  A made-up figure\n"
            f"  of six bones\n:root\n  order {order}\n  axis {axis}\n  position 0 0 0\n"
            f"  orientation {orientation}\n:bonedata\n{blocks}{extra}:hierarchy\n  begin\n"
            + "".join(f"    {line}\n" for line in pairs) + "  end\n")


def values(name, frame, width=None):
    """Made-up values of one row."""
    first = 3 * list(WIDTHS).index(name) if name in WIDTHS else 40
    angles = [wave(frame, first + column, 14.0 + 8.0 * ((first + column) % 3)) for column in range(6)]
    if name == "root":
        return [0.07 * frame, 0.9 + wave(frame, 1, 0.04), wave(frame, 2, 0.1), *angles[3:]]
    return angles[:WIDTHS[name] if width is None else width]


def row(name, numbers):
    return " ".join([name, *(number if isinstance(number, str) else f"{number:.4f}" for number in numbers)])


def frames(count=FRAMES, rows=None, numbers=None):
    """A list of frames, each a list of lines. `rows` maps a bone to a function of the frame that gives its values."""
    rows = rows or {}
    result = []
    for frame in range(count):
        lines = [str(numbers[frame] if numbers else frame + 1)]
        for name in MOVED + [name for name in rows if name not in MOVED]:
            numbers_of = rows[name](frame) if name in rows else values(name, frame)
            if numbers_of is not None:
                lines.append(row(name, numbers_of))
        result.append(lines)
    return result


def amc(moments=None, header=":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n:DEGREES\n"):
    return "#!OML:ASF figure.asf\n" + header + "".join("\n".join(lines) + "\n" for lines in moments or frames())
