"""Tests that the command lines of a plan write the same outputs as "zkhost convert"."""

import os
import pathlib
import re
import shutil
import subprocess

from data_set import ASF, DataSet, amc, bvh, main

MANUAL = pathlib.Path(__file__).resolve().parents[2] / "docs" / "clusters.md"


class Plan(DataSet):
    def put_data_set(self):
        self.put("takes/07/07.asf", ASF)
        self.put("takes/07/07_01.amc", amc(4))
        self.put("takes/07/07_02.amc", amc(5))
        for name in ("walk", "two words", "it's {} $HOME", "a\nb", "-dash", "\u6b69\u304f"):
            self.put(f"takes/{name}.bvh", bvh(seed=len(name)))

    def plan(self, line="takes", status=0, **how):
        text, err = self.convert(f"{line} --plan", status=status, **how)
        (self.folder / "plan.sh").write_text(text, encoding="utf-8")
        return text, err

    def outputs_of(self, name):
        return {path: content for path, content in self.tree(name).items()
                if path not in ("index.csv", ".zkhost-convert")}

    def check_outputs(self, to, files=1):
        """Checks that convert writes the same outputs as those that the plan wrote to out/, `files` for each take."""
        made = self.outputs_of("out")
        os.rename(self.folder / "out", self.folder / "by_plan")
        self.convert("takes --bones", to=to)
        self.assertEqual(self.outputs_of("out"), made)
        self.assertEqual(len(made), 8 * files)

    def test_it_creates_nothing(self):
        self.put_data_set()
        self.plan()
        self.assertEqual({path.name for path in self.folder.iterdir()}, {"takes", "plan.sh"})

    def test_it_has_one_line_per_import(self):
        self.put_data_set()
        text, _ = self.plan()
        self.assertEqual(text.count("\n"), 8)
        self.assertTrue(all(line.startswith(f"{self.zkhost} import ") for line in text.splitlines()))
        self.assertIn(" import takes/07/07.asf takes/07/07_01.amc ", text)

    def test_a_line_writes_all_formats(self):
        self.put_data_set()
        text, _ = self.plan("takes --bones", to="gltf,npz")
        self.assertIn(" --make-folders -o out/walk.gltf -o out/walk.npz\n", text)
        subprocess.run(["sh", "plan.sh"], cwd=self.folder, check=True, capture_output=True)
        self.check_outputs("gltf,npz", files=3)

    def test_a_shell_runs_it(self):
        self.put_data_set()
        self.plan("takes --bones", to="bvh")
        for shell in ("sh", "bash"):
            subprocess.run([shell, "plan.sh"], cwd=self.folder, check=True, capture_output=True)
        self.check_outputs("bvh")

    def test_gnu_parallel_runs_it(self):
        self.assertIsNotNone(shutil.which("parallel"), "GNU parallel is missing (Debian package parallel)")
        self.put_data_set()
        self.plan("takes --bones", to="glb")
        with open(self.folder / "plan.sh", encoding="utf-8") as plan:
            subprocess.run(["parallel", "--will-cite"], stdin=plan, cwd=self.folder, check=True,
                           capture_output=True, env=dict(os.environ, HOME=str(self.folder)))
        self.check_outputs("glb")

    def run_slurm_task(self, task, tasks):
        """Runs one task of an array with the script of the manual. Returns its exit status and its stderr."""
        script = re.search(r"```bash\n(#!/bin/bash\n#SBATCH.*?)```", MANUAL.read_text(encoding="utf-8"), re.S)
        (self.folder / "job.sh").write_text(script[1], encoding="utf-8")
        run = subprocess.run(["bash", "job.sh"], cwd=self.folder, check=False, capture_output=True,
                             env=dict(os.environ, SLURM_ARRAY_TASK_ID=str(task), SLURM_ARRAY_TASK_COUNT=str(tasks),
                                      SLURM_SUBMIT_DIR=str(self.folder)))
        return run.returncode, run.stderr.decode()

    def test_a_slurm_array_runs_it(self):
        self.put_data_set()
        text, _ = self.plan("takes --bones", to="npz")
        lines, tasks = text.count("\n"), 3
        for task in range(1, tasks + 1):
            status, err = self.run_slurm_task(task, tasks)
            self.assertEqual(status, 0, err)
        self.assertGreater(lines, tasks)
        self.check_outputs("npz")

    def test_a_slurm_task_without_work_succeeds(self):
        self.put("takes/walk.bvh", bvh())
        self.plan()
        self.assertEqual(self.run_slurm_task(2, 3)[0], 0)
        self.assertFalse((self.folder / "out").exists())

    def test_a_slurm_task_fails_if_an_import_fails_or_there_is_no_plan(self):
        self.put_broken("takes/broken.bvh")
        self.plan()
        self.assertEqual(self.run_slurm_task(1, 1)[0], 1)
        (self.folder / "plan.sh").unlink()
        status, err = self.run_slurm_task(1, 1)
        self.assertEqual(status, 1)
        self.assertIn("plan.sh", err)

    def test_convert_writes_the_index_of_its_outputs(self):
        self.put_data_set()
        self.put_broken("takes/broken.bvh")
        self.plan("takes --bones")
        subprocess.run(["sh", "plan.sh"], cwd=self.folder, check=False, capture_output=True)
        out, _ = self.convert("takes --bones --resume", status=4)
        self.assertEqual(out, "9 files: 0 converted, 8 up to date, 1 failed\n  number-bad: 1 file\n  rate-missing: 2 files\nout/index.csv\n")
        os.rename(self.folder / "out", self.folder / "by_plan")
        self.convert("takes --bones", status=4)
        self.assertEqual(self.tree("by_plan"), self.tree("out"))

    def test_it_leaves_out_what_is_done(self):
        self.put_data_set()
        self.convert("takes")
        self.assertEqual(self.plan("takes --resume")[0], "")
        (self.folder / "out/walk.json").unlink()
        self.assertRegex(self.plan("takes --resume")[0], r"^\S+ import takes/walk\.bvh .* -o out/walk\.json\n$")
        self.assertEqual(self.plan("takes --resume --bones")[0].count("\n"), 8)

    def test_jobs_that_cannot_be_run_are_failures(self):
        self.put("takes/x.amc", amc())
        self.put("takes/walk.bvh", bvh())
        text, err = self.plan(status=4)
        self.assertEqual(text.count("\n"), 1)
        self.assertRegex(err, r"^takes/x\.amc: no skeleton")


if __name__ == "__main__":
    main()
