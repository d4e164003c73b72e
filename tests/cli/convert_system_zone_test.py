"""The zone of the computer, changed in a mount namespace of the test's own.

Where the kernel grants none, nothing is tested and the status is 77.
"""

import os
import subprocess
import sys
import tempfile
import unittest

from convert import PROGRAM, environment

NAMESPACE = ["unshare", "--user", "--map-root-user", "--mount"]


def iso_with(steps):
    """What 1704067200 reads as in a system whose /etc was changed by shell commands."""
    with tempfile.TemporaryDirectory() as folder:
        script = f"""set -e
            mount -t tmpfs none {folder}
            cp /etc/passwd {folder}
            mount --bind {folder} /etc
            cd /etc
            {steps}
            exec "$0" convert --json 1704067200"""
        done = subprocess.run(
            [*NAMESPACE, "bash", "-c", script, PROGRAM],
            capture_output=True,
            env=environment(TZ=None, PATH=os.environ["PATH"]),
            check=False,
        )
    assert done.returncode == 0 and done.stderr == b"", done
    words = done.stdout.decode().split('"')
    return words[words.index("zone") + 2], words[words.index("ISO 8601") + 4]


class SystemZone(unittest.TestCase):
    TOKYO = "2024-01-01T09:00:00+09:00"
    UTC = "2024-01-01T00:00:00Z"

    def test_link(self):
        for target in (
            "/usr/share/zoneinfo/Asia/Tokyo",
            "../usr/share/zoneinfo/Asia/Tokyo",
            "/usr/share/zoneinfo/posix/Asia/Tokyo",
        ):
            with self.subTest(target):
                self.assertEqual(iso_with(f"ln -s {target} localtime"), ("Asia/Tokyo", self.TOKYO))

    def test_link_to_a_link(self):
        steps = "ln -s /usr/share/zoneinfo/Asia/Tokyo zone; ln -s zone localtime"
        self.assertEqual(iso_with(steps), ("Asia/Tokyo", self.TOKYO))

    def test_link_counts_and_not_the_name_beside_it(self):
        steps = "ln -s /usr/share/zoneinfo/Asia/Tokyo localtime; echo Europe/Paris > timezone"
        self.assertEqual(iso_with(steps), ("Asia/Tokyo", self.TOKYO))

    def test_copy_with_its_name(self):
        steps = "cp /usr/share/zoneinfo/Asia/Tokyo localtime; echo Asia/Tokyo > timezone"
        self.assertEqual(iso_with(steps), ("Asia/Tokyo", self.TOKYO))

    def test_copy_with_a_name_out_of_date(self):
        steps = "cp /usr/share/zoneinfo/Asia/Tokyo localtime; echo Europe/Paris > timezone"
        self.assertEqual(iso_with(steps), ("/etc/localtime", self.TOKYO))

    def test_copy_without_a_name(self):
        steps = "cp /usr/share/zoneinfo/Asia/Tokyo localtime"
        self.assertEqual(iso_with(steps), ("/etc/localtime", self.TOKYO))

    def test_nothing_of_use(self):
        for steps in (":", "echo nonsense > localtime", "ln -s /nowhere localtime", "mkdir localtime"):
            with self.subTest(steps):
                self.assertEqual(iso_with(steps), ("UTC", self.UTC))


def has_namespaces():
    probe = [*NAMESPACE, "mount", "-t", "tmpfs", "none", "/mnt"]
    return subprocess.run(probe, capture_output=True, check=False).returncode == 0


if __name__ == "__main__":
    if not has_namespaces():
        print("Not run: the kernel grants no user and mount namespaces here.")
        sys.exit(77)
    unittest.main()
