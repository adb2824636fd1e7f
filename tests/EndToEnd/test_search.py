"""Searching by text, type and size."""

from case import EndToEndTest
from program import SEARCH_FIELD

MIB = 1 << 20
YEARLY, SUMMARY, ALMOST = "Reports/2023/Yearly Report.PDF", "Reports/summary.pdf", "Reports/almost.pdf"
PLAN, ANNUAL = "Other/plan.docx", "Other/annual-report.md"
FILES = {
    YEARLY: 12 * MIB, "Reports/2023/report.mp4": 11 * MIB, SUMMARY: 10 * MIB, ALMOST: 10 * MIB - 1,
    PLAN: 15 * MIB, ANNUAL: 3_000, "Other/clip.mp4": 2_000,
}
NO_TYPE, NO_THRESHOLD = "All Categories", "Any Size"


class SearchTest(EndToEndTest):
    def start_with_scan(self, files):
        self.start_on_desktop()
        self.folder = self.make_folder(files)
        self.scan(self.folder)
        self.program.wait_for_item("label", "Search & Filter Scan")
        self.desktop.display.press("Ctrl+F")
        field = self.program.wait_for_item(*SEARCH_FIELD)
        self.program.wait_for(lambda: field.is_("focused"), "the search field to have the keyboard")

    def wait_for_results(self, *paths):
        expected = [f"{path.rpartition('/')[2]}, {self.folder}/{path}" for path in paths]

        def are_shown():
            rows = self.program.wait_for_item("list", "Search results").children
            return [row.name.rpartition(", ")[0] for row in rows] == expected

        self.program.wait_for(are_shown, f"the results {expected}")

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
        self.wait_for_results("Reports", "Reports/2023", YEARLY, "Reports/2023/report.mp4", SUMMARY, ALMOST, ANNUAL)
        self.pick(NO_TYPE, "Documents", "Down")
        self.wait_for_results(YEARLY, SUMMARY, ALMOST, ANNUAL)
        self.pick(NO_THRESHOLD, "> 10 MB", "Down")
        self.wait_for_results(YEARLY, SUMMARY)
        self.picture("narrowed")
        self.program.click("push button", "Clear search text")
        self.wait_for_results(YEARLY, SUMMARY, PLAN)
        self.pick("> 10 MB", NO_THRESHOLD, "Up")
        self.wait_for_results(YEARLY, SUMMARY, ALMOST, PLAN, ANNUAL)
        self.pick("Documents", NO_TYPE, "Up")
        self.program.wait_for_item("label", "Search & Filter Scan")
        self.quit()
