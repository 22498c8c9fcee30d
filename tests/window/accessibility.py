"""Uses the program through the accessibility bus only: without pointer, keyboard or screenshots."""

from accessible import AccessibleDesktop, AccessibleProgram, Atspi, described, descendants, heard, is_showing
from clips import Crop, make_mosaic
from desktop import Program
from window_test import WindowTest, executable, main

MAIN = "Stackreel"
OPEN_PANEL = "Choose a horizontal video"
SAVE_PANEL = "Export vertical video"
PANEL = 1080 / (1350 / 2)  # aspect ratio of half the output at 4:5, which is chosen below


class Accessibility(WindowTest):
    @classmethod
    def setUpClass(cls):
        cls.desktop = AccessibleDesktop()
        cls.addClassCleanup(cls.desktop.close)
        cls.clip = cls.desktop.home / "Beach day.mp4"
        make_mosaic(cls.clip)

    def setUp(self):
        self.program = Program(self.desktop, executable)
        self.addCleanup(self.program.close)
        self.spoken = AccessibleProgram(self.program.process.pid)
        self.status = self.spoken.find(MAIN, "status bar", "Choose a horizontal video to begin.")
        self.announced = []
        listener = Atspi.EventListener.new(self.name_changed)
        listener.register("object:property-change:accessible-name")
        self.addCleanup(listener.deregister, "object:property-change:accessible-name")

    def name_changed(self, event):
        if event.source == self.status:
            self.announced.append(self.status.get_name())

    def test_a_clip_is_chosen_framed_trimmed_silenced_and_exported(self):
        self.spoken.act(MAIN, "push button", "Choose a video", "Press")
        self.spoken.choose_file(OPEN_PANEL, self.clip, "Choose Video")
        self.await_status(self.clip.name)
        self.assert_all_is_named()

        self.spoken.act(MAIN, "combo box", "Aspect ratio", "Press")
        self.spoken.act(MAIN, "list item", "4:5", "Press")
        crops = self.frame(*(each.reshaped(PANEL) for each in Crop.first_pair()))
        for end in (5.75, 5.5, 5.25, 5):
            self.step("Trim end", "Decrease", end)
        self.step("Trim start", "Increase", 0.25)
        self.spoken.act(MAIN, "check box", "Include audio", "Toggle")
        audio = self.spoken.find(MAIN, "check box", "Include audio")
        heard(lambda: not audio.get_state_set().contains(Atspi.StateType.CHECKED), "a switch that is off")

        self.spoken.act(MAIN, "push button", "Export vertical video", "Press")
        result = self.desktop.home / "Silent.mp4"
        self.spoken.choose_file(SAVE_PANEL, result, "Export")
        self.await_status("Rendering from the original video.")
        self.await_status("Saved Silent.mp4")
        self.assert_all_is_named()
        self.assert_is_export(result, (1080, 1350), 4.75, sound=False)
        self.assert_shows(result, self.clip, (0.25, 5), [each.pixels() for each in crops])
        self.close_window()

    def frame(self, top, bottom):
        """Moves one crop and shrinks the other; returns the expected crops."""
        for action in ("Scroll Right", "Scroll Down", "Scroll Down", "Scroll Right", "Scroll Left"):
            self.spoken.act(MAIN, "radio button", "Top", action)
        for action in ("Decrease", "Decrease", "Increase", "Scroll Up"):
            self.spoken.act(MAIN, "radio button", "Bottom", action)
        chosen = self.spoken.find(MAIN, "radio button", "Bottom")
        heard(
            lambda: chosen.get_state_set().contains(Atspi.StateType.CHECKED), "the crop last moved as the selected one"
        )
        return top.moved(10, 20), bottom.widened(-10, PANEL).moved(0, -10)

    def test_the_menus_do_what_they_do_for_others(self):
        self.spoken.act_in_menu(MAIN, "File", "Choose Video…")
        self.spoken.choose_file(OPEN_PANEL, self.clip, "Choose Video")
        self.await_status(self.clip.name)
        self.spoken.find(MAIN, "push button", "Pause preview")
        self.spoken.act_in_menu(MAIN, "Playback", "Pause Preview")
        self.spoken.find(MAIN, "push button", "Play preview")
        self.spoken.act_in_menu(MAIN, "Playback", "Play Preview")
        self.spoken.find(MAIN, "push button", "Pause preview")
        self.spoken.act_in_menu(MAIN, "Stackreel", "Quit")
        self.assertEqual(self.program.wait(), 0)
        self.assertEqual(self.program.complaints(), "")

    def test_a_failure_is_announced_and_leaves_the_window_usable(self):
        text = self.desktop.home / "notes.txt"
        text.write_text("Milk, eggs, bread\n")
        self.spoken.act(MAIN, "push button", "Choose a video", "Press")
        self.spoken.choose_file(OPEN_PANEL, text, "Choose Video")
        heard(lambda: self.announced[-1:] not in ([], ["Preparing a smooth looping preview."]), "an announced failure")
        self.assertIn(self.status.get_name(), self.announced)
        self.spoken.act(MAIN, "push button", "Choose video", "Press")
        self.spoken.choose_file(OPEN_PANEL, self.clip, "Choose Video")
        self.await_status(self.clip.name)
        self.close_window()

    def test_changes_are_told_with_their_texts_and_the_time_of_a_running_preview_is_not(self):
        self.spoken.act(MAIN, "push button", "Choose a video", "Press")
        self.spoken.choose_file(OPEN_PANEL, self.clip, "Choose Video")
        self.await_status(self.clip.name)
        position = self.spoken.find(MAIN, "slider", "Video position")
        values, texts = [], []
        self.listen("object:property-change:accessible-value", lambda event: values.append(event.source.get_name()))
        self.listen("object:property-change:accessible-name", lambda event: texts.append(event.any_data))
        self.listen("object:property-change:accessible-description", lambda event: texts.append(event.any_data))

        # While the preview plays, its time can be queried but causes no events.
        before = position.get_value_iface().get_current_value()
        heard(lambda: position.get_value_iface().get_current_value() != before, "a preview that plays")
        self.spoken.act(MAIN, "push button", "Pause preview", "Press")
        heard(lambda: "Play preview" in texts, "the new name of the button")
        self.assertEqual(values, [])
        self.spoken.act(MAIN, "slider", "Video position", "Decrease")
        heard(lambda: "Video position" in values, "an event for a step")
        self.spoken.act(MAIN, "slider", "Trim start", "Increase")
        heard(lambda: "Trim start" in values, "an event for a step")
        self.assertAlmostEqual(
            self.spoken.find(MAIN, "slider", "Trim start").get_value_iface().get_minimum_increment(),
            0.01,
            msg="the decimals that a quarter second needs",
        )
        self.spoken.act(MAIN, "radio button", "Top", "Scroll Right")
        heard(lambda: any(str(text).startswith("Left 61, top ") for text in texts), "where a crop has come to")
        self.close_window()

    def listen(self, name, callback):
        listener = Atspi.EventListener.new(callback)
        listener.register(name)
        self.addCleanup(listener.deregister, name)

    def test_each_status_is_a_notification(self):
        shown = []
        self.listen(
            "object:state-changed:showing",
            lambda event: event.detail1 and shown.append((event.source.get_role_name(), event.source.get_name())),
        )
        self.spoken.act(MAIN, "push button", "Choose a video", "Press")
        self.spoken.choose_file(OPEN_PANEL, self.clip, "Choose Video")
        heard(lambda: ("notification", self.clip.name) in shown, "a notification")
        self.close_window()

    def test_a_field_answers_what_its_end_says(self):
        self.spoken.act_in_menu(MAIN, "File", "Choose Video…")
        field = self.spoken.find(OPEN_PANEL, "text", "File name:")
        field.get_editable_text_iface().set_text_contents("two words")
        text = field.get_text_iface()
        self.assertEqual(text.get_text_at_offset(4, Atspi.TextBoundaryType.WORD_START).content, "words")
        for boundary in (Atspi.TextBoundaryType.WORD_START, Atspi.TextBoundaryType.SENTENCE_START):
            self.assertEqual(text.get_text_at_offset(9, boundary).content, "")

    def test_all_in_an_empty_window_is_named(self):
        self.spoken.find(MAIN, "push button", "Choose a video")
        self.assert_all_is_named()

    def await_status(self, message):
        """Waits until the status line shows the message, and until an event has reported it."""
        self.spoken.find(MAIN, "status bar", message)
        heard(lambda: message in self.announced, f"an event for the status “{message}”")

    def close_window(self):
        self.spoken.act(MAIN, "push button", "Close", "Press")
        self.assertEqual(self.program.wait(), 0)
        self.assertEqual(self.program.complaints(), "")

    def step(self, name, action, value):
        self.spoken.act(MAIN, "slider", name, action)
        slider = self.spoken.find(MAIN, "slider", name)
        heard(lambda: abs(slider.get_value_iface().get_current_value() - value) < 0.02, f"“{name}” at {value}")

    def assert_all_is_named(self):
        """Each visible object must have a role, and a name unless it is a container."""
        shown = heard(
            lambda: [each for each in descendants(self.spoken.window(MAIN)) if is_showing(each)], "a window's content"
        )
        self.assertGreater(len(shown), 15)
        for each in shown:
            with self.subTest(described(each)):
                self.assertNotIn(each.get_role_name(), ("unknown", "filler", "invalid", ""))
                self.assertTrue(each.get_name().strip() or each.get_child_count() > 0)


if __name__ == "__main__":
    main()
