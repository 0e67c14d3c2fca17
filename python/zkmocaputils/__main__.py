"""python3 -m zkmocaputils check FILE ...: says what is wrong with files, without importing them."""

from __future__ import annotations

import argparse
import json
import sys

from . import __version__
from ._reading import check
from ._records import CheckResult

_PARTS = (("joints", "joint"), ("end_sites", "end site"), ("channels", "channel"), ("frames", "frame"))


def _counts(result: CheckResult) -> str:
    parts = [f"{result.facts[key]} {word}{'' if result.facts[key] == 1 else 's'}" for key, word in _PARTS
             if result.facts[key] is not None]
    if result.facts.fps is not None:
        parts.append(f"{result.facts.fps:.6g} frames per second")
    return ", ".join(parts)


def _print(result: CheckResult, as_json: bool) -> None:
    if as_json:
        print(json.dumps(result))
        return
    for finding in result.findings:
        where = f"{finding.line}:{finding.column}: " if finding.line else ""
        file = finding.get("file", result.file)
        print(ascii_controls(f"{file}:{'' if where else ' '}{where}{finding.severity}: {finding.message} [{finding.code}]"))
    if result.ok:
        print(ascii_controls(f"{result.file}: {_counts(result)}"))


def ascii_controls(text: str) -> str:
    """Shows control characters as escapes, so that names in files cannot control a terminal."""
    return "".join(letter if letter.isprintable() or letter == " " else letter.encode("unicode_escape").decode("ascii")
                   for letter in text).encode("utf-8", "replace").decode("utf-8")


def main(arguments: list[str] | None = None) -> int:
    """Returns the exit status: 0 if no file has an error, 1 if one has, 2 if one cannot be opened."""
    parser = argparse.ArgumentParser(prog="python3 -m zkmocaputils", description="Motion-capture takes for Python.")
    parser.add_argument("--version", action="version", version=__version__)
    commands = parser.add_subparsers(dest="command", required=True)
    command = commands.add_parser("check", help="say what is wrong with files, without importing them")
    command.add_argument("files", nargs="+", metavar="FILE", help="a .bvh, .asf or .amc file, also packed (.gz)")
    command.add_argument("--json", action="store_true", help="print an object for each file")
    command.add_argument("--strict", action="store_true", help="warnings are failures too")
    options = parser.parse_args(arguments)
    status = 0
    for file in options.files:
        try:
            result = check(file)
        except (OSError, ValueError) as error:
            print(f"{file}: {error}", file=sys.stderr)
            status = 2
            continue
        _print(result, options.json)
        failing = ("error", "warning") if options.strict else ("error",)
        if any(finding.severity in failing for finding in result.findings):
            status = max(status, 1)
    return status


if __name__ == "__main__":
    sys.exit(main())
