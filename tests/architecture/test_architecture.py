#!/usr/bin/env python3
"""Tests that scripts/architecture finds each kind of fault, which is planted in a copy of the tree."""

import collections
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
SCRIPT = SOURCE / "scripts" / "architecture"
PAGE = "docs/architecture.md"
COPIED = (".h", ".cpp", ".inc", ".map", ".cmake")  # sources, and other files that the page names
LONGEST = 400

# `text` is added at the end of `file`, which is created if it does not exist. `line` is the line of the fault in
# `text`, counted from 1. `message` is the beginning of the expected message, which follows the file and the line.
Planted = collections.namedtuple("Planted", "name file text message line", defaults=(1,))

FAULTS = [
    Planted("Upward", "text/utf8.cpp", '#include "export/options.h"',
            '"export/options.h": text/ may not include export/; allowed: nothing'),
    Planted("UpwardInAHeader", "survey/survey.h", '#include "headless/scene.h"',
            '"headless/scene.h": survey/ may not include headless/; allowed: text/, textio/, memory/, threads/, math/'),
    Planted("UpwardInAnIncFile", "math/rotation_kernel.inc", '#include "mocap/mocap_model.h"',
            '"mocap/mocap_model.h": math/ may not include mocap/; allowed: nothing'),
    Planted("Sideways", "bvh/bvh_motion.cpp", '#include "acclaim/node_names.h"',
            '"acclaim/node_names.h": bvh/ may not include acclaim/; allowed: '),
    Planted("HostOfThePlugIn", "plugin/outcome.cpp", '#include "headless/session.h"',
            '"headless/session.h": plugin/ may not include headless/; allowed: '),
    Planted("TestsInTheProduct", "headless/session.cpp", '#include "tests/support/effort.h"',
            '"tests/support/effort.h": headless/ may not include tests/; allowed: '),
    Planted("OtherHeaderOfARoom", "take/planted.cpp", '#include "plugin/import_commands.h"',
            '"plugin/import_commands.h": take/ may not include plugin/; allowed: survey/, '),
    Planted("SpacesInTheDirective", "text/utf8.cpp", '\n #  include "export/options.h"',
            '"export/options.h": text/ may not include export/; allowed: nothing', 2),
    Planted("UnknownRoom", "text/utf8.cpp", '#include "util/planted.h"', f'"util/planted.h": util/ is no room of {PAGE}'),
    Planted("RoomWithoutARow", "util/planted.cpp", "int planted();", f"util/ has sources and is no room of {PAGE}"),
    Planted("NoSuchFile", "text/utf8.cpp", '#include "text/planted.h"', '"text/planted.h": there is no such file'),
    Planted("PathInTheSameFolder", "text/utf8.cpp", '#include "utf8.h"', '"utf8.h": include paths begin at the root'),
    Planted("PathThroughTheFolderAbove", "text/utf8.cpp", '#include "../text/utf8.h"',
            '"../text/utf8.h": include paths begin at the root'),
    Planted("HeaderThatNothingIncludes", "text/planted.h", "int planted();", "only its own source and tests include this header"),
    Planted("SystemHeader", "export/csv.cpp", "#include <unistd.h>",
            "<unistd.h> is a system header; allowed in: cli/, dataset/, files/, textio/string_file.cpp"),
    Planted("SystemHeaderOfAnotherFile", "textio/number.cpp", "#include <fcntl.h>", "<fcntl.h> is a system header; "),
    Planted("SystemHeaderInAFolder", "mocap/mocap_model.cpp", "#include <sys/mman.h>", "<sys/mman.h> is a system header; "),
    Planted("Signals", "survey/survey.cpp", "#include <csignal>",
            "<csignal> is a system header; allowed in: cli/, dataset/, files/"),
    Planted("Paths", "export/csv.cpp", "#include <filesystem>", "<filesystem> is a system header; allowed in: "),
    Planted("PackageOfAnotherRoom", "bvh/bvh_motion.cpp", "#include <fmt/format.h>",
            "<fmt/format.h> is no header of the standard library; allowed in: "),
    Planted("UnknownPackage", "export/csv.cpp", "#include <planted/planted.h>",
            f"<planted/planted.h> is no header of the standard library, and {PAGE} allows it nowhere"),
    Planted("OtherHeaderFirst", "text/api.cpp", '\n#include <string>\n#include "text/api.h"',
            '"text/api.h" is not the first header that it includes', 2),
    Planted("WithoutItsHeader", "text/api.cpp", 'int planted;', '"text/api.h" is not the first header that it includes'),
    Planted("LongDouble", "math/rotation_math.cpp", "// long double\nlong  double planted;", "long double is another type", 2),
    Planted("LongTest", "tests/text/planted.py", "\n" * LONGEST, f"{LONGEST + 1} lines; the most are {LONGEST}",
            LONGEST + 1),
    Planted("FileThatThePageNames", PAGE, "See `text/planted.h`.", "there is no file text/planted.h"),
]

# The script must report nothing about these.
ALLOWED = [
    Planted("Downward", "export/csv.cpp", '#include "text/utf8.h"', None),
    Planted("NamedHeaderOfARoom", "take/planted.cpp", '#include "plugin/contract.h"', None),
    Planted("TestsIncludeEverything", "tests/text/planted.cpp", '#include "export/csv.h"\n#include <unistd.h>', None),
    Planted("SystemHeaderInFiles", "files/links.cpp", "#include <termios.h>\n#include <csignal>", None),
    Planted("PackageWhereItIsAllowed", "export/csv.cpp", "#include <fmt/ranges.h>", None),
    Planted("LongDoubleOfTheReader", "textio/number.cpp", "long double planted;", None),
    Planted("LongDoubleInAText", "math/rotation_math.cpp", 'const char* planted = "long double"; /* long\ndouble */', None),
    Planted("IncludeInAComment", "text/utf8.cpp", '// #include "export/options.h"', None),
]


class Copy(unittest.TestCase):
    """A copy of what the script reads. It is made once, and restored after each test."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.root = pathlib.Path(folder.name) / "tree"
        cls.was_faulty = set(run("check", SOURCE)[1])
        folders = [path for path in SOURCE.iterdir() if path.is_dir() and not path.name.startswith((".", "build", "out"))]
        sources = [path for folder in folders for path in folder.rglob("*") if path.name.endswith(COPIED)]
        for path in [SOURCE / PAGE, *sources]:
            copy = cls.root / path.relative_to(SOURCE)
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(path, copy)

    def plant(self, file, text):
        """Adds the text to the file until the test ends. Returns how many lines the file had before."""
        path = self.root / file
        before = path.read_text(encoding="utf-8") if path.exists() else None
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text((before or "") + text + "\n", encoding="utf-8")
        self.addCleanup(self.restore, path, before)
        return len((before or "").splitlines())

    def restore(self, path, before):
        if before is not None:
            path.write_text(before, encoding="utf-8")
            return
        path.unlink()
        if not any(path.parent.iterdir()):
            path.parent.rmdir()

    def change_page(self, before, after):
        """Replaces a piece of the page until the test ends. Returns the number of its line."""
        path = self.root / PAGE
        text = path.read_text(encoding="utf-8")
        self.assertEqual(text.count(before), 1, f"the page has no single {before!r}")
        path.write_text(text.replace(before, after), encoding="utf-8")
        self.addCleanup(self.restore, path, text)
        return text[:text.index(before)].count("\n") + 1

    def check(self):
        """Returns the exit status, and the faults that the original tree does not have."""
        status, faults = run("check", self.root)
        return status, [fault for fault in faults if fault not in self.was_faulty]


def run(command, root):
    done = subprocess.run([sys.executable, SCRIPT, command, "--root", root], capture_output=True, text=True, check=False)
    if done.stderr:
        raise AssertionError(done.stderr)
    lines = done.stdout.splitlines()
    return done.returncode, [line for line in lines if ":" in line and not line.startswith("no sources yet:")]


class PlantedFaults(Copy):
    def test_each_is_found_at_its_line(self):
        for fault in FAULTS:
            line = self.plant(fault.file, fault.text) + fault.line
            status, faults = self.check()
            self.doCleanups()
            with self.subTest(fault.name):
                self.assertEqual(status, 1)
                self.assertTrue(any(found.startswith(f"{fault.file}:{line}: {fault.message}") for found in faults),
                                f"{fault.file}:{line}: {fault.message} is not among {faults}")

    def test_allowed_includes_are_not_reported(self):
        for case in ALLOWED:
            self.plant(case.file, case.text)
            _, faults = self.check()
            self.doCleanups()
            with self.subTest(case.name):
                self.assertEqual([found for found in faults if found.startswith(f"{case.file}:")], [])

    def test_an_unchanged_copy_has_no_new_fault(self):
        self.assertEqual(self.check()[1], [])

    def test_a_circle_of_headers_is_reported_once_with_its_path(self):
        first = self.plant("text/first.h", '#include "text/second.h"') + 1
        self.plant("text/second.h", '#include "text/third.h"')
        self.plant("text/third.h", '\n#include "text/first.h"')
        self.assertEqual(first, 1)
        self.assertEqual(self.check(), (1, ["text/third.h:2: a circle of headers: text/first.h -> text/second.h -> "
                                            "text/third.h -> text/first.h"]))

    def test_a_source_may_have_400_lines(self):
        lines = (self.root / "text/utf8.h").read_text(encoding="utf-8").count("\n")
        self.plant("text/utf8.h", "\n" * (LONGEST - lines - 1))
        self.assertEqual(self.check()[1], [])
        self.plant("text/utf8.h", "")
        self.assertEqual(self.check()[1], ["text/utf8.h:401: 401 lines; the most are 400"])

    def test_a_new_arrow_puts_the_picture_out_of_date_until_it_is_drawn(self):
        self.plant("headless/transform.cpp", '#include "math/angles.h"')
        status, faults = self.check()
        self.assertEqual(status, 1)
        self.assertEqual(len(faults), 1)
        self.assertRegex(faults[0], rf"^{PAGE}:\d+: the picture is out of date; scripts/architecture draw renews it$")
        page = (self.root / PAGE).read_text(encoding="utf-8")
        self.addCleanup(self.restore, self.root / PAGE, page)
        run("draw", self.root)
        self.assertEqual(self.check()[1], [])

    def test_drawing_again_changes_nothing(self):
        run("draw", self.root)
        drawn = (self.root / PAGE).read_bytes()
        run("draw", self.root)
        self.assertEqual((self.root / PAGE).read_bytes(), drawn)


class PlantedInThePage(Copy):
    def row_of(self, room):
        lines = (self.root / PAGE).read_text(encoding="utf-8").splitlines()
        return next(line for line in lines if line.startswith("| ") and f"| `{room}/` |" in line)

    def expect(self, before, after, message):
        line = self.change_page(before, after)
        status, faults = self.check()
        self.assertEqual(status, 1)
        self.assertIn(f"{PAGE}:{line}: {message}", faults)

    def test_a_row_that_allows_an_upward_arrow(self):
        row = self.row_of("textio")
        self.expect(row, row.replace("`memory/`", "`memory/` `mocap/`"),
                    "textio/ may include mocap/, whose row is not below its own")

    def test_a_row_that_allows_what_is_no_room(self):
        row = self.row_of("textio")
        self.expect(row, row.replace("`memory/`", "`memory/` `util/`"),
                    "textio/ may include util, which is no room of the table")

    def test_a_row_with_too_few_cells(self):
        self.expect("| ground | `host/` |", "| `host/` |", "a row of 3 cells under 4 titles")

    def test_a_stage_whose_function_does_not_exist(self):
        self.expect("`WriteGlb()`", "`WriteGlbs()`", "there is no WriteGlbs() in export/gltf.cpp")

    def test_a_header_that_is_listed_as_unused_and_is_used(self):
        line = self.change_page("| `headless/testing.h` |", "| `headless/testing.h` `headless/scene.h` |")
        self.assertIn(f"{PAGE}:{line}: headless/scene.h is listed as a header that only tests include, but it is used or does not exist",
                      self.check()[1])

    def test_a_page_without_the_picture(self):
        self.change_page("<!-- end of picture -->", "")
        status, faults = self.check()
        self.assertEqual(status, 1)
        self.assertRegex(faults[-1], rf"^{PAGE}:1: no picture between ")


if __name__ == "__main__":
    unittest.main()
