"""Tests of "zkhost convert" with files that are packed by gzip, and with extensions in any letter case."""

import gzip

from data_set import ASF, SAMPLES, DataSet, amc, bvh, main


def packed(text):
    return gzip.compress(text if isinstance(text, bytes) else text.encode(), mtime=0)


class Packed(DataSet):
    def test_outputs_are_those_of_plain_files(self):
        for name in ("walk.bvh", "07/07.asf", "07/07_01.amc"):
            text = (SAMPLES / name.replace("07/07_01", "walk").replace("07/07", "walk")).read_bytes()
            self.put(f"plain/{name}", text)
            self.put(f"packed/{name}.gz", packed(text))
        self.convert("plain", to="glb", out="a")
        self.convert("packed", to="glb", out="b")
        made = self.tree("b")
        for name in ("walk.glb", "07/07_01.glb"):
            # The names of the sources, which are in the JSON at the beginning, have ".gz" at their end.
            plain = self.tree("a")[name]
            self.assertIn(b".gz", made[name])
            self.assertEqual(made[name][-1000:], plain[-1000:])
        self.assertEqual(set(made), {"walk.glb", "07/07_01.glb", "index.csv", ".zkhost-convert"})
        self.assertEqual(self.statuses("b"), {"packed/walk.bvh.gz": "ok", "packed/07/07_01.amc.gz": "ok"})

    def test_a_motion_takes_a_packed_or_a_plain_skeleton(self):
        for folder, skeleton, motion in (("a", ".asf", ".amc.gz"), ("b", ".asf.gz", ".amc"), ("c", ".ASF.GZ", ".Amc")):
            self.put(f"takes/{folder}/07{skeleton}", packed(ASF) if skeleton.lower().endswith(".gz") else ASF)
            self.put(f"takes/{folder}/07_01{motion}", packed(amc()) if motion.endswith(".gz") else amc())
        self.convert("takes")
        self.assertEqual(self.statuses(), {"takes/a/07_01.amc.gz": "ok", "takes/b/07_01.amc": "ok",
                                           "takes/c/07_01.Amc": "ok"})
        self.convert("takes/a/07_01.amc.gz --asf takes/b/07.asf.gz", out="named")
        self.assertEqual(self.statuses("named"), {"takes/a/07_01.amc.gz": "ok"})

    def test_a_packed_file_beside_the_plain_one_has_an_output_of_its_own(self):
        self.put("takes/walk.bvh", bvh())
        self.put("takes/walk.bvh.gz", packed(bvh()))
        self.put("takes/run.bvh.gz", packed(bvh()))
        self.convert("takes")
        self.assertEqual(set(self.tree()) - {"index.csv", ".zkhost-convert"},
                         {"walk.bvh.json", "walk.bvh.gz.json", "run.json"})

    def test_a_packed_file_that_cannot_be_unpacked_fails_alone(self):
        self.put("takes/cut.bvh.gz", packed(bvh())[:-9])
        self.put("takes/plain.bvh.gz", bvh())
        self.put("takes/walk.bvh.gz", packed(bvh()))
        for options in ("", " --as-is"):
            self.convert("takes" + options, status=4, out="out" + options.strip())
            self.assertEqual(self.statuses("out" + options.strip()), {
                "takes/cut.bvh.gz": "failed", "takes/plain.bvh.gz": "failed", "takes/walk.bvh.gz": "ok"})
            errors = self.errors("out" + options.strip())
            self.assertIn("end too early", errors["takes/cut.bvh.gz"])
            self.assertIn("does not contain gzip data", errors["takes/plain.bvh.gz"])

    def test_an_interrupted_run_continues(self):
        self.put("takes/walk.bvh.gz", packed(bvh()))
        self.convert("takes")
        out, _ = self.convert("takes --resume")
        self.assertIn("1 up to date", out)


class LetterCase(DataSet):
    def test_extensions_may_have_any(self):
        self.put("takes/A.BVH", bvh())
        self.put("takes/b.Bvh.GZ", packed(bvh()))
        self.put("takes/07.ASF", ASF)
        self.put("takes/07_01.AMC", amc())
        self.put("takes/s/07.Asf.Gz", packed(ASF))
        self.put("takes/s/07_01.aMc.gZ", packed(amc()))
        self.convert("takes")
        self.assertEqual(set(self.tree()) - {"index.csv", ".zkhost-convert"},
                         {"A.json", "b.json", "07_01.json", "s/07_01.json"})


if __name__ == "__main__":
    main()
