"""Tests that a full disk stops "zkhost convert", and that the run can be resumed."""

import os
import pathlib
import shlex
import shutil
import subprocess
import unittest

from data_set import LIMIT, DataSet, bvh, file_size_limit, main


class FullDisk(DataSet):
    """The disk is full as soon as a certain file exists: a library that is loaded before the C library lets writes fail."""

    def full(self, when, room=0):
        """Returns the environment of a run whose disk is full when the file exists. Small writes may still succeed."""
        asan = ":".join(filter(None, [os.environ.get("ASAN_OPTIONS"), "verify_asan_link_order=0"]))
        return dict(os.environ, LD_PRELOAD=self.full_disk, FULL_DISK_WHEN=str(self.folder / when),
                    FULL_DISK_ROOM=str(room), ASAN_OPTIONS=asan)

    def test_it_stops_the_run(self):
        self.put_samples(9, joints=30)
        self.convert("takes", to="glb,npz", out="whole")
        # take003 is the second of the sources; only the index and the ledger are small enough afterwards.
        out, err = self.convert("takes -j1", status=3, to="glb,npz", env=self.full("out/0/take003.npz", room=2000))
        self.assertEqual(err, "zkhost: the disk is full: 2 of 9 sources were converted; --resume continues\n")
        self.assertIn("9 files: 2 converted, 1 failed, 6 not converted\n", out)
        self.assertTrue(out.endswith("\nout/index.csv\n"), out)
        self.assertEqual(list(self.statuses().values()), ["ok", "ok", "failed"] + 6 * ["cancelled"])
        self.assertEqual(self.errors(), {"takes/0/take006.bvh": "cannot write out/0/take006.glb: No space left on device"})
        self.assert_no_leftovers()
        out, _ = self.convert("takes --resume", to="glb,npz")
        self.assertIn("9 files: 7 converted, 2 up to date\n", out)
        self.assertEqual(self.tree(), self.tree("whole"))

    def test_it_is_said_once_by_several_imports(self):
        self.put_samples(30, joints=30)
        self.convert("takes", out="whole")
        out, err = self.convert("takes -j8", status=3, env=self.full("out/0/take000.json", room=5000))
        self.assertRegex(err, r"^zkhost: the disk is full: \d+ of 30 sources were converted; --resume continues\n$")
        self.assertEqual(len(self.errors()), 1)
        self.assert_no_leftovers()
        self.convert("takes --resume")
        self.assertEqual(self.tree(), self.tree("whole"))

    def test_an_index_that_was_not_written_is_not_named(self):
        self.put_samples(9)
        self.convert("takes", out="whole")
        for old in (False, True):
            if old:
                self.put("out/index.csv", "old")
            out, err = self.convert("takes -j1", status=3, env=self.full("out/0/take003.json"))
            self.assertEqual(err, "zkhost: the disk is full: 2 of 9 sources were converted, and the index could not be "
                             "written; --resume continues\n")
            self.assertNotIn("index.csv", out)
            self.assertEqual((self.folder / "out/index.csv").exists(), old)
            self.assert_no_leftovers()
            (self.folder / "out/0/take003.json").unlink()
        self.assertEqual((self.folder / "out/index.csv").read_text(), "old")
        self.convert("takes --resume")
        self.assertEqual(self.tree(), self.tree("whole"))

    def test_it_may_be_full_when_all_is_converted(self):
        self.put_samples(3)
        out, err = self.convert("takes -j1", status=3, env=self.full("out/2/take002.json"))
        self.assertIn("the disk is full: 3 of 3 sources were converted, and the index could not be written;", err)
        self.assertTrue(out.startswith("3 files: 3 converted\n"), out)
        self.convert("takes --resume")
        self.assertEqual(len(self.index()), 3)

    def test_a_run_that_cannot_start_leaves_nothing(self):
        self.put_samples(3)
        out, err = self.convert("takes", status=3, env=self.full("takes"))
        self.assertEqual(err, "zkhost: cannot write out/.zkhost-convert: No space left on device\n")
        self.assertEqual(out, "")
        self.assertFalse((self.folder / "out").exists())

    def test_it_ends_running_imports(self):
        self.put("takes/a.bvh", bvh())
        self.put("takes/hang.bvh", bvh())
        self.put("takes/z.bvh", bvh())
        self.convert("takes -j2", status=3, plugin=self.stand_in, env=self.full("out/a.json", room=300))
        self.assertEqual(self.statuses(), {"takes/a.bvh": "ok", "takes/hang.bvh": "cancelled", "takes/z.bvh": "failed"})

    def test_a_limit_of_file_sizes_stops_nothing(self):
        self.put("takes/large.bvh", bvh(frames=3000))
        self.put("takes/small.bvh", bvh())
        self.put("out/large.json", "old")
        self.convert("takes -j1", status=4, prepare=file_size_limit(100_000))
        self.assertEqual(self.statuses(), {"takes/large.bvh": "failed", "takes/small.bvh": "ok"})
        self.assertIn("cannot write out/large.json: File too large", self.errors()["takes/large.bvh"])
        self.assertEqual((self.folder / "out/large.json").read_text(), "old")
        self.assert_no_leftovers()
        self.convert("takes --resume")
        self.assertEqual(set(self.statuses().values()), {"ok"})

    def test_an_index_above_the_limit_of_file_sizes_is_an_error(self):
        self.put_samples(40)
        self.put("out/index.csv", "old")
        out, err = self.convert("takes", status=3, prepare=file_size_limit(1000), plugin=self.stand_in)
        self.assertIn("cannot write out/index.csv: File too large\n", err)
        self.assertNotIn("index.csv", out)
        self.assertEqual((self.folder / "out/index.csv").read_text(), "old")
        self.assert_no_leftovers()

    def test_the_two_files_of_a_gltf_are_replaced_together(self):
        self.put("takes/w.bvh", bvh())
        self.convert("takes --no-mesh", to="gltf")
        pair = {name: content for name, content in self.tree().items() if name.startswith("w.")}
        # The .bin file stays below the limit, and the .gltf file, which describes many joints, does not.
        self.put("takes/w.bvh", bvh(frames=3, joints=60))
        self.convert("takes --no-mesh", to="gltf", status=4, prepare=file_size_limit(12_000))
        self.assertIn("cannot write out/w.gltf: File too large", self.errors()["takes/w.bvh"])
        after = self.tree()
        self.assertEqual({name: after[name] for name in pair}, pair)
        self.convert("takes --no-mesh", to="gltf")
        self.assertLess(len(self.tree()["w.bin"]), 12_000)
        self.assertGreater(len(self.tree()["w.gltf"]), 12_000)

    @unittest.skipUnless(pathlib.Path("/dev/full").exists(), "no full device")
    def test_a_full_stdout_is_an_error(self):
        self.put("walk.bvh", bvh())
        with open("/dev/full", "w", encoding="ascii") as full:
            run = subprocess.run(self.words("walk.bvh"), cwd=self.folder, stdout=full,
                                 stderr=subprocess.PIPE, check=False)
        self.assertEqual(run.returncode, 3)
        self.assertEqual(self.statuses(), {"walk.bvh": "ok"})


class SmallFileSystem(DataSet):
    """A small file system is mounted over the output folder, where users may do that in a namespace of their own."""

    UNSHARE = ("unshare", "--mount", "--map-root-user", "sh", "-c")

    def setUp(self):
        super().setUp()
        (self.folder / "out").mkdir()
        may_mount = shutil.which("unshare") and subprocess.run(
            [*self.UNSHARE, "mount -t tmpfs -o size=64k none out"], cwd=self.folder, capture_output=True, check=False)
        if not may_mount or may_mount.returncode != 0:
            self.skipTest("no file system can be mounted here")

    def test_a_run_stops_and_can_be_resumed(self):
        self.put_samples(60, frames=20)
        self.convert("takes", to="glb,npz", out="whole")
        run = shlex.join(self.words("takes -j2", to="glb,npz"))
        script = f"""
            mount -t tmpfs -o size=300k none out || exit 99
            {run} > first.out 2> first.err
            echo $? > first.status
            cp -a out first
            mount -o remount,size=30m out || exit 99
            {run} --resume && cp -a out second
        """
        done = subprocess.run([*self.UNSHARE, script], cwd=self.folder, capture_output=True, timeout=LIMIT, check=False)
        self.assertEqual(done.returncode, 0, done)
        first = {name: (self.folder / f"first.{name}").read_text() for name in ("out", "err", "status")}
        self.assertEqual(first["status"], "3\n", first)
        self.assertRegex(first["err"], r"^zkhost: the disk is full: \d+ of 60 sources were converted.*; --resume continues\n$")
        has_index = (self.folder / "first/index.csv").exists()
        self.assertEqual(first["out"].endswith("\nout/index.csv\n"), has_index)
        self.assert_no_leftovers("first")
        whole = self.tree("whole")
        for name, content in self.tree("first").items():
            if name not in ("index.csv", ".zkhost-convert"):
                self.assertEqual(content, whole[name], name)
        self.assertEqual(self.tree("second"), whole)


if __name__ == "__main__":
    main()
