"""Uses the program by pointer only, except for file names: drags and resizes crops, drags handles and the playhead,
clicks controls. Compares the exported pixels with the crops."""

from clips import Crop, is_whole, make_mosaic
from desktop import eventually
from pictures import CORAL, LIGHT_CORAL, Picture, shown_second
from window_test import WindowTest, main

PANEL = 1.125  # width / height of half the output
WINDOW = (1180, 810)
# Layout of this window in points: left edge and size of the picture; left edge and width of the timeline's track, and
# its distance from the bottom.
PICTURE_LEFT, PICTURE_WIDTH, PICTURE_HEIGHT = 42, 768, 432
TRACK_LEFT, TRACK_WIDTH, TRACK_FROM_BOTTOM = 60, 732, 65
SCALE = 1280 / PICTURE_WIDTH


def track(second):
    """The x position of a time on the timeline."""
    return round(TRACK_LEFT + TRACK_WIDTH * second / 6)


class Pointer(WindowTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.clip = cls.desktop.home / "Beach day.mp4"
        make_mosaic(cls.clip)

    def setUp(self):
        self.program = self.start()
        self.assertEqual(self.program.size(), WINDOW)

    def test_exports_a_cropped_and_trimmed_clip(self):
        left, top, width, height = self.box(CORAL, (200, 200, 600, 500))
        self.program.click(left + width // 2, top + height // 2)
        self.desktop.type_path("Choose a horizontal video", self.clip)
        eventually(self.program.export_is_offered, "a loaded clip")
        upper, lower = Crop.first_pair(PANEL)
        self.top_edge = round(self.drawn(CORAL, 2)[1] - upper.y * PICTURE_HEIGHT)
        self.assert_drawn(CORAL, upper, 2)
        self.assert_drawn(LIGHT_CORAL, lower, 1)
        self.assert_corner_is_whole(upper)

        # Move the selected crop by its body, then part of the way back.
        self.drag_crop(upper, -20, 30)
        upper = upper.moved(-20 * SCALE, 30 * SCALE)
        self.drag_crop(upper, 10, -10)
        upper = upper.moved(10 * SCALE, -10 * SCALE)
        self.assert_drawn(CORAL, upper, 2)
        # A click selects the other crop, which shows its resize handle.
        self.program.click(*self.place(lower.x + lower.width / 2, lower.y + lower.height / 2))
        eventually(lambda: self.drawn(LIGHT_CORAL, 2)[0] > 0, "a selected crop")
        right, bottom = self.place(lower.x + lower.width, lower.y + lower.height)
        self.program.drag(right - 10, bottom - 10, -90, -20)
        lower = lower.widened(-90 * SCALE, PANEL)
        self.assert_drawn(LIGHT_CORAL, lower, 2)
        self.drag_crop(lower, -30, 60)
        lower = lower.moved(-30 * SCALE, 60 * SCALE)
        self.assert_drawn(LIGHT_CORAL, lower, 2)

        self.trim()
        self.scrub()
        self.program.click(WINDOW[0] - 72, 344)
        self.export_and_check(upper, lower)

    def trim(self):
        """Drags the start handle to 1 s and the end handle to 4.5 s."""
        y = WINDOW[1] - TRACK_FROM_BOTTOM
        self.program.drag(track(0) + 5, y, track(1) - track(0), 0, steps=2)
        self.program.drag(track(6) - 5, y, track(4.5) - track(6), 0, steps=3)

    def scrub(self):
        """Drags the playhead of the paused preview. The preview has to show the time at the pointer, also after the
        release."""
        self.program.click(PICTURE_LEFT + PICTURE_WIDTH - 66, WINDOW[1] - 22 - 14 - 84 - 18 - 18)
        y = WINDOW[1] - TRACK_FROM_BOTTOM
        self.program.point(track(2.5), y)
        self.desktop.xdotool("mousedown", 1)
        self.await_second(2)
        self.program.point(track(3.6), y)
        self.await_second(3)
        self.program.point(track(1.4), y)
        self.await_second(1)
        self.desktop.xdotool("mouseup", 1)
        self.await_second(1)

    def export_and_check(self, upper, lower):
        result = self.desktop.home / "By pointer.mp4"
        self.program.export_to(result)
        # The moving part of the progress bar is invisible at times, so its absence alone does not mean that the export
        # has ended.
        eventually(lambda: is_whole(result) and not self.program.progress_is_shown(), "an exported file")
        first, last = (6 * (track(second) - TRACK_LEFT) / TRACK_WIDTH for second in (1, 4.5))
        self.assert_is_export(result, (1080, 1920), last - first, sound=False)
        self.assert_shows(result, self.clip, (first, last), (upper.pixels(), lower.pixels()))
        self.program.click(WINDOW[0] - 21, 15)
        self.assert_ends_well(self.program)

    def place(self, x, y):
        """Converts fractions of the picture into window coordinates."""
        return round(PICTURE_LEFT + x * PICTURE_WIDTH), round(self.top_edge + y * PICTURE_HEIGHT)

    def drag_crop(self, crop, by_x, by_y):
        # Drag a point slightly below the centre, where a crop has neither its label nor its resize handle.
        self.program.drag(*self.place(crop.x + crop.width / 2, crop.y + crop.height * 0.6), by_x, by_y)

    def box(self, colour, area):
        """Left, top, width and height of the bounding box of this colour in an area of the window."""
        box = self.seen(area).box(colour)
        self.assertIsNotNone(box, f"nothing has the colour {colour}")
        return area[0] + box[0], area[1] + box[1], box[2], box[3]

    def seen(self, area):
        return Picture(self.program.picture(*area), area[2])

    def drawn(self, colour, stroke):
        """The rectangle of the crop of this colour, without the outer half of its outline (`stroke` points)."""
        x, y, width, height = self.box(colour, (PICTURE_LEFT, 150, PICTURE_WIDTH, WINDOW[1] - 150 - 140))
        return x + stroke, y + stroke, width - 2 * stroke, height - 2 * stroke

    def assert_drawn(self, colour, crop, stroke):
        expected = (*self.place(crop.x, crop.y), crop.width * PICTURE_WIDTH, crop.height * PICTURE_HEIGHT)
        eventually(
            lambda: all(abs(is_ - should) <= 2 for is_, should in zip(self.drawn(colour, stroke), expected)),
            f"a crop drawn at {expected}",
        )

    def assert_corner_is_whole(self, crop):
        """Checks that the resize handle of the selected crop has its whole dark border, also over a playing video."""
        right, bottom = self.place(crop.x + crop.width, crop.y + crop.height)
        seen = self.seen((right - 24, bottom - 24, 28, 28)).rgb
        self.assertEqual(sum(max(seen[at : at + 3]) <= 2 for at in range(0, len(seen), 3)), 20 * 20 - 12 * 12)

    def await_second(self, second):
        """Waits until the preview shows this second of the clip, recognised by the strip above the crops."""
        eventually(
            lambda: shown_second(self.seen((PICTURE_LEFT, self.top_edge, PICTURE_WIDTH, 40)), self.clip) == second,
            f"a preview of second {second}",
        )


if __name__ == "__main__":
    main()
