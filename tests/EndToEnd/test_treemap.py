"""The treemap and its header, by mouse and by keyboard."""

from Xlib import X

from case import EndToEndTest
from program import SEARCH_FIELD

PHOTO = "50% of café & co.jpg"
FILES = {f"photos/trip/{PHOTO}": 50_000, "photos/sky.png": 30_000, "papers/report.pdf": 40_000, "notes.txt": 20_000}

IN_TRIP = [PHOTO]
IN_PHOTOS = ["trip", *IN_TRIP, "sky.png"]
IN_ALL = ["photos", *IN_PHOTOS, "papers", "report.pdf", "notes.txt"]


class TreemapTest(EndToEndTest):
    def start_with_treemap(self):
        self.start_at_home(FILES)
        self.scan_home()
        self.program.wait_for_treemap(IN_ALL)

    def click(self, name, margin_only=False, **options):
        """Clicks on a rectangle. A folder can only be hit at its margin."""
        x, y, width, height = self.program.wait_for_item("list item", name).extents
        self.desktop.display.click((x, y, 3 if margin_only else width, height), **options)

    def wait_for_zoom(self, path, names):
        def steps():
            return [step.name for step in self.program.find("filler", "Path").all("push button")]

        self.program.wait_for(lambda: steps() == path, f"the path to be {path}")
        self.program.wait_for_treemap(names)
        self.program.wait_for_selection(self.folder.joinpath(*path))

    def menu(self):
        """The entries of the menu that opens."""
        menu = self.program.wait_for(lambda: self.listener.next("popup menu"), "a menu")
        return {entry.name: entry for entry in menu.children if entry.role != "separator"}

    def paste_into_search_field(self):
        field = self.program.focus(*SEARCH_FIELD)
        self.desktop.display.press("Ctrl+V")
        self.program.wait_for(lambda: field.text, "the text to be pasted")
        return field.text

    def test_zooms_in_and_out(self):
        self.start_with_treemap()
        program = self.program
        self.wait_for_zoom([], IN_ALL)
        self.click("photos", margin_only=True, count=2)
        self.wait_for_zoom(["photos"], IN_PHOTOS)
        self.click("trip", margin_only=True, count=2)
        self.wait_for_zoom(["photos", "trip"], IN_TRIP)
        self.picture("zoomed")
        program.click("push button", "Go Back")
        self.wait_for_zoom(["photos"], IN_PHOTOS)
        program.click("push button", "Go Back")
        self.wait_for_zoom([], IN_ALL)
        self.assertFalse(program.find("push button", "Go Back").is_("sensitive"))
        program.click("push button", "Go Forward")
        self.wait_for_zoom(["photos"], IN_PHOTOS)
        program.click("push button", "Go Forward")
        self.wait_for_zoom(["photos", "trip"], IN_TRIP)
        program.click("push button", "photos")
        self.wait_for_zoom(["photos"], IN_PHOTOS)
        self.desktop.display.press("Escape")
        self.wait_for_zoom([], IN_ALL)
        self.quit()

    def test_context_menu(self):
        self.start_with_treemap()
        self.click("photos", margin_only=True, button=X.Button3)
        menu = self.menu()
        self.picture("menu")
        self.assertEqual(
            list(menu), ["photos", "Zoom In", "Reveal in Finder", "Open File / Folder", "Copy Path"]
        )
        self.desktop.display.click(menu["Zoom In"].extents)
        self.wait_for_zoom(["photos"], IN_PHOTOS)
        self.click(PHOTO, button=X.Button3)
        menu = self.menu()
        self.assertEqual(list(menu), [PHOTO, "Reveal in Finder", "Open File / Folder", "Copy Path"])
        self.desktop.display.click(menu["Copy Path"].extents)
        path = self.folder / "photos" / "trip" / PHOTO
        self.program.wait_for_selection(path)
        self.assertEqual(self.paste_into_search_field(), str(path))
        self.quit()
