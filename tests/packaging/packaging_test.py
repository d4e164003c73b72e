#!/usr/bin/python3
"""packaging_test.py BUILD CMAKE: what is installed is complete, valid, and says what the program says.

The program itself is the measure: every command and option of its --help is in the manual and in
the completions.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

BUILD, CMAKE = pathlib.Path(sys.argv[1]), sys.argv[2]
SOURCES = pathlib.Path(__file__).resolve().parents[2]
ID = "org.horalo.Horalo"


# The tools complain about a locale that the machine does not have.
ENVIRONMENT = {**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "100"}


def output(*command):
    """Standard output of a command that must succeed without a word on standard error."""
    result = subprocess.run(command, capture_output=True, text=True, check=False, env=ENVIRONMENT)
    if result.returncode or result.stderr:
        raise AssertionError(f"{command} gave {result.returncode}:\n{result.stdout}{result.stderr}")
    return result.stdout


def commands():
    """The commands in horalo --help, each alone at the start of an indented line, and convert."""
    found = re.findall(r"^  ([a-z][a-z-]+)  ", output(BUILD / "horalo", "--help"), re.MULTILINE)
    assert len(found) == 7, found
    return found + ["convert"]


def options(*command):
    found = set(re.findall(r"(?<![\w-])--[a-z]+", output(BUILD / "horalo", *command, "--help")))
    assert len(found) >= 3, found
    return found


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.prefix = pathlib.Path(cls.folder.name)
        output(CMAKE, "--install", str(BUILD), "--prefix", cls.folder.name)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def text(self, name):
        return (self.prefix / name).read_text(encoding="utf-8")

    def test_is_complete(self):
        names = {p.relative_to(self.prefix).as_posix() for p in self.prefix.rglob("*") if p.is_file()}
        self.assertEqual(names, {
            "bin/horalo",
            "lib/horalo/horalo-agent",
            f"share/applications/{ID}.desktop",
            "share/bash-completion/completions/horalo",
            "share/fish/vendor_completions.d/horalo.fish",
            f"share/icons/hicolor/128x128/apps/{ID}.png",
            f"share/icons/hicolor/48x48/apps/{ID}.png",
            f"share/icons/hicolor/scalable/apps/{ID}.svg",
            "share/horalo/menu-bar-icon.png",
            "share/horalo/menu-bar-icon@2x.png",
            "share/horalo/menu-bar-icon@3x.png",
            "share/man/man1/horalo.1",
            f"share/metainfo/{ID}.metainfo.xml",
            "share/zsh/vendor-completions/_horalo",
        })

    def test_program_runs_where_it_is_installed(self):
        self.assertEqual(output(self.prefix / "bin/horalo", "convert", "--only", "unix-ms", "1"),
                         "1000\n")

    def test_version_is_the_same_everywhere(self):
        version = output(self.prefix / "bin/horalo", "--version").split()[1]
        self.assertIn(f'version="{version}"', self.text(f"share/metainfo/{ID}.metainfo.xml"))
        self.assertIn(f'"Horalo {version}"', self.text("share/man/man1/horalo.1"))

    def test_desktop_entry_is_valid(self):
        output("desktop-file-validate", self.prefix / f"share/applications/{ID}.desktop")

    def test_metainfo_is_valid(self):
        output("appstreamcli", "validate", "--no-net", "--no-color",
               self.prefix / f"share/metainfo/{ID}.metainfo.xml")

    def test_manual_is_clean_and_complete(self):
        page = self.prefix / "share/man/man1/horalo.1"
        text = output("man", "--warnings=all", "--local-file", page)
        for word in commands() + sorted(options() | options("convert")):
            self.assertRegex(text, rf"(?<![\w-]){re.escape(word)}(?![\w-])")

    def test_completions_are_complete(self):
        for name in ("bash-completion/completions/horalo", "zsh/vendor-completions/_horalo",
                     "fish/vendor_completions.d/horalo.fish"):
            text = self.text(f"share/{name}")
            for word in commands():
                self.assertRegex(text, rf"(?<![\w-]){word}(?![\w-])", name)
            for option in options() | options("convert"):
                self.assertRegex(text, rf"(--|-l ){option[2:]}\b", name)


class BashCompletion(unittest.TestCase):
    def complete(self, *words):
        script = (f'. "{SOURCES}/packaging/completions/horalo.bash"; COMP_WORDS=("$@"); '
                  "COMP_CWORD=$(($# - 1)); "
                  '_horalo horalo "${!#}" "${COMP_WORDS[$((COMP_CWORD - 1))]}"; '
                  'printf "%s\\n" "${COMPREPLY[@]}"')
        return output("bash", "-c", script, "bash", "horalo", *words).split()

    def test_commands(self):
        self.assertEqual(sorted(self.complete("")), sorted(commands()))
        self.assertEqual(self.complete("se"), ["settings"])

    def test_options(self):
        self.assertEqual(set(self.complete("-")), options())
        self.assertEqual(set(self.complete("convert", "--")), options("convert"))

    def test_values(self):
        self.assertEqual(self.complete("convert", "--only", "unix"), ["unix-s", "unix-ms"])
        self.assertIn("Europe/Paris", self.complete("convert", "--zone", "Europe/P"))
        self.assertGreater(len(self.complete("convert", "--zone", "")), 400)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
