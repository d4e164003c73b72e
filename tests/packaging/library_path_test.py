#!/usr/bin/python3
"""library_path_test.py BUILD CMAKE: programs take libraries from their bundle and the system alone.

An empty element in a library path stands for the current folder: whoever can write to that could put
a library of his own into the program.
"""

import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

BUILD, CMAKE = pathlib.Path(sys.argv[1]), sys.argv[2]


def library_path(program):
    """The kind of the path in a program and the path; nothing where it has none."""
    text = subprocess.run(["readelf", "--dynamic", "--wide", str(program)], check=True,
                          capture_output=True, text=True).stdout
    assert "NEEDED" in text, text
    return re.findall(r"\((RPATH|RUNPATH)\).*\[(.*)\]", text)


class LibraryPath(unittest.TestCase):
    def test_in_the_build_and_in_the_bundle(self):
        for name in ("horalo", "horalo-agent", "horalo-updater"):
            self.assertEqual([("RPATH", "$ORIGIN/../lib")], library_path(BUILD / name), name)

    def test_where_they_are_installed(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([CMAKE, "--install", str(BUILD), "--prefix", folder], check=True,
                           capture_output=True)
            for name in ("bin/horalo", "lib/horalo/horalo-agent"):
                self.assertEqual([], library_path(pathlib.Path(folder, name)), name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
