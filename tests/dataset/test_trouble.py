"""Tests that a failure affects only the file that it is about."""

import os
import signal
import stat
import unittest

from data_set import ASF, DataSet, amc, bvh, file_size_limit, main


class Imports(DataSet):
    def put_named(self, *names):
        for name in names:
            self.put(f"takes/{name}.bvh", bvh())

    def test_a_crash_is_named(self):
        self.put_named("a", "abort", "segv", "z")
        _, err = self.convert("takes -j2", status=4, plugin=self.stand_in)
        self.assertEqual(self.statuses(), {"takes/a.bvh": "ok", "takes/abort.bvh": "failed",
                                           "takes/segv.bvh": "failed", "takes/z.bvh": "ok"})
        self.assertEqual(self.errors()["takes/abort.bvh"], "killed by SIGABRT (Aborted)")
        self.assertEqual(self.errors()["takes/segv.bvh"], "killed by SIGSEGV (Segmentation fault)")
        self.assertIn("takes/abort.bvh: killed by SIGABRT (Aborted)\n", err)
        self.assertEqual(self.outputs(), 2)

    def test_an_import_that_hangs_is_killed(self):
        self.put_named("a", "hang", "z")
        self.convert("takes -j1 --time-limit 0.5", status=4, plugin=self.stand_in)
        self.assertEqual(self.errors(), {"takes/hang.bvh": "stopped after the time limit of 0.5 seconds"})
        self.assertEqual(self.outputs(), 2)

    def test_a_time_limit_affects_no_others(self):
        self.put_named("slow1", "slow2", "slow3")
        self.convert("takes -j1 --time-limit 30", plugin=self.stand_in)
        self.convert("takes -j3 --time-limit 0", plugin=self.stand_in)
        self.convert("takes -j3 --time-limit 1e300", plugin=self.stand_in)
        self.convert("takes --time-limit -1", status=2)

    def test_broken_files_affect_no_others(self):
        self.put("takes/good.bvh", bvh())
        self.put("takes/empty.bvh", "")
        self.put("takes/binary.bvh", bytes(range(256)) * 40)
        self.put("takes/cut.bvh", bvh(50)[:-200])
        self.put("takes/s/s.asf", ASF)
        self.put("takes/s/good.amc", amc())
        self.put("takes/s/empty.amc", "")
        self.convert("takes", status=4)
        self.assertEqual({source for source, status in self.statuses().items() if status == "ok"},
                         {"takes/good.bvh", "takes/cut.bvh", "takes/s/good.amc"})
        self.assertEqual(len(self.errors()), 3)

    def test_a_scene_that_an_export_refuses_is_a_failure(self):
        self.put("takes/good.bvh", bvh())
        self.put("takes/nan.bvh", bvh(3).rpartition(" ")[0] + " nan\n")
        self.convert("takes --as-is", status=4, to="glb")
        row = self.index()[1]
        self.assertEqual((row["output"], row["status"], row["joints"]), ("", "failed", "3"))
        self.assertIn("cannot write out/nan.glb: ", row["first error"])
        self.assertEqual(set(self.tree()), {"good.glb", "index.csv", ".zkhost-convert"})

    def test_a_file_that_cannot_be_opened_is_a_failure(self):
        self.put("takes/a.bvh", bvh())
        (self.folder / "takes/gone.bvh").symlink_to("nowhere.bvh")
        os.mkfifo(self.folder / "takes/pipe.bvh")
        (self.folder / "takes/folder.bvh").mkdir()
        self.convert("takes", status=4)
        self.assertEqual(self.errors(), {"takes/gone.bvh": "No such file or directory",
                                         "takes/pipe.bvh": "not a regular file"})

    def test_outputs_do_not_follow_links(self):
        self.put("takes/a.bvh", bvh())
        self.put("takes/b.bvh", bvh())
        self.put("takes/c.bvh", bvh())
        before = (self.folder / "takes/a.bvh").read_text()
        (self.folder / "out").mkdir()
        (self.folder / "out/a.gltf").symlink_to("b.gltf")
        (self.folder / "out/b.bin").symlink_to("../elsewhere.bin")
        self.convert("takes", status=4, to="gltf")
        self.assertEqual(self.errors(), {"takes/a.bvh": "its output a.gltf is a symbolic link",
                                         "takes/b.bvh": "its output b.bin is a symbolic link"})
        for name in ("index.csv", ".zkhost-convert"):
            link = self.folder / "out" / name
            link.unlink(missing_ok=True)
            link.symlink_to("../takes/a.bvh")
            _, err = self.convert("takes", status=3)
            self.assertIn(f"cannot write out/{name}: a symbolic link", err)
            link.unlink()
        self.assertEqual((self.folder / "takes/a.bvh").read_text(), before)
        self.assertFalse((self.folder / "elsewhere.bin").exists())

    def test_a_ledger_that_is_a_fifo_is_not_read(self):
        self.put("takes/a.bvh", bvh())
        (self.folder / "out").mkdir()
        os.mkfifo(self.folder / "out/.zkhost-convert")
        _, err = self.convert("takes --resume", status=3)
        self.assertIn("not a regular file", err)

    def test_loops_of_links_end(self):
        self.put("takes/a/a.bvh", bvh())
        (self.folder / "takes/a/up").symlink_to("..")
        (self.folder / "takes/a/self").symlink_to(".")
        (self.folder / "takes/b").symlink_to("a")
        self.convert("takes")
        self.assertEqual(self.statuses(), {"takes/a/a.bvh": "ok"})

    def test_a_signal_that_was_ignored_stays_ignored(self):
        self.put_samples(2)
        self.convert("takes", prepare=lambda: signal.signal(signal.SIGCHLD, signal.SIG_IGN))


class Folders(DataSet):
    def test_a_file_where_a_folder_is_needed(self):
        self.put("takes/07/a.bvh", bvh())
        self.put("takes/b.bvh", bvh())
        self.put("out/07", "a file")
        self.convert("takes", status=4)
        self.assertEqual(self.statuses(), {"takes/07/a.bvh": "failed", "takes/b.bvh": "ok"})
        self.assertIn("cannot write out/07/a.json", self.errors()["takes/07/a.bvh"])
        self.assertEqual((self.folder / "out/07").read_text(), "a file")

    def test_a_file_where_the_output_folder_is_needed(self):
        self.put("takes/a.bvh", bvh())
        self.put("out", "a file")
        _, err = self.convert("takes", status=3)
        self.assertIn("out", err)
        self.assertEqual((self.folder / "out").read_text(), "a file")

    def test_a_folder_where_an_output_is_needed(self):
        self.put("takes/a.bvh", bvh())
        (self.folder / "out/a.json").mkdir(parents=True)
        self.convert("takes", status=4)
        self.assertEqual(self.errors(), {"takes/a.bvh": "cannot write out/a.json: not a regular file"})

    @unittest.skipIf(os.geteuid() == 0, "may write everywhere")
    def test_a_folder_that_cannot_be_written(self):
        self.put("takes/07/a.bvh", bvh())
        self.put("takes/b.bvh", bvh())
        locked = self.folder / "out/07"
        locked.mkdir(parents=True)
        locked.chmod(stat.S_IRUSR | stat.S_IXUSR)
        self.addCleanup(locked.chmod, stat.S_IRWXU)
        self.convert("takes", status=4)
        self.assertEqual(self.errors(),
                         {"takes/07/a.bvh": "cannot write out/07/a.json: Permission denied"})
        (self.folder / "out").chmod(stat.S_IRUSR | stat.S_IXUSR)
        self.addCleanup((self.folder / "out").chmod, stat.S_IRWXU)
        self.convert("takes", status=3)

    @unittest.skipIf(os.geteuid() == 0, "may read everything")
    def test_a_folder_that_cannot_be_read(self):
        self.put("takes/07/a.bvh", bvh())
        self.put("takes/b.bvh", bvh())
        locked = self.folder / "takes/07"
        locked.chmod(0)
        self.addCleanup(locked.chmod, stat.S_IRWXU)
        self.convert("takes", status=4)
        self.assertEqual(self.errors(), {"takes/07/": "Permission denied"})

    def test_inputs_are_never_overwritten(self):
        self.put("takes/run.bvh", bvh())
        self.put("takes/walk.json", "mine")
        walk = self.put("takes/walk.bvh", bvh())
        before = walk.read_bytes()
        os.link(walk, self.folder / "takes/other.txt")
        (self.folder / "out").mkdir()
        (self.folder / "out/walk.json").symlink_to("../takes/walk.bvh")
        self.convert("takes", status=4)
        self.assertEqual(walk.read_bytes(), before)
        self.assertEqual(self.errors(), {"takes/walk.bvh": "its output would overwrite takes/walk.bvh"})

    def test_a_run_that_cannot_start_leaves_no_folder(self):
        self.put("takes/a.bvh", bvh())
        _, err = self.convert("takes", status=3, prepare=file_size_limit(0), out="new/out")
        self.assertIn("cannot write new/out/.zkhost-convert: File too large", err)
        self.assertFalse((self.folder / "new").exists())


if __name__ == "__main__":
    main()
