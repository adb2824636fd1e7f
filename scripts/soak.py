#!/usr/bin/python3
"""Uses the real window at random for a long time, as somebody in a hurry would, and holds it to account: memory stays
flat, no descriptor, thread or file is left over, and what is listed agrees with an independent walk of the folder.

    scripts/soak.py [--minutes 60] [--files 20000] [--seed N] [--program build/release/morlaine]

Reports a line a minute and fails when the median memory of the last quarter is more than 5 % above that of the first
quarter after the first five minutes (or the first quarter of the time, where that is less), or when the median number of
descriptors or threads is higher. A single look may see a thread that is about to end.
"""

import argparse
import collections
import os
import pathlib
import random
import statistics
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path[:0] = [str(ROOT / "bench"), str(ROOT / "tests" / "EndToEnd")]

import processes  # noqa: E402
from big_tree import make_big_tree  # noqa: E402
from folders import remove_tree  # noqa: E402
from program import TITLE  # noqa: E402
from session import SIZES, find_places, make_desktop  # noqa: E402
from store import Store  # noqa: E402
from waiting import wait_for  # noqa: E402
from walk import Walk  # noqa: E402

MOST_SCANS = 6
TRASH_FROM_EDGE = 18
REST = 0.3  # seconds without work that count as rest
MOST_GROWTH = 1.05
DOUBLE_CLICK = 0.5  # seconds
SEARCHES = ["json", "a", ".so", "zz", "x_1", "jpg"]


class Soak:
    def __init__(self, desktop, program, tree, places, dice):
        self.desktop, self.display, self.places, self.dice = desktop, desktop.display, places, dice
        self.store = Store(desktop.data_home)
        self.program = desktop.start_program(program, {"HOME": str(tree)})
        self.display.wait_for_focus(TITLE)
        self.window = self.display.window(TITLE)
        self.size(SIZES[1])
        self.expected = Walk(os.fsencode(tree)).root.size
        self.done = collections.Counter()

    def size(self, size):
        self.window.configure(width=size[0], height=size[1])
        self.display.connection.sync()

    def act(self):
        """One thing at random that can be done now."""
        scans = len(self.store.history())
        choices = [self.scan] * (1 if scans < MOST_SCANS else 0) + [self.search, self.zoom, self.resize, self.hover] * 2
        choices += [self.reopen, self.delete] if scans > 1 else []
        choice = self.dice.choice(choices)
        choice()
        self.done[choice.__name__] += 1
        self.rest()

    def scan(self):
        before = len(self.store.history())
        self.click("home")
        entry = self.store.wait_for_scans(self.program, before + 1)[-1]
        if entry["totalSize"] != self.expected:
            raise AssertionError(f"{entry['totalSize']} bytes instead of {self.expected}")

    def reopen(self):
        self.click("recent scan", row=self.dice.randrange(min(3, len(self.store.history()))))

    def delete(self):
        before = len(self.store.history())
        x, y, width, height = self.places["recent scan"]
        self.click((x + width - TRASH_FROM_EDGE, y, 1, height))
        self.program.wait_for(lambda: len(self.store.history()) == before - 1, "the scan to be deleted")

    def search(self):
        self.display.press("Ctrl+F")
        self.display.type(self.dice.choice(SEARCHES))
        self.rest()
        self.display.press("Ctrl+A")
        self.display.press("Delete")
        self.display.press("Escape")

    def zoom(self):
        self.click("first folder", count=2)
        self.rest()
        self.display.press("Escape")

    def resize(self):
        width, height = SIZES[1]
        self.size((width - self.dice.randrange(400), height - self.dice.randrange(200)))
        self.rest()
        self.size((width, height))

    def hover(self):
        x, y, width, height = self.places["canvas"]
        for _ in range(20):
            self.click((x + self.dice.randrange(width), y + self.dice.randrange(height), 1, 1), count=0)

    def click(self, place, count=1, row=0):
        x, y, width, height = self.places[place] if isinstance(place, str) else place
        time.sleep(DOUBLE_CLICK if count == 1 else 0)  # or two clicks in a row would be a double click
        corner = self.display.root.translate_coords(self.window, 0, 0)
        self.display.click((corner.x + x, corner.y + y + row * height, width, height), count)

    def rest(self):
        """Waits until the program has had nothing to do for a while."""
        seen = [None, time.monotonic()]

        def is_at_rest():
            fields = self.read("stat").rpartition(")")[2].split()
            if fields[11:13] != seen[0]:
                seen[:] = fields[11:13], time.monotonic()
            return time.monotonic() - seen[1] > REST

        self.program.wait_for(is_at_rest, "the program to rest")

    def read(self, name):
        return pathlib.Path(f"/proc/{self.program.process.pid}/{name}").read_text()

    def figures(self):
        """Resident megabytes, descriptors and threads."""
        status = dict(line.split(":", 1) for line in self.read("status").splitlines())
        descriptors = len(os.listdir(f"/proc/{self.program.process.pid}/fd"))
        return int(status["VmRSS"].split()[0]) / 1024, descriptors, int(status["Threads"])

    def check_files(self):
        entries = {entry["id"] + ".json" for entry in self.store.history()}
        wait_for(lambda: {path.name for path in self.store.scans.iterdir()} == entries, "each tree to have its entry")
        wait_for(lambda: {path.name for path in self.store.folder.iterdir()} == {"history.json", "Scans"},
                 "no file to be left over")


def run(soak, minutes):
    """The figures at rest, by minute."""
    start = time.monotonic()
    samples = [[]]
    while time.monotonic() - start < minutes * 60:
        soak.act()
        samples[-1].append(soak.figures())
        if time.monotonic() - start > len(samples) * 60:
            memory, descriptors, threads = zip(*samples[-1])
            print(f"{len(samples):3} min: {statistics.median(memory):6.1f} MB (most {max(memory):.1f}), "
                  f"{max(descriptors)} descriptors, {max(threads)} threads, {sum(soak.done.values())} acts", flush=True)
            soak.check_files()
            samples.append([])
    return [minute for minute in samples if minute]


def judge(samples):
    warm = samples[min(5, len(samples) // 4):]
    quarter = max(1, len(warm) // 4)
    first, last = ([figures for minute in part for figures in minute] for part in [warm[:quarter], warm[-quarter:]])
    medians = [[statistics.median(kind) for kind in zip(*part)] for part in (first, last)]
    growth = medians[1][0] / medians[0][0]
    left = [medians[1][kind] - medians[0][kind] for kind in (1, 2)]
    print(f"memory {100 * (growth - 1):+.1f} %, descriptors {left[0]:+g}, threads {left[1]:+g}")
    return growth <= MOST_GROWTH and max(left) <= 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--minutes", type=float, default=60)
    parser.add_argument("--files", type=int, default=20_000)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--program", type=pathlib.Path, default=ROOT / "build" / "release" / "morlaine")
    arguments = parser.parse_args()
    processes.adopt_orphans()
    parent = pathlib.Path(tempfile.mkdtemp(prefix="morlaine-soak-"))
    try:
        tree = parent / "tree"
        make_big_tree(tree, arguments.files)
        program = arguments.program.resolve()
        places = find_places(program, tree, 1)
        with make_desktop(1, has_accessibility=False) as desktop:
            soak = Soak(desktop, program, tree, places, random.Random(arguments.seed))
            samples = run(soak, arguments.minutes)
            soak.check_files()
            print(dict(soak.done))
            soak.display.close_window(TITLE)
            if soak.program.wait_for_exit() != 0 or soak.program.output:
                raise AssertionError(f"ended with {soak.program.process.returncode}, {soak.program.output}")
        return 0 if judge(samples) else 1
    finally:
        processes.kill_descendants()
        remove_tree(parent)


if __name__ == "__main__":
    sys.exit(main())
