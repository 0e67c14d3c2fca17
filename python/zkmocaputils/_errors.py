"""The exceptions and the warning of the package."""

from __future__ import annotations


class _AboutALine(Exception):
    """Says in which line of a file something is wrong."""

    def __init__(self, message: str, path: str = "", line: int = 0, code: str = "") -> None:
        super().__init__(message, path, line, code)
        self.path = path
        self.line = line
        self.code = code

    def __str__(self) -> str:
        return str(self.args[0])


class ReadError(_AboutALine, ValueError):
    """A take cannot be read, because of what its files hold.

    Attributes:
        path: the file, as the caller named it.
        line: the line of the file, counted from 1; 0 if the error is about the file as a whole.
        code: the code of the finding; docs/findings.md lists them. Empty if the importer itself gave up.
    """


class ReadWarning(_AboutALine, UserWarning):
    """Something about a file is doubtful, although it was read.

    Attributes:
        path, line, code: as in ReadError.
    """


class WorkerError(RuntimeError):
    """A process of read_many ended while it read a take, and ended again at the second try.

    Attributes:
        path: the file that it read.
        exitcode: the exit status of the process; of a signal, its number below zero.
    """

    def __init__(self, message: str, path: str = "", exitcode: int | None = None) -> None:
        super().__init__(message, path, exitcode)
        self.path = path
        self.exitcode = exitcode

    def __str__(self) -> str:
        return str(self.args[0])


for _each in (ReadError, ReadWarning, WorkerError):
    _each.__module__ = "zkmocaputils"
