#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The player beside a bare wave-out program; run in a bed:  wave_bench.py WAVE_BENCH_EXE [SECONDS]

Underruns: both play at once into recorded sinks of their own while every core is busy (60 s unless told).
Idle cost: the processor share of playing and paused players over 20 s each, start-up taken off.
"""
import array
import os
import pathlib
import subprocess
import sys
import tempfile
import time

EMULATOR = "/usr/lib/wine/wine64"
AWAKE_SINK = pathlib.Path(__file__).resolve().parent / "awake_sink.sh"
OPTIONS = ["--raw", "--format=s16le", "--rate=8000", "--channels=1", "--latency-msec=20"]
FILL = 0x6464


def count_faults(samples):
    """Stretches of silence between sounding samples, their length, and samples of the count that never came."""
    gaps = silent = lost = zeros = 0
    previous = None
    for sample in samples:
        if sample == 0:
            zeros += 1
            continue
        if previous is not None:
            if zeros:
                gaps, silent = gaps + 1, silent + zeros
            step = (sample - previous) % 32000
            if step != 1:
                lost += (step - 1) % 32000
        # The player starts with two buffers of one level, which the count passes through only in its sequence.
        previous = None if previous is None and sample == FILL else sample
        zeros = 0
    return gaps, silent, lost


def record(exe, mode, seconds):
    with tempfile.TemporaryFile() as file:
        recorder = subprocess.Popen(["parec", "-d", os.environ["PULSE_SOURCE"], *OPTIONS], stdout=file)
        time.sleep(1)
        subprocess.run([EMULATOR, exe, mode, seconds], check=True)
        time.sleep(0.5)
        recorder.terminate()
        recorder.wait()
        file.seek(0)
        data = file.read()
    samples = array.array("h", data[: len(data) // 2 * 2])
    gaps, silent, lost = count_faults(samples)
    print(f"  {mode:8} {seconds} s: {gaps} gaps, {silent} samples of silence in them, {lost} samples lost", flush=True)


def underruns(exe, seconds):
    print(f"underruns with {os.cpu_count()} cores busy (load {os.getloadavg()[0]:.1f} before)", flush=True)
    busy = [subprocess.Popen([sys.executable, "-c", f"import time\nend = time.time() + {seconds + 15}\nwhile time.time() < end: pass"])
            for _ in range(os.cpu_count())]
    players = [subprocess.Popen([AWAKE_SINK, sys.executable, __file__, "--record", exe, mode, str(seconds)])
               for mode in ("exports", "bare")]
    for process in players:
        process.wait()
    for process in busy:
        process.kill()
        process.wait()


def cpu_seconds(exe, mode, seconds):
    process = subprocess.Popen([EMULATOR, exe, mode, str(seconds)])
    _, status, usage = os.wait4(process.pid, 0)
    if status:
        sys.exit(f"{exe} {mode} failed")
    return usage.ru_utime + usage.ru_stime


def idle_cost(exe, seconds=20):
    print(f"processor share over {seconds} s (load {os.getloadavg()[0]:.1f} before)")
    for mode in ("exports", "paused", "bare"):
        share = (cpu_seconds(exe, mode, seconds) - cpu_seconds(exe, mode, 0.1)) / seconds
        print(f"  {mode:8} {100 * share:.2f} %", flush=True)


if __name__ == "__main__":
    if sys.argv[1] == "--record":
        record(*sys.argv[2:5])
    elif sys.argv[1] == "--idle":
        idle_cost(sys.argv[2])
    else:
        underruns(sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 60)
        subprocess.run([AWAKE_SINK, sys.executable, __file__, "--idle", sys.argv[1]], check=True)
