"""The program under test, used through its window."""

import accessibility
import processes
from waiting import wait_for

TITLE = "Morlaine"
SEARCH_FIELD = ("text", "Search file or folder name...")


class Program:
    def __init__(self, desktop, path, environment, output):
        self.desktop = desktop
        self._output = output
        with open(output, "wb") as sink:
            self.process = processes.start(
                [str(path)], env=environment, cwd=desktop.home, stdout=sink, stderr=sink
            )

    @property
    def output(self):
        """Its standard output and standard error."""
        return self._output.read_bytes()

    def is_running(self):
        return self.process.poll() is None

    def wait_for_exit(self):
        wait_for(lambda: not self.is_running(), "the program to end")
        return self.process.returncode

    def windows(self):
        """Its windows and dialogs as seen by a screen reader."""
        found = []
        for application in accessibility.applications(self.desktop.accessibility_bus):
            try:
                if application.process == self.process.pid:
                    found += [window for window in application.children if window.is_("showing")]
            except accessibility.Gone:
                pass
        return found

    def window(self, title=TITLE):
        """Waits for a window."""
        return self.wait_for(
            lambda: next((window for window in self.windows() if window.name == title), None), f'window "{title}"'
        )

    def active_window(self, title=TITLE):
        """Waits for a window that has the keyboard focus."""
        window = self.window(title)
        self.wait_for(lambda: window.is_("active"), f'window "{title}" to be active')
        return window

    def find(self, role=None, name=None):
        """A visible item in any of its windows, or None."""
        found = (window.find(role, name) for window in self.windows())
        return next((node for node in found if node), None)

    def wait_for(self, condition, what):
        """Like wait_for, but ends at once when the program does."""

        def condition_while_running():
            if not self.is_running():
                raise AssertionError(f"the program ended with {self.process.returncode} before {what}: {self.output}")
            try:
                return condition()
            except accessibility.Gone:
                return None  # what was asked went away in between; the next round looks again

        return wait_for(condition_while_running, what)

    def wait_for_item(self, role=None, name=None):
        return self.wait_for(lambda: self.find(role, name), f'{role or "item"} "{name}"')

    def wait_until_gone(self, role=None, name=None):
        self.wait_for(lambda: not self.find(role, name), f'{role or "item"} "{name}" to disappear')

    def outline(self):
        return "".join(window.outline() for window in self.windows())

    def inspector(self):
        """The texts of the inspector from top to bottom, the path of the selected item last."""
        pane = self.find("layered pane", "Inspector")
        path = pane and pane.find("text", "Full Path")
        return [label.name for label in pane.all("label")] + [path.text] if path else []

    def wait_for_selection(self, path):
        """Waits until the inspector shows the item at the path."""
        self.wait_for(lambda: self.inspector()[-1:] == [str(path)], f"{path} to be selected")

    def treemap(self):
        """The names of the treemap's rectangles in the order of the layout."""
        canvas = self.find("list", "Treemap")
        return [item.name for item in canvas.children] if canvas else []

    def wait_for_treemap(self, names):
        self.wait_for(lambda: self.treemap() == names, f"a treemap of {names}")

    def focus(self, role, name):
        """Focuses an item."""
        node = self.wait_for_item(role, name)
        node.grab_focus()
        self.wait_for(lambda: node.is_("focused"), f'{role} "{name}" to have the keyboard')
        return node

    def tab_to(self, role, name):
        """Moves the focus to an item with the Tab key."""
        node = self.wait_for_item(role, name)
        while not node.is_("focused"):
            before = self._focused()
            self.desktop.display.press("Tab")
            self.wait_for(lambda: self._focused() not in ([], before), "the keyboard to go elsewhere")
        return node

    def _focused(self):
        return [node for node in self.active_window().all() if node.is_("focused")]

    def choose_folder(self, folder):
        """Scans a folder with the folder dialog, by keyboard."""
        self.active_window()
        self.desktop.display.press("Ctrl+O")
        self.scan_in_dialog(folder)

    def wait_for_rest(self, look, what):
        """Returns what `look` finds as soon as it finds the same twice in a row."""
        found = [None]

        def rests():
            found.append(look())
            return found[-1] if found[-1] == found[-2] else None

        return self.wait_for(rests, f"{what} to rest")

    def place(self, role, name):
        return self.wait_for_rest(lambda: (node := self.find(role, name)) and node.extents, f'{role} "{name}"')

    def click(self, role, name):
        """Clicks on an item."""
        self.desktop.display.click(self.place(role, name))

    def dialog(self):
        """Waits for a dialog with the keyboard focus and any title."""

        def is_dialog(window):
            return window.role == "dialog" and window.is_("active")

        return self.wait_for(lambda: next(filter(is_dialog, self.windows()), None), "a dialog")

    def scan_in_dialog(self, folder):
        """Types the folder in the open dialog, and confirms."""
        dialog = self.dialog()
        field = self.wait_for(lambda: dialog.find("text"), "the dialog's field for names")
        self.wait_for(lambda: field.is_("focused"), "the dialog's field to be ready")
        self.desktop.display.type(str(folder))
        self.wait_for(lambda: field.text == str(folder), "the path to be typed")
        self.desktop.display.press("Return")
        self.wait_for(lambda: dialog not in self.windows(), "the dialog to close")
