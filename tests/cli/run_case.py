#!/usr/bin/env python3
"""Runs one case of the command line in a temporary folder.

A case is a text file of lines "KEY: VALUE"; "#" begins a comment line.

  copy: NAME [AS]     copies a file of data/ into the folder
  shell: COMMAND      runs a shell command in the folder
  run: ARGUMENTS      runs zkhost; the lines up to the next copy, shell or run belong to this run
                      (${PLUGIN} is the plug-in's path, ${BYTE:E9} the byte 0xE9)
  env: NAME=VALUE     sets a variable for the run (NAME= removes it; ${FOLDER} is the folder's path)
  terminal: COLUMNS   stdout and stderr are a terminal of that width ("tty" below)
  interrupt: REGEX    presses Ctrl-C when the text on the terminal matches
  signal: REGEX       sends SIGINT when stderr matches (hangup: SIGHUP)
  stdin: PATH         stdin is this file of the folder; "closed": stdin is not open
  stop after: NUMBER  stdin is a pipe that stays open; sends SIGINT after this number of blanks, of
                      which zkhost must have read some if they are more than a pipe holds
  stdout: PATH        stdout is written to this path; "closed": stdout is not open
  exit: STATUS        the expected exit status; without this line it is 0
  out: REGEX          a line of stdout matches (also err:, tty:); "out!:" no line matches
  out=: TEXT          stdout is exactly this text, in which \\n and \\t are escapes (also err=:)
  json: FILE EXPR     a Python expression about r, the JSON record in FILE, is true
  files: NAMES        the folder contains exactly these names after the run
"""

import argparse
import fcntl
import json
import os
import pathlib
import pty
import re
import shlex
import signal
import struct
import subprocess
import sys
import tempfile
import termios

HERE = pathlib.Path(__file__).resolve().parent
RUN_KEYS = {"env", "terminal", "interrupt", "signal", "hangup", "stdin", "stop after", "stdout", "exit", "out", "out!", "out=", "err", "err!",
            "err=", "tty", "tty!", "json", "files"}
LIMIT = 120


class Failure(Exception):
    pass


def parse(path):
    """Returns the steps in order: (key, value), or for a run ("run", arguments, [(key, value)])."""
    steps = []
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        key, colon, value = line.partition(":")
        value = value.strip()
        if key in ("copy", "shell"):
            steps.append((key, value))
        elif key == "run":
            steps.append((key, value, []))
        elif key in RUN_KEYS and steps and steps[-1][0] == "run":
            steps[-1][2].append((key, value))
        else:
            raise Failure(f"{path}:{number}: cannot read {line!r}")
        if not colon:
            raise Failure(f"{path}:{number}: no colon in {line!r}")
    return steps


def environment(details):
    variables = dict(os.environ, LC_ALL="", LANG="", TERM="xterm")
    for key, value in details:
        if key == "env":
            name, _, text = value.partition("=")
            if text:
                variables[name] = text
            else:
                variables.pop(name, None)
    return variables


def open_input(name, folder):
    """Returns what Popen takes as stdin. A closed stdin is closed by close_streams."""
    return os.open(folder / name, os.O_RDONLY) if name and name != "closed" else subprocess.DEVNULL


def run_plain(command, folder, variables, interrupt, values, sent=signal.SIGINT):
    stdout = values.get("stdout")
    to_file = stdout and stdout != "closed"
    target = open(stdout, "wb") if to_file else subprocess.PIPE
    closed = [number for number, key in enumerate(("stdin", "stdout")) if values.get(key) == "closed"]

    def close_streams():
        for number in closed:
            os.close(number)

    source = subprocess.PIPE if "stop after" in values else open_input(values.get("stdin"), folder)
    process = subprocess.Popen(command, cwd=folder, env=variables, stdin=source,
                               stdout=target, stderr=subprocess.PIPE, preexec_fn=close_streams, bufsize=0)
    shown = b""
    if "stop after" in values:
        rest = int(values["stop after"])
        while rest > 0:
            rest -= process.stdin.write(b" " * rest)
        process.send_signal(sent)
        process.wait(timeout=LIMIT)
    elif source != subprocess.DEVNULL:
        os.close(source)
    while interrupt:
        piece = process.stderr.read(65536)
        shown += piece
        if re.search(interrupt.encode(), shown):
            process.send_signal(sent)
            interrupt = None
        elif not piece:
            break
    out, err = process.communicate(timeout=LIMIT)
    if to_file:
        target.close()
    return process.returncode, {"out": out or b"", "err": shown + err}


def run_terminal(command, folder, variables, columns, interrupt):
    control, terminal = pty.openpty()
    fcntl.ioctl(terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 40, columns, 0, 0))

    def take_terminal():
        os.setsid()
        fcntl.ioctl(0, termios.TIOCSCTTY, 0)

    process = subprocess.Popen(command, cwd=folder, env=variables, stdin=terminal, stdout=terminal,
                               stderr=terminal, preexec_fn=take_terminal)
    os.close(terminal)
    shown = b""
    while True:
        try:
            piece = os.read(control, 65536)
        except OSError:
            piece = b""
        if not piece:
            break
        shown += piece
        if interrupt and re.search(interrupt.encode(), shown):
            os.write(control, b"\x03")
            interrupt = None
    status = process.wait(timeout=LIMIT)
    os.close(control)
    return status, {"tty": shown.replace(b"\r\n", b"\n")}


def check(details, status, streams, folder):
    problems = []
    expected = [int(value) for key, value in details if key == "exit"] or [0]
    if status != expected[0]:
        problems.append(f"exit status {status}, expected {expected[0]}")
    for key, value in details:
        stream, mark = key.rstrip("!="), key[-1]
        if stream in ("out", "err", "tty"):
            if stream not in streams:
                raise Failure(f"{key}: the run has no such stream")
            text = streams[stream].decode("utf-8", "backslashreplace")
            if mark == "=":
                wanted = value.replace("\\n", "\n").replace("\\t", "\t")
                if text != wanted:
                    problems.append(f"{stream} is not {wanted!r}")
            elif bool(re.search(value, text, re.MULTILINE)) == (mark == "!"):
                problems.append(f"{stream} {'matches' if mark == '!' else 'lacks'} {value!r}")
        elif key == "json":
            name, _, expression = value.partition(" ")
            record = json.loads((folder / name).read_text(encoding="utf-8"))
            if not eval(expression, {"r": record}):
                problems.append(f"{name}: not true: {expression}")
        elif key == "files":
            names = sorted(path.name for path in folder.iterdir())
            if names != sorted(value.split()):
                problems.append(f"the folder holds {names}")
    return problems


def run_step(step, folder, options):
    details = step[2]
    values = dict(details)
    line = step[1].replace("${PLUGIN}", options.plugin)
    line = re.sub(r"\$\{BYTE:(..)\}", lambda byte: os.fsdecode(bytes.fromhex(byte[1])), line)
    command = [options.zkhost, *shlex.split(line)]
    variables = {name: value.replace("${FOLDER}", str(folder)) for name, value in environment(details).items()}
    if "terminal" in values:
        status, streams = run_terminal(command, folder, variables, int(values["terminal"]),
                                       values.get("interrupt"))
    else:
        sent = signal.SIGHUP if "hangup" in values else signal.SIGINT
        status, streams = run_plain(command, folder, variables,
                                    values.get("signal") or values.get("hangup"), values, sent)
    problems = check(details, status, streams, folder)
    if problems:
        for name, text in streams.items():
            problems.append(f"--- {name}\n{text[-4000:].decode('utf-8', 'backslashreplace')}")
        raise Failure(f"zkhost {line}\n" + "\n".join(problems))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("case", type=pathlib.Path)
    parser.add_argument("--zkhost", required=True)
    parser.add_argument("--plugin", required=True)
    options = parser.parse_args()
    try:
        steps = parse(options.case)
        if not any(step[0] == "run" for step in steps):
            raise Failure(f"{options.case}: runs nothing")
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            for step in steps:
                if step[0] == "copy":
                    names = step[1].split()
                    (folder / names[-1]).write_bytes((HERE / "data" / names[0]).read_bytes())
                elif step[0] == "shell":
                    subprocess.run(step[1], shell=True, cwd=folder, check=True,
                                   env=dict(os.environ, DATA=str(HERE / "data"), ZKHOST=options.zkhost))
                else:
                    run_step(step, folder, options)
    except Failure as failure:
        print(failure)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
