"""Uses the program by keyboard only. The accessibility bus is used only to read the focus and values."""

from accessible import AccessibleDesktop, AccessibleProgram, Atspi, descendants, role_name, wait_until
from clips import Crop, make_mosaic
from desktop import eventually
from window_test import WindowTest, main

MAIN = "Stackreel"
PANEL = 1080 / (1350 / 2)  # aspect ratio of half the output at 4:5, which is chosen below


class Keyboard(WindowTest):
    DESKTOP = AccessibleDesktop

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.clip = cls.desktop.home / "Beach day.mp4"
        make_mosaic(cls.clip)

    def setUp(self):
        self.program = self.start()
        self.shown = AccessibleProgram(self.program.process.pid)

    def test_exports_a_cropped_and_trimmed_clip(self):
        self.press("ctrl+o")
        self.type_into("Choose a horizontal video", self.clip)
        self.shown.find(MAIN, "status bar", self.clip.name)

        self.tab_to("combo box", "Aspect ratio")
        self.press("Return", "Down", "Return")
        top, bottom = (each.reshaped(PANEL) for each in Crop.first_pair())
        self.tab_to("radio button", "Top")
        self.press("Right", "Right", "Right", "Down", "shift+Right", "shift+Down")
        top = top.moved(13, 11)
        self.press("ctrl+shift+Left", "ctrl+shift+Left", "ctrl+Left")
        top = top.widened(-21, PANEL)
        self.tab_to("radio button", "Bottom")
        self.press("shift+Left", "Left", "Left", "Up")
        bottom = bottom.moved(-12, -1)

        self.tab_to("slider", "Trim start")
        self.step_to("Trim start", ("Right", "Up"), (0.25, 0.5, 0.75, 1))
        self.tab_to("slider", "Trim end")
        self.step_to("Trim end", ("Left", "Down"), (5.75, 5.5, 5.25, 5, 4.75, 4.5))
        self.tab_to("check box", "Include audio")
        self.press("space")
        self.check_preview()

        self.tab_to("push button", "Export vertical video")
        self.press("Return")
        result = self.desktop.home / "By keys.mp4"
        self.type_into("Export vertical video", result)
        self.shown.find(MAIN, "status bar", "Saved By keys.mp4")
        self.assert_is_export(result, (1080, 1350), 3.5, sound=False)
        self.assert_shows(result, self.clip, (1, 4.5), (top.pixels(), bottom.pixels()))

        self.press("ctrl+q")
        self.assert_ends_well(self.program)

    def check_preview(self):
        """Space toggles the preview, except on a focused button, which it presses."""
        self.tab_to("push button", "Unmute preview")
        self.press("space")
        self.shown.find(MAIN, "push button", "Mute preview")
        self.press("space")
        self.shown.find(MAIN, "push button", "Unmute preview")
        self.tab_to("radio button", "Top")
        self.shown.find(MAIN, "push button", "Pause preview")
        self.press("space")
        self.shown.find(MAIN, "push button", "Play preview")
        paused_at = self.value("Video position")
        self.tab_to("slider", "Video position")
        self.press("Right")
        # If the preview were still playing, the time would be later by now.
        stepped_to = min(paused_at + 0.25, 4.5)
        wait_until(
            lambda: abs(self.value("Video position") - stepped_to) < 0.05,
            f"a playhead stepped from {paused_at}, where it paused",
        )
        stepped_to = self.value("Video position")
        self.press("space")
        wait_until(lambda: self.value("Video position") != stepped_to, "a preview that plays")

    def press(self, *keys, window=MAIN):
        """Waits until the window is active, then presses keys. Does not activate the window itself."""
        title = self.desktop.window(window)
        eventually(lambda: self.desktop.xdotool("getactivewindow") == title, f"the focus on “{window}”")
        self.desktop.xdotool("key", *keys)

    def type_into(self, panel, path):
        self.press("ctrl+a", window=panel)
        self.desktop.xdotool("type", "--delay", 8, path)
        self.desktop.xdotool("key", "Return")

    def focused(self):
        """The role and the name of the focused object."""
        return next(
            (
                (role_name(each), each.get_name())
                for each in descendants(self.shown.window(MAIN))
                if each.get_state_set().contains(Atspi.StateType.FOCUSED)
            ),
            None,
        )

    def tab_to(self, *wanted):
        passed = []
        while (now := wait_until(lambda: (self.focused(),), "a window with controls")[0]) != wanted:
            self.assertNotIn(now, passed[1:], f"Tab never came to {wanted}")
            passed.append(now)
            self.press("Tab")
            wait_until(lambda: self.focused() not in (None, now), f"the focus somewhere behind {now}")

    def value(self, name):
        return self.shown.find(MAIN, "slider", name).get_value_iface().get_current_value()

    def step_to(self, name, keys, values):
        for index, value in enumerate(values):
            self.press(keys[index % len(keys)])
            wait_until(lambda: abs(self.value(name) - value) < 0.001, f"“{name}” at {value}")


if __name__ == "__main__":
    main()
