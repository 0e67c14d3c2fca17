"""Quirks of a BVH file's hierarchy."""

from bvh_base import COLUMNS, JOINT, channel_line, hierarchy, motion, plain, plain_rows, value
from corpus import edit, error, line_of, maybe, note, warning

XYZ_ROOT = "Xposition Yposition Zposition Xrotation Yrotation Zrotation"
XYZ = "Xrotation Yrotation Zrotation"


def rows_for(columns):
    rows = plain_rows()
    return [row[:columns] + [value(frame, column) for column in range(len(row), columns)]
            for frame, row in enumerate(rows)]


def add_plain(corpus):
    def silent(name, text, **more):
        corpus.file(f"{name}.bvh", text)
        corpus.case(name, [f"{name}.bvh"], "right", **more)

    silent("plain", plain())
    silent("plain-orders", plain(channels={"Hips": "Xposition Yposition Zposition Zrotation Yrotation Xrotation",
                                           "Spine": "Yrotation Xrotation Zrotation",
                                           "Head": "Yrotation Zrotation Xrotation",
                                           "LeftArm": "Xrotation Zrotation Yrotation"}))
    silent("plain-fewer-rotations", plain(rows_for(COLUMNS - 4), channels={
        "Spine": "Yrotation Xrotation", "Head": "Zrotation Xrotation", "LeftArm": "Yrotation",
        "LeftLeg": JOINT}))
    silent("plain-rotation-first", plain(channels={
        "Hips": "Zrotation Xrotation Yrotation Xposition Yposition Zposition"}, rows=[
            row[3:6] + row[:3] + row[6:] for row in plain_rows()]), motion="as:plain")
    silent("plain-root-offset", plain(offsets={"Hips": "0.3 0.95 -2"}), motion="as:plain")
    silent("plain-channels-none", edit(plain(rows_for(COLUMNS - 3)), (
        "\t\tOFFSET 0.1 -0.08 0\n\t\tCHANNELS 3 " + JOINT, "\t\tOFFSET 0.1 -0.08 0\n\t\tCHANNELS 0")))
    silent("plain-lower-case", plain().replace("JOINT", "joint").replace("End Site", "end site").replace(
        "rotation", "ROTATION").replace("OFFSET", "offset"), motion="as:plain")
    silent("plain-one-line", " ".join(hierarchy().split("\n")[:2]) + "\n" + "\n".join(
        hierarchy().split("\n")[2:]) + motion(plain_rows()), motion="as:plain")
    silent("name-trailing-blank", plain().replace("JOINT Head", "JOINT Head \t"), motion="as:plain")
    silent("name-characters", plain().replace("LeftArm", "腕.L").replace("Head", "rig:Head"))
    silent("two-sections", plain() + plain(plain_rows(6), offsets={"Head": "0.05 0.4 0"}))


def add_rotations(corpus):
    def risen(name, channels, rows=None, joints=1, first=None, **more):
        text = plain(rows, channels=channels)
        order = next(iter(channels.values()))
        corpus.file(f"{name}.bvh", text)
        corpus.case(name, [f"{name}.bvh"], "mended", [
            note("rotation-order", [line_of(text, channel_line(order)), line_of(text, f" {next(iter(channels))}\n")],
                 count=joints, joint=next(iter(channels)))], smooth=list(channels), **more)

    every = {"Hips": XYZ_ROOT, "Spine": XYZ, "Head": XYZ, "LeftArm": XYZ, "LeftLeg": XYZ}
    risen("rotation-order-all", every, joints=5)
    risen("rotation-order-root", {"Hips": XYZ_ROOT})
    risen("rotation-order-joint", {"Spine": XYZ})
    two = rows_for(COLUMNS - 1)
    risen("rotation-order-xy", {"Spine": "Xrotation Yrotation"}, two)
    risen("rotation-order-xz", {"Spine": "Xrotation Zrotation"}, two)
    risen("rotation-order-yz", {"Spine": "Yrotation Zrotation"}, two)
    risen("rotation-order-root-xz", {"Hips": "Xposition Yposition Zposition Xrotation Zrotation"}, two)
    middle = [89.0, 89.9, 89.999, 89.99999, 90.0, 90.00001, 90.001, 90.1, 91.0, 95.0]
    near = [row[:7] + [middle[frame]] + row[8:] for frame, row in enumerate(plain_rows())]
    risen("rotation-order-gimbal", {"Spine": XYZ}, [[round(number, 5) for number in row] for row in near])
    corpus.cases[-1].details.pop("smooth")  # x and z jump where the middle angle passes 90 degrees
    corpus.cases[-1].details["tolerance"] = {"bones": 3e-5}
    second = plain() + plain(channels={"Spine": XYZ})
    corpus.file("rotation-order-section.bvh", second)
    corpus.case("rotation-order-section", ["rotation-order-section.bvh"], "mended", [
        note("rotation-order", [line_of(second, XYZ), line_of(second, "JOINT Spine", 2)], count=1, joint="Spine")])
    far = [row[:6] + [row[6] + 160.0 * frame, row[7], row[8] - 170.0 * frame] + row[9:]
           for frame, row in enumerate(plain_rows())]
    risen("rotation-order-turns", {"Spine": XYZ}, far)


def add_names(corpus):
    def one(name, text, findings, outcome="mended", motion="as:plain", **more):
        corpus.file(f"{name}.bvh", text)
        corpus.case(name, [f"{name}.bvh"], outcome, findings,
                    "none" if outcome == "refused" else motion, **more)

    text = plain()
    end = "OFFSET 0.01 0.35 0\n\t\t\tCHANNELS 3 Zrotation Xrotation Yrotation\n\t\t\tEnd Site"
    for name, word in (("number", "End Site4"), ("minus", "End Site-7"), ("name", "End Site Toe"),
                       ("joined", "EndSite"), ("underscore", "End_Site")):
        one(f"end-site-text-{name}", edit(text, (end, end.replace("End Site", word))),
            [note("end-site-text", line_of(text, "End Site"))])

    one("brace-glued-name", edit(text, ("Spine\n\t{\n", "Spine{\n")), [note("brace-glued", line_of(text, "Spine"))])
    one("brace-glued-offset", edit(text, ("{\n\tOFFSET 0 0 0", "{OFFSET 0 0 0")), [note("brace-glued", 3)])
    one("brace-glued-closing", edit(text, ("0.2 0.03\n\t\t\t}\n\t\t}", "0.2 0.03\n\t\t\t}}")),
        [note("brace-glued", line_of(text, "0.2 0.03") + 1)])
    one("brace-glued-number", edit(text, ("0.2 0.03\n\t\t\t}", "0.2 0.03}")),
        [note("brace-glued", line_of(text, "0.2 0.03"))])
    last = edit(text, ("-0.82 0.05\n\t\t}\n\t}\n}\n", "-0.82 0}}}\n"))
    one("brace-glued-last", last, [maybe(note("brace-glued", line_of(last, "0}}}")))], "right|mended", "as:end-at-zero")
    zero = edit(text, ("-0.82 0.05", "-0.82 0"))
    one("end-at-zero", zero, [], "right", "walk")

    one("name-blank", edit(text, ("JOINT LeftArm", "JOINT Left Arm")), [note("name-blank", line_of(text, "LeftArm"))],
        names={"LeftArm": "Left_Arm"})
    one("name-blanks", edit(text, ("ROOT Hips", "ROOT The  Hips\tbone")), [note("name-blank", 2)],
        names={"Hips": ["The_Hips_bone", "The__Hips_bone"]})
    one("name-missing-joint", edit(text, ("JOINT Spine", "JOINT")),
        [error("name-missing", line_of(text, "JOINT Spine"))], "refused")
    one("name-missing-root", edit(text, ("ROOT Hips", "ROOT")), [error("name-missing", 2)], "refused")
    one("name-missing-glued", edit(text, ("ROOT Hips\n{", "ROOT {")),
        [error("name-missing", 2), maybe(note("brace-glued", 2))], "refused")
    one("name-duplicate", edit(text, ("JOINT LeftLeg", "JOINT Head")),
        [note("name-duplicate", [line_of(text, "Head"), line_of(text, "LeftLeg")])], "right|mended",
        names={"LeftLeg": None, "Head": None})

    comment = "# made by hand\n" + text
    one("hierarchy-word-comment-first", comment, [note("hierarchy-word", 1)])
    one("hierarchy-word-comment", edit(text, ("\tJOINT Spine", "\t# the back\n\tJOINT Spine")),
        [note("hierarchy-word", line_of(text, "JOINT Spine"))])
    one("hierarchy-word-slashes", edit(text, ("\tJOINT Spine", "\t// the back\n\tJOINT Spine")),
        [note("hierarchy-word", line_of(text, "JOINT Spine"))])
    one("hierarchy-word-unknown", edit(text, ("\tJOINT Spine", "\tSCALE 1 1 1\n\tJOINT Spine")),
        [error("hierarchy-word", line_of(text, "JOINT Spine"), words=["SCALE"])], "refused")


def add_lines(corpus):
    def one(name, text, findings, outcome="mended", motion="walk", **more):
        corpus.file(f"{name}.bvh", text)
        corpus.case(name, [f"{name}.bvh"], outcome, findings,
                    "none" if outcome == "refused" else motion, **more)

    text = plain()
    spine = line_of(text, "JOINT Spine")
    one("offset-missing", edit(text, ("\t\tOFFSET 0 0.3 0.02\n", "")), [note("offset-missing", [spine, spine + 1, spine + 2])],
        motion="as:offset-zero")
    one("offset-zero", plain(offsets={"Spine": "0 0 0"}), [], "right")
    one("offset-late", edit(text, ("\t\tOFFSET 0 0.3 0.02\n\t\tCHANNELS 3 " + JOINT,
                                   "\t\tCHANNELS 3 " + JOINT + "\n\t\tOFFSET 0 0.3 0.02")),
        [note("offset-missing", [spine, spine + 1, spine + 2, spine + 3])], motion="as:plain")
    for name, numbers in (("short", "0 0.3"), ("long", "0 0.3 0.02 1"), ("word", "0 up 0.02")):
        one(f"number-bad-{name}", plain(offsets={"Spine": numbers}), [error("number-bad", spine + 2)], "refused")
    fewer = plain(rows_for(COLUMNS - 3))
    one("channels-missing", edit(fewer, ("\t\tOFFSET 0 0.3 0.02\n\t\tCHANNELS 3 " + JOINT, "\t\tOFFSET 0 0.3 0.02")),
        [note("channels-missing", [spine, spine + 1, spine + 2], joint="Spine")], "right|mended")
    old = "\t\tOFFSET 0 0.3 0.02\n\t\tCHANNELS 3 " + JOINT
    for name, line, word in (("count", "CHANNELS 4 " + JOINT, None), ("unknown", "CHANNELS 3 Zrotation Xrotation Wrotation",
                                                                      "Wrotation"),
                             ("repeated", "CHANNELS 3 Zrotation Xrotation Zrotation", "Zrotation"),
                             ("more", "CHANNELS 2 " + JOINT, None)):
        one(f"channels-bad-{name}", edit(text, (old, "\t\tOFFSET 0 0.3 0.02\n\t\t" + line)),
            [error("channels-bad", spine + 3, **({"words": [word]} if word else {}))], "refused")

    open_head = edit(text, ("0.2 0.03\n\t\t\t}\n\t\t}\n", "0.2 0.03\n\t\t\t}\n"))
    where = list(range(2, line_of(open_head, "MOTION") + 1))
    one("braces-open-indented", open_head, [warning("braces-open", where)], motion="as:plain")
    one("braces-open-end", edit(text, ("0.05\n\t\t}\n\t}\n}\n", "0.05\n\t\t}\n")),
        [warning("braces-open", where, words=["LeftLeg", "Hips"])], "right|mended", "as:plain")
    flat = "\n".join(line.strip() for line in text.splitlines()) + "\n"
    one("braces-open-flat", edit(flat, ("0.05\n}\n}\n}\n", "0.05\n}\n")),
        [warning("braces-open", where, words=["LeftLeg", "Hips"])], "right|mended", "as:plain")
    flat_inside = edit(flat, ("0.2 0.03\n}\n}\n", "0.2 0.03\n}\n"))
    one("braces-open-flat-inside", flat_inside, [warning("braces-open", where)], "right|mended",
        "as:braces-nested")
    one("braces-nested", edit(flat_inside, ("}\nMOTION", "}\n}\nMOTION")), [], "right")
    tabs = tabs_and_blanks(open_head)
    one("braces-open-tabs", tabs, [warning("braces-open", where)], motion="as:plain")
    cut = text[:text.index("MOTION")]
    one("hierarchy-cut-end", cut[:cut.index("\tJOINT LeftLeg")],
        [error("hierarchy-cut", list(range(line_of(text, "JOINT LeftLeg") - 1, line_of(text, "JOINT LeftLeg") + 1)))],
        "refused")
    one("hierarchy-cut-brace", edit(text, ("}\nMOTION", "}\n}\nMOTION")),
        [error("hierarchy-cut", line_of(text, "MOTION"))], "refused")


def tabs_and_blanks(text):
    """The same columns of indentation, with blanks instead of tabs in every second line."""
    head, rest = text.split("MOTION", 1)
    lines = []
    for number, line in enumerate(head.split("\n")):
        depth = len(line) - len(line.lstrip("\t"))
        lines.append((" " * 8 * depth if number % 2 else "\t" * depth) + line.lstrip("\t"))
    return "\n".join(lines) + "MOTION" + rest


def add(corpus):
    add_plain(corpus)
    add_rotations(corpus)
    add_names(corpus)
    add_lines(corpus)
