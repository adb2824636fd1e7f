"""How the program starts, and what it makes of a desktop that lacks something."""

from case import EndToEndTest


class LaunchTest(EndToEndTest):
    def test_first_launch_welcomes(self):
        self.start_on_desktop()
        program = self.program
        program.wait_for_item("label", "Welcome to Morlaine")
        states = {
            name: program.wait_for_item("push button", name).is_("sensitive")
            for name in ["Go Back", "Go Forward", "Scan Folder...", "Select Folder to Scan..."]
        }
        self.assertEqual(
            states,
            {"Go Back": False, "Go Forward": False, "Scan Folder...": True, "Select Folder to Scan...": True},
        )
        self.picture("welcome")
        self.assertEqual(self.store.history(), [])
        self.quit()
