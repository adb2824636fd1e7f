"""Starts, uses and ends the program with one tree on one desktop."""

import time

from desktop import Desktop
from loop_watch import LoopWatch
from processes import preloading
from program import TITLE
from store import Store
from waiting import wait_for
from Xlib import X

SIZES = {1: (1600, 1000), 2: (3840, 2160)}  # pixels of the window for each scale
FRAME = 100  # pixels around it on the screen
DRAG_STEPS = 60
STRIP = 32  # rows of a picture that are fetched at once
INTERVAL = 0.001  # seconds between two looks at the screen
PATIENCE = 600.0  # seconds, for scanning a large folder
TYPED = ".json"
SCROLLED = ["End", "Home"] + 5 * ["Page_Down"]  # from the first row that was found
REPEATS = 5
STARTS = 7
STEP = (16, 8)  # pixels by which the window shrinks at a time


def make_desktop(scale, **options):
    width, height = SIZES[scale]
    return Desktop(width=width + FRAME, height=height + FRAME, **options)


def find_places(program_path, tree, scale):
    """Places of items from the accessibility tree: x, y, width and height in points from the window's corner."""
    with make_desktop(scale) as desktop:
        program = desktop.start_program(program_path, {"HOME": str(tree)})
        program.active_window()
        window = desktop.display.window(TITLE)
        size = tuple(side // scale for side in SIZES[scale])
        window.configure(width=size[0], height=size[1])
        desktop.display.connection.sync()
        program.wait_for(lambda: tuple(program.window().extents[2:]) == size, "the window to have its size")
        program.click("push button", "Home")
        scans = program.wait_for_item("list", "Recent Scans")
        row = program.wait_for(lambda: scans.children, "the scan to be listed")[0]
        program.wait_for(program.treemap, "the treemap")
        corner = desktop.display.root.translate_coords(window, 0, 0)

        def place(node):
            x, y, width, height = node.extents
            return x - corner.x, y - corner.y, width, height

        canvas = place(program.find("list", "Treemap"))
        return {
            "home": place(program.find("push button", "Home")),
            "recent scan": place(row),
            "canvas": canvas,
            # The largest folder comes first; only its margin can be hit.
            "first folder": (canvas[0] + 1, canvas[1] + 1, 2, 2),
        }


class Session:
    def __init__(self, desktop, program, library, tree, places, scale, pictures=None):
        """`places` are those of find_places()."""
        self._desktop, self._display, self._path = desktop, desktop.display, program
        self._places, self._scale, self._pictures = places, scale, pictures
        self._saved = set()
        self._watch_file = desktop.folder / "watch"
        self._environment = {
            "HOME": str(tree),
            "QT_SCALE_FACTOR": str(scale),
            "MORLAINE_LOOP_WATCH": str(self._watch_file),
            **preloading(library),
        }

    def measure_starts(self, report):
        """Starts and ends without a tree. The first run loads the program and its libraries into memory."""
        for number in range(STARTS + 1):
            started = self._start()
            self._watch.wait_for_rest()
            ended = self._quit()
            if number > 0:
                report.add_time("start to the painted window", started)
                report.add_time("quit to the exit, no tree", ended)

    def measure(self, report):
        self._start_at_rest()
        report.memory("no tree", *self._watch.resident_mb())
        self._scan(report)
        report.memory("scanned", *self._watch.resident_mb())
        self._search(report)
        self._zoom(report)
        self._resize_in_steps(report)
        report.memory("searched, zoomed, resized", *self._watch.resident_mb())
        report.add_time("quit to the exit", self._quit())

        self._start_at_rest()
        self._open_cached(report, "reopening a cached scan")
        report.memory("reopened", *self._watch.resident_mb())
        # A different picture, so that the next one can be recognised.
        self._zoom_in()
        self._watch.wait_for_rest()
        self._open_cached(report, "replacing one tree by another")
        report.memory("replaced", *self._watch.resident_mb())
        report.add_time("quit to the exit", self._quit())

    def _start(self):
        """Returns the milliseconds until the window was painted."""
        self._watch_file.unlink(missing_ok=True)
        begin = time.monotonic()
        self._program = self._desktop.start_program(self._path, self._environment)
        wait_for(lambda: self._display.is_painted(TITLE), "the window", interval=INTERVAL)
        milliseconds = (time.monotonic() - begin) * 1e3
        self._window = self._display.window(TITLE)
        self._watch = LoopWatch(self._watch_file, self._program.process)
        return milliseconds

    def _start_at_rest(self):
        self._start()
        self._display.wait_for_focus(TITLE)
        self._resize(SIZES[self._scale])
        self._watch.wait_for_rest()

    def _quit(self):
        """Returns the milliseconds until the program has ended."""
        begin = time.monotonic()
        self._display.close_window(TITLE)
        wait_for(lambda: not self._program.is_running(), "the program to end", interval=INTERVAL)
        milliseconds = (time.monotonic() - begin) * 1e3
        if self._program.process.returncode != 0 or self._program.output:
            raise AssertionError(f"ended with {self._program.process.returncode}, {self._program.output}")
        return milliseconds

    def _scan(self, report):
        begin = time.monotonic_ns()
        self._click("home")
        wait_for(self._has_stored_scan, "the scan to be stored", PATIENCE)
        self._watch.wait_for_rest()
        measured = self._watch.last_measured
        during = self._watch.absences(begin, measured)
        report.add("while scanning", during)
        report.add("scan ends", self._watch.absences(begin, time.monotonic_ns())[len(during):])
        report.add_time("(the scan, until its last file)", (measured - begin) / 1e6)
        self._save("scanned")

    def _has_stored_scan(self):
        if not self._program.is_running():
            raise AssertionError("the program ended while it scanned")
        return list(Store(self._desktop.data_home).scans.glob("*.json"))

    def _search(self, report):
        self._display.press("Ctrl+F")
        self._watch.wait_for_rest()
        for key in TYPED:
            report.add("a key typed into the search", self._absences_of(lambda: self._display.type(key)))
            self._save(f"typed {key}")
        self._display.press("Down")  # into the results
        self._watch.wait_for_rest()
        for key in SCROLLED:
            report.add("results scrolled", self._absences_of(lambda: self._display.press(key)))
            self._save(f"scrolled by {key}")
        self._display.press("Ctrl+F")  # back, with all that was typed selected
        self._watch.wait_for_rest()
        self._add_change(report, "search cleared", lambda: self._display.press("Delete"))

    def _zoom(self, report):
        for _ in range(REPEATS):
            self._add_change(report, "zoom in", self._zoom_in)
            self._add_change(report, "zoom out", lambda: self._display.press("Escape"))

    def _zoom_in(self):
        self._click("first folder", count=2)

    def _resize_in_steps(self, report):
        for step in range(1, 2 * REPEATS + 1):
            size = [side - step * less for side, less in zip(SIZES[self._scale], STEP)]
            self._add_change(report, "a step of resizing", lambda: self._resize(size))
        self._add_change(report, f"{DRAG_STEPS} sizes in 0.3 s", self._drag_edge)
        self._resize(SIZES[self._scale])
        self._watch.wait_for_rest()

    def _drag_edge(self):
        """Sizes that come faster than they can be painted."""
        width, height = SIZES[self._scale]
        for step in range(1, DRAG_STEPS + 1):
            self._resize([width - DRAG_STEPS + step, height])
            time.sleep(0.3 / DRAG_STEPS)

    def _open_cached(self, report, phase):
        self._add_change(report, phase, lambda: self._click("recent scan"))

    def _add_change(self, report, phase, act):
        """Measures an act after which the treemap must look different."""
        before = self._canvas_pixels()
        report.add(phase, self._absences_of(act))
        self._save(phase)
        if self._canvas_pixels() == before:
            raise AssertionError(f"{phase}: the treemap did not change")

    def _absences_of(self, act):
        """Milliseconds of each absence between an act and the following rest."""
        begin = time.monotonic_ns()
        act()
        self._watch.wait_for_rest()
        return self._watch.absences(begin, time.monotonic_ns())

    def _resize(self, size):
        self._window.configure(width=size[0], height=size[1])
        self._display.connection.sync()

    def _click(self, name, count=1):
        x, y, width, height = (side * self._scale for side in self._places[name])
        corner = self._display.root.translate_coords(self._window, 0, 0)
        self._display.click((corner.x + x, corner.y + y, width, height), count)

    def _canvas_pixels(self):
        x, y, width, height = (side * self._scale for side in self._places["canvas"])
        # Not the whole window, which may have become smaller.
        return [
            self._window.get_image(x, top, width // 2, STRIP, X.ZPixmap, 0xFFFFFFFF).data
            for top in range(y, y + height // 2, STRIP)
        ]

    def _save(self, name):
        # Only the first of each phase: large pictures take long.
        path = self._pictures / f"{name}.png" if self._pictures else None
        if path and path not in self._saved:
            self._saved.add(path)
            self._display.save(path, self._window)
