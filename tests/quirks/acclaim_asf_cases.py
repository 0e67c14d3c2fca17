"""Quirks of an ASF skeleton."""

import math

from acclaim_base import BONES, amc, asf, frames, values
from corpus import edit, error, line_of, maybe, note, warning


def adder(corpus, about="asf"):
    """Adds a pair and its case. A finding with a line is expected in the file with the extension `about`, unless
    it names another."""
    def one(name, skeleton, findings=(), outcome="mended", motion="as:plain", motion_text=None, **more):
        skeleton_file, motion_file = f"{name}.asf", f"{name}.amc"
        corpus.file(skeleton_file, skeleton)
        corpus.file(motion_file, amc() if motion_text is None else motion_text)
        placed = [entry if entry["line"] is None or entry["code"] == "angle-units" else {"file": about, **entry}
                  for entry in findings]
        corpus.case(name, [skeleton_file, motion_file], outcome, placed,
                    "none" if outcome == "refused" else motion, **more)
    return one


def radians(text):
    """The axes and limits of a skeleton in radians."""
    lines = []
    for line in text.split("\n"):
        words = line.split()
        if words[:1] == ["axis"] and len(words) == 5:
            line = "    axis " + " ".join(repr(math.radians(float(word))) for word in words[1:4]) + " XYZ"
        lines.append(line.replace("(-170 170)", "(-2.9670597283903604 2.9670597283903604)"))
    return "\n".join(lines)


def radian_frames():
    result = []
    for lines in frames():
        changed = [lines[0]]
        for line in lines[1:]:
            name, *words = line.split()
            moved = 3 if name == "root" else 0
            changed.append(" ".join([name, *words[:moved], *(repr(math.radians(float(w))) for w in words[moved:])]))
        result.append(changed)
    return result


def add_plain(corpus):
    one = adder(corpus)
    one("plain", asf(), outcome="right", motion="walk")
    corpus.case("plain-skeleton-alone", ["plain.asf"], "right")
    one("plain-radians", radians(asf(angle="rad")), outcome="right",
        motion_text=amc(radian_frames(), ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n:RADIANS\n"))
    one("plain-crlf", asf().replace("\n", "\r\n"), outcome="right", motion_text=amc().replace("\n", "\r\n"))
    one("plain-cr", asf().replace("\n", "\r"), outcome="right|mended", motion_text=amc().replace("\n", "\r"))
    one("plain-end", asf() + "\x1a\0\0", outcome="right|mended", motion_text=amc() + "\n\x1a\0")
    one("plain-comments", edit(asf(), (":bonedata\n", "# bones\n:bonedata # here\n")), outcome="right",
        motion_text=edit(amc(), (":FULLY", "# by hand\n:FULLY")))
    one("plain-letter-case", asf().replace("dof rx", "DOF RX").replace("begin", "Begin").replace("    head", "    HEAD"),
        outcome="right", motion_text=amc().replace("arm ", "Arm "))
    one("plain-root-order", asf(order="RZ RY RX TX TY TZ"), outcome="right", motion="walk")
    one("plain-dof-order", asf(bones=[bone[:5] + (" ".join(reversed(bone[5].split())),) for bone in BONES]),
        outcome="right", motion="walk")
    one("plain-orientation", asf(orientation="10 20 -30"), outcome="right", motion="walk")
    stretch = {"hand": lambda frame: [*values("hand", frame), 0.15 + 0.01 * frame]}
    changed = {"hand": {"dof": "dof ry |", "limits": "limits (-170 170)\n           (0 inf)"}}
    one("plain-length", asf(changes=changed), outcome="right", motion="walk", motion_text=amc(frames(rows=stretch)))
    inner = {"arm": lambda frame: [*values("arm", frame), 0.4 + 0.02 * frame]}
    changed = {"arm": {"dof": "dof rx ry rz |", "limits": None}}
    one("plain-length-inner", asf(changes=changed), outcome="right", motion="walk",
        motion_text=amc(frames(rows=inner)))
    limits = {"head": {"limits": "limits (-inf inf)\n           (-1e999 1e999)"}}
    one("plain-limits-open", asf(changes=limits), outcome="right")
    one("plain-commas", edit(asf(), ("direction 0 0.96 0.28", "direction (0, 0.96, 0.28)")), outcome="right")


def add_sections(corpus):
    one = adder(corpus)
    text = asf()
    unit = line_of(text, "length 1.0")
    name = line_of(text, ":name")
    one("units-text-mass", edit(text, ("mass 1.0", "mass kg")), [note("units-text", unit - 1)])
    one("units-text-length", edit(text, ("length 1.0", "length m")), [note("units-text", unit)])
    one("name-empty", edit(text, (":name figure", ":name")), [note("name-empty", name)])
    one("keyword-unknown-section", edit(text, (":bonedata", ":skin figure.wrl\n:bonedata")),
        [note("keyword-unknown", line_of(text, ":bonedata"))])
    one("keyword-unknown-bare", edit(text, (":bonedata", ":unused\n:bonedata")),
        [note("keyword-unknown", line_of(text, ":bonedata"))], "right|mended")
    where = line_of(text, "A made-up")
    one("documentation-colon", edit(text, ("A made-up figure\n  of", "made at fps:30\n  of")),
        [note("documentation-colon", where)])
    one("documentation-colon-rate", edit(text, ("A made-up figure\n  of", "made at fps:30\n  of")),
        [note("documentation-colon", where), warning("rate-missing")],
        motion_text=amc(header=":FULLY-SPECIFIED\n:DEGREES\n"), fps=30)
    one("documentation-colon-section", edit(text, ("of six bones", "of six bones, see :root below")),
        [note("documentation-colon", where + 1)])
    one("length-unit", asf(unit="0.5"), [note("length-unit", unit)], motion="walk")
    one("length-unit-inches", asf(unit="2.54"), [note("length-unit", unit), maybe(note("figure-size"))], motion="walk")
    corpus.case("length-unit-length", ["length-unit.asf", "length-unit.amc"], "mended", [], "walk",
                options=["--length", "2"], walk={"length": 2})


def add_bones(corpus):
    one = adder(corpus)
    text = asf()
    for name, key, line in (("direction", "direction", "direction 0 1"), ("direction-word", "direction", "direction 0 up 0"),
                            ("length-word", "length", "length long"), ("axis", "axis", "axis 0 0 XYZ"),
                            ("axis-word", "axis", "axis 0 0 z XYZ"), ("length-two", "length", "length 0.5 0.6")):
        changed = asf(changes={"spine": {key: line}})
        one(f"number-bad-{name}", changed, [error("number-bad", line_of(changed, line))], "refused")
    for name, line in (("word", "limits (-170 wide)"), ("nan", "limits (-170 nan)")):
        changed = asf(changes={"hand": {"limits": line}})
        one(f"number-bad-limit-{name}", changed, [error("number-bad", line_of(changed, line))], "refused")
    for name, old, new in (("position", "position 0 0 0", "position 0 0"), ("orientation", "orientation 0 0 0", "orientation 0 a 0"),
                           ("comma", "length 0.15", "length 0,15")):
        one(f"number-bad-{name}", edit(text, (old, new)), [error("number-bad", line_of(text, old))], "refused")

    orders = dict(zip((bone[0] for bone in BONES if bone[5]), ("ZYX", "XZY", "YXZ", "YZX", "ZXY")))
    turned = asf(changes={name: {"axis": f"axis 25 -40 15 {order}"} for name, order in orders.items()})
    one("axis-order-all", turned, [note("axis-order", None, count=5)], motion="walk")
    single = asf(changes={"arm": {"axis": "axis 0 -40 15 ZYX"}})
    one("axis-order-one", single, [note("axis-order", line_of(single, "ZYX"), joint="arm")], motion="walk")
    lock = asf(changes={"arm": {"axis": "axis 30 90 15 ZYX"}})
    one("axis-order-gimbal", lock, [note("axis-order", line_of(lock, "ZYX"))], motion="walk", tolerance={"bones": 3e-5})
    rooted = asf(axis="ZXY", orientation="10 20 -30")
    one("axis-order-root", rooted, [note("axis-order", line_of(rooted, "ZXY"))], motion="walk")

    stated = "direction 0 1 0"
    one("direction-length", asf(changes={"spine": {"direction": "direction 0 2 0"}}),
        [warning("direction-length", line_of(text, stated), joint="spine")])
    one("direction-length-nearly", asf(changes={"spine": {"direction": "direction 0 1.015 0"}}), [], "right", "walk")
    one("direction-length-zero", asf(changes={"leg": {"direction": "direction 0 0 0"}}),
        [warning("direction-length", line_of(text, "direction 0 -1 0"), joint="leg")], "right|mended", "walk")
    one("bone-short", asf(changes={"hand": {"length": "length 0.004"}}), [note("bone-short", None, joint="hand")],
        "right|mended", "walk")
    one("bone-short-unit", asf(unit="0.01", changes={"hand": {"length": "length 0.15"}}),
        [note("length-unit"), note("bone-short", None, joint="spine"), maybe(note("figure-size"))], motion="walk")
    one("bone-short-none", asf(changes={"leg": {"length": "length 0"}}), [], "right", "walk")


def add_hierarchy(corpus):
    one = adder(corpus)
    text = asf()
    last = line_of(text, "hip leg")
    lines = ["root spine hip", "spine head arm", "arm hand", "hip leg"]
    assert text.count("    " + "\n    ".join(lines)) == 1
    late = asf(hierarchy=["arm hand", "spine head arm", "root spine hip", "hip leg"])
    first = line_of(late, ":hierarchy") + 2
    one("hierarchy-order", late, [note("hierarchy-order", [first, first + 1, first + 2])])
    child = asf(hierarchy=["root spine hip", "arm hand", "spine head arm", "hip leg"])
    one("hierarchy-order-child", child, [note("hierarchy-order", [first + 1, first + 2])])
    one("hierarchy-cycle", asf(hierarchy=lines + ["hand spine"]), [error("hierarchy-cycle", last + 1)], "refused")
    one("hierarchy-cycle-self", asf(hierarchy=lines[:3] + ["leg leg"]), [error("hierarchy-cycle", last)], "refused")
    one("hierarchy-unknown", asf(hierarchy=lines + ["leg foot"]), [error("hierarchy-unknown", last + 1, words=["foot"])],
        "refused")
    twice = asf(bones=BONES + [("Head", "leg", "0 1 0", "0.2", "0 0 0 XYZ", "")])
    one("bone-duplicate", twice, [error("bone-duplicate", list(range(line_of(twice, "name Head") - 2,
                                                                     line_of(twice, "name Head") + 1)), words=["head"])],
        "refused")
    loose = asf(bones=BONES + [("prop", "none", "0 1 0", "0.2", "0 0 0 XYZ", "")], hierarchy=lines)
    at = line_of(loose, "name prop")
    one("bone-unattached", loose, [note("bone-unattached", [at - 2, at - 1, at], joint="prop")], "right|mended")


def add_lengths(corpus):
    one = adder(corpus)
    still = {"hand": lambda frame: [*values("hand", frame), 0.25]}
    moving = {"hand": lambda frame: [*values("hand", frame), 0.15 + 0.01 * frame]}
    listed = {"hand": {"dof": "dof ry l", "limits": None}}
    line = line_of(asf(changes=listed), "dof ry l")
    one("dof-length-still", asf(changes=listed), [note("dof-length", line, joint="hand")], motion="walk",
        motion_text=amc(frames(rows=still)))
    one("dof-length-moving", asf(changes=listed), [note("dof-length", line, joint="hand")], motion="walk",
        motion_text=amc(frames(rows=moving)))
    inner = {"arm": lambda frame: [*values("arm", frame), 0.4 + 0.02 * frame]}
    listed = {"arm": {"dof": "dof rx ry rz l", "limits": None}}
    one("dof-length-inner", asf(changes=listed), [note("dof-length", line_of(asf(changes=listed), "rz l"))],
        motion="walk", motion_text=amc(frames(rows=inner)))
    restless = {"arm": {"length": "length 0", "dof": "dof rx ry rz |", "limits": None}}
    one("dof-length-no-rest", asf(changes=restless), [], "right|mended", "walk", motion_text=amc(frames(rows=inner)))
    restless = {"hand": {"length": "length 0", "dof": "dof ry |", "limits": None}}
    one("dof-length-no-rest-leaf", asf(changes=restless), [], "right|mended", "walk",
        motion_text=amc(frames(rows=moving)))
    scaled = {"arm": lambda frame: [*values("arm", frame), 0.8 + 0.04 * frame]}
    one("dof-length-unit", asf(unit="0.5", changes=listed), [
        note("dof-length", line_of(asf(changes=listed), "rz l")), note("length-unit")],
        motion="walk", motion_text=amc(frames(rows=scaled)))
    for mark in ("l", "|"):
        several = {"spine": {"dof": f"dof rx ry rz {mark}", "limits": None}}
        text = asf(changes=several)
        where = line_of(text, f"rz {mark}")
        rows = {"spine": lambda frame: [*values("spine", frame), 0.5 + 0.01 * frame]}
        name = "letter" if mark == "l" else "bar"
        one(f"dof-length-branching-{name}", text, [error("dof-length", None, joint="spine", words=["spine"])], "refused",
            motion_text=amc(frames(rows=rows)))
        rows = {"spine": lambda frame: [*values("spine", frame), 0.6]}
        expected = note("dof-length", where)
        one(f"dof-length-branching-still-{name}", text, [expected if mark == "l" else maybe(expected)],
            "right|mended", "walk", motion_text=amc(frames(rows=rows)))
    slid = {"leg": {"dof": "dof tx ty rx rz", "limits": None}}
    for name, shift, expected in (("zero", [0.0, 0.0], []),
                                  ("moving", [0.0, 0.1], [warning("dof-translation", None, joint="leg")])):
        rows = {"leg": lambda frame, shift=shift: [*shift, *values("leg", frame)]}
        one(f"dof-translation-{name}", asf(changes=slid), expected, "right|mended", motion_text=amc(frames(rows=rows)))



def add(corpus):
    add_plain(corpus)
    add_sections(corpus)
    add_bones(corpus)
    add_hierarchy(corpus)
    add_lengths(corpus)
