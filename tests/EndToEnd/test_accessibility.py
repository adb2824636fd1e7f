"""What people meet who do not see the window: names, reach, the focus, values and announcements."""

from accessibility import Listener
from case import EndToEndTest
from program import SEARCH_FIELD

FILES = {"photos/sky.png": 50_000, "photos/trip/sea.jpg": 30_000, "papers/report.pdf": 40_000, "notes.txt": 20_000}

CONTROLS = {
    "check box", "combo box", "grip", "layered pane", "list", "list item", "menu item", "notification", "popup menu",
    "progress bar", "push button", "text", "toggle button", "tool bar",
}
# Where the Tab key stops. What is inside a list is reached with the arrow keys or a menu.
STOPS = {"check box", "combo box", "list", "push button", "text", "toggle button"}


class AccessibilityTest(EndToEndTest):
    def make_desktop(self, **options):
        super().make_desktop(**options)
        self.listener = Listener(self.desktop.accessibility_bus)

    def start_with_scan(self):
        self.start_at_home(FILES)
        self.check("welcome")
        self.scan_home()
        self.program.wait_for_item("list", "Treemap")

    def items(self):
        """The controls that are shown, with role, name and states; not what is inside the items of lists."""

        def collect(node):
            if not node.is_("showing"):
                return []
            role = node.role
            states = {state for state in ("focusable", "sensitive") if node.is_(state)}
            inside = [] if role in ("list item", "combo box") else node.children
            own = [(node, role, node.name, states)] if role in CONTROLS else []
            return sum(map(collect, inside), own)

        return self.program.wait_for_rest(lambda: collect(self.program.active_window()), "everything")

    def check(self, state):
        """That everything has a name, and that the Tab key goes to every control and loses the focus nowhere."""
        with self.subTest(state=state):
            items = self.items()
            unnamed = [node.outline() for node, _, name, _ in items if not name]
            # Qt's own stacks of pages, of which one is shown, are panes without a meaning.
            self.assertEqual([outline for outline in unnamed if not outline.startswith("layered pane")], [])
            deaf = {name for _, role, name, states in items if role == "push button" and states == {"sensitive"}}
            self.assertEqual(deaf, set(), "buttons that no key reaches")
            wanted = {node: name for node, role, name, states in items if role in STOPS and len(states) == 2}
            focused = [node for node in wanted if node.is_("focused")]
            reached = []
            while not reached or reached[-1] not in reached[:-1]:
                before = focused
                self.desktop.display.press("Tab")
                focused = self.program.wait_for(
                    lambda: [node for node in wanted if node.is_("focused") and [node] != before],
                    f"the focus to go on from {before and wanted[before[0]]}",
                )
                reached += focused
            missed = {wanted[node] for node in set(wanted) - set(reached)}
            self.assertEqual(missed, set(), f"not reached, after {[wanted[node] for node in reached]}")

    def places(self, *names):
        """Where items with these names come in the order of the tree."""
        order = [node.name for node in self.program.active_window().all()]
        return [len(order) - order[::-1].index(name) for name in names]  # "Inspector" is a toggle, too

    def wait_for_notification(self, text):
        """Waits for one that has appeared since the last that was waited for, though it may be gone again."""
        self.program.wait_for(lambda: self.listener.next("notification", text), f'the notification "{text}"')

    def wait_for_focus(self, *names):
        self.program.wait_for(lambda: (node := self.program.find(*names)) and node.is_("focused"), f"the focus on {names}")

    def test_every_state_can_be_walked(self):
        self.start_with_scan()
        self.wait_for_notification(f"Scan finished: {self.folder.name}, 140 KB")
        self.check("a scan")
        places = self.places("Disks", "Treemap", *SEARCH_FIELD[1:], "Storage by File Type", "Inspector")
        self.assertEqual(places, sorted(places), "not in the order of reading")
        self.program.focus(*SEARCH_FIELD)
        self.desktop.display.type("p")
        self.program.wait_for_item("list", "Search results")
        self.check("results")
        self.desktop.display.press("Ctrl+F")
        self.desktop.display.type("nothing of that name")
        self.program.wait_for_item("label", "No matches found")
        self.check("no results")
        self.desktop.display.press("Ctrl+S")
        self.program.wait_until_gone("filler", "Disks")
        self.check("no sidebar")
        self.quit()

    def test_scan_that_runs_and_is_cancelled(self):
        self.start_endless_scan()
        self.picture("scanning")
        self.program.wait_until_gone("push button", "Scan Folder...")
        self.check("scanning")
        self.desktop.display.press("Escape")
        self.program.wait_for_item("push button", "Scan Folder...")
        self.program.wait_until_gone("push button", "Cancel")
        self.release_folder()
        self.wait_for_notification("Scan cancelled by user.")
        self.check("cancelled")
        # Anything that the cancelled scan might still do is done before the end of another one.
        entries = [self.scan(self.folder)]
        self.assertEqual(self.store.history(), entries)
        self.assertEqual(len(list(self.store.scans.iterdir())), 1)
        self.quit()

    def test_values_and_actions(self):
        self.start_with_scan()
        values = self.program.wait_for(
            lambda: [node.value for node in self.program.window().all("push button") if node.value is not None], "volumes"
        )
        self.assertTrue(all(0 <= value <= 100 for value in values))
        for rows, first in [("Space Breakdown", ("Images", "80 KB")), ("Legend", ("Images", "57.1%"))]:
            self.program.wait_for(
                lambda: (row := self.program.wait_for_item("list", rows).children[0]) and (row.name, row.description) == first,
                f"the {rows} to begin with {first}",
            )

        toggle = self.program.wait_for_item(name="Disks Sidebar")
        self.assertTrue(toggle.is_("checked"))
        self.desktop.display.press("Ctrl+S")
        self.program.wait_for(lambda: not toggle.is_("checked"), "the toggle to tell that the sidebar is gone")
        self.desktop.display.press("Ctrl+S")

        # The items are replaced as long as the sidebar slides in.
        self.program.wait_for(
            lambda: (item := self.program.find("list item", "photos")) and (item.do_action("Zoom In"), True), "zooming"
        )
        self.program.wait_for_selection(self.folder / "photos")
        self.program.wait_for_treemap(["sky.png", "trip", "sea.jpg"])
        trash = self.program.wait_for_item("list", "Recent Scans").children[0].children[0]
        self.assertEqual((trash.role, trash.name), ("push button", "Remove scan cache"))
        trash.do_default_action()
        self.program.wait_for_item("label", "No recent scans")
        self.assertEqual(self.store.history(), [])
        self.quit()

    def test_menus_and_dialog(self):
        self.start_with_scan()
        self.program.focus("list", "Treemap")
        for keys in ["Home", "Shift+F10"]:
            self.desktop.display.press(keys)
        menu = self.program.wait_for(lambda: self.listener.next("popup menu"), "a menu")
        entries = [entry for entry in menu.children if entry.role != "separator"]
        self.assertTrue(all(entry.name for entry in entries))
        self.desktop.display.press("Escape")
        self.wait_for_focus("list", "Treemap")
        self.desktop.display.press("Ctrl+O")
        dialog = self.program.dialog()
        unnamed = [node.outline() for node in dialog.all() if node.role in STOPS and not node.name]
        self.assertEqual(unnamed, [])
        self.desktop.display.press("Escape")
        self.wait_for_focus("list", "Treemap")
        self.quit()
