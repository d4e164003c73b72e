"""Horalo.app updates itself, from one built bundle to another."""
import os
import pathlib
import plistlib
import shutil
import time

import accessibility
import case
import program
import screen
from case import PROGRAM, SessionTest
from desktop import name_is_owned
from processes import until
from update_server import (Release, Server, folder_run_by, libraries_outside, version_in)

BUILD = pathlib.Path(PROGRAM).parent
PROGRAMS = [BUILD / name for name in ("horalo", "horalo-agent", "horalo-updater")]
# The C library's own, which belong to the system.
SYSTEM_LIBRARIES = ("ld-linux", "libc.", "libm.", "libdl.", "libpthread.", "librt.", "libresolv.",
                    "libnss_", "libmvec.", "libutil.")


class UpdateTest(SessionTest):
    def eventually(self, condition, message=None, seconds=60.0):
        """As everywhere, but in the time that a bundle takes on a busy computer."""
        return super().eventually(condition, message, seconds)

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        folder = pathlib.Path(cls.desktop.folder)
        cls.server = Server(folder / "server")
        cls.addClassCleanup(cls.server.end)
        cls.release = Release(folder, PROGRAMS, cls.server)
        cls.first = folder / "made/Horalo.app"
        cls.release.make_bundle(cls.first, "1.3.0")

    def setUp(self):
        super().setUp()
        self.program.end()  # it is the bundle that runs here
        for file in self.server.folder.iterdir():
            file.unlink()
        self.server.requests.clear()
        # A folder with a blank, which the user has moved the bundle to.
        self.place = pathlib.Path(os.environ["HOME"], "My Programs")
        self.addCleanup(shutil.rmtree, self.place, ignore_errors=True)
        self.place.mkdir()
        self.bundle = self.place / "Horalo.app"
        shutil.copytree(self.first, self.bundle)
        self.program = program.Program(str(self.bundle / "Contents/Linux/horalo"),
                                       log=self.desktop.log("bundle"))

    def publish(self, version, change=None):
        made = self.place.parent / "next" / "Horalo.app"
        self.addCleanup(shutil.rmtree, made.parent, ignore_errors=True)
        self.release.copy_bundle(self.first, made, version)
        if change:
            change(made)
        self.release.publish(made, version)

    def check(self):
        """Asks for a check and gives the texts of its window once it has an answer."""
        self.assertEqual(0, self.program.ask("check-updates").returncode)
        self.eventually(lambda: screen.window("Horalo Update"), "there is no window")

        def answer():
            texts = accessibility.labels()
            return texts if texts and not any("Checking" in text for text in texts) else None

        return self.eventually(answer, "the check does not end")

    def press(self, name):
        button = self.eventually(lambda: accessibility.find("push button", name))
        accessibility.press(button)

    def install(self):
        texts = self.check()
        self.assertIn("Horalo 2.0 is available", texts)
        self.press("Install and Relaunch")

    def leftovers(self):
        return [name for name in os.listdir(self.place) if name != "Horalo.app"]

    def test_runs_on_its_own_libraries_and_loads_no_updater(self):
        self.start()
        pid = self.program.process.pid
        self.assertTrue(self.program.status()["running"])
        self.program.ask("show")
        self.wait_for_panel()
        outside = libraries_outside(pid, self.bundle)
        self.assertGreater(len(outside), 0)
        self.assertEqual([], [name for name in outside
                              if not os.path.basename(name).startswith(SYSTEM_LIBRARIES)])
        with open("/proc/%d/maps" % pid, encoding="utf-8") as file:
            maps = file.read()
        self.assertIn(str(self.bundle) + "/Contents/lib/libQt6Widgets", maps)
        for name in ("libQt6Network", "libsodium", "libarchive", "libssl"):
            self.assertNotIn(name, maps)

    def test_says_that_there_is_nothing_new(self):
        self.publish("1.3.0")
        self.start()
        self.assertIn("Horalo is up to date", self.check())
        self.press("OK")
        self.eventually(lambda: not screen.windows("Horalo Update"))
        self.assertIn("Horalo is up to date", self.check(), "and says it again")

    def test_says_what_is_wrong(self):
        self.start()
        self.assertIn("The update server has no answer (error 404)", self.check())

    def test_says_that_it_was_made_without_a_key(self):
        info = self.bundle / "Contents/Info.plist"
        values = plistlib.loads(info.read_bytes())
        values["SUPublicEDKey"] = []
        info.write_bytes(plistlib.dumps(values))
        program.set_preferences(updateCheckInterval=86400.0)
        self.start()
        self.assertEqual({"enabled": False, "reason": "this bundle was made without a key to check "
                                                      "updates with"},
                         self.program.status()["updates"])
        texts = self.check()
        self.assertIn("This copy of Horalo cannot be updated", texts)
        self.assertIn("made without a key", " ".join(texts))
        self.assertEqual([], self.server.requests)

    def test_updates_to_the_new_version(self):
        self.publish("2.0")
        self.start()
        pid = self.program.process.pid
        self.install()
        self.eventually(lambda: version_in(self.bundle) == "2.0", "it is not installed")
        # From now on the old version stays for the trial of the new one.
        self.assertEqual(1, len(self.leftovers()))
        # The new version takes over the process, and answers.
        self.eventually(lambda: folder_run_by(pid) == str(self.bundle), "it does not relaunch")
        self.eventually(lambda: name_is_owned(program.BUS_NAME) and self.program.status(),
                        "the new version does not answer")
        self.assertEqual("2.0", self.program.status()["version"])
        self.assertTrue(self.program.is_running())
        self.assertFalse(screen.windows("Horalo Update"))
        self.eventually(lambda: not self.leftovers(), "the old version stays for ever")
        self.assertIn("Horalo is up to date", self.check())
        self.press("OK")
        self.assertEqual(0, self.program.end())

    def test_goes_back_where_the_new_version_does_not_start(self):
        def breakage(bundle):
            agent = bundle / "Contents/Linux/horalo-agent"
            agent.write_text("#!/bin/sh\nexit 3\n", encoding="utf-8")
            agent.chmod(0o755)

        self.publish("2.0", breakage)
        self.start()
        self.install()
        self.eventually(lambda: any("Horalo 2.0 did not start" in t for t in accessibility.labels()),
                        "nothing is said")
        self.assertEqual("1.3.0", version_in(self.bundle))
        self.eventually(lambda: self.program.status().get("running"), "the old version is not back")
        self.press("OK")
        self.assertEqual(0, self.program.ask("quit").returncode)

    def test_leaves_another_running_copy_alone(self):
        self.publish("2.0")
        other = program.Program(self.program.path, log=self.desktop.log("other"))
        # Another session of the same user, which has a lock of its own.
        other.env["XDG_RUNTIME_DIR"] = os.path.join(self.desktop.folder, "runtime2")
        other.env["DBUS_SESSION_BUS_ADDRESS"] = "disabled:"
        os.mkdir(other.env["XDG_RUNTIME_DIR"], 0o700)
        self.addCleanup(shutil.rmtree, other.env["XDG_RUNTIME_DIR"])
        other.start(wait=False)
        self.addCleanup(other.end)
        self.eventually(lambda: other.status().get("running"), "the other copy does not run")
        self.start()
        self.install()
        self.eventually(lambda: version_in(self.bundle) == "2.0", "it is not installed")
        self.eventually(lambda: self.program.status().get("running"), "it does not relaunch")
        # Longer than the trial: the old version stays as long as it is used.
        end = time.monotonic() + 14
        until(lambda: not self.leftovers(), 14)
        self.assertGreaterEqual(time.monotonic(), end, "the old version was deleted")
        self.assertTrue(other.is_running())
        self.assertTrue(other.status()["running"])
        self.assertEqual(0, other.end())
        self.assertEqual(0, self.program.end())
        self.program.start()
        self.eventually(lambda: not self.leftovers(), "the old version stays for ever")


if __name__ == "__main__":
    case.main()
