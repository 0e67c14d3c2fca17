"""Tests that what "zkhost convert" does for a file does not depend on the number of files."""

import os
import unittest

from data_set import ASF, DataSet, amc, bvh, main

# How often a run calls these functions for each file: it asks once for a process, and neither makes a copy of itself
# nor lists a folder.
FOR_EACH_FILE = {"sendmsg": 1, "fork": 0, "opendir": 0}


class Growth(DataSet):
    def counts(self, count, put, status, **how):
        """Returns how often zkhost itself called each function of the C library to convert `count` files."""
        folder = f"takes{count}"
        for number in range(count):
            put(folder, number)
        counts = self.folder / "counts"
        asan = ":".join(filter(None, [os.environ.get("ASAN_OPTIONS"), "verify_asan_link_order=0"]))
        env = dict(os.environ, LD_PRELOAD=self.counted_calls, COUNTED_CALLS=str(counts), ASAN_OPTIONS=asan)
        self.convert(f"{folder} -j2", status=status, out=f"out{count}", env=env, **how)
        pairs = (line.split() for line in counts.read_text().splitlines())
        return {name: int(calls) for name, calls in pairs}

    def check_calls(self, put, status=0, ignored=(), **how):
        few, more, most = (self.counts(count, put, status, **how) for count in (10, 20, 30))
        for name in few.keys() - set(ignored):
            with self.subTest(name):
                self.assertEqual(more[name] - few[name], most[name] - more[name])
        for name, calls in FOR_EACH_FILE.items():
            self.assertEqual(most[name] - more[name], 10 * calls, name)

    def test_of_takes(self):
        self.check_calls(lambda folder, number: self.put(f"{folder}/take{number:02}.bvh", bvh()))

    def test_of_pairs(self):
        def put(folder, number):
            self.put(f"{folder}/{number:02}.asf", ASF)
            self.put(f"{folder}/{number:02}_01.amc", amc())
        self.check_calls(put)

    def test_of_failures(self):
        self.check_calls(lambda folder, number: self.put_broken(f"{folder}/take{number:02}.bvh"), status=4)

    def test_of_crashes(self):
        # Temporary folders, in which other programs may write, are searched after each crash.
        self.check_calls(lambda folder, number: self.put(f"{folder}/abort{number:02}.bvh", bvh()), status=4,
                         ignored=["readdir"], plugin=self.stand_in)


class Starts(DataSet):
    def test_outputs_do_not_depend_on_how_imports_are_started(self):
        # The stand-in starts a thread, so imports cannot be copies of a process that has loaded it.
        for number in range(4):
            self.put(f"takes/take{number}.bvh", bvh())
        self.put("takes/abort.bvh", bvh())
        fast = self.convert("takes -j2", status=4, plugin=self.stand_in, out="fast")
        env = dict(os.environ, STAND_IN_THREAD="1")
        slow = self.convert("takes -j2", status=4, plugin=self.stand_in, out="slow", env=env)
        self.assertEqual([text.replace("slow", "fast") for text in slow], list(fast))
        index = self.tree("slow")["index.csv"]
        self.assertEqual(index, self.tree("fast")["index.csv"])
        self.assertEqual(self.outputs("slow"), 4)


if __name__ == "__main__":
    main()
