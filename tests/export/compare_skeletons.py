"""compare_skeletons.py ZKHOST FILE_OR_FOLDER...: imports each capture as nulls and as bones, and checks
that both outputs hold the same joints in the same order, at the same positions in every frame."""

import glob
import os
import subprocess
import sys
import tempfile

import numpy

BOUND = 1e-6  # as a fraction of the figure's size
BONES = ([], ["--no-chain-from-parent"], ["--effector-to-last-bone"])


def pairs(folder):
    """The captures of a folder: each .bvh, and each .amc with the .asf that its name begins with."""
    yield from ([path] for path in sorted(glob.glob(folder + "/**/*.bvh", recursive=True)))
    for skeleton in sorted(glob.glob(folder + "/**/*.asf", recursive=True)):
        stem = skeleton[: -len(".asf")]
        motions = [path for path in sorted(glob.glob(stem + "*.amc"))
                   if os.path.basename(path)[len(os.path.basename(stem)):][:1] in "._-"]
        yield from ([skeleton, motion] for motion in motions)


def imported(zkhost, files, options, folder):
    """The arrays of the import, or None if it failed."""
    path = os.path.join(folder, "out.npz")
    done = subprocess.run([zkhost, "import", *files, *options, "--quiet", "-o", path],
                          capture_output=True, check=False)
    if done.returncode not in (0, 5):
        assert done.returncode in (1, 3), (files, options, done)
        return None
    with numpy.load(path, allow_pickle=False) as data:
        return dict(data)


def difference(nulls, bones):
    """What differs, in a few words; empty if nothing does."""
    for name in ("names", "source_names", "parents", "is_end", "frame_numbers"):
        if not numpy.array_equal(nulls[name], bones[name]):
            return f"{name} differ: {nulls[name]} and {bones[name]}"
    positions = nulls["positions"]
    size = numpy.linalg.norm(positions[0].max(axis=0) - positions[0].min(axis=0))
    worst = numpy.abs(positions - bones["positions"]).max()
    return "" if worst <= BOUND * max(size, 1e-9) else f"positions differ by {worst}"


def main():
    zkhost, *sources = sys.argv[1:]
    captures = [files for source in sources for files in pairs(source)]
    if not captures:
        sys.exit("there is no capture in " + " ".join(sources))
    compared = failed = 0
    with tempfile.TemporaryDirectory() as folder:
        for files in captures:
            nulls = imported(zkhost, files, ["--nulls"], folder)
            if nulls is None:
                continue
            for options in BONES:
                bones = imported(zkhost, files, ["--bones", *options], folder)
                found = "no bones" if bones is None else difference(nulls, bones)
                compared += 1
                if found:
                    print(f"{' '.join(files + options)}: {found}")
                    failed += 1
    print(f"{compared} imports as bones, {failed} unlike the import as nulls")
    return 1 if failed or not compared else 0


sys.exit(main())
