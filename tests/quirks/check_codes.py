#!/usr/bin/env python3
"""Checks that every code in docs/findings.md has a case in the corpus, that the codes of every case are
explained there, and that the page's table of other readers has a row for every BVH file with a finding.

usage: check_codes.py PAGE
"""

import collections
import json
import pathlib
import re
import sys

HERE = pathlib.Path(__file__).resolve().parent


def main():
    page = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")
    headings = re.findall(r"^### `([a-z0-9-]+)`$", page, re.MULTILINE)
    rows = json.loads((HERE / "table.json").read_text(encoding="utf-8"))
    cases = {finding["code"] for row in rows for finding in row["findings"] if not finding.get("optional")}
    problems = [f"{code} is explained {count} times" for code, count in collections.Counter(headings).items() if count > 1]
    problems += [f"{code} has no case in the corpus" for code in headings if code not in cases]
    problems += [f"{code} is not explained" for code in sorted(cases) if code not in headings]
    compared = set(re.findall(r"^\| `([^`]+)` \|", page, re.MULTILINE))
    told = {pathlib.Path(row["files"][0]).name for row in rows if row["files"][0].startswith("bvh/")
            and row["findings"] and "options" not in row and (HERE / row["files"][0]).is_file()}
    problems += [f"{name}: the table of other readers is old; run scripts/compare-readers"
                 for name in sorted(compared ^ told)]
    print("\n".join(problems) or f"{len(headings)} codes, each with an explanation and a case")
    return 1 if problems or not headings else 0


if __name__ == "__main__":
    sys.exit(main())
