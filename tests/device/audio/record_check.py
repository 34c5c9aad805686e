#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Plays known sound through the library into a null sink and compares what arrives there.

awake_sink.sh record_check.py EMULATOR PLAY_FILE_EXE
"""
import array
import math
import operator
import os
import subprocess
import sys
import tempfile
import time

FILL = 0x6464  # a sample of the two buffers that the player queues before the client's sound
BUFFER_BYTES = 1280
BUFFER_SAMPLES = BUFFER_BYTES // 2


class Recorder:
    """Records the sink of awake_sink.sh from start to end."""

    def __enter__(self):
        self.file = tempfile.NamedTemporaryFile()
        self.process = subprocess.Popen(
            ["parec", "-d", os.environ["PULSE_SOURCE"], "--raw", "--format=s16le", "--rate=8000", "--channels=1",
             "--latency-msec=20"], stdout=self.file)
        deadline = time.monotonic() + 20
        while self.position() == 0 and time.monotonic() < deadline:
            time.sleep(0.05)
        return self

    def position(self):
        return os.path.getsize(self.file.name) // 2

    def play(self, samples, rate, channels, buffer_bytes, *extra):
        """What is recorded while the samples are played."""
        begin = self.position()
        with tempfile.NamedTemporaryFile(suffix=".raw") as file:
            file.write(samples.tobytes())
            file.flush()
            arguments = [*sys.argv[1:3], "Z:" + file.name, rate, channels, buffer_bytes, *extra]
            subprocess.run([str(a) for a in arguments], check=True, timeout=60)
        time.sleep(0.4)
        end = self.position()
        with open(self.file.name, "rb") as recorded:
            recorded.seek(2 * begin)
            return array.array("h", recorded.read(2 * (end - begin)))

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()


class CheckFailed(Exception):
    pass


def check(condition, text):
    print(("ok: " if condition else "failed: ") + text)
    if not condition:
        raise CheckFailed


def zero_runs(samples):
    """(number of non-zero samples before the run, length) of every run of zeros between non-zero samples."""
    runs, sounding, length = [], 0, 0
    for sample in samples:
        if sample == 0:
            length += 1
            continue
        if length and sounding:
            runs.append((sounding, length))
        sounding, length = sounding + 1, 0
    return runs


def split_fill(recorded):
    """The sounding samples after the first fill buffers, and how many fill samples came before."""
    sounding = array.array("h", (s for s in recorded if s != 0))
    fill = next((i for i, s in enumerate(sounding) if s != FILL), len(sounding))
    return sounding[fill:], fill


def check_exact(name, samples, recorded):
    """No sample of the original is zero or equals its neighbour, so zeros are gaps and order is certain."""
    played, fill = split_fill(recorded)
    # The sound server swallows a few samples at the beginning of a stream.
    check(2 * BUFFER_SAMPLES - 64 <= fill <= 2 * BUFFER_SAMPLES,
          f"{name}: first {fill} of {2 * BUFFER_SAMPLES} samples of the two fill buffers")
    check(played == samples, f"{name}: {len(played)} of {len(samples)} samples complete and in order")
    return [(at - fill, length) for at, length in zero_runs(recorded) if at > fill]


def check_ramp_with_pause(recorder):
    ramp = array.array("h", range(1, 40 * BUFFER_SAMPLES + 1))
    runs = check_exact("ramp", ramp, recorder.play(ramp, 8000, 1, BUFFER_BYTES, 20, 500))
    pauses = [run for run in runs if run[1] >= 4 * BUFFER_SAMPLES]
    check(len(pauses) == 1, f"pause: one stretch of zeros {pauses}, {len(runs) - 1} gaps beside it")
    check(pauses[0][0] % BUFFER_SAMPLES == 0, "pause: began and ended at a buffer's end")


def check_tone(recorder):
    tone = array.array("h", (round(12000 * math.sin(2 * math.pi * 437 * i / 8000)) or 1
                             for i in range(12 * BUFFER_SAMPLES)))
    runs = check_exact("tone", tone, recorder.play(tone, 8000, 1, BUFFER_BYTES))
    print(f"tone: {len(runs)} gaps")


def sweep(i, rate):
    t = i / rate
    return round(12000 * math.sin(2 * math.pi * (100 * t + 50 * t * t)))


def correlation(a, b):
    norm = math.sqrt(sum(map(operator.mul, a, a)) * sum(map(operator.mul, b, b)))
    return sum(map(operator.mul, a, b)) / norm if norm else 0.0


def check_converted(recorder):
    """48 kHz stereo into an 8 kHz mono sink: the sound server resamples, so compare by correlation."""
    seconds = 2
    stereo = array.array("h", (sweep(i // 2, 48000) for i in range(2 * 48000 * seconds)))
    recorded = recorder.play(stereo, 48000, 2, 9600)
    expected = [sweep(i, 8000) for i in range(8000 * seconds)]
    begin = next((i for i, s in enumerate(recorded) if abs(s) > 5000), 0)
    # Behind the two fill buffers of 50 ms each, give or take the resampler's delay.
    best = max(range(begin + 700, begin + 900),
               key=lambda lag: correlation(recorded[lag:lag + 2000], expected[:2000]))
    value = correlation(recorded[best:best + len(expected)], expected)
    check(value > 0.99, f"48 kHz stereo: correlation {value:.4f}")


def passes(test, recorder):
    """On a busy machine the sound server itself now and then drops samples, with any program; what the player
    does wrong, it does every time."""
    for attempt in range(1, 5):
        try:
            test(recorder)
            return True
        except CheckFailed:
            print(f"{test.__name__}: failed at try {attempt} of 4")
    return False


if __name__ == "__main__":
    with Recorder() as the_recorder:
        results = [passes(test, the_recorder) for test in (check_ramp_with_pause, check_tone, check_converted)]
    sys.exit(not all(results))
