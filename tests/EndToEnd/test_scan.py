"""Scans, from choosing a folder to the saved files."""

import random
import time

from case import EndToEndTest
from hostile_tree import make_hostile_tree


class ScanTest(EndToEndTest):
    def test_hostile_folder_is_cached_node_by_node(self):
        self.start_on_desktop()
        self.folder = self.make_folder()
        make_hostile_tree(self.folder, random.Random(1), 400)
        started = time.time()
        entry = self.scan(self.folder)
        self.program.wait_until_gone("label", "Welcome to Morlaine")
        self.picture("hostile")
        self.check_saved(entry, started)
        self.quit()

    def test_buttons_scan_and_cancel(self):
        self.start_endless_scan(by_button="Select Folder to Scan...")
        self.program.click("push button", "Cancel")
        self.program.wait_for_item("push button", "Scan Folder...")
        self.release_folder()
        self.program.click("push button", "Scan Folder...")
        started = time.time()
        self.program.scan_in_dialog(self.folder)
        [entry] = self.store.wait_for_scans(self.program, 1)
        self.check_saved(entry, started)
        self.quit()

    def test_window_closes_during_scan(self):
        self.start_endless_scan()
        self.quit()
        self.assertEqual(self.store.history(), [])
