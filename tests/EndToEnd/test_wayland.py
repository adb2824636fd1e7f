"""The program in a Wayland session: that of a compositor whose only screen is a window on the virtual one."""

import shutil
import signal

from case import EndToEndTest
from waiting import wait_for

SCREEN = "Weston Compositor - screen0"
CONFIGURATION = """[core]
idle-time=0
[shell]
panel-position=none
locking=false
animation=none
startup-animation=none
"""


class WaylandTest(EndToEndTest):
    def start_session(self):
        if not shutil.which("weston"):
            self.skipTest("weston is not installed")
        self.make_desktop(has_window_manager=False)
        (self.desktop.folder / "configuration" / "weston.ini").write_text(CONFIGURATION)
        width, height, _ = self.desktop.display.pixels()
        self.desktop.start_service([
            "weston", "--backend=x11-backend.so", "--use-pixman", "--config=weston.ini",
            "--socket=wayland-test", f"--width={width}", f"--height={height}",
        ])
        wait_for((self.desktop.folder / "runtime" / "wayland-test").exists, "the compositor's socket")
        self.desktop.display.focus(SCREEN)

    def test_start_scan_reopen_and_quit(self):
        self.start_session()
        folder = self.make_folder({"photos/sky.png": 50_000, "notes.txt": 20_000})
        program = self.start({
            "HOME": str(folder), "DISPLAY": "", "WAYLAND_DISPLAY": "wayland-test", "QT_QPA_PLATFORM": "wayland",
        })
        program.active_window()
        program.wait_for_item("push button", "Home").do_default_action()
        [entry] = self.store.wait_for_scans(program, 1)
        program.wait_for_treemap(["photos", "sky.png", "notes.txt"])
        self.desktop.display.press("Ctrl+F")
        self.desktop.display.type("notes")
        program.wait_for_item("list", "Search results")
        self.picture("scanned")
        (folder / "notes.txt").unlink()
        program.wait_for_item("list", "Recent Scans").children[0].do_default_action()
        program.wait_for_treemap(["photos", "sky.png", "notes.txt"])
        self.assertEqual(self.store.history(), [entry])
        program.process.terminate()  # where a compositor puts the close button is its own business
        self.assertEqual(program.wait_for_exit(), -signal.SIGTERM)
