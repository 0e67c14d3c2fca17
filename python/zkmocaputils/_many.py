"""Reads many takes in several processes."""

from __future__ import annotations

import os
from typing import Any, Iterable, Iterator, Literal, Union, overload

import numpy as np

from . import _reading
from ._motion import Motion, arrays_in
from ._pool import Pool, Task
from ._take import Take


@overload
def read_many(sources: Iterable[Any], jobs: int | None = None, on_error: Literal["raise", "skip"] = "raise",
              ordered: bool = True, *, warn: bool = True, **options: Any) -> Iterator[Take]: ...


@overload
def read_many(sources: Iterable[Any], jobs: int | None, on_error: Literal["return"], ordered: bool = True, *,
              warn: bool = True, **options: Any) -> Iterator[Union[Take, Exception]]: ...


@overload
def read_many(sources: Iterable[Any], jobs: int | None = None, *, on_error: Literal["return"], ordered: bool = True,
              warn: bool = True, **options: Any) -> Iterator[Union[Take, Exception]]: ...


def read_many(sources: Iterable[Any], jobs: int | None = None, on_error: Literal["raise", "return", "skip"] = "raise",
              ordered: bool = True, *, warn: bool = True, **options: Any) -> Iterator[Any]:
    """Reads takes in several processes and yields them, with their arrays computed.

        for take in zm.read_many(zm.find("takes/"), jobs=8): ...

    Args:
        sources: what read() takes: paths, contents, file objects, or pairs of them. They are asked for as they are
            needed. At most 2 * jobs takes are read ahead or being read.
        jobs: the number of processes; by default as many as there are processors for this process.
        on_error: "raise" raises the exception of a take that cannot be read, "return" yields the exception in its place,
            "skip" leaves the take out.
        ordered: whether takes come in the order of the sources, or as they are ready.
        warn: as in read().
        options: the other options of read(), but not progress.

    Raises:
        What read() raises, and WorkerError for a take with which a process ended twice, for example because the system
        killed it. With on_error="raise" nothing else is read then.
    """
    if jobs is None:
        jobs = len(os.sched_getaffinity(0)) if hasattr(os, "sched_getaffinity") else os.cpu_count() or 1
    if isinstance(jobs, bool) or not isinstance(jobs, (int, np.integer)):
        raise TypeError("jobs: a whole number is expected")
    if jobs < 1:
        raise ValueError(f"jobs={jobs}: at least one process is needed")
    if on_error not in ("raise", "return", "skip"):
        raise ValueError(f"on_error={on_error!r}: \"raise\", \"return\" or \"skip\" is expected")
    if isinstance(sources, (str, bytes, os.PathLike)) or not hasattr(sources, "__iter__"):
        raise TypeError("sources: a list of takes is expected, such as find() returns")
    return _results(iter(sources), int(jobs), on_error, bool(ordered), warn, _reading.checked_options(options))


def _shown(source: Any) -> str:
    part = source[-1] if isinstance(source, (tuple, list)) and source else source
    return os.fsdecode(part) if isinstance(part, (str, os.PathLike)) else str(getattr(part, "name", "<bytes>"))


def _results(sources: Iterator[Any], jobs: int, on_error: str, ordered: bool, warn: bool,
             values: dict[str, Any]) -> Iterator[Union[Take, Exception]]:
    most = 2 * jobs
    ready: dict[int, Union[Take, Exception]] = {}
    begun = yielded = 0
    exhausted = False
    with Pool(jobs) as pool:
        while True:
            # The take that the caller has at the moment counts as well, so there is one fewer.
            while not exhausted and begun - yielded < max(jobs, most - 1):
                try:
                    source = next(sources)
                except StopIteration:
                    exhausted = True
                    break
                try:
                    pool.begin(begun, Task(_shown(source), (source, values)))
                except (OSError, TypeError, ValueError) as error:
                    ready[begun] = error
                begun += 1
            if yielded == begun:
                return
            index = yielded if ordered else next(iter(ready), -1)
            if index not in ready:
                number, answer = pool.wait()
                ready[number] = answer
                del answer
                continue
            result = ready.pop(index)
            yielded += 1
            if isinstance(result, Exception):
                if on_error == "raise":
                    raise result
                if on_error == "skip":
                    continue
            elif warn:
                _reading.warn_of(result._facts, 3)
            yield result
            # The caller may have dropped the take, and its memory can be used for the next one.
            del result
