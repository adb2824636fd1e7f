"""The start of the program, also on desktops that lack something."""

import time

from case import PROGRAM, EndToEndTest


class LaunchTest(EndToEndTest):
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
        self.folder = self.make_folder({"report.pdf": 1_000})
        started = time.time()
        self.program.scan_in_dialog(self.folder)
        [entry] = self.store.wait_for_scans(self.program, 1)
        self.check_saved(entry, started)
        self.picture("bare")
        self.desktop.display.close_window("Morlaine")
        self.assertEqual(self.program.wait_for_exit(), 0)
