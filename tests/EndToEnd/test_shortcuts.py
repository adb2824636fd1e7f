"""Shortcuts of the window, pressed on the keyboard."""

import urllib.parse

from case import EndToEndTest


class ShortcutsTest(EndToEndTest):
    def press(self, keys):
        self.program.active_window()
        self.desktop.display.press(keys)

    def middle_of_welcome(self):
        x, _, width, _ = self.program.wait_for_item("label", "Welcome to Morlaine").extents
        return x + width / 2

    def wait_for_help(self, button, text):
        node = self.program.wait_for_item(name=button)
        self.program.wait_for(lambda: node.description == text, f'the help "{text}"')

    def wait_for_middle(self, is_there):
        self.program.wait_for(lambda: is_there(self.middle_of_welcome()), "the central area to have moved")

    def test_sidebar_and_inspector(self):
        self.start_on_desktop()
        keys = "(⌥⌘S or ⌘S)"
        start = self.middle_of_welcome()
        self.press("Ctrl+S")
        self.wait_for_help("Disks Sidebar", f"Show Disks Sidebar {keys}")
        self.wait_for_middle(lambda middle: middle <= start - 100)
        self.press("Ctrl+Alt+I")
        self.wait_for_help("Inspector", "Show Inspector (⌥⌘I)")
        self.wait_for_middle(lambda middle: abs(middle - start) < 50)
        self.picture("both-hidden")
        self.press("Ctrl+Alt+S")
        self.wait_for_help("Disks Sidebar", f"Hide Disks Sidebar {keys}")
        self.press("Ctrl+Alt+I")
        self.wait_for_help("Inspector", "Hide Inspector (⌥⌘I)")
        self.wait_for_middle(lambda middle: abs(middle - start) <= 1)
        self.quit()

    def test_space_opens_selection(self):
        self.make_desktop()
        opened = self.desktop.folder / "opened"
        # Renamed when it is complete, so that it is not read too early.
        script = f"printf '%s\\n' \"$@\" >'{opened}.new' && mv '{opened}.new' '{opened}'"
        self.desktop.install_command("xdg-open", script)
        self.start().active_window()
        folder = self.make_folder({"report.pdf": 1_000})
        self.press("space")
        self.scan(folder)
        self.program.wait_until_gone("label", "Welcome to Morlaine")
        self.assertFalse(opened.exists(), "something was opened when nothing was selected")
        self.press("space")
        self.program.wait_for(opened.exists, "the folder to be opened")
        argument, end = opened.read_text().split("\n")
        self.assertEqual((urllib.parse.unquote(argument.removeprefix("file://")), end), (str(folder), ""))
        self.quit()
