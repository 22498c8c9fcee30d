"""Tiling by a window manager: by its shortcuts, and by dragging the window to an edge of the screen. Afterwards the
window gets its previous size back."""

from desktop import Desktop, MessageBus, eventually
from window_test import WindowTest, main

WIDTH, HEIGHT = 2560, 1440
HALF_WIDTH, HALF_HEIGHT = WIDTH // 2, HEIGHT // 2
FIRST_SIZE = (1180, 810)
LEFT, RIGHT = (0, 0, HALF_WIDTH, HEIGHT), (HALF_WIDTH, 0, HALF_WIDTH, HEIGHT)
WHOLE = (0, 0, WIDTH, HEIGHT)

# The default of the Xfce desktop. Without it, xfwm4 switches to the next workspace at the edge of the screen.
SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfwm4" version="1.0">
  <property name="general" type="empty">
    <property name="wrap_windows" type="bool" value="false"/>
  </property>
</channel>
"""


class TilingDesktop(Desktop):
    """A desktop with Xfce's window manager. Half the screen is wider than the window's minimum width."""

    MANAGER = ["xfwm4", "--compositor=off"]
    SCREEN = f"{WIDTH}x{HEIGHT}"

    def prepare(self):
        self.environment["NO_AT_BRIDGE"] = "1"
        self.bus = MessageBus(self.environment)
        settings = self.home / ".config/xfce4/xfconf/xfce-perchannel-xml/xfwm4.xml"
        settings.parent.mkdir(parents=True)
        settings.write_text(SETTINGS)

    def close(self):
        super().close()
        self.bus.close()


class Tiling(WindowTest):
    DESKTOP = TilingDesktop

    def setUp(self):
        self.program = self.start()
        self.desktop.xdotool("windowmove", self.program.window, 600, 300)
        self.await_place((600, 300, *FIRST_SIZE))

    def tearDown(self):
        self.program.key("ctrl+q")
        self.assert_ends_well(self.program)

    def await_place(self, expected):
        eventually(
            lambda: self.program.place() == expected, f"the window at {expected}; it is at {self.program.place()}"
        )

    def test_shortcuts_tile_the_window_and_restore_it(self):
        for key, expected in (
            ("super+KP_Left", LEFT),
            ("super+KP_Right", RIGHT),
            ("super+KP_Up", (0, 0, WIDTH, HALF_HEIGHT)),
            ("super+KP_Down", (0, HALF_HEIGHT, WIDTH, HALF_HEIGHT)),
            ("super+KP_Home", (0, 0, HALF_WIDTH, HALF_HEIGHT)),
            ("super+KP_Next", (HALF_WIDTH, HALF_HEIGHT, HALF_WIDTH, HALF_HEIGHT)),
            ("alt+F10", WHOLE),
        ):
            with self.subTest(key):
                self.program.key(key)
                self.await_place(expected)
        self.program.key("alt+F10")
        eventually(lambda: self.program.size() == FIRST_SIZE, "the size from before")

    def test_a_drag_to_an_edge_tiles_the_window_and_a_drag_away_restores_it(self):
        for edge, expected in (((0, 700), LEFT), ((WIDTH - 1, 700), RIGHT), ((1200, 0), WHOLE)):
            for grab_y in (15, 60):  # in the title bar, and in the empty part of the header
                with self.subTest(edge=edge, grab_y=grab_y):
                    self.drag_to(edge, grab_y, lambda: self.program.place() == expected)
                    self.drag_to((1300, 600), grab_y, lambda: self.program.size() == FIRST_SIZE)
                    left, top, width, height = self.program.place()
                    self.assertTrue(
                        left < 1300 < left + width and top < 600 < top + height,
                        f"it came back elsewhere than under the pointer: {(left, top)}",
                    )

    def drag_to(self, target, grab_y, is_placed):
        """Drags the window until the pointer is at a position on the screen, and releases it there."""
        left, top, width, _ = self.program.place()
        start = (left + width // 2, top + grab_y)
        self.desktop.xdotool("mousemove", *start, "mousedown", 1)
        for step in range(1, 31):
            between = (round(a + (b - a) * step / 30) for a, b in zip(start, target))
            self.desktop.xdotool("mousemove", *between, "sleep", 0.02)
        eventually(is_placed, f"the window dragged to {target}; it is at {self.program.place()}")
        self.desktop.xdotool("mouseup", 1)
        eventually(is_placed, f"the window left at {target}; it is at {self.program.place()}")


if __name__ == "__main__":
    main()
