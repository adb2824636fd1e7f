"""The treemap and its header, by mouse and by keyboard."""

from case import EndToEndTest

PHOTO = "50% of café & co.jpg"
FILES = {f"photos/trip/{PHOTO}": 50_000, "photos/sky.png": 30_000, "papers/report.pdf": 40_000, "notes.txt": 20_000}

IN_TRIP = [PHOTO]
IN_PHOTOS = ["trip", *IN_TRIP, "sky.png"]
IN_ALL = ["photos", *IN_PHOTOS, "papers", "report.pdf", "notes.txt"]


class TreemapTest(EndToEndTest):
    def double_click(self, folder):
        """A folder can only be hit at its margin."""
        x, y, _, height = self.program.place("list item", folder)
        self.desktop.display.click((x, y, 3, height), count=2)

    def wait_for_zoom(self, path, names):
        def steps():
            return [step.name for step in self.program.wait_for_item("filler", "Path").all("push button")]

        self.program.wait_for(lambda: steps() == path, f"the path to be {path}")
        self.program.wait_for_treemap(names)
        self.program.wait_for_selection(self.folder.joinpath(*path))

    def test_zooms_in_and_out(self):
        self.start_at_home(FILES)
        self.scan_home()
        program = self.program
        self.wait_for_zoom([], IN_ALL)
        self.double_click("photos")
        self.wait_for_zoom(["photos"], IN_PHOTOS)
        self.double_click("trip")
        self.wait_for_zoom(["photos", "trip"], IN_TRIP)
        self.picture("zoomed")
        program.click("push button", "Go Back")
        self.wait_for_zoom(["photos"], IN_PHOTOS)
        program.click("push button", "Go Back")
        self.wait_for_zoom([], IN_ALL)
        program.wait_for(lambda: not program.wait_for_item("push button", "Go Back").is_("sensitive"), "no way back")
        program.click("push button", "Go Forward")
        self.wait_for_zoom(["photos"], IN_PHOTOS)
        program.click("push button", "Go Forward")
        self.wait_for_zoom(["photos", "trip"], IN_TRIP)
        program.click("push button", "photos")
        self.wait_for_zoom(["photos"], IN_PHOTOS)
        self.desktop.display.press("Escape")
        self.wait_for_zoom([], IN_ALL)
        self.quit()
