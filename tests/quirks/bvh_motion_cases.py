"""Quirks of a BVH file's motion: its header and its rows."""

from bvh_base import COLUMNS, FRAMES, SMALL, hierarchy, motion, plain, plain_rows, row_text, small_rows
from corpus import edit, error, line_of, maybe, note, warning

TEXT = plain()
FIRST = line_of(TEXT, "Frame Time") + 1  # the line of the first row
ROWS = [row_text(row) for row in plain_rows()]


def adder(corpus):
    def one(name, text, findings, outcome="mended", motion_of="as:plain", **more):
        corpus.file(f"{name}.bvh", text)
        corpus.case(name, [f"{name}.bvh"], outcome, findings,
                    "none" if outcome == "refused" else motion_of, **more)
    return one


def with_rows(rows, **more):
    return hierarchy() + motion(rows, **more)


def changed(rows, index, row):
    return rows[:index] + [row] + rows[index + 1:]


def add_header(corpus):
    one = adder(corpus)
    count, time = line_of(TEXT, "Frames:"), line_of(TEXT, "Frame Time")
    top = line_of(TEXT, "MOTION")
    one("motion-keyword-none", edit(TEXT, ("MOTION\n", "")), [note("motion-keyword", [top, top - 1])])
    one("motion-keyword-no-colon", edit(TEXT, ("Frames: 10", "Frames 10")), [note("motion-keyword", count)])
    one("motion-keyword-joined", edit(TEXT, ("Frame Time:", "FrameTime:")), [note("motion-keyword", time)])
    one("motion-keyword-no-blank", edit(TEXT, ("Frames: 10", "Frames:10"), ("Time: 0", "Time:0")),
        [note("motion-keyword", count)])
    one("motion-keyword-swapped", edit(TEXT, ("Frames: 10\nFrame Time: 0.0333333", "Frame Time: 0.0333333\nFrames: 10")),
        [note("motion-keyword", [count, time])])
    one("frames-missing", edit(TEXT, ("Frames: 10\n", "")), [note("frames-missing", [count, count - 1])])
    one("frames-missing-word", edit(TEXT, ("Frames: 10", "Frames: many")), [note("frames-missing", count)])
    one("frames-fewer", edit(TEXT, ("Frames: 10", "Frames: 25")), [warning("frames-fewer", None)])
    one("frames-fewer-absurd", edit(TEXT, ("Frames: 10", "Frames: 4000000000")), [warning("frames-fewer", None)])
    one("frames-fewer-negative", edit(TEXT, ("Frames: 10", "Frames: -10")), [warning("frames-fewer", None)])
    one("frames-fewer-section", edit(TEXT, ("Frames: 10", "Frames: 25")) + TEXT, [warning("frames-fewer", None)],
        motion_of="as:two-sections-alike")
    one("two-sections-alike", TEXT + TEXT, [], "right", "walk")
    one("frames-more", edit(TEXT, ("Frames: 10", "Frames: 6")), [warning("frames-more", None)])
    one("frames-more-none", edit(TEXT, ("Frames: 10", "Frames: 0")), [warning("frames-more", None)])

    one("frame-time-missing", edit(TEXT, ("Frame Time: 0.0333333\n", "")), [warning("frame-time-missing", [time, time - 1])],
        fps=30)
    for name, words in (("zero", "0"), ("negative", "-0.0333333"), ("word", "fast")):
        one(f"frame-time-missing-{name}", edit(TEXT, ("Time: 0.0333333", "Time: " + words)),
            [warning("frame-time-missing", time)], fps=30)
    corpus.case("frame-time-missing-fps", ["frame-time-missing.bvh"], "mended", [], "as:plain",
                options=["--fps", "60"], fps=60)
    one("frame-time-odd-rate", edit(TEXT, ("Time: 0.0333333", "Time: 30")), [warning("frame-time-odd", time)], "right",
        fps=1 / 30)
    one("frame-time-odd-short", edit(TEXT, ("Time: 0.0333333", "Time: 0.0001")), [warning("frame-time-odd", time)],
        "right", fps=10000)

    one("motion-missing", hierarchy(), [note("motion-missing")], "right|mended", "as:plain", frames=[])
    one("motion-missing-keyword", hierarchy() + "MOTION\n", [note("motion-empty")], frames=[])
    one("motion-empty", with_rows([]), [note("motion-empty")], "right|mended", frames=[])
    one("motion-empty-fewer", with_rows([], count=10), [note("motion-empty"), maybe(warning("frames-fewer"))],
        "mended", frames=[])
    one("surplus-text", TEXT + "\nEnd of file\n", [warning("surplus-text", FIRST + FRAMES + 1)], "right|mended")


def add_lengths(corpus):
    one = adder(corpus)
    keep = list(range(1, FRAMES + 1))
    held = keep[:4] + [4] + keep[5:]
    short = " ".join(ROWS[4].split()[:-1])
    one("row-length-short", with_rows(changed(ROWS, 4, short)), [warning("row-length", FIRST + 4, count=1)], frames=held)
    one("row-length-long", with_rows(changed(ROWS, 4, ROWS[4] + " 7.5")), [warning("row-length", FIRST + 4, count=1)],
        frames=held)
    one("row-length-first", with_rows(changed(ROWS, 0, short)), [warning("row-length", FIRST)], frames=[2] + keep[1:])
    one("row-length-last", with_rows(changed(ROWS, 9, ROWS[9] + " 7.5")), [warning("row-length", FIRST + 9)],
        frames=keep[:9] + [9])
    two = changed(changed(ROWS, 4, short), 7, ROWS[7] + " 1")
    one("row-length-two-of-ten", with_rows(two), [error("row-length", FIRST + 4)], "refused")
    one("row-length-one-of-nine", with_rows(changed(ROWS, 4, short)[:9]), [error("row-length", FIRST + 4)], "refused")
    for frames in (FRAMES, 18):
        counted = [f"{number + 1} {row_text(row)}" for number, row in enumerate(plain_rows(frames))]
        one(f"row-length-counter-{frames}", with_rows(counted), [error("row-length", FIRST, words=["counter"])], "refused")

    small = [row_text(row) for row in small_rows(200)]
    first = SMALL.count("\n") + 4
    one("plain-200", SMALL + motion(small), [], "right", "walk")
    broken = changed(changed(small, 60, small[60] + " 0"), 130, "0 0 0")
    holds = [131 - 1 if number == 131 else 60 if number == 61 else number for number in range(1, 201)]
    one("row-length-two-of-200", SMALL + motion(broken), [warning("row-length", first + 60, count=2)],
        motion_of="as:plain-200", frames=holds)
    one("row-length-two-of-150", SMALL + motion(broken[:150]), [error("row-length", first + 60)], "refused")

    for name, parts in (("thirds", (6, 12)), ("uneven", (5, 9)), ("values", tuple(range(1, COLUMNS)))):
        cuts = [0, *parts, COLUMNS]
        lines = [" ".join(row.split()[a:b]) for row in ROWS for a, b in zip(cuts, cuts[1:])]
        one(f"stream-{name}", with_rows(lines, count=FRAMES), [], "right")

    one("row-cut", TEXT.rstrip("\n")[:-60], [warning("row-cut", FIRST + 9), maybe(warning("frames-fewer"))], frames=keep[:9])
    one("row-cut-fewer", edit(TEXT.rstrip("\n")[:-60], ("Frames: 10", "Frames: 9")), [
        warning("row-cut", FIRST + 9), maybe(warning("frames-more"))], "right|mended", frames=keep[:9])
    one("row-cut-only", with_rows([short], count=1), [
        warning("row-cut", FIRST), note("motion-empty"), maybe(warning("frames-fewer"))], frames=[])


def add_values(corpus):
    one = adder(corpus)
    joint_column = 6  # the first rotation of the spine

    def put(cells, base=None):
        rows = [row.split() for row in (base or ROWS)]
        for (row, column), text in cells.items():
            rows[row][column] = text
        return [" ".join(row) for row in rows]

    glued = put({(3, 6): "0.0-7.5", (3, 7): ""})
    one("number-glued", with_rows([" ".join(row.split()) for row in glued]),
        [warning("number-glued", FIRST + 3)], motion_of="as:glued-apart")
    one("glued-apart", with_rows(put({(3, 6): "0.0", (3, 7): "-7.5"})), [], "right", "walk")
    one("number-glued-powers", with_rows(put({(3, 6): "1.5e-3", (3, 7): "-2E+1"})), [], "right", "walk")
    one("number-glued-count", with_rows(put({(4, 6): "0.0-7.5"})),
        [warning("number-not-finite", FIRST + 4, count=1, joint="Spine")], motion_of="as:held-value")

    commas = [row.replace(".", ",") for row in ROWS]
    one("number-comma", hierarchy() + motion(commas), [warning("number-comma", FIRST)])
    one("number-comma-all", TEXT.replace(".", ","), [warning("number-comma", [line_of(TEXT, "OFFSET 0 0.3"), FIRST])], fps=30)
    points = hierarchy().replace(".", ",") + motion(ROWS)
    one("number-comma-offsets", points, [warning("number-comma", line_of(TEXT, "OFFSET 0 0.3"))])
    mixed = changed(commas, 6, ROWS[6].replace(".", ",", 5))
    one("number-comma-mixed", hierarchy() + motion(mixed), [error("number-comma", FIRST + 6)], "refused")
    one("number-comma-between", hierarchy() + motion([row.replace(" ", ", ") for row in ROWS]),
        [error("number-comma", FIRST)], "refused")

    held = [row.split()[joint_column] for row in ROWS]
    forms = ["nan", "-1.#IND", "inf", "1e999", "none"]
    for name, text in zip(("nan", "ind", "inf", "overflow", "word"), forms):
        one(f"number-not-finite-{name}", with_rows(put({(4, joint_column): text})),
            [warning("number-not-finite", FIRST + 4, count=1, joint="Spine")], motion_of="as:held-value")
    one("held-value", with_rows(put({(4, joint_column): held[3]})), [], "right", "walk")
    one("number-not-finite-first", with_rows(put({(0, joint_column): "nan", (1, joint_column): "NaN"})),
        [warning("number-not-finite", FIRST, count=2, joint="Spine")], motion_of="as:held-first")
    one("held-first", with_rows(put({(0, joint_column): held[2], (1, joint_column): held[2]})), [], "right", "walk")
    whole = {(row, joint_column): "nan" for row in range(FRAMES)}
    one("number-not-finite-channel", with_rows(put(whole)),
        [warning("number-not-finite", FIRST, count=10, joint="Spine")], motion_of="as:held-zero")
    one("held-zero", with_rows(put({key: "0" for key in whole})), [], "right", "walk")
    many = {(row, column): "nan" for row in range(FRAMES) for column in range(6, 11)}
    one("number-not-finite-many", with_rows(put(many)), [error("number-not-finite", FIRST)], "refused")


def add(corpus):
    add_header(corpus)
    add_lengths(corpus)
    add_values(corpus)
