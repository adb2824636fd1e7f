"""The start of the program, also on desktops that lack something."""

import os
import signal
import time

import buses
from case import PROGRAM, EndToEndTest
from store import check_entry, check_tree
from waiting import wait_for


class LaunchTest(EndToEndTest):
    def test_first_launch_welcomes(self):
        self.start_on_desktop()
        program = self.program
        program.wait_for_item("label", "Welcome to Morlaine")
        states = {
            name: program.wait_for_item("push button", name).is_("sensitive")
            for name in ["Go Back", "Go Forward", "Scan Folder...", "Select Folder to Scan..."]
        }
        self.assertEqual(
            states,
            {"Go Back": False, "Go Forward": False, "Scan Folder...": True, "Select Folder to Scan...": True},
        )
        self.picture("welcome")
        self.assertEqual(self.store.history(), [])
        self.quit()

    def test_broken_history_is_replaced(self):
        for broken in [b"", b"{}", b'[{"id": 1}]', b"\x00\xff not even text", b"[" * 100_000]:
            with self.subTest(broken=broken[:20]):
                self.make_desktop()
                self.store.folder.mkdir(parents=True)
                self.store.index.write_bytes(broken)
                self.start().active_window()
                self.program.wait_for_item("label", "Welcome to Morlaine")
                self.assertEqual(self.store.index.read_bytes(), broken)
                folder = self.make_folder({"report.pdf": 1_000})
                started = time.time()
                self.program.choose_folder(folder)
                self.program.wait_for(lambda: self.store.index.read_bytes() != broken, "the history to be replaced")
                [entry] = self.store.wait_for_scans(self.program, 1)
                self.check_saved(entry, folder, started)
                self.quit()

    def test_data_folder_cannot_be_written(self):
        self.make_desktop()
        # With a file in its place, even root cannot write there.
        self.desktop.data_home.write_bytes(b"in the way")
        self.start().active_window()
        self.program.choose_folder(self.make_folder({"report.pdf": 1_000}))
        self.program.wait_until_gone("label", "Welcome to Morlaine")
        self.assertEqual(self.desktop.data_home.read_bytes(), b"in the way")
        self.quit()

    def test_without_session_bus(self):
        self.make_desktop(has_session_bus=False)
        self.start()
        display = self.desktop.display
        display.wait_for_focus("Morlaine")
        display.press("Ctrl+O")
        display.wait_for_focus("Select Folder to Scan")
        self.picture("dialog")
        # The text of the dialog cannot be queried; it handles its keys in order.
        folder = self.make_folder({"report.pdf": 1_000})
        display.type(f"{folder}\n")
        started = time.time()
        [entry] = self.store.wait_for_scans(self.program, 1)
        self.check_saved(entry, folder, started)
        display.wait_for_focus("Morlaine")
        display.press("Alt+F4")
        self.assertEqual(self.program.wait_for_exit(), 0)

    def test_bus_that_does_not_answer(self):
        for name in ["session_bus", "accessibility_bus"]:
            with self.subTest(bus=name):
                self.make_desktop()
                daemon = buses.ask(getattr(self.desktop, name), "GetConnectionUnixProcessID", buses.BUS)
                os.kill(daemon, signal.SIGSTOP)
                self.start()
                display = self.desktop.display
                display.wait_for_focus("Morlaine")
                wait_for(lambda: display.is_painted("Morlaine"), "something in the window")
                display.press("Ctrl+O")
                display.wait_for_focus("Select Folder to Scan")
                display.press("Escape")
                display.wait_for_focus("Morlaine")
                display.press("Alt+F4")
                self.assertEqual(self.program.wait_for_exit(), 0)
                os.kill(daemon, signal.SIGCONT)

    def test_display_that_cannot_be_reached(self):
        self.make_desktop(has_window_manager=False, has_session_bus=False)
        for environment in [
            {"DISPLAY": ":9999"},
            {"DISPLAY": ""},
            {"DISPLAY": "", "WAYLAND_DISPLAY": "/nonexistent/wayland", "QT_QPA_PLATFORM": "wayland"},
        ]:
            with self.subTest(environment=environment):
                program = self.desktop.start_program(PROGRAM, environment)
                self.assertEqual(program.wait_for_exit(), 1)
                self.assertRegex(program.output, rb"\AMorlaine .*display.*\n\Z")

    def test_without_window_manager(self):
        self.make_desktop(has_window_manager=False)
        self.start()
        self.desktop.display.focus("Morlaine")
        self.program.active_window()
        self.desktop.display.press("Ctrl+O")
        self.program.window("Select Folder to Scan")
        self.desktop.display.focus("Select Folder to Scan")
        folder = self.make_folder({"report.pdf": 1_000})
        started = time.time()
        self.program.scan_in_dialog(folder)
        [entry] = self.store.wait_for_scans(self.program, 1)
        self.check_saved(entry, folder, started)
        self.picture("bare")
        self.desktop.display.close_window("Morlaine")
        self.assertEqual(self.program.wait_for_exit(), 0)

    def check_saved(self, entry, folder, started):
        walk = self.walk(folder)
        check_entry(self, entry, walk, started)
        check_tree(self, self.store.tree(entry), walk)
