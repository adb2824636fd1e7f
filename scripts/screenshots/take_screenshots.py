#!/usr/bin/python3
"""Takes the pictures of the main window for the documentation.

    take_screenshots.py PROGRAM FOLDER
"""

import pathlib
import sys
import tempfile

from demo_folder import make_demo_folder

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tests" / "EndToEnd"))
import buses
import processes
import settings_portal
from desktop import Desktop
from folders import remove_tree
from processes import preloading
from program import TITLE
from waiting import wait_for

WIDTH, HEIGHT = 1400, 920


def wait_for_rest(display, window):
    """Waits until nothing moves in the window."""
    last = [None]

    def is_at_rest():
        before, last[0] = last[0], display.pixels(window)
        return before == last[0]

    wait_for(is_at_rest, "the window to come to rest", interval=0.5)


def offer_scheme(desktop, scheme):
    """From now on the desktop tells programs that its user prefers "light" or "dark"."""
    address = desktop.environment["DBUS_SESSION_BUS_ADDRESS"]
    desktop.start_service([sys.executable, "-B", settings_portal.__file__, address, scheme])
    buses.wait_for_name(desktop.session_bus, settings_portal.NAME)


def take(program_path, demo, scheme, scale, picture):
    with Desktop(width=WIDTH * scale, height=HEIGHT * scale) as desktop:
        offer_scheme(desktop, scheme)
        environment = {"HOME": str(demo), "QT_SCALE_FACTOR": str(scale)}
        environment.update(preloading(program_path.parent / "libmorlaine_large_disk.so"))
        program = desktop.start_program(program_path, environment)
        program.choose_folder(demo)
        program.wait_until_gone("label", "Welcome to Morlaine")
        desktop.display.move_pointer(0, 0)
        window = desktop.display.window(TITLE)
        wait_for_rest(desktop.display, window)
        desktop.display.save(picture, window)


def main(program_path, folder):
    folder.mkdir(parents=True, exist_ok=True)
    processes.adopt_orphans()
    parent = pathlib.Path(tempfile.mkdtemp(prefix="demo-"))
    try:
        demo = parent / "alex"
        demo.mkdir()
        make_demo_folder(demo)
        for scheme in ["light", "dark"]:
            for scale in [1, 2]:
                take(program_path, demo, scheme, scale, folder / f"{scheme}-{scale}x.png")
    finally:
        processes.kill_descendants()
        remove_tree(parent)


if __name__ == "__main__":
    main(*(pathlib.Path(argument).resolve() for argument in sys.argv[1:]))
