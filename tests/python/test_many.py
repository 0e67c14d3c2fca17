"""read_many: order, errors, processes that end, memory."""

import gc
import io
import multiprocessing
import os
import signal
import subprocess
import sys
import textwrap
import threading
import time

import numpy as np
import pytest

import zkmocaputils as zm
from conftest import BVH, PAIR, SMALL, large_bvh
from zkmocaputils import _pool


@pytest.fixture(scope="module")
def folder(tmp_path_factory):
    """Ten takes of 11 to 20 frames, the second of which is broken."""
    path = tmp_path_factory.mktemp("takes")
    for index in range(10):
        text = large_bvh(11 + index)
        (path / f"t{index}.bvh").write_text(text[:200] if index == 1 else text)
    return path


def frames_of(results):
    return [len(each) if isinstance(each, zm.Take) else type(each) for each in results]


GOOD = [11, 13, 14, 15, 16, 17, 18, 19, 20]


def test_order_and_errors(folder):
    takes = zm.find(folder)
    assert frames_of(zm.read_many(takes, jobs=2, on_error="return")) == [11, zm.ReadError, *GOOD[1:]]
    assert frames_of(zm.read_many(takes, jobs=2, on_error="skip")) == GOOD
    assert sorted(frames_of(zm.read_many(takes, jobs=2, on_error="skip", ordered=False))) == GOOD
    seen = []
    with pytest.raises(zm.ReadError) as caught:
        for take in zm.read_many(takes, jobs=2):
            seen.append(len(take))
    assert seen == [11] and caught.value.path == str(folder / "t1.bvh") and caught.value.line > 0
    assert multiprocessing.active_children() == []


def test_takes_equal_those_of_read(tmp_path, folder):
    sources = [BVH, PAIR, SMALL.encode(), io.StringIO(SMALL), str(folder / "t3.bvh"), PAIR[0]]
    takes = list(zm.read_many(sources, jobs=2, scale=0.5))
    sources[3] = SMALL.encode()
    for source, take in zip(sources, takes):
        expected = zm.read(*source, scale=0.5) if isinstance(source, tuple) else zm.read(source, scale=0.5)
        for name in ("positions", "quaternions", "local_positions", "local_quaternions", "offsets", "parents", "times"):
            array = getattr(take, name)
            assert np.array_equal(array, getattr(expected, name)) and not array.flags.writeable
            assert array.flags.c_contiguous
        assert (take.names, take.fps, take.findings) == (expected.names, expected.fps, expected.findings)
        assert {**take.facts, "files": 0} == {**expected.facts, "files": 0}
        assert len(take[:1]) == 1
    takes[0].write(tmp_path / "walk.bvh")
    assert np.abs(zm.read(tmp_path / "walk.bvh").positions - takes[0].positions).max() < 1e-4


def test_arrays_stay_as_they_are(folder):
    """The memory of a take is used again only after its last array is gone."""
    takes = [path for path in zm.find(folder) if "t1." not in path] * 6
    kept = []
    for index, take in enumerate(zm.read_many(takes, jobs=1)):
        kept.append(take.positions if index % 2 else take)
        del take
    gc.collect()
    for path, each in zip(takes, kept):
        positions = each.positions if isinstance(each, zm.Take) else each
        assert np.array_equal(positions, zm.read(path).positions)


def test_takes_ahead(folder):
    asked = 0

    def sources():
        nonlocal asked
        for _ in range(20):
            asked += 1
            yield folder / "t0.bvh"

    for index, _ in enumerate(zm.read_many(sources(), jobs=2)):
        assert asked <= index + 4


def test_warnings(tmp_path):
    path = tmp_path / "warned.bvh"
    path.write_text(SMALL.replace("Frames: 4", "Frames: 5"))
    with pytest.warns(zm.ReadWarning) as caught:
        list(zm.read_many([path], jobs=1))
    assert len(caught) == 1 and caught[0].filename == __file__
    list(zm.read_many([path], jobs=1, warn=False))


@pytest.mark.parametrize("arguments, error", [
    ({"sources": "walk.bvh"}, TypeError), ({"sources": 5}, TypeError), ({"jobs": 0}, ValueError), ({"jobs": 1.5}, TypeError),
    ({"on_error": "x"}, ValueError), ({"scale": 0}, ValueError), ({"unknown": 1}, TypeError),
])
def test_wrong_arguments(arguments, error):
    with pytest.raises(error):
        zm.read_many(**{"sources": [], **arguments})
    assert list(zm.read_many([])) == []


def kill_workers(stop):
    """Kills every process of read_many as soon as it is there."""
    while not stop.is_set():
        for child in multiprocessing.active_children():
            child.kill()
        time.sleep(0.001)


def test_killed_once(folder):
    takes = [str(folder / "t9.bvh")] * 30
    results = []
    for take in zm.read_many(takes, jobs=2):
        results.append(len(take))
        if len(results) in (5, 15):
            for child in multiprocessing.active_children():
                os.kill(child.pid, signal.SIGKILL)
    assert results == [20] * 30


def test_killed_again_and_again(folder):
    stop = threading.Event()
    killer = threading.Thread(target=kill_workers, args=(stop,))
    killer.start()
    try:
        results = list(zm.read_many([folder / "t0.bvh", folder / "t2.bvh"], jobs=2, on_error="return"))
    finally:
        stop.set()
        killer.join()
    assert frames_of(results) == [zm.WorkerError] * 2
    assert results[0].path == str(folder / "t0.bvh") and results[0].exitcode == -signal.SIGKILL
    assert "ended twice" in str(results[0])


def test_a_status_that_another_thread_collects():
    """active_children() of another thread may have asked the system for the status and not stored it yet."""
    worker = _pool._Worker()
    worker.process.kill()
    _, status = os.waitpid(worker.process.pid, 0)
    storing = threading.Timer(0.05, setattr, (worker.process._popen, "returncode", os.waitstatus_to_exitcode(status)))
    storing.start()
    worker.end()
    assert worker.exit_code() == -signal.SIGKILL
    storing.join()


# It never ends by itself: a busy machine may read any number of takes before the signal is sent.
SCRIPT = """
import itertools
import signal
import zkmocaputils as zm
signal.signal(signal.SIGINT, signal.default_int_handler)  # which the caller may ignore
for take in zm.read_many(itertools.repeat({take!r}), jobs=2):
    print(len(take), flush=True)
"""


def test_a_script_without_guard_and_ctrl_c(folder, tmp_path):
    script = tmp_path / "script.py"
    script.write_text(SCRIPT.format(take=str(folder / "t0.bvh")))
    run = subprocess.Popen([sys.executable, script], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                           start_new_session=True)
    assert run.stdout.readline() == "11\n"
    os.killpg(run.pid, signal.SIGINT)
    output, errors = run.communicate(timeout=30)
    assert run.returncode != 0 and errors.count("KeyboardInterrupt") == 1 and "Traceback" not in output
    with pytest.raises(ProcessLookupError):  # no process of its group is left
        for _ in range(200):
            os.killpg(run.pid, 0)
            time.sleep(0.01)


def test_ctrl_c_while_a_take_is_dropped(folder):
    """Python ignores a Ctrl-C during a function of its own that is called because an object ends."""
    called = []
    results = zm.read_many([folder / "t0.bvh"] * 2, jobs=1)
    take = next(results)
    last = next(results)  # and only this function has the first one now
    sys.setprofile(lambda frame, event, _: called.append(frame.f_code) if event == "call" else None)
    try:
        del take
    finally:
        sys.setprofile(None)
    assert called == [] and len(last) == 11


def test_from_standard_input(folder):
    code = textwrap.dedent(f"""
        import zkmocaputils as zm
        print([len(take) for take in zm.read_many({[str(folder / 't0.bvh')]!r})])
        """)
    assert subprocess.run([sys.executable], input=code, capture_output=True, text=True, check=True).stdout == "[11]\n"


def test_an_iterator_that_is_left(folder):
    results = zm.read_many([folder / "t0.bvh"] * 50, jobs=2)
    next(results)
    assert multiprocessing.active_children()
    results.close()
    assert multiprocessing.active_children() == []
