"""Runs `horalo convert`, the real program, with nothing of the caller's environment."""

import os
import subprocess
import sys
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))


def environment(**variables):
    """UTC and US English unless `variables` say otherwise; None removes one."""
    made = {"TZ": "UTC", "LANG": "en_US.UTF-8", "HOME": "/nonexistent"}
    for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"):
        if name in os.environ:
            made[name] = os.environ[name]
    made.update(variables)
    return {name: value for name, value in made.items() if value is not None}


def convert(*words, input=b"", variables=None, **options):
    """The finished process: status, and standard output and error as bytes."""
    return subprocess.run(
        [PROGRAM, "convert", *words],
        input=None if "stdin" in options else input,
        stdout=options.pop("stdout", subprocess.PIPE),
        stderr=options.pop("stderr", subprocess.PIPE),
        env=environment(**(variables or {})),
        timeout=60,
        check=False,
        **options,
    )


def value(row, *words, **options):
    """One row of one text, which must be understood."""
    done = convert("--only", row, *words, **options)
    assert done.returncode == 0 and done.stderr == b"", done
    return done.stdout.decode().removesuffix("\n")


class ConvertTest(unittest.TestCase):
    def expect(self, done, status=0, out=None, err=b""):
        self.assertEqual(done.stderr, err)
        self.assertEqual(done.returncode, status)
        if out is not None:
            self.assertEqual(done.stdout.decode(), out)
