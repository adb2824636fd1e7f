"""What the program makes of a session that is unusual or fails around it."""

import os
import time

from case import PROGRAM, EndToEndTest
from program import TITLE
from waiting import PATIENCE, wait_for

FONTLESS = '<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd"><fontconfig></fontconfig>'
TURKISH_AND_OTHER_CASES = {"INFO.GIF": 4_000, "site.HTML": 3_000, "i\u0307.ZIP": 2_000, "\u0130.JPG": 1_000}


class SessionTest(EndToEndTest):
    def scan_by_keys(self, folder, patience=PATIENCE):
        """As for a desktop that tells nothing about its windows."""
        before = len(self.store.history())
        display = self.desktop.display
        display.wait_for_focus(TITLE)
        display.press("Ctrl+O")
        display.wait_for_focus("Select Folder to Scan")
        display.type(f"{folder}\n")
        wait_for(lambda: len(self.store.history()) > before or not self.program.is_running(), "the entry", patience)
        return self.store.wait_for_scans(self.program, before + 1)[-1]

    def test_locales_time_zones_and_no_fonts(self):
        for variant in [
            {"LC_ALL": "tr_TR.UTF-8", "LANGUAGE": "tr", "TZ": "Pacific/Kiritimati"},
            {"LC_ALL": "ar_EG.UTF-8", "LANGUAGE": "ar", "TZ": "America/St_Johns"},
            {"LC_ALL": "C", "TZ": "no such zone"},
            {"FONTCONFIG_FILE": "fonts.conf"},
        ]:
            with self.subTest(**variant):
                self.make_desktop(has_session_bus=False)
                (self.desktop.home / "fonts.conf").write_text(FONTLESS)
                self.folder = self.make_folder(TURKISH_AND_OTHER_CASES)
                self.start(variant)
                started = time.time()
                self.check_saved(self.scan_by_keys(self.folder), started)
                self.quit()

    def test_bus_that_dies_and_comes_back(self):
        self.make_desktop(has_accessibility=False)
        folder = self.make_folder({"a": 1})
        self.start()
        self.desktop.display.wait_for_focus(TITLE)
        self.desktop.restart_session_bus(lambda: self.scan_by_keys(folder))
        self.scan_by_keys(folder)
        self.quit()

    def test_display_that_is_lost(self):
        for delay in [0, 0.2]:
            with self.subTest(delay=delay):
                self.make_desktop(has_accessibility=False)
                self.program = self.desktop.start_program(PROGRAM)
                entry = self.scan_by_keys(self.make_folder({"a": 1}))
                self.desktop.display.press("Ctrl+O")
                time.sleep(delay)
                self.desktop.display.server.kill()
                self.assertEqual(self.program.wait_for_exit(), 1)
                self.assertEqual(self.store.history(), [entry])

    def test_little_memory(self):
        self.make_desktop(has_accessibility=False)
        folder = self.make_folder({f"{number % 100}/{number}": 1 for number in range(10_000)})
        self.start()
        kept = self.scan_by_keys(folder)
        self.quit()
        for size in [16, 64, 96, 128, 192, 240, 320, 560, 600, 640, 800, 1_000]:
            with self.subTest(megabytes=size):
                self.desktop.install_command("little", f'exec prlimit --as={size << 20} "{PROGRAM}"\n')
                self.program = self.desktop.start_program(self.desktop.commands / "little")
                if self.has_window() and self.scans(folder):
                    self.quit()
                elif self.program.is_running():
                    self.program.process.kill()
                    self.program.process.wait()
                else:
                    self.assertGreater(self.program.process.returncode, 0, "a crash")
                    self.assertRegex(self.program.output, rb"memory|shared", "a word about it")
                self.assertIn(kept, self.store.history())

    def has_window(self):
        """Whether there is one in the end, rather than a word."""
        display = self.desktop.display
        wait_for(lambda: not self.program.is_running() or display.is_painted(TITLE), "a word or a window")
        return self.program.is_running()

    def scans(self, folder):
        try:
            return self.scan_by_keys(folder, patience=20)
        except AssertionError:
            return None
