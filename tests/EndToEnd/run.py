#!/usr/bin/python3
"""Runs end-to-end tests, each within a time limit, and ends all processes that they started.

    run.py --program build/dev/morlaine [--limit SECONDS] test_launch [test_scan.ScanTest.test_... ...]
"""

import argparse
import os
import pathlib
import signal
import subprocess
import sys
import tempfile

import processes
from folders import remove_tree

HERE = pathlib.Path(__file__).resolve().parent


def run(test, environment, limit):
    """Runs a test; returns whether it passed in time."""
    folder = tempfile.mkdtemp(prefix="morlaine-end-to-end-")
    process = processes.start(
        [sys.executable, "-B", "-m", "unittest", "-v", test],
        cwd=HERE,
        env={**environment, "TMPDIR": folder},
        stderr=subprocess.STDOUT,
    )
    try:
        return process.wait(limit) == 0
    except subprocess.TimeoutExpired:
        print(f"{test} was ended: it took more than {limit} s", flush=True)
        return False
    finally:
        processes.kill_descendants()
        remove_tree(folder)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", type=pathlib.Path, required=True, help="the program under test")
    parser.add_argument("--output", type=pathlib.Path, help="where pictures go; beside the program by default")
    parser.add_argument("--limit", type=float, default=1500, help="seconds for each test")
    parser.add_argument("tests", nargs="+")
    arguments = parser.parse_args()

    program = arguments.program.resolve()
    environment = dict(os.environ)
    environment["MORLAINE_PROGRAM"] = str(program)
    environment["MORLAINE_TEST_OUTPUT"] = str((arguments.output or program.parent / "end-to-end").resolve())
    environment["MORLAINE_HUNG_FOLDER"] = str(program.parent / "libmorlaine_hung_folder.so")

    processes.adopt_orphans()
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, lambda *_: sys.exit(1))
    results = [run(test, environment, arguments.limit) for test in arguments.tests]
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
