"""Quirks that matter to bone chains, and the figure's size."""

from bvh_base import FIGURE, JOINT, ROOT, motion, plain, plain_rows
from corpus import edit, line_of, note, wave, warning

OFFSETS = {name: [float(word) for word in offset.split()] for name, _, offset, _ in FIGURE}


def with_positions(joint, place, rows=None):
    """Rows in which `joint` has the positions `place(frame)` before its rotations."""
    first = 6 + 3 * [name for name, _, _, _ in FIGURE if name != "Hips"].index(joint)
    return [row[:first] + list(place(frame)) + row[first:]
            for frame, row in enumerate(rows or plain_rows())]


def all_positions(place):
    """Rows in which every joint below the root has the positions `place(frame, joint)` before its rotations."""
    rows = plain_rows()
    for joint in ("LeftLeg", "LeftArm", "Head", "Spine"):
        rows = with_positions(joint, lambda frame, joint=joint: place(frame, joint), rows)
    return rows


def add_ends(corpus):
    text = plain()
    line = line_of(text, "JOINT LeftArm")
    arm_end = "\t\t\tEnd Site\n\t\t\t{\n\t\t\t\tOFFSET 0.55 0 0.04\n\t\t\t}\n"
    head_end = arm_end.replace("0.55 0 0.04", "0 0.2 0.03")
    lines = list(range(line, line + 6))
    corpus.file("end-site-missing.bvh", edit(text, (arm_end, "")))
    corpus.case("end-site-missing", ["end-site-missing.bvh"], "right|mended",
                [note("end-site-missing", lines, joint="LeftArm")], bones_end={"LeftArm": [0.05, 0.0625, -0.005]})
    both = edit(text, (arm_end, ""), (head_end, ""))
    corpus.file("end-site-missing-all.bvh", both)
    corpus.case("end-site-missing-all", ["end-site-missing-all.bvh"], "right|mended",
                [note("end-site-missing", None, count=2)])
    zero = edit(plain(offsets={"LeftArm": "0 0 0"}), (arm_end, ""))
    corpus.file("end-site-missing-zero.bvh", zero)
    corpus.case("end-site-missing-zero", ["end-site-missing-zero.bvh"], "right|mended",
                [note("end-site-missing", lines, joint="LeftArm")])


def add_positions(corpus):
    def one(name, rows, channels, findings, outcome="right|mended", folded=False, meant="walk"):
        text = plain(rows, channels=channels)
        corpus.file(f"{name}.bvh", text)
        bound = {"tolerance": {"bones": 1e-5}} if folded else {}
        corpus.case(name, [f"{name}.bvh"], outcome, findings, meant, **bound)

    arm = {"LeftArm": ROOT}
    text = plain(channels=arm)
    lines = list(range(line_of(text, "JOINT LeftArm"), line_of(text, "JOINT LeftArm") + 4))
    constant = note("position-constant", lines, joint="LeftArm")
    moving = note("position-moving", lines, joint="LeftArm")
    one("position-constant", with_positions("LeftArm", lambda frame: OFFSETS["LeftArm"]), arm, [constant], folded=True)
    one("position-constant-other", with_positions("LeftArm", lambda frame: [0.3, 0.1, 0.05]), arm, [constant], folded=True)
    one("position-relative-one", with_positions("LeftArm", lambda frame: [0, 0, 0]), arm,
        [warning("position-relative", None)], "mended", meant="walk:relative")
    one("position-constant-one", [row[:12] + [0.2] + row[12:] for row in plain_rows()],
        {"LeftArm": "Yposition " + JOINT}, [constant], folded=True)
    drift = with_positions("LeftArm", lambda frame: [f"{0.3 + 1e-7 * frame:.7f}", "0.1", "0.05"])
    one("position-constant-drift", [" ".join(item if isinstance(item, str) else f"{item:.4f}" for item in row)
                                    for row in drift], arm, [constant], folded=True)
    sway = with_positions("LeftArm", lambda frame: [0.2 + wave(frame, 2, 0.05), 0.25, wave(frame, 5, 0.08)])
    one("position-moving", sway, arm, [moving])
    one("position-moving-one", [row[:12] + [0.25 + wave(frame, 3, 0.06)] + row[12:] for frame, row in
                                enumerate(plain_rows())], {"LeftArm": "Yposition " + JOINT}, [moving])
    spine = {"Spine": ROOT}
    back = plain(channels=spine)
    one("position-moving-spine", with_positions("Spine", lambda frame: [0, 0.3 + wave(frame, 1, 0.04), 0.02]), spine,
        [note("position-moving", list(range(line_of(back, "JOINT Spine"), line_of(back, "JOINT Spine") + 4)),
              joint="Spine")])
    every = {name: ROOT for name in OFFSETS}
    one("position-constant-all", all_positions(lambda frame, joint: OFFSETS[joint]), every,
        [note("position-constant", None, count=4)], folded=True)
    moved = all_positions(lambda frame, joint: [OFFSETS[joint][0] + (wave(frame, 3, 0.03) if joint == "Head" else 0),
                                                *OFFSETS[joint][1:]])
    one("position-both", moved, every, [note("position-constant", None, count=3),
                                        note("position-moving", None, joint="Head")], folded=True)
    one("position-relative", all_positions(lambda frame, joint: [0, 0, 0]), every,
        [warning("position-relative", None)], "mended", meant="walk:relative")
    small = all_positions(lambda frame, joint: [0.0001 * (frame % 2), 0, 0])
    one("position-relative-nearly", small, every, [warning("position-relative", None)], "mended", meant="walk:relative")
    nearly = all_positions(lambda frame, joint: [0.05, 0, 0] if joint == "Head" else [0, 0, 0])
    one("position-relative-not", nearly, every, [note("position-constant", None, count=4)], folded=True)


CHAIN = """HIERARCHY
ROOT Base
{
\tOFFSET 0 0 0
\tCHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation
\tJOINT Middle
\t{
\t\tOFFSET 0.02 0.5 0
\t\tCHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation
\t\tJOINT Upper
\t\t{
\t\t\tOFFSET 0 0.6 0.05
\t\t\tCHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation
END\t\t}
\t}
}
"""
CHAIN_OFFSETS = [[0.02, 0.5, 0.0], [0.0, 0.6, 0.05]]
CHAIN_END = "\t\t\tEnd Site\n\t\t\t{\n\t\t\t\tOFFSET 0.1 0.3 0\n\t\t\t}\n"


def add_chains(corpus):
    """Joints whose only child lists positions, so that no bone chain can be built from them as they are."""
    def one(name, middle, upper, findings, end=CHAIN_END, folded=True):
        rows = []
        for frame, row in enumerate(plain_rows()):
            places = [place(frame) for place in (middle, upper)]
            rows.append(row[:6] + places[0] + row[6:9] + places[1] + row[9:12])
        corpus.file(f"{name}.bvh", CHAIN.replace("END", end) + motion(rows))
        bound = {"tolerance": {"bones": 1e-5}} if folded else {}
        corpus.case(name, [f"{name}.bvh"], "right|mended", findings, **bound)

    def still(index):
        return lambda frame: CHAIN_OFFSETS[index]

    def moving(index):
        return lambda frame: [value + wave(frame, 7 * index + axis, 0.05)
                              for axis, value in enumerate(CHAIN_OFFSETS[index])]

    constant, moves, missing = "position-constant", "position-moving", "end-site-missing"
    one("position-chain-constant", still(0), still(1), [note(constant, None, count=2)])
    one("position-chain-moving", moving(0), moving(1), [note(moves, None, count=2)], folded=False)
    one("position-chain-first", moving(0), still(1), [note(moves, None, joint="Middle"), note(constant, None, joint="Upper")])
    one("position-chain-last", still(0), moving(1), [note(constant, None, joint="Middle"), note(moves, None, joint="Upper")])
    one("position-chain-constant-open", still(0), still(1), [note(constant, None, count=2), note(missing, None, joint="Upper")],
        end="")
    one("position-chain-moving-open", moving(0), moving(1), [note(moves, None, count=2), note(missing, None, joint="Upper")],
        end="", folded=False)
    one("position-chain-at-parent", lambda frame: [0.0, 0.0, 0.0], still(1), [note(constant, None, count=2)])


def scaled(text, factor):
    """The same figure in another unit of length."""
    head, rows = text.split("Frame Time: 0.0333333\n")
    lines = []
    for line in head.splitlines():
        words = line.split()
        if words[0] == "OFFSET":
            line = line[:line.index("OFFSET")] + "OFFSET " + " ".join(f"{float(word) * factor:g}" for word in words[1:])
        lines.append(line)
    moved = [" ".join([f"{float(word) * factor:g}" for word in row.split()[:3]] + row.split()[3:])
             for row in rows.splitlines()]
    return "\n".join(lines) + "\nFrame Time: 0.0333333\n" + "\n".join(moved) + "\n"


def add_sizes(corpus):
    for name, factor, words in (("centimetres", 100, ["0.01"]), ("millimetres", 1000, ["0.001"]),
                                ("inches", 39.37, ["0.0254"]), ("tiny", 0.01, None)):
        corpus.file(f"figure-size-{name}.bvh", scaled(plain(), factor))
        expected = note("figure-size", None, **({"words": words} if words else {}))
        corpus.case(f"figure-size-{name}", [f"figure-size-{name}.bvh"], "right", [expected])


def add(corpus):
    add_ends(corpus)
    add_positions(corpus)
    add_chains(corpus)
    add_sizes(corpus)
