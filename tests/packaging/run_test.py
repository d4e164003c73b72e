#!/usr/bin/python3
"""run_test.py BUILD: what ./run does before it hands over to horalo.

A copy of the script works in a folder of its own, whose name has blanks, among stand-ins for the
package manager, the build and the program, each of which writes down how it was called.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

BUILD = pathlib.Path(sys.argv[1])
SOURCES = pathlib.Path(__file__).resolve().parents[2]
PACKAGES = [name for part in ("build", "run")
            for name in (SOURCES / f"packaging/packages-{part}.txt").read_text().split()]

STAND_INS = {
    "dpkg-query": 'sed "s/^/installed /" "$STAGE/installed"',
    "sudo": 'echo "sudo $*" >> "$STAGE/calls"; exec "$@"',
    "apt-get": 'echo "apt-get $*" >> "$STAGE/calls"; [ ! -e "$STAGE/offline" ]',
    "cmake": 'echo "cmake $*" >> "$STAGE/calls"; echo noise; cat > /dev/null; '
             'mkdir -p build/release; echo "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" > '
             'build/release/CMakeCache.txt; touch build/release/build.ninja; '
             '[ ! -e "$STAGE/broken" ] || { echo "error: broken"; exit 1; }; '
             'cp "$STAGE/horalo" build/release/horalo',
    "id": 'cat "$STAGE/uid"',
}
PROGRAM = ('#!/bin/bash\n[ "$1" != show ] || [ -e "$STAGE/runs" ] || exit 3\n'
           'printf "<%s>" "$@"; echo\n[ "$*" != "convert" ] || cat\n'
           '[ "$1" != --background ] || touch "$STAGE/runs"\n')


class Run(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.stage = pathlib.Path(self.folder.name)
        self.tree = self.stage / "a tree of sources"
        (self.tree / "packaging").mkdir(parents=True)
        for name in ("run", "packaging/steps.sh", "packaging/packages-build.txt",
                     "packaging/packages-run.txt"):
            shutil.copy(SOURCES / name, self.tree / name)
        (self.stage / "bin").mkdir()
        for name, script in STAND_INS.items():
            self.program(self.stage / "bin" / name, f"#!/bin/bash\n{script}\n")
        self.program(self.stage / "horalo", PROGRAM)
        self.write("installed", "\n".join(PACKAGES))
        self.write("uid", "1000")

    @staticmethod
    def program(path, text):
        path.write_text(text, encoding="utf-8")
        path.chmod(0o755)

    def write(self, name, text=""):
        (self.stage / name).write_text(text + "\n", encoding="utf-8")

    def run_with(self, *words, display="", stdin=""):
        environment = {"PATH": f"{self.stage}/bin:/usr/bin:/bin", "STAGE": str(self.stage),
                       "DISPLAY": display, "HOME": str(self.stage)}
        return subprocess.run([self.tree / "run", *words], cwd="/", env=environment, text=True,
                              input=stdin, capture_output=True, check=False, timeout=60)

    def calls(self):
        calls = self.stage / "calls"
        return calls.read_text().splitlines() if calls.exists() else []

    def test_words_reach_horalo(self):
        cases = {
            ("1704067200",): "<convert><1704067200>",
            ("next", "monday"): "<convert><next><monday>",
            ("-5",): "<convert><-5>",
            ("--", "-x"): "<convert><--><-x>",
            ("",): "<convert><>",
            ("convert", "--json", "a  b"): "<convert><--json><a  b>",
            ("--version",): "<--version>",
            ("status", "--json"): "<status><--json>",
        }
        for words, expected in cases.items():
            with self.subTest(words):
                result = self.run_with(*words)
                self.assertEqual((result.returncode, result.stdout), (0, expected + "\n"))

    def test_knows_every_command(self):
        result = subprocess.run([BUILD / "horalo", "--help"], capture_output=True, text=True,
                                check=True)
        commands = re.findall(r"^  ([a-z][a-z-]+)  ", result.stdout, re.MULTILINE)
        self.assertEqual(len(commands), 7)
        self.write("runs")
        for command in commands:
            self.assertEqual(self.run_with(command).stdout, f"<{command}>\n")

    def test_standard_input_is_left_for_the_program(self):
        self.assertEqual(self.run_with("convert", stdin="1\n2\n").stdout, "<convert>\n1\n2\n")

    def test_build_is_silent_and_configures_once(self):
        for _ in range(2):
            self.assertNotIn("noise", self.run_with("now").stderr)
        self.assertEqual(self.calls(), ["cmake --preset release"] +
                         2 * ["cmake --build --preset release --target horalo"])

    def test_moved_tree_is_built_anew(self):
        self.run_with("now")
        self.tree = self.tree.rename(self.stage / "moved")
        self.assertEqual(self.run_with("now").returncode, 0)
        self.assertEqual(self.calls().count("cmake --preset release"), 2)

    def test_failed_build_shows_why(self):
        self.write("broken")
        result = self.run_with("now")
        self.assertNotEqual(result.returncode, 0)
        self.assertEqual(result.stdout, "")
        self.assertIn("error: broken", result.stderr)

    def test_missing_packages_are_installed(self):
        self.write("installed", "\n".join(PACKAGES[1:]))
        self.assertEqual(self.run_with("now").returncode, 0)
        update, install = [c for c in self.calls() if c.startswith("apt-get")]
        self.assertEqual(update, "apt-get update")
        self.assertRegex(install, rf"install .*--no-install-recommends {PACKAGES[0]}$")
        self.assertIn("sudo apt-get update", self.calls())

    def test_administrator_needs_no_sudo(self):
        self.write("installed", "\n".join(PACKAGES[1:]))
        self.write("uid", "0")
        self.assertEqual(self.run_with("now").returncode, 0)
        self.assertFalse([c for c in self.calls() if c.startswith("sudo")])

    def test_packages_that_cannot_be_had_are_named(self):
        self.write("installed", "\n".join(PACKAGES[1:]))
        self.write("offline")
        result = self.run_with("now")
        self.assertNotEqual(result.returncode, 0)
        self.assertIn(PACKAGES[0], result.stderr)
        self.assertEqual(result.stdout, "")

    def test_without_a_display_now_is_converted(self):
        result = self.run_with()
        self.assertEqual(result.stdout, "<convert><now>\n")
        self.assertIn("no display", result.stderr)

    def test_with_a_display_the_panel_opens(self):
        result = self.run_with(display=":7")
        self.assertEqual(result.stdout, "<--background>\n<show>\n")

    def test_running_program_only_shows_its_panel(self):
        self.write("runs")
        self.assertEqual(self.run_with(display=":7").stdout, "<show>\n")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
