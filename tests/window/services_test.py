"""Tests the start of services: one that fails to start is noticed, quoted in the error, and started again."""

import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

from services import ATTEMPTS, CEILING, Service, ServiceError, retried, start_announced, start_service

READY = "echo :7; exec sleep 600"


def shell(script):
    return ["sh", "-c", script]


class Services(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.starts = pathlib.Path(folder.name) / "starts"
        self.began = time.monotonic()

    def counted(self, script):
        """A shell script that first records that it was started."""
        return shell(f"echo $$ >>'{self.starts}'; {script}")

    def started(self):
        return self.starts.read_text().split()

    def assert_gone(self, pid):
        self.assertNotEqual(subprocess.run(["kill", "-0", pid], stderr=subprocess.DEVNULL).returncode, 0)

    def test_one_that_announces_itself_is_ready(self):
        service, line = start_announced(self.counted(READY))
        self.assertEqual((line, service.has_ended(), len(self.started())), (":7", False, 1))
        service.close()
        self.assert_gone(self.started()[0])

    def test_one_that_ends_at_once_is_noticed_quoted_and_started_again(self):
        with self.assertRaises(ServiceError) as failure:
            start_announced(self.counted("echo 'no screens found' >&2; exit 3"))
        self.assertIn("status 3: no screens found", str(failure.exception))
        self.assertEqual(len(self.started()), ATTEMPTS)
        self.assertLess(time.monotonic() - self.began, CEILING / 2, "it waited for what had ended")

    def test_one_that_comes_up_the_second_time_is_used(self):
        service, line = start_announced(self.counted(f"[ $(wc -l <'{self.starts}') = 2 ] || exit 1; {READY}"))
        self.assertEqual((line, len(self.started())), (":7", 2))
        service.close()

    def test_one_that_never_answers_is_ended_and_started_again(self):
        with self.assertRaises(ServiceError) as failure:
            start_announced(self.counted("echo 'waiting for a disk' >&2; exec sleep 600"), limit=1)
        self.assertIn("not ready after 1 s: waiting for a disk", str(failure.exception))
        self.assertEqual(len(self.started()), ATTEMPTS)
        for pid in self.started():
            self.assert_gone(pid)

    def test_half_a_line_is_no_announcement(self):
        with self.assertRaises(ServiceError):
            start_announced(shell("printf 7; exec sleep 600"), limit=0.3)

    def test_one_that_ends_while_it_is_asked_is_not_ready(self):
        def ready_too_late(service):
            service.process.wait()
            return True

        with self.assertRaises(ServiceError):
            start_service(self.counted("exit 0"), ready_too_late)

    def test_a_program_that_is_missing_is_an_error(self):
        with self.assertRaises(FileNotFoundError):
            start_service(["/nonexistent/server"], lambda _: True)

    def test_what_fails_otherwise_is_not_tried_again(self):
        tries = []

        def attempt():
            tries.append(1)
            raise ValueError

        with self.assertRaises(ValueError):
            retried(attempt)
        self.assertEqual(len(tries), 1)

    def test_the_last_lines_are_those_of_a_flood(self):
        service = Service(shell("seq 200000 >&2"))
        service.process.wait()
        self.assertEqual(service.last_lines(3), "199998\n199999\n200000")
        service.close()


if __name__ == "__main__":
    unittest.main(argv=sys.argv)
