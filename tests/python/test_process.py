"""Threads, signals, memory and locale of a process that reads takes."""

import gc
import locale
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
from conftest import BVH, PAIR, SLOW, SMALL, large_bvh


def test_eight_threads_at_once(walk, pair, tmp_path):
    """Each thread reads and writes on its own, and all of them use one take whose arrays nobody has asked for."""
    shared = zm.read(BVH)
    start = threading.Barrier(8)
    problems = []

    def work(number):
        try:
            start.wait()
            assert np.array_equal(shared.quaternions, walk.quaternions)
            for turn in range(4):
                source, expected = ((BVH,), walk) if (number + turn) % 2 else (PAIR, pair)
                take = zm.read(*source)
                assert np.array_equal(take.positions, expected.positions)
                path = tmp_path / f"{number}.bvh"
                take[:20].write(path)
                assert len(zm.read(path)) == 20
                with pytest.raises(zm.ReadError):
                    zm.read(b"HIERARCHY nothing")
                made = zm.Take.from_arrays(take.names, take.parents, take.offsets, take.local_quaternions, fps=60)
                assert len(made.positions) == 257
        except BaseException as error:
            problems.append(error)

    threads = [threading.Thread(target=work, args=(number,)) for number in range(8)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert problems == []


@pytest.fixture(scope="module")
def long_take(tmp_path_factory):
    path = tmp_path_factory.mktemp("long") / "long.bvh"
    path.write_text(large_bvh(60000))
    return path


def test_ctrl_c_in_a_long_read(long_take):
    code = textwrap.dedent("""
        import os, sys, time
        import zkmocaputils as zm
        before = set(os.listdir("/dev/shm") if os.path.isdir("/dev/shm") else [])
        print("ready", flush=True)
        try:
            while True:
                zm.read(sys.argv[1])
        except KeyboardInterrupt:
            print("interrupted", len(zm.read(sys.argv[2])), flush=True)
        """)
    for delay in (0.05, 0.2):
        run = subprocess.Popen([sys.executable, "-c", code, str(long_take), str(BVH)], stdout=subprocess.PIPE, text=True)
        assert run.stdout.readline() == "ready\n"
        time.sleep(delay)
        run.send_signal(signal.SIGINT)
        assert run.communicate(timeout=20)[0] == "interrupted 257\n" and run.returncode == 0


def test_the_interpreter_goes_on_during_a_read(long_take):
    ticks = []
    done = threading.Event()

    def count():
        while not done.is_set():
            ticks.append(time.monotonic())
            time.sleep(0.001)

    counter = threading.Thread(target=count)
    counter.start()
    while not ticks:
        time.sleep(0.001)
    before = len(ticks)
    zm.read(long_take)
    after = len(ticks)
    done.set()
    counter.join()
    assert after - before > 5


def resident():
    with open("/proc/self/statm", encoding="ascii") as file:
        return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


@pytest.mark.skipif(SLOW, reason="the sanitizers keep freed memory")
def test_ten_thousand_reads_without_growth(tmp_path):
    good, bad = tmp_path / "good.bvh", tmp_path / "bad.bvh"
    good.write_text(SMALL)
    bad.write_text(SMALL[:200])

    def read(times):
        for index in range(times):
            if index % 10 == 9:
                with pytest.raises(zm.ReadError):
                    zm.read(bad)
            else:
                zm.read(good).positions

    read(1000)
    gc.collect()
    before, descriptors = resident(), len(os.listdir("/proc/self/fd"))
    read(10000)
    gc.collect()
    assert resident() - before < 2 << 20
    assert len(os.listdir("/proc/self/fd")) == descriptors


@pytest.mark.skipif(SLOW, reason="the sanitizers keep freed memory")
def test_arrays_are_freed():
    text = large_bvh(2000).encode()
    zm.read(text).positions
    before = resident()
    for _ in range(20):
        take = zm.read(text)
        part = take[::3].quaternions
        del take, part
    assert resident() - before < 16 << 20


def test_memory_of_dropped_arrays_is_used_again():
    """Arrays that are still there stay as they are, while the memory of others is used for new ones."""
    texts = [large_bvh(frames).encode() for frames in (900, 1000, 1600, 2000)]
    expected = [zm.read(text).quaternions.copy() for text in texts]
    kept = []
    for turn in range(40):
        take = zm.read(texts[turn % 4])
        assert np.array_equal(take.quaternions, expected[turn % 4])
        kept = kept[-5:] + [(turn % 4, take.quaternions[:] if turn % 3 else take)]
        del take
        for number, each in kept:
            assert np.array_equal(each if isinstance(each, np.ndarray) else each.quaternions, expected[number])
    base = kept[0][1] if isinstance(kept[0][1], np.ndarray) else kept[0][1].quaternions
    with pytest.raises(ValueError):
        base.flags.writeable = True
        base[0] = 5


def test_the_locale_stays_as_it_is(small):
    before = locale.setlocale(locale.LC_ALL)
    handlers = [signal.getsignal(number) for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)]
    zm.read(small)
    assert locale.setlocale(locale.LC_ALL) == before
    assert handlers == [signal.getsignal(number) for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)]


def test_nothing_is_printed(small, capfd):
    zm.read(small).write(small.with_suffix(".glb"))
    assert capfd.readouterr() == ("", "")
