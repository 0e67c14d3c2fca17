"""Quirks of an AMC motion."""

from acclaim_asf_cases import adder as pair_adder
from acclaim_asf_cases import radian_frames, radians
from acclaim_base import FRAMES, LIMITS, amc, asf, frames, values
from corpus import edit, error, line_of, maybe, note, warning

HEADER = 4  # lines before the first frame number
HEIGHT = len(frames()[0])
KEEP = list(range(1, FRAMES + 1))


def start(frame):
    """The line with a frame's number, if each frame has as many lines as a plain one."""
    return HEADER + 1 + HEIGHT * (frame - 1)


def within(frame):
    return list(range(start(frame), start(frame + 1) + 1))


def adder(corpus):
    add = pair_adder(corpus, "amc")

    def one(name, moments, findings, outcome="mended", motion="as:plain", skeleton=None, **more):
        text = moments if isinstance(moments, (str, bytes)) else amc(moments)
        add(name, skeleton or asf(), findings, outcome, motion, text, **more)
    return one


def dropped(frame_numbers, bone):
    """The plain frames; those in `frame_numbers`, from 1, have no row of `bone`."""
    return [[line for line in lines if number + 1 not in frame_numbers or line.split()[0] != bone]
            for number, lines in enumerate(frames())]


def rewritten(frame_numbers, bone, change):
    """The plain frames; `change` replaces the row of `bone` in those in `frame_numbers`, from 1."""
    return [[change(line) if number + 1 in frame_numbers and line.split()[0] == bone else line for line in lines]
            for number, lines in enumerate(frames())]


def fewer(line):
    return line.rsplit(" ", 1)[0]


def more_values(line):
    return line + " 12.5"


def add_rates(corpus):
    one = adder(corpus)
    text = amc()
    bare = ":FULLY-SPECIFIED\n:DEGREES\n"
    one("rate-missing", amc(header=bare), [warning("rate-missing")], "right|mended", fps=30)
    corpus.case("rate-missing-fps", ["rate-missing.asf", "rate-missing.amc"], "right|mended", [], "as:plain",
                options=["--fps", "60"], fps=60)
    one("rate-text-fraction", edit(text, ("SECOND 60", "SECOND 29.97")), [note("rate-text", 2)], "right|mended", fps=29.97)
    one("rate-text-after", amc(header=":FULLY-SPECIFIED\n:DEGREES\n:SAMPLES-PER-SECOND 60\n"), [note("rate-text", 4)], fps=60)
    one("rate-text-same-line", amc(header=":FULLY-SPECIFIED :SAMPLES-PER-SECOND 60\n:DEGREES\n"),
        [note("rate-text", 2)], fps=60)
    one("keyword-unknown-amc", edit(text, (":DEGREES", ":CALIBRATED\n:DEGREES")), [note("keyword-unknown", 4)])
    one("angle-units-amc-radians", amc(radian_frames(), ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n:RADIANS\n"),
        [note("angle-units", [4, line_of(asf(), "angle deg")])])
    one("angle-units-amc-degrees", amc(), [note("angle-units", [4, line_of(asf(), "angle deg")])],
        skeleton=radians(asf(angle="rad")))


def add_rows(corpus):
    one = adder(corpus)
    moments = frames()
    other = [lines if number != 2 else [lines[0], lines[3], lines[1], lines[2], *reversed(lines[4:])]
             for number, lines in enumerate(moments)]
    one("row-order", other, [note("row-order", within(3))])
    ghosts = frames(rows={"thumb": lambda frame: [1.5, -2.0], "toe": lambda frame: [3.0] if frame > 4 else None})
    one("bone-unknown", ghosts, [warning("bone-unknown", HEADER + 1 + HEIGHT, words=["thumb", "toe"])])
    front = [[lines[0], "thumb 1.5 -2.0", *lines[1:]] for lines in frames()]
    one("bone-unknown-first", front, [warning("bone-unknown", HEADER + 2)])
    one("bone-without-dof-zero", frames(rows={"hip": lambda frame: ["0", "0.0", "0"]}),
        [note("bone-without-dof", HEADER + 1 + HEIGHT, joint="hip")])
    one("bone-without-dof-moving", frames(rows={"hip": lambda frame: ["0", "2.5", "0"]}),
        [warning("bone-without-dof", HEADER + 1 + HEIGHT, joint="hip")])
    forced = ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n:FORCE-ALL-JOINTS-BE-3DOF\n:DEGREES\n"
    for name, fill, severity in (("zero", "0", note), ("moving", "4.5", warning)):
        padded = {bone: lambda frame, bone=bone, fill=fill: [*values(bone, frame), *[fill] * (3 - len(values(bone, frame)))]
                  for bone in ("head", "hand", "leg")}
        padded["hip"] = lambda frame, fill=fill: [fill] * 3
        one(f"bone-without-dof-forced-{name}", amc(frames(rows=padded), forced), [severity("bone-without-dof", None),
                                                                                maybe(note("keyword-unknown"))])

    wrong = (("bone-missing", lambda numbers: dropped(numbers, "arm")),
             ("values-fewer", lambda numbers: rewritten(numbers, "arm", fewer)),
             ("values-more", lambda numbers: rewritten(numbers, "arm", more_values)))
    for code, make in wrong:
        one(f"{code}-one", make([5]), [warning(code, within(5), joint="arm")], motion="as:held-arm")
        one(f"{code}-two", make([5, 8]), [error(code, within(5))], "refused")
        one(f"{code}-one-of-nine", make([5])[:9], [error(code, within(5))], "refused")
    arm = {"arm": lambda frame: values("arm", 3 if frame == 4 else frame)}
    one("held-arm", frames(rows=arm), [], "right", "walk")
    one("bone-missing-same-frame", [[line for line in lines if number != 4 or line.split()[0] not in ("arm", "leg")]
                                    for number, lines in enumerate(frames())],
        [warning("bone-missing", within(5), count=1)], motion="as:held-arm-leg")
    both = {name: lambda frame, name=name: values(name, 3 if frame == 4 else frame) for name in ("arm", "leg")}
    one("held-arm-leg", frames(rows=both), [], "right", "walk")
    spread = [[line for line in lines if (number, line.split()[0]) not in ((4, "arm"), (7, "leg"))]
              for number, lines in enumerate(frames())]
    one("bone-missing-spread", spread, [error("bone-missing", within(5))], "refused")
    codes = [[fewer(line) if (number, line.split()[0]) == (7, "leg") else line for line in lines]
             for number, lines in enumerate(dropped([5], "arm"))]
    one("bone-missing-values-fewer", codes, [warning("bone-missing", within(5), joint="arm"),
                                             warning("values-fewer", list(range(start(8) - 1, start(9))), joint="leg")],
        motion="as:held-arm-then-leg")
    later = {"arm": lambda frame: values("arm", 3 if frame == 4 else frame),
             "leg": lambda frame: values("leg", 6 if frame == 7 else frame)}
    one("held-arm-then-leg", frames(rows=later), [], "right", "walk")
    one("bone-missing-first", dropped([1], "hand"), [warning("bone-missing", [*range(start(1), start(2) + 1)], joint="hand")],
        motion="as:held-hand-first")
    one("held-hand-first", frames(rows={"hand": lambda frame: values("hand", max(frame, 1))}), [], "right", "walk")
    one("bone-missing-always", dropped(KEEP, "hand"), [warning("bone-missing", None, joint="hand")], "right|mended",
        "as:still-hand")
    one("still-hand", frames(rows={"hand": lambda frame: ["0"]}), [], "right", "walk")


def add_frames(corpus):
    one = adder(corpus)
    moments = frames()
    whole = amc()
    one("frame-cut-rows", whole[:whole.rindex("arm ")], [warning("frame-cut", within(10))], frames=KEEP[:9])
    one("frame-cut-values", whole.rstrip("\n").rsplit(" ", 1)[0] + "\n", [warning("frame-cut", within(10))],
        frames=KEEP[:9])
    one("frame-cut-number", whole + "11\n", [warning("frame-cut", start(11))])
    for name, numbers, at in (("repeat", [1, 2, 3, 3, 4, 5, 6, 7, 8, 9], 4), ("fall", [1, 2, 3, 4, 2, 3, 4, 5, 6, 7], 5),
                              ("gap-long", [1, 2, 3, 4, 5, 2000, 2001, 2002, 2003, 2004], 6)):
        one(f"frame-number-{name}", frames(numbers=numbers), [warning("frame-number", start(at))],
            "mended", "as:plain")
    one("frame-number-gap", frames(numbers=[1, 2, 3, 4, 7, 8, 9, 10, 11, 12]), [note("frame-number", start(5))],
        "right", "walk")
    one("frame-number-late", frames(numbers=list(range(99, 109))), [], "right", "walk")
    one("motion-empty", amc(moments)[:whole.index("1\nroot")], [note("motion-empty")], "right|mended", frames=[])


def add_texts(corpus):
    one = adder(corpus)
    whole = amc()
    names = asf().replace("name arm", "name bras_é").replace("spine head arm", "spine head bras_é").replace(
        "    arm hand", "    bras_é hand")
    renamed = whole.replace("arm ", "bras_é ")
    one("names-utf8", renamed, [], "right", skeleton=names, names={"arm": "bras_é"})
    line = line_of(names, "name bras")
    one("names-windows-1252", renamed.encode("cp1252"),
        [warning("text-encoding", line, file="asf"), warning("text-encoding", start(1) + 4, file="amc")],
        skeleton=names.encode("cp1252"), names={"arm": "bras_é"})
    one("utf8-mark", b"\xef\xbb\xbf" + whole.encode(), [note("byte-order-mark", None, file="asf"),
                                                         note("byte-order-mark", None, file="amc")],
        skeleton=b"\xef\xbb\xbf" + asf().encode())
    marked = [{**finding, "file": file} for file in ("asf", "amc")
              for finding in (note("text-encoding"), maybe(note("byte-order-mark")))]
    one("utf16-mark", b"\xff\xfe" + whole.encode("utf-16-le"), marked, skeleton=b"\xff\xfe" + asf().encode("utf-16-le"))

    head, rest = whole.split(":DEGREES\n")
    one("number-comma", head + ":DEGREES\n" + rest.replace(".", ","), [warning("number-comma", start(1) + 1)])
    mixed = rewritten([3], "arm", lambda line: line.replace(".", ",", 1))
    one("number-comma-mixed", mixed, [error("number-comma", start(3) + 4)], "refused")
    for name, text in (("nan", "nan"), ("ind", "-1.#IND")):
        bad = rewritten([5], "hand", lambda line, text=text: f"hand {text}")
        one(f"number-not-finite-{name}", bad, [warning("number-not-finite", start(5) + 5, joint="hand", count=1)],
            motion="as:held-hand")
    many = {name: lambda frame, name=name: ["nan"] * len(values(name, frame)) for name in ("spine", "arm")}
    one("number-not-finite-many", frames(rows=many), [error("number-not-finite", start(1) + 2)], "refused")
    one("held-hand", frames(rows={"hand": lambda frame: values("hand", 3 if frame == 4 else frame)}), [], "right", "walk")
    glued = rewritten([4], "leg", lambda line: "leg 0.5-7.5")
    one("number-glued", glued, [warning("number-glued", start(4) + 6)], motion="as:glued-apart")
    one("glued-apart", rewritten([4], "leg", lambda line: "leg 0.5 -7.5"), [], "right", "walk")
    zero = asf().replace("direction 0 1 0", "direction .0 1 +0")
    one("numbers-zero", rewritten([4], "leg", lambda line: "leg .0 +0"), [], "right|mended", "as:numbers-zero-twin",
        skeleton=zero)
    one("numbers-zero-twin", rewritten([4], "leg", lambda line: "leg 0 0"), [], "right", "walk")

    limits = asf().replace(LIMITS, "(-20 25)")
    one("limits-exceeded", whole, [note("limits-exceeded", None)], "right", skeleton=limits)


def add(corpus):
    add_rates(corpus)
    add_rows(corpus)
    add_frames(corpus)
    add_texts(corpus)
