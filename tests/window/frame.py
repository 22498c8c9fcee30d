"""The window's client-side frame and title bar: resize by each edge and corner, minimize, maximize, restore and
close."""

import pathlib

from desktop import eventually
from tools import Tools
from window_test import WindowTest, main

SCREEN = (1400, 900)
FIRST = (100, 60)
BUTTON = 42  # width of each of the three title bar buttons, in points


class Frame(WindowTest):
    def setUp(self):
        self.program = self.start()
        self.desktop.xdotool("windowmove", self.program.window, *FIRST)
        eventually(lambda: self.program.place()[:2] == FIRST, f"the window at {FIRST}")

    def test_resizes_by_each_edge_and_corner(self):
        for across in (-1, 0, 1):
            for down in (-1, 0, 1):
                if (across, down) != (0, 0):
                    with self.subTest(across=across, down=down):
                        self.resize(across, down, inwards=True)
                        self.resize(across, down, inwards=False)

    def resize(self, across, down, inwards):
        """Drags an edge or corner. `across` is -1 for the left edge, 1 for the right edge and 0 for neither; `down` is
        -1 for the top edge, 1 for the bottom edge and 0 for neither. The other edges must not move."""
        distance = 40 if inwards else -40
        left, top, right, bottom = before = self.sides()
        place = {-1: 2, 0: (right - left) // 2}.get(across, right - left - 3), {-1: 2, 0: (bottom - top) // 2}.get(
            down, bottom - top - 3
        )
        wanted = [side == dragged for dragged, side in ((across, -1), (down, -1), (across, 1), (down, 1))]
        self.program.drag_frame(
            *place, -across * distance, -down * distance, lambda: self.have_moved(before, wanted, distance)
        )

    def have_moved(self, before, wanted, distance):
        # The window manager starts the resize a few points late, and later on a busy machine.
        return all(
            5 <= (now - then) * sign * (1 if distance > 0 else -1) <= 40 if moved else now == then
            for then, now, moved, sign in zip(before, self.sides(), wanted, (1, 1, -1, -1))
        )

    def sides(self):
        left, top, width, height = self.program.place()
        return left, top, left + width, top + height

    def test_the_buttons_minimize_maximize_restore_and_close(self):
        self.press_button(3)
        eventually(lambda: not self.is_visible(), "a minimised window")
        self.desktop.xdotool("windowactivate", self.program.window)
        eventually(self.is_visible, "the window again")
        before = self.program.place()
        self.press_button(2)
        eventually(lambda: self.program.place() == (0, 0, *SCREEN), "a window that fills the screen")
        self.press_button(2)
        eventually(lambda: self.program.place() == before, f"the window at {before} again")
        self.press_button(1)
        self.assert_ends_well(self.program)

    def press_button(self, from_right):
        self.program.click(self.program.size()[0] - from_right * BUTTON + BUTTON // 2, 15)

    def is_visible(self):
        return self.desktop.xdotool("search", "--onlyvisible", "--name", "^Stackreel$") != ""

    def test_a_double_click_on_the_title_bar_or_header_maximizes_and_restores(self):
        before = self.program.place()
        for at in ((500, 15), (600, 60)):
            with self.subTest(at=at):
                self.program.click(*at, times=2)
                eventually(lambda: self.program.place() == (0, 0, *SCREEN), "a window that fills the screen")
                # Click at another position. Otherwise these would count as the third and fourth click of a series.
                self.program.click(at[0] + 200, at[1], times=2)
                eventually(lambda: self.program.place() == before, f"the window at {before} again")

    def test_ignores_a_file_on_the_command_line(self):
        tools = Tools(self.desktop.folder / "tools")
        tools.hold("ffprobe")
        clip = self.desktop.home / "clip.mp4"
        pathlib.Path(clip).touch()
        self.program.close()
        program = self.start(tools.folder, arguments=[clip])
        program.key("ctrl+o")
        self.desktop.xdotool("key", "--window", self.desktop.window("Choose a horizontal video"), "Escape")
        program.key("ctrl+q")
        self.assert_ends_well(program)
        self.assertEqual(tools.pid("ffprobe"), "")


if __name__ == "__main__":
    main()
