#!/usr/bin/python3
"""Starts the program on one fresh desktop after another and counts the windows that appear: without a window manager, with
one, and with one that has just started or starts meanwhile.

    scripts/starts.py [--starts 2000] [--program build/release/morlaine]

A window that stays out of sight is asked to appear once more, as another program can do for it. Fails when a window stays
out of sight although no window manager was about to take over the screen. On an idle machine in about an hour.
"""

import argparse
import collections
import pathlib
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "EndToEnd"))

import processes  # noqa: E402
from desktop import Desktop  # noqa: E402
from program import TITLE  # noqa: E402
from waiting import wait_for  # noqa: E402
from Xlib import X  # noqa: E402
from Xlib.error import XError  # noqa: E402

KINDS = ["none", "up", "new"]  # what the window manager is
PATIENCE = 6  # seconds
DELAYS = 12  # how many different ones a window manager starts with, behind the program
DELAY = 0.02  # seconds between two of them
LEAST_WIDTH = 300  # of the window; Qt has small ones of its own


def is_shown(desktop, patience=PATIENCE):
    try:
        return wait_for(lambda: desktop.display.is_painted(TITLE), "the window", patience)
    except AssertionError:
        return False


def is_unmapped_window(display, window):
    return (window.get_attributes().map_state == X.IsUnmapped and display.title(window) == TITLE
            and window.get_geometry().width > LEAST_WIDTH)


def map_again(display):
    for window in display.root.query_tree().children:
        try:
            if is_unmapped_window(display, window):
                window.map()
        except XError:
            pass  # it has gone


def start(kind, number, program):
    """What became of the window."""
    with Desktop(has_window_manager=kind == "up", has_accessibility=False) as desktop:
        is_before = kind == "new" and number % 2 == 0
        if is_before:
            desktop.start_window_manager()
        process = desktop.start_program(program)
        if kind == "new" and not is_before:
            time.sleep(number // 2 % DELAYS * DELAY)
            desktop.start_window_manager()
        if is_shown(desktop):
            return "shown"
        if not process.is_running():
            return "ended"
        map_again(desktop.display)
        return "shown when asked again" if is_shown(desktop) else "not shown"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--starts", type=int, default=2_000)
    parser.add_argument("--program", type=pathlib.Path, default=ROOT / "build" / "release" / "morlaine")
    arguments = parser.parse_args()
    processes.adopt_orphans()
    found = {}
    for kind in KINDS:
        found[kind] = collections.Counter(start(kind, number, arguments.program.resolve())
                                          for number in range(arguments.starts // len(KINDS)))
        print(f"window manager {kind}: {dict(found[kind])}", flush=True)
    processes.kill_descendants()
    return 0 if all(set(found[kind]) <= {"shown"} for kind in ["none", "up"]) else 1


if __name__ == "__main__":
    sys.exit(main())
