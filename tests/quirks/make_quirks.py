#!/usr/bin/env python3
"""Writes the files of the corpus, and table.json with what is expected of each.

usage: make_quirks.py           write all files again; read the difference before committing it
       make_quirks.py --check   exit with status 1 if a file is not as this script would write it
"""

import json
import pathlib
import sys

import acclaim_amc_cases
import acclaim_asf_cases
import acclaim_pair_cases
import bvh_bones_cases
import bvh_hierarchy_cases
import bvh_motion_cases
import bvh_text_cases
from corpus import Corpus

HERE = pathlib.Path(__file__).resolve().parent


def gather():
    bvh, acclaim = Corpus("bvh"), Corpus("acclaim")
    for module in (bvh_hierarchy_cases, bvh_text_cases, bvh_motion_cases, bvh_bones_cases):
        module.add(bvh)
    for module in (acclaim_asf_cases, acclaim_amc_cases, acclaim_pair_cases):
        module.add(acclaim)
    rows = [json.dumps(case.row(), ensure_ascii=False) for case in bvh.cases + acclaim.cases]
    table = "[\n" + ",\n".join(rows) + "\n]\n"
    return {**bvh.files, **acclaim.files, "table.json": table.encode("utf-8")}


def main():
    files = gather()
    present = {str(path.relative_to(HERE)) for folder in ("bvh", "acclaim")
               for path in (HERE / folder).rglob("*") if path.is_file()}
    surplus = sorted(present - set(files))
    if sys.argv[1:] == ["--check"]:
        stale = [name for name, data in files.items()
                 if not (HERE / name).is_file() or (HERE / name).read_bytes() != data]
        for name in stale + surplus:
            print(f"{name}: not as make_quirks.py writes it")
        return 1 if stale or surplus else 0
    for name, data in files.items():
        (HERE / name).parent.mkdir(parents=True, exist_ok=True)
        (HERE / name).write_bytes(data)
    for name in surplus:
        (HERE / name).unlink()
    print(f"{len(files) - 1} files")
    return 0


if __name__ == "__main__":
    sys.exit(main())
