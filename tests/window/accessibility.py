"""The program from start to end by assistive technology alone: no pointer, no key and nothing seen.

Usage: accessibility.py EXECUTABLE
"""

import sys
import unittest

from accessible import AccessibleDesktop, AccessibleProgram, Atspi, described, descendants, heard, is_showing
from clips import make_clip, probe
from desktop import Program

MAIN = "Stackreel"
OPEN_PANEL = "Choose a horizontal video"
SAVE_PANEL = "Export vertical video"


class Accessibility(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.desktop = AccessibleDesktop()
        cls.addClassCleanup(cls.desktop.close)
        cls.clip = cls.desktop.home / "Beach day.mp4"
        make_clip(cls.clip, "1280x720")

    def setUp(self):
        self.program = Program(self.desktop, sys.argv[1])
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

    def test_a_clip_is_chosen_trimmed_silenced_and_exported(self):
        self.spoken.act(MAIN, "push button", "Choose a video", "Press")
        self.spoken.choose_file(OPEN_PANEL, self.clip, "Choose Video")
        self.await_status(self.clip.name)
        self.assert_all_is_named()

        for end in (5.75, 5.5, 5.25, 5):
            self.spoken.act(MAIN, "slider", "Trim end", "Decrease")
            self.await_value("Trim end", end)
        self.spoken.act(MAIN, "slider", "Trim start", "Increase")
        self.await_value("Trim start", 0.25)
        self.spoken.act(MAIN, "check box", "Include audio", "Toggle")
        audio = self.spoken.find(MAIN, "check box", "Include audio")
        heard(lambda: not audio.get_state_set().contains(Atspi.StateType.CHECKED), "a switch that is off")

        self.spoken.act(MAIN, "push button", "Export vertical video", "Press")
        result = self.desktop.home / "Silent.mp4"
        self.spoken.choose_file(SAVE_PANEL, result, "Export")
        self.await_status("Saved Silent.mp4")
        self.assert_all_is_named()
        report = probe(result)
        self.assertEqual([(each["codec_name"], each["width"], each["height"]) for each in report["streams"]],
                         [("h264", 1080, 1920)])
        self.assertAlmostEqual(float(report["format"]["duration"]), 4.75, delta=0.1)

        self.spoken.act(MAIN, "push button", "Close", "Press")
        self.assertEqual(self.program.wait(), 0)
        self.assertEqual(self.program.complaints(), "")

    def test_all_in_an_empty_window_is_named(self):
        self.spoken.find(MAIN, "push button", "Choose a video")
        self.assert_all_is_named()

    def await_status(self, message):
        """Waits for the status line to say this, and to have told of it unasked."""
        self.spoken.find(MAIN, "status bar", message)
        heard(lambda: message in self.announced, f"an event for the status “{message}”")

    def await_value(self, name, value):
        slider = self.spoken.find(MAIN, "slider", name)
        heard(lambda: abs(slider.get_value_iface().get_current_value() - value) < 0.02, f"“{name}” at {value}")

    def assert_all_is_named(self):
        """What shows has a name and a role; what only holds others may do without a name."""
        shown = heard(lambda: [each for each in descendants(self.spoken.window(MAIN)) if is_showing(each)],
                      "a window's content")
        self.assertGreater(len(shown), 15)
        for each in shown:
            with self.subTest(described(each)):
                self.assertNotIn(each.get_role_name(), ("unknown", "filler", "invalid", ""))
                self.assertTrue(each.get_name().strip() or each.get_child_count() > 0)


if __name__ == "__main__":
    # The library calls the only names it has for actions and values deprecated.
    unittest.main(argv=sys.argv[:1] + sys.argv[2:], warnings="ignore")
