"""Quirks of a pair of Acclaim files, the archive's units, and files of other formats."""

from acclaim_asf_cases import adder
from acclaim_base import amc, asf, frames, values
from bvh_base import plain as plain_bvh
from corpus import edit, error, gzip_data, line_of, maybe, note, warning

BARE = ":FULLY-SPECIFIED\n:DEGREES\n"
UNITS = 17.7165  # of the archive's lengths make one metre


def archive_figure(unit="0.45"):
    """The plain figure in the archive's units, which are imported as metres."""
    lines = []
    for line in asf(unit="1.0").splitlines():
        words = line.split()
        if line.startswith("    length"):
            line = f"    length {float(words[1]) * UNITS:g}"
        lines.append(line)
    return edit("\n".join(lines) + "\n", ("  length 1.0", f"  length {unit}"))


def archive_motion(header=BARE):
    def root(frame):
        numbers = values("root", frame)
        return [number * UNITS for number in numbers[:3]] + numbers[3:]
    return amc(frames(rows={"root": root}), header)


def add_archive(corpus):
    one = adder(corpus)
    unit = line_of(asf(), "length 1.0")
    preset = note("preset-cmu", unit)
    one("preset-cmu", archive_figure(), [preset], motion="walk", motion_text=archive_motion(), fps=120)
    one("preset-cmu-zeros", archive_figure("0.450000"), [preset], motion="walk", motion_text=archive_motion(), fps=120)
    rated = archive_motion(":SAMPLES-PER-SECOND 60\n" + BARE)
    one("preset-cmu-rate", archive_figure(), [preset], motion="walk", motion_text=rated, fps=60)
    files = ["preset-cmu.asf", "preset-cmu.amc"]
    corpus.case("preset-cmu-none", files, "mended", [], "walk", options=["--preset", "none"],
                walk={"preset": False}, fps=30)
    corpus.case("preset-cmu-length", files, "mended", [], "walk", options=["--length", "0.1"],
                walk={"length": 0.1}, fps=120)
    corpus.case("preset-cmu-fps", files, "mended", [], "walk", options=["--fps", "50"], fps=50)
    short = edit(archive_figure(), ("length 2.65747", "length 0.12"))
    one("preset-cmu-bone-short", short, [preset, note("bone-short", None, joint="hand")], motion="walk",
        motion_text=archive_motion(), fps=120)


def add_pairs(corpus):
    one = adder(corpus)
    few = [[line for line in lines if line.split()[0] not in ("arm", "head")] for lines in frames()]
    one("pair-mismatch", asf(), [error("pair-mismatch", None)], "refused", motion_text=amc(few))
    other = [[line.replace("arm ", "wing ").replace("head ", "beak ") for line in lines] for lines in frames()]
    one("pair-mismatch-bones", asf(), [error("pair-mismatch", None), maybe(warning("bone-unknown"))], "refused",
        motion_text=amc(other))
    corpus.file("08.asf", asf())
    corpus.file("11_01.amc", amc())
    corpus.file("08_04.amc", amc())
    corpus.case("pair-mismatch-names", ["08.asf", "11_01.amc"], "right", [note("pair-mismatch", None)], "as:plain")
    corpus.case("pair-names", ["08.asf", "08_04.amc"], "right", [], "as:plain")
    large = adder_of_size(corpus)
    large("figure-size", UNITS, [note("figure-size", None)])


def adder_of_size(corpus):
    def one(name, factor, findings):
        skeleton = archive_figure("1.0")

        def root(frame):
            numbers = values("root", frame)
            return [number * factor for number in numbers[:3]] + numbers[3:]
        corpus.file(f"{name}.asf", skeleton)
        corpus.file(f"{name}.amc", amc(frames(rows={"root": root})))
        corpus.case(name, [f"{name}.asf", f"{name}.amc"], "right", findings)
    return one


def add_refused(corpus):
    def refused(name, skeleton, motion, expected):
        files = []
        for extension, data in (("asf", skeleton), ("amc", motion)):
            if data is not None:
                corpus.file(f"{name}.{extension}", data)
                files.append(f"{name}.{extension}")
        corpus.case(name, files, "refused", [expected])

    page = "<!DOCTYPE html>\n<html><body>Not found</body></html>\n"
    text = asf()
    refused("not-asf-bvh", plain_bvh(), amc(), error("not-asf", words=["BVH"]))
    refused("not-asf-html", page, None, error("not-asf", words=["HTML"]))
    refused("not-asf-gzip", gzip_data(text), None, error("not-asf", words=["gzip"]))
    refused("not-asf-no-bones", text[:text.index(":bonedata")], amc(), error("not-asf"))
    refused("not-asf-no-hierarchy", text[:text.index(":hierarchy")], amc(), error("not-asf"))
    refused("not-amc-html", text, page, error("not-amc", words=["HTML"]))
    refused("not-amc-asf", text, text, error("not-amc", words=["ASF"]))
    refused("not-amc-no-number", text, edit(amc(), ("1\nroot 0.0000", "root 0.0000")), error("not-amc"))
    refused("empty-asf", b"", amc(), error("empty", file="asf"))
    refused("empty-amc", text, b"", error("empty", file="amc"))
    corpus.case("unreadable-amc", ["plain.asf", "no-such-file.amc"], "refused", [error("unreadable", file="amc")])
    corpus.case("unreadable-asf", ["no-such-file.asf"], "refused", [error("unreadable", file="asf")])


def add(corpus):
    add_archive(corpus)
    add_pairs(corpus)
    add_refused(corpus)
