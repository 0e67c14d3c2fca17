"""Memory that a process of read_many shares with the one that reads the takes.

To get fresh memory from the system takes about as long as to read a take, so memory is used again as soon as no array
of the earlier take in it is left.
"""

from __future__ import annotations

import ctypes
import mmap
import multiprocessing.reduction
import os
import weakref
from typing import Any, NamedTuple

import numpy as np

from ._motion import Array

# Memory is only used again for a take that fills at least this part of it.
_LEAST_USE = 0.25


def is_supported() -> bool:
    return hasattr(os, "memfd_create")


class Place(NamedTuple):
    """Where a take is. Of memory that the receiver does not know yet, a descriptor follows."""

    number: int  # of the memory
    size: int  # of the memory, in bytes
    is_new: bool
    dropped: list[int]  # memory that will not be used again


class Lender:
    """The memory of the process that computes takes."""

    def __init__(self) -> None:
        self._mapped: dict[int, mmap.mmap] = {}
        self._free: list[int] = []
        self._last = 0

    def release(self, numbers: list[int]) -> None:
        """Notes memory in which no take is left."""
        self._free += [number for number in numbers if number in self._mapped]

    def reserve(self, size: int) -> tuple[Place, Array, int | None]:
        """Returns memory of at least this size, as a place, an array and, if it is new, a descriptor to be closed."""
        for number in self._free:
            room = len(self._mapped[number])
            if _LEAST_USE * room <= size <= room:
                self._free.remove(number)
                return Place(number, room, False, []), self._array(number), None
        dropped, self._free = self._free, []
        for number in dropped:
            del self._mapped[number]
        self._last += 1
        descriptor = os.memfd_create("take", os.MFD_CLOEXEC)
        room = max(size, mmap.PAGESIZE)
        try:
            os.truncate(descriptor, room)
            self._mapped[self._last] = mmap.mmap(descriptor, room)
        except BaseException:
            os.close(descriptor)
            raise
        return Place(self._last, room, True, dropped), self._array(self._last), descriptor

    def _array(self, number: int) -> Array:
        mapped = self._mapped[number]
        return np.frombuffer(mapped, np.float64, len(mapped) // 8)


class _Lease(weakref.ref):  # type: ignore[type-arg]
    """Calls a function when no array of a take is left."""

    number: int  # of the memory


class Borrower:
    """The same memory in the process that reads the takes."""

    def __init__(self) -> None:
        self._mapped: dict[int, mmap.mmap] = {}
        self._leases: dict[int, _Lease] = {}  # each by the number of its memory
        self._ended: list[Any] = []  # such leases

    def receive(self, place: Place, pipe: Any) -> Array:
        """Returns the array in the memory. Receives a descriptor from the pipe, if one follows."""
        if place.is_new:
            descriptor = multiprocessing.reduction.recv_handle(pipe)
            try:
                self._mapped[place.number] = mmap.mmap(descriptor, place.size)
            finally:
                os.close(descriptor)
        for number in place.dropped:
            self._mapped.pop(number, None)
        # All arrays of the take refer to this object, which refers to the memory.
        lease = (ctypes.c_char * place.size).from_buffer(self._mapped[place.number])
        # The function must not be one of Python's own: Python ignores a Ctrl-C that comes during a call from here.
        kept = self._leases[place.number] = _Lease(lease, self._ended.append)
        kept.number = place.number
        return np.frombuffer(memoryview(lease), np.float64, place.size // 8)

    def unused(self) -> list[int]:
        """Returns the numbers of memory in which no take is left, each once."""
        numbers = []
        while self._ended:
            number = self._ended.pop().number
            del self._leases[number]
            numbers.append(number)
        return numbers
