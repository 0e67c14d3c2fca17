"""What can be read: paths, bytes, file objects and pairs of them; and how captures are found in folders."""

from __future__ import annotations

import os
import stat
import zlib
from typing import Any, BinaryIO, Iterator, NamedTuple, TextIO, Union

from . import _core
from ._errors import ReadError

Path = Union[str, "os.PathLike[str]", "os.PathLike[bytes]", bytes]
# What one file may be given as. Bytes are the contents of a file.
Source = Union[str, "os.PathLike[str]", "os.PathLike[bytes]", bytes, bytearray, memoryview, BinaryIO, TextIO]

_NAMES = {"bvh": ".bvh", "asf": ".asf", "amc": ".amc"}


class File(NamedTuple):
    """One file of a take."""

    shown: str  # what messages call it
    path: bytes
    content: bytes | None  # None if the file is read from its path
    name: str  # the name that stands for a file without a path; otherwise empty
    kind: str  # "bvh", "asf" or "amc"
    size: int

    def for_core(self) -> tuple[bytes, bytes | None, str]:
        return self.path, self.content, self.name


class Files(NamedTuple):
    """The files of a take: a .bvh, an .asf, an .amc alone, or an .asf and its .amc."""

    first: File
    motion: File | None

    def all(self) -> list[File]:
        return [self.first] if self.motion is None else [self.first, self.motion]


def shown_path(path: bytes) -> str:
    return os.fsdecode(path)


def _start(content: bytes) -> str:
    """Returns the beginning of a text that may be packed, without comments."""
    start = content[:65536]
    if start.startswith(b"\x1f\x8b"):
        try:
            start = zlib.decompressobj(31).decompress(start, 65536)
        except zlib.error:
            return ""
    if start.startswith((b"\xff\xfe", b"\xfe\xff")):
        text = start.decode("utf-16", "replace")
    else:
        text = start.decode("utf-8-sig", "replace")
    lines = [line.strip() for line in text.splitlines()]
    return "\n".join(line for line in lines if line and not line.startswith("#"))


def _kind_of_content(content: bytes, shown: str) -> str:
    """Returns which kind of file has these contents."""
    start = _start(content)
    words = [line.split()[0].lower() for line in start.split("\n") if line]
    if not words:
        raise ReadError(f"{shown}: there is no text", shown)
    if any(word in (":bonedata", ":hierarchy", ":units", ":version", ":root") for word in words):
        return "asf"
    if words[0].startswith(":") or words[0].isdigit():
        return "amc"
    return "bvh"


def _from_content(content: bytes, name: str | None, given: str | None) -> File:
    shown = name or given or "<bytes>"
    base = os.path.basename(shown) if shown != "<bytes>" else "take"
    kind = _core.kind_of(os.fsencode(base))
    if kind is None:
        kind = _kind_of_content(content, shown)
        base += _NAMES[kind] + (".gz" if content.startswith(b"\x1f\x8b") else "")
    return File(shown, os.fsencode(shown), content, base, kind, len(content))


def _from_path(path: bytes) -> File:
    """Opens the file, so that what is wrong with the path is the exception that Python has for it."""
    shown = shown_path(path)
    with open(path, "rb") as file:
        status = os.fstat(file.fileno())
        kind = _core.kind_of(path)
        if kind is None:
            raise ReadError(f"{shown}: not a .bvh, .asf or .amc file", shown)
        content = None if stat.S_ISREG(status.st_mode) else file.read()
    if content is None:
        return File(shown, path, None, "", kind, status.st_size)
    return File(shown, path, content, os.path.basename(shown), kind, len(content))


def file_of(source: Any, name: str | None) -> File:
    """Returns the file that a caller named or gave."""
    if isinstance(source, File):
        return source
    if isinstance(source, (bytes, bytearray, memoryview)):
        return _from_content(bytes(source), name, None)
    if isinstance(source, (str, os.PathLike)):
        return _from_path(os.fsencode(source))
    if not hasattr(source, "read"):
        raise TypeError(f"a path, bytes or a file object is expected, not {type(source).__name__}")
    content = source.read()
    if isinstance(content, str):
        content = content.encode("utf-8", "surrogateescape")
    if not isinstance(content, (bytes, bytearray)):
        raise TypeError("the read() of a file object has to return bytes or text")
    given = getattr(source, "name", None)
    return _from_content(bytes(content), name, given if isinstance(given, str) else None)


def _skeleton_of(motion: File) -> File:
    folder, name = os.path.split(motion.path)
    names = [each for each in os.listdir(folder or b".") if _core.kind_of(each) == "asf"]
    skeleton, problem = _core.find_skeleton(name, sorted(names))
    if not skeleton:
        raise ReadError(f"{motion.shown}: {problem.decode('utf-8', 'replace')}", motion.shown)
    return _from_path(os.path.join(folder, skeleton))


def files_of(sources: tuple[Any, ...], name: str | None, alone: bool = False) -> Files:
    """Returns the files of one take. The skeleton of an .amc alone is looked for in its folder, unless `alone` is set."""
    if len(sources) == 1 and isinstance(sources[0], (tuple, list)) and not isinstance(sources[0], File):
        sources = tuple(sources[0])
    if not 1 <= len(sources) <= 2:
        raise TypeError("one file, or a skeleton and a motion, are expected")
    files = [file_of(source, name) for source in sources]
    if len(files) == 2:
        files.sort(key=lambda file: file.kind == "amc")
        if [file.kind for file in files] != ["asf", "amc"]:
            shown = " and ".join(file.shown for file in files)
            raise ReadError(f"{shown}: two files have to be an .asf and an .amc", files[0].shown)
        return Files(files[0], files[1])
    only = files[0]
    if only.kind != "amc" or alone:
        return Files(only, None)
    if only.name:
        raise ReadError(f"{only.shown}: a motion needs its skeleton, which has to be given with it", only.shown)
    return Files(_skeleton_of(only), only)


class _Search:
    """Searches folders as `zkhost convert` does: links to folders after all others, each folder once."""

    def __init__(self) -> None:
        self.files: dict[str, str] = {}  # path to kind
        self.folders: set[tuple[int, int]] = set()
        self.links: list[str] = []

    def search(self, folder: str) -> None:
        pending = [folder]
        while pending or self.links:
            if not pending:
                pending, self.links = sorted(self.links, reverse=True), []
            pending += reversed(list(self.search_one(pending.pop())))

    def search_one(self, folder: str) -> Iterator[str]:
        status = os.stat(folder)
        if (status.st_dev, status.st_ino) in self.folders:
            return
        self.folders.add((status.st_dev, status.st_ino))
        with os.scandir(folder) as entries:
            for entry in sorted(entries, key=lambda each: each.name):
                if entry.name.startswith("."):
                    continue
                kind = _core.kind_of(os.fsencode(entry.name))
                if entry.is_dir():
                    if entry.is_symlink():
                        self.links.append(entry.path)
                    else:
                        yield entry.path
                elif kind and entry.is_file():
                    self.files[entry.path] = kind


def find(*paths: Path) -> list[Union[str, tuple[str, str]]]:
    """Returns the takes in folders and all folders below them, sorted by path.

    A take is the path of a .bvh, the paths of an .asf and of its .amc, or the path of an .asf that is the skeleton of
    no .amc; each can be packed (.gz). The skeleton of an .amc is looked for in its folder, by its name. An .amc whose
    skeleton cannot be told is listed by its own path, and reading it says why.
    """
    search = _Search()
    for path in paths:
        start = os.fsdecode(path)
        if os.path.isdir(start):
            search.search(start)
            continue
        os.stat(start)
        kind = _core.kind_of(os.fsencode(start))
        if kind is None:
            raise ValueError(f"{start}: neither a folder nor a .bvh, .asf or .amc file")
        search.files[start] = kind
    takes: dict[str, Union[str, tuple[str, str]]] = {}
    paired: set[tuple[int, int]] = set()
    skeletons: dict[str, list[bytes]] = {}
    for path, kind in search.files.items():
        if kind != "amc":
            continue
        folder, name = os.path.split(path)
        if folder not in skeletons:
            skeletons[folder] = sorted(
                each for each in map(os.fsencode, os.listdir(folder or "."))
                if not each.startswith(b".") and _core.kind_of(each) == "asf" and
                os.path.isfile(os.path.join(os.fsencode(folder), each)))
        found, _ = _core.find_skeleton(os.fsencode(name), skeletons[folder])
        takes[path] = path
        if found:
            skeleton = os.path.join(folder, os.fsdecode(found))
            status = os.stat(skeleton)
            paired.add((status.st_dev, status.st_ino))
            takes[path] = (skeleton, path)
    for path, kind in search.files.items():
        if kind == "bvh":
            takes[path] = path
        elif kind == "asf":
            status = os.stat(path)
            if (status.st_dev, status.st_ino) not in paired:
                takes[path] = path
    return [takes[path] for path in sorted(takes)]
