#!/usr/bin/env python3
"""schemas.py STACKREEL-CLI DOCS-FOLDER: checks what the command line prints for programs against the JSON schemas.

Exports and probes a generated clip with the system's FFmpeg. Exits with 77 where the validator is missing.
"""
import copy
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

try:
    import jsonschema
except ImportError:
    print("python3-jsonschema is missing")
    sys.exit(77)

cli = sys.argv[1]
docs = pathlib.Path(sys.argv[2])


def validator(name):
    schema = json.loads((docs / f"{name}.schema.json").read_text())
    jsonschema.Draft202012Validator.check_schema(schema)
    return jsonschema.Draft202012Validator(schema)


def run(folder, *arguments):
    return subprocess.run([cli, *arguments], cwd=folder, capture_output=True, text=True, check=False)


class Schemas(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        cls.folder = cls.scratch.name
        inputs = ["-f", "lavfi", "-i", "testsrc2=r=25:s=320x180:d=2", "-f", "lavfi", "-i", "sine=d=2"]
        codecs = ["-c:v", "libx264", "-preset", "ultrafast", "-c:a", "aac"]
        subprocess.run(["ffmpeg", "-v", "error", *inputs, *codecs, "clip é.mov"], cwd=cls.folder, check=True)

    @classmethod
    def tearDownClass(cls):
        cls.scratch.cleanup()

    def events(self, *arguments):
        lines = run(self.folder, "export", "--json", "--size", "90x160", *arguments).stdout.splitlines()
        events = [json.loads(line) for line in lines]
        check = validator("export-events")
        for event in events:
            check.validate(event)
        return events

    def test_every_line_of_an_export_passes(self):
        events = self.events("clip é.mov", "out.mp4")
        names = [event["event"] for event in events]
        self.assertEqual((names[0], names[-1]), ("started", "finished"))
        self.assertIn("progress", names)
        self.assertIn(events[-1]["encoder"], ("libx264", "libopenh264", "h264_videotoolbox"))
        self.assertEqual(events[-1]["changes"][0]["name"], "encoder")
        self.assertGreater(events[-1]["bytes"], 1000)

    def test_every_line_of_a_failed_export_passes(self):
        for source in ("clip é.mov", "none.mov"):
            events = self.events(source, "/proc/self/out.mp4")
            self.assertEqual([event["event"] for event in events], ["failed"])

    def test_every_line_of_several_exports_passes(self):
        (pathlib.Path(self.folder) / "into").mkdir()
        events = self.events("clip é.mov", "none.mov", "--into", "into")
        self.assertEqual(
            [event["event"] for event in events if event["event"] != "progress"],
            ["started", "finished", "failed", "summary"],
        )
        events = self.events("clip é.mov", "--into", "nowhere")
        self.assertEqual([event["event"] for event in events], ["failed", "summary"])

    def test_a_probe_passes(self):
        check = validator("probe")
        facts = json.loads(run(self.folder, "probe", "--json", "clip é.mov").stdout)
        check.validate(facts)
        self.assertEqual(facts["frameRate"], 25)
        self.assertEqual(facts["audioTracks"][0]["channels"], 1)

    def test_recipes_pass_in_files_and_in_videos(self):
        check = validator("recipe")
        saved = ["--save-recipe", "look.json", "--from", "0.5", "--top", "0,0.1,0.5,0.5"]
        self.events("clip é.mov", "look.mp4", *saved)
        recipe = json.loads((pathlib.Path(self.folder) / "look.json").read_text())
        check.validate(recipe)
        probe = ["ffprobe", "-v", "error", "-show_format", "-of", "json", "look.mp4"]
        report = subprocess.run(probe, cwd=self.folder, capture_output=True, check=True).stdout
        self.assertEqual(json.loads(json.loads(report)["format"]["tags"]["comment"]), recipe)
        for change in ({"more": 1}, {"stackreelRecipe": 2}, {"from": -1}, {"top": {"x": 0}}, {"aspect": "1:1"}):
            with self.assertRaises(jsonschema.ValidationError):
                check.validate({**recipe, **change})

    def test_lines_that_are_not_as_described_are_refused(self):
        check = validator("export-events")
        started = {"event": "started", "source": "/a", "file": "/b", "width": 2, "height": 2, "seconds": 1.5}
        check.validate(started)
        for key in started:
            for change in (lambda line: line.pop(key), lambda line: line.update({key: None})):
                line = copy.deepcopy(started)
                change(line)
                with self.assertRaises(jsonschema.ValidationError):
                    check.validate(line)
        with self.assertRaises(jsonschema.ValidationError):
            check.validate({**started, "more": 1})


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
