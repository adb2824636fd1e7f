"""The sidebar: places, recent scans, space breakdown."""

from case import EndToEndTest

FILES = {"photos/sky.png": 50_000, "photos/sea.jpg": 30_000, "papers/report.pdf": 40_000, "papers/old.zip": 5_000}
PHOTOS, PAPERS = ["sky.png", "sea.jpg"], ["report.pdf", "old.zip"]


class SidebarTest(EndToEndTest):
    def start_with_two_scans(self):
        """Shows the newer one, of papers."""
        self.start_on_desktop()
        self.folder = self.make_folder(FILES)
        self.photos = self.scan(self.folder / "photos")
        self.papers = self.scan(self.folder / "papers", count=2)
        self.program.wait_for_treemap(PAPERS)
        self.wait_for_rows(["papers", "photos"])

    def rows(self):
        scans = self.program.find("list", "Recent Scans")
        return {row.name.partition(",")[0]: row for row in scans.children} if scans else {}

    def row(self, name):
        return self.program.wait_for(lambda: self.rows().get(name), f"the row of {name}")

    def wait_for_rows(self, names):
        self.program.wait_for(lambda: list(self.rows()) == names, f"the recent scans to be {names}")

    def wait_for_breakdown(self, figures):
        def is_shown():
            rows = self.program.wait_for_item("list", "Space Breakdown")
            return [text for row in rows.children for text in (row.name, row.description)] == figures

        self.program.wait_for(is_shown, f"a breakdown of {figures}")

    def check_stored(self, entries):
        self.assertEqual(self.store.history(), entries)
        trees = {path.stem for path in self.store.scans.iterdir()}
        self.assertEqual(trees, {entry["id"] for entry in entries})

    def test_earlier_scans_are_reopened(self):
        self.start_with_two_scans()
        # The scan is shown, not the current content of the folder.
        (self.folder / "photos" / "sea.jpg").unlink()
        self.desktop.display.click(self.row("photos").extents)
        self.program.wait_for_treemap(PHOTOS)
        self.program.wait_for_selection(self.folder / "photos")
        self.wait_for_breakdown(["Images", "80 KB"])

        self.program.focus("push button", "Desktop")
        keys = ["Tab", "End", "Home", "Down", "Up"]
        for key, name in zip(keys, ["papers", "photos", "papers", "photos", "papers"]):
            self.desktop.display.press(key)
            self.program.wait_for(lambda: self.row(name).is_("focused"), f"{key} to move to {name}")
        self.desktop.display.press("Return")
        self.program.wait_for_treemap(PAPERS)
        self.program.wait_for_selection(self.folder / "papers")
        self.wait_for_breakdown(["Archives", "5 KB", "Documents", "40 KB"])
        self.check_stored([self.photos, self.papers])
        self.quit()
