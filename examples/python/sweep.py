#!/usr/bin/env python3
"""Plays a chirp at several frequencies: krv driven from Python.

KRV_ADDRESS names the instrument; `krv sim --port 5025` is one to try it with. Needs nothing but
Python 3.8 or later, and krv in the PATH.
"""
import json
import math
import pathlib
import subprocess
import sys
import tempfile

POINTS = 2000


def krv(*words):
    """Runs a command of krv. Returns what it prints; raises an error with what went wrong."""
    done = subprocess.run(["krv", *words], capture_output=True, encoding="utf-8")
    if done.returncode != 0:
        raise RuntimeError(f"krv {' '.join(words)}: {done.stderr.strip()}")
    return done.stdout


def answer(*words):
    """The answer of a command that has --json."""
    return json.loads(krv(*words, "--json"))


def write_chirp(folder):
    """Writes one sweep over half of the sample clock as a table that krv imports."""
    file = folder / "chirp.csv"
    phases = (math.pi * (n * n / (2 * POINTS) - n / 2) for n in range(POINTS))
    rows = (f"{math.cos(phase):.6f},{math.sin(phase):.6f}\n" for phase in phases)
    file.write_text("I,Q\n" + "".join(rows), encoding="utf-8")
    return file


def main():
    before = answer("status")
    print(f"{before['model']}, {before['memory']['freePoints']} points free")
    with tempfile.TemporaryDirectory() as folder:
        done = answer("download", "--i", str(write_chirp(pathlib.Path(folder))),
                      "--name", "CHIRP", "--scale", "90", "--replace", "--verify", "--play")
    print(f"{done['destination']}: {done['counts']['i']} points, verified: {done['verified']}")
    try:
        krv("set", "--level=-20", "--clock", "40MHz", "--rf", "on")
        for megahertz in (900, 1800, 2400):
            krv("set", "--frequency", f"{megahertz}MHz")
            status = answer("status")
            print(f"{status['frequencyHz'] / 1e6:g} MHz, playing: {status['playing']}")
    finally:
        krv("set", "--rf", "off")
        krv("stop")


if __name__ == "__main__":
    try:
        main()
    except RuntimeError as failure:
        sys.exit(str(failure))
