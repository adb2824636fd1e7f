"""Searching by text, type and size."""

import os

from case import EndToEndTest
from program import SEARCH_FIELD

MIB = 1 << 20
FILES = {
    "Reports/summary.pdf": 10 * MIB,
    "Reports/2023/Yearly Report.PDF": 12 * MIB,
    "Reports/2023/report.mp4": 11 * MIB,
    "Reports/almost.pdf": 10 * MIB - 1,
    "Other/plan.docx": 15 * MIB,
    "Other/annual-report.md": 3_000,
    "Other/notes.txt": 2_000,
}
DOCUMENT_TYPE, DOCUMENTS = "Documents", "document"
THRESHOLD, THRESHOLD_BYTES = "> 10 MB", 10 * MIB
NO_TYPE, NO_THRESHOLD = "All Categories", "Any Size"


def search(walk, text, category=None, least=0):
    """Names and paths of all matching items, one by one."""
    found = []

    def visit(item, path):
        name = os.fsdecode(item.name)
        holds_text = text.lower() in name.lower() or text.lower() in path.lower()
        if holds_text and category in (None, item.category) and item.size >= least:
            found.append((name, path))
        for child in item.children or []:
            visit(child, f"{path}/{os.fsdecode(child.name)}")

    visit(walk.root, os.fsdecode(walk.path))
    return found


class SearchTest(EndToEndTest):
    def start_with_scan(self, files):
        self.start_on_desktop()
        self.folder = self.make_folder(files)
        self.scan(self.folder)
        self.program.wait_for_item("label", "Search & Filter Scan")
        self.desktop.display.press("Ctrl+F")
        field = self.program.find(*SEARCH_FIELD)
        self.program.wait_for(lambda: field.is_("focused"), "the search field to have the keyboard")

    def results(self):
        results = self.program.find("list", "Search results")
        return results.children if results else []

    def wait_for_results(self, *query):
        """Waits for the results of a search, and returns their paths."""
        expected = search(self.walk(self.folder), *query)

        def are_shown():
            return [row.name.rpartition(", ")[0] for row in self.results()] == [", ".join(found) for found in expected]

        self.program.wait_for(are_shown, f"the results {expected}")
        return [path for _, path in expected]

    def pick(self, shown, wanted, key):
        """Selects another entry of a picker."""
        picker = self.program.tab_to("combo box", shown)
        while picker.name != wanted:
            before = picker.name
            self.desktop.display.press(key)
            self.program.wait_for(lambda: picker.name != before, f"{key} to move on from {before}")

    def test_text_type_and_size_narrow_down(self):
        self.start_with_scan(FILES)
        self.desktop.display.type("Report")
        of_text = self.wait_for_results("report")
        self.pick(NO_TYPE, DOCUMENT_TYPE, "Down")
        of_type = self.wait_for_results("report", DOCUMENTS)
        self.pick(NO_THRESHOLD, THRESHOLD, "Down")
        of_all = self.wait_for_results("report", DOCUMENTS, THRESHOLD_BYTES)
        self.picture("narrowed")
        self.assertEqual([os.path.basename(path) for path in of_all], ["Yearly Report.PDF", "summary.pdf"])
        self.assertTrue(set(of_all) < set(of_type) < set(of_text))

        self.program.click("push button", "Clear search text")
        self.wait_for_results("", DOCUMENTS, THRESHOLD_BYTES)
        self.pick(THRESHOLD, NO_THRESHOLD, "Up")
        self.wait_for_results("", DOCUMENTS)
        self.pick(DOCUMENT_TYPE, NO_TYPE, "Up")
        self.program.wait_for_item("label", "Search & Filter Scan")
        self.quit()
