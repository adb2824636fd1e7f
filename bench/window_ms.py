#!/usr/bin/python3
"""Measures how long the program takes from its start to its painted window, on a virtual screen.

    window_ms.py [PROGRAM]      the release build by default

Every run has an empty home folder, and a session bus as on any desktop. The time ends when the window is to be seen
and has pixels in more than one colour, which the screen is asked about every millisecond. A first run is not counted.
"""

import pathlib
import statistics
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "EndToEnd"))

import processes  # noqa: E402
from desktop import Desktop  # noqa: E402
from program import TITLE  # noqa: E402
from waiting import wait_for  # noqa: E402

RUNS = 9
INTERVAL = 0.001  # seconds


def measure(program_path):
    """Milliseconds of one start."""
    # Nobody uses a screen reader here.
    with Desktop(has_accessibility=False) as desktop:
        start = time.monotonic()
        desktop.start_program(program_path)
        wait_for(lambda: desktop.display.is_painted(TITLE), "the window", interval=INTERVAL)
        return (time.monotonic() - start) * 1_000


def main(program_path):
    processes.adopt_orphans()
    try:
        measure(program_path)  # brings the program and its libraries into memory
        times = [measure(program_path) for _ in range(RUNS)]
    finally:
        processes.kill_descendants()
    print(f"window_ms {statistics.median(times):.0f} (median of {RUNS}: {min(times):.0f} to {max(times):.0f})")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "build" / "release" / "morlaine").resolve())
