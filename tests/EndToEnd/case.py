"""The base of all end-to-end tests."""

import os
import pathlib
import unittest

from desktop import Desktop
from processes import preloading
from program import TITLE
from store import Store, check_entry, check_tree
from walk import Walk

PROGRAM = pathlib.Path(os.environ["MORLAINE_PROGRAM"])
OUTPUT = pathlib.Path(os.environ["MORLAINE_TEST_OUTPUT"])
HUNG_FOLDER_LIBRARY = pathlib.Path(os.environ["MORLAINE_HUNG_FOLDER"])


class EndToEndTest(unittest.TestCase):
    """A test with a desktop and a program on it. The program must never print anything."""

    def make_desktop(self, **options):
        self.desktop = Desktop(**options)
        self.addCleanup(self.desktop.stop)
        self.store = Store(self.desktop.data_home)

    def start(self, environment=None):
        self.program = self.desktop.start_program(PROGRAM, environment)
        self.addCleanup(self._check_silence, self.program)
        return self.program

    def start_on_desktop(self, **options):
        """Makes a desktop and starts the program; its window is active."""
        self.make_desktop(**options)
        self.start().active_window()

    def start_at_home(self, files):
        """The same where the home folder holds `files`."""
        self.make_desktop()
        self.folder = self.make_folder(files)
        self.start({"HOME": str(self.folder)}).active_window()

    def scan_home(self):
        self.program.click("push button", "Home")
        self.store.wait_for_scans(self.program, 1)

    def start_endless_scan(self, by_button=None):
        """The same, with a scan that runs until release_folder(): its disk does not answer."""
        self.make_desktop()
        self.folder = self.make_folder({"hung/file": 1})
        self.start(preloading(HUNG_FOLDER_LIBRARY)).active_window()
        if by_button:
            self.program.click("push button", by_button)
            self.program.scan_in_dialog(self.folder)
        else:
            self.program.choose_folder(self.folder)
        self.program.wait_for_item("progress bar", "Scanning")

    def release_folder(self):
        (self.folder / "released").touch()

    def make_folder(self, files=None):
        """A folder to scan, with files of the given names and sizes."""
        folder = self.desktop.folder / "to scan"
        folder.mkdir()
        for name, size in (files or {}).items():
            path = folder / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(b"x" * size)
        os.sync()
        return folder

    def scan(self, folder, count=1):
        """Scans a folder through the dialog; returns the newest of the then `count` entries of the history."""
        self.program.choose_folder(folder)
        return self.store.wait_for_scans(self.program, count)[-1]

    def check_saved(self, entry, started):
        """Compares the entry and its tree with `folder`."""
        walk = Walk(os.fsencode(self.folder))
        check_entry(self, entry, walk, started)
        check_tree(self, self.store.tree(entry), walk)

    def quit(self):
        """Closes the window by keyboard. The program must exit with 0."""
        self.desktop.display.wait_for_focus(TITLE)
        self.desktop.display.press("Alt+F4")
        self.assertEqual(self.program.wait_for_exit(), 0)

    def picture(self, name):
        """Saves what is on the screen."""
        OUTPUT.mkdir(parents=True, exist_ok=True)
        self.desktop.display.save(OUTPUT / f"{self.id()}-{name}.png")

    def _check_silence(self, program):
        self.assertEqual(program.output, b"", "the program printed something")

    def _callTestMethod(self, method):
        try:
            method()
        except unittest.SkipTest:
            raise
        except BaseException:
            self._save_evidence()
            raise

    def _save_evidence(self):
        if hasattr(self, "program"):
            self.picture("failed")
            print(f"{self.id()} failed. The program printed {self.program.output!r} and showed:")
            try:
                print(self.program.outline())
            except Exception as error:  # what is left of the evidence still counts
                print(f"nothing that could be asked for: {error!r}")
            print("Services:", self.desktop.services_log(), sep="\n")
