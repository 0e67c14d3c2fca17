"""Tests that a run can be resumed, however it ended."""

import os
import pathlib
import random
import signal
import time

from data_set import ASF, DataSet, amc, bvh, main


def read(path):
    try:
        return pathlib.Path(path).read_text(encoding="utf-8", errors="replace")
    except OSError:
        return ""


def state(process):
    """Returns the state letter of a process from /proc; empty where there is no such process."""
    return read(f"/proc/{process}/stat").rpartition(") ")[2][:1]


class Resume(DataSet):
    def times(self):
        return {path: path.stat().st_mtime_ns for path in (self.folder / "out").rglob("*.json")}

    def test_complete_and_newer_outputs_are_kept(self):
        self.put_samples(5)
        self.put_broken("takes/broken.bvh")
        self.convert("takes", status=4)
        first, times = self.tree(), self.times()
        out, err = self.convert("takes --resume", status=4)
        self.assertEqual(out, "6 files: 0 converted, 5 up to date, 1 failed\n  number-bad: 1 file\nout/index.csv\n")
        self.assertIn("takes/broken.bvh:4:", err)
        self.assertEqual(self.tree(), first)
        again = self.times()
        broken = self.folder / "out/broken.json"
        self.assertGreater(again.pop(broken), times.pop(broken))
        self.assertEqual(again, times)

    def test_without_the_option_everything_is_made_again(self):
        self.put_samples(3)
        self.convert("takes")
        first, times = self.tree(), self.times()
        self.convert("takes")
        self.assertEqual(self.tree(), first)
        self.assertTrue(all(after > times[path] for path, after in self.times().items()))

    def check_one_is_made(self, count=3, **how):
        out, _ = self.convert("takes --resume", **how)
        self.assertEqual([line for line in out.splitlines() if not line.startswith("  ")],
                         [f"{count} files: 1 converted, {count - 1} up to date", "out/index.csv"])

    def test_a_missing_output_is_made(self):
        self.put_samples(3)
        self.convert("takes")
        first = self.tree()
        (self.folder / "out/1/take001.json").unlink()
        self.check_one_is_made()
        self.assertEqual(self.tree(), first)

    def test_a_cut_output_is_made_again(self):
        self.put_samples(3)
        self.convert("takes", to="gltf")
        first = self.tree()
        for name in ("take001.gltf", "take001.bin"):
            for size in (0, len(first[f"1/{name}"]) - 1):
                os.truncate(self.folder / "out/1" / name, size)
                self.check_one_is_made(to="gltf")
                self.assertEqual(self.tree(), first)

    def test_all_outputs_are_made_again_if_one_of_them_is_not_whole(self):
        self.put_samples(3)
        self.convert("takes", to="gltf,npz")
        first = self.tree()
        self.assertEqual(len(first), 3 * 3 + 2)
        for name in ("take001.gltf", "take001.bin", "take001.npz"):
            path = self.folder / "out/1" / name
            for spoil in (path.unlink, lambda: os.truncate(path, len(path.read_bytes()) - 1),
                          lambda: os.utime(path, (1_500_000_000, 1_500_000_000))):
                spoil()
                self.check_one_is_made(to="gltf,npz")
                self.assertEqual(self.tree(), first)
        times = {path: path.stat().st_mtime_ns for path in (self.folder / "out/1").iterdir()}
        self.convert("takes --resume", to="npz,gltf")
        self.assertEqual({path: path.stat().st_mtime_ns for path in times}, times)

    def test_another_format_makes_everything_again(self):
        self.put_samples(3)
        self.convert("takes", to="glb")
        out, err = self.convert("takes --resume", to="glb,npz")
        self.assertTrue(out.startswith("3 files: 3 converted\n"), out)
        self.assertIn("the options differ from the last run", err)

    def test_without_a_ledger_the_index_names_all_outputs(self):
        self.put_samples(3)
        self.convert("takes", to="glb,npz")
        first = self.tree()
        (self.folder / "out/.zkhost-convert").unlink()
        (self.folder / "out/1/take001.npz").unlink()
        self.check_one_is_made(to="glb,npz")
        self.assertEqual(self.tree(), first)

    def test_an_output_older_than_its_input_is_made_again(self):
        self.put_samples(3)
        self.convert("takes")
        path = self.put("takes/0/take000.bvh", bvh(frames=9))
        later = time.time() + 100
        os.utime(path, (later, later))
        self.check_one_is_made()
        self.assertEqual(self.index()[0]["frames"], "9")

    def test_an_output_older_than_its_skeleton_is_made_again(self):
        skeleton = self.put("takes/07.asf", ASF)
        self.put("takes/07_01.amc", amc())
        self.put("takes/walk.bvh", bvh())
        self.convert("takes")
        later = time.time() + 100
        os.utime(skeleton, (later, later))
        self.check_one_is_made(2)

    def test_the_output_of_a_new_source_is_made(self):
        self.put_samples(2)
        self.convert("takes")
        self.put("takes/2/new.bvh", bvh())
        self.check_one_is_made()

    def test_other_options_make_everything_again(self):
        self.put_samples(3)
        self.convert("takes --bones", out="fresh")
        self.convert("takes")
        out, err = self.convert("takes --resume --bones")
        self.assertEqual(out, "3 files: 3 converted\nout/index.csv\n")
        self.assertIn("the options differ from the last run", err)
        self.assertEqual(self.tree(), self.tree("fresh"))

    def test_without_a_ledger_newer_outputs_are_kept(self):
        self.put_samples(4)
        self.convert("takes")
        first, times = self.tree(), self.times()
        (self.folder / "out/.zkhost-convert").unlink()
        (self.folder / "out/index.csv").unlink()
        (self.folder / "out/0/take000.json").unlink()
        times.pop(self.folder / "out/0/take000.json")
        self.check_one_is_made(4)
        self.assertEqual(self.tree(), first)
        self.assertEqual({path: self.times()[path] for path in times}, times)

    def test_temporary_files_of_killed_processes_are_removed(self):
        self.put_samples(3)
        self.put("out/1/.zkhost-1-0.tmp", "half")
        self.convert("takes --resume")
        self.assert_no_leftovers()


class CtrlC(DataSet):
    def put_slow(self, count=20):
        for number in range(count):
            self.put(f"takes/slow{number:02}.bvh", bvh())

    def check_cancelled(self, run, killed=0):
        """`killed` is how many imports may have been killed after writing their output but before reporting it."""
        out, err = run.communicate(timeout=60)
        self.assertEqual(run.returncode, 130, err)
        self.assertIn(b"cancelled (--resume continues)", out)
        statuses = self.statuses()
        self.assertEqual(set(statuses.values()), {"ok", "cancelled"})
        unheard = self.outputs() - list(statuses.values()).count("ok")
        self.assertIn(unheard, range(killed + 1))
        self.assert_no_leftovers()

    def test_it_ends_cleanly_and_can_be_resumed(self):
        self.put_slow()
        self.convert("takes", out="whole", plugin=self.stand_in)
        for stop in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            run = self.start("takes -j2", out="out", plugin=self.stand_in)
            self.wait_for(lambda: self.outputs() >= 3)
            run.send_signal(stop)
            self.check_cancelled(run)
            self.convert("takes -j3 --resume", plugin=self.stand_in)
            self.assertEqual(self.tree(), self.tree("whole"))
            for path in (self.folder / "out").rglob("*.json"):
                path.unlink()

    def test_a_thread_of_the_plugin_does_not_get_it(self):
        self.put_slow()
        env = dict(os.environ, STAND_IN_THREAD="1")
        run = self.start("takes -j2", env=env, plugin=self.stand_in)
        self.wait_for(lambda: self.outputs() >= 3)
        run.send_signal(signal.SIGINT)
        self.check_cancelled(run)

    def test_the_terminal_may_send_it_to_all_processes(self):
        self.put_slow()
        run = self.start("takes -j2", plugin=self.stand_in)
        self.wait_for(lambda: self.outputs() >= 3)
        os.killpg(run.pid, signal.SIGINT)
        self.check_cancelled(run)

    def test_it_ends_an_import_that_hangs(self):
        self.put("takes/a.bvh", bvh())
        self.put("takes/hang.bvh", bvh())
        run = self.start("takes -j1", plugin=self.stand_in)
        self.wait_for(lambda: self.outputs() >= 1)
        time.sleep(0.2)
        run.send_signal(signal.SIGINT)
        self.check_cancelled(run)
        self.assertEqual(self.statuses(), {"takes/a.bvh": "ok", "takes/hang.bvh": "cancelled"})

    def test_twice_does_no_more_harm_than_once(self):
        self.put_slow()
        run = self.start("takes -j2", plugin=self.stand_in)
        self.wait_for(lambda: self.outputs() >= 3)
        run.send_signal(signal.SIGINT)
        run.send_signal(signal.SIGTERM)
        self.check_cancelled(run, killed=2)

    def test_with_real_outputs(self):
        self.put_samples(12, frames=400, joints=20)
        self.convert("takes", out="whole")
        run = self.start("takes -j2")
        self.wait_for(lambda: self.outputs() >= 2)
        run.send_signal(signal.SIGINT)
        run.communicate(timeout=60)
        self.assertIn(run.returncode, (0, 130))
        self.assert_no_leftovers()
        self.convert("takes --resume")
        self.assertEqual(self.tree(), self.tree("whole"))


def children_of(process):
    return [int(child) for child in read(f"/proc/{process}/task/{process}/children").split()]


def kill_parent(run):
    run.send_signal(signal.SIGKILL)


def kill_group(run):
    os.killpg(run.pid, signal.SIGKILL)


def kill_all(run):
    """Kills zkhost together with its imports, which have process groups of their own."""
    run.send_signal(signal.SIGSTOP)
    for child in children_of(run.pid):
        os.kill(child, signal.SIGKILL)
    run.send_signal(signal.SIGKILL)


class KillDataSet(DataSet):
    # Under the sanitizers each import takes about ten times as long.
    COUNT = 60 if "ZKMOCAP_SLOW_BUILD" in os.environ else 240

    def put_data_set(self):
        """Writes takes of several kinds: some are mended, some have warnings, and some are refused."""
        self.put_samples(self.COUNT, frames=5, joints=4)
        for number in range(0, self.COUNT, 10):
            name = f"takes/{number % 3}/take{number:03}.bvh"
            text = (self.folder / name).read_text()
            self.put(name, text.replace("Zrotation Xrotation Yrotation", "Xrotation Yrotation Zrotation"))
            self.put(f"takes/cut/take{number:03}.bvh", text[:-8])
            self.put_broken(f"takes/broken/take{number:03}.bvh")

    def test_in_two_formats_it_is_resumed_as_if_nothing_had_happened(self):
        self.put_data_set()
        self.convert("takes", status=4, to="glb,npz", out="whole")
        whole = self.tree("whole")
        moments = random.Random()
        for kill in (kill_parent, kill_group, kill_all):
            out = kill.__name__
            outputs, pause = moments.randrange(self.COUNT // 2), moments.uniform(0, 0.02)
            with self.subTest(out, outputs=outputs, pause=pause):
                run = self.start("takes -j2", to="glb,npz", out=out)
                self.wait_for(lambda: self.outputs(out, "*.npz") >= outputs)
                time.sleep(pause)
                kill(run)
                run.communicate()
                self.assertFalse((self.folder / out / "index.csv").exists())
                self.convert("takes --resume", status=4, to="glb,npz", out=out)
                self.assert_no_leftovers(out)
                self.assertEqual(self.tree(out), whole)


class Kill(DataSet):
    def test_at_random_moments(self):
        self.put_samples(16, frames=300, joints=20)
        start = time.monotonic()
        # glTF outputs have two files each, so a kill can come between the two.
        self.convert("takes -j2", out="whole", to="gltf")
        seconds = time.monotonic() - start
        whole = self.tree("whole")
        moments = random.Random(20)
        for _ in range(12):
            run = self.start("takes -j2 --resume", to="gltf")
            time.sleep(moments.uniform(0, seconds / 2))
            run.send_signal(signal.SIGKILL)
            run.communicate()
            self.check_nothing_is_partial(whole)
        self.convert("takes -j2 --resume", to="gltf")
        self.assertEqual(self.tree(), whole)
        self.assert_no_leftovers()

    def hanging_imports(self, run):
        """Returns the children that have loaded the plug-in and sleep; only the call of the plug-in sleeps then."""
        return [child for child in children_of(run.pid)
                if "stand_in_plugin" in read(f"/proc/{child}/maps") and "hang" in read(f"/proc/{child}/cmdline")
                and state(child) == "S"]

    def check_nothing_is_partial(self, whole):
        if not (self.folder / "out").exists():
            return
        for path in (self.folder / "out").rglob("*"):
            name = str(path.relative_to(self.folder / "out"))
            if path.is_file() and not path.name.startswith(".zkhost-"):
                self.assertEqual(path.read_bytes(), whole[name], name)

    def test_of_one_import_affects_no_other(self):
        self.put_samples(6)
        self.put("takes/hang.bvh", bvh())
        run = self.start("takes -j1", plugin=self.stand_in)
        self.wait_for(lambda: self.outputs() >= 4)
        self.wait_for(lambda: self.hanging_imports(run))
        for child in self.hanging_imports(run):
            os.kill(child, signal.SIGKILL)
        out, err = run.communicate(timeout=60)
        self.assertEqual(run.returncode, 4, (out, err))
        self.assertEqual(self.errors(), {"takes/hang.bvh": "killed by SIGKILL (Killed)"})

    def test_of_convert_ends_its_imports(self):
        self.put("takes/hang.bvh", bvh())
        run = self.start("takes", plugin=self.stand_in)
        self.wait_for(lambda: self.hanging_imports(run))
        child = self.hanging_imports(run)[0]
        run.send_signal(signal.SIGKILL)
        run.communicate()

        self.wait_for(lambda: state(child) in ("Z", ""))


if __name__ == "__main__":
    main()
