"""Uses the program through the accessibility bus only: without pointer, keyboard or screenshots."""

from accessible import (
    AccessibleDesktop,
    AccessibleProgram,
    Atspi,
    described,
    descendants,
    role_name,
    wait_until,
    is_showing,
)
from clips import Crop, make_mosaic
from window_test import WindowTest, main

MAIN = "Stackreel"
OPEN_PANEL = "Choose a horizontal video"
SAVE_PANEL = "Export vertical video"
PANEL = 1080 / (1350 / 2)  # aspect ratio of half the output at 4:5, which is chosen below


class Accessibility(WindowTest):
    DESKTOP = AccessibleDesktop

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.clip = cls.desktop.home / "Beach day.mp4"
        make_mosaic(cls.clip)

    def setUp(self):
        self.program = self.start()
        self.accessible = AccessibleProgram(self.program.process.pid)
        self.status = self.accessible.find(MAIN, "status bar", "Choose a horizontal video to begin.")
        self.announced = []
        listener = Atspi.EventListener.new(self.name_changed)
        listener.register("object:property-change:accessible-name")
        self.addCleanup(listener.deregister, "object:property-change:accessible-name")

    def name_changed(self, event):
        if event.source == self.status:
            self.announced.append(self.status.get_name())

    def test_exports_a_cropped_and_trimmed_clip_without_audio(self):
        self.accessible.act(MAIN, "push button", "Choose a video", "Press")
        self.accessible.choose_file(OPEN_PANEL, self.clip, "Choose Video")
        self.await_status(self.clip.name)
        self.assert_all_is_named()

        self.accessible.act(MAIN, "combo box", "Aspect ratio", "Press")
        self.accessible.act(MAIN, "list item", "4:5", "Press")
        crops = self.frame(*(each.reshaped(PANEL) for each in Crop.first_pair()))
        for end in (5.75, 5.5, 5.25, 5):
            self.step("Trim end", "Decrease", end)
        self.step("Trim start", "Increase", 0.25)
        self.accessible.act(MAIN, "check box", "Include audio", "Toggle")
        audio = self.accessible.find(MAIN, "check box", "Include audio")
        wait_until(lambda: not audio.get_state_set().contains(Atspi.StateType.CHECKED), "a switch that is off")

        self.accessible.act(MAIN, "push button", "Export vertical video", "Press")
        result = self.desktop.home / "Silent.mp4"
        self.accessible.choose_file(SAVE_PANEL, result, "Export")
        self.await_status("Rendering from the original video.")
        self.await_status("Saved Silent.mp4")
        self.assert_all_is_named()
        self.assert_is_export(result, (1080, 1350), 4.75, sound=False)
        self.assert_shows(result, self.clip, (0.25, 5), [each.pixels() for each in crops])
        self.close_window()

    def frame(self, top, bottom):
        """Moves one crop and shrinks the other; returns the expected crops."""
        for action in ("Scroll Right", "Scroll Down", "Scroll Down", "Scroll Right", "Scroll Left"):
            self.accessible.act(MAIN, "radio button", "Top", action)
        for action in ("Decrease", "Decrease", "Increase", "Scroll Up"):
            self.accessible.act(MAIN, "radio button", "Bottom", action)
        chosen = self.accessible.find(MAIN, "radio button", "Bottom")
        wait_until(
            lambda: chosen.get_state_set().contains(Atspi.StateType.CHECKED), "the crop last moved as the selected one"
        )
        return top.moved(10, 20), bottom.widened(-10, PANEL).moved(0, -10)

    def test_menu_items_work_by_their_press_action(self):
        self.accessible.act_in_menu(MAIN, "File", "Choose Video…")
        self.accessible.choose_file(OPEN_PANEL, self.clip, "Choose Video")
        self.await_status(self.clip.name)
        self.accessible.find(MAIN, "push button", "Pause preview")
        self.accessible.act_in_menu(MAIN, "Playback", "Pause Preview")
        self.accessible.find(MAIN, "push button", "Play preview")
        self.accessible.act_in_menu(MAIN, "Playback", "Play Preview")
        self.accessible.find(MAIN, "push button", "Pause preview")
        self.accessible.act_in_menu(MAIN, "Stackreel", "Quit")
        self.assert_ends_well(self.program)

    def test_announces_a_failure_and_loads_the_next_clip(self):
        text = self.desktop.home / "notes.txt"
        text.write_text("Milk, eggs, bread\n")
        self.accessible.act(MAIN, "push button", "Choose a video", "Press")
        self.accessible.choose_file(OPEN_PANEL, text, "Choose Video")
        wait_until(
            lambda: self.announced[-1:] not in ([], ["Preparing a smooth looping preview."]), "an announced failure"
        )
        self.assertIn(self.status.get_name(), self.announced)
        self.accessible.act(MAIN, "push button", "Choose video", "Press")
        self.accessible.choose_file(OPEN_PANEL, self.clip, "Choose Video")
        self.await_status(self.clip.name)
        self.close_window()

    def test_notifies_of_changes_but_not_of_the_time_of_a_playing_preview(self):
        self.accessible.act(MAIN, "push button", "Choose a video", "Press")
        self.accessible.choose_file(OPEN_PANEL, self.clip, "Choose Video")
        self.await_status(self.clip.name)
        position = self.accessible.find(MAIN, "slider", "Video position")
        values, texts = [], []
        self.listen("object:property-change:accessible-value", lambda event: values.append(event.source.get_name()))
        self.listen("object:property-change:accessible-name", lambda event: texts.append(event.any_data))
        self.listen("object:property-change:accessible-description", lambda event: texts.append(event.any_data))

        # While the preview plays, its time can be queried but sends no events.
        before = position.get_value_iface().get_current_value()
        wait_until(lambda: position.get_value_iface().get_current_value() != before, "a preview that plays")
        self.accessible.act(MAIN, "push button", "Pause preview", "Press")
        wait_until(lambda: "Play preview" in texts, "the new name of the button")
        self.assertEqual(values, [])
        self.accessible.act(MAIN, "slider", "Video position", "Decrease")
        wait_until(lambda: "Video position" in values, "an event for a step")
        self.accessible.act(MAIN, "slider", "Trim start", "Increase")
        wait_until(lambda: "Trim start" in values, "an event for a step")
        self.assertAlmostEqual(
            self.accessible.find(MAIN, "slider", "Trim start").get_value_iface().get_minimum_increment(),
            0.01,
            msg="the decimals that a quarter second needs",
        )
        self.accessible.act(MAIN, "radio button", "Top", "Scroll Right")
        wait_until(lambda: any(str(text).startswith("Left 61, top ") for text in texts), "where a crop has come to")
        self.close_window()

    def listen(self, name, callback):
        listener = Atspi.EventListener.new(callback)
        listener.register(name)
        self.addCleanup(listener.deregister, name)

    def test_shows_each_status_as_a_notification(self):
        shown = []
        self.listen(
            "object:state-changed:showing",
            lambda event: event.detail1 and shown.append((role_name(event.source), event.source.get_name())),
        )
        self.accessible.act(MAIN, "push button", "Choose a video", "Press")
        self.accessible.choose_file(OPEN_PANEL, self.clip, "Choose Video")
        wait_until(lambda: ("notification", self.clip.name) in shown, "a notification")
        self.close_window()

    def test_text_at_the_end_of_a_field_can_be_queried(self):
        self.accessible.act_in_menu(MAIN, "File", "Choose Video…")
        field = self.accessible.find(OPEN_PANEL, "text", "File name:")
        field.get_editable_text_iface().set_text_contents("two words")
        text = field.get_text_iface()
        self.assertEqual(text.get_text_at_offset(4, Atspi.TextBoundaryType.WORD_START).content, "words")
        for boundary in (Atspi.TextBoundaryType.WORD_START, Atspi.TextBoundaryType.SENTENCE_START):
            self.assertEqual(text.get_text_at_offset(9, boundary).content, "")

    def test_everything_in_an_empty_window_has_a_name(self):
        self.accessible.find(MAIN, "push button", "Choose a video")
        self.assert_all_is_named()

    def await_status(self, message):
        """Waits until the status line shows the message, and until an event has reported it."""
        self.accessible.find(MAIN, "status bar", message)
        wait_until(lambda: message in self.announced, f"an event for the status “{message}”")

    def close_window(self):
        self.accessible.act(MAIN, "push button", "Close", "Press")
        self.assert_ends_well(self.program)

    def step(self, name, action, value):
        self.accessible.act(MAIN, "slider", name, action)
        slider = self.accessible.find(MAIN, "slider", name)
        wait_until(lambda: abs(slider.get_value_iface().get_current_value() - value) < 0.02, f"“{name}” at {value}")

    def assert_all_is_named(self):
        """Each visible object must have a role, and a name unless it is a container."""
        shown = wait_until(
            lambda: [each for each in descendants(self.accessible.window(MAIN)) if is_showing(each)],
            "a window's content",
        )
        self.assertGreater(len(shown), 15)
        for each in shown:
            with self.subTest(described(each)):
                self.assertNotIn(role_name(each), ("unknown", "filler", "invalid", ""))
                self.assertTrue(each.get_name().strip() or each.get_child_count() > 0)


if __name__ == "__main__":
    main()
