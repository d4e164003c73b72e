"""The command itself: help, version and words that mean nothing."""

import subprocess
import unittest

from convert import PROGRAM, environment

COMMANDS = "convert toggle show hide settings check-updates quit status".split()


def horalo(*words):
    return subprocess.run(
        [PROGRAM, *words], capture_output=True, env=environment(), stdin=subprocess.DEVNULL,
        timeout=20, check=False,
    )  # fmt: skip


class CommandLine(unittest.TestCase):
    def test_version(self):
        done = horalo("--version")
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        self.assertRegex(done.stdout.decode(), r"\Ahoralo \d+\.\d+\.\d+\n\Z")

    def test_help_names_every_command(self):
        done = horalo("--help")
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        for command in COMMANDS:
            self.assertRegex(done.stdout.decode(), rf"(?m)^ .*\b{command}\b")
        self.assertEqual(horalo("-h").stdout, done.stdout)

    def test_every_command_has_help(self):
        for command in COMMANDS:
            with self.subTest(command):
                done = horalo(command, "--help")
                self.assertEqual((done.returncode, done.stderr), (0, b""))
                self.assertTrue(done.stdout.startswith(f"Usage: horalo {command}".encode()))

    def test_words_that_mean_nothing(self):
        for word in ("bogus", "Convert", "--bogus", "-x", "", "--json", "1704067200", "a\nb\x1b[31m", "x" * 9999):
            with self.subTest(word[:20]):
                done = horalo(word)
                self.assertEqual((done.returncode, done.stdout), (2, b""))
                self.assertRegex(done.stderr.decode(), r"\Ahoralo: unknown [^\x00-\x1f\x7f]+\n\Z")
                self.assertLess(len(done.stderr), 400)


if __name__ == "__main__":
    unittest.main()
