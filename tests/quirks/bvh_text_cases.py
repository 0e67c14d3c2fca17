"""Quirks of a BVH file's bytes: line ends, byte-order marks and encodings; and files of other formats."""

from bvh_base import hierarchy, motion, plain, plain_rows
from corpus import edit, error, gzip_data, line_of, maybe, note, warning


def add_bytes(corpus):
    def silent(name, data):
        corpus.file(f"{name}.bvh", data)
        corpus.case(name, [f"{name}.bvh"], "right", motion="as:plain")

    text = plain()
    silent("line-ends-crlf", text.replace("\n", "\r\n"))
    silent("line-ends-cr", text.replace("\n", "\r"))
    head, rest = text.split("MOTION")
    silent("line-ends-mixed", head.replace("\n", "\r\n") + "MOTION" + rest)
    silent("end-without-line-break", text.rstrip("\n"))
    silent("end-ctrl-z", text + "\x1a")
    silent("end-nul", text + "\0" * 40)
    silent("end-ctrl-z-nul", text + "\r\n\x1a\0\0 \n\0")
    silent("blank-lines", text.replace("\n\tJOINT", "\n\n \t\n\tJOINT") + "\n\n  \n")
    rows = [" ".join(f"{number:.4f}" for number in row) for row in plain_rows()]
    silent("blank-lines-rows", hierarchy() + motion(["\t" + row.replace(" ", "\t") + "  \n" for row in rows], 10))


def add_numbers(corpus):
    corpus.file("numbers-forms.bvh", hierarchy() + motion([
        " ".join(odd_form(number, place) for place, number in enumerate(row)) for row in plain_rows()]))
    corpus.case("numbers-forms", ["numbers-forms.bvh"], "right|mended")
    rows = [row[:4] + [0.0] + row[5:] for row in plain_rows()]
    corpus.file("numbers-zero-twin.bvh", plain(rows))
    corpus.case("numbers-zero-twin", ["numbers-zero-twin.bvh"], "right")
    for name, zero in (("point", ".0"), ("plus", "+0"), ("plus-point", "+.0")):
        text = [" ".join([f"{number:.4f}" for number in row[:4]] + [zero] + [f"{number:.4f}" for number in row[5:]])
                for row in rows]
        corpus.file(f"numbers-zero-{name}.bvh", hierarchy(offsets={"Hips": f"0 {zero} 0"}) + motion(text))
        corpus.case(f"numbers-zero-{name}", [f"numbers-zero-{name}.bvh"], "right|mended",
                    motion="as:numbers-zero-twin")


def odd_form(number, place):
    """The same number with a plus, with an exponent, or without the zero before its point."""
    plain_form = f"{number:.4f}"
    if place % 4 == 0 and number > 0:
        return "+" + plain_form
    if place % 4 == 1:
        return f"{number:.9e}".replace("e-0", "e-00").replace("e+0", "E+00")
    return plain_form.replace("0.", ".", 1) if plain_form.lstrip("-").startswith("0.") else plain_form


def add_encodings(corpus):
    def one(name, data, findings, outcome="mended", motion_of="as:plain", **more):
        corpus.file(f"{name}.bvh", data)
        corpus.case(name, [f"{name}.bvh"], outcome, findings,
                    "none" if outcome == "refused" else motion_of, **more)

    text = plain()
    both = [note("text-encoding"), maybe(note("byte-order-mark"))]
    one("utf8-mark", b"\xef\xbb\xbf" + text.encode(), [note("byte-order-mark")])
    one("utf16-le-mark", b"\xff\xfe" + text.encode("utf-16-le"), both)
    one("utf16-be-mark", b"\xfe\xff" + text.encode("utf-16-be"), both)
    one("utf16-le", text.encode("utf-16-le"), [note("text-encoding")])
    one("utf16-be", text.encode("utf-16-be"), [note("text-encoding")])
    accents = text.replace("LeftArm", "Ärmel").replace("Hips", "Hüfte€")
    wide = accents.replace("\n", "\r\n")
    one("utf16-le-names", b"\xff\xfe" + wide.encode("utf-16-le"), both,
        names={"LeftArm": "Ärmel", "Hips": "Hüfte€"})

    old = accents.encode("cp1252")
    one("names-windows-1252", old, [warning("text-encoding", [2, line_of(text, "LeftArm")])],
        names={"LeftArm": "Ärmel", "Hips": "Hüfte€"})
    hole = text.encode().replace(b"LeftArm", b"Arm\x81\xe9")
    one("names-no-character", hole, [warning("text-encoding", line_of(text, "LeftArm"))],
        names={"LeftArm": "Arm\ufffdé"})
    corpus.case("names-windows-1252-told", ["names-windows-1252.bvh"], "mended", [note("text-encoding")],
                "as:plain", options=["--encoding", "CP1252"], names={"LeftArm": "Ärmel", "Hips": "Hüfte€"})
    japanese = text.replace("LeftArm", "左腕").encode("shift_jis")
    one("names-shift-jis", japanese, [note("text-encoding")], names={"LeftArm": "左腕"},
        options=["--encoding", "SHIFT_JIS"])
    comment = "# für Höfe\n".encode("latin-1") + text.encode()
    one("bytes-outside-names", comment, [note("hierarchy-word", 1), note("text-encoding", 1)])


def add_not_bvh(corpus):
    def refused(name, data, expected, file=None):
        file = file or f"{name}.bvh"
        if data is not None:
            corpus.file(file, data)
        corpus.case(name, [file], "refused", [expected])

    text = plain()
    refused("not-bvh-gzip", gzip_data(text), error("not-bvh", words=["gzip"]))
    refused("not-bvh-html", "<!DOCTYPE html>\n<html><head><title>404</title></head>\n<body>Not found</body></html>\n",
            error("not-bvh", words=["HTML"]))
    refused("not-bvh-asf", ":version 1.10\n:name figure\n:units\n  mass 1\n  length 1\n  angle deg\n",
            error("not-bvh", words=["ASF"]))
    refused("not-bvh-numbers", text[text.index("Time: 0.0333333\n") + 16:], error("not-bvh", words=["number"]))
    refused("not-bvh-no-keyword", edit(text, ("HIERARCHY\n", "")), error("not-bvh"))
    refused("empty", b"", error("empty"))
    refused("unreadable-missing", None, error("unreadable"), "no-such-file.bvh")
    corpus.file("folder.bvh/README", "This folder has the name of a capture.\n")
    refused("unreadable-folder", None, error("unreadable"), "folder.bvh")


def add(corpus):
    add_bytes(corpus)
    add_numbers(corpus)
    add_encodings(corpus)
    add_not_bvh(corpus)
