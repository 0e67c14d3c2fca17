"""Tests of the outputs, the index and the usage of "zkhost convert"."""

import os
import pty
import shlex
import subprocess

from data_set import ASF, SAMPLES, TOOK, DataSet, amc, bvh, main


class Outputs(DataSet):
    def test_the_tree_is_kept(self):
        self.put("takes/07/07.asf", ASF)
        self.put("takes/07/07_01.amc", amc())
        self.put("takes/walk.BVH", bvh())
        self.put("takes/notes.txt", "nothing")
        out, err = self.convert("takes")
        self.assertEqual(set(self.tree()), {"07/07_01.json", "walk.json", "index.csv", ".zkhost-convert"})
        self.assertEqual(out, "2 files: 2 converted\n  rate-missing: 1 file\nout/index.csv\n")
        self.assertRegex(err, r"^takes/07/07_01.amc: warning: .* \[rate-missing\]\n$")

    def test_each_is_what_import_makes(self):
        for name in ("walk.asf", "walk.amc", "walk.bvh"):
            self.put(f"takes/{name}", (SAMPLES / name).read_bytes())
        for to in ("glb", "gltf", "fbx", "bvh", "csv", "npz", "json"):
            options = "--bones --no-group"
            if to != "json":
                options += " --scale 0.5 --up z"
            if to in ("glb", "gltf", "fbx"):
                options += " --no-mesh"
            self.convert(f"takes {options}", to=to, out=to)
            made = self.tree(to)
            for files, name in (("takes/walk.bvh", "walk.bvh"), ("takes/walk.asf takes/walk.amc", "walk.amc")):
                stored = ["--provenance"] if to in ("glb", "gltf", "fbx", "npz") else []
                subprocess.run([self.zkhost, "import", *files.split(), *options.split(), *stored, "--plugin", self.plugin,
                                "--progress", "off", "--make-folders", "-o", f"alone/{to}/{name}.{to}"],
                               cwd=self.folder, check=True, capture_output=True)
            alone = self.tree(f"alone/{to}")
            self.assertEqual(set(made) - set(alone), {"index.csv", ".zkhost-convert"})
            self.assertEqual({name: made[name] for name in alone}, alone)
            self.assertEqual(len(alone), 4 if to == "gltf" else 2)

    def test_several_formats_come_from_one_import(self):
        for name in ("walk.asf", "walk.amc", "run.bvh"):
            self.put(f"takes/{name}", (SAMPLES / name.replace("run", "walk")).read_bytes())
        self.put_broken("takes/07/broken.bvh")
        self.convert("takes", status=4, to="npz,gltf,json")
        self.assertEqual({row["source"]: row["output"] for row in self.index()},
                         {"takes/07/broken.bvh": "07/broken.json", "takes/run.bvh": "run.gltf|run.npz|run.json",
                          "takes/walk.amc": "walk.gltf|walk.npz|walk.json"})
        made = self.tree()
        alone = {}
        for to in ("gltf", "npz", "json"):
            self.convert("takes", status=4, to=to, out=to)
            alone.update(self.tree(to))
        self.assertEqual(set(made), set(alone))
        own = ("index.csv", ".zkhost-convert")
        self.assertEqual({name: made[name] for name in made if name not in own},
                         {name: alone[name] for name in alone if name not in own})

    def test_the_order_of_formats_does_not_matter(self):
        self.put_samples(3)
        self.convert("takes", to="glb,npz", out="one")
        self.convert("takes --to GLB", to="npz,glb", out="other")
        self.assertEqual(self.tree("one"), self.tree("other"))

    def test_bytes_do_not_depend_on_the_number_of_processes(self):
        self.put_samples(20)
        self.put_broken("takes/1/broken.bvh")
        self.convert("takes -j1", status=4, out="one", to="glb")
        self.convert("takes -j7", status=4, out="seven", to="glb")
        self.convert("takes", status=4, out="as_many_as_cores", to="glb")
        self.assertEqual(self.tree("one"), self.tree("seven"))
        self.assertEqual(self.tree("one"), self.tree("as_many_as_cores"))

    def test_bytes_do_not_depend_on_the_order_of_paths(self):
        self.put_samples(6)
        self.convert("takes/0 takes/1 takes/2", out="one")
        self.convert("takes/2 takes/0 takes/1", out="other")
        self.assertEqual(self.tree("one"), self.tree("other"))

    def test_nothing_is_written_outside_the_folder(self):
        self.put("takes/x.bvh", bvh().replace("J1", "../../../J1").replace("J2", "/etc/J2"))
        self.convert("takes")
        self.assertEqual({path.name for path in self.folder.iterdir()}, {"takes", "out"})

    def test_names_may_have_any_characters(self):
        names = ["two words.bvh", "it's.bvh", "-dash.bvh", "a\nb.bvh", "quote\"comma,.bvh",
                 "\u6b69\u304f.bvh", "$HOME `ls`.bvh", "{}.bvh", "\x1b[31mred.bvh"]
        for name in names:
            self.put(f"takes/{name}", bvh())
        self.convert("takes")
        self.assertEqual(self.statuses(), {f"takes/{name}": "ok" for name in names})
        for name in names:
            self.assertTrue((self.folder / "out" / name.replace(".bvh", ".json")).exists(), name)

    def test_the_index_is_readable_despite_a_name_that_is_not_utf8(self):
        path = os.fsencode(self.folder / "takes") + b"/\xe9.bvh"
        self.put("takes/a.bvh", bvh())
        with open(path, "w", encoding="ascii") as file:
            file.write(bvh())
        self.convert("takes")
        self.assertEqual(self.statuses(), {"takes/a.bvh": "ok", "takes/\ufffd.bvh": "ok"})
        self.assertTrue(os.path.exists(os.fsencode(self.folder / "out") + b"/\xe9.json"))

    def test_a_path_that_begins_with_a_dash_is_a_file(self):
        self.put("-x.bvh", bvh())
        subprocess.run([self.zkhost, "convert", "--to", "json", "--out-dir", "out", "--plugin",
                        self.plugin, "--", "-x.bvh"], cwd=self.folder, check=True, capture_output=True)
        self.assertEqual(self.statuses(), {"-x.bvh": "ok"})


class Index(DataSet):
    def test_it_lists_the_outcome_of_each_job(self):
        self.put("takes/07.asf", ASF)
        self.put("takes/07_01.amc", amc(5))
        self.put("takes/bad.amc", amc().replace("upper", "lower 1"))
        self.put("takes/walk.bvh", bvh(frames=11, joints=4))
        self.put("takes/two.bvh", bvh(3) + bvh(7))
        self.put("takes/part.bvh", bvh(3) + bvh(7).replace("OFFSET 0 1 0", "OFFSET 0 up 0"))
        self.put_broken("takes/broken.bvh")
        self.put("takes/alone/s.asf", ASF)
        self.put("takes/none/x.amc", amc())
        out, err = self.convert("takes --as-is", status=4)
        rows = {row["source"]: list(row.values())[1:8] for row in self.index()}
        self.assertEqual({(row["warnings"], row["findings"]) for row in self.index() if row["status"] == "ok"},
                         {("0", "")})
        self.assertEqual(rows["takes/07_01.amc"], ["07_01.json", "ok", "2", "5", "30", "0.166667", ""])
        self.assertEqual(rows["takes/walk.bvh"], ["walk.json", "ok", "4", "11", "20", "0.55", ""])
        self.assertEqual(rows["takes/two.bvh"], ["two.json", "ok", "6", "7", "20", "0.35", ""])
        self.assertEqual(rows["takes/alone/s.asf"], ["alone/s.json", "ok", "2", "0", "", "", ""])
        self.assertEqual(rows["takes/part.bvh"][:6], ["part.json", "partial", "3", "3", "20", "0.15"])
        self.assertRegex(rows["takes/part.bvh"][6], r"^ERROR \(LINE \d+\): Expected a float value for OFFSET y$")
        # The JSON record of a failed import is an output too.
        self.assertEqual(rows["takes/broken.bvh"], ["broken.json", "failed", "", "", "", "",
                                                    "ERROR (LINE 4): Expected a float value for OFFSET y"])
        self.assertEqual(rows["takes/none/x.amc"][:6], ["", "failed", "", "", "", ""])
        self.assertIn("no skeleton", rows["takes/none/x.amc"][6])
        self.assertEqual(list(rows), sorted(rows))
        self.assertIn("takes/broken.bvh: ERROR (LINE 4): Expected a float value for OFFSET y\n", err)
        failures = [row for row in self.index() if row["status"] != "ok"]
        self.assertEqual(err.count("\n"), len(failures))
        self.assertRegex(out, r"^\d files: \d converted, 1 imported in part, \d failed\nout/index.csv\n$")

    def test_it_lists_what_the_survey_found(self):
        self.put("takes/07.asf", ASF)
        self.put("takes/07_01.amc", amc())
        self.put("takes/walk.bvh", bvh())
        self.put("takes/cut.bvh", bvh(50)[:-200])
        self.put("takes/xyz.bvh", bvh().replace("Zrotation Xrotation Yrotation", "Xrotation Yrotation Zrotation"))
        self.put_broken("takes/broken.bvh")
        out, err = self.convert("takes", status=4)
        rows = {row["source"]: (row["status"], row["warnings"], row["findings"]) for row in self.index()}
        self.assertEqual(rows, {
            "takes/07_01.amc": ("ok", "1", "rate-missing"),
            "takes/walk.bvh": ("ok", "0", ""),
            "takes/cut.bvh": ("ok", "2", "frames-fewer row-cut"),
            "takes/xyz.bvh": ("ok", "0", "rotation-order"),
            "takes/broken.bvh": ("failed", "0", "number-bad")})
        self.assertRegex(self.errors()["takes/broken.bvh"], r"^4:10: error: .* \[number-bad\]$")
        # Errors and warnings are printed during the run; notes are only in the index.
        self.assertEqual(sorted(line.split(":")[0] for line in err.splitlines()),
                         ["takes/07_01.amc", "takes/broken.bvh", "takes/cut.bvh", "takes/cut.bvh"])
        for line in ("frames-fewer: 1 file", "number-bad: 1 file", "rotation-order: 1 file"):
            self.assertIn(f"\n  {line}\n", out)

    def test_a_strict_run_refuses_what_is_warned_of(self):
        self.put("takes/cut.bvh", bvh(50)[:-200])
        _, err = self.convert("takes --strict", status=4)
        self.assertRegex(self.errors()["takes/cut.bvh"], r" warning: .* \[[a-z-]+\]$")
        self.assertNotIn("takes/cut.bvh: ", err)

    def test_an_error_in_the_skeleton_names_it(self):
        self.put("takes/07.asf", "no skeleton")
        self.put("takes/07_01.amc", amc())
        self.convert("takes", status=4)
        self.assertRegex(self.errors()["takes/07_01.amc"], r"^takes/07\.asf: error: .* \[not-asf\]$")

    def test_the_rate_that_is_asked_for_is_in_it(self):
        self.put("walk.bvh", bvh(10))
        self.convert("walk.bvh --fps 50")
        self.assertEqual([self.index()[0][key] for key in ("frames", "fps", "seconds")], ["10", "50", "0.2"])

    def test_options_for_acclaim_are_for_acclaim_alone(self):
        self.put("takes/walk.bvh", bvh())
        self.put("takes/a.asf", ASF)
        self.put("takes/a.amc", amc())
        self.convert("takes --preset cmu --limits")
        rates = {row["source"]: row["fps"] for row in self.index()}
        self.assertEqual(rates, {"takes/a.amc": "120", "takes/walk.bvh": "20"})


class Collisions(DataSet):
    def test_two_formats_of_one_name_keep_their_extensions(self):
        for name, content in (("w.bvh", bvh()), ("w.asf", ASF), ("w.amc", amc())):
            self.put(f"takes/{name}", content)
        self.convert("takes")
        self.assertEqual({row["source"]: row["output"] for row in self.index()},
                         {"takes/w.amc": "w.amc.json", "takes/w.bvh": "w.bvh.json"})

    def test_names_that_differ_by_case_alone_are_refused(self):
        self.put("takes/Walk.bvh", bvh())
        self.put("takes/walk.BVH", bvh())
        self.put("takes/run.bvh", bvh())
        _, err = self.convert("takes", status=4)
        self.assertEqual(self.statuses(), {"takes/Walk.bvh": "failed", "takes/walk.BVH": "failed",
                                           "takes/run.bvh": "ok"})
        self.assertEqual(self.outputs(), 1)
        self.assertIn("would collide with that of takes/walk.BVH", err)

    def test_one_relative_path_from_two_folders_is_refused(self):
        for name in ("a/w.bvh", "b/w.bvh", "a/run.bvh"):
            self.put(name, bvh())
        self.convert("a b", status=4)
        self.assertEqual(self.statuses(), {"a/w.bvh": "failed", "b/w.bvh": "failed", "a/run.bvh": "ok"})
        self.assertEqual(self.outputs(), 1)

    def test_a_folder_may_be_called_anything(self):
        for number, folder in enumerate(("[a,b]", "[]", "-j")):
            self.put(f"{folder}/{number}.bvh", bvh())
        self.convert("[a,b] [] ./-j")
        self.assertEqual(set(self.statuses()), {"./[a,b]/0.bvh", "./[]/1.bvh", "./-j/2.bvh"})

    def test_no_output_gets_the_name_of_the_index(self):
        self.put("takes/index.bvh", bvh())
        self.convert("takes", to="csv")
        self.assertEqual([row["output"] for row in self.index()], ["index.bvh.csv"])

    def test_outputs_do_not_become_inputs(self):
        for name, content in (("w.bvh", bvh()), ("07.asf", ASF), ("07_1.amc", amc())):
            self.put(f"takes/{name}", content)
        before = self.tree("takes")
        _, err = self.convert("takes", status=2, to="npz,bvh", out="takes")
        self.assertIn("takes/w.bvh: its output would overwrite takes/w.bvh\n", err)
        self.assertIn("takes/07_1.amc: its output would be in an input folder", err)
        self.assertEqual(self.tree("takes"), before)
        # An output folder inside the input folder is not searched.
        for _ in range(2):
            self.convert("takes", to="bvh", out="takes/out")
            self.assertEqual(len(self.index("takes/out")), 2)


class Usage(DataSet):
    def test_wrong_usage_runs_nothing(self):
        self.put("walk.bvh", bvh())
        self.put("empty/notes.txt", "")
        for line in ("none.bvh", "none", "empty", "empty/notes.txt", "walk.bvh --asf none.asf",
                     "walk.bvh --jobs 0", "walk.bvh --scale no", "walk.bvh --tree"):
            self.convert(line, status=2)
        self.convert("walk.bvh", status=2, to="obj")
        self.convert("walk.bvh", status=2, plugin="none.so")
        self.assertFalse((self.folder / "out").exists())

    def test_nothing_is_written_if_every_file_is_refused(self):
        self.put("takes/a.amc", amc())
        self.put("takes/b.amc", amc())
        for line in ("takes", "takes --resume", "takes --plan"):
            out, err = self.convert(line, status=2, out="new/out")
            self.assertEqual(out, "")
            self.assertEqual([text[:18] for text in err.splitlines()[:2]], ["takes/a.amc: no sk", "takes/b.amc: no sk"])
            self.assertIn("zkhost: nothing to convert: every file was refused\n", err)
            self.assertFalse((self.folder / "new").exists())

    def test_nothing_is_written_if_the_output_folder_cannot_be_created(self):
        self.put("walk.bvh", bvh())
        self.put("file", "mine")
        before = self.tree(".")
        for out in ("file", "file/out", f"new/{'x' * 300}"):
            _, err = self.convert("walk.bvh", status=3, out=out)
            self.assertIn(f"zkhost: cannot create {out}: ", err)
            self.assertEqual(self.tree("."), before)
            self.assertEqual({path.name for path in self.folder.iterdir()}, {"walk.bvh", "file"})

    def test_help_fits_a_screen(self):
        out, _ = self.convert("--help")
        self.assertIn("Usage: zkhost convert", out)
        self.assertLessEqual(out.count("\n"), 40)

    def test_a_terminal_shows_the_progress(self):
        self.put_samples(3)
        self.put_broken("takes/bro\x1bken.bvh")
        control, terminal = pty.openpty()
        run = subprocess.Popen(self.words(shlex.quote("takes")), cwd=self.folder, stdin=terminal,
                               stdout=terminal, stderr=terminal, env=dict(os.environ, TERM="xterm"))
        os.close(terminal)
        shown = b""
        try:
            while piece := os.read(control, 65536):
                shown += piece
        except OSError:
            pass
        self.assertEqual(run.wait(), 4)
        text = shown.decode()
        self.assertTrue(text.startswith("\r\x1b[K0 of 4 done"), text)
        self.assertRegex(text, r"\d of 4 done, 1 failed  \[#+ *\] +\d+%")
        self.assertIn("takes/bro\\x1bken.bvh:4:10: error: ", text)
        self.assertRegex(text.replace("\r\n", "\n"), rf"\r\x1b\[K4 files: 3 converted, 1 failed\n  number-bad: 1 file\n{TOOK}\nout/index.csv\n$")

    def test_the_summary_tells_the_time(self):
        self.put_samples(3)
        self.put_broken("takes/broken.bvh")
        out, _ = self.convert("takes", status=4)
        self.assertEqual(out, "4 files: 3 converted, 1 failed\n  number-bad: 1 file\nout/index.csv\n")
        self.assertTrue(self.took)
        out, _ = self.convert("takes --resume --timing", status=4, to="json")
        self.assertRegex(out, r"^4 files: 0 converted, 3 up to date, 1 failed\n  number-bad: 1 file\n"
                         r"load_ms=[\d.]+\nhash_ms=[\d.]+\nwrite_ms=[\d.]+\nfiles_per_second=[\d.]+\nout/index.csv\n$")
        (self.folder / "takes/broken.bvh").unlink()
        out, _ = self.convert("takes --resume")
        self.assertEqual(out, "3 files: 0 converted, 3 up to date\nout/index.csv\n")
        self.assertEqual(self.took, "")


if __name__ == "__main__":
    main()
