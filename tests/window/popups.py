"""All popups have an accessible name: menus, the picker's list, the about dialog and tool tips."""

from accessible import AccessibleDesktop, AccessibleProgram, descendants, role_name, wait_until, is_showing
from window_test import WindowTest, main

MAIN = "Stackreel"
MENUS = {
    "Stackreel": ["About Stackreel", "Check for Updates…", "Quit"],
    "File": ["Choose Video…"],
    "Playback": ["Play Preview"],
}


class Popups(WindowTest):
    DESKTOP = AccessibleDesktop

    def setUp(self):
        self.program = self.start()
        self.accessible = AccessibleProgram(self.program.process.pid)

    def tearDown(self):
        self.program.key("ctrl+q")
        self.assert_ends_well(self.program)

    def items(self, role, name):
        """Waits for the popup with this role and name; returns the names of its visible contents."""
        found = self.accessible.find(MAIN, role, name)
        return [each.get_name() for each in descendants(found) if is_showing(each) and each.get_name()]

    def test_menus(self):
        for menu, items in MENUS.items():
            with self.subTest(menu):
                title = self.accessible.find(MAIN, "menu item", menu)
                self.accessible.perform(title, "Press")
                self.assertEqual(self.items("popup menu", menu), items)
                self.program.key("Escape")
                self.await_gone("popup menu")

    def test_the_list_of_aspect_ratios(self):
        self.accessible.act(MAIN, "combo box", "Aspect ratio", "Press")
        self.assertEqual(self.items("dialog", "Aspect ratio"), ["9:16", "4:5", "1:1", "Custom"])
        # Keys must work in the list although it was not opened by a key.
        self.program.key("Escape")
        self.await_gone("dialog")

    def test_the_about_dialog(self):
        self.accessible.act_in_menu(MAIN, "Stackreel", "About Stackreel")
        self.assertIn("Close", self.items("dialog", "About Stackreel"))
        self.program.key("Escape")
        self.await_gone("dialog")

    def test_a_tool_tip(self):
        self.program.point(self.program.size()[0] - 21, 15)
        self.accessible.find(MAIN, "tool tip", "Close")

    def await_gone(self, role):
        wait_until(
            lambda: not any(
                role_name(each) == role and is_showing(each) for each in descendants(self.accessible.window(MAIN))
            ),
            f"no {role} any more",
        )


if __name__ == "__main__":
    main()
