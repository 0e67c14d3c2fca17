"""Processes that read takes, started afresh ("spawn") so that threads and libraries of this process do not matter."""

from __future__ import annotations

import collections
import multiprocessing
import multiprocessing.connection
import signal
import sys
import threading
import time
import types
from typing import Any, NamedTuple

from . import _worker
from ._errors import WorkerError
from ._shared import Borrower


class Task(NamedTuple):
    shown: str  # what messages call it
    work: Any  # what _worker.run gets


class _NamelessMain(types.ModuleType):
    """Stands for the module __main__ while a process is started.

    A new process would run the caller's script once more, to have its definitions. The workers need none of them, and a
    script without the usual `if __name__ == "__main__"` would begin to read once more.
    """

    def __init__(self, real: types.ModuleType) -> None:
        super().__init__("__main__")
        self.__dict__["_real"] = real

    def __getattr__(self, name: str) -> Any:
        if name == "__file__":
            raise AttributeError(name)
        return getattr(self.__dict__["_real"], name)


_starting = threading.Lock()


class _Worker:
    """A process, and the pipe to it."""

    def __init__(self) -> None:
        context = multiprocessing.get_context("spawn")
        self.pipe, theirs = context.Pipe(duplex=True)
        self.process = context.Process(target=_worker.main, args=(theirs,), daemon=True, name="zkmocaputils")
        with _starting:
            real = sys.modules["__main__"]
            # Ctrl-C reaches all processes of a terminal, also those that have just begun. They inherit what is blocked.
            blocked = signal.pthread_sigmask(signal.SIG_BLOCK, {signal.SIGINT})
            sys.modules["__main__"] = _NamelessMain(real)
            try:
                self.process.start()
            finally:
                sys.modules["__main__"] = real
                signal.pthread_sigmask(signal.SIG_SETMASK, blocked)
        theirs.close()
        self.number: int | None = None  # of its task
        self.borrower = Borrower()

    def send(self, work: Any) -> None:
        try:
            self.pipe.send((work, self.borrower.unused()))
        except OSError:
            pass  # it has ended, which Pool.wait sees

    def receive(self) -> Any:
        """Returns a take or an exception. Raises EOFError and OSError."""
        return _worker.receive(self.pipe, self.borrower)

    def exit_code(self) -> int:
        """Waits until the process has ended, and returns its exit status, negative for a signal."""
        while True:
            self.process.join()
            if self.process.exitcode is not None:
                return self.process.exitcode
            # A thread that calls multiprocessing.active_children() has just asked the system for the status, which
            # answers only once. That thread is about to store it.
            time.sleep(0.0001)

    def end(self) -> None:
        self.pipe.close()
        self.process.kill()
        # Not closed: active_children() of another thread may have the process in hand.
        self.exit_code()


class Pool:
    """Gives tasks to processes. Leaving its context ends all of them."""

    def __init__(self, jobs: int) -> None:
        self._jobs = jobs
        self._workers: list[_Worker] = []
        self._tasks: dict[int, Task] = {}  # those that are not answered
        self._waiting: collections.deque[int] = collections.deque()
        self._tries: collections.Counter[int] = collections.Counter()

    def __enter__(self) -> Pool:
        return self

    def __exit__(self, *_: Any) -> None:
        for worker in self._workers:
            worker.end()
        self._workers.clear()

    def begin(self, number: int, task: Task) -> None:
        self._tasks[number] = Task(task.shown, _worker.portable(task.work))
        self._waiting.append(number)
        self._give()

    def _give(self) -> None:
        """Gives waiting tasks to processes that have none."""
        while self._waiting:
            worker = next((each for each in self._workers if each.number is None), None)
            if worker is None:
                if len(self._workers) >= self._jobs:
                    return
                worker = _Worker()
                self._workers.append(worker)
            number = self._waiting.popleft()
            worker.number = number
            self._tries[number] += 1
            worker.send(self._tasks[number].work)

    def wait(self) -> tuple[int, Any]:
        """Returns the number of a task that is done, and its take or exception."""
        while True:
            objects: list[Any] = [worker.pipe for worker in self._workers]
            multiprocessing.connection.wait(objects + [worker.process.sentinel for worker in self._workers])
            for worker in self._workers:
                # An answer may have come before the process ended.
                if worker.pipe.poll():
                    try:
                        answer = worker.receive()
                    except (EOFError, OSError):
                        pass
                    else:
                        number = worker.number
                        assert number is not None
                        worker.number = None
                        del self._tasks[number], self._tries[number]
                        self._give()
                        return number, answer
                elif worker.process.is_alive():
                    continue
                failed = self._replace(worker)
                if failed is not None:
                    return failed
                break

    def _replace(self, worker: _Worker) -> tuple[int, Any] | None:
        """Removes a process that has ended. Its task is tried once more; then its exception is returned."""
        code, number = worker.exit_code(), worker.number
        self._workers.remove(worker)
        worker.end()
        if number is None:
            return None
        if self._tries[number] < 2:
            self._waiting.appendleft(number)
            self._give()
            return None
        shown = self._tasks.pop(number).shown
        del self._tries[number]
        self._give()
        why = f"signal {-code}" if code < 0 else f"exit status {code}"
        return number, WorkerError(f"{shown}: the process that read it ended twice ({why})", shown, code)
