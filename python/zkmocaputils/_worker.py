"""What a process of read_many does."""

from __future__ import annotations

import multiprocessing.connection
import multiprocessing.reduction
import os
import pickle
import signal
from typing import Any

from . import _reading, _sources
from ._motion import Motion, arrays_in
from ._shared import Borrower, Lender, is_supported
from ._take import Take


def portable(work: Any) -> Any:
    """Returns the work with what only this process can read, such as file objects, as bytes."""
    source, values = work
    parts = source if isinstance(source, (tuple, list)) else (source,)
    return tuple(map(_portable_part, parts)), values


def _portable_part(part: Any) -> Any:
    if isinstance(part, (str, os.PathLike)):
        return os.fsdecode(part)
    if isinstance(part, (bytes, bytearray, memoryview)):
        return bytes(part)
    return _sources.file_of(part, None)


def _run(work: Any) -> Take:
    """Reads a take."""
    source, values = work
    return _reading.load(_sources.files_of(source, None), values, threads=1)


def _send(pipe: Any, take: Take, lender: Lender) -> None:
    """Sends a take, its arrays in memory that both processes share if the system has such memory."""
    motion = take._motion
    if not is_supported():
        motion.arrays()
        pipe.send(take)
        return
    facts = motion.facts()
    place, array, descriptor = lender.reserve(14 * 8 * len(facts["times"]) * len(facts["names"]))
    try:
        motion.numbers(array)
        pipe.send((place, take._facts, facts, take.start_time))
        if descriptor is not None:
            multiprocessing.reduction.send_handle(pipe, descriptor, os.getppid())
    except BaseException:
        lender.release([place.number])
        raise
    finally:
        if descriptor is not None:
            os.close(descriptor)


def receive(pipe: Any, borrower: Borrower) -> Any:
    """Returns the take or the exception that comes next. Raises EOFError and OSError."""
    answer = pipe.recv()
    if not isinstance(answer, tuple):
        return answer
    place, facts, numbers, start_time = answer
    motion = Motion(None, {})
    motion.adopt(numbers, arrays_in(borrower.receive(place, pipe), len(numbers["times"]), len(numbers["names"])))
    motion.start_time = start_time
    return Take._make(motion, facts)


def _sendable(error: Exception) -> Exception:
    """Returns the exception, or one that says the same, if it cannot be sent."""
    try:
        pickle.loads(pickle.dumps(error))
    except Exception:  # whatever the class of an exception does when it is pickled
        return RuntimeError(f"{type(error).__name__}: {error}")
    return error


def main(pipe: multiprocessing.connection.Connection) -> None:
    """Answers tasks until the other end of the pipe is closed."""
    # Ctrl-C reaches all processes of a terminal. The one that waits for the takes decides what to do.
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    # Each process has a processor of its own.
    os.environ.setdefault("ZKMOCAP_THREADS", "1")
    lender = Lender()
    while True:
        try:
            work, unused = pipe.recv()
        except EOFError:
            return
        lender.release(unused)
        try:
            _send(pipe, _run(work), lender)
        except (BrokenPipeError, ConnectionResetError):
            return
        except Exception as error:  # every exception of a take belongs to the caller
            pipe.send(_sendable(error))
