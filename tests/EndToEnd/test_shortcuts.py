"""Shortcuts of the window, pressed on the keyboard."""

import urllib.parse

from case import EndToEndTest


class ShortcutsTest(EndToEndTest):
    def test_space_opens_selection(self):
        self.make_desktop()
        opened = self.desktop.folder / "opened"
        # Renamed when it is complete, so that it is not read too early.
        script = f"printf '%s\\n' \"$@\" >'{opened}.new' && mv '{opened}.new' '{opened}'"
        self.desktop.install_command("xdg-open", script)
        self.start().active_window()
        folder = self.make_folder({"report.pdf": 1_000})
        self.desktop.display.press("space")
        self.scan(folder)
        self.program.wait_until_gone("label", "Welcome to Morlaine")
        self.assertFalse(opened.exists(), "something was opened when nothing was selected")
        self.desktop.display.press("space")
        self.program.wait_for(opened.exists, "the folder to be opened")
        argument, end = opened.read_text().split("\n")
        self.assertEqual((urllib.parse.unquote(argument.removeprefix("file://")), end), (str(folder), ""))
        self.quit()
